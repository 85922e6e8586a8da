// Version resources: laid out as the binary VS_VERSIONINFO block, kept per module, found by the
// module's file, and queried by a path of keys.
#include "winver.h"
#include <cassert>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <vector>
#include "cstring.h"

namespace {

// wType of a node: its value is binary, or text in 16-bit units.
constexpr WORD kBinary = 0;
constexpr WORD kText = 1;
// wLength, wValueLength, wType.
constexpr size_t kHeader = 3 * sizeof(WORD);
constexpr DWORD kPathBuffer = PATH_MAX;

size_t Aligned(size_t offset) { return (offset + 3) & ~size_t(3); }

// Each node: its header, its key with the terminator, padding to 32 bits, its value, then its
// children, each starting on 32 bits. A node's length runs to the end of its last child, without
// padding after it.
class CBlockWriter {
public:
    size_t Begin(const std::u16string& key, WORD wType, const void* pValue, WORD wValueLength)
    {
        m_bytes.resize(Aligned(m_bytes.size()));
        const size_t offset = m_bytes.size();
        Append(nullptr, sizeof(WORD));   // wLength, set by End
        Append(&wValueLength, sizeof wValueLength);
        Append(&wType, sizeof wType);
        Append(key.c_str(), (key.size() + 1) * sizeof(char16_t));
        m_bytes.resize(Aligned(m_bytes.size()));
        Append(pValue, wType == kText ? wValueLength * sizeof(char16_t) : wValueLength);
        return offset;
    }
    void End(size_t offset)
    {
        assert(m_bytes.size() - offset <= 0xFFFF && "a version block is at most 64 KB");
        const WORD wLength = static_cast<WORD>(m_bytes.size() - offset);
        std::memcpy(m_bytes.data() + offset, &wLength, sizeof wLength);
    }
    std::vector<BYTE> Bytes() { return std::move(m_bytes); }

private:
    void Append(const void* p, size_t cb)
    {
        const size_t at = m_bytes.size();
        m_bytes.resize(at + cb);
        if (p) std::memcpy(m_bytes.data() + at, p, cb);
    }
    std::vector<BYTE> m_bytes;
};

DWORD VersionPair(const WORD (&w)[4], int nFirst) { return static_cast<DWORD>(MAKELONG(w[nFirst + 1], w[nFirst])); }

std::u16string TableKey(WORD wLanguage, WORD wCodePage)
{
    char key[9];
    std::snprintf(key, sizeof key, "%04X%04X", wLanguage, wCodePage);
    return FromUtf8(key);
}

std::vector<BYTE> LayOut(const VERSIONINFOTEMPLATE& t)
{
    const VS_FIXEDFILEINFO fixed{VS_FFI_SIGNATURE, VS_FFI_STRUCVERSION, VersionPair(t.wFileVersion, 0),
                                 VersionPair(t.wFileVersion, 2), VersionPair(t.wProductVersion, 0),
                                 VersionPair(t.wProductVersion, 2), t.dwFileFlagsMask, t.dwFileFlags, t.dwFileOS,
                                 t.dwFileType, t.dwFileSubtype, 0, 0};
    CBlockWriter w;
    const size_t root = w.Begin(u"VS_VERSION_INFO", kBinary, &fixed, sizeof fixed);
    const size_t strings = w.Begin(u"StringFileInfo", kText, nullptr, 0);
    const size_t table = w.Begin(TableKey(t.wLanguage, t.wCodePage), kText, nullptr, 0);
    for (size_t i = 0; i < t.nStrings; ++i) {
        const std::u16string value = t.pStrings[i].lpszValue ? t.pStrings[i].lpszValue : u"";
        w.End(w.Begin(t.pStrings[i].lpszKey, kText, value.c_str(), static_cast<WORD>(value.size() + 1)));
    }
    w.End(table);
    w.End(strings);
    const size_t vars = w.Begin(u"VarFileInfo", kText, nullptr, 0);
    const DWORD translation = static_cast<DWORD>(MAKELONG(t.wLanguage, t.wCodePage));
    w.End(w.Begin(u"Translation", kBinary, &translation, sizeof translation));
    w.End(vars);
    w.End(root);
    return w.Bytes();
}

std::map<HMODULE, std::vector<BYTE>>& Blocks()
{
    static std::map<HMODULE, std::vector<BYTE>> blocks;
    return blocks;
}

std::optional<std::vector<BYTE>> BlockOfLoadedModule(const std::u16string& path)
{
    for (const auto& [hModule, block] : Blocks()) {
        char16_t name[kPathBuffer];
        const DWORD n = GetModuleFileName(hModule, name, kPathBuffer);
        if (n > 0 && n < kPathBuffer && path == name) return block;
    }
    return std::nullopt;
}

// The version block of the module at that path, loading the module for the look when it is not
// loaded; nothing, with the last error set, when there is none.
std::optional<std::vector<BYTE>> FindBlock(LPCTSTR lptstrFilename)
{
    char full[PATH_MAX];
    if (!lptstrFilename || !realpath(ToUtf8(std::u16string(lptstrFilename)).c_str(), full)) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return std::nullopt;
    }
    const std::u16string path = FromUtf8(full);
    std::optional<std::vector<BYTE>> block = BlockOfLoadedModule(path);
    if (!block) {
        if (HMODULE hModule = LoadLibrary(path.c_str())) {
            if (auto it = Blocks().find(hModule); it != Blocks().end()) block = it->second;
            FreeLibrary(hModule);
        }
    }
    if (!block) SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
    return block;
}

// One node of a block, read where it lies; false when it does not fit in [offset, end).
struct Node {
    size_t offset = 0, end = 0;      // end: offset + wLength
    WORD wValueLength = 0, wType = 0;
    std::u16string key;
    size_t valueOffset = 0, valueEnd = 0;
};

WORD WordAt(const BYTE* p, size_t offset)
{
    WORD w;
    std::memcpy(&w, p + offset, sizeof w);
    return w;
}

bool ReadNode(const BYTE* p, size_t offset, size_t end, Node& node)
{
    if (offset + kHeader > end) return false;
    const WORD wLength = WordAt(p, offset);
    if (wLength < kHeader || offset + wLength > end) return false;
    node = Node{offset, offset + wLength, WordAt(p, offset + 2), WordAt(p, offset + 4), {}, 0, 0};
    size_t at = offset + kHeader;
    for (; at + sizeof(WORD) <= node.end && WordAt(p, at) != 0; at += sizeof(WORD)) node.key += WordAt(p, at);
    if (at + sizeof(WORD) > node.end) return false;   // no terminator
    node.valueOffset = Aligned(at + sizeof(WORD));
    node.valueEnd = node.valueOffset + (node.wType == kText ? node.wValueLength * sizeof(char16_t) : node.wValueLength);
    return node.valueEnd <= node.end || node.wValueLength == 0;
}

bool FindChild(const BYTE* p, const Node& parent, const std::u16string& key, Node& child)
{
    for (size_t at = Aligned(parent.valueEnd); at < parent.end; at = Aligned(child.end)) {
        if (!ReadNode(p, at, parent.end, child)) return false;
        if (CString(child.key.c_str()).CompareNoCase(key.c_str()) == 0) return true;
    }
    return false;
}

} // namespace

void RegisterVersionResource(HMODULE hModule, WORD nID, const VERSIONINFOTEMPLATE& versionInfo)
{
    assert(nID == VS_VERSION_INFO && "a module has one version resource, VS_VERSION_INFO");
    if (nID == VS_VERSION_INFO) Blocks()[hModule] = LayOut(versionInfo);
}

void UnregisterVersionResource(HMODULE hModule) { Blocks().erase(hModule); }

DWORD GetFileVersionInfoSize(LPCTSTR lptstrFilename, DWORD* lpdwHandle)
{
    if (lpdwHandle) *lpdwHandle = 0;
    const auto block = FindBlock(lptstrFilename);
    return block ? static_cast<DWORD>(block->size()) : 0;
}

BOOL GetFileVersionInfo(LPCTSTR lptstrFilename, DWORD, DWORD dwLen, void* lpData)
{
    if (!lpData) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const auto block = FindBlock(lptstrFilename);
    if (!block) return FALSE;
    if (dwLen < block->size()) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    std::memcpy(lpData, block->data(), block->size());
    return TRUE;
}

BOOL VerQueryValue(const void* pBlock, LPCTSTR lpSubBlock, void** lplpBuffer, UINT* puLen)
{
    if (!pBlock || !lpSubBlock || !lplpBuffer) return FALSE;
    const BYTE* p = static_cast<const BYTE*>(pBlock);
    Node node;
    if (!ReadNode(p, 0, WordAt(p, 0), node)) return FALSE;
    // Key by key down the path; empty parts (the leading backslash, doubled ones) name no key.
    const std::u16string path = lpSubBlock;
    for (size_t start = 0; start <= path.size();) {
        size_t stop = path.find(u'\\', start);
        if (stop == std::u16string::npos) stop = path.size();
        if (stop > start) {
            Node child;
            if (!FindChild(p, node, path.substr(start, stop - start), child)) return FALSE;
            node = child;
        }
        start = stop + 1;
    }
    *lplpBuffer = const_cast<BYTE*>(p + node.valueOffset);
    if (puLen) *puLen = node.wValueLength;
    return TRUE;
}

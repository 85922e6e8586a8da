// HKEY_CLASSES_ROOT as a tree of keys in memory, and the handles of its open keys.
#include "winreg.h"
#include <cassert>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>
#include <vector>
#include "base/cstring.h"
#include "registry_p.h"

using registry::ClassesRoot;
using registry::Fold;
using registry::RegKey;

RegKey& registry::ClassesRoot()
{
    static RegKey root{u"HKEY_CLASSES_ROOT", {}, {}};
    return root;
}

namespace {

// An open key is its path from the root, so that a handle outlives nothing it points into.
using KeyPath = std::vector<std::u16string>;
std::map<const KeyPath*, std::unique_ptr<KeyPath>>& OpenHandles()
{
    static std::map<const KeyPath*, std::unique_ptr<KeyPath>> handles;
    return handles;
}

// The path a handle stands for; a handle never opened (or closed already) is a caller's fault.
const KeyPath* PathOf(HKEY hKey)
{
    static const KeyPath root;
    if (hKey == HKEY_CLASSES_ROOT) return &root;
    auto it = OpenHandles().find(reinterpret_cast<const KeyPath*>(hKey));
    assert(it != OpenHandles().end() && "registry: a key handle that is not open");
    return it != OpenHandles().end() ? it->second.get() : nullptr;
}

KeyPath Join(const KeyPath& base, LPCTSTR lpSubKey)
{
    KeyPath path = base;
    std::u16string part;
    for (const char16_t* s = lpSubKey ? lpSubKey : u""; ; ++s) {
        if (*s == u'\\' || *s == 0) {
            if (!part.empty()) path.push_back(part);
            part.clear();
            if (*s == 0) break;
        } else {
            part += *s;
        }
    }
    return path;
}

RegKey* Find(const KeyPath& path)
{
    RegKey* key = &ClassesRoot();
    for (const auto& part : path) {
        auto it = key->keys.find(Fold(part));
        if (it == key->keys.end()) return nullptr;
        key = it->second.get();
    }
    return key;
}

RegKey& Create(const KeyPath& path)
{
    RegKey* key = &ClassesRoot();
    for (const auto& part : path) {
        auto& slot = key->keys[Fold(part)];
        if (!slot) slot = std::make_unique<RegKey>(RegKey{part, {}, {}});
        key = slot.get();
    }
    return *key;
}

HKEY OpenHandle(KeyPath path)
{
    auto owned = std::make_unique<KeyPath>(std::move(path));
    const KeyPath* p = owned.get();
    OpenHandles().emplace(p, std::move(owned));
    return reinterpret_cast<HKEY>(const_cast<KeyPath*>(p));
}

// Copies a string value out with its terminator; *pcb is the buffer's size and becomes the size needed.
LSTATUS CopyOut(const std::u16string& text, BYTE* pData, DWORD* pcb)
{
    // Registry strings stay far below 2 GB.
    const DWORD cbNeeded = static_cast<DWORD>((text.size() + 1) * sizeof(char16_t));
    LSTATUS status = ERROR_SUCCESS;
    if (pData) {
        if (*pcb < cbNeeded) status = ERROR_MORE_DATA;
        else std::memcpy(pData, text.c_str(), cbNeeded);
    }
    *pcb = cbNeeded;
    return status;
}

} // namespace

LSTATUS RegCreateKey(HKEY hKey, LPCTSTR lpSubKey, HKEY* phkResult)
{
    const KeyPath* base = PathOf(hKey);
    if (!base || !phkResult) return ERROR_INVALID_PARAMETER;
    KeyPath path = Join(*base, lpSubKey);
    Create(path);
    *phkResult = OpenHandle(std::move(path));
    return ERROR_SUCCESS;
}

LSTATUS RegOpenKey(HKEY hKey, LPCTSTR lpSubKey, HKEY* phkResult)
{
    const KeyPath* base = PathOf(hKey);
    if (!base || !phkResult) return ERROR_INVALID_PARAMETER;
    KeyPath path = Join(*base, lpSubKey);
    if (!Find(path)) return ERROR_FILE_NOT_FOUND;
    *phkResult = OpenHandle(std::move(path));
    return ERROR_SUCCESS;
}

LSTATUS RegCloseKey(HKEY hKey)
{
    if (hKey == HKEY_CLASSES_ROOT) return ERROR_SUCCESS;
    if (!PathOf(hKey)) return ERROR_INVALID_HANDLE;
    OpenHandles().erase(reinterpret_cast<const KeyPath*>(hKey));
    return ERROR_SUCCESS;
}

LSTATUS RegSetValue(HKEY hKey, LPCTSTR lpSubKey, DWORD dwType, LPCTSTR lpData, DWORD)
{
    assert(dwType == REG_SZ && "registry: RegSetValue takes REG_SZ only");
    const KeyPath* base = PathOf(hKey);
    if (!base || !lpData || dwType != REG_SZ) return ERROR_INVALID_PARAMETER;
    Create(Join(*base, lpSubKey)).values[u""] = {u"", lpData};
    return ERROR_SUCCESS;
}

LSTATUS RegSetValueEx(HKEY hKey, LPCTSTR lpValueName, DWORD, DWORD dwType, const BYTE* lpData, DWORD cbData)
{
    assert(dwType == REG_SZ && "registry: only string values are kept");
    const KeyPath* base = PathOf(hKey);
    if (!base || dwType != REG_SZ || (!lpData && cbData)) return ERROR_INVALID_PARAMETER;
    std::u16string text(cbData / sizeof(char16_t), u'\0');
    if (cbData) std::memcpy(text.data(), lpData, text.size() * sizeof(char16_t));
    while (!text.empty() && text.back() == 0) text.pop_back(); // the terminator counted in cbData
    std::u16string name = lpValueName ? lpValueName : u"";
    Find(*base)->values[Fold(name)] = {name, text};
    return ERROR_SUCCESS;
}

LSTATUS RegSetKeyValue(HKEY hKey, LPCTSTR lpSubKey, LPCTSTR lpValueName, DWORD dwType, const void* lpData, DWORD cbData)
{
    HKEY hSubKey = nullptr;
    LSTATUS status = RegCreateKey(hKey, lpSubKey, &hSubKey);
    if (status != ERROR_SUCCESS) return status;
    status = RegSetValueEx(hSubKey, lpValueName, 0, dwType, static_cast<const BYTE*>(lpData), cbData);
    RegCloseKey(hSubKey);
    return status;
}

LSTATUS RegQueryValue(HKEY hKey, LPCTSTR lpSubKey, LPTSTR lpData, LONG* lpcbData)
{
    const KeyPath* base = PathOf(hKey);
    if (!base) return ERROR_INVALID_HANDLE;
    const RegKey* key = Find(Join(*base, lpSubKey));
    if (!key) return ERROR_FILE_NOT_FOUND;
    auto it = key->values.find(u"");
    const std::u16string text = it == key->values.end() ? u"" : it->second.second; // an unset default reads empty
    if (!lpcbData) return lpData ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
    DWORD cb = static_cast<DWORD>(*lpcbData);
    LSTATUS status = CopyOut(text, reinterpret_cast<BYTE*>(lpData), &cb);
    *lpcbData = static_cast<LONG>(cb);
    return status;
}

LSTATUS RegQueryValueEx(HKEY hKey, LPCTSTR lpValueName, DWORD*, DWORD* lpType, BYTE* lpData, DWORD* lpcbData)
{
    const KeyPath* base = PathOf(hKey);
    if (!base) return ERROR_INVALID_HANDLE;
    const RegKey* key = Find(*base);
    if (!key) return ERROR_FILE_NOT_FOUND; // deleted while open
    auto it = key->values.find(Fold(lpValueName ? lpValueName : u""));
    if (it == key->values.end()) return ERROR_FILE_NOT_FOUND;
    if (lpType) *lpType = REG_SZ;
    if (!lpcbData) return lpData ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
    return CopyOut(it->second.second, lpData, lpcbData);
}

LSTATUS RegEnumKey(HKEY hKey, DWORD dwIndex, LPTSTR lpName, DWORD cchName)
{
    const KeyPath* base = PathOf(hKey);
    if (!base) return ERROR_INVALID_HANDLE;
    const RegKey* key = Find(*base);
    if (!key || dwIndex >= key->keys.size()) return ERROR_NO_MORE_ITEMS;
    const std::u16string& name = std::next(key->keys.begin(), dwIndex)->second->name;
    if (!lpName || cchName <= name.size()) return ERROR_MORE_DATA;
    std::memcpy(lpName, name.c_str(), (name.size() + 1) * sizeof(char16_t));
    return ERROR_SUCCESS;
}

namespace {
LSTATUS DeleteKey(HKEY hKey, LPCTSTR lpSubKey, bool bTree)
{
    const KeyPath* base = PathOf(hKey);
    if (!base) return ERROR_INVALID_HANDLE;
    KeyPath path = Join(*base, lpSubKey);
    if (path.empty()) return ERROR_ACCESS_DENIED; // the root stays
    RegKey* key = Find(path);
    if (!key) return ERROR_FILE_NOT_FOUND;
    if (!bTree && !key->keys.empty()) return ERROR_ACCESS_DENIED;
    const std::u16string leaf = path.back();
    path.pop_back();
    Find(path)->keys.erase(Fold(leaf));
    return ERROR_SUCCESS;
}
} // namespace

LSTATUS RegDeleteKey(HKEY hKey, LPCTSTR lpSubKey) { return DeleteKey(hKey, lpSubKey, false); }

LSTATUS RegDeleteTree(HKEY hKey, LPCTSTR lpSubKey) { return DeleteKey(hKey, lpSubKey, true); }

// The clipboard and the global memory blocks it holds: OpenClipboard, SetClipboardData,
// GetClipboardData, GlobalAlloc and GlobalLock. One process, so the clipboard is a plain store.
#include <cstdlib>
#include <cstring>
#include <map>
#include "sysapi.h"
#include "wndobj.h"

namespace {

// A block is its size header followed by the bytes; the handle is the address of the bytes, so
// GlobalLock needs no table (the real handles of moveable blocks differ from their addresses).
struct Block { size_t cb; };

Block* HeaderOf(HGLOBAL h) { return h ? reinterpret_cast<Block*>(static_cast<char*>(h) - sizeof(Block)) : nullptr; }

void FreeBlock(HGLOBAL h);

struct Clipboard {
    bool bOpen = false;
    HWND hwndOwner = nullptr;
    std::map<UINT, HGLOBAL> data;
    Clipboard() = default;
    Clipboard& operator=(Clipboard&&) = default;
    ~Clipboard() // what is still on the clipboard when the process ends is freed with it
    {
        for (auto& entry : data) FreeBlock(entry.second);
    }
};

void FreeBlock(HGLOBAL h) { std::free(h ? static_cast<char*>(h) - sizeof(Block) : nullptr); }

Clipboard& C()
{
    static Clipboard c;
    return c;
}

void FreeAll()
{
    for (auto& [fmt, h] : C().data) GlobalFree(h);
    C().data.clear();
}

} // namespace

HGLOBAL GlobalAlloc(UINT uFlags, size_t dwBytes)
{
    auto* p = static_cast<char*>(std::malloc(sizeof(Block) + dwBytes + 1));
    if (!p) return nullptr;
    reinterpret_cast<Block*>(p)->cb = dwBytes;
    if (uFlags & GMEM_ZEROINIT) std::memset(p + sizeof(Block), 0, dwBytes + 1);
    return p + sizeof(Block);
}

void* GlobalLock(HGLOBAL hMem) { return hMem; }
BOOL GlobalUnlock(HGLOBAL) { return FALSE; }
size_t GlobalSize(HGLOBAL hMem) { return hMem ? HeaderOf(hMem)->cb : 0; }

HGLOBAL GlobalFree(HGLOBAL hMem)
{
    std::free(HeaderOf(hMem));
    return nullptr;
}

BOOL OpenClipboard(HWND hWndNewOwner)
{
    if (C().bOpen) return FALSE;
    C().bOpen = true;
    C().hwndOwner = hWndNewOwner;
    return TRUE;
}

BOOL CloseClipboard()
{
    if (!C().bOpen) return FALSE;
    C().bOpen = false;
    return TRUE;
}

BOOL EmptyClipboard()
{
    if (!C().bOpen) return FALSE;
    FreeAll();
    return TRUE;
}

// The clipboard owns the block from here on.
HANDLE SetClipboardData(UINT uFormat, HANDLE hMem)
{
    if (!C().bOpen || !hMem) return nullptr;
    auto it = C().data.find(uFormat);
    if (it != C().data.end()) GlobalFree(it->second);
    C().data[uFormat] = hMem;
    return hMem;
}

// Stand-in: no conversion between CF_TEXT and CF_UNICODETEXT.
HANDLE GetClipboardData(UINT uFormat)
{
    if (!C().bOpen) return nullptr;
    auto it = C().data.find(uFormat);
    return it == C().data.end() ? nullptr : it->second;
}

BOOL IsClipboardFormatAvailable(UINT format) { return C().data.count(format) ? TRUE : FALSE; }

namespace user {

void ResetClipboard()
{
    FreeAll();
    C() = Clipboard{};
}

} // namespace user

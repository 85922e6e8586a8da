// The module's resources: dialogs with their initialisation data, icons and strings, by id.
#include <algorithm>
#include <cassert>
#include <map>
#include <string>
#include <vector>
#include "dlgctl.h"
#include "gdi/standin.h"

namespace {

struct DialogResource {
    LPCDLGTEMPLATE pTemplate;
    std::vector<DLGINITENTRY> init;
};

std::map<WORD, DialogResource>& Dialogs()
{
    static std::map<WORD, DialogResource> map;
    return map;
}

std::map<WORD, HICON>& Icons()
{
    static std::map<WORD, HICON> map;
    return map;
}

std::map<UINT, std::u16string>& Strings()
{
    static std::map<UINT, std::u16string> map;
    return map;
}

} // namespace

void RegisterDialogResource(WORD nID, LPCDLGTEMPLATE pTemplate, const DLGINITENTRY* pInit, size_t nInit)
{
    assert(pTemplate && "RegisterDialogResource needs a template");
    Dialogs()[nID] = DialogResource{pTemplate, std::vector<DLGINITENTRY>(pInit, pInit + nInit)};
}

LPCDLGTEMPLATE FindDialogResource(WORD nID)
{
    auto it = Dialogs().find(nID);
    return it == Dialogs().end() ? nullptr : it->second.pTemplate;
}

const DLGINITENTRY* FindDlgInitResource(WORD nID, size_t* pnCount)
{
    auto it = Dialogs().find(nID);
    *pnCount = it == Dialogs().end() ? 0 : it->second.init.size();
    return *pnCount ? it->second.init.data() : nullptr;
}

void RegisterIconResource(WORD nID, HICON hIcon)
{
    GdiMakePermanent(hIcon);
    Icons()[nID] = hIcon;
}

// Icons are shared, as LoadIcon's are: the caller does not destroy them.
HICON LoadIcon(HINSTANCE, LPCTSTR lpIconName)
{
    if (!IS_INTRESOURCE(lpIconName)) return nullptr;
    auto it = Icons().find((WORD)(ULONG_PTR)lpIconName);
    return it == Icons().end() ? nullptr : it->second;
}

namespace {
std::map<WORD, HBITMAP>& Bitmaps()
{
    static std::map<WORD, HBITMAP> map;
    return map;
}
} // namespace

void RegisterBitmapResource(WORD nID, HBITMAP hBitmap)
{
    GdiMakePermanent(hBitmap);
    Bitmaps()[nID] = hBitmap;
}

// Stand-in: the bitmap is shared; the real call hands out a copy for the caller to delete.
HBITMAP LoadBitmap(HINSTANCE, LPCTSTR lpBitmapName)
{
    if (!IS_INTRESOURCE(lpBitmapName)) return nullptr;
    auto it = Bitmaps().find((WORD)(ULONG_PTR)lpBitmapName);
    return it == Bitmaps().end() ? nullptr : it->second;
}

void RegisterStringResource(UINT uID, LPCTSTR lpszText) { Strings()[uID] = lpszText ? lpszText : u""; }

int LoadString(HINSTANCE, UINT uID, LPTSTR lpBuffer, int cchBufferMax)
{
    auto it = Strings().find(uID);
    if (it == Strings().end() || !lpBuffer || cchBufferMax <= 0) return 0;
    int n = std::min<int>((int)it->second.size(), cchBufferMax - 1);
    std::copy_n(it->second.data(), n, lpBuffer);
    lpBuffer[n] = 0;
    return n;
}

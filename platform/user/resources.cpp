// The module's resources: dialogs with their initialisation data, icons, bitmaps and strings, by id.
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

// Icons and bitmaps by id. They are made permanent and shared: whoever loads one does not destroy it.
template <class H>
std::map<WORD, H>& Images()
{
    static std::map<WORD, H> map;
    return map;
}

template <class H>
void RegisterImage(WORD nID, H h)
{
    GdiMakePermanent(h);
    Images<H>()[nID] = h;
}

template <class H>
H FindImage(LPCTSTR lpName)
{
    if (!IS_INTRESOURCE(lpName)) return nullptr;
    auto it = Images<H>().find((WORD)(ULONG_PTR)lpName);
    return it == Images<H>().end() ? nullptr : it->second;
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

void RevokeDialogResource(WORD nID) { Dialogs().erase(nID); }

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

void RegisterIconResource(WORD nID, HICON hIcon) { RegisterImage(nID, hIcon); }

// Icons are shared, as LoadIcon's are: the caller does not destroy them.
HICON LoadIcon(HINSTANCE, LPCTSTR lpIconName) { return FindImage<HICON>(lpIconName); }

void RegisterBitmapResource(WORD nID, HBITMAP hBitmap) { RegisterImage(nID, hBitmap); }

// Stand-in: the bitmap is shared; the real call hands out a copy for the caller to delete.
HBITMAP LoadBitmap(HINSTANCE, LPCTSTR lpBitmapName) { return FindImage<HBITMAP>(lpBitmapName); }

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

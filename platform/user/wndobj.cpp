// Window handles, window classes and the window words: RegisterClass, GetWindowLongPtr and the tree.
#include <algorithm>
#include <cstdio>
#include "msgapi.h"
#include "wndapi.h"
#include "wndobj.h"

namespace user {

State& S()
{
    static State state;
    return state;
}

Wnd* FromHandle(HWND hwnd)
{
    auto it = S().windows.find(hwnd);
    return it == S().windows.end() ? nullptr : it->second.get();
}

Wnd* CheckedHandle(HWND hwnd)
{
    Wnd* w = FromHandle(hwnd);
#ifndef NDEBUG
    if (!w && hwnd) std::fprintf(stderr, "USER: invalid window handle %p\n", static_cast<void*>(hwnd));
#endif
    return w;
}

bool IsTopLevel(const Wnd* w) { return !(w->dwStyle & WS_CHILD); }

HWND RootOf(HWND hwnd)
{
    Wnd* w = FromHandle(hwnd);
    while (w && !IsTopLevel(w)) w = FromHandle(w->hwndParent);
    return w ? w->hwnd : nullptr;
}

POINT ClientOrigin(const Wnd* w)
{
    long long x = 0, y = 0;
    for (; w; w = IsTopLevel(w) ? nullptr : FromHandle(w->hwndParent)) {
        x += w->rc.left;
        y += w->rc.top;
    }
    return POINT{SaturateLong(x), SaturateLong(y)};
}

bool IsVisibleChain(const Wnd* w)
{
    for (; w; w = IsTopLevel(w) ? nullptr : FromHandle(w->hwndParent))
        if (!(w->dwStyle & WS_VISIBLE)) return false;
    return true;
}

bool IsEnabledChain(const Wnd* w)
{
    for (; w; w = IsTopLevel(w) ? nullptr : FromHandle(w->hwndParent))
        if (w->dwStyle & WS_DISABLED) return false;
    return true;
}

std::vector<HWND>& SiblingList(const Wnd* w)
{
    if (IsTopLevel(w)) return S().topLevel;
    return FromHandle(w->hwndParent)->children;
}

bool IsSameOrDescendant(HWND hwndAncestor, HWND hwnd)
{
    for (Wnd* w = FromHandle(hwnd); w; w = IsTopLevel(w) ? nullptr : FromHandle(w->hwndParent))
        if (w->hwnd == hwndAncestor) return true;
    return false;
}

} // namespace user

using namespace user;

namespace {

bool SameName(const std::u16string& a, LPCTSTR b)
{
    size_t n = 0;
    for (; b[n]; ++n) {
        if (n >= a.size()) return false;
        char16_t x = a[n], y = b[n];
        if (x >= u'a' && x <= u'z') x -= 32;
        if (y >= u'a' && y <= u'z') y -= 32;
        if (x != y) return false;
    }
    return n == a.size();
}

} // namespace

namespace user {

void RegisterSystemClasses();

ClassRec* FindClass(LPCTSTR name)
{
    if (!name) return nullptr;
    RegisterSystemClasses();
    for (auto& c : S().classes) {
        if (IS_INTRESOURCE(name) ? c->atom == (ATOM)(ULONG_PTR)name : SameName(c->strName, name))
            return c.get();
    }
    return nullptr;
}

} // namespace user

ATOM RegisterClass(const WNDCLASS* lpWndClass)
{
    if (!lpWndClass || !lpWndClass->lpszClassName || !lpWndClass->lpfnWndProc) return 0;
    if (FindClass(lpWndClass->lpszClassName)) return 0;    // ERROR_CLASS_ALREADY_EXISTS
    auto rec = std::make_unique<ClassRec>();
    rec->strName = lpWndClass->lpszClassName;
    rec->wc = *lpWndClass;
    rec->wc.lpszClassName = nullptr;                       // the name lives in strName
    rec->wc.lpszMenuName = nullptr;
    rec->atom = S().nNextAtom++;
    ATOM atom = rec->atom;
    S().classes.push_back(std::move(rec));
    return atom;
}

BOOL UnregisterClass(LPCTSTR lpClassName, HINSTANCE)
{
    ClassRec* c = FindClass(lpClassName);
    if (!c) return FALSE;
    for (auto& [h, w] : S().windows)
        if (w->pClass == c) return FALSE;                  // ERROR_CLASS_HAS_WINDOWS
    auto& v = S().classes;
    v.erase(std::remove_if(v.begin(), v.end(), [c](auto& p) { return p.get() == c; }), v.end());
    return TRUE;
}

BOOL GetClassInfo(HINSTANCE, LPCTSTR lpClassName, WNDCLASS* lpWndClass)
{
    ClassRec* c = FindClass(lpClassName);
    if (!c || !lpWndClass) return FALSE;
    *lpWndClass = c->wc;
    lpWndClass->lpszClassName = lpClassName;
    return TRUE;
}

int GetClassName(HWND hWnd, LPTSTR lpClassName, int nMaxCount)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w || nMaxCount <= 0) return 0;
    int n = std::min<int>(nMaxCount - 1, (int)w->pClass->strName.size());
    std::copy_n(w->pClass->strName.data(), n, lpClassName);
    lpClassName[n] = 0;
    return n;
}

ULONG_PTR GetClassLongPtr(HWND hWnd, int nIndex)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return 0;
    const WNDCLASS& wc = w->pClass->wc;
    switch (nIndex) {
    case GCLP_HCURSOR: return (ULONG_PTR)wc.hCursor;
    case GCLP_HBRBACKGROUND: return (ULONG_PTR)wc.hbrBackground;
    case GCLP_WNDPROC: return (ULONG_PTR)wc.lpfnWndProc;
    case GCL_STYLE: return wc.style;
    default: assert(!"GetClassLongPtr: index not supported"); return 0;
    }
}

ULONG_PTR SetClassLongPtr(HWND hWnd, int nIndex, LONG_PTR dwNewLong)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return 0;
    ULONG_PTR old = GetClassLongPtr(hWnd, nIndex);
    WNDCLASS& wc = w->pClass->wc;
    switch (nIndex) {
    case GCLP_HCURSOR: wc.hCursor = (HCURSOR)dwNewLong; break;
    case GCLP_HBRBACKGROUND: wc.hbrBackground = (HBRUSH)dwNewLong; break;
    case GCL_STYLE: wc.style = (UINT)dwNewLong; break;
    default: assert(!"SetClassLongPtr: index not supported"); return 0;
    }
    return old;
}

LONG_PTR GetWindowLongPtr(HWND hWnd, int nIndex)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return 0;
    switch (nIndex) {
    case GWLP_WNDPROC: return (LONG_PTR)w->proc;
    case GWLP_HINSTANCE: return 0;
    case GWLP_HWNDPARENT: return (LONG_PTR)(IsTopLevel(w) ? w->hwndOwner : w->hwndParent);
    case GWLP_ID: return w->nId;
    case GWL_STYLE: return (LONG_PTR)(LONG)w->dwStyle;
    case GWL_EXSTYLE: return (LONG_PTR)(LONG)w->dwExStyle;
    case GWLP_USERDATA: return w->nUserData;
    default: assert(!"GetWindowLongPtr: index not supported"); return 0;
    }
}

namespace {

LONG_PTR SetStyleWord(Wnd* w, int nIndex, DWORD dwNew)
{
    HWND hwnd = w->hwnd;
    DWORD& ref = nIndex == GWL_STYLE ? w->dwStyle : w->dwExStyle;
    struct { DWORD styleOld, styleNew; } ss{ref, dwNew};
    SendMessage(hwnd, WM_STYLECHANGING, (WPARAM)nIndex, (LPARAM)&ss);
    if (!(w = FromHandle(hwnd))) return 0;
    DWORD old = ref;
    ref = ss.styleNew;
    SendMessage(hwnd, WM_STYLECHANGED, (WPARAM)nIndex, (LPARAM)&ss);
    return (LONG_PTR)(LONG)old;
}

} // namespace

LONG_PTR SetWindowLongPtr(HWND hWnd, int nIndex, LONG_PTR dwNewLong)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return 0;
    LONG_PTR old = GetWindowLongPtr(hWnd, nIndex);
    switch (nIndex) {
    case GWLP_WNDPROC: w->proc = (WNDPROC)dwNewLong; break;
    case GWLP_HWNDPARENT:
        if (IsTopLevel(w)) w->hwndOwner = RootOf((HWND)dwNewLong);
        break;
    case GWLP_ID: w->nId = dwNewLong; break;
    case GWL_STYLE: case GWL_EXSTYLE: return SetStyleWord(w, nIndex, (DWORD)dwNewLong);
    case GWLP_USERDATA: w->nUserData = dwNewLong; break;
    default: assert(!"SetWindowLongPtr: index not supported"); return 0;
    }
    return old;
}

BOOL IsWindow(HWND hWnd) { return FromHandle(hWnd) != nullptr; }

HWND GetParent(HWND hWnd)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return nullptr;
    if (w->dwStyle & WS_CHILD) return w->hwndParent;
    return (w->dwStyle & WS_POPUP) ? w->hwndOwner : nullptr;
}

HWND GetAncestor(HWND hWnd, UINT gaFlags)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return nullptr;
    switch (gaFlags) {
    case GA_PARENT: return IsTopLevel(w) ? nullptr : w->hwndParent;   // no desktop window here
    case GA_ROOT: return RootOf(hWnd);
    case GA_ROOTOWNER: {
        HWND h = RootOf(hWnd);
        while (Wnd* r = FromHandle(h)) {
            if (!r->hwndOwner) break;
            h = RootOf(r->hwndOwner);
        }
        return h;
    }
    default: return nullptr;
    }
}

HWND GetTopWindow(HWND hWnd)
{
    if (!hWnd) return S().topLevel.empty() ? nullptr : S().topLevel.front();
    Wnd* w = CheckedHandle(hWnd);
    return w && !w->children.empty() ? w->children.front() : nullptr;
}

HWND GetWindow(HWND hWnd, UINT uCmd)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return nullptr;
    if (uCmd == GW_CHILD) return GetTopWindow(hWnd);
    if (uCmd == GW_OWNER) return IsTopLevel(w) ? w->hwndOwner : nullptr;
    std::vector<HWND>& sib = SiblingList(w);
    auto it = std::find(sib.begin(), sib.end(), hWnd);
    switch (uCmd) {
    case GW_HWNDFIRST: return sib.front();
    case GW_HWNDLAST: return sib.back();
    case GW_HWNDNEXT: return it + 1 == sib.end() ? nullptr : *(it + 1);
    case GW_HWNDPREV: return it == sib.begin() ? nullptr : *(it - 1);
    default: return nullptr;
    }
}

BOOL IsChild(HWND hWndParent, HWND hWnd)
{
    return hWnd != hWndParent && FromHandle(hWndParent) && IsSameOrDescendant(hWndParent, hWnd);
}

int GetDlgCtrlID(HWND hWnd)
{
    Wnd* w = CheckedHandle(hWnd);
    return w && !IsTopLevel(w) ? (int)w->nId : 0;
}

HWND GetDlgItem(HWND hDlg, int nIDDlgItem)
{
    Wnd* w = CheckedHandle(hDlg);
    if (!w) return nullptr;
    for (HWND h : w->children)
        if (FromHandle(h)->nId == nIDDlgItem) return h;
    return nullptr;
}

BOOL SetWindowText(HWND hWnd, LPCTSTR lpString)
{
    return CheckedHandle(hWnd) ? (BOOL)SendMessage(hWnd, WM_SETTEXT, 0, (LPARAM)lpString) : FALSE;
}

int GetWindowText(HWND hWnd, LPTSTR lpString, int nMaxCount)
{
    if (!CheckedHandle(hWnd) || nMaxCount <= 0) return 0;
    return (int)SendMessage(hWnd, WM_GETTEXT, (WPARAM)nMaxCount, (LPARAM)lpString);
}

int GetWindowTextLength(HWND hWnd)
{
    return CheckedHandle(hWnd) ? (int)SendMessage(hWnd, WM_GETTEXTLENGTH, 0, 0) : 0;
}

// Window creation and destruction: CreateWindowEx, DestroyWindow and SetParent, with their messages.
#include <algorithm>
#include "inputapi.h"
#include "wndapi.h"
#include "wndobj.h"

using namespace user;

namespace {

HWND NewHandle()
{
    // Handles are never reused, so a stale handle stays invalid.
    S().nNextHandle += 4;
    return reinterpret_cast<HWND>(S().nNextHandle);
}

void Unlink(Wnd* w)
{
    std::vector<HWND>& sib = SiblingList(w);
    sib.erase(std::remove(sib.begin(), sib.end(), w->hwnd), sib.end());
}

Wnd* NewWindow(ClassRec* cls, DWORD dwExStyle, LPCTSTR name, DWORD dwStyle, RECT rc, HWND hParent,
               HMENU hMenu)
{
    auto obj = std::make_unique<Wnd>();
    Wnd* w = obj.get();
    w->hwnd = NewHandle();
    w->pClass = cls;
    w->proc = cls->wc.lpfnWndProc;
    w->dwStyle = dwStyle & ~WS_VISIBLE;     // shown after WM_CREATE, as the real call does
    w->dwExStyle = dwExStyle;
    w->rc = rc;
    (void)name;
    if (dwStyle & WS_CHILD) {
        w->hwndParent = hParent;
        w->nId = (LONG_PTR)hMenu;
        FromHandle(hParent)->children.insert(FromHandle(hParent)->children.begin(), w->hwnd);
    } else {
        w->hwndOwner = RootOf(hParent);     // a child cannot own: its top-level window does
        auto& top = S().topLevel;
        auto pos = top.begin();
        if (!(dwExStyle & WS_EX_TOPMOST))
            while (pos != top.end() && (FromHandle(*pos)->dwExStyle & WS_EX_TOPMOST)) ++pos;
        top.insert(pos, w->hwnd);
    }
    S().windows.emplace(w->hwnd, std::move(obj));
    return w;
}

void SendSizeMove(HWND hwnd)
{
    Wnd* w = FromHandle(hwnd);
    if (!w) return;
    RECT rc = w->rc;
    SendMessage(hwnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(rc.right - rc.left, rc.bottom - rc.top));
    if (IsWindow(hwnd)) SendMessage(hwnd, WM_MOVE, 0, MAKELPARAM(rc.left, rc.top));
}

void FreeWindow(HWND hwnd)
{
    Wnd* w = FromHandle(hwnd);
    if (!w) return;
    OnWindowGone(hwnd);
    FreeSurface(w);
    Unlink(w);
    S().windows.erase(hwnd);
}

void SendDestroyTree(HWND hwnd)
{
    FromHandle(hwnd)->bDestroying = true;
    SendMessage(hwnd, WM_DESTROY, 0, 0);
    Wnd* w = FromHandle(hwnd);
    if (!w) return;
    std::vector<HWND> kids = w->children;
    for (HWND c : kids)
        if (FromHandle(c)) SendDestroyTree(c);
}

void SendNcDestroyTree(HWND hwnd)
{
    Wnd* w = FromHandle(hwnd);
    if (!w) return;
    std::vector<HWND> kids = w->children;
    for (HWND c : kids) SendNcDestroyTree(c);
    SendMessage(hwnd, WM_NCDESTROY, 0, 0);
    FreeWindow(hwnd);
}

} // namespace

HWND CreateWindowEx(DWORD dwExStyle, LPCTSTR lpClassName, LPCTSTR lpWindowName, DWORD dwStyle, int x,
                    int y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu, HINSTANCE hInstance,
                    void* lpParam)
{
    ClassRec* cls = FindClass(lpClassName);
    if (!cls) return nullptr;                                // ERROR_CANNOT_FIND_WND_CLASS
    if ((dwStyle & WS_CHILD) && !FromHandle(hWndParent)) return nullptr;
    if (hWndParent && !FromHandle(hWndParent)) return nullptr;
    // Stand-in: CW_USEDEFAULT gives the origin and an empty size.
    if (x == CW_USEDEFAULT) x = y = 0;
    if (nWidth == CW_USEDEFAULT) nWidth = nHeight = 0;
    RECT rc{x, y, SaturateLong(static_cast<long long>(x) + std::max(nWidth, 0)), SaturateLong(static_cast<long long>(y) + std::max(nHeight, 0))};
    HWND hwnd = NewWindow(cls, dwExStyle, lpWindowName, dwStyle, rc, hWndParent, hMenu)->hwnd;

    CREATESTRUCT cs{lpParam, hInstance, hMenu, hWndParent, nHeight, nWidth, y, x, (LONG)dwStyle,
                    lpWindowName, lpClassName, dwExStyle};
    if (!SendMessage(hwnd, WM_NCCREATE, 0, (LPARAM)&cs)) {
        if (IsWindow(hwnd)) DestroyWindow(hwnd);
        return nullptr;
    }
    if (!IsWindow(hwnd)) return nullptr;
    if (SendMessage(hwnd, WM_CREATE, 0, (LPARAM)&cs) == -1) {
        if (IsWindow(hwnd)) DestroyWindow(hwnd);
        return nullptr;
    }
    SendSizeMove(hwnd);
    if (!IsWindow(hwnd)) return nullptr;
    if ((dwStyle & WS_CHILD) && !(dwExStyle & WS_EX_NOPARENTNOTIFY))
        SendMessage(hWndParent, WM_PARENTNOTIFY, MAKEWPARAM(WM_CREATE, (WORD)(ULONG_PTR)hMenu), (LPARAM)hwnd);
    if ((dwStyle & WS_VISIBLE) && IsWindow(hwnd)) ShowWindow(hwnd, SW_SHOW);
    return IsWindow(hwnd) ? hwnd : nullptr;
}

// Owned windows go first, completely; then the window: WM_DESTROY from the window down to its
// children, WM_NCDESTROY from the children up.
BOOL DestroyWindow(HWND hWnd)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w || w->bDestroying) return FALSE;
    std::vector<HWND> owned;
    for (HWND h : S().topLevel)
        if (FromHandle(h)->hwndOwner == hWnd) owned.push_back(h);
    for (HWND h : owned) DestroyWindow(h);
    if (!(w = FromHandle(hWnd))) return TRUE;
    w->bDestroying = true;

    if (!IsTopLevel(w) && !(w->dwExStyle & WS_EX_NOPARENTNOTIFY))
        SendMessage(w->hwndParent, WM_PARENTNOTIFY, MAKEWPARAM(WM_DESTROY, (WORD)w->nId), (LPARAM)hWnd);
    // Stand-in: the window is hidden without WM_WINDOWPOSCHANGED on its way out.
    if ((w = FromHandle(hWnd)) && (w->dwStyle & WS_VISIBLE)) {
        w->dwStyle &= ~WS_VISIBLE;
        AfterHide(w);
    }
    if (S().hwndCapture && IsSameOrDescendant(hWnd, S().hwndCapture)) ReleaseCapture();
    if (S().hwndFocus && IsSameOrDescendant(hWnd, S().hwndFocus)) {
        Wnd* cur = FromHandle(hWnd);
        SetFocus(cur && !IsTopLevel(cur) && IsWindow(cur->hwndParent) ? cur->hwndParent : nullptr);
        if (S().hwndFocus && IsSameOrDescendant(hWnd, S().hwndFocus)) S().hwndFocus = nullptr;
    }
    if (S().hwndActive == hWnd) ActivateOther(hWnd);
    SendDestroyTree(hWnd);
    SendNcDestroyTree(hWnd);
    return TRUE;
}

HWND SetParent(HWND hWndChild, HWND hWndNewParent)
{
    Wnd* w = CheckedHandle(hWndChild);
    Wnd* p = FromHandle(hWndNewParent);
    if (!w || !p || IsTopLevel(w) || IsSameOrDescendant(hWndChild, hWndNewParent)) return nullptr;
    HWND old = w->hwndParent;
    Unlink(w);
    w->hwndParent = hWndNewParent;
    p->children.insert(p->children.begin(), hWndChild);
    return old;
}

// Window geometry and state: SetWindowPos, ShowWindow, EnableWindow, rectangles, WindowFromPoint.
#include <algorithm>
#include "inputapi.h"
#include "wndapi.h"
#include "wndobj.h"

using namespace user;

namespace {

// A window that comes into view paints whole, with every visible child it holds (they collected
// nothing while it was hidden).
void InvalidateTree(Wnd* w)
{
    InvalidateRect(w->hwnd, nullptr, TRUE);
    for (HWND c : w->children)
        if (Wnd* cw = FromHandle(c); cw && (cw->dwStyle & WS_VISIBLE)) InvalidateTree(cw);
}

void PlaceInZOrder(Wnd* w, HWND after)
{
    std::vector<HWND>& sib = SiblingList(w);
    if (IsTopLevel(w)) {
        if (after == HWND_TOPMOST) w->dwExStyle |= WS_EX_TOPMOST;
        if (after == HWND_NOTOPMOST) w->dwExStyle &= ~WS_EX_TOPMOST;
    }
    sib.erase(std::remove(sib.begin(), sib.end(), w->hwnd), sib.end());
    auto pos = sib.begin();
    if (after == HWND_BOTTOM) {
        pos = sib.end();
    } else if (after == HWND_TOP || after == HWND_TOPMOST || after == HWND_NOTOPMOST) {
        // Topmost windows stay in front of the others.
        if (IsTopLevel(w) && !(w->dwExStyle & WS_EX_TOPMOST))
            while (pos != sib.end() && (FromHandle(*pos)->dwExStyle & WS_EX_TOPMOST)) ++pos;
    } else {
        pos = std::find(sib.begin(), sib.end(), after);
        pos = pos == sib.end() ? sib.begin() : pos + 1;
    }
    sib.insert(pos, w->hwnd);
    if (IsTopLevel(w) && after != HWND_BOTTOM) LiftOwned(w->hwnd);
}

} // namespace

namespace user {

void LiftOwned(HWND hwndOwner)
{
    std::vector<HWND> owned;
    for (auto it = S().topLevel.rbegin(); it != S().topLevel.rend(); ++it)
        if (FromHandle(*it)->hwndOwner == hwndOwner) owned.push_back(*it);
    for (HWND h : owned) PlaceInZOrder(FromHandle(h), HWND_TOP);
}

} // namespace user

namespace {

// Applies a position already agreed through WM_WINDOWPOSCHANGING; returns the flags for CHANGED.
UINT ApplyPos(Wnd* w, WINDOWPOS& wp)
{
    UINT flags = wp.flags;
    RECT old = w->rc;
    RECT rc = old;
    long long cx = static_cast<long long>(rc.right) - rc.left, cy = static_cast<long long>(rc.bottom) - rc.top;
    if (!(flags & SWP_NOMOVE)) { rc.left = wp.x; rc.top = wp.y; }
    if (!(flags & SWP_NOSIZE)) { cx = std::max(wp.cx, 0); cy = std::max(wp.cy, 0); }
    rc.right = SaturateLong(rc.left + cx);
    rc.bottom = SaturateLong(rc.top + cy);
    w->rc = rc;
    bool moved = rc.left != old.left || rc.top != old.top;
    bool sized = rc.right - rc.left != old.right - old.left || rc.bottom - rc.top != old.bottom - old.top;
    if (!moved) flags |= SWP_NOCLIENTMOVE;
    if (!sized) flags |= SWP_NOCLIENTSIZE;
    if (!(flags & SWP_NOZORDER)) PlaceInZOrder(w, wp.hwndInsertAfter);
    bool wasVisible = w->dwStyle & WS_VISIBLE;
    if ((flags & SWP_SHOWWINDOW) && !wasVisible) {
        w->dwStyle |= WS_VISIBLE;
        w->bHasUpdate = false;
        InvalidateTree(w);
    } else if ((flags & SWP_HIDEWINDOW) && wasVisible) {
        w->dwStyle &= ~WS_VISIBLE;
        w->bHasUpdate = false;
    } else if (sized && !(flags & SWP_NOREDRAW)) {
        // Stand-in: a new size repaints the whole window, whatever CS_HREDRAW and CS_VREDRAW say;
        // a move repaints nothing, since each window keeps its own surface.
        InvalidateRect(w->hwnd, nullptr, TRUE);
    }
    wp.x = rc.left; wp.y = rc.top; wp.cx = rc.right - rc.left; wp.cy = rc.bottom - rc.top;
    return flags;
}

} // namespace

BOOL SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int X, int Y, int cx, int cy, UINT uFlags)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return FALSE;
    WINDOWPOS wp{hWnd, hWndInsertAfter, X, Y, cx, cy, uFlags};
    if (!(uFlags & SWP_NOSENDCHANGING)) {
        SendMessage(hWnd, WM_WINDOWPOSCHANGING, 0, (LPARAM)&wp);
        if (!(w = FromHandle(hWnd))) return FALSE;
    }
    bool wasVisible = w->dwStyle & WS_VISIBLE;
    wp.flags = ApplyPos(w, wp);
    SendMessage(hWnd, WM_WINDOWPOSCHANGED, 0, (LPARAM)&wp);
    if (!(w = FromHandle(hWnd))) return TRUE;
    bool visible = w->dwStyle & WS_VISIBLE;
    if (wasVisible && !visible) AfterHide(w);
    else if (visible && IsTopLevel(w) && !(uFlags & SWP_NOACTIVATE) && !(w->dwExStyle & WS_EX_NOACTIVATE))
        ActivateWindow(hWnd, false);
    return TRUE;
}

BOOL MoveWindow(HWND hWnd, int X, int Y, int nWidth, int nHeight, BOOL bRepaint)
{
    return SetWindowPos(hWnd, nullptr, X, Y, nWidth, nHeight,
                        SWP_NOZORDER | SWP_NOACTIVATE | (bRepaint ? 0 : SWP_NOREDRAW));
}

BOOL ShowWindow(HWND hWnd, int nCmdShow)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return FALSE;
    BOOL wasVisible = (w->dwStyle & WS_VISIBLE) != 0;
    UINT flags = SWP_NOSIZE | SWP_NOMOVE;
    switch (nCmdShow) {
    case SW_HIDE:
        if (!wasVisible) return FALSE;
        flags |= SWP_HIDEWINDOW | SWP_NOZORDER | SWP_NOACTIVATE;
        break;
    case SW_SHOWNA: case SW_SHOWNOACTIVATE:
        flags |= SWP_SHOWWINDOW | SWP_NOACTIVATE;
        break;
    default:   // SW_SHOW, SW_SHOWNORMAL, SW_RESTORE: no minimised or maximised states here
        flags |= SWP_SHOWWINDOW;
        break;
    }
    if (!IsTopLevel(w)) flags |= SWP_NOACTIVATE | SWP_NOZORDER;
    if (wasVisible != (nCmdShow != SW_HIDE)) {
        SendMessage(hWnd, WM_SHOWWINDOW, nCmdShow != SW_HIDE, 0);
        if (!IsWindow(hWnd)) return wasVisible;
    }
    SetWindowPos(hWnd, HWND_TOP, 0, 0, 0, 0, flags);
    return wasVisible;
}

BOOL IsWindowVisible(HWND hWnd)
{
    Wnd* w = FromHandle(hWnd);
    return w && IsVisibleChain(w);
}

BOOL EnableWindow(HWND hWnd, BOOL bEnable)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return FALSE;
    BOOL wasDisabled = (w->dwStyle & WS_DISABLED) != 0;
    if (wasDisabled == !bEnable) return wasDisabled;
    if (!bEnable) {
        SendMessage(hWnd, WM_CANCELMODE, 0, 0);
        if (!(w = FromHandle(hWnd))) return wasDisabled;
        w->dwStyle |= WS_DISABLED;
        if (S().hwndFocus && IsSameOrDescendant(hWnd, S().hwndFocus)) SetFocus(nullptr);
        if (S().hwndCapture && IsSameOrDescendant(hWnd, S().hwndCapture)) ReleaseCapture();
    } else {
        w->dwStyle &= ~WS_DISABLED;
    }
    SendMessage(hWnd, WM_ENABLE, bEnable ? TRUE : FALSE, 0);
    return wasDisabled;
}

BOOL IsWindowEnabled(HWND hWnd)
{
    Wnd* w = FromHandle(hWnd);
    return w && !(w->dwStyle & WS_DISABLED);
}

BOOL GetWindowRect(HWND hWnd, RECT* lpRect)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w || !lpRect) return FALSE;
    POINT o = ClientOrigin(w);
    *lpRect = RECT{o.x, o.y, SaturateLong(static_cast<long long>(o.x) + w->rc.right - w->rc.left),
                   SaturateLong(static_cast<long long>(o.y) + w->rc.bottom - w->rc.top)};
    return TRUE;
}

BOOL GetClientRect(HWND hWnd, RECT* lpRect)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w || !lpRect) return FALSE;
    *lpRect = RECT{0, 0, w->rc.right - w->rc.left, w->rc.bottom - w->rc.top};
    return TRUE;
}

BOOL ScreenToClient(HWND hWnd, POINT* lpPoint)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w || !lpPoint) return FALSE;
    POINT o = ClientOrigin(w);
    lpPoint->x = SaturateLong(static_cast<long long>(lpPoint->x) - o.x);
    lpPoint->y = SaturateLong(static_cast<long long>(lpPoint->y) - o.y);
    return TRUE;
}

BOOL ClientToScreen(HWND hWnd, POINT* lpPoint)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w || !lpPoint) return FALSE;
    POINT o = ClientOrigin(w);
    lpPoint->x = SaturateLong(static_cast<long long>(lpPoint->x) + o.x);
    lpPoint->y = SaturateLong(static_cast<long long>(lpPoint->y) + o.y);
    return TRUE;
}

int MapWindowPoints(HWND hWndFrom, HWND hWndTo, POINT* lpPoints, UINT cPoints)
{
    POINT from = hWndFrom && FromHandle(hWndFrom) ? ClientOrigin(FromHandle(hWndFrom)) : POINT{0, 0};
    POINT to = hWndTo && FromHandle(hWndTo) ? ClientOrigin(FromHandle(hWndTo)) : POINT{0, 0};
    long long dx = static_cast<long long>(from.x) - to.x, dy = static_cast<long long>(from.y) - to.y;
    for (UINT i = 0; i < cPoints; ++i) {
        lpPoints[i].x = SaturateLong(lpPoints[i].x + dx);
        lpPoints[i].y = SaturateLong(lpPoints[i].y + dy);
    }
    return MAKELONG(dx, dy);
}

namespace {

// The deepest visible child under a screen point; a disabled child stops the search at its parent.
HWND DeepestChildAt(Wnd* w, POINT pt)
{
    for (HWND h : w->children) {
        Wnd* c = FromHandle(h);
        RECT rc{};
        GetWindowRect(h, &rc);
        if (!(c->dwStyle & WS_VISIBLE) || !PtInRect(&rc, pt)) continue;
        if (c->dwStyle & WS_DISABLED) return w->hwnd;
        return DeepestChildAt(c, pt);
    }
    return w->hwnd;
}

} // namespace

// Stand-in: no WM_NCHITTEST is asked; a disabled top-level window under the point gives none.
HWND WindowFromPoint(POINT Point)
{
    for (HWND h : S().topLevel) {
        Wnd* w = FromHandle(h);
        RECT rc{};
        GetWindowRect(h, &rc);
        if (!(w->dwStyle & WS_VISIBLE) || !PtInRect(&rc, Point)) continue;
        if (w->dwStyle & WS_DISABLED) return nullptr;
        return DeepestChildAt(w, Point);
    }
    return nullptr;
}

HWND ChildWindowFromPoint(HWND hWndParent, POINT Point)
{
    Wnd* w = CheckedHandle(hWndParent);
    if (!w) return nullptr;
    RECT rc{};
    GetClientRect(hWndParent, &rc);
    if (!PtInRect(&rc, Point)) return nullptr;
    POINT o = ClientOrigin(w);
    for (HWND h : w->children) {
        RECT rcChild{};
        GetWindowRect(h, &rcChild);
        if (PtInRect(&rcChild, POINT{SaturateLong(static_cast<long long>(Point.x) + o.x), SaturateLong(static_cast<long long>(Point.y) + o.y)})) return h;
    }
    return hWndParent;
}

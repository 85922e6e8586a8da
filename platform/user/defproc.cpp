// DefWindowProc: the platform's default handling of the messages the control and its hosts rely on.
#include <algorithm>
#include "base/colors.h"
#include "gdi/wingdi.h"
#include "inputapi.h"
#include "msgapi.h"
#include "wndapi.h"
#include "wndobj.h"

using namespace user;

namespace {

LRESULT OnGetText(Wnd* w, WPARAM cchMax, LPARAM lParam)
{
    auto* buf = reinterpret_cast<WCHAR*>(lParam);
    if (!buf || cchMax == 0) return 0;
    size_t n = std::min<size_t>(cchMax - 1, w->strText.size());
    std::copy_n(w->strText.data(), n, buf);
    buf[n] = 0;
    return (LRESULT)n;
}

// A child asks its parent first; a window sets its class cursor only over its own client area.
LRESULT OnSetCursor(Wnd* w, WPARAM wParam, LPARAM lParam)
{
    HWND hwnd = w->hwnd;
    if (!IsTopLevel(w) && SendMessage(w->hwndParent, WM_SETCURSOR, wParam, lParam)) return TRUE;
    if (!(w = FromHandle(hwnd))) return FALSE;
    if ((HWND)wParam == hwnd && LOWORD(lParam) == HTCLIENT && w->pClass->wc.hCursor) {
        SetCursor(w->pClass->wc.hCursor);
        return TRUE;
    }
    return FALSE;
}

LRESULT OnMouseActivate(Wnd* w, WPARAM wParam, LPARAM lParam)
{
    if (!IsTopLevel(w)) {
        LRESULT r = SendMessage(w->hwndParent, WM_MOUSEACTIVATE, wParam, lParam);
        if (r) return r;
    }
    return MA_ACTIVATE;
}

LRESULT OnEraseBackground(Wnd* w, HDC hdc)
{
    HBRUSH hbr = w->pClass->wc.hbrBackground;
    if (!hbr) return 0;
    // The (HBRUSH)(COLOR_xxx + 1) convention of WNDCLASS names a system colour.
    if ((ULONG_PTR)hbr <= (ULONG_PTR)kSysColorCount) hbr = GetSysColorBrush((int)(ULONG_PTR)hbr - 1);
    RECT rc{};
    GetClientRect(w->hwnd, &rc);
    FillRect(hdc, &rc, hbr);
    return 1;
}

LRESULT OnCtlColor(UINT msg, HDC hdc)
{
    bool window = msg == WM_CTLCOLOREDIT || msg == WM_CTLCOLORLISTBOX;
    SetTextColor(hdc, GetSysColor(window ? COLOR_WINDOWTEXT : COLOR_BTNTEXT));
    SetBkColor(hdc, GetSysColor(window ? COLOR_WINDOW : COLOR_BTNFACE));
    return (LRESULT)GetSysColorBrush(window ? COLOR_WINDOW : COLOR_BTNFACE);
}

void OnWindowPosChanged(HWND hwnd, const WINDOWPOS* wp)
{
    if (!(wp->flags & SWP_NOCLIENTMOVE)) SendMessage(hwnd, WM_MOVE, 0, MAKELPARAM(wp->x, wp->y));
    if (!(wp->flags & SWP_NOCLIENTSIZE) && IsWindow(hwnd))
        SendMessage(hwnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(wp->cx, wp->cy));
}

} // namespace

LRESULT DefWindowProc(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return 0;
    switch (Msg) {
    case WM_NCCREATE: {
        auto* cs = reinterpret_cast<const CREATESTRUCT*>(lParam);
        if (cs && cs->lpszName && !IS_INTRESOURCE(cs->lpszName)) w->strText = cs->lpszName;
        return TRUE;
    }
    case WM_SETTEXT:
        w->strText = lParam ? reinterpret_cast<LPCTSTR>(lParam) : u"";
        return TRUE;
    case WM_GETTEXT: return OnGetText(w, wParam, lParam);
    case WM_GETTEXTLENGTH: return (LRESULT)w->strText.size();
    case WM_PAINT: {
        PAINTSTRUCT ps;
        BeginPaint(hWnd, &ps);
        EndPaint(hWnd, &ps);
        return 0;
    }
    case WM_ERASEBKGND: return OnEraseBackground(w, (HDC)wParam);
    case WM_SETCURSOR: return OnSetCursor(w, wParam, lParam);
    case WM_MOUSEACTIVATE: return OnMouseActivate(w, wParam, lParam);
    case WM_ACTIVATE:
        // An activated window takes the focus, unless SetFocus is what activates it.
        if (LOWORD(wParam) != WA_INACTIVE && !S().nActivatingForFocus) SetFocus(hWnd);
        return 0;
    case WM_WINDOWPOSCHANGED: OnWindowPosChanged(hWnd, reinterpret_cast<const WINDOWPOS*>(lParam)); return 0;
    case WM_MOUSEWHEEL:
        return IsTopLevel(w) ? 0 : SendMessage(w->hwndParent, Msg, wParam, lParam);
    case WM_CTLCOLORMSGBOX: case WM_CTLCOLOREDIT: case WM_CTLCOLORLISTBOX: case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG: case WM_CTLCOLORSCROLLBAR: case WM_CTLCOLORSTATIC:
        return OnCtlColor(Msg, (HDC)wParam);
    case WM_CANCELMODE:
        if (S().hwndCapture == hWnd) ReleaseCapture();
        return 0;
    case WM_CLOSE: DestroyWindow(hWnd); return 0;
    case WM_NCHITTEST: return HTCLIENT;
    default: return 0;
    }
}

// The STATIC window class: left-aligned text that wraps at words, and an icon (SS_ICON) named by
// resource id in the window text.
#include <memory>
#include "base/colors.h"
#include "dlg_p.h"
#include "gdi/wingdi.h"
#include "msgapi.h"
#include "wndapi.h"

namespace user {

namespace {

struct StaticState : ClassData {
    HFONT hFont = nullptr;
    HICON hIcon = nullptr;
};

StaticState* StaticOf(HWND h)
{
    Wnd* w = FromHandle(h);
    return w ? dynamic_cast<StaticState*>(w->pData.get()) : nullptr;
}

bool IsIcon(HWND h) { return ((DWORD)GetWindowLongPtr(h, GWL_STYLE) & SS_TYPEMASK) == SS_ICON; }

// The parent's brush and colours, as for any static control.
HBRUSH AskColours(HWND h, HDC hdc)
{
    HWND parent = GetParent(h);
    auto hbr = parent ? (HBRUSH)SendMessage(parent, WM_CTLCOLORSTATIC, (WPARAM)hdc, (LPARAM)h) : nullptr;
    return hbr ? hbr : (HBRUSH)DefWindowProc(h, WM_CTLCOLORSTATIC, (WPARAM)hdc, (LPARAM)h);
}

void OnPaint(HWND h, StaticState* s)
{
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(h, &ps);
    if (hdc) {
        RECT rc{};
        GetClientRect(h, &rc);
        FillRect(hdc, &rc, AskColours(h, hdc));
        if (IsIcon(h)) {
            if (s->hIcon) DrawIcon(hdc, 0, 0, s->hIcon);
        } else {
            std::u16string text = FromHandle(h)->strText;
            DWORD style = (DWORD)GetWindowLongPtr(h, GWL_STYLE);
            UINT format = DT_WORDBREAK | ((style & SS_NOPREFIX) ? DT_NOPREFIX : 0) |
                          ((style & SS_TYPEMASK) == SS_CENTER ? DT_CENTER : (style & SS_TYPEMASK) == SS_RIGHT ? DT_RIGHT : DT_LEFT);
            CScopedSelect font(hdc, FontOf(h));
            SetBkMode(hdc, TRANSPARENT);
            if (!IsWindowEnabled(h)) SetTextColor(hdc, GetSysColor(COLOR_GRAYTEXT));
            DrawText(hdc, text.c_str(), (int)text.size(), &rc, format);
        }
    }
    EndPaint(h, &ps);
}

// An icon static takes the icon's size, as the real one does.
void SetIcon(HWND h, StaticState* s, HICON hIcon)
{
    s->hIcon = hIcon;
    ICONINFO info{};
    if (hIcon && GetIconInfo(hIcon, &info)) {
        BITMAP bm{};
        GetObject(info.hbmColor ? info.hbmColor : info.hbmMask, sizeof bm, &bm);
        int cy = info.hbmColor ? bm.bmHeight : bm.bmHeight / 2;
        if (info.hbmColor) DeleteObject(info.hbmColor);
        if (info.hbmMask) DeleteObject(info.hbmMask);
        SetWindowPos(h, nullptr, 0, 0, bm.bmWidth, cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    InvalidateRect(h, nullptr, TRUE);
}

} // namespace

LRESULT CALLBACK StaticWndProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    if (msg == WM_NCCREATE) FromHandle(h)->pData = std::make_unique<StaticState>();
    StaticState* s = StaticOf(h);
    if (!s) return DefWindowProc(h, msg, wp, lp);
    switch (msg) {
    case WM_CREATE: {
        auto* cs = reinterpret_cast<const CREATESTRUCT*>(lp);
        if (IsIcon(h) && cs->lpszName && IS_INTRESOURCE(cs->lpszName)) SetIcon(h, s, LoadIcon(nullptr, cs->lpszName));
        return 0;
    }
    case WM_PAINT: OnPaint(h, s); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_SETFONT: s->hFont = (HFONT)wp; if (LOWORD(lp)) InvalidateRect(h, nullptr, TRUE); return 0;
    case WM_GETFONT: return (LRESULT)s->hFont;
    case WM_SETTEXT: DefWindowProc(h, msg, wp, lp); InvalidateRect(h, nullptr, TRUE); return TRUE;
    case WM_GETDLGCODE: return DLGC_STATIC;
    case STM_SETICON: { HICON old = s->hIcon; SetIcon(h, s, (HICON)wp); return (LRESULT)old; }
    case STM_GETICON: return (LRESULT)s->hIcon;
    default: return DefWindowProc(h, msg, wp, lp);
    }
}

} // namespace user

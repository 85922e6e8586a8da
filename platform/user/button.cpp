// The BUTTON window class: push and default push buttons and the automatic check box, with mouse,
// Space and BM_CLICK, BN_CLICKED to the parent, and the classic look.
#include <memory>
#include "base/colors.h"
#include "dlg_p.h"
#include "drawapi.h"
#include "gdi/wingdi.h"
#include "inputapi.h"
#include "msgapi.h"
#include "wndapi.h"

namespace user {

namespace {

struct ButtonState : ClassData {
    HFONT hFont = nullptr;
    UINT nCheck = BST_UNCHECKED;
    bool bPushed = false;      // held down by the mouse or Space
    bool bTracking = false;    // the mouse holds it
};

ButtonState* ButtonOf(HWND h)
{
    Wnd* w = FromHandle(h);
    return w ? dynamic_cast<ButtonState*>(w->pData.get()) : nullptr;
}

DWORD Kind(HWND h) { return (DWORD)GetWindowLongPtr(h, GWL_STYLE) & BS_TYPEMASK; }
bool IsPush(HWND h) { return Kind(h) == BS_PUSHBUTTON || Kind(h) == BS_DEFPUSHBUTTON; }

constexpr int kCheckSize = 13;

void SetPushed(HWND h, ButtonState* b, bool bPushed)
{
    if (b->bPushed == bPushed) return;
    b->bPushed = bPushed;
    InvalidateRect(h, nullptr, TRUE);
}

// A click: an automatic check box turns over, then the parent hears BN_CLICKED.
void Click(HWND h)
{
    ButtonState* b = ButtonOf(h);
    if (!b) return;
    if (Kind(h) == BS_AUTOCHECKBOX) {
        b->nCheck = b->nCheck == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED;
        InvalidateRect(h, nullptr, TRUE);
    }
    if (HWND parent = GetParent(h)) SendMessage(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(h), BN_CLICKED), (LPARAM)h);
}

void DrawLabel(HWND h, HDC hdc, RECT rc, UINT format)
{
    std::u16string text = FromHandle(h)->strText;
    SetBkMode(hdc, TRANSPARENT);
    SetTextColor(hdc, GetSysColor(IsWindowEnabled(h) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    DrawText(hdc, text.c_str(), (int)text.size(), &rc, format | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

void PaintPush(HWND h, ButtonState* b, HDC hdc, RECT rc)
{
    FillSys(hdc, rc, COLOR_BTNFACE);
    bool isDefault = Kind(h) == BS_DEFPUSHBUTTON;
    if (isDefault) {
        FrameRect(hdc, &rc, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&rc, -1, -1);
    }
    RECT face = rc;
    if (b->bPushed) {
        FrameRect(hdc, &face, GetSysColorBrush(COLOR_3DSHADOW));
        InflateRect(&face, -1, -1);
    } else {
        DrawEdge(hdc, &face, EDGE_RAISED, BF_RECT | BF_ADJUST);
    }
    RECT text = rc;
    if (b->bPushed) OffsetRect(&text, 1, 1);
    DrawLabel(h, hdc, text, DT_CENTER);
    if (GetFocus() == h) {
        RECT focus = rc;
        InflateRect(&focus, -3, -3);
        DrawFocusRect(hdc, &focus);
    }
}

void PaintCheck(HWND h, ButtonState* b, HDC hdc, RECT rc)
{
    FillSys(hdc, rc, COLOR_BTNFACE);
    int top = (rc.bottom - kCheckSize) / 2;
    RECT box{0, top, kCheckSize, top + kCheckSize};
    DrawEdge(hdc, &box, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    FillSys(hdc, box, b->bPushed || !IsWindowEnabled(h) ? COLOR_BTNFACE : COLOR_WINDOW);
    if (b->nCheck == BST_CHECKED) {
        // The tick: a short stroke down to the right and a long one up, three pixels thick.
        HPEN pen = CreatePen(PS_SOLID, 1, GetSysColor(IsWindowEnabled(h) ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
        {
            CScopedSelect selected(hdc, pen);
            for (int d = 0; d < 3; ++d) {
                POINT pts[3] = {{box.left + 1, box.top + 3 + d}, {box.left + 3, box.top + 5 + d}, {box.left + 8, box.top + d}};
                Polyline(hdc, pts, 3);
            }
        }
        DeleteObject(pen);
    }
    RECT text{kCheckSize + 4, rc.top, rc.right, rc.bottom};
    CScopedSelect font(hdc, FontOf(h));
    DrawLabel(h, hdc, text, DT_LEFT);
    if (GetFocus() == h) {
        std::u16string s = FromHandle(h)->strText;
        RECT calc = text;
        DrawText(hdc, s.c_str(), (int)s.size(), &calc, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
        int height = calc.bottom - calc.top;
        RECT focus{text.left - 1, (rc.bottom - height) / 2 - 1, std::min(calc.right + 1, rc.right), (rc.bottom + height) / 2 + 1};
        DrawFocusRect(hdc, &focus);
    }
}

void OnPaint(HWND h, ButtonState* b)
{
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(h, &ps);
    if (hdc) {
        RECT rc{};
        GetClientRect(h, &rc);
        CScopedSelect font(hdc, FontOf(h));
        if (IsPush(h)) PaintPush(h, b, hdc, rc);
        else PaintCheck(h, b, hdc, rc);
    }
    EndPaint(h, &ps);
}

bool Inside(HWND h, LPARAM lp)
{
    RECT rc{};
    GetClientRect(h, &rc);
    return PtInRect(&rc, POINT{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)});
}

LRESULT OnMessage(HWND h, ButtonState* b, UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case WM_PAINT: OnPaint(h, b); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_SETFONT: b->hFont = (HFONT)wp; if (LOWORD(lp)) InvalidateRect(h, nullptr, TRUE); return 0;
    case WM_GETFONT: return (LRESULT)b->hFont;
    case WM_SETTEXT: DefWindowProc(h, msg, wp, lp); InvalidateRect(h, nullptr, TRUE); return TRUE;
    case WM_GETDLGCODE:
        if (Kind(h) == BS_DEFPUSHBUTTON) return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
        return DLGC_BUTTON | (IsPush(h) ? DLGC_UNDEFPUSHBUTTON : 0);
    case WM_SETFOCUS: case WM_KILLFOCUS: case WM_ENABLE:
        if (msg == WM_KILLFOCUS) { b->bTracking = false; SetPushed(h, b, false); }
        InvalidateRect(h, nullptr, TRUE);
        return 0;
    case WM_LBUTTONDOWN: case WM_LBUTTONDBLCLK:
        SetFocus(h);
        if (!(b = ButtonOf(h))) return 0;
        b->bTracking = true;
        SetCapture(h);
        SetPushed(h, b, true);
        return 0;
    case WM_MOUSEMOVE:
        if (b->bTracking) SetPushed(h, b, Inside(h, lp));
        return 0;
    case WM_LBUTTONUP: {
        if (!b->bTracking) return 0;
        b->bTracking = false;
        bool click = b->bPushed;
        SetPushed(h, b, false);
        if (GetCapture() == h) ReleaseCapture();
        if (click) Click(h);
        return 0;
    }
    case WM_CAPTURECHANGED: b->bTracking = false; SetPushed(h, b, false); return 0;
    case WM_KEYDOWN: if (wp == VK_SPACE) SetPushed(h, b, true); return 0;
    case WM_KEYUP:
        if (wp == VK_SPACE && b->bPushed) { SetPushed(h, b, false); Click(h); }
        return 0;
    case BM_GETCHECK: return b->nCheck;
    case BM_SETCHECK:
        if (!IsPush(h) && b->nCheck != (UINT)wp) { b->nCheck = (UINT)wp; InvalidateRect(h, nullptr, TRUE); }
        return 0;
    case BM_GETSTATE: return b->nCheck | (b->bPushed ? BST_PUSHED : 0) | (GetFocus() == h ? BST_FOCUS : 0);
    case BM_SETSTATE: SetPushed(h, b, wp != 0); return 0;
    case BM_SETSTYLE: {
        Wnd* w = FromHandle(h);
        w->dwStyle = (w->dwStyle & ~BS_TYPEMASK) | ((DWORD)wp & BS_TYPEMASK);
        if (LOWORD(lp)) InvalidateRect(h, nullptr, TRUE);
        return 0;
    }
    case BM_CLICK:
        if (IsWindowEnabled(h)) Click(h);
        return 0;
    default: return DefWindowProc(h, msg, wp, lp);
    }
}

} // namespace

void SetButtonDefault(HWND h, bool bDefault)
{
    if (!IsPush(h)) return;
    SendMessage(h, BM_SETSTYLE, bDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
}

LRESULT CALLBACK ButtonWndProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    if (msg == WM_NCCREATE) FromHandle(h)->pData = std::make_unique<ButtonState>();
    ButtonState* b = ButtonOf(h);
    return b ? OnMessage(h, b, msg, wp, lp) : DefWindowProc(h, msg, wp, lp);
}

} // namespace user

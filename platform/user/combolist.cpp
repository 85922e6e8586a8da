// The drop-down list of a combo box: a popup under the field with as many rows as the height given
// at the combo's creation allows, a scroll bar when the lines do not fit, the mouse captured while
// it is open (a click on a row picks it, a click elsewhere closes it) and the wheel.
#include <algorithm>
#include "base/colors.h"
#include "combo_p.h"
#include "drawapi.h"
#include "gdi/wingdi.h"
#include "inputapi.h"
#include "msgapi.h"
#include "sysapi.h"
#include "wndapi.h"

namespace user {

namespace {

HWND ComboOfList(HWND hList) { return (HWND)GetWindowLongPtr(hList, GWLP_USERDATA); }

int LineCount(const ComboState* c) { return (int)c->lines.size(); }

bool HasScrollBar(HWND hCombo)
{
    ComboState* c = ComboOf(hCombo);
    return c && LineCount(c) > ComboListRows(hCombo);
}

void ClampTop(HWND hCombo, ComboState* c)
{
    c->nTop = std::clamp(c->nTop, 0, std::max(0, LineCount(c) - ComboListRows(hCombo)));
}

void DrawArrowBox(HDC hdc, RECT rc, bool bUp)
{
    FillSys(hdc, rc, COLOR_BTNFACE);
    RECT edge = rc;
    DrawEdge(hdc, &edge, EDGE_RAISED, BF_RECT);
    int cx = (rc.left + rc.right) / 2, cy = (rc.top + rc.bottom) / 2 + (bUp ? -2 : -1);
    for (int row = 0; row < 4; ++row) {
        int y = bUp ? cy + row : cy + row, half = bUp ? row : 3 - row;
        RECT line{cx - half, y, cx + half + 1, y + 1};
        FillRect(hdc, &line, GetSysColorBrush(COLOR_BTNTEXT));
    }
}

// Stand-in: the list's scroll bar shows where the list stands; it follows the keys and the wheel,
// and its arrows and track take clicks, but its thumb cannot be dragged.
void PaintScrollBar(HWND hCombo, ComboState* c, HDC hdc, const RECT& bar)
{
    int arrow = GetSystemMetrics(SM_CYVSCROLL);
    FillSys(hdc, bar, COLOR_SCROLLBAR);
    DrawArrowBox(hdc, RECT{bar.left, bar.top, bar.right, bar.top + arrow}, true);
    DrawArrowBox(hdc, RECT{bar.left, bar.bottom - arrow, bar.right, bar.bottom}, false);
    int track = bar.bottom - bar.top - 2 * arrow, rows = ComboListRows(hCombo), n = LineCount(c);
    int thumb = std::max(8, track * rows / std::max(1, n));
    int range = std::max(1, n - rows);
    int y = bar.top + arrow + (track - thumb) * c->nTop / range;
    RECT rcThumb{bar.left, y, bar.right, y + thumb};
    FillSys(hdc, rcThumb, COLOR_BTNFACE);
    DrawEdge(hdc, &rcThumb, EDGE_RAISED, BF_RECT);
}

void OnPaint(HWND hList)
{
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(hList, &ps);
    HWND hCombo = ComboOfList(hList);
    ComboState* c = ComboOf(hCombo);
    if (hdc && c) {
        RECT rc{};
        GetClientRect(hList, &rc);
        FrameRect(hdc, &rc, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&rc, -1, -1);
        FillSys(hdc, rc, COLOR_WINDOW);
        int item = ComboItemHeight(hCombo), rows = ComboListRows(hCombo);
        RECT text = rc;
        if (HasScrollBar(hCombo)) {
            text.right -= GetSystemMetrics(SM_CXVSCROLL);
            PaintScrollBar(hCombo, c, hdc, RECT{text.right, rc.top, rc.right, rc.bottom});
        }
        CScopedSelect font(hdc, FontOf(hCombo));
        SetBkMode(hdc, TRANSPARENT);
        int shown = c->nHot >= 0 ? c->nHot : c->nCur;
        for (int r = 0; r < rows && c->nTop + r < LineCount(c); ++r) {
            int i = c->nTop + r;
            RECT row{text.left, text.top + r * item, text.right, text.top + (r + 1) * item};
            bool sel = i == shown;
            if (sel) FillSys(hdc, row, COLOR_HIGHLIGHT);
            SetTextColor(hdc, GetSysColor(sel ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
            RECT t = row;
            t.left += 2;
            DrawText(hdc, c->lines[i].c_str(), (int)c->lines[i].size(), &t, DT_LEFT | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
        }
    }
    EndPaint(hList, &ps);
}

// The row under a point of the list's client area, or -1.
int RowAt(HWND hCombo, ComboState* c, POINT pt, const RECT& text)
{
    if (!PtInRect(&text, pt)) return -1;
    int i = c->nTop + (pt.y - text.top) / ComboItemHeight(hCombo);
    return i < LineCount(c) ? i : -1;
}

RECT TextArea(HWND hList, HWND hCombo)
{
    RECT rc{};
    GetClientRect(hList, &rc);
    InflateRect(&rc, -1, -1);
    if (HasScrollBar(hCombo)) rc.right -= GetSystemMetrics(SM_CXVSCROLL);
    return rc;
}

void OnButtonDown(HWND hList, LPARAM lp)
{
    HWND hCombo = ComboOfList(hList);
    ComboState* c = ComboOf(hCombo);
    if (!c) return;
    POINT pt{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)};
    RECT client{}, text = TextArea(hList, hCombo);
    GetClientRect(hList, &client);
    if (!PtInRect(&client, pt)) { ComboShowList(hCombo, false, false); return; }
    if (int i = RowAt(hCombo, c, pt, text); i >= 0) {
        PickLine(hCombo, i);
        ComboShowList(hCombo, false, true);
        return;
    }
    if (pt.x >= text.right) {
        int arrow = GetSystemMetrics(SM_CYVSCROLL), rows = ComboListRows(hCombo);
        if (pt.y < text.top + arrow) ComboListScroll(hCombo, -1);
        else if (pt.y >= text.bottom - arrow) ComboListScroll(hCombo, 1);
        else ComboListScroll(hCombo, pt.y < (text.top + text.bottom) / 2 ? -rows : rows);
    }
}

void OnMouseMove(HWND hList, LPARAM lp)
{
    HWND hCombo = ComboOfList(hList);
    ComboState* c = ComboOf(hCombo);
    if (!c) return;
    int hot = RowAt(hCombo, c, POINT{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)}, TextArea(hList, hCombo));
    if (hot == c->nHot || hot < 0) return;
    c->nHot = hot;
    InvalidateRect(hList, nullptr, TRUE);
}

void OpenList(HWND hCombo, ComboState* c)
{
    ComboNotify(hCombo, CBN_DROPDOWN);
    if (!(c = ComboOf(hCombo))) return;
    // The open list starts on the line the field's text begins, as the user sees it picked.
    std::u16string text;
    int n = GetWindowTextLength(c->hwndEdit);
    text.resize(n + 1);
    GetWindowText(c->hwndEdit, text.data(), n + 1);
    text.resize(n);
    if (!text.empty() && c->nCur < 0) c->nCur = FindLine(c, -1, text, false);
    c->nHot = -1;
    RECT rc{};
    GetWindowRect(hCombo, &rc);
    int rows = ComboListRows(hCombo), item = ComboItemHeight(hCombo);
    c->hwndList = CreateWindowEx(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, WC_COMBOLBOX, u"", WS_POPUP, rc.left, rc.bottom,
                                 rc.right - rc.left, rows * item + 2, GetAncestor(hCombo, GA_ROOT), nullptr, nullptr, nullptr);
    if (!c->hwndList) return;
    SetWindowLongPtr(c->hwndList, GWLP_USERDATA, (LONG_PTR)hCombo);
    c->bDropped = true;
    c->bButtonDown = true;
    if (c->nCur >= 0) ComboListScrollTo(hCombo, c->nCur);
    SetWindowPos(c->hwndList, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    SetCapture(c->hwndList);
    InvalidateRect(hCombo, nullptr, TRUE);
}

void CloseList(HWND hCombo, ComboState* c, bool bSelEndOk)
{
    HWND list = c->hwndList;
    c->hwndList = nullptr;
    c->bDropped = false;
    c->bButtonDown = false;
    c->nHot = -1;
    if (list) {
        if (GetCapture() == list) ReleaseCapture();
        DestroyWindow(list);
    }
    InvalidateRect(hCombo, nullptr, TRUE);
    ComboNotify(hCombo, bSelEndOk ? CBN_SELENDOK : CBN_SELENDCANCEL);
    ComboNotify(hCombo, CBN_CLOSEUP);
}

} // namespace

int ComboListRows(HWND hCombo)
{
    ComboState* c = ComboOf(hCombo);
    if (!c) return 1;
    int item = std::max(1, ComboItemHeight(hCombo));
    RECT rc{};
    GetWindowRect(hCombo, &rc);
    int room = (c->nDropHeight - (rc.bottom - rc.top) - 2) / item;
    return std::max(1, std::min(std::max(1, LineCount(c)), room));
}

void ComboListScroll(HWND hCombo, int nLines)
{
    ComboState* c = ComboOf(hCombo);
    if (!c) return;
    c->nTop += nLines;
    ClampTop(hCombo, c);
    if (c->hwndList) InvalidateRect(c->hwndList, nullptr, TRUE);
}

void ComboListScrollTo(HWND hCombo, int nLine)
{
    ComboState* c = ComboOf(hCombo);
    if (!c) return;
    int rows = ComboListRows(hCombo);
    if (nLine < c->nTop) c->nTop = nLine;
    else if (nLine >= c->nTop + rows) c->nTop = nLine - rows + 1;
    ClampTop(hCombo, c);
    if (c->hwndList) InvalidateRect(c->hwndList, nullptr, TRUE);
}

void ComboShowList(HWND hCombo, bool bShow, bool bSelEndOk)
{
    ComboState* c = ComboOf(hCombo);
    if (!c || c->bDropped == bShow) return;
    if (bShow) OpenList(hCombo, c);
    else CloseList(hCombo, c, bSelEndOk);
}

LRESULT CALLBACK ComboListWndProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case WM_PAINT: OnPaint(h); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
    case WM_LBUTTONDOWN: case WM_LBUTTONDBLCLK: OnButtonDown(h, lp); return 0;
    case WM_MOUSEMOVE: OnMouseMove(h, lp); return 0;
    case WM_MOUSEWHEEL: ComboListScroll(ComboOfList(h), -GET_WHEEL_DELTA_WPARAM(wp) / 40); return 0;
    case WM_CAPTURECHANGED: {
        // Losing the mouse to someone else closes the list, as a click elsewhere would.
        HWND hCombo = ComboOfList(h);
        if ((HWND)lp != h && ComboOf(hCombo) && ComboOf(hCombo)->hwndList == h) ComboShowList(hCombo, false, false);
        return 0;
    }
    default: return DefWindowProc(h, msg, wp, lp);
    }
}

} // namespace user

// The EDIT window's view: text measured and drawn through GDI in the window's font, horizontal
// scrolling, the caret, the selection highlight and the colours asked of the parent.
#include <algorithm>
#include "base/colors.h"
#include "edit_p.h"
#include "gdi/wingdi.h"
#include "inputapi.h"
#include "wndapi.h"

namespace user {

namespace {

std::u16string Shown(const EditState* e)
{
    return e->chPassword ? std::u16string(e->m.text.size(), e->chPassword) : e->m.text;
}

// A memory DC with the window's font selected, for measuring without a surface.
struct MeasureDC {
    HDC hdc;
    HGDIOBJ hOld = nullptr;
    explicit MeasureDC(const EditState* e) : hdc(CreateCompatibleDC(nullptr))
    {
        if (hdc && e->hFont) hOld = SelectObject(hdc, e->hFont);
    }
    ~MeasureDC()
    {
        if (hOld) SelectObject(hdc, hOld);
        if (hdc) DeleteDC(hdc);
    }
};

int Extent(HDC hdc, const std::u16string& s, int n)
{
    SIZE sz{0, 0};
    if (n > 0) GetTextExtentPoint32(hdc, s.data(), n, &sz);
    return sz.cx;
}

int FormatWidth(const EditState* e)
{
    RECT rc{};
    GetClientRect(e->hwnd, &rc);
    return std::max<int>(0, rc.right - e->nLeftMargin - e->nRightMargin);
}

} // namespace

int EditTextX(EditState* e, int nPos)
{
    MeasureDC dc(e);
    return e->nLeftMargin - e->nScroll + Extent(dc.hdc, Shown(e), std::clamp(nPos, 0, e->m.Length()));
}

int EditPosFromX(EditState* e, int x)
{
    MeasureDC dc(e);
    std::u16string s = Shown(e);
    int target = x - e->nLeftMargin + e->nScroll;
    int prev = 0;
    for (int i = 1; i <= (int)s.size(); ++i) {
        int cur = Extent(dc.hdc, s, i);
        if (target < (prev + cur) / 2) return i - 1;
        prev = cur;
    }
    return (int)s.size();
}

int EditTextHeight(EditState* e)
{
    MeasureDC dc(e);
    TEXTMETRICW tm{};
    return GetTextMetrics(dc.hdc, &tm) ? tm.tmHeight : 16;
}

bool EditFits(EditState* e, const std::u16string& text)
{
    MeasureDC dc(e);
    std::u16string s = e->chPassword ? std::u16string(text.size(), e->chPassword) : text;
    return Extent(dc.hdc, s, (int)s.size()) <= FormatWidth(e);
}

// Stand-in: scrolls only as far as the caret needs, where the real control jumps further ahead.
void EditScrollToCaret(EditState* e)
{
    if (!(GetWindowLongPtr(e->hwnd, GWL_STYLE) & ES_AUTOHSCROLL)) { e->nScroll = 0; return; }
    MeasureDC dc(e);
    std::u16string s = Shown(e);
    int caret = Extent(dc.hdc, s, e->m.nCaret), total = Extent(dc.hdc, s, (int)s.size());
    int width = FormatWidth(e);
    if (caret < e->nScroll) e->nScroll = caret;
    else if (caret >= e->nScroll + width) e->nScroll = caret - width + 1;
    // No blank space is kept on the right while text lies scrolled out on the left.
    e->nScroll = std::max(0, std::min(e->nScroll, total - width + 1));
    EditPlaceCaret(e);
}

void EditPlaceCaret(EditState* e)
{
    if (GetFocus() != e->hwnd) return;
    SetCaretPos(EditTextX(e, e->m.nCaret), 0);
}

namespace {

void DrawRun(HDC hdc, int x, const std::u16string& s, int a, int b, int prefixWidth)
{
    if (b > a) TextOut(hdc, x + prefixWidth, 0, s.data() + a, b - a);
}

// The parent gives colours and brush; a disabled or read-only edit asks as a static control.
HBRUSH AskColours(EditState* e, HDC hdc)
{
    bool bStatic = !IsWindowEnabled(e->hwnd) || (GetWindowLongPtr(e->hwnd, GWL_STYLE) & ES_READONLY);
    UINT msg = bStatic ? WM_CTLCOLORSTATIC : WM_CTLCOLOREDIT;
    HWND parent = GetParent(e->hwnd);
    auto hbr = parent ? (HBRUSH)SendMessage(parent, msg, (WPARAM)hdc, (LPARAM)e->hwnd) : nullptr;
    if (!hbr) hbr = (HBRUSH)DefWindowProc(e->hwnd, msg, (WPARAM)hdc, (LPARAM)e->hwnd);
    if (!IsWindowEnabled(e->hwnd)) SetTextColor(hdc, GetSysColor(COLOR_GRAYTEXT));
    return hbr;
}

} // namespace

void EditPaint(EditState* e)
{
    HWND hwnd = e->hwnd;
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(hwnd, &ps);
    if (!hdc) { EndPaint(hwnd, &ps); return; }
    HBRUSH hbr = AskColours(e, hdc);
    if (!(e = EditOf(hwnd))) { EndPaint(hwnd, &ps); return; }
    RECT rc{};
    GetClientRect(hwnd, &rc);
    FillRect(hdc, &rc, hbr);
    HGDIOBJ hOldFont = e->hFont ? SelectObject(hdc, e->hFont) : nullptr;
    IntersectClipRect(hdc, e->nLeftMargin, 0, rc.right - e->nRightMargin, rc.bottom);
    SetBkMode(hdc, OPAQUE);
    std::u16string s = Shown(e);
    int x = e->nLeftMargin - e->nScroll;
    int a = e->m.SelStart(), b = e->m.SelEnd();
    bool showSel = e->m.HasSel() && (GetFocus() == hwnd || (GetWindowLongPtr(hwnd, GWL_STYLE) & ES_NOHIDESEL));
    if (!showSel) a = b = (int)s.size();
    DrawRun(hdc, x, s, 0, a, 0);
    DrawRun(hdc, x, s, b, (int)s.size(), Extent(hdc, s, b));
    if (showSel) {
        int xa = Extent(hdc, s, a), xb = Extent(hdc, s, b);
        RECT rcSel{x + xa, 0, x + xb, std::min<LONG>(rc.bottom, EditTextHeight(e))};
        FillRect(hdc, &rcSel, GetSysColorBrush(COLOR_HIGHLIGHT));
        SetTextColor(hdc, GetSysColor(COLOR_HIGHLIGHTTEXT));
        SetBkColor(hdc, GetSysColor(COLOR_HIGHLIGHT));
        DrawRun(hdc, x, s, a, b, xa);
    }
    if (hOldFont) SelectObject(hdc, hOldFont);
    EndPaint(hwnd, &ps);
}

} // namespace user

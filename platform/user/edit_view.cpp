// The EDIT window's view: text measured and drawn through GDI in the window's font, horizontal
// scrolling, the caret, the selection highlight and the colours asked of the parent.
#include <algorithm>
#include <cstring>
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

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c < 0xDC00; }

size_t CommonPrefix(const std::u16string& a, const std::u16string& b)
{
    // Block by block first, which the library compares many characters at a time.
    constexpr size_t kBlock = 256;
    size_t n = std::min(a.size(), b.size()), i = 0;
    while (i + kBlock <= n && std::memcmp(a.data() + i, b.data() + i, kBlock * sizeof(char16_t)) == 0) i += kBlock;
    while (i < n && a[i] == b[i]) ++i;
    // A boundary inside a surrogate pair measures differently once the pair is whole.
    if (i > 0 && IsHighSurrogate(a[i - 1])) --i;
    return i;
}

// The x of every boundary of the shown text, brought up to date from the first changed character.
const std::vector<int>& Widths(EditState* e)
{
    EditState::Widths& w = e->widths;
    std::u16string masked;
    if (e->chPassword) masked = Shown(e);
    const std::u16string& s = e->chPassword ? masked : e->m.text;
    size_t keep = w.hFont == e->hFont ? CommonPrefix(w.text, s) : 0;
    if (keep == s.size() && keep == w.text.size()) return w.xs;
    w.xs.resize(keep + 1);
    MeasureDC dc(e);
    for (size_t i = keep; i < s.size(); ++i) {
        // One character at a time, a pair whole, on the width of what comes before: no kerning.
        int n = IsHighSurrogate(s[i]) && i + 1 < s.size() ? 2 : 1;
        SIZE one{0, 0}, pair{0, 0};
        GetTextExtentPoint32(dc.hdc, s.data() + i, 1, &one);
        w.xs.push_back(w.xs[i] + one.cx);
        if (n == 2) {
            GetTextExtentPoint32(dc.hdc, s.data() + i, 2, &pair);
            w.xs.push_back(w.xs[i] + pair.cx);
            ++i;
        }
    }
    w.text = s;
    w.hFont = e->hFont;
    return w.xs;
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
    const std::vector<int>& xs = Widths(e);
    return e->nLeftMargin - e->nScroll + xs[std::clamp<size_t>(nPos, 0, xs.size() - 1)];
}

int EditPosFromX(EditState* e, int x)
{
    const std::vector<int>& xs = Widths(e);
    int target = x - e->nLeftMargin + e->nScroll;
    for (size_t i = 1; i < xs.size(); ++i)
        if (target < (xs[i - 1] + xs[i]) / 2) return (int)i - 1;
    return (int)xs.size() - 1;
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
    const std::vector<int>& xs = Widths(e);
    int caret = xs[std::clamp<size_t>(e->m.nCaret, 0, xs.size() - 1)], total = xs.back();
    int width = FormatWidth(e);
    if (caret < e->nScroll) e->nScroll = caret;
    else if (caret >= e->nScroll + width) e->nScroll = caret - width + 1;
    // No blank space is kept on the right while text lies scrolled out on the left.
    e->nScroll = std::max(0, std::min(e->nScroll, total - width + 1));
    if (GetFocus() == e->hwnd) SetCaretPos(e->nLeftMargin - e->nScroll + caret, 0); // as EditPlaceCaret, measured once
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

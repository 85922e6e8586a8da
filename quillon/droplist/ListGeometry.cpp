// The popup list's arithmetic on plain values: placement, scroll bar layout, arrows, edges, thumb bands.
#include "droplist/ListGeometry.h"
#include <algorithm>

namespace listgeo {

int ContentHeight(int nRowHeight, int nRows, int nPadTop, int nPadBottom)
{
    return nRowHeight * (nRows > 0 ? nRows : 1) + nPadTop + nPadBottom;
}

RECT PlaceRect(const RECT& rcControl, ScreenSize screen, int nContentHeight)
{
    const LONG W = rcControl.right - rcControl.left;
    RECT rc{rcControl.left, rcControl.bottom, rcControl.left + W, rcControl.bottom + nContentHeight};
    // Only a list whose left edge is off the screen moves; one that merely runs past the right edge stays.
    if (rcControl.left < 0) {
        rc.left = 0;
        rc.right = W;
    } else if (rcControl.left > screen.cx) {
        rc.right = screen.cx;
        rc.left = screen.cx - W;
    }
    // A bottom exactly on the screen's height still fits; an upward list is not checked against the top.
    if (rc.bottom > screen.cy) {
        rc.bottom = rcControl.top;
        rc.top = rcControl.top - nContentHeight;
    }
    return rc;
}

namespace {

RECT ThumbRect(LONG L, LONG R, LONG U, LONG D, int nSize, int nMin, int nMax, int nPos)
{
    if (D - U < kMinThumb) return RECT{0, 0, 0, 0};
    // At the end the thumb touches the lower arrow exactly; elsewhere the division truncates.
    if (nPos == nMax || nMax <= nMin) return RECT{L, D - nSize, R, D};
    LONG top = U + (D - nSize - U) * (nPos - nMin) / (nMax - nMin);
    return RECT{L, top, R, top + nSize};
}

} // namespace

BarLayout LayoutBar(const RECT& rcInner, int nWidth, int nMin, int nMax, int nPos)
{
    const LONG T = rcInner.top, B = rcInner.bottom, R = rcInner.right, L = R - nWidth;
    const LONG U = T + nWidth, D = B - nWidth;
    BarLayout b{};
    b.rcBar = RECT{L, T, R, B};
    b.rcUp = RECT{L, T, R, U};
    b.rcDown = RECT{L, D, R, B};
    b.nThumbSize = std::max<int>(D - U - kMinThumb * (nMax - nMin), kMinThumb);
    b.rcThumb = ThumbRect(L, R, U, D, b.nThumbSize, nMin, nMax, nPos);
    if (b.rcThumb.bottom > b.rcThumb.top) {
        b.rcPageUp = RECT{L, U, R, b.rcThumb.top};
        b.rcPageDown = RECT{L, b.rcThumb.bottom, R, D};
    } else {
        b.rcPageUp = b.rcPageDown = RECT{L, U, R, D};
    }
    return b;
}

bool ArrowTriangle(const RECT& rc, bool bUp, int nShift, glyph::Triangle* pTri)
{
    const int w = rc.right - rc.left, h = rc.bottom - rc.top;
    const int a = (std::min(w, h) - 4) / 4; // half the base, truncated
    if (a < 1) return false;                 // no triangle has a base below two pixels
    const LONG x = rc.left + w / 2 + nShift - (w % 2 == 0 ? 1 : 0);
    const int t = (a + 1) / a * a;           // the height: a, but 2 when a is 1
    const LONG base = bUp ? rc.top + nShift + (h + t) / 2 : rc.top + nShift + (h - t) / 2;
    const LONG tip = bUp ? base - t : base + t;
    *pTri = glyph::Triangle{{x, tip}, {x - a, base}, {x + a, base}};
    return true;
}

int ThumbBand(int nThumbTop, int nThumbHeight, int nTrackTop, int nTrackBottom, int nRange)
{
    const int F = nTrackBottom - nTrackTop - nThumbHeight;
    if (F <= 0) return -1;
    // range + 1 bands, truncated: the last position is reached before the thumb touches the end.
    int p = (nRange + 1) * (nThumbTop - nTrackTop) / F;
    return std::min(p, nRange);
}

std::vector<EdgeLine> EdgeSet(bool bSetA, const RECT& rc)
{
    const LONG L = rc.left, T = rc.top, R = rc.right, B = rc.bottom;
    if (!bSetA)
        return {{PenWhite, {{L, B - 1}, {L, T}, {R, T}}}, {PenShadow, {{R - 1, T}, {R - 1, B - 1}, {L - 1, B - 1}}}};
    return {{PenFace, {{L, B - 1}, {L, T}, {R, T}}},
            {PenBlack, {{R - 1, T}, {R - 1, B - 1}, {L - 1, B - 1}}},
            {PenWhite, {{L + 1, B - 2}, {L + 1, T + 1}, {R - 1, T + 1}}},
            {PenShadow, {{R - 2, T + 1}, {R - 2, B - 2}, {L, B - 2}}}};
}

} // namespace listgeo

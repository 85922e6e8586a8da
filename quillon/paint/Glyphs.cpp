// The glyphs of the buttons: the filled triangles of drop and spin buttons and the three-stroke line arrows.
#include "control/QuillonCtrl.h"
#include "framework/dc.h"
#include "paint/Glyphs.h"

namespace glyph {

namespace {

int HalfWidth(int wa, int nArrowType) { return nArrowType == ArrowSmall ? wa / 4 : (wa / 8) * 3; }

} // namespace

Triangle DropTriangle(const RECT& rcButton, LONG nControlTop, int nInsetTop, int nBevel, int nArrowType, int nOffset)
{
    const LONG L = rcButton.left, T = rcButton.top, R = rcButton.right, B = rcButton.bottom;
    int wa = R - nBevel - L;
    int a = static_cast<SHORT>(HalfWidth(wa, nArrowType));
    int hb = B - T;
    int v = hb / 3 < 1 ? 1 : hb / 3;
    int d = a < v ? a : (a / v) * v;
    LONG cx = L + wa / 2 + nOffset;
    // The inset is added whatever the border kind, so with BorderRegular the arrow sits a pixel low.
    LONG y0 = nControlTop + 1 + nInsetTop + nOffset + d + (hb - d - 2) / 2;
    return {{cx, y0}, {cx - a, y0 - d}, {cx + a, y0 - d}};
}

Triangle SpinTriangle(const RECT& rcButton, const RECT& rcControl, bool bUpper, int nBevel, int nArrowType, int nOffset)
{
    const LONG L = rcButton.left, T = rcButton.top, R = rcButton.right, B = rcButton.bottom;
    int wa = R - nBevel - L;
    int a = HalfWidth(wa, nArrowType);
    int v = (rcControl.bottom - rcControl.top) / 6;
    if (v < 1) v = 1;
    // A button too narrow for any half-width has no multiple to round to: the arrow becomes a line of height v.
    int d = a == 0 || v < a ? v : (v / a) * a;
    LONG cx = L + (R - L) / 2 + nOffset;
    int hb = B - T;
    LONG yb = bUpper ? T + (hb + d) / 2 + nOffset : T + (hb - d) / 2 + nOffset;
    LONG ya = bUpper ? yb - d : yb + d;
    return {{cx, ya}, {cx - a, yb}, {cx + a, yb}};
}

void DrawTriangle(CDC* pDC, COLORREF clr, const Triangle& tri)
{
    CBrush brush(clr);
    CPen pen(PS_SOLID, 1, clr);
    CSelectObject selectBrush(pDC, &brush), selectPen(pDC, &pen);
    const POINT pts[3] = {tri.apex, tri.left, tri.right};
    pDC->Polygon(pts, 3);
}

} // namespace glyph

namespace {

struct Stroke {
    POINT from, through, to;
};

// Three strokes of two segments each, side by side, make one thick arrow.
void DrawStrokes(CDC* pDC, COLORREF clr, const Stroke (&strokes)[3])
{
    CPen pen(PS_SOLID, 1, clr);
    CSelectObject select(pDC, &pen);
    for (const Stroke& s : strokes) {
        pDC->MoveTo(s.from.x, s.from.y);
        pDC->LineTo(s.through.x, s.through.y);
        pDC->LineTo(s.to.x, s.to.y);
    }
}

} // namespace

void CQuillonCtrl::DrawSpinTriangle(CDC* pDC, SHORT nWhich, const CRect& rcButton, const CRect& rc)
{
    OLE_COLOR clr = GetEnabled() ? m_clrSpinFore : m_clrDisabled;
    int nOffset = m_nSpinPressed == nWhich ? 1 : 0;
    glyph::DrawTriangle(pDC, TranslateColor(clr),
                        glyph::SpinTriangle(rcButton, rc, nWhich != 2, m_nButtonBevel, m_nArrowType, nOffset));
}

// The line arrows have a fixed size whatever the button's; anything but ArrowLine1 draws as ArrowLine2.
void CQuillonCtrl::DrawDownChevron(CDC* pDC, OLE_COLOR clr, SHORT nOffset, SHORT nArrowType, const CRect& rc)
{
    const LONG cx = rc.left + rc.Width() / 2 + nOffset, cy = rc.top + rc.Height() / 2 + nOffset + 1;
    const Stroke third = nArrowType == ArrowLine1 ? Stroke{{cx - 4, cy - 2}, {cx, cy + 2}, {cx + 5, cy - 3}}
                                                  : Stroke{{cx - 3, cy - 1}, {cx, cy + 2}, {cx + 4, cy - 2}};
    const Stroke strokes[3] = {
        {{cx - 3, cy - 3}, {cx, cy}, {cx + 4, cy - 4}},
        {{cx - 3, cy - 2}, {cx, cy + 1}, {cx + 4, cy - 3}},
        third,
    };
    DrawStrokes(pDC, TranslateColor(clr), strokes);
}

void CQuillonCtrl::DrawUpChevron(CDC* pDC, OLE_COLOR clr, SHORT nOffset, SHORT nArrowType, const CRect& rc)
{
    const LONG cx = rc.left + rc.Width() / 2 + nOffset, cy = rc.top + rc.Height() / 2 + nOffset;
    const Stroke first = nArrowType == ArrowLine1 ? Stroke{{cx - 4, cy + 1}, {cx, cy - 3}, {cx + 5, cy + 2}}
                                                  : Stroke{{cx - 3, cy}, {cx, cy - 3}, {cx + 4, cy + 1}};
    const Stroke strokes[3] = {
        first,
        {{cx - 3, cy + 1}, {cx, cy - 2}, {cx + 4, cy + 2}},
        {{cx - 3, cy + 2}, {cx, cy - 1}, {cx + 4, cy + 3}},
    };
    DrawStrokes(pDC, TranslateColor(clr), strokes);
}

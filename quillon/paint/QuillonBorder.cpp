// CQuillonCtrl: the four border kinds, each a fixed sequence of one-pixel lines.
#include "control/QuillonCtrl.h"

namespace {

constexpr OLE_COLOR kBtnShadow = 0x80000010;
constexpr OLE_COLOR kLight3D = 0x80000016;

// One Polyline in a pen of the colour, or in a stock pen.
void Line(CDC* pDC, HGDIOBJ pen, std::initializer_list<POINT> points)
{
    CSelectObject select(pDC, pen);
    pDC->Polyline(points.begin(), static_cast<int>(points.size()));
}

void Line(CDC* pDC, COLORREF colour, std::initializer_list<POINT> points)
{
    CPen pen(PS_SOLID, 0, colour);
    Line(pDC, pen.GetSafeHandle(), points);
}

} // namespace

void CQuillonCtrl::DrawBorder(CDC* pDC, const CRect& rc)
{
    const LONG l = rc.left, t = rc.top, r = rc.right, b = rc.bottom;
    HGDIOBJ white = ::GetStockObject(WHITE_PEN), black = ::GetStockObject(BLACK_PEN);
    COLORREF shadow = TranslateColor(kBtnShadow), light = TranslateColor(kLight3D);
    switch (m_nBorderType) {
    case BorderRegular:
        Line(pDC, TranslateColor(m_clrBorder), {{l, t}, {r - 1, t}, {r - 1, b - 1}, {l, b - 1}, {l, t}});
        break;
    case BorderLowered:
        Line(pDC, shadow, {{l, b - 1}, {l, t}, {r - 1, t}});
        Line(pDC, white, {{l, b - 1}, {r - 1, b - 1}, {r - 1, t - 1}});
        Line(pDC, light, {{l + 1, b - 2}, {r - 2, b - 2}, {r - 2, t}});
        Line(pDC, black, {{l + 1, b - 2}, {l + 1, t + 1}, {r - 2, t + 1}});
        break;
    case BorderRaised:
        Line(pDC, white, {{l, b - 1}, {l, t}, {r - 1, t}});
        Line(pDC, shadow, {{l, b - 1}, {r - 1, b - 1}, {r - 1, t - 1}});
        Line(pDC, black, {{l + 1, b - 2}, {r - 2, b - 2}, {r - 2, t}});
        Line(pDC, light, {{l + 1, b - 2}, {l + 1, t + 1}, {r - 2, t + 1}});
        break;
    }
}

// CQuillonCtrl: the drop and spin buttons (rectangles, faces, bevels, pressed outlines) and the modern frame.
#include <initializer_list>
#include "control/QuillonCtrl.h"
#include "framework/dc.h"
#include "paint/Glyphs.h"

namespace {

constexpr OLE_COLOR kBtnShadow = 0x80000010;
constexpr OLE_COLOR kLight3D = 0x80000016;

bool IsRaisedOrLowered(SHORT nBorderType) { return nBorderType == BorderRaised || nBorderType == BorderLowered; }

// One bevel segment: MoveTo the first point, LineTo the rest, in a pen selected for this segment alone.
void Segment(CDC* pDC, HGDIOBJ pen, std::initializer_list<POINT> points)
{
    CSelectObject select(pDC, pen);
    const POINT* p = points.begin();
    pDC->MoveTo(p->x, p->y);
    for (++p; p != points.end(); ++p) pDC->LineTo(p->x, p->y);
}

void Segment(CDC* pDC, COLORREF clr, std::initializer_list<POINT> points)
{
    CPen pen(PS_SOLID, 1, clr);
    Segment(pDC, pen.GetSafeHandle(), points);
}

// A pressed regular button: the selected back-colour brush inside a shadow outline, no gradient, no bevel.
void OutlinePressed(CDC* pDC, COLORREF clrShadow, const CRect& rc)
{
    CPen pen(PS_SOLID, 1, clrShadow);
    CSelectObject select(pDC, &pen);
    pDC->Rectangle(rc.left, rc.top, rc.right, rc.bottom);
}

// Light outer edge, black right and bottom, then rings of white and shadow; a large bevel lets them cross.
void DrawDropBevel(CDC* pDC, const CRect& rcButton, int nBevel, COLORREF clrLight, COLORREF clrShadow)
{
    const LONG L = rcButton.left, T = rcButton.top, R = rcButton.right, B = rcButton.bottom;
    HGDIOBJ white = ::GetStockObject(WHITE_PEN), black = ::GetStockObject(BLACK_PEN);
    Segment(pDC, clrLight, {{L, B - 1}, {L, T}, {R, T}});
    Segment(pDC, black, {{R - 1, T}, {R - 1, B - 1}, {L - 1, B - 1}});
    if (nBevel == 0) Segment(pDC, black, {{L, B - 1}, {L, T}, {R - 1, T}});
    for (int i = 0; i < nBevel; ++i) {
        Segment(pDC, white, {{L + i + 1, B - 2 - i}, {L + i + 1, T + 1 + i}, {R - 1 - i, T + 1 + i}});
        Segment(pDC, clrShadow, {{R - 2 - i, T + 1 + i}, {R - 2 - i, B - 2 - i}, {L + i, B - 2 - i}});
    }
}

// As the drop bevel, one pixel in on the left, and the rings stop at a quarter of the shorter side.
// Without a bevel, the lower button draws the seam that the upper one, when down and a pixel taller, covers.
void DrawSpinBevel(CDC* pDC, const CRect& rcButton, int nBevel, bool bSeam, COLORREF clrLight, COLORREF clrShadow)
{
    const LONG L = rcButton.left, T = rcButton.top, R = rcButton.right, B = rcButton.bottom;
    HGDIOBJ white = ::GetStockObject(WHITE_PEN), black = ::GetStockObject(BLACK_PEN);
    if (nBevel != 0) Segment(pDC, clrLight, {{L + 1, B - 1}, {L + 1, T}, {R, T}});
    Segment(pDC, black, {{R - 1, T}, {R - 1, B - 1}, {L - 1, B - 1}});
    if (nBevel == 0) Segment(pDC, black, {{L, B - 1}, {L, T}, {R - 1, T}});
    if (nBevel == 0 && bSeam) Segment(pDC, clrShadow, {{L, T}, {R, T}});
    const int m = (R - L < B - T ? R - L : B - T) / 4;
    for (int i = 0; i < nBevel && i <= m; ++i) {
        Segment(pDC, white, {{L + i + 2, B - 2 - i}, {L + i + 2, T + 1 + i}, {R - 1 - i, T + 1 + i}});
        Segment(pDC, clrShadow, {{R - 2 - i, T + 1 + i}, {R - 2 - i, B - 2 - i}, {L + i + 1, B - 2 - i}});
    }
}

CRect DropButtonRect(const CQuillonCtrl& c, const CRect& rc)
{
    CRect btn = rc;
    if (c.m_nBorderType != BorderRegular) {
        btn.top = rc.top + c.m_nInsetTop;
        btn.bottom = rc.bottom - c.m_nInsetBottom;
        btn.right = rc.right - c.m_nInsetRight;
    }
    // The regular drop button overlaps the spin column by one pixel; the modern one keeps a gap of one.
    if (c.m_bSpinButton) btn.right += c.m_nButtonStyle == ButtonModern ? -1 - c.m_nSpinWidth : 1 - c.m_nSpinWidth;
    btn.left = btn.right - c.m_nDropWidth;
    return btn;
}

// The flat look moves the face off the edges: in under a plain border, out over a 3-D one, whose lines are not drawn.
CRect FlatDropFill(const CQuillonCtrl& c, const CRect& btn)
{
    bool b3D = IsRaisedOrLowered(c.m_nBorderType);
    CRect fill = btn;
    fill.top = b3D ? btn.top - 1 : btn.top + 1;
    fill.bottom = b3D ? btn.bottom + 1 : btn.bottom - 1;
    fill.right = b3D && !c.m_bSpinButton ? btn.right + 1 : btn.right - 1;
    return fill;
}

CRect SpinButtonRect(const CQuillonCtrl& c, bool bLower, const CRect& rc)
{
    const bool modern = c.m_nButtonStyle == ButtonModern, plain = c.m_nBorderType == BorderRegular;
    CRect btn;
    btn.right = modern ? rc.right - c.m_nInsetRight - 1 : plain ? rc.right : rc.right - c.m_nInsetRight;
    btn.left = btn.right - c.m_nSpinWidth;
    const LONG mid = rc.top + (rc.bottom - rc.top) / 2;
    if (bLower) {
        btn.top = mid;
        btn.bottom = modern ? rc.bottom - c.m_nInsetBottom - 1 : plain ? rc.bottom : rc.bottom - c.m_nInsetBottom;
    } else {
        btn.top = modern ? rc.top + c.m_nInsetTop + 1 : plain ? rc.top : rc.top + c.m_nInsetTop;
        // Without a bevel the upper button reaches one pixel into the lower.
        btn.bottom = c.m_nButtonBevel == 0 && !modern ? mid + 1 : mid;
    }
    return btn;
}

CRect FlatSpinFill(const CQuillonCtrl& c, bool bLower, const CRect& btn)
{
    const int nOut = IsRaisedOrLowered(c.m_nBorderType) ? 1 : -1;
    CRect fill = btn;
    fill.left = btn.left + 1;
    fill.right = btn.right + nOut;
    if (bLower) fill.bottom = btn.bottom + nOut;
    else fill.top = btn.top - nOut;
    return fill;
}

} // namespace

void CQuillonCtrl::DrawDropButton(CDC* pDC, const CRect& rc)
{
    const BOOL active = IsFaceActive();
    const bool modern = m_nButtonStyle == ButtonModern;
    const CRect rcButton = DropButtonRect(*this, rc);
    const CRect rcFrame(rcButton.left, rcButton.top + 2, rcButton.right - 2, rcButton.bottom - 2);
    CRect rcFill = active ? rcButton : FlatDropFill(*this, rcButton);

    CBrush back(TranslateColor(m_clrDropBack));
    if (modern) {
        rcFill.top += 2;
        rcFill.bottom -= 2;
        rcFill.right -= 2;
    }
    {
        CSelectObject brush(pDC, &back);
        if (m_nDropPressed == 1) {
            if (modern) {
                rcFill = rcFrame;
                FillButtonFace(pDC, m_clrDropBack, 0xffffff, FillSolid, rcFill);
                DrawModernFrame(pDC, m_clrDropBack, m_clrDropBackTo, rcFill);
            } else {
                OutlinePressed(pDC, TranslateColor(kBtnShadow), rcButton);
            }
        } else {
            FillButtonFace(pDC, m_clrDropBack, m_clrDropBackTo, m_nButtonFillType, rcFill);
            if (modern) {
                rcFill = rcFrame;
                DrawModernFrame(pDC, m_clrDropBack, m_clrDropBackTo, rcFill);
            } else if (active) {
                DrawDropBevel(pDC, rcButton, m_nButtonBevel, TranslateColor(kLight3D), TranslateColor(kBtnShadow));
            }
        }
    }

    const SHORT nOffset = m_nDropPressed != 0 ? 1 : 0;
    const SHORT nPicType = m_picDrop.GetType();
    if (nPicType == PICTYPE_ICON || nPicType == PICTYPE_BITMAP) {
        DrawDropPicture(pDC, nOffset, rcButton);
        return;
    }
    const OLE_COLOR clr = GetEnabled() ? m_clrDropFore : m_clrDisabled;
    if (m_nArrowType == ArrowLine1 || m_nArrowType == ArrowLine2)
        DrawDownChevron(pDC, clr, nOffset, m_nArrowType, rcFill);
    else
        glyph::DrawTriangle(pDC, TranslateColor(clr),
                            glyph::DropTriangle(rcButton, rc.top, m_nInsetTop, m_nButtonBevel, m_nArrowType, nOffset));
}

void CQuillonCtrl::DrawSpinButton(CDC* pDC, SHORT nWhich, const CRect& rc)
{
    const BOOL active = IsFaceActive();
    const bool modern = m_nButtonStyle == ButtonModern, lower = nWhich == 2;
    const CRect rcButton = SpinButtonRect(*this, lower, rc);
    // Unlike the drop button, the modern spin buttons keep their face where it is in the flat look.
    const CRect rcFill = active || modern ? rcButton : FlatSpinFill(*this, lower, rcButton);

    CBrush back(TranslateColor(m_clrSpinBack));
    const bool pressed = m_nSpinPressed == nWhich;
    {
        CSelectObject brush(pDC, &back);
        if (pressed && modern) {
            FillButtonFace(pDC, m_clrSpinBack, 0xffffff, FillSolid, rcFill);
            DrawModernFrame(pDC, m_clrSpinBack, m_clrSpinBackTo, rcFill);
        } else if (pressed) {
            // Column L belongs to the drop button beside it, which is painted afterwards.
            CRect outline = rcButton;
            if (m_bDropButton) outline.left += 1;
            OutlinePressed(pDC, TranslateColor(kBtnShadow), outline);
        } else {
            FillButtonFace(pDC, m_clrSpinBack, m_clrSpinBackTo, m_nButtonFillType, rcFill);
            if (modern)
                DrawModernFrame(pDC, m_clrSpinBack, m_clrSpinBackTo, rcFill);
            else if (active)
                DrawSpinBevel(pDC, rcButton, m_nButtonBevel, m_nSpinPressed == 1 && lower, TranslateColor(kLight3D),
                              TranslateColor(kBtnShadow));
        }
    }

    if (m_nArrowType == ArrowLine1 || m_nArrowType == ArrowLine2) {
        const OLE_COLOR clr = GetEnabled() ? m_clrSpinFore : m_clrDisabled;
        const SHORT nOffset = pressed ? 1 : 0;
        if (lower) DrawDownChevron(pDC, clr, nOffset, m_nArrowType, rcFill);
        else DrawUpChevron(pDC, clr, nOffset, m_nArrowType, rcFill);
    } else {
        DrawSpinTriangle(pDC, nWhich, rcButton, rc);
    }
}

void CQuillonCtrl::DrawModernFrame(CDC* pDC, OLE_COLOR clrLine, OLE_COLOR clrCorner, const CRect& rc)
{
    // ReverseBorder swaps the roles: the corner dots are what rounds the frame to the eye.
    const COLORREF line = TranslateColor(m_bReverseBorder ? clrCorner : clrLine);
    const COLORREF corner = TranslateColor(m_bReverseBorder ? clrLine : clrCorner);
    const LONG l = rc.left, t = rc.top, r = rc.right, b = rc.bottom;
    {
        CPen pen(PS_SOLID, 0, line);
        CSelectObject select(pDC, &pen);
        pDC->MoveTo(l, t);
        pDC->LineTo(r - 1, t);
        pDC->LineTo(r - 1, b - 1);
        pDC->LineTo(l, b - 1);
        pDC->LineTo(l, t);
    }
    pDC->SetPixel(l, t, corner);
    pDC->SetPixel(r - 1, b - 1, corner);
    pDC->SetPixel(r - 1, t, corner);
    pDC->SetPixel(l, b - 1, corner);
}

// CQuillonCtrl: FillButtonFace, which paints a pattern's shapes into a device context, one brush per shape.
#include "control/QuillonCtrl.h"
#include "framework/dc.h"
#include "paint/FillGeometry.h"

namespace {

// Every shape gets a brush of its own, made, used and deleted before the next; the pen is NULL_PEN throughout.
class CDCShapeSink : public fill::ShapeSink {
public:
    explicit CDCShapeSink(CDC* pDC) : m_pDC(pDC) {}

    void Rect(const RECT& rc, COLORREF clr) override
    {
        CBrush brush(clr);
        m_pDC->FillRect(&rc, &brush);
    }

    void Polygon(const POINT* pts, int count, COLORREF clr) override
    {
        CBrush brush(clr);
        CSelectObject select(m_pDC, &brush);
        m_pDC->Polygon(pts, count);
    }

    void Ellipse(const RECT& rc, COLORREF clr) override
    {
        CBrush brush(clr);
        CSelectObject select(m_pDC, &brush);
        m_pDC->Ellipse(rc.left, rc.top, rc.right, rc.bottom);
    }

private:
    CDC* m_pDC;
};

} // namespace

void CQuillonCtrl::FillButtonFace(CDC* pDC, OLE_COLOR clrFrom, OLE_COLOR clrTo, SHORT nFillType, const CRect& rc)
{
    COLORREF rgbFrom = TranslateColor(clrFrom);
    COLORREF rgbTo = TranslateColor(clrTo);

    // The edge patterns are two linear gradients that both run toward a middle colour, so that the second
    // starts with a hard step. The halves are plain linear kinds, so this nests one deep only.
    fill::EdgeSplit split;
    if (fill::SplitEdge(nFillType, rgbFrom, rgbTo, rc, &split)) {
        FillButtonFace(pDC, clrFrom, split.clrMiddle, static_cast<SHORT>(split.nKind), CRect(split.first));
        FillButtonFace(pDC, clrTo, split.clrMiddle, static_cast<SHORT>(split.nKind), CRect(split.second));
        return;
    }

    CSelectObject pen(pDC, ::GetStockObject(NULL_PEN));
    CDCShapeSink sink(pDC);
    fill::EmitPattern(sink, nFillType, rgbFrom, rgbTo, rc);
}

// Pixel primitives shared by the drawing calls: brush paints, clipped spans and boxes, pens.
#include "gdi/raster_p.h"

namespace gdi {

uint32_t Paint::At(int x, int y) const
{
    if (bSolid)
        return px;
    int cx = pPat->m_cxPat, cy = pPat->m_cyPat;
    int i = ((x - ox) % cx + cx) % cx, j = ((y - oy) % cy + cy) % cy;
    uint32_t v = pPat->m_pat[static_cast<size_t>(j) * cx + i];
    if (pPat->m_bMonoPat)
        v = v ? pxBack : pxFore;
    return bMono ? ToMono(v) : v;
}

Paint SolidPaint(uint32_t px)
{
    Paint p;
    p.bNone = false;
    p.px = px;
    return p;
}

Paint BrushPaint(const Target& t, const Brush* pBrush)
{
    Paint p;
    if (!pBrush || pBrush->m_nStyle == BS_NULL)
        return p;
    p.bNone = false;
    if (pBrush->m_nStyle != BS_PATTERN || pBrush->m_pat.empty()) {
        p.px = t.Pixel(pBrush->Color());
        return p;
    }
    p.bSolid = false;
    p.pPat = pBrush;
    p.bMono = t.IsMono();
    p.pxFore = ToPixel(t.pdc->m_st.m_clrText);
    p.pxBack = ToPixel(t.pdc->m_st.m_clrBk);
    p.ox = t.pdc->m_ptOrigin.x + t.pdc->m_st.m_ptBrushOrg.x;
    p.oy = t.pdc->m_ptOrigin.y + t.pdc->m_st.m_ptBrushOrg.y;
    return p;
}

void FillSpan(const Target& t, int y, int x0, int x1, const Paint& p)
{
    if (p.bNone || y < t.clip.top || y >= t.clip.bottom)
        return;
    x0 = std::max<int>(x0, t.clip.left);
    x1 = std::min<int>(x1, t.clip.right);
    if (x0 >= x1)
        return;
    uint32_t* row = t.pbm->Row(y);
    if (p.bSolid) {
        std::fill(row + x0, row + x1, p.px);
        return;
    }
    for (int x = x0; x < x1; ++x)
        row[x] = p.At(x, y);
}

void FillBox(const Target& t, RECT rc, const Paint& p)
{
    rc = IntersectRects(rc, t.clip);
    for (int y = rc.top; y < rc.bottom; ++y)
        FillSpan(t, y, rc.left, rc.right, p);
}

bool PenPixel(const Target& t, const Pen* pPen, uint32_t* ppx)
{
    if (!pPen || pPen->IsNull())
        return false;
    *ppx = t.Pixel(pPen->m_clr);
    return true;
}

const Pen* CurPen(const Target& t) { return GetPen(t.pdc->m_st.m_hPen); }

const Brush* CurBrush(const Target& t) { return GetBrush(t.pdc->m_st.m_hBrush); }

}  // namespace gdi

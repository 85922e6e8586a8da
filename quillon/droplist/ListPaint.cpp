// CDropList: painting through a kept back buffer: rows, frame, and the scroll bar in its three looks.
#include "control/QuillonCtrl.h"
#include "droplist/DropList.h"
#include "base/colors.h"
#include "droplist/ListGeometry.h"

namespace {

constexpr COLORREF kModernTrack = RGB(243, 241, 236);      // the Modern track's gradient starts here
constexpr COLORREF kModernTrackEdge = RGB(239, 237, 229);  // the Modern track's side lines
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr int kTrackPatternSize = 8;

COLORREF SysColor(int nIndex) { return static_cast<COLORREF>(::GetSysColor(nIndex)); }

void Line(CDC* pDC, int x1, int y1, int x2, int y2)
{
    pDC->MoveTo(x1, y1);
    pDC->LineTo(x2, y2);
}

} // namespace

void CDropList::OnPaint()
{
    CPaintDC dc(this);
    m_nScrollMin = 0;
    // Both are shorts and the difference is not negative, so it fits one.
    m_nScrollMax = static_cast<SHORT>(m_nItemCount > m_nVisibleRows ? m_nItemCount - m_nVisibleRows : 0);
    m_nScrollPos = m_nTopItem;
    if (m_nScrollMax == 0) m_nTopItem = 0;
    CRect rcClient;
    GetClientRect(&rcClient);
    CDC mem;
    mem.CreateCompatibleDC(&dc);
    if (m_nBufferWidth != rcClient.Width() || m_nBufferHeight != rcClient.Height()) {
        m_nBufferWidth = rcClient.Width();
        m_nBufferHeight = rcClient.Height();
        delete m_pBuffer;
        m_pBuffer = new CBitmap;
        if (!m_pBuffer->CreateCompatibleBitmap(&dc, m_nBufferWidth, m_nBufferHeight)) {
            delete m_pBuffer;
            m_pBuffer = nullptr;
        }
    }
    if (m_pBuffer) {
        CSelectObject buffer(&mem, m_pBuffer);
        DrawRows(&mem, rcClient);
        DrawScrollBar(&mem, rcClient);
        DrawListFrame(&mem, rcClient);
        dc.BitBlt(0, 0, rcClient.Width(), rcClient.Height(), &mem, 0, 0, SRCCOPY);
    }
    mem.DeleteDC();
}

CRect CDropList::RowRect(int nSlot, int nRowHeight, const CRect& rcClient) const
{
    LONG right = rcClient.right - m_nPadRight - (m_nItemCount > m_nVisibleRows ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
    return CRect(rcClient.left + m_nPadLeft, nRowHeight * nSlot + m_nPadTop, right, nRowHeight * (nSlot + 1) + m_nPadTop);
}

void CDropList::DrawRows(CDC* pDC, const CRect& rcClient)
{
    const int H = m_pCtrl->GetRowHeight();
    for (int s = 0; m_nTopItem + s < m_nItemCount && s < m_nVisibleRows; ++s)
        DrawRow(pDC, m_nTopItem + s, RowRect(s, H, rcClient));
}

void CDropList::DrawRow(CDC* pDC, int nItem, CRect rcRow)
{
    const bool bHot = nItem == m_nHotItem;
    CBrush back(bHot ? m_rgbHighBack : m_rgbItemBack);
    pDC->FillRect(&rcRow, &back);
    auto font = CSelectObject::Restoring(pDC, m_pCtrl->SelectStockFont(pDC));
    const bool bValid = nItem >= 0 && nItem < static_cast<int>(m_autoItems.size());
    rcRow.left += m_nTextIndent;
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(bHot ? m_rgbHighText : m_rgbItemText);
    pDC->DrawText(bValid ? GetCandidateText(nItem) : CString(), &rcRow, DT_SINGLELINE | DT_VCENTER);
}

void CDropList::DrawListFrame(CDC* pDC, const CRect& rcClient)
{
    CPen pen(PS_SOLID, 0, m_rgbFrame);
    CSelectObject select(pDC, &pen);
    const POINT pts[5] = {{rcClient.left, rcClient.top}, {rcClient.right - 1, rcClient.top},
                          {rcClient.right - 1, rcClient.bottom - 1}, {rcClient.left, rcClient.bottom - 1},
                          {rcClient.left, rcClient.top}};
    pDC->Polyline(pts, 5);
}

void CDropList::DrawScrollBar(CDC* pDC, const CRect& rcClient)
{
    if (!HasBar()) return;
    if (!m_pPattern || SysColor(COLOR_SCROLLBAR) != m_rgbPatternFor) BuildTrackPattern();
    LayoutScrollBar(rcClient);
    DrawArrowButton(pDC, m_bUpSunken, 0, m_rcUp);
    DrawArrowButton(pDC, m_bDownSunken, 1, m_rcDown);
    DrawThumbAndTrack(pDC, m_rcThumb);
}

void CDropList::LayoutScrollBar(const CRect& rcClient)
{
    const CRect inner(rcClient.left + m_nPadLeft, rcClient.top + m_nPadTop, rcClient.right - m_nPadRight,
                      rcClient.bottom - m_nPadBottom);
    listgeo::BarLayout b =
        listgeo::LayoutBar(inner, ::GetSystemMetrics(SM_CXVSCROLL), m_nScrollMin, m_nScrollMax, m_nScrollPos);
    m_rcBar = b.rcBar;
    m_rcUp = b.rcUp;
    m_rcDown = b.rcDown;
    m_rcThumb = b.rcThumb;
    m_rcPageUp = b.rcPageUp;
    m_rcPageDown = b.rcPageDown;
    // The thumb is at most the track's length, which a list's height keeps within a short.
    m_nThumbSize = static_cast<SHORT>(b.nThumbSize);
}

void CDropList::BuildTrackPattern()
{
    delete m_pPattern;
    m_rgbPatternFor = SysColor(COLOR_SCROLLBAR);
    const COLORREF rgbLight = SysColor(COLOR_BTNHIGHLIGHT);
    m_pPattern = new CBitmap;
    CClientDC window(this);
    CDC mem;
    if (!m_pPattern->CreateCompatibleBitmap(&window, kTrackPatternSize, kTrackPatternSize) || !mem.CreateCompatibleDC(&window)) {
        delete m_pPattern;
        m_pPattern = nullptr;
        return;
    }
    {
        CSelectObject bitmap(&mem, m_pPattern);
        const CRect all(0, 0, kTrackPatternSize, kTrackPatternSize);
        mem.FillSolidRect(&all, m_rgbPatternFor);
        for (int y = 0; y < kTrackPatternSize; ++y)
            for (int x = y % 2; x < kTrackPatternSize; x += 2) mem.SetPixel(x, y, rgbLight);
    }
    mem.DeleteDC();
}

void CDropList::DrawEdges(CDC* pDC, int nSet, const CRect& rc)
{
    CPen face(PS_SOLID, 0, SysColor(COLOR_BTNFACE)), shadow(PS_SOLID, 0, SysColor(COLOR_BTNSHADOW));
    for (const listgeo::EdgeLine& e : listgeo::EdgeSet(nSet == 0, rc)) {
        HGDIOBJ pen = e.pen == listgeo::PenFace     ? face.m_hObject
                      : e.pen == listgeo::PenShadow ? shadow.m_hObject
                                                    : ::GetStockObject(e.pen == listgeo::PenBlack ? BLACK_PEN : WHITE_PEN);
        CSelectObject select(pDC, pen);
        pDC->MoveTo(e.pts[0].x, e.pts[0].y);
        pDC->LineTo(e.pts[1].x, e.pts[1].y);
        pDC->LineTo(e.pts[2].x, e.pts[2].y);
    }
}

void CDropList::DrawArrowButton(CDC* pDC, BOOL bPressed, int nDirection, const CRect& rc)
{
    const bool bModern = m_nBarStyle == ScrollModern;
    const int nShift = bPressed && !bModern ? 1 : 0;
    CBrush face(SysColor(COLOR_BTNFACE));
    pDC->FillRect(&rc, &face);
    {
        CSelectObject brush(pDC, &face);
        if (bModern) {
            DrawModernFace(pDC, bPressed, bPressed ? FillSolid : FillDiagonal, rc);
        } else if (bPressed) {
            CPen shadow(PS_SOLID, 0, SysColor(COLOR_BTNSHADOW));
            CSelectObject pen(pDC, &shadow);
            pDC->Rectangle(rc.left, rc.top, rc.right, rc.bottom);
        } else {
            DrawEdges(pDC, m_nBarStyle == ScrollRegular ? 0 : 1, rc);
        }
    }
    if (bModern) {
        const CRect glyph(rc.left, rc.top, rc.right - 2, rc.bottom - 2);
        if (nDirection == 0) m_pCtrl->DrawUpChevron(pDC, m_rgbBarFore, 0, ArrowLine1, glyph);
        else m_pCtrl->DrawDownChevron(pDC, m_rgbBarFore, 0, ArrowLine1, glyph);
        return;
    }
    glyph::Triangle tri;
    if (listgeo::ArrowTriangle(rc, nDirection == 0, nShift, &tri)) glyph::DrawTriangle(pDC, SysColor(COLOR_WINDOWTEXT), tri);
}

void CDropList::FillTrack(CDC* pDC, const CRect& rc)
{
    if (rc.Height() <= 0) return;
    if (m_nBarStyle == ScrollModern) {
        m_pCtrl->FillButtonFace(pDC, kModernTrack, kWhite, FillHorizontal, rc);
        CPen edge(PS_SOLID, 0, kModernTrackEdge);
        CSelectObject pen(pDC, &edge);
        Line(pDC, rc.left, rc.top, rc.left, rc.bottom);
        Line(pDC, rc.right - 1, rc.top, rc.right - 1, rc.bottom);
        return;
    }
    CBrush brush;
    if (m_pPattern) brush.CreatePatternBrush(m_pPattern);
    else brush.CreateSolidBrush(SysColor(COLOR_SCROLLBAR));
    pDC->FillRect(&rc, &brush);
}

void CDropList::DrawThumbAndTrack(CDC* pDC, const CRect& rcThumb)
{
    const LONG U = m_rcUp.bottom, D = m_rcDown.top;
    const LONG T = rcThumb.top, B = rcThumb.bottom;
    if (rcThumb.Height() < 1) {
        FillTrack(pDC, CRect(m_rcBar.left, U, m_rcBar.right, D));
        return;
    }
    FillTrack(pDC, CRect(m_rcBar.left, U, m_rcBar.right, T));
    // Halves compared truncated: when the gaps above and below differ, the lower region reaches one
    // pixel into the thumb, which the thumb then paints over.
    LONG lowerTop = (T - U) / 2 != (D - B) / 2 ? B - 1 : B;
    FillTrack(pDC, CRect(m_rcBar.left, lowerTop, m_rcBar.right, D));
    CBrush face(SysColor(COLOR_BTNFACE));
    pDC->FillRect(&rcThumb, &face);
    if (m_nBarStyle != ScrollModern) {
        DrawEdges(pDC, m_nBarStyle == ScrollRegular ? 0 : 1, rcThumb);
        return;
    }
    DrawModernFace(pDC, FALSE, FillHorizontal, rcThumb);
    const LONG L = rcThumb.left, R = rcThumb.right;
    const LONG t = T + 2, b = B - 3, m = t + (b - t) / 2; // an odd span puts the middle nearer the top
    if (b - t <= 10) return;                              // a short thumb has no grip
    auto grip = [&](COLORREF clr, LONG x1, LONG x2, std::initializer_list<LONG> above, std::initializer_list<LONG> below) {
        CPen gripPen(PS_SOLID, 0, clr);
        CSelectObject pen(pDC, &gripPen);
        for (LONG y : above)
            if (y > t) Line(pDC, x1, y, x2, y);
        for (LONG y : below)
            if (y < b) Line(pDC, x1, y, x2, y);
    };
    grip(m_rgbBarBackTo, L + 4, R - 6, {m - 1, m - 3}, {m + 1, m + 3});
    grip(m_rgbBarBack, L + 5, R - 5, {m - 2, m}, {m + 2, m + 4});
    pDC->SetPixel(L, t, kModernTrack);
    pDC->SetPixel(L, t + 1, kModernTrack);
}

void CDropList::DrawModernFace(CDC* pDC, BOOL bPressed, SHORT nFill, const CRect& rc)
{
    const LONG L = rc.left, T = rc.top, R = rc.right, B = rc.bottom;
    CBrush white(kWhite);
    const CRect inner(L, T, R - 1, B - 1);
    pDC->FillRect(&inner, &white);
    const CRect face(L + 1, T + 2, R - 2, B - 3);
    if (bPressed) m_pCtrl->FillButtonFace(pDC, m_rgbBarBackTo, m_rgbBarBackTo, FillSolid, face);
    else if (nFill == FillDiagonal) m_pCtrl->FillButtonFace(pDC, m_rgbBarBack, m_rgbBarBackTo, nFill, face);
    else m_pCtrl->FillButtonFace(pDC, m_rgbBarBackTo, m_rgbBarBack, nFill, face);
    CPen outline(PS_SOLID, 0, m_rgbBarBack);
    CSelectObject pen(pDC, &outline);
    const POINT round[9] = {{L + 2, T + 1}, {R - 4, T + 1}, {R - 3, T + 2}, {R - 3, B - 4}, {R - 4, B - 3},
                            {L + 2, B - 3}, {L + 1, B - 4}, {L + 1, T + 2}, {L + 2, T + 1}};
    pDC->Polyline(round, 9);
    const POINT shade[5] = {{R - 1, T + 1}, {R - 1, B - 3}, {R - 3, B - 1}, {L + 1, B - 1}, {L, B - 3}};
    pDC->Polyline(shade, 5);
}

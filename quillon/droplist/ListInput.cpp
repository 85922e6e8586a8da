// CDropList: the list's mouse and key handling: the scroll bar's presses, repeats and thumb drag,
// the hot row, taking an item, closing on a click elsewhere, and the keys and wheel the control hands on.
#include <algorithm>
#include "control/QuillonCtrl.h"
#include "droplist/DropList.h"
#include "droplist/ListGeometry.h"

namespace {
constexpr UINT_PTR kRepeatTimer = 102;
constexpr UINT kRepeatDelay = 400;  // from the press to the first repeat
constexpr UINT kRepeatPeriod = 80;  // between repeats
constexpr int kDragSlack = 30;      // how far off the bar a dragged thumb still follows the pointer
} // namespace

CRect CDropList::RowArea() const
{
    CRect rc;
    GetClientRect(&rc);
    return CRect(rc.left + m_nPadLeft, rc.top + m_nPadTop,
                 rc.right - m_nPadRight - (HasBar() ? ::GetSystemMetrics(SM_CXVSCROLL) : 0), rc.bottom - m_nPadBottom);
}

void CDropList::OnLButtonDown(UINT nFlags, CPoint point)
{
    CRect rcClient;
    GetClientRect(&rcClient);
    if (!rcClient.PtInRect(point)) {
        Hide();
        PassClickOn(nFlags);
        return;
    }
    BarPress(point.x, point.y);
    Default();
}

// The click that closed the list goes on to the window under the pointer, unless that is the control.
void CDropList::PassClickOn(UINT nFlags)
{
    POINT P;
    ::GetCursorPos(&P);
    CRect rcCtrl;
    m_pCtrl->GetWindowRect(&rcCtrl);
    if (rcCtrl.PtInRect(P)) return;
    HWND hWnd = ::WindowFromPoint(P);
    if (!hWnd) return;
    RECT rc;
    ::GetWindowRect(hWnd, &rc);
    // Relative to the window's rectangle rather than its client area, as the list always sent it.
    ::PostMessage(hWnd, WM_LBUTTONDOWN, nFlags, MAKELPARAM(P.x - rc.left, P.y - rc.top));
}

void CDropList::BarPress(int x, int y)
{
    const CPoint pt(x, y);
    if (!HasBar() || !m_rcBar.PtInRect(pt)) return;
    const bool bThumb = m_rcThumb.Height() > 0;
    if (m_rcUp.PtInRect(pt)) {
        m_bUpHeld = m_bUpSunken = m_bFirstTick = TRUE;
        SetTimer(kRepeatTimer, kRepeatDelay);
        ScrollList(SB_LINEUP);
    } else if (m_rcDown.PtInRect(pt)) {
        m_bDownHeld = m_bDownSunken = m_bFirstTick = TRUE;
        SetTimer(kRepeatTimer, kRepeatDelay);
        ScrollList(SB_LINEDOWN);
    } else if (bThumb && m_rcPageUp.PtInRect(pt)) {
        m_bPageUpHeld = m_bFirstTick = TRUE;
        SetTimer(kRepeatTimer, kRepeatDelay);
        ScrollList(SB_PAGEUP);
    } else if (bThumb && m_rcPageDown.PtInRect(pt)) {
        m_bPageDownHeld = m_bFirstTick = TRUE;
        SetTimer(kRepeatTimer, kRepeatDelay);
        ScrollList(SB_PAGEDOWN);
    } else {
        if (bThumb && m_rcThumb.PtInRect(pt)) {
            m_bThumbHeld = TRUE;
            m_rcThumbStart = m_rcThumbNow = m_rcThumb;
            m_ptPress = pt;
            m_nDragPos = m_nScrollPos;
        }
        return;
    }
    // The pressed look shows even when the list is already at its end.
    InvalidateRect(&m_rcBar, TRUE);
}

void CDropList::ScrollList(int nAction, int nPos)
{
    const int rows = m_nVisibleRows;
    const int lastTop = std::max(m_nItemCount - rows - 1, 0);
    int top = m_nTopItem, pos = m_nScrollPos;
    switch (nAction) {
    case SB_LINEUP:
        if (top == 0) return;
        pos = --top;
        break;
    case SB_LINEDOWN:
        if (top > lastTop) return;
        ++top;
        ++pos;
        break;
    case SB_PAGEUP:
        if (pos < 1) return;
        if (pos < rows) top = pos = 0;
        else top = std::max(top - (rows - 1), 0), pos = std::max(pos - (rows - 1), 0);
        break;
    case SB_PAGEDOWN:
        if (top > lastTop) return;
        if (lastTop - pos < rows) top = pos = lastTop + 1;
        else top += rows - 1, pos += rows - 1;
        break;
    case SB_THUMBPOSITION: // nPos is a scroll position, within the candidates
        m_nTopItem = static_cast<SHORT>(nPos);
        return;
    case SB_THUMBTRACK:
        m_nTopItem = static_cast<SHORT>(nPos);
        InvalidateRows();
        return;
    default: return;
    }
    // Both stay within the candidate count, which fits a short.
    m_nTopItem = static_cast<SHORT>(top);
    m_nScrollPos = static_cast<SHORT>(pos);
    InvalidateRect(nullptr, TRUE);
}

// While a drag scrolls the rows, only they repaint: the bar shows the thumb where the drag put it.
void CDropList::InvalidateRows()
{
    CRect rows = RowArea();
    InvalidateRect(&rows, TRUE);
}

void CDropList::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent != kRepeatTimer) {
        Default();
        return;
    }
    if (m_bFirstTick) {
        m_bFirstTick = FALSE;
        KillTimer(kRepeatTimer);
        SetTimer(kRepeatTimer, kRepeatPeriod);
    }
    if (m_bUpHeld && m_bUpSunken) ScrollList(SB_LINEUP);
    if (m_bDownHeld && m_bDownSunken) ScrollList(SB_LINEDOWN);
    if (m_bPageUpHeld || m_bPageDownHeld) {
        // A held track region stops by itself once the thumb has reached the pointer.
        POINT pt;
        ::GetCursorPos(&pt);
        ScreenToClient(&pt);
        if (m_bPageUpHeld && m_rcPageUp.PtInRect(pt)) ScrollList(SB_PAGEUP);
        if (m_bPageDownHeld && m_rcPageDown.PtInRect(pt)) ScrollList(SB_PAGEDOWN);
    }
    Default();
}

void CDropList::OnMouseMove(UINT, CPoint point)
{
    ::SetCursor(::LoadCursor(nullptr, IDC_ARROW)); // the class has no cursor of its own
    if (!TrackPointer(point.x, point.y)) {
        CRect rcClient;
        GetClientRect(&rcClient);
        if (m_bIgnoreRelease && rcClient.PtInRect(point)) m_bIgnoreRelease = FALSE;
        HotTrack(point.x, point.y);
    }
    Default();
}

BOOL CDropList::TrackPointer(int x, int y)
{
    const CPoint pt(x, y);
    const bool bOnBar = HasBar() && m_rcBar.PtInRect(pt);
    if (m_bUpHeld || m_bDownHeld) {
        BOOL& sunken = m_bUpHeld ? m_bUpSunken : m_bDownSunken;
        BOOL inside = HasBar() && (m_bUpHeld ? m_rcUp : m_rcDown).PtInRect(pt);
        if (inside != sunken) {
            sunken = inside;
            InvalidateRect(&m_rcBar, TRUE);
        }
    } else if (m_bThumbHeld && y != m_ptPress.y) {
        CRect next = m_rcThumbStart;
        const bool bInRange = x >= m_rcBar.left - kDragSlack && x <= m_rcBar.right + kDragSlack &&
                              y >= m_rcBar.top - kDragSlack && y <= m_rcBar.bottom + kDragSlack;
        if (bInRange) {
            next.OffsetRect(0, y - m_ptPress.y);
            if (next.top < m_rcUp.bottom) next.OffsetRect(0, m_rcUp.bottom - next.top);
            else if (next.bottom > m_rcDown.top) next.OffsetRect(0, m_rcDown.top - next.bottom);
        }
        if (next.top != m_rcThumbNow.top) {
            m_rcThumbNow = next;
            {
                CClientDC dc(this);
                DrawThumbAndTrack(&dc, m_rcThumbNow);
            }
            ThumbToTop(SB_THUMBTRACK);
        }
    }
    return m_bUpHeld || m_bDownHeld || m_bThumbHeld || bOnBar;
}

void CDropList::ThumbToTop(int nAction)
{
    int p = listgeo::ThumbBand(m_rcThumbNow.top, m_rcThumbNow.Height(), m_rcUp.bottom, m_rcDown.top,
                               m_nScrollMax - m_nScrollMin);
    // A thumb that fills its track (a track of exactly its minimum) has nowhere to go.
    if (p < 0) return;
    p += m_nScrollMin;
    if (p == m_nDragPos) return;
    m_nDragPos = static_cast<SHORT>(p); // at most the scroll range
    ScrollList(nAction, p);
}

void CDropList::HotTrack(int x, int y)
{
    const CPoint pt(x, y);
    const int H = m_pCtrl->GetRowHeight();
    // A row height below one pixel (a large negative ListOffset) leaves no row to point at.
    if (!RowArea().PtInRect(pt) || H < 1) return;
    const int row = (y - m_nPadTop) / H; // truncated towards zero, as the release's row
    const int hot = row >= 0 && row <= m_nVisibleRows ? m_nTopItem + row : -1;
    if (hot == m_nHotItem) return;
    CRect rcClient;
    GetClientRect(&rcClient);
    CClientDC dc(this);
    const int oldSlot = m_nHotItem - m_nTopItem;
    // A candidate index, which fits a short.
    m_nHotItem = static_cast<SHORT>(hot);
    if (oldSlot >= 0 && oldSlot < m_nVisibleRows) DrawRow(&dc, m_nTopItem + oldSlot, RowRect(oldSlot, H, rcClient));
    if (row >= 0 && row < m_nVisibleRows) DrawRow(&dc, m_nHotItem, RowRect(row, H, rcClient));
}

void CDropList::OnLButtonUp(UINT, CPoint point)
{
    const bool bHeld = m_bUpHeld || m_bDownHeld || m_bPageUpHeld || m_bPageDownHeld || m_bThumbHeld;
    if (!(HasBar() && m_rcBar.PtInRect(point)) && !bHeld) {
        if (m_bIgnoreRelease) {
            m_bIgnoreRelease = FALSE;
        } else {
            ::ReleaseCapture();
            const int H = m_pCtrl->GetRowHeight();
            // Truncating towards zero: every y from 2 - H to H is row 0, the frame line included.
            const int row = H >= 1 ? (point.y - 1) / H : -1;
            if (row >= 0 && row < m_nVisibleRows) m_pCtrl->SetTextFromItem(GetSourceIndex(m_nTopItem + row));
            Hide();
        }
    }
    BOOL* held[] = {&m_bUpHeld, &m_bDownHeld, &m_bPageUpHeld, &m_bPageDownHeld, &m_bThumbHeld};
    for (BOOL* flag : held) {
        if (!*flag) continue;
        *flag = FALSE;
        if (flag == &m_bUpHeld) m_bUpSunken = FALSE;
        if (flag == &m_bDownHeld) m_bDownSunken = FALSE;
        if (flag == &m_bThumbHeld) ThumbToTop(SB_THUMBPOSITION);
        // The repaint puts the thumb back on the position of its top row.
        InvalidateRect(&m_rcBar, TRUE);
    }
    m_bFirstTick = TRUE;
    KillTimer(kRepeatTimer);
    Default();
}

void CDropList::EndPresses()
{
    m_bUpHeld = m_bDownHeld = m_bPageUpHeld = m_bPageDownHeld = m_bThumbHeld = FALSE;
    m_bUpSunken = m_bDownSunken = FALSE;
    m_bFirstTick = TRUE;
    if (m_hWnd) KillTimer(kRepeatTimer);
}

void CDropList::OnListWheel(SHORT zDelta)
{
    if (zDelta > 0) ScrollList(SB_LINEUP);
    else if (zDelta < 0) ScrollList(SB_LINEDOWN);
}

void CDropList::TakeHot()
{
    m_pCtrl->SetTextFromItem(GetSourceIndex(m_nHotItem));
    InvalidateRect(nullptr, FALSE);
}

void CDropList::MoveViewTo(int nNew)
{
    // Candidate indices fit a short.
    m_nHotItem = static_cast<SHORT>(nNew);
    if (nNew >= m_nTopItem + m_nVisibleRows) m_nTopItem = m_nScrollPos = static_cast<SHORT>(nNew - m_nVisibleRows + 1);
}

void CDropList::OnListKey(UINT nKey)
{
    const int n = m_nItemCount, rows = m_nVisibleRows, hot = m_nHotItem;
    switch (nKey) {
    case VK_RETURN:
        m_pCtrl->SetTextFromItem(GetSourceIndex(hot));
        Hide();
        return;
    case VK_ESCAPE: Hide(); return;
    case VK_PRIOR: {
        const int next = std::max(hot - rows + 1, 0);
        if (next == hot) return;
        m_nHotItem = m_nTopItem = static_cast<SHORT>(next); // a candidate index
        break;
    }
    case VK_NEXT: {
        const int next = std::min(hot + rows - 1, n - 1);
        if (next == hot) return;
        MoveViewTo(next);
        break;
    }
    case VK_END:
        if (hot == n - 1) return;
        MoveViewTo(n - 1);
        break;
    case VK_HOME:
        if (hot == 0) return;
        m_nTopItem = m_nHotItem = 0;
        break;
    case VK_UP:
        if (hot <= 0) return;
        if (--m_nHotItem < m_nTopItem) m_nTopItem = m_nScrollPos = m_nHotItem;
        break;
    case VK_DOWN:
        if (hot >= n - 1) return;
        MoveViewTo(hot + 1);
        break;
    default: return;
    }
    TakeHot();
}

// CMaskEdit: the relay of mouse and key messages to the control's stock events, and the moves
// of text and selection at each change of focus.
#include "control/QuillonCtrl.h"
#include "mask/MaskEdit.h"

BEGIN_MESSAGE_MAP(CMaskEdit, CEdit)
    ON_WM_MOUSEMOVE()
    ON_WM_SETCURSOR()
    ON_WM_KEYUP()
    ON_WM_CHAR()
    ON_WM_KILLFOCUS()
    ON_WM_SETFOCUS()
    ON_WM_KEYDOWN()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN()
    ON_WM_RBUTTONUP()
    ON_WM_RBUTTONDBLCLK()
END_MESSAGE_MAP()

// The edit lies one pixel inside the insets, so its points move by that much into the control's.
CPoint CMaskEdit::ToControl(CPoint point) const
{
    return CPoint(point.x + 1 + m_pCtrl->m_nInsetLeft, point.y + 1 + m_pCtrl->m_nInsetTop);
}

void CMaskEdit::OnMouseMove(UINT nFlags, CPoint point) { m_pCtrl->COleControl::OnMouseMove(nFlags, ToControl(point)); Default(); }
void CMaskEdit::OnLButtonDown(UINT nFlags, CPoint point) { m_pCtrl->COleControl::OnLButtonDown(nFlags, ToControl(point)); Default(); }
void CMaskEdit::OnLButtonUp(UINT nFlags, CPoint point) { m_pCtrl->COleControl::OnLButtonUp(nFlags, ToControl(point)); Default(); }
void CMaskEdit::OnLButtonDblClk(UINT nFlags, CPoint point) { m_pCtrl->COleControl::OnLButtonDblClk(nFlags, ToControl(point)); Default(); }
void CMaskEdit::OnRButtonDown(UINT nFlags, CPoint point) { m_pCtrl->COleControl::OnRButtonDown(nFlags, ToControl(point)); Default(); }
void CMaskEdit::OnRButtonUp(UINT nFlags, CPoint point) { m_pCtrl->COleControl::OnRButtonUp(nFlags, ToControl(point)); Default(); }
void CMaskEdit::OnRButtonDblClk(UINT nFlags, CPoint point) { m_pCtrl->COleControl::OnRButtonDblClk(nFlags, ToControl(point)); Default(); }

void CMaskEdit::OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    m_pCtrl->COleControl::OnKeyUp(nChar, nRepCnt, nFlags);
    Default();
}

BOOL CMaskEdit::OnSetCursor(CWnd*, UINT, UINT)
{
    ::SetCursor(::LoadCursor(nullptr, IDC_IBEAM));
    return static_cast<BOOL>(Default());
}

void CMaskEdit::OnSetFocus(CWnd* pOldWnd)
{
    Default();
    if (m_pCtrl->m_hWndPrevFocus != m_pCtrl->m_hWnd) {
        m_pCtrl->COleControl::OnSetFocus(pOldWnd);
        if (m_pCtrl->m_strPasswordChar.IsEmpty()) {
            int nStart, nEnd;
            ReadSel(nStart, nEnd);
            SetWindowText(m_pCtrl->m_strText);
            SHORT start = static_cast<SHORT>(nStart);
            if (start >= 0 && start <= m_pCtrl->m_strText.GetLength()) CaretTo(start);
        }
    }
    if (m_pCtrl->m_bSelectOnFocus && m_pCtrl->m_hWndPrevFocus != m_hWnd) SetSel(0, -1);
}

void CMaskEdit::OnKillFocus(CWnd* pNewWnd)
{
    Default();
    HWND hNew = pNewWnd ? pNewWnd->m_hWnd : nullptr;
    if (hNew && hNew == m_pCtrl->m_hWnd) return;
    m_pCtrl->COleControl::OnKillFocus(pNewWnd);
    if (m_pCtrl->AmbientUserMode() && m_pCtrl->m_bListCreated && hNew != m_pCtrl->ListWindow() && hNew != m_pCtrl->m_hWnd)
        m_pCtrl->m_dropList.Hide();
    m_pCtrl->InvalidateControl();
    if (m_pCtrl->m_strPasswordChar.IsEmpty()) {
        int nStart, nEnd;
        ReadSel(nStart, nEnd);
        CaretTo(static_cast<SHORT>(nStart));
    }
}

// CQuillonCtrl: the child edit's creation and place, the hand-over of the focus, size, move,
// the edit's colours and font, and the keys seen ahead of the host's own handling.
#include "control/QuillonCtrl.h"

BEGIN_MESSAGE_MAP(CQuillonCtrl, COleControl)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_SETFOCUS()
    ON_WM_TIMER()
    ON_WM_DESTROY()
    ON_WM_KILLFOCUS()
    ON_WM_CTLCOLOR()
    ON_WM_SIZE()
    ON_WM_MOVE()
    ON_WM_MOUSEWHEEL()
    ON_WM_KEYDOWN()
    ON_WM_ENABLE()
END_MESSAGE_MAP()

namespace {
constexpr UINT kEditId = 210;
constexpr DWORD kEditStyle = 0x500100C0; // WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOVSCROLL | ES_AUTOHSCROLL
} // namespace

BOOL CQuillonCtrl::CreateEdit()
{
    if (m_bEditCreated || !AmbientUserMode()) return m_bEditCreated;
    m_bEditCreated = m_edit.Create(kEditStyle, CRect(1, 1, 10, 10), this, kEditId);
    if (!m_bEditCreated) return FALSE;
    CDC* pDC = GetDC();
    {
        auto font = CSelectObject::Restoring(pDC, pDC ? SelectStockFont(pDC) : nullptr);
        m_edit.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(InternalGetFont().GetFontHandle()), FALSE);
        if (!m_strPasswordChar.IsEmpty()) m_edit.SetPasswordChar(m_strPasswordChar[0]);
        m_edit.ShowWindow(SW_HIDE);
    }
    if (pDC) ReleaseDC(pDC);
    return TRUE;
}

void CQuillonCtrl::PlaceEdit(int left, int top, int right, int bottom)
{
    if (!m_bEditCreated || !AmbientUserMode()) return;
    int x = left + 1 + m_nInsetLeft;
    int y = top + 1 + m_nInsetTop;
    int rightLimit = right - m_nInsetRight - 1;
    if (m_bDropButton) rightLimit -= m_nDropWidth - 1;
    if (m_bSpinButton) rightLimit -= m_nSpinWidth - 1;
    int bottomLimit = bottom - m_nInsetBottom - 1;
    m_edit.SetWindowPos(&CWnd::wndTop, x, y, rightLimit - 1 - x, bottomLimit - y, SWP_SHOWWINDOW);
}

// At run time the control's own window never keeps the focus once the edit exists.
void CQuillonCtrl::OnSetFocus(CWnd* pOldWnd)
{
    COleControl::OnSetFocus(pOldWnd);
    m_hWndPrevFocus = pOldWnd ? pOldWnd->m_hWnd : nullptr;
    if (AmbientUserMode() && m_bEditCreated) m_edit.SetFocus();
}

void CQuillonCtrl::OnKillFocus(CWnd* pNewWnd)
{
    COleControl::OnKillFocus(pNewWnd);
    InvalidateControl();
}

void CQuillonCtrl::OnSize(UINT nType, int cx, int cy)
{
    COleControl::OnSize(nType, cx, cy);
    if (m_bListCreated) m_dropList.Hide();
    InvalidateControl();
}

void CQuillonCtrl::OnMove(int x, int y)
{
    COleControl::OnMove(x, y);
    if (m_bListCreated) m_dropList.Hide();
    InvalidateControl();
}

HBRUSH CQuillonCtrl::OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor)
{
    if (nCtlColor != CTLCOLOR_MSGBOX && nCtlColor != CTLCOLOR_EDIT) return CWnd::OnCtlColor(pDC, pWnd, nCtlColor);
    pDC->SetTextColor(TranslateColor(GetForeColor()));
    pDC->SetBkColor(TranslateColor(GetBackColor()));
    if (m_clrEditBrush != static_cast<LONG>(GetBackColor())) {
        m_clrEditBrush = static_cast<LONG>(GetBackColor());
        delete m_pEditBrush;
        m_pEditBrush = new CBrush(TranslateColor(GetBackColor()));
    }
    return m_pEditBrush ? static_cast<HBRUSH>(*m_pEditBrush) : nullptr;
}

// The child windows die with the control's window, the popup list with its owner: the flags follow,
// so that a window made anew gets new ones at its first paint (a list that could not be made stays
// unmade). The edit's brush goes with them.
void CQuillonCtrl::OnDestroy()
{
    COleControl::OnDestroy();
    KillTimer(410);
    delete m_pEditBrush;
    m_pEditBrush = nullptr;
    m_bEditCreated = FALSE;
    if (m_bListCreated) m_strListClass.Empty();
    m_bListCreated = FALSE;
    m_dropList.m_bShown = FALSE;
}

void CQuillonCtrl::OnFontChanged()
{
    if (AmbientUserMode() && m_edit.m_hWnd) {
        LPFONTDISP disp = GetFont();
        IFont* font = nullptr;
        if (!disp || FAILED(disp->QueryInterface(IID_IFont, reinterpret_cast<void**>(&font)))) {
            if (disp) disp->Release();
            return;
        }
        HFONT hFont = nullptr;
        font->get_hFont(&hFont);
        m_edit.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(hFont), FALSE);
        font->Release();
        disp->Release();
    }
    if (AmbientUserMode()) m_edit.SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    COleControl::OnFontChanged();
}

BOOL CQuillonCtrl::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg->message == WM_KEYDOWN) {
        switch (pMsg->wParam) {
        case VK_RETURN: case VK_ESCAPE: case VK_PRIOR: case VK_NEXT: case VK_UP: case VK_DOWN:
            SendMessage(pMsg->message, pMsg->wParam, pMsg->lParam);
            return TRUE;
        case VK_LEFT: case VK_RIGHT: case VK_DELETE:
            if (AmbientUserMode() && m_bEditCreated) m_edit.SendMessage(pMsg->message, pMsg->wParam, pMsg->lParam);
            return TRUE;
        }
    } else if (pMsg->message == WM_CHAR && m_strEditMask.IsEmpty() && pMsg->wParam <= 0xFFFF) {
        pMsg->wParam = ApplyCase(static_cast<TCHAR>(pMsg->wParam));
    }
    return CWnd::PreTranslateMessage(pMsg);
}

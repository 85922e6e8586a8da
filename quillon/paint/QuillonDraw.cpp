// CQuillonCtrl: OnDraw, the child windows it tends, the off-screen buffer, and the face.
#include "control/QuillonCtrl.h"

BOOL CQuillonCtrl::IsEditFocused() { return m_edit.m_hWnd && ::GetFocus() == m_edit.m_hWnd; }

BOOL CQuillonCtrl::IsFaceActive()
{
    return m_nDisplayStyle == DisplayRegular || GetFocus() == this || m_bMouseOver ||
           (m_bEditCreated && AmbientUserMode() && IsEditFocused());
}

BOOL CQuillonCtrl::IsEditShowing()
{
    return AmbientUserMode() && m_bEditCreated && (GetFocus() == this || IsEditFocused());
}

void CQuillonCtrl::OnDraw(CDC* pdc, const CRect& rcBounds, const CRect&)
{
    CBrush background(TranslateColor(GetBackColor()));
    if (AmbientUserMode()) {
        if (!m_bListCreated) CreateDropList();
        if (m_bEditCreated) {
            m_edit.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(InternalGetFont().GetFontHandle()), FALSE);
            m_edit.SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
            if (GetFocus() != this && !IsEditFocused()) m_edit.ShowWindow(SW_HIDE);
            else PlaceEdit(rcBounds.left, rcBounds.top, rcBounds.right, rcBounds.bottom);
        } else if (CreateEdit()) {
            m_edit.m_pCtrl = this;
            PlaceEdit(rcBounds.left, rcBounds.top, rcBounds.right, rcBounds.bottom);
            BuildLiteral();
            if (GetFocus() == this) m_edit.SetFocus();
        }
        CRect mem(0, 0, rcBounds.Width(), rcBounds.Height());
        CDC memDC;
        CBitmap bitmap;
        if (!memDC.CreateCompatibleDC(pdc) || !bitmap.CreateCompatibleBitmap(pdc, mem.Width(), mem.Height())) return;
        CSelectObject select(&memDC, &bitmap);
        memDC.FillRect(&mem, &background);
        DrawControlFace(&memDC, mem);
        pdc->BitBlt(rcBounds.left, rcBounds.top, mem.Width(), mem.Height(), &memDC, 0, 0, SRCCOPY);
        return;
    }
    pdc->FillRect(&rcBounds, &background);
    DrawControlFace(pdc, rcBounds);
}

void CQuillonCtrl::DrawControlFace(CDC* pDC, const CRect& rc)
{
    if (!GetEnabled() && m_nDisplayStyle == DisplayFlat) {
        CBrush brush(TranslateColor(m_clrDropBack));
        CRect inner(rc.left + 1, rc.top + 1, rc.right - 1, rc.bottom - 1);
        pDC->FillRect(&inner, &brush);
    }
    if (!IsEditShowing()) DrawFaceText(pDC, rc);
    if (m_bSpinButton) {
        DrawSpinButton(pDC, 1, rc);
        DrawSpinButton(pDC, 2, rc);
    }
    if (m_bDropButton) DrawDropButton(pDC, rc);
    // The border comes last, over the outer edge of the buttons.
    if (IsFaceActive()) DrawBorder(pDC, rc);
    if (!m_bFirstDrawFired && AmbientUserMode()) {
        m_bFirstDrawFired = TRUE;
        FireEvent(eventidFirstDraw);
    }
}

void CQuillonCtrl::DrawFaceText(CDC* pDC, const CRect& rc)
{
    CRect text(rc.left + 1 + m_nInsetLeft, rc.top + 1 + m_nInsetTop, rc.right - m_nInsetRight - 2, rc.bottom - m_nInsetBottom);
    if (m_bDropButton) text.right -= m_nDropWidth;
    if (m_bSpinButton) text.right -= m_nSpinWidth;
    auto font = CSelectObject::Restoring(pDC, SelectStockFont(pDC));
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(TranslateColor(GetEnabled() ? GetForeColor() : m_clrDisabled));
    UINT flags = DT_SINGLELINE | DT_NOPREFIX |
                 (m_nAlignment == AlignLeft ? DT_LEFT : m_nAlignment == AlignRight ? DT_RIGHT : DT_CENTER);

    CString measured, drawn;
    if (!m_strPasswordChar.IsEmpty()) {
        measured = m_bEditCreated ? m_edit.GetWindowText() : m_strText;
        drawn = CString(m_strPasswordChar[0], measured.GetLength());
    } else if (!m_strText.IsEmpty()) {
        measured = drawn = m_strText;
    } else if (!AmbientUserMode()) {
        measured = drawn = m_strEditMask;
    }
    CRect need(0, 0, 0, 0);
    pDC->DrawText(measured, &need, flags | DT_CALCRECT);
    if (need.Width() > text.Width()) {
        SHORT d = static_cast<SHORT>(need.Width() - text.Width());
        if (m_nAlignment == AlignLeft) text.right += d;
        else if (m_nAlignment == AlignRight) text.left -= d;
        else { text.right += d / 2 + 1; text.left -= d / 2 + 1; }
    }
    if (!drawn.IsEmpty()) pDC->DrawText(drawn, &text, flags);
    pDC->SetTextColor(0);
}

// CQuillonCtrl: the painted buttons as the mouse sees them: hit areas, presses, spin repeat on
// timer 410, hover on timer 420, and the wheel and navigation keys handed on to the list.
#include "control/QuillonCtrl.h"

namespace {

constexpr UINT_PTR kSpinTimer = 410;
constexpr UINT_PTR kHoverTimer = 420;
constexpr UINT kHoverPeriod = 10;

// Ticks per second as a period; a rate of 0 has none, so it repeats as fast as the platform allows.
int RepeatPeriod(SHORT nRepeatRate) { return nRepeatRate != 0 ? 1000 / nRepeatRate : 0; }

} // namespace

BOOL CQuillonCtrl::HitSpinUp(int x, int y)
{
    if (!m_bSpinButton || !GetEnabled()) return FALSE;
    CRect c;
    GetClientRect(&c);
    CRect up(c.right - m_nInsetRight - m_nSpinWidth, c.top + m_nInsetTop, c.right - m_nInsetRight,
             (c.bottom - c.top - m_nInsetTop) / 2 + c.top + m_nInsetTop + 1);
    return up.PtInRect(CPoint(x, y));
}

BOOL CQuillonCtrl::HitSpinDown(int x, int y)
{
    if (!m_bSpinButton || !GetEnabled()) return FALSE;
    CRect c;
    GetClientRect(&c);
    CRect down(c.right - m_nInsetRight - m_nSpinWidth, (c.bottom - m_nInsetBottom - c.top) / 2 + c.top + 1,
               c.right - m_nInsetRight, c.bottom - m_nInsetBottom);
    return down.PtInRect(CPoint(x, y));
}

BOOL CQuillonCtrl::HitDropButton(int x, int y)
{
    if (!m_bDropButton || !GetEnabled()) return FALSE;
    CRect c;
    GetClientRect(&c);
    LONG right = c.right - m_nInsetRight - (m_bSpinButton ? m_nSpinWidth : 0);
    CRect drop(right - m_nDropWidth, c.top + m_nInsetTop, right, c.bottom - m_nInsetBottom);
    return drop.PtInRect(CPoint(x, y));
}

void CQuillonCtrl::PressButtonAt(int x, int y)
{
    if (HitDropButton(x, y)) {
        SetCapture();
        m_bDropCaptured = TRUE;
        m_nDropPressed = 1;
        InvalidateControl();
        return;
    }
    SHORT state, button;
    if (HitSpinUp(x, y)) { state = 1; button = 0; }
    else if (HitSpinDown(x, y)) { state = 2; button = 1; }
    else return;
    m_nSpinPressed = state;
    m_bSpinRepeating = TRUE;
    InvalidateControl();
    int period = RepeatPeriod(m_nRepeatRate);
    UINT first = static_cast<UINT>(period > m_nInitialDelay ? period : m_nInitialDelay);
    if (!SetTimer(kSpinTimer, first)) {
        m_nSpinPressed = 0;
        return;
    }
    m_bSpinFirstTick = TRUE;
    SetCapture();
    if (AmbientUserMode()) FireEvent(eventidClickSpin, {COleVariant(button)});
}

void CQuillonCtrl::OnLButtonDown(UINT nFlags, CPoint point)
{
    PressButtonAt(point.x, point.y);
    COleControl::OnLButtonDown(nFlags, point);
}

void CQuillonCtrl::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    PressButtonAt(point.x, point.y);
    COleControl::OnLButtonDblClk(nFlags, point);
}

void CQuillonCtrl::OnLButtonUp(UINT nFlags, CPoint point)
{
    ::ReleaseCapture();
    if (m_bSpinRepeating) {
        StopTimer();
        m_bSpinRepeating = FALSE;
    }
    if (m_bDropCaptured) {
        m_nDropPressed = 0;
        m_bDropCaptured = FALSE;
        InvalidateControl();
        if (HitDropButton(point.x, point.y) && AmbientUserMode()) FireEvent(eventidClickDrop);
    }
    COleControl::OnLButtonUp(nFlags, point);
}

void CQuillonCtrl::OnMouseMove(UINT nFlags, CPoint point)
{
    CRect client;
    GetClientRect(&client);
    if (m_nDisplayStyle == DisplayFlat && client.PtInRect(point) && !m_bMouseOver) {
        m_bMouseOver = TRUE;
        SetTimer(kHoverTimer, kHoverPeriod);
        FireEvent(eventidMouseOn);
        InvalidateControl();
    }
    if (::GetCapture() == m_hWnd && (nFlags & MK_LBUTTON) && m_bDropCaptured) {
        BOOL inside = HitDropButton(point.x, point.y);
        if (inside != (m_nDropPressed == 1)) {
            m_nDropPressed = inside ? 1 : 0;
            InvalidateControl();
        }
    }
    COleControl::OnMouseMove(nFlags, point);
}

void CQuillonCtrl::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent == kSpinTimer) {
        if (m_bSpinFirstTick) {
            m_bSpinFirstTick = FALSE;
            KillTimer(kSpinTimer);
            SetTimer(kSpinTimer, static_cast<UINT>(RepeatPeriod(m_nRepeatRate)));
        }
        if (m_nSpinPressed != 0 && AmbientUserMode()) FireEvent(eventidClickSpin, {COleVariant(SHORT(m_nSpinPressed - 1))});
    } else if (nIDEvent == kHoverTimer && m_bMouseOver) {
        POINT pt;
        ::GetCursorPos(&pt);
        if (::WindowFromPoint(pt) != m_hWnd) {
            KillTimer(kHoverTimer);
            m_bMouseOver = FALSE;
            InvalidateControl();
        }
    }
    Default();
}

void CQuillonCtrl::StopTimer()
{
    KillTimer(kSpinTimer);
    ::ReleaseCapture();
    if (m_nSpinPressed != 0) {
        m_nSpinPressed = 0;
        InvalidateControl();
    }
}

// The list takes the wheel while it is open; either way the visible edit gets the focus back.
BOOL CQuillonCtrl::OnMouseWheel(UINT, short zDelta, CPoint)
{
    if (m_bListCreated && m_dropList.m_bShown) m_dropList.OnListWheel(zDelta);
    if (m_bEditCreated && m_edit.IsWindowVisible()) m_edit.SetFocus();
    return static_cast<BOOL>(Default());
}

// The navigation keys go to an open list first, then on to the stock KeyDown.
void CQuillonCtrl::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    switch (nChar) {
    case VK_RETURN: case VK_ESCAPE: case VK_PRIOR: case VK_NEXT: case VK_END: case VK_HOME: case VK_UP: case VK_DOWN:
        if (m_bListCreated && m_dropList.m_bShown) m_dropList.OnListKey(nChar);
        break;
    default: break;
    }
    COleControl::OnKeyDown(nChar, nRepCnt, nFlags);
}

void CQuillonCtrl::OnEnable(BOOL)
{
    Default();
    InvalidateControl();
}

// COleControl in a window: in-place activation, painting, and the stock mouse and key events.
#include "olectl.h"

BEGIN_MESSAGE_MAP(COleControl, CWnd)
    ON_WM_PAINT()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN()
    ON_WM_RBUTTONUP()
    ON_WM_RBUTTONDBLCLK()
    ON_WM_MOUSEMOVE()
    ON_WM_KEYDOWN()
    ON_WM_KEYUP()
    ON_WM_CHAR()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

namespace {

enum : short { LEFT_BUTTON = 1, RIGHT_BUTTON = 2, MIDDLE_BUTTON = 4 };

short ShiftState()
{
    return static_cast<short>((GetKeyState(VK_SHIFT) < 0 ? 1 : 0) | (GetKeyState(VK_CONTROL) < 0 ? 2 : 0) |
                              (GetKeyState(VK_MENU) < 0 ? 4 : 0));
}

short ButtonsOf(UINT nFlags)
{
    return static_cast<short>((nFlags & MK_LBUTTON ? LEFT_BUTTON : 0) | (nFlags & MK_RBUTTON ? RIGHT_BUTTON : 0) |
                              (nFlags & MK_MBUTTON ? MIDDLE_BUTTON : 0));
}

VARIANT Short(short n)
{
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_I2;
    v.iVal = n;
    return v;
}

VARIANT Long(LONG n)
{
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_I4;
    v.lVal = n;
    return v;
}

VARIANT ShortRef(short* p)
{
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_BYREF | VT_I2;
    v.piVal = p;
    return v;
}

} // namespace

HRESULT COleControl::InPlaceActivate(HWND hwndParent, LPCRECT rc)
{
    if (m_hWnd) return S_OK;
    LPCTSTR cls = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW));
    DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | (m_bEnabled ? 0 : WS_DISABLED);
    return CreateEx(0, cls, u"", style, *rc, CWnd::FromHandle(hwndParent), 0) ? S_OK : E_FAIL;
}

HRESULT COleControl::InPlaceDeactivate()
{
    if (m_hWnd) ::DestroyWindow(m_hWnd);
    return S_OK;
}

HRESULT COleControl::SetObjectRects(LPCRECT rc, LPCRECT)
{
    if (!m_hWnd) return E_UNEXPECTED;
    ::SetWindowPos(m_hWnd, nullptr, rc->left, rc->top, rc->right - rc->left, rc->bottom - rc->top, SWP_NOZORDER | SWP_NOACTIVATE);
    return S_OK;
}

HRESULT COleControl::GetWindow(HWND* phwnd)
{
    *phwnd = m_hWnd;
    return m_hWnd ? S_OK : E_FAIL;
}

HRESULT COleControl::TranslateAccelerator(MSG* pMsg) { return PreTranslateMessage(pMsg) ? S_OK : S_FALSE; }

HRESULT COleControl::Draw(HDC hdcDraw, LPCRECT lprcBounds)
{
    CDC dc;
    dc.Attach(hdcDraw);
    CRect bounds(*lprcBounds);
    OnDraw(&dc, bounds, bounds);
    dc.Detach();
    return S_OK;
}

void COleControl::OnDraw(CDC* pdc, const CRect& rcBounds, const CRect&)
{
    CBrush brush(TranslateColor(GetBackColor()));
    pdc->FillRect(&rcBounds, &brush);
}

void COleControl::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    OnDraw(&dc, client, CRect(dc.m_ps.rcPaint));
}

// A press takes the capture while any button is down, and gives the control the focus,
// as the framework's activation on a click does.
void COleControl::ButtonDown(short iButton, UINT nFlags, CPoint point)
{
    if (m_iButtonState == 0) SetCapture();
    m_iButtonState |= iButton;
    HWND focus = ::GetFocus();
    if (focus != m_hWnd && !::IsChild(m_hWnd, focus)) SetFocus();
    FireMouseDown(iButton, ShiftState(), point.x, point.y);
    m_iDblClkState &= ~iButton;
    (void)nFlags;
}

void COleControl::ButtonUp(short iButton, UINT, CPoint point)
{
    if (!(m_iButtonState & iButton)) return;
    FireMouseUp(iButton, ShiftState(), point.x, point.y);
    m_iButtonState &= ~iButton;
    if (m_iButtonState == 0 && ::GetCapture() == m_hWnd) ::ReleaseCapture();
    CRect client;
    GetClientRect(&client);
    if (iButton == LEFT_BUTTON && client.PtInRect(point) && !(m_iDblClkState & iButton)) FireClick();
    m_iDblClkState &= ~iButton;
}

void COleControl::ButtonDblClk(short iButton, UINT nFlags, CPoint point)
{
    ButtonDown(iButton, nFlags, point);
    m_iDblClkState |= iButton;
    if (iButton == LEFT_BUTTON) FireDblClick();
}

void COleControl::OnLButtonDown(UINT nFlags, CPoint point) { ButtonDown(LEFT_BUTTON, nFlags, point); Default(); }
void COleControl::OnLButtonUp(UINT nFlags, CPoint point) { ButtonUp(LEFT_BUTTON, nFlags, point); Default(); }
void COleControl::OnLButtonDblClk(UINT nFlags, CPoint point) { ButtonDblClk(LEFT_BUTTON, nFlags, point); Default(); }
void COleControl::OnRButtonDown(UINT nFlags, CPoint point) { ButtonDown(RIGHT_BUTTON, nFlags, point); Default(); }
void COleControl::OnRButtonUp(UINT nFlags, CPoint point) { ButtonUp(RIGHT_BUTTON, nFlags, point); Default(); }
void COleControl::OnRButtonDblClk(UINT nFlags, CPoint point) { ButtonDblClk(RIGHT_BUTTON, nFlags, point); Default(); }

void COleControl::OnMouseMove(UINT nFlags, CPoint point)
{
    FireMouseMove(ButtonsOf(nFlags), ShiftState(), point.x, point.y);
    Default();
}

// A handler that sets the key to 0 swallows it; else the default handling sees the key as changed.
void COleControl::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    USHORT key = static_cast<USHORT>(nChar);
    FireKeyDown(&key, ShiftState());
    if (key) DefWindowProc(WM_KEYDOWN, key, MAKELONG(nRepCnt, nFlags));
}

void COleControl::OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    USHORT key = static_cast<USHORT>(nChar);
    FireKeyUp(&key, ShiftState());
    if (key) DefWindowProc(WM_KEYUP, key, MAKELONG(nRepCnt, nFlags));
}

void COleControl::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    USHORT key = static_cast<USHORT>(nChar);
    FireKeyPress(&key);
    if (key) DefWindowProc(WM_CHAR, key, MAKELONG(nRepCnt, nFlags));
}

void COleControl::FireClick() { FireEvent(DISPID_CLICK); }
void COleControl::FireDblClick() { FireEvent(DISPID_DBLCLICK); }

void COleControl::FireKeyDown(USHORT* pnChar, short nShiftState)
{
    FireEvent(DISPID_KEYDOWN, {ShortRef(reinterpret_cast<short*>(pnChar)), Short(nShiftState)});
}

void COleControl::FireKeyUp(USHORT* pnChar, short nShiftState)
{
    FireEvent(DISPID_KEYUP, {ShortRef(reinterpret_cast<short*>(pnChar)), Short(nShiftState)});
}

void COleControl::FireKeyPress(USHORT* pnChar) { FireEvent(DISPID_KEYPRESS, {ShortRef(reinterpret_cast<short*>(pnChar))}); }

void COleControl::FireMouseDown(short nButton, short nShiftState, LONG x, LONG y)
{
    FireEvent(DISPID_MOUSEDOWN, {Short(nButton), Short(nShiftState), Long(x), Long(y)});
}

void COleControl::FireMouseUp(short nButton, short nShiftState, LONG x, LONG y)
{
    FireEvent(DISPID_MOUSEUP, {Short(nButton), Short(nShiftState), Long(x), Long(y)});
}

void COleControl::FireMouseMove(short nButton, short nShiftState, LONG x, LONG y)
{
    FireEvent(DISPID_MOUSEMOVE, {Short(nButton), Short(nShiftState), Long(x), Long(y)});
}

CDC* COleControl::GetDC()
{
    HDC hdc = ::GetDC(m_hWnd);
    if (!hdc) return nullptr;
    m_dcs.push_back(std::make_unique<CDC>());
    m_dcs.back()->Attach(hdc);
    return m_dcs.back().get();
}

int COleControl::ReleaseDC(CDC* pDC)
{
    for (auto it = m_dcs.begin(); it != m_dcs.end(); ++it) {
        if (it->get() != pDC) continue;
        int r = ::ReleaseDC(m_hWnd, pDC->Detach());
        m_dcs.erase(it);
        return r;
    }
    return 0;
}

CFont* COleControl::SelectStockFont(CDC* pDC)
{
    HFONT font = m_font.GetFontHandle();
    HGDIOBJ old = font ? pDC->SelectObject(font) : nullptr;
    return old ? CFont::FromHandle(static_cast<HFONT>(old)) : nullptr;
}

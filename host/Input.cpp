// CHost: simulated keyboard and mouse, each delivered through the message loop at once. A call
// ended by EndCall delivers nothing more of its input.
#include "host/Host.h"
#include "user/winuser.h"

namespace {
bool IsInput(UINT message)
{
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) || (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}
} // namespace

bool CHost::DropsInput(const MSG& msg) const { return m_bCallEnded && IsInput(msg.message); }

void CHost::Focus(CControlSite& site)
{
    m_bCallEnded = false;
    if (HWND hwnd = site.Window()) ::SetFocus(hwnd);
    Pump();
}

void CHost::Type(const CString& text)
{
    m_bCallEnded = false;
    for (int i = 0; i < text.GetLength() && !m_bCallEnded; ++i) {
        ::SimulateChar(text[i]);
        Pump();
    }
}

void CHost::Key(UINT vk, bool shift, bool ctrl)
{
    m_bCallEnded = false;
    if (shift) ::SimulateKey(VK_SHIFT, TRUE);
    if (ctrl) ::SimulateKey(VK_CONTROL, TRUE);
    ::SimulateKey(vk, TRUE);
    ::SimulateKey(vk, FALSE);
    if (ctrl) ::SimulateKey(VK_CONTROL, FALSE);
    if (shift) ::SimulateKey(VK_SHIFT, FALSE);
    Pump();
}

void CHost::Button(int x, int y, bool down, int button)
{
    if (m_bCallEnded) return;
    ::SimulateMouseButton(x, y, down ? TRUE : FALSE, button);
    Pump();
}

void CHost::Press(int x, int y, int button)
{
    m_bCallEnded = false;
    Button(x, y, true, button);
}

void CHost::Release(int x, int y, int button)
{
    m_bCallEnded = false;
    Button(x, y, false, button);
}

void CHost::Move(int x, int y)
{
    m_bCallEnded = false;
    ::SimulateMouseMove(x, y);
    Pump();
}

void CHost::Click(int x, int y)
{
    m_bCallEnded = false;
    Button(x, y, true, VK_LBUTTON);
    Button(x, y, false, VK_LBUTTON);
}

void CHost::DblClick(int x, int y)
{
    m_bCallEnded = false;
    for (int i = 0; i < 2; ++i) {
        Button(x, y, true, VK_LBUTTON);
        Button(x, y, false, VK_LBUTTON);
    }
}

void CHost::Wheel(int x, int y, int delta)
{
    m_bCallEnded = false;
    ::SimulateWheel(x, y, delta);
    Pump();
}

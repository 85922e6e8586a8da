// CHost: simulated keyboard and mouse, each delivered through the message loop at once.
#include "host/Host.h"
#include "user/winuser.h"

void CHost::Focus(CControlSite& site)
{
    if (HWND hwnd = site.Window()) ::SetFocus(hwnd);
    Pump();
}

void CHost::Type(const CString& text)
{
    for (int i = 0; i < text.GetLength(); ++i) {
        ::SimulateChar(text[i]);
        Pump();
    }
}

void CHost::Key(UINT vk, bool shift, bool ctrl)
{
    if (shift) ::SimulateKey(VK_SHIFT, TRUE);
    if (ctrl) ::SimulateKey(VK_CONTROL, TRUE);
    ::SimulateKey(vk, TRUE);
    ::SimulateKey(vk, FALSE);
    if (ctrl) ::SimulateKey(VK_CONTROL, FALSE);
    if (shift) ::SimulateKey(VK_SHIFT, FALSE);
    Pump();
}

void CHost::Press(int x, int y, int button)
{
    ::SimulateMouseButton(x, y, TRUE, button);
    Pump();
}

void CHost::Release(int x, int y, int button)
{
    ::SimulateMouseButton(x, y, FALSE, button);
    Pump();
}

void CHost::Move(int x, int y)
{
    ::SimulateMouseMove(x, y);
    Pump();
}

void CHost::Click(int x, int y)
{
    Press(x, y);
    Release(x, y);
}

void CHost::DblClick(int x, int y)
{
    Click(x, y);
    Click(x, y);
}

void CHost::Wheel(int x, int y, int delta)
{
    ::SimulateWheel(x, y, delta);
    Pump();
}

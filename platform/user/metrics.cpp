// System metrics of a configurable virtual screen (GetSystemMetrics, monitors, the work area) and
// MessageBeep, which hosts and tests observe instead of hearing.
#include <cstring>
#include "sysapi.h"
#include "wndapi.h"
#include "wndobj.h"

namespace {

struct Screen {
    int nWidth = 1024;
    int nHeight = 768;
    int nMonitors = 1;
};

Screen& Scr()
{
    static Screen s;
    return s;
}

struct Beeps {
    BeepHook hook;
    int nCount = 0;
    UINT nLast = 0;
};

Beeps& B()
{
    static Beeps b;
    return b;
}

constexpr uintptr_t kMonitorBase = 0x4D000000;

int MonitorIndex(HMONITOR h)
{
    uintptr_t v = reinterpret_cast<uintptr_t>(h);
    if (v < kMonitorBase || v >= kMonitorBase + (uintptr_t)Scr().nMonitors) return -1;
    return (int)(v - kMonitorBase);
}

HMONITOR MonitorHandle(int i) { return reinterpret_cast<HMONITOR>(kMonitorBase + (uintptr_t)i); }

int VirtualWidth(const Screen& s) { return s.nWidth * s.nMonitors; } // held within kMaxScreenSide

} // namespace

BOOL SetVirtualScreen(int nWidth, int nHeight, int nMonitors)
{
    // The whole virtual screen must be addressable by the 16-bit halves of a mouse message.
    if (nWidth < 1 || nHeight < 1 || nMonitors < 1 || nHeight > kMaxScreenSide ||
        static_cast<long long>(nWidth) * nMonitors > kMaxScreenSide)
        return FALSE;
    Scr() = Screen{nWidth, nHeight, nMonitors};
    return TRUE;
}

int GetSystemMetrics(int nIndex)
{
    const Screen& s = Scr();
    switch (nIndex) {
    case SM_CXSCREEN: return s.nWidth;
    case SM_CYSCREEN: return s.nHeight;
    case SM_CXVSCROLL: case SM_CYHSCROLL: case SM_CYVSCROLL: case SM_CXHSCROLL: return 17;
    case SM_CYCAPTION: return 22;
    case SM_CXBORDER: case SM_CYBORDER: return 1;
    case SM_CXEDGE: case SM_CYEDGE: return 2;
    case SM_CXICON: case SM_CYICON: case SM_CXCURSOR: case SM_CYCURSOR: return 32;
    case SM_CXSMICON: case SM_CYSMICON: return 16;
    case SM_CXDOUBLECLK: case SM_CYDOUBLECLK: case SM_CXDRAG: case SM_CYDRAG: return 4;
    case SM_SWAPBUTTON: return 0;
    case SM_MOUSEWHEELPRESENT: return 1;
    case SM_XVIRTUALSCREEN: case SM_YVIRTUALSCREEN: return 0;
    case SM_CXVIRTUALSCREEN: return VirtualWidth(s);
    case SM_CYVIRTUALSCREEN: return s.nHeight;
    case SM_CMONITORS: return s.nMonitors;
    default: return 0;
    }
}

BOOL SystemParametersInfo(UINT uiAction, UINT, void* pvParam, UINT)
{
    if (uiAction != SPI_GETWORKAREA || !pvParam) return FALSE;
    *static_cast<RECT*>(pvParam) = RECT{0, 0, Scr().nWidth, Scr().nHeight};
    return TRUE;
}

HMONITOR MonitorFromPoint(POINT pt, DWORD dwFlags)
{
    const Screen& s = Scr();
    bool inside = pt.x >= 0 && pt.y >= 0 && pt.x < VirtualWidth(s) && pt.y < s.nHeight;
    if (inside) return MonitorHandle(pt.x / s.nWidth);
    if (dwFlags == MONITOR_DEFAULTTONULL) return nullptr;
    if (dwFlags == MONITOR_DEFAULTTOPRIMARY) return MonitorHandle(0);
    int i = pt.x < 0 ? 0 : pt.x / s.nWidth;
    return MonitorHandle(i >= s.nMonitors ? s.nMonitors - 1 : i);
}

// The monitor that holds the rectangle's centre, or the nearest one.
HMONITOR MonitorFromRect(const RECT* lprc, DWORD dwFlags)
{
    if (!lprc) return nullptr;
    return MonitorFromPoint(POINT{(lprc->left + lprc->right) / 2, (lprc->top + lprc->bottom) / 2}, dwFlags);
}

HMONITOR MonitorFromWindow(HWND hWnd, DWORD dwFlags)
{
    RECT rc;
    if (!GetWindowRect(hWnd, &rc)) return dwFlags == MONITOR_DEFAULTTONULL ? nullptr : MonitorHandle(0);
    return MonitorFromRect(&rc, dwFlags);
}

BOOL GetMonitorInfo(HMONITOR hMonitor, MONITORINFO* lpmi)
{
    int i = MonitorIndex(hMonitor);
    if (i < 0 || !lpmi) return FALSE;
    const Screen& s = Scr();
    lpmi->rcMonitor = RECT{i * s.nWidth, 0, (i + 1) * s.nWidth, s.nHeight};
    lpmi->rcWork = lpmi->rcMonitor;
    lpmi->dwFlags = i == 0 ? MONITORINFOF_PRIMARY : 0;
    return TRUE;
}

BOOL MessageBeep(UINT uType)
{
    ++B().nCount;
    B().nLast = uType;
    if (B().hook) B().hook(uType);
    return TRUE;
}

void SetMessageBeepHook(BeepHook hook) { B().hook = std::move(hook); }
int GetMessageBeepCount() { return B().nCount; }
UINT GetLastMessageBeep() { return B().nLast; }

namespace user {

void ResetMetrics()
{
    Scr() = Screen{};
    B().nCount = 0;
    B().nLast = 0;
    B().hook = nullptr;
}

} // namespace user

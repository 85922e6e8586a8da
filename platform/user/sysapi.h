// Win32 USER system services: metrics, screen and monitors, beeps, the clipboard with global memory,
// and the stand-in's own controls over the virtual screen and its leak counters.
#pragma once
#include <functional>
#include "userconst.h"

int GetSystemMetrics(int nIndex);
BOOL SystemParametersInfo(UINT uiAction, UINT uiParam, void* pvParam, UINT fWinIni);
HMONITOR MonitorFromPoint(POINT pt, DWORD dwFlags);
HMONITOR MonitorFromWindow(HWND hWnd, DWORD dwFlags);
HMONITOR MonitorFromRect(const RECT* lprc, DWORD dwFlags);
BOOL GetMonitorInfo(HMONITOR hMonitor, MONITORINFO* lpmi);

BOOL MessageBeep(UINT uType);

BOOL OpenClipboard(HWND hWndNewOwner);
BOOL CloseClipboard();
BOOL EmptyClipboard();
HANDLE GetClipboardData(UINT uFormat);
HANDLE SetClipboardData(UINT uFormat, HANDLE hMem);
BOOL IsClipboardFormatAvailable(UINT format);
HGLOBAL GlobalAlloc(UINT uFlags, size_t dwBytes);
void* GlobalLock(HGLOBAL hMem);
BOOL GlobalUnlock(HGLOBAL hMem);
HGLOBAL GlobalFree(HGLOBAL hMem);
size_t GlobalSize(HGLOBAL hMem);

// Stand-in: the virtual screen, nMonitors monitors of nWidth x nHeight side by side, the first one
// primary at the origin. The work area is the whole monitor (there is no task bar).
// FALSE, with the screen unchanged, for sizes under 1 or a virtual screen wider or taller than
// kMaxScreenSide (the reach of a mouse message's 16-bit coordinates).
inline constexpr int kMaxScreenSide = 32767;
BOOL SetVirtualScreen(int nWidth, int nHeight, int nMonitors = 1);

// Stand-in: every MessageBeep is counted and handed to the hook, if one is set.
using BeepHook = std::function<void(UINT uType)>;
void SetMessageBeepHook(BeepHook hook);
int GetMessageBeepCount();
UINT GetLastMessageBeep();

// Stand-in: for a harness that checks nothing is left behind.
int GetLiveWindowCount();
int GetLiveTimerCount();
// Stand-in: destroys all windows, drops timers, queues, focus, capture, clipboard and counters, and
// puts clock, screen, cursor and keyboard back to their start values. Registered classes stay.
void ResetUserState();

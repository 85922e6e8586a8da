// The stand-in's housekeeping: what a window takes with it, the leak counters, and a full reset.
#include "inputapi.h"
#include "sysapi.h"
#include "wndapi.h"
#include "wndobj.h"

namespace user {

void OnWindowGone(HWND hwnd)
{
    State& s = S();
    KillWindowTimers(hwnd);
    DropCaretOf(hwnd);
    if (s.hwndClick == hwnd) s.bHaveClick = false;
    if (s.hwndFocus == hwnd) s.hwndFocus = nullptr;
    if (s.hwndActive == hwnd) s.hwndActive = nullptr;
    if (s.hwndCapture == hwnd) s.hwndCapture = nullptr;
    // Posted messages for a dead window are dropped when it goes, not delivered to a stale handle.
    std::erase_if(s.posted, [hwnd](const MSG& m) { return m.hwnd == hwnd; });
}

} // namespace user

using namespace user;

int GetLiveWindowCount() { return (int)S().windows.size(); }

void ResetUserState()
{
    State& s = S();
    while (!s.topLevel.empty()) DestroyWindow(s.topLevel.front());
    s.posted.clear();
    s.timers.clear();
    s.bFailTimers = false;
    s.dwNow = 0;
    s.dwLastMsgTime = 0;
    s.dwLastMsgPos = 0;
    s.bQuitPending = s.bQuitSeen = false;
    s.nQuitCode = 0;
    s.pump = nullptr;
    s.hwndFocus = s.hwndActive = s.hwndCapture = nullptr;
    s.nActivatingForFocus = 0;
    ResetInput();
    ResetMetrics();
    ResetClipboard();
    ResetCaret();
}

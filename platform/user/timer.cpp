// Window timers on the virtual clock: SetTimer, KillTimer, GetTickCount, and WM_TIMER synthesis.
#include <algorithm>
#include "msgapi.h"
#include "wndobj.h"

using namespace user;

namespace {

Timer* Find(HWND hwnd, UINT_PTR id)
{
    for (Timer& t : S().timers)
        if (t.hwnd == hwnd && t.nId == id) return &t;
    return nullptr;
}

} // namespace

UINT_PTR SetTimer(HWND hWnd, UINT_PTR nIDEvent, UINT uElapse, TIMERPROC lpTimerFunc)
{
    if (S().bFailTimers) return 0;
    if (hWnd && !CheckedHandle(hWnd)) return 0;
    if (uElapse < USER_TIMER_MINIMUM) uElapse = USER_TIMER_MINIMUM;
    if (uElapse > USER_TIMER_MAXIMUM) uElapse = USER_TIMER_MAXIMUM;
    if (!hWnd) {
        // A timer without a window gets a new id, unless it replaces one of its own.
        if (!nIDEvent || !Find(nullptr, nIDEvent)) nIDEvent = S().nNextThreadTimer++;
    }
    DWORD due = S().dwNow + uElapse;
    if (Timer* t = Find(hWnd, nIDEvent)) {
        *t = Timer{hWnd, nIDEvent, uElapse, due, lpTimerFunc, ++S().nTimerSeq};
    } else {
        S().timers.push_back(Timer{hWnd, nIDEvent, uElapse, due, lpTimerFunc, ++S().nTimerSeq});
    }
    return hWnd ? (nIDEvent ? nIDEvent : 1) : nIDEvent;
}

BOOL KillTimer(HWND hWnd, UINT_PTR uIDEvent)
{
    auto& v = S().timers;
    auto it = std::find_if(v.begin(), v.end(), [&](const Timer& t) { return t.hwnd == hWnd && t.nId == uIDEvent; });
    if (it == v.end()) return FALSE;
    v.erase(it);
    return TRUE;
}

DWORD GetTickCount() { return S().dwNow; }

void SetTimerFailure(BOOL bFail) { S().bFailTimers = bFail != FALSE; }

int GetLiveTimerCount() { return (int)S().timers.size(); }

namespace user {

void KillWindowTimers(HWND hwnd)
{
    auto& v = S().timers;
    v.erase(std::remove_if(v.begin(), v.end(), [hwnd](const Timer& t) { return t.hwnd == hwnd; }), v.end());
}

bool EarliestTimer(DWORD* pdwDue)
{
    if (S().timers.empty()) return false;
    DWORD now = S().dwNow;
    LONG best = 0x7FFFFFFF;
    for (const Timer& t : S().timers) best = std::min(best, (LONG)(t.dwDue - now));
    *pdwDue = now + best;
    return true;
}

// The most overdue timer first; among timers due together, the one set first.
bool NextTimer(MSG* pMsg, HWND hwndFilter, bool bRemove)
{
    DWORD now = S().dwNow;
    Timer* best = nullptr;
    for (Timer& t : S().timers) {
        if ((LONG)(t.dwDue - now) > 0) continue;
        if (hwndFilter && !(t.hwnd && IsSameOrDescendant(hwndFilter, t.hwnd))) continue;
        if (!best || (LONG)(t.dwDue - best->dwDue) < 0 || (t.dwDue == best->dwDue && t.nSeq < best->nSeq))
            best = &t;
    }
    if (!best) return false;
    *pMsg = MSG{best->hwnd, WM_TIMER, best->nId, (LPARAM)best->proc, now, S().ptCursor, 0};
    if (bRemove) {
        // Periods missed while nobody asked come as one message, as on the real platform.
        best->dwDue += best->nElapse;
        if ((LONG)(best->dwDue - now) <= 0) best->dwDue = now + best->nElapse;
    }
    return true;
}

} // namespace user

// Sending, posting and retrieving messages: SendMessage, PostMessage, PeekMessage, GetMessage,
// TranslateMessage, DispatchMessage, and the stand-in pump that hosts and tests drive.
#include <cstdio>
#include "inputapi.h"
#include "msgapi.h"
#include "wndapi.h"
#include "wndobj.h"

using namespace user;

LRESULT CallWindowProc(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return lpPrevWndFunc ? lpPrevWndFunc(hWnd, Msg, wParam, lParam) : 0;
}

// One thread, so a send is a nested call of the window procedure.
LRESULT SendMessage(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w || !w->proc) return 0;
    return w->proc(hWnd, Msg, wParam, lParam);
}

BOOL PostMessage(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    if (hWnd && !CheckedHandle(hWnd)) return FALSE;
    MSG msg{hWnd, Msg, wParam, lParam, S().dwNow, S().ptCursor, 0};
    S().posted.push_back(msg);
    return TRUE;
}

void PostQuitMessage(int nExitCode)
{
    S().bQuitPending = true;
    S().nQuitCode = nExitCode;
}

BOOL IsQuitPosted(int* pnExitCode)
{
    if (pnExitCode) *pnExitCode = S().nQuitCode;
    return S().bQuitSeen || S().bQuitPending;
}

namespace {

bool Matches(const MSG& m, HWND hwndFilter, UINT nMin, UINT nMax)
{
    if (hwndFilter && !(m.hwnd && IsSameOrDescendant(hwndFilter, m.hwnd))) return false;
    if ((nMin || nMax) && (m.message < nMin || m.message > nMax)) return false;
    return true;
}

bool InRange(UINT msg, UINT nMin, UINT nMax) { return (!nMin && !nMax) || (msg >= nMin && msg <= nMax); }

bool PeekPosted(MSG* pMsg, HWND hwndFilter, UINT nMin, UINT nMax, bool bRemove)
{
    auto& q = S().posted;
    for (auto it = q.begin(); it != q.end(); ++it) {
        if (!Matches(*it, hwndFilter, nMin, nMax)) continue;
        *pMsg = *it;
        if (bRemove) q.erase(it);
        return true;
    }
    return false;
}

void NoteRetrieved(const MSG& m)
{
    S().dwLastMsgTime = m.time;
    S().dwLastMsgPos = (DWORD)MAKELONG(m.pt.x, m.pt.y);
}

} // namespace

BOOL PeekMessage(MSG* lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg)
{
    bool bRemove = (wRemoveMsg & PM_REMOVE) != 0;
    bool found = PeekPosted(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, bRemove);
    if (!found && S().bQuitPending && !hWnd && InRange(WM_QUIT, wMsgFilterMin, wMsgFilterMax)) {
        *lpMsg = MSG{nullptr, WM_QUIT, (WPARAM)S().nQuitCode, 0, S().dwNow, S().ptCursor, 0};
        if (bRemove) { S().bQuitPending = false; S().bQuitSeen = true; }
        found = true;
    }
    if (!found) found = PeekInput(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, bRemove);
    if (!found && InRange(WM_PAINT, wMsgFilterMin, wMsgFilterMax)) found = NextPaint(lpMsg, hWnd);
    if (!found && InRange(WM_TIMER, wMsgFilterMin, wMsgFilterMax)) found = NextTimer(lpMsg, hWnd, bRemove);
    if (found && bRemove) {
        NoteRetrieved(*lpMsg);
        SyncKeyStateFrom(*lpMsg);
    }
    return found;
}

BOOL GetMessage(MSG* lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax)
{
    for (;;) {
        if (PeekMessage(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, PM_REMOVE))
            return lpMsg->message == WM_QUIT ? FALSE : TRUE;
        DWORD due;
        if (!EarliestTimer(&due)) return -1;
        if ((LONG)(due - S().dwNow) > 0) S().dwNow = due;   // waiting lets the clock run
    }
}

LRESULT DispatchMessage(const MSG* lpMsg)
{
    if (lpMsg->message == WM_TIMER && lpMsg->lParam) {
        ((TIMERPROC)lpMsg->lParam)(lpMsg->hwnd, WM_TIMER, lpMsg->wParam, S().dwNow);
        return 0;
    }
    if (!lpMsg->hwnd) return 0;
    LRESULT r = SendMessage(lpMsg->hwnd, lpMsg->message, lpMsg->wParam, lpMsg->lParam);
    if (lpMsg->message == WM_PAINT) {
        // A procedure that did not validate would be asked again for ever; the real platform
        // validates after WM_PAINT when nothing called BeginPaint, and so does this one.
        Wnd* w = FromHandle(lpMsg->hwnd);
        if (w && w->bHasUpdate) ValidateRect(lpMsg->hwnd, nullptr);
    }
    return r;
}

BOOL TranslateMessage(const MSG* lpMsg)
{
    UINT m = lpMsg->message;
    if (m != WM_KEYDOWN && m != WM_KEYUP && m != WM_SYSKEYDOWN && m != WM_SYSKEYUP) return FALSE;
    if (m == WM_KEYDOWN) {
        WCHAR ch = lpMsg->wParam == VK_PACKET ? (WCHAR)lpMsg->lPrivate
                                               : TranslateKey((UINT)lpMsg->wParam, S().syncKeys);
        if (ch) {
            MSG c{lpMsg->hwnd, WM_CHAR, ch, lpMsg->lParam, lpMsg->time, lpMsg->pt, 0};
            S().posted.push_back(c);
        }
    }
    return TRUE;
}

DWORD GetMessageTime() { return S().dwLastMsgTime; }
DWORD GetMessagePos() { return S().dwLastMsgPos; }

void SetMessagePump(MessagePump pump) { S().pump = std::move(pump); }

int PumpMessages()
{
    int n = 0;
    MSG msg;
    while (PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) break;
        if (S().pump) {
            S().pump(msg);
        } else {
            TranslateMessage(&msg);
            DispatchMessage(&msg);
        }
        if (++n > 1000000) {
            std::fprintf(stderr, "USER: PumpMessages: a message keeps coming back (last %#x)\n", msg.message);
            assert(!"PumpMessages does not settle");
            break;
        }
    }
    return n;
}

BOOL GetNextTimerDue(DWORD* pdwDue) { return pdwDue && EarliestTimer(pdwDue); }

// Tick counts wrap, so a due time is told from the ticks still to go, counted from where the
// advance began: an advance may be any DWORD, half the range and more included.
void AdvanceClock(DWORD dwMilliseconds)
{
    DWORD start = S().dwNow;
    PumpMessages();
    DWORD due;
    while (EarliestTimer(&due)) {
        DWORD gone = S().dwNow - start;
        DWORD ahead = (LONG)(due - S().dwNow) > 0 ? due - S().dwNow : 0; // overdue ones are due now
        if (static_cast<unsigned long long>(gone) + ahead > dwMilliseconds) break;
        S().dwNow += ahead;
        PumpMessages();
    }
    S().dwNow = start + dwMilliseconds;
    PumpMessages();
}

// Win32 USER messages: sending, posting, the queue and its loop functions, timers and the clock.
#pragma once
#include <functional>
#include "userconst.h"

LRESULT SendMessage(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
BOOL PostMessage(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
void PostQuitMessage(int nExitCode);
LRESULT CallWindowProc(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
LRESULT DefWindowProc(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);

// Retrieval order is the real one: posted messages, then input, then WM_PAINT, then WM_TIMER.
// GetMessage cannot block here: with nothing pending it lets the virtual clock run to the next
// timer, and with no timer either it returns -1 (the real call would wait for ever).
BOOL GetMessage(MSG* lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax);
BOOL PeekMessage(MSG* lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg);
BOOL TranslateMessage(const MSG* lpMsg);
LRESULT DispatchMessage(const MSG* lpMsg);
DWORD GetMessageTime();
DWORD GetMessagePos();

UINT_PTR SetTimer(HWND hWnd, UINT_PTR nIDEvent, UINT uElapse, TIMERPROC lpTimerFunc);
BOOL KillTimer(HWND hWnd, UINT_PTR uIDEvent);
DWORD GetTickCount();

// Stand-in: the message loop body that PumpMessages and AdvanceClock run for each message.
// The default is TranslateMessage then DispatchMessage; a host puts its PreTranslateMessage in front.
using MessagePump = std::function<void(MSG&)>;
void SetMessagePump(MessagePump pump);
// Stand-in: delivers everything pending at the current time, paints and due timers included.
// Returns the number of messages delivered; stops early at WM_QUIT.
int PumpMessages();
// Stand-in: moves the virtual clock forward by dwMilliseconds, delivering pending messages and each
// timer at its due time, in time order.
void AdvanceClock(DWORD dwMilliseconds);
// Stand-in: when the earliest timer is due, on the clock of GetTickCount; FALSE when none is set.
BOOL GetNextTimerDue(DWORD* pdwDue);
// Stand-in test hook: while set, SetTimer fails and returns 0.
void SetTimerFailure(BOOL bFail);
// Stand-in: whether WM_QUIT was retrieved, and its exit code.
BOOL IsQuitPosted(int* pnExitCode);

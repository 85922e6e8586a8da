// Win32 USER input state: focus, activation, capture, cursor, keyboard state, caret, and the
// simulated hardware input that hosts and tests drive.
#pragma once
#include "userconst.h"
#include "userkeys.h"

HWND SetFocus(HWND hWnd);
HWND GetFocus();
HWND SetActiveWindow(HWND hWnd);
HWND GetActiveWindow();
HWND GetForegroundWindow();
BOOL SetForegroundWindow(HWND hWnd);
HWND SetCapture(HWND hWnd);
BOOL ReleaseCapture();
HWND GetCapture();

HCURSOR LoadCursor(HINSTANCE hInstance, LPCTSTR lpCursorName);
HCURSOR SetCursor(HCURSOR hCursor);
HCURSOR GetCursor();
BOOL GetCursorPos(POINT* lpPoint);
BOOL SetCursorPos(int X, int Y);
UINT GetDoubleClickTime();

// GetKeyState follows the messages as they are retrieved; GetAsyncKeyState the simulated keys now.
SHORT GetKeyState(int nVirtKey);
SHORT GetAsyncKeyState(int vKey);
// US keyboard layout: low byte the key, high byte 1 for Shift, 2 for Ctrl; -1 when no key types ch.
SHORT VkKeyScan(WCHAR ch);

BOOL CreateCaret(HWND hWnd, HBITMAP hBitmap, int nWidth, int nHeight);
BOOL DestroyCaret();
BOOL SetCaretPos(int X, int Y);
BOOL GetCaretPos(POINT* lpPoint);
BOOL ShowCaret(HWND hWnd);
BOOL HideCaret(HWND hWnd);
// Stand-in: the caret for whoever composes the screen. FALSE when no window owns a caret.
struct CaretState { HWND hwnd; RECT rc; BOOL bVisible; };
BOOL GetCaretState(CaretState* pState);

// Stand-in hardware input. Each call posts to the input queue as the input path would; the target
// window (capture, else the window under the point; focus for keys and the wheel) is chosen when the
// message is retrieved. Points are in screen coordinates. nButton is VK_LBUTTON, VK_RBUTTON or VK_MBUTTON.
void SimulateMouseMove(int x, int y);
void SimulateMouseButton(int x, int y, BOOL bDown, int nButton = VK_LBUTTON);
void SimulateWheel(int x, int y, int nDelta);
void SimulateKey(UINT vk, BOOL bDown);
// A key press and release that types ch, with Shift pressed around it when the layout needs it;
// characters without a key arrive as VK_PACKET.
void SimulateChar(WCHAR ch);

// Win32 USER window functions: classes, creation and destruction, geometry, z-order, text, painting.
#pragma once
#include "userconst.h"

ATOM RegisterClass(const WNDCLASS* lpWndClass);
BOOL UnregisterClass(LPCTSTR lpClassName, HINSTANCE hInstance);
BOOL GetClassInfo(HINSTANCE hInstance, LPCTSTR lpClassName, WNDCLASS* lpWndClass);
int GetClassName(HWND hWnd, LPTSTR lpClassName, int nMaxCount);
ULONG_PTR GetClassLongPtr(HWND hWnd, int nIndex);
ULONG_PTR SetClassLongPtr(HWND hWnd, int nIndex, LONG_PTR dwNewLong);

HWND CreateWindowEx(DWORD dwExStyle, LPCTSTR lpClassName, LPCTSTR lpWindowName, DWORD dwStyle,
                    int x, int y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                    HINSTANCE hInstance, void* lpParam);
inline HWND CreateWindow(LPCTSTR lpClassName, LPCTSTR lpWindowName, DWORD dwStyle, int x, int y,
                         int nWidth, int nHeight, HWND hWndParent, HMENU hMenu, HINSTANCE hInstance,
                         void* lpParam)
{
    return CreateWindowEx(0, lpClassName, lpWindowName, dwStyle, x, y, nWidth, nHeight, hWndParent,
                          hMenu, hInstance, lpParam);
}
BOOL DestroyWindow(HWND hWnd);
BOOL IsWindow(HWND hWnd);

// Tree and z-order. GetParent gives the owner of a popup, as on the real platform.
HWND GetParent(HWND hWnd);
HWND SetParent(HWND hWndChild, HWND hWndNewParent);
HWND GetAncestor(HWND hWnd, UINT gaFlags);
HWND GetWindow(HWND hWnd, UINT uCmd);
HWND GetTopWindow(HWND hWnd);
BOOL IsChild(HWND hWndParent, HWND hWnd);
int GetDlgCtrlID(HWND hWnd);
HWND GetDlgItem(HWND hDlg, int nIDDlgItem);

LONG_PTR GetWindowLongPtr(HWND hWnd, int nIndex);
LONG_PTR SetWindowLongPtr(HWND hWnd, int nIndex, LONG_PTR dwNewLong);
inline LONG GetWindowLong(HWND hWnd, int nIndex) { return (LONG)GetWindowLongPtr(hWnd, nIndex); }
inline LONG SetWindowLong(HWND hWnd, int nIndex, LONG dwNewLong) { return (LONG)SetWindowLongPtr(hWnd, nIndex, dwNewLong); }

// Geometry. There is no non-client area: the window rectangle is the client area on the screen.
BOOL SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int X, int Y, int cx, int cy, UINT uFlags);
BOOL MoveWindow(HWND hWnd, int X, int Y, int nWidth, int nHeight, BOOL bRepaint);
BOOL ShowWindow(HWND hWnd, int nCmdShow);
BOOL IsWindowVisible(HWND hWnd);
BOOL EnableWindow(HWND hWnd, BOOL bEnable);
BOOL IsWindowEnabled(HWND hWnd);
BOOL GetWindowRect(HWND hWnd, RECT* lpRect);
BOOL GetClientRect(HWND hWnd, RECT* lpRect);
BOOL ScreenToClient(HWND hWnd, POINT* lpPoint);
BOOL ClientToScreen(HWND hWnd, POINT* lpPoint);
int MapWindowPoints(HWND hWndFrom, HWND hWndTo, POINT* lpPoints, UINT cPoints);
HWND WindowFromPoint(POINT Point);
HWND ChildWindowFromPoint(HWND hWndParent, POINT Point);

// Text, through WM_SETTEXT / WM_GETTEXT / WM_GETTEXTLENGTH.
BOOL SetWindowText(HWND hWnd, LPCTSTR lpString);
int GetWindowText(HWND hWnd, LPTSTR lpString, int nMaxCount);
int GetWindowTextLength(HWND hWnd);

// Invalidation and painting. The update region is kept as one bounding rectangle.
BOOL InvalidateRect(HWND hWnd, const RECT* lpRect, BOOL bErase);
BOOL ValidateRect(HWND hWnd, const RECT* lpRect);
BOOL UpdateWindow(HWND hWnd);
BOOL GetUpdateRect(HWND hWnd, RECT* lpRect, BOOL bErase);
HDC BeginPaint(HWND hWnd, PAINTSTRUCT* lpPaint);
BOOL EndPaint(HWND hWnd, const PAINTSTRUCT* lpPaint);
HDC GetDC(HWND hWnd);
int ReleaseDC(HWND hWnd, HDC hDC);
HWND WindowFromDC(HDC hDC);

// Stand-in: the window's own 32-bit surface, sized to its client area, made on first use (NULL when
// the window has no area or GDI cannot make it). Whoever composes the screen reads it through GDI.
HBITMAP GetWindowSurface(HWND hWnd);

// The system caret: CreateCaret, SetCaretPos, ShowCaret, HideCaret, DestroyCaret. It is state only;
// whoever composes the screen draws it (see GetCaretState).
#include "inputapi.h"
#include "wndapi.h"
#include "wndobj.h"

namespace {

struct Caret {
    HWND hwnd = nullptr;
    int cx = 0, cy = 0;
    POINT pt{0, 0};
    int nHide = 1;   // a new caret is hidden until ShowCaret
};

Caret& K()
{
    static Caret c;
    return c;
}

} // namespace

BOOL CreateCaret(HWND hWnd, HBITMAP, int nWidth, int nHeight)
{
    if (!user::CheckedHandle(hWnd)) return FALSE;
    // Stand-in: a width or height of 0 gives the system border width of 1.
    K() = Caret{hWnd, nWidth > 0 ? nWidth : 1, nHeight > 0 ? nHeight : 1, POINT{0, 0}, 1};
    return TRUE;
}

BOOL DestroyCaret()
{
    if (!K().hwnd) return FALSE;
    K() = Caret{};
    return TRUE;
}

BOOL SetCaretPos(int X, int Y)
{
    if (!K().hwnd) return FALSE;
    K().pt = POINT{X, Y};
    return TRUE;
}

BOOL GetCaretPos(POINT* lpPoint)
{
    if (!lpPoint) return FALSE;
    *lpPoint = K().pt;
    return TRUE;
}

BOOL ShowCaret(HWND hWnd)
{
    if (!K().hwnd || (hWnd && hWnd != K().hwnd) || K().nHide == 0) return FALSE;
    --K().nHide;
    return TRUE;
}

BOOL HideCaret(HWND hWnd)
{
    if (!K().hwnd || (hWnd && hWnd != K().hwnd)) return FALSE;
    ++K().nHide;
    return TRUE;
}

BOOL GetCaretState(CaretState* pState)
{
    if (!K().hwnd || !pState) return FALSE;
    const Caret& c = K();
    *pState = CaretState{c.hwnd, RECT{c.pt.x, c.pt.y, c.pt.x + c.cx, c.pt.y + c.cy}, c.nHide == 0 && IsWindowVisible(c.hwnd)};
    return TRUE;
}

namespace user {

void DropCaretOf(HWND hwnd)
{
    if (K().hwnd == hwnd) K() = Caret{};
}

void ResetCaret() { K() = Caret{}; }

} // namespace user

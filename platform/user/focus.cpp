// Keyboard focus, activation and mouse capture: SetFocus, SetActiveWindow, SetCapture and the
// hand-over when a window is hidden, disabled or destroyed.
#include "inputapi.h"
#include "msgapi.h"
#include "wndapi.h"
#include "wndobj.h"

using namespace user;

// WM_KILLFOCUS goes to the old window, then WM_SETFOCUS to the new one, each with the other's
// handle. Either handler may move the focus again; the outer call then stops where it is.
// Hidden windows can take the focus, as on the real platform; disabled ones cannot.
HWND SetFocus(HWND hWnd)
{
    HWND old = S().hwndFocus;
    if (hWnd) {
        Wnd* w = CheckedHandle(hWnd);
        if (!w || !IsEnabledChain(w)) return nullptr;
        if (hWnd == old) return old;
        HWND root = RootOf(hWnd);
        if (root != S().hwndActive) {
            ++S().nActivatingForFocus;
            ActivateWindow(root, false);
            --S().nActivatingForFocus;
            if (!IsWindow(hWnd)) return nullptr;
            old = S().hwndFocus;
            if (hWnd == old) return old;
        }
    } else if (!old) {
        return nullptr;
    }
    S().hwndFocus = hWnd;
    if (old && IsWindow(old)) SendMessage(old, WM_KILLFOCUS, (WPARAM)hWnd, 0);
    if (hWnd && S().hwndFocus == hWnd && IsWindow(hWnd)) SendMessage(hWnd, WM_SETFOCUS, (WPARAM)old, 0);
    return old;
}

HWND GetFocus() { return S().hwndFocus; }
HWND GetActiveWindow() { return S().hwndActive; }
HWND GetForegroundWindow() { return S().hwndActive; }

HWND SetActiveWindow(HWND hWnd)
{
    HWND old = S().hwndActive;
    HWND root = RootOf(hWnd);
    if (!root) return nullptr;
    ActivateWindow(root, false);
    return old;
}

BOOL SetForegroundWindow(HWND hWnd) { return SetActiveWindow(hWnd) || S().hwndActive == RootOf(hWnd); }

HWND SetCapture(HWND hWnd)
{
    if (!CheckedHandle(hWnd)) return nullptr;
    HWND old = S().hwndCapture;
    S().hwndCapture = hWnd;
    if (old && old != hWnd && IsWindow(old)) SendMessage(old, WM_CAPTURECHANGED, 0, (LPARAM)hWnd);
    return old;
}

// Stand-in: no mouse move is synthesised after the release.
BOOL ReleaseCapture()
{
    HWND old = S().hwndCapture;
    S().hwndCapture = nullptr;
    if (old && IsWindow(old)) SendMessage(old, WM_CAPTURECHANGED, 0, 0);
    return TRUE;
}

HWND GetCapture() { return S().hwndCapture; }

namespace user {

// Stand-in: WM_NCACTIVATE and WM_ACTIVATEAPP are not sent.
void ActivateWindow(HWND hwnd, bool bClick)
{
    Wnd* w = FromHandle(hwnd);
    if (!w || !IsTopLevel(w)) return;
    HWND old = S().hwndActive;
    if (old == hwnd) return;
    S().hwndActive = hwnd;
    if (old && IsWindow(old)) SendMessage(old, WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, 0), (LPARAM)hwnd);
    if (S().hwndActive != hwnd || !(w = FromHandle(hwnd))) return;
    std::vector<HWND>& top = S().topLevel;
    if (top.empty() || top.front() != hwnd) SetWindowPos(hwnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SendMessage(hwnd, WM_ACTIVATE, MAKEWPARAM(bClick ? WA_CLICKACTIVE : WA_ACTIVE, 0), (LPARAM)old);
}

// The owner takes the activation when it can, else the frontmost visible enabled window.
void ActivateOther(HWND hwndGone)
{
    Wnd* gone = FromHandle(hwndGone);
    HWND next = nullptr;
    auto usable = [hwndGone](HWND h) {
        Wnd* c = FromHandle(h);
        return c && h != hwndGone && !c->bDestroying && (c->dwStyle & WS_VISIBLE) && !(c->dwStyle & WS_DISABLED);
    };
    if (gone && gone->hwndOwner && usable(gone->hwndOwner)) next = gone->hwndOwner;
    for (size_t i = 0; !next && i < S().topLevel.size(); ++i)
        if (usable(S().topLevel[i])) next = S().topLevel[i];
    if (next) {
        ActivateWindow(next, false);
        return;
    }
    S().hwndActive = nullptr;
    if (gone) SendMessage(hwndGone, WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, 0), 0);
}

// A hidden window gives up the activation; the focus goes from a hidden child to its parent.
void AfterHide(Wnd* w)
{
    HWND hwnd = w->hwnd;
    bool top = IsTopLevel(w);
    HWND parent = w->hwndParent;
    if (top && S().hwndActive == hwnd) ActivateOther(hwnd);
    if (S().hwndFocus && IsSameOrDescendant(hwnd, S().hwndFocus)) {
        if (!top && IsWindow(parent) && !FromHandle(parent)->bDestroying) SetFocus(parent);
        else SetFocus(nullptr);
    }
}

} // namespace user

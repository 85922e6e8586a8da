// Simulated hardware input and the state it leaves: the input queue, mouse routing with capture,
// WM_SETCURSOR and WM_MOUSEACTIVATE, double clicks, key state, cursor position and shape.
#include <cstdlib>
#include "inputapi.h"
#include "msgapi.h"
#include "sysapi.h"
#include "wndapi.h"
#include "wndobj.h"

using namespace user;

namespace {

constexpr UINT kDoubleClickTime = 500;

WPARAM MouseKeyFlags()
{
    const BYTE* k = S().asyncKeys;
    WPARAM f = 0;
    if (k[VK_LBUTTON] & 0x80) f |= MK_LBUTTON;
    if (k[VK_RBUTTON] & 0x80) f |= MK_RBUTTON;
    if (k[VK_MBUTTON] & 0x80) f |= MK_MBUTTON;
    if (k[VK_SHIFT] & 0x80) f |= MK_SHIFT;
    if (k[VK_CONTROL] & 0x80) f |= MK_CONTROL;
    return f;
}

void Post(InputEvent e)
{
    e.dwTime = S().dwNow;
    S().input.push_back(e);
}

UINT GenericKey(UINT vk)
{
    switch (vk) {
    case VK_LSHIFT: case VK_RSHIFT: return VK_SHIFT;
    case VK_LCONTROL: case VK_RCONTROL: return VK_CONTROL;
    case VK_LMENU: case VK_RMENU: return VK_MENU;
    default: return vk;
    }
}

void SetKey(BYTE* keys, UINT vk, bool down)
{
    for (UINT k : {vk, GenericKey(vk)}) {
        if (down && !(keys[k] & 0x80)) keys[k] ^= 0x01;
        keys[k] = (BYTE)((keys[k] & 0x01) | (down ? 0x80 : 0));
    }
}

UINT ButtonMessage(int nButton, bool down)
{
    UINT base = nButton == VK_RBUTTON ? WM_RBUTTONDOWN : nButton == VK_MBUTTON ? WM_MBUTTONDOWN : WM_LBUTTONDOWN;
    return down ? base : base + 1;
}

bool IsDoubleClick(const InputEvent& e, HWND target)
{
    const State& s = S();
    Wnd* w = FromHandle(target);
    if (!w || !(w->pClass->wc.style & CS_DBLCLKS) || !s.bHaveClick) return false;
    return s.hwndClick == target && s.nClickButton == e.nButton && e.dwTime - s.dwClickTime < kDoubleClickTime &&
           std::llabs(static_cast<long long>(e.pt.x) - s.ptClick.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
           std::llabs(static_cast<long long>(e.pt.y) - s.ptClick.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2;
}

void NoteClick(const InputEvent& e, HWND target, bool bDouble)
{
    State& s = S();
    s.bHaveClick = !bDouble;   // a third press starts again
    s.hwndClick = target;
    s.nClickButton = e.nButton;
    s.dwClickTime = e.dwTime;
    s.ptClick = e.pt;
}

HWND KeyTarget() { return S().hwndFocus ? S().hwndFocus : nullptr; }

HWND MouseTarget(const InputEvent& e)
{
    if (e.kind == InputKind::Wheel) return S().hwndFocus ? S().hwndFocus : S().hwndActive;
    return S().hwndCapture ? S().hwndCapture : WindowFromPoint(e.pt);
}

// The side effects of taking a mouse message: the cursor, and activation by a click.
// Returns false when the click is eaten.
bool PrepareMouse(const MSG& m, bool bDown)
{
    if (S().hwndCapture) return true;
    SendMessage(m.hwnd, WM_SETCURSOR, (WPARAM)m.hwnd, MAKELPARAM(HTCLIENT, m.message));
    if (!bDown || !IsWindow(m.hwnd)) return IsWindow(m.hwnd);
    HWND root = RootOf(m.hwnd);
    if (root == S().hwndActive) return true;
    LRESULT r = SendMessage(m.hwnd, WM_MOUSEACTIVATE, (WPARAM)root, MAKELPARAM(HTCLIENT, m.message));
    if (r == MA_ACTIVATE || r == MA_ACTIVATEANDEAT) ActivateWindow(root, true);
    return r != MA_ACTIVATEANDEAT && r != MA_NOACTIVATEANDEAT && IsWindow(m.hwnd);
}

bool MakeMessage(const InputEvent& e, HWND target, MSG* m, bool bRemove)
{
    *m = MSG{target, 0, 0, 0, e.dwTime, e.pt, 0};
    switch (e.kind) {
    case InputKind::Key:
        m->message = e.bDown ? WM_KEYDOWN : WM_KEYUP;
        m->wParam = e.vk;
        m->lParam = e.lKeyData;
        m->lPrivate = e.chPacket;
        return true;
    case InputKind::Wheel:
        m->message = WM_MOUSEWHEEL;
        m->wParam = MAKEWPARAM(e.keyFlags, (WORD)(SHORT)e.nDelta);
        m->lParam = MAKELPARAM(e.pt.x, e.pt.y);
        return true;
    default: break;
    }
    POINT pt = e.pt;
    ScreenToClient(target, &pt);
    m->wParam = e.keyFlags;
    m->lParam = MAKELPARAM(pt.x, pt.y);
    bool bDown = e.kind == InputKind::MouseButton && e.bDown;
    m->message = e.kind == InputKind::MouseMove ? WM_MOUSEMOVE : ButtonMessage(e.nButton, e.bDown);
    if (bDown) {
        bool dbl = IsDoubleClick(e, target);
        if (dbl) m->message += 2;   // WM_xBUTTONDOWN to WM_xBUTTONDBLCLK
        if (bRemove) NoteClick(e, target, dbl);
    }
    return !bRemove || PrepareMouse(*m, bDown);
}

} // namespace

namespace user {

bool PeekInput(MSG* pMsg, HWND hwndFilter, UINT nMin, UINT nMax, bool bRemove)
{
    auto& q = S().input;
    while (!q.empty()) {
        InputEvent e = q.front();
        HWND target = e.kind == InputKind::Key ? KeyTarget() : MouseTarget(e);
        if (!target) { q.pop_front(); continue; }   // nobody to take it: the input is lost
        MSG m;
        MakeMessage(e, target, &m, false);
        if (hwndFilter && !IsSameOrDescendant(hwndFilter, target)) return false;
        if ((nMin || nMax) && (m.message < nMin || m.message > nMax)) return false;
        if (!bRemove) { *pMsg = m; return true; }
        q.pop_front();
        if (!MakeMessage(e, target, &m, true)) continue;
        *pMsg = m;
        return true;
    }
    return false;
}

void SyncKeyStateFrom(const MSG& m)
{
    BYTE* k = S().syncKeys;
    switch (m.message) {
    case WM_KEYDOWN: case WM_SYSKEYDOWN: SetKey(k, (UINT)m.wParam, true); break;
    case WM_KEYUP: case WM_SYSKEYUP: SetKey(k, (UINT)m.wParam, false); break;
    case WM_LBUTTONDOWN: case WM_LBUTTONDBLCLK: SetKey(k, VK_LBUTTON, true); break;
    case WM_LBUTTONUP: SetKey(k, VK_LBUTTON, false); break;
    case WM_RBUTTONDOWN: case WM_RBUTTONDBLCLK: SetKey(k, VK_RBUTTON, true); break;
    case WM_RBUTTONUP: SetKey(k, VK_RBUTTON, false); break;
    case WM_MBUTTONDOWN: case WM_MBUTTONDBLCLK: SetKey(k, VK_MBUTTON, true); break;
    case WM_MBUTTONUP: SetKey(k, VK_MBUTTON, false); break;
    default: break;
    }
}

void ResetInput()
{
    State& s = S();
    s.input.clear();
    s.ptCursor = POINT{0, 0};
    s.hCursor = nullptr;
    for (BYTE& b : s.asyncKeys) b = 0;
    for (BYTE& b : s.syncKeys) b = 0;
    s.bHaveClick = false;
}

} // namespace user

SHORT GetKeyState(int nVirtKey)
{
    BYTE b = S().syncKeys[nVirtKey & 0xFF];
    return (SHORT)(((b & 0x80) ? 0xFF80 : 0) | (b & 0x01));
}

SHORT GetAsyncKeyState(int vKey) { return (SHORT)((S().asyncKeys[vKey & 0xFF] & 0x80) ? 0x8000 : 0); }

// Stand-in: the pointer is not held inside the screen.
void SimulateMouseMove(int x, int y)
{
    S().ptCursor = POINT{x, y};
    Post(InputEvent{InputKind::MouseMove, POINT{x, y}, 0, false, 0, 0, 0, MouseKeyFlags(), 0, 0});
}

void SimulateMouseButton(int x, int y, BOOL bDown, int nButton)
{
    S().ptCursor = POINT{x, y};
    SetKey(S().asyncKeys, (UINT)nButton, bDown != FALSE);
    Post(InputEvent{InputKind::MouseButton, POINT{x, y}, nButton, bDown != FALSE, 0, 0, 0, MouseKeyFlags(), 0, 0});
}

void SimulateWheel(int x, int y, int nDelta)
{
    S().ptCursor = POINT{x, y};
    Post(InputEvent{InputKind::Wheel, POINT{x, y}, 0, false, nDelta, 0, 0, MouseKeyFlags(), 0, 0});
}

namespace {

// lParam of a key message: repeat count 1, no scan code, bit 30 the previous state, bit 31 release.
void PostKey(UINT vk, bool bDown, WCHAR chPacket)
{
    bool wasDown = (S().asyncKeys[vk & 0xFF] & 0x80) != 0;
    if (vk != VK_PACKET) SetKey(S().asyncKeys, vk, bDown);
    LPARAM l = 1;
    if (bDown ? wasDown : true) l |= 1L << 30;
    if (!bDown) l |= (LPARAM)1u << 31;
    l = (LPARAM)(DWORD)l;
    Post(InputEvent{InputKind::Key, S().ptCursor, 0, bDown, 0, vk, chPacket, 0, l, 0});
}

} // namespace

void SimulateKey(UINT vk, BOOL bDown) { PostKey(vk, bDown != FALSE, 0); }

void SimulateChar(WCHAR ch)
{
    SHORT scan = VkKeyScan(ch);
    if (scan == -1) {
        PostKey(VK_PACKET, true, ch);
        PostKey(VK_PACKET, false, ch);
        return;
    }
    UINT vk = scan & 0xFF;
    bool needShift = (scan & 0x100) != 0, needCtrl = (scan & 0x200) != 0;
    bool shiftDown = (S().asyncKeys[VK_SHIFT] & 0x80) != 0, ctrlDown = (S().asyncKeys[VK_CONTROL] & 0x80) != 0;
    if (needShift != shiftDown) PostKey(VK_SHIFT, needShift, 0);
    if (needCtrl != ctrlDown) PostKey(VK_CONTROL, needCtrl, 0);
    PostKey(vk, true, 0);
    PostKey(vk, false, 0);
    if (needCtrl != ctrlDown) PostKey(VK_CONTROL, ctrlDown, 0);
    if (needShift != shiftDown) PostKey(VK_SHIFT, shiftDown, 0);
}

HCURSOR LoadCursor(HINSTANCE hInstance, LPCTSTR lpCursorName)
{
    // Only the system cursors exist; each has one fixed handle.
    if (hInstance || !IS_INTRESOURCE(lpCursorName)) return nullptr;
    ULONG_PTR id = (ULONG_PTR)lpCursorName;
    if (id < 32512 || id > 32650) return nullptr;
    return reinterpret_cast<HCURSOR>(0x7F000000 + id);
}

HCURSOR SetCursor(HCURSOR hCursor)
{
    HCURSOR old = S().hCursor;
    S().hCursor = hCursor;
    return old;
}

HCURSOR GetCursor() { return S().hCursor; }

BOOL GetCursorPos(POINT* lpPoint)
{
    if (!lpPoint) return FALSE;
    *lpPoint = S().ptCursor;
    return TRUE;
}

BOOL SetCursorPos(int X, int Y)
{
    SimulateMouseMove(X, Y);
    return TRUE;
}

UINT GetDoubleClickTime() { return kDoubleClickTime; }

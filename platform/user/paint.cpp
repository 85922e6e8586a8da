// Invalidation and painting: InvalidateRect, ValidateRect, UpdateWindow, BeginPaint/EndPaint, GetDC,
// WM_PAINT synthesis, and each window's own surface under the device contexts.
#include <algorithm>
#include <map>
#include "gdi/standin.h"
#include "gdi/wingdi.h"
#include "msgapi.h"
#include "wndapi.h"
#include "wndobj.h"

using namespace user;

namespace {

std::map<HDC, HWND>& LiveDCs()
{
    static std::map<HDC, HWND> dcs;
    return dcs;
}

RECT ClientOf(const Wnd* w) { return RECT{0, 0, w->rc.right - w->rc.left, w->rc.bottom - w->rc.top}; }

HDC MakeDC(HWND hwnd, RECT clip)
{
    HBITMAP hbm = GetWindowSurface(hwnd);
    if (!hbm) return nullptr;
    HDC hdc = CreateSurfaceDC(hbm, POINT{0, 0}, clip);
    if (hdc) LiveDCs()[hdc] = hwnd;
    return hdc;
}

void FreeDC(HDC hdc)
{
    if (LiveDCs().erase(hdc)) DeleteDC(hdc);
}

RECT Union(const RECT& a, const RECT& b)
{
    return RECT{std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

bool FindPaint(HWND hwnd, HWND hwndFilter, HWND* pFound)
{
    Wnd* w = FromHandle(hwnd);
    if (!(w->dwStyle & WS_VISIBLE)) return false;
    if (w->bHasUpdate && (!hwndFilter || IsSameOrDescendant(hwndFilter, hwnd))) { *pFound = hwnd; return true; }
    for (HWND c : w->children)
        if (FindPaint(c, hwndFilter, pFound)) return true;
    return false;
}

} // namespace

namespace user {

void FreeSurface(Wnd* w)
{
    for (auto it = LiveDCs().begin(); it != LiveDCs().end();) {
        if (it->second == w->hwnd) { DeleteDC(it->first); it = LiveDCs().erase(it); }
        else ++it;
    }
    if (w->hSurface) DeleteObject(w->hSurface);
    w->hSurface = nullptr;
}

int LiveDCCount() { return (int)LiveDCs().size(); }

// Parents before their children, top-level windows in z-order.
bool NextPaint(MSG* pMsg, HWND hwndFilter)
{
    HWND found = nullptr;
    for (HWND h : S().topLevel)
        if (FindPaint(h, hwndFilter, &found)) break;
    if (!found) return false;
    *pMsg = MSG{found, WM_PAINT, 0, 0, S().dwNow, S().ptCursor, 0};
    return true;
}

} // namespace user

HBITMAP GetWindowSurface(HWND hWnd)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return nullptr;
    int cx = w->rc.right - w->rc.left, cy = w->rc.bottom - w->rc.top;
    if (cx <= 0 || cy <= 0) return nullptr;
    if (w->hSurface && (w->nSurfaceW != cx || w->nSurfaceH != cy)) {
        // A new size starts from a blank surface; the window has been invalidated for it.
        DeleteObject(w->hSurface);
        w->hSurface = nullptr;
    }
    if (!w->hSurface) {
        w->hSurface = CreateBitmap(cx, cy, 1, 32, nullptr);
        w->nSurfaceW = cx;
        w->nSurfaceH = cy;
    }
    return w->hSurface;
}

// Stand-in: hidden windows collect no update region; showing a window invalidates all of it.
BOOL InvalidateRect(HWND hWnd, const RECT* lpRect, BOOL bErase)
{
    if (!hWnd) {
        for (auto& [h, w] : S().windows) InvalidateRect(h, nullptr, bErase);   // the whole of every window
        return TRUE;
    }
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return FALSE;
    if (!IsVisibleChain(w)) return TRUE;
    CRect rc;
    if (!rc.IntersectRect(lpRect ? *lpRect : ClientOf(w), ClientOf(w))) return TRUE;
    w->rcUpdate = w->bHasUpdate ? Union(w->rcUpdate, rc) : RECT(rc);
    w->bHasUpdate = true;
    if (bErase) w->bUpdateErase = true;
    return TRUE;
}

// Stand-in: with one bounding rectangle, a partial validation only trims whole sides.
BOOL ValidateRect(HWND hWnd, const RECT* lpRect)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return FALSE;
    if (!w->bHasUpdate) return TRUE;
    RECT& u = w->rcUpdate;
    if (lpRect) {
        const RECT& v = *lpRect;
        bool coversX = v.left <= u.left && v.right >= u.right, coversY = v.top <= u.top && v.bottom >= u.bottom;
        if (coversX && v.top <= u.top && v.bottom > u.top) u.top = v.bottom;
        else if (coversX && v.bottom >= u.bottom && v.top < u.bottom) u.bottom = v.top;
        else if (coversY && v.left <= u.left && v.right > u.left) u.left = v.right;
        else if (coversY && v.right >= u.right && v.left < u.right) u.right = v.left;
        if (!IsRectEmpty(&u)) return TRUE;
    }
    w->bHasUpdate = false;
    w->bUpdateErase = false;
    w->rcUpdate = RECT{0, 0, 0, 0};
    return TRUE;
}

BOOL UpdateWindow(HWND hWnd)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return FALSE;
    if (w->bHasUpdate && IsVisibleChain(w)) SendMessage(hWnd, WM_PAINT, 0, 0);
    return TRUE;
}

BOOL GetUpdateRect(HWND hWnd, RECT* lpRect, BOOL bErase)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return FALSE;
    if (!w->bHasUpdate) {
        if (lpRect) *lpRect = RECT{0, 0, 0, 0};
        return FALSE;
    }
    if (lpRect) *lpRect = w->rcUpdate;
    if (bErase && w->bUpdateErase) {
        HDC hdc = MakeDC(hWnd, w->rcUpdate);
        if (hdc && SendMessage(hWnd, WM_ERASEBKGND, (WPARAM)hdc, 0) && (w = FromHandle(hWnd))) w->bUpdateErase = false;
        FreeDC(hdc);
    }
    return TRUE;
}

// WM_ERASEBKGND is sent here when the invalidation asked for erasing; fErase tells the caller that
// the window did not erase it.
HDC BeginPaint(HWND hWnd, PAINTSTRUCT* lpPaint)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w || !lpPaint) return nullptr;
    *lpPaint = PAINTSTRUCT{};
    RECT rc = w->bHasUpdate ? w->rcUpdate : RECT{0, 0, 0, 0};
    bool erase = w->bHasUpdate && w->bUpdateErase;
    w->bHasUpdate = false;
    w->bUpdateErase = false;
    w->rcUpdate = RECT{0, 0, 0, 0};
    HDC hdc = MakeDC(hWnd, rc);
    lpPaint->hdc = hdc;
    lpPaint->rcPaint = rc;
    if (erase && hdc) lpPaint->fErase = SendMessage(hWnd, WM_ERASEBKGND, (WPARAM)hdc, 0) ? FALSE : TRUE;
    return hdc;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* lpPaint)
{
    if (lpPaint && lpPaint->hdc) FreeDC(lpPaint->hdc);
    return TRUE;
}

HDC GetDC(HWND hWnd)
{
    Wnd* w = CheckedHandle(hWnd);
    if (!w) return nullptr;   // no screen DC for the desktop here
    return MakeDC(hWnd, ClientOf(w));
}

int ReleaseDC(HWND, HDC hDC)
{
    if (!LiveDCs().count(hDC)) return 0;
    FreeDC(hDC);
    return 1;
}

HWND WindowFromDC(HDC hDC)
{
    auto it = LiveDCs().find(hDC);
    return it == LiveDCs().end() ? nullptr : it->second;
}

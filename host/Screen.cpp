// CHost: the composed screen: every visible window's surface in z-order, clipped to its parent,
// with the caret and then the held stills on top; pixels and PNG snapshots of it, and system colour changes.
#include <vector>
#include "base/colors.h"
#include "gdi/selectguard.h"
#include "gdi/wingdi.h"
#include "host/Host.h"
#include "user/winuser.h"

namespace {

// Children from the bottom of the z-order up, so that later ones paint over earlier ones.
std::vector<HWND> BottomUp(HWND first)
{
    std::vector<HWND> out;
    for (HWND h = first; h; h = ::GetWindow(h, GW_HWNDNEXT)) out.insert(out.begin(), h);
    return out;
}

void ComposeWindow(HDC screen, HWND hwnd, const RECT& clip)
{
    if (!::IsWindowVisible(hwnd)) return;
    RECT rc, visible;
    ::GetWindowRect(hwnd, &rc);
    CRect inside;
    if (!inside.IntersectRect(rc, clip)) return;
    visible = inside;
    if (HBITMAP surface = ::GetWindowSurface(hwnd)) {
        HDC src = ::CreateCompatibleDC(screen);
        {
            CScopedSelect selected(src, surface);
            ::BitBlt(screen, visible.left, visible.top, visible.right - visible.left, visible.bottom - visible.top, src,
                     visible.left - rc.left, visible.top - rc.top, SRCCOPY);
        }
        ::DeleteDC(src);
    }
    for (HWND child : BottomUp(::GetWindow(hwnd, GW_CHILD))) ComposeWindow(screen, child, visible);
}

void ComposeCaret(HDC screen)
{
    CaretState caret{};
    if (!::GetCaretState(&caret) || !caret.bVisible || !::IsWindowVisible(caret.hwnd)) return;
    POINT origin{0, 0};
    ::ClientToScreen(caret.hwnd, &origin);
    CRect rc(caret.rc);
    rc.OffsetRect(origin.x, origin.y);
    ::PatBlt(screen, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top, DSTINVERT);
}

} // namespace

HBITMAP CHost::ComposeScreen(const RECT* area)
{
    RECT all{0, 0, ::GetSystemMetrics(SM_CXVIRTUALSCREEN), ::GetSystemMetrics(SM_CYVIRTUALSCREEN)};
    RECT want = area ? *area : all;
    // Only the area is composed, so that a small look at a large screen costs what the area does;
    // what lies beyond the screen stays black.
    CRect shown;
    shown.IntersectRect(all, want);
    HDC screen = ::CreateCompatibleDC(nullptr);
    HBITMAP bitmap = ::CreateBitmap(want.right - want.left, want.bottom - want.top, 1, 32, nullptr);
    if (!screen || !bitmap) {
        if (screen) ::DeleteDC(screen);
        if (bitmap) ::DeleteObject(bitmap);
        return nullptr;
    }
    {
        CScopedSelect selected(screen, bitmap);
        ::SetViewportOrgEx(screen, -want.left, -want.top, nullptr);
        all = shown;
        ::FillRect(screen, &all, ::GetSysColorBrush(COLOR_BACKGROUND));
        Pump(); // the screen shows what has been painted: let pending paints run first
        for (HWND top : BottomUp(::GetTopWindow(nullptr))) ComposeWindow(screen, top, all);
        ComposeCaret(screen);
        ComposeStills(screen);
    }
    ::DeleteDC(screen);
    return bitmap;
}

void CHost::ComposeStills(HDC screen)
{
    HDC src = ::CreateCompatibleDC(screen);
    for (const Still& still : m_stills) {
        CScopedSelect selected(src, still.bitmap);
        ::BitBlt(screen, still.at.left, still.at.top, still.at.right - still.at.left, still.at.bottom - still.at.top, src, 0, 0,
                 SRCCOPY);
    }
    ::DeleteDC(src);
}

bool CHost::Freeze(const RECT& area)
{
    if (area.right <= area.left || area.bottom <= area.top) return false;
    HBITMAP bitmap = Capture(&area);
    if (!bitmap) return false;
    m_stills.push_back(Still{bitmap, area});
    return true;
}

void CHost::Thaw()
{
    for (const Still& still : m_stills) ::DeleteObject(still.bitmap);
    m_stills.clear();
}

COLORREF CHost::Pixel(int x, int y)
{
    POINT pt{x, y};
    RECT screen{0, 0, ::GetSystemMetrics(SM_CXVIRTUALSCREEN), ::GetSystemMetrics(SM_CYVIRTUALSCREEN)};
    if (!::PtInRect(&screen, pt)) return CLR_INVALID;
    RECT one{x, y, x + 1, y + 1};
    HBITMAP bitmap = ComposeScreen(&one);
    if (!bitmap) return CLR_INVALID;
    HDC dc = ::CreateCompatibleDC(nullptr);
    COLORREF c = CLR_INVALID;
    {
        CScopedSelect selected(dc, bitmap);
        c = ::GetPixel(dc, 0, 0);
    }
    ::DeleteDC(dc);
    ::DeleteObject(bitmap);
    return c;
}

HBITMAP CHost::Capture(const RECT* area) { return ComposeScreen(area); }

bool CHost::Snapshot(const char* path, const RECT* area, std::string* pReason)
{
    auto fail = [pReason](std::string why) { if (pReason) *pReason = std::move(why); return false; };
    RECT all{0, 0, ::GetSystemMetrics(SM_CXVIRTUALSCREEN), ::GetSystemMetrics(SM_CYVIRTUALSCREEN)};
    const RECT& want = area ? *area : all;
    std::string size = std::to_string(want.right - want.left) + " x " + std::to_string(want.bottom - want.top);
    if (want.right <= want.left || want.bottom <= want.top) return fail("the area " + size + " is empty");
    HBITMAP bitmap = Capture(area);
    if (!bitmap) return fail("an image of " + size + " pixels is too large to make");
    bool ok = ::SaveBitmapPng(bitmap, path);
    ::DeleteObject(bitmap);
    return ok || fail("cannot write '" + std::string(path) + "'");
}

void InvalidateWindowTree(HWND hwnd)
{
    if (!hwnd) return;
    ::InvalidateRect(hwnd, nullptr, TRUE);
    for (HWND child = ::GetWindow(hwnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        InvalidateWindowTree(child);
}

void CHost::SysColor(int index, COLORREF rgb)
{
    INT element = index;
    ::SetSysColors(1, &element, &rgb);
    RepaintAll();
}

void CHost::RepaintAll()
{
    for (HWND top = ::GetTopWindow(nullptr); top; top = ::GetWindow(top, GW_HWNDNEXT)) InvalidateWindowTree(top);
    Pump();
}

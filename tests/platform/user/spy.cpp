// The recording window class behind the USER tests.
#include "spy.h"
#include "gdi/standin.h"
#include <algorithm>
#include <cstdio>

namespace spy {

Log& L()
{
    static Log log;
    return log;
}

std::string Name(HWND h)
{
    if (!h) return "0";
    auto it = L().names.find(h);
    return it == L().names.end() ? "?" : it->second;
}

std::string MessageName(UINT msg)
{
    static const std::map<UINT, const char*> names = {
        {WM_CREATE, "WM_CREATE"}, {WM_NCCREATE, "WM_NCCREATE"}, {WM_DESTROY, "WM_DESTROY"},
        {WM_NCDESTROY, "WM_NCDESTROY"}, {WM_MOVE, "WM_MOVE"}, {WM_SIZE, "WM_SIZE"},
        {WM_ACTIVATE, "WM_ACTIVATE"}, {WM_SETFOCUS, "WM_SETFOCUS"}, {WM_KILLFOCUS, "WM_KILLFOCUS"},
        {WM_ENABLE, "WM_ENABLE"}, {WM_PAINT, "WM_PAINT"}, {WM_ERASEBKGND, "WM_ERASEBKGND"},
        {WM_SHOWWINDOW, "WM_SHOWWINDOW"}, {WM_SETCURSOR, "WM_SETCURSOR"}, {WM_MOUSEACTIVATE, "WM_MOUSEACTIVATE"},
        {WM_WINDOWPOSCHANGED, "WM_WINDOWPOSCHANGED"}, {WM_KEYDOWN, "WM_KEYDOWN"}, {WM_KEYUP, "WM_KEYUP"},
        {WM_CHAR, "WM_CHAR"}, {WM_COMMAND, "WM_COMMAND"}, {WM_TIMER, "WM_TIMER"},
        {WM_MOUSEMOVE, "WM_MOUSEMOVE"}, {WM_LBUTTONDOWN, "WM_LBUTTONDOWN"}, {WM_LBUTTONUP, "WM_LBUTTONUP"},
        {WM_LBUTTONDBLCLK, "WM_LBUTTONDBLCLK"}, {WM_RBUTTONDOWN, "WM_RBUTTONDOWN"}, {WM_MOUSEWHEEL, "WM_MOUSEWHEEL"},
        {WM_CAPTURECHANGED, "WM_CAPTURECHANGED"}, {WM_USER, "WM_USER"}, {WM_USER + 1, "WM_USER+1"},
        {WM_CTLCOLOREDIT, "WM_CTLCOLOREDIT"},
    };
    auto it = names.find(msg);
    if (it != names.end()) return it->second;
    char buf[16];
    std::snprintf(buf, sizeof buf, "0x%04X", msg);
    return buf;
}

namespace {

// Handles and timer ids print as names; everything else as numbers.
std::string Describe(UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case WM_SETFOCUS: case WM_KILLFOCUS: return " " + Name((HWND)wp);
    case WM_CAPTURECHANGED: return " " + Name((HWND)lp);
    case WM_ACTIVATE: return " " + std::to_string(LOWORD(wp)) + " " + Name((HWND)lp);
    case WM_TIMER: case WM_KEYDOWN: case WM_KEYUP: case WM_CHAR: case WM_ENABLE: return " " + std::to_string(wp);
    case WM_MOUSEMOVE: case WM_LBUTTONDOWN: case WM_LBUTTONUP: case WM_LBUTTONDBLCLK: case WM_RBUTTONDOWN:
    case WM_SIZE: case WM_MOVE:
        return " " + std::to_string(GET_X_LPARAM(lp)) + "," + std::to_string(GET_Y_LPARAM(lp));
    default: return "";
    }
}

} // namespace

LRESULT CALLBACK Proc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    auto& w = L().watched;
    if (std::find(w.begin(), w.end(), msg) != w.end())
        L().lines.push_back(Name(h) + " " + MessageName(msg) + Describe(msg, wp, lp));
    auto it = L().hooks.find(h);
    if (it != L().hooks.end()) {
        Hook hook = it->second;   // a copy: the hook may change the table
        LRESULT r = 0;
        if (hook(h, msg, wp, lp, &r)) return r;
    }
    return DefWindowProc(h, msg, wp, lp);
}

void UserTest::SetUp()
{
    ResetUserState();
    L() = Log{};
    m_nGdiAtStart = GdiGetLiveObjectCount();
    for (const char16_t* name : {kClass, kClassDbl}) {
        WNDCLASS wc{};
        wc.style = name == kClassDbl ? CS_DBLCLKS : 0;
        wc.lpfnWndProc = Proc;
        wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
        wc.lpszClassName = name;
        WNDCLASS existing;
        if (!GetClassInfo(nullptr, name, &existing)) {
            ASSERT_NE(RegisterClass(&wc), 0);
        }
    }
}

void UserTest::TearDown()
{
    L().hooks.clear();
    for (HWND h = GetTopWindow(nullptr); h; h = GetTopWindow(nullptr)) DestroyWindow(h);
    EXPECT_EQ(GetLiveWindowCount(), 0);
    EXPECT_EQ(GetLiveTimerCount(), 0);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(GdiGetLiveObjectCount(), m_nGdiAtStart) << GdiDescribeLiveObjects();
    ResetUserState();
}

HWND UserTest::Make(const char* name, DWORD style, int x, int y, int cx, int cy, HWND parent, const char16_t* cls, int id)
{
    HWND h = CreateWindowEx(0, cls, u"", style, x, y, cx, cy, parent, (HMENU)(intptr_t)id, nullptr, nullptr);
    EXPECT_NE(h, nullptr) << name;
    L().names[h] = name;
    return h;
}

std::vector<std::string> UserTest::Take()
{
    std::vector<std::string> v;
    v.swap(L().lines);
    return v;
}

} // namespace spy

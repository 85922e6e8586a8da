// Window objects: destruction order, nested sends, positions and their messages, z-order, activation.
#include "spy.h"

using namespace spy;
using Lines = std::vector<std::string>;

TEST_F(UserTest, DestroyGoesOwnedFirstThenParentBeforeChildrenThenNcDestroyUpwards)
{
    HWND top = Make("top", WS_VISIBLE, 0, 0, 200, 100);
    HWND a = Make("a", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50, top);
    HWND a1 = Make("a1", WS_CHILD, 0, 0, 10, 10, a);
    HWND pop = Make("pop", WS_POPUP, 0, 0, 10, 10, a);   // a child cannot own: top does
    EXPECT_EQ(GetWindow(pop, GW_OWNER), top);
    EXPECT_EQ(GetParent(pop), top);
    Watch({WM_DESTROY, WM_NCDESTROY});
    EXPECT_TRUE(DestroyWindow(top));
    // Owned popups go entirely before their owner; then WM_DESTROY runs down the tree and
    // WM_NCDESTROY back up.
    const Lines kDestroyTree = {"pop WM_DESTROY", "pop WM_NCDESTROY", "top WM_DESTROY", "a WM_DESTROY",
                                "a1 WM_DESTROY", "a1 WM_NCDESTROY", "a WM_NCDESTROY", "top WM_NCDESTROY"};
    EXPECT_EQ(Take(), kDestroyTree);
    for (HWND h : {top, a, a1, pop}) EXPECT_FALSE(IsWindow(h));
    EXPECT_EQ(SendMessage(a, WM_USER, 0, 0), 0) << "a dead handle takes no message";
}

TEST_F(UserTest, SendMessageNestsAndReturnsEachResult)
{
    HWND a = Make("a", 0, 0, 0, 10, 10);
    HWND b = Make("b", 0, 0, 0, 10, 10);
    L().hooks[a] = [b](HWND, UINT m, WPARAM wp, LPARAM, LRESULT* r) {
        if (m != WM_USER) return false;
        *r = SendMessage(b, WM_USER + 1, wp + 1, 0) * 10;
        return true;
    };
    L().hooks[b] = [a](HWND, UINT m, WPARAM wp, LPARAM, LRESULT* r) {
        if (m != WM_USER + 1) return false;
        *r = wp < 5 ? SendMessage(a, WM_USER, wp + 1, 0) + 1 : 7;
        return true;
    };
    Watch({WM_USER, WM_USER + 1});
    // a(0) -> b(1) -> a(2) -> b(3) -> a(4) -> b(5) answers 7.
    EXPECT_EQ(SendMessage(a, WM_USER, 0, 0), ((((7 * 10) + 1) * 10 + 1) * 10));
    EXPECT_EQ(Take().size(), 6u);
}

TEST_F(UserTest, SetWindowPosSendsMoveAndSizeOnlyForWhatChanged)
{
    HWND top = Make("top", WS_VISIBLE, 100, 50, 300, 200);
    HWND c = Make("c", WS_CHILD | WS_VISIBLE, 10, 10, 50, 20, top);
    Watch({WM_MOVE, WM_SIZE, WM_WINDOWPOSCHANGED});
    SetWindowPos(c, nullptr, 20, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(Take(), (Lines{"c WM_WINDOWPOSCHANGED", "c WM_MOVE 20,30"}));
    MoveWindow(c, 20, 30, 60, 25, TRUE);
    EXPECT_EQ(Take(), (Lines{"c WM_WINDOWPOSCHANGED", "c WM_SIZE 60,25"}));
    MoveWindow(c, 20, 30, 60, 25, TRUE);
    EXPECT_EQ(Take(), (Lines{"c WM_WINDOWPOSCHANGED"}));

    RECT rc;
    GetWindowRect(c, &rc);
    EXPECT_EQ(CRect(rc), CRect(120, 80, 180, 105)) << "screen rectangle = client area on the screen";
    GetClientRect(c, &rc);
    EXPECT_EQ(CRect(rc), CRect(0, 0, 60, 25));
    POINT pt{125, 85};
    ScreenToClient(c, &pt);
    EXPECT_EQ(CPoint(pt), CPoint(5, 5));
    ClientToScreen(top, &pt);
    EXPECT_EQ(CPoint(pt), CPoint(105, 55));
}

TEST_F(UserTest, WindowFromPointFindsTopmostVisibleEnabledChild)
{
    HWND top = Make("top", WS_VISIBLE, 0, 0, 200, 100);
    HWND under = Make("under", WS_CHILD | WS_VISIBLE, 10, 10, 50, 50, top);
    HWND over = Make("over", WS_CHILD | WS_VISIBLE, 30, 30, 50, 50, top);   // created later: on top
    EXPECT_EQ(WindowFromPoint(POINT{40, 40}), over);
    EXPECT_EQ(WindowFromPoint(POINT{15, 15}), under);
    EXPECT_EQ(WindowFromPoint(POINT{150, 90}), top);
    EXPECT_EQ(WindowFromPoint(POINT{200, 50}), nullptr) << "right edge is outside";
    SetWindowPos(under, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(WindowFromPoint(POINT{40, 40}), under);
    ShowWindow(under, SW_HIDE);
    EXPECT_EQ(WindowFromPoint(POINT{40, 40}), over);
    EnableWindow(over, FALSE);
    EXPECT_EQ(WindowFromPoint(POINT{40, 40}), top) << "a disabled child leaves the point to its parent";

    HWND pop = Make("pop", WS_POPUP, 0, 0, 100, 100, top);
    EXPECT_EQ(WindowFromPoint(POINT{5, 5}), top) << "hidden popup";
    ShowWindow(pop, SW_SHOWNA);
    EXPECT_EQ(WindowFromPoint(POINT{5, 5}), pop);
}

TEST_F(UserTest, PopupActivatesAndTakesFocusUnlessNoActivate)
{
    HWND form = Make("form", WS_VISIBLE, 0, 0, 300, 200);
    HWND edit = Make("edit", WS_CHILD | WS_VISIBLE, 10, 10, 100, 20, form);
    HWND list = Make("list", WS_POPUP, 1, 1, 10, 10, edit);
    EXPECT_EQ(GetActiveWindow(), form);
    SetFocus(edit);
    Watch({WM_ACTIVATE, WM_SETFOCUS, WM_KILLFOCUS});

    SetWindowPos(list, HWND_TOP, 10, 30, 100, 50, SWP_SHOWWINDOW | SWP_NOACTIVATE);
    EXPECT_TRUE(Take().empty());
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(GetTopWindow(nullptr), list);
    ShowWindow(list, SW_HIDE);

    SetWindowPos(list, HWND_TOP, 10, 30, 100, 50, SWP_SHOWWINDOW);
    const Lines kActivatePopup = {"form WM_ACTIVATE 0 list", "list WM_ACTIVATE 1 form", "edit WM_KILLFOCUS list",
                                  "list WM_SETFOCUS edit"};
    EXPECT_EQ(Take(), kActivatePopup);
    EXPECT_EQ(GetActiveWindow(), list);

    // Focus going back to the edit brings its form back to the front without the form taking focus.
    SetFocus(edit);
    const Lines kFocusBack = {"list WM_ACTIVATE 0 form", "form WM_ACTIVATE 1 list", "list WM_KILLFOCUS edit",
                              "edit WM_SETFOCUS list"};
    EXPECT_EQ(Take(), kFocusBack);
    EXPECT_EQ(GetActiveWindow(), form);
    EXPECT_EQ(GetTopWindow(nullptr), list) << "an owned popup stays above its owner";
    SetFocus(nullptr);
}

TEST_F(UserTest, EnableTextAndWindowWords)
{
    HWND top = Make("top", WS_VISIBLE, 0, 0, 100, 100);
    HWND c = Make("c", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 10, 10, top, kClass, 210);
    EXPECT_EQ(GetDlgCtrlID(c), 210);
    EXPECT_EQ(GetDlgItem(top, 210), c);
    EXPECT_EQ((DWORD)GetWindowLongPtr(c, GWL_STYLE), (DWORD)(WS_CHILD | WS_VISIBLE | WS_TABSTOP));
    SetWindowLongPtr(c, GWLP_USERDATA, 1234);
    EXPECT_EQ(GetWindowLongPtr(c, GWLP_USERDATA), 1234);

    Watch({WM_ENABLE});
    EXPECT_FALSE(EnableWindow(c, FALSE)) << "was enabled";
    EXPECT_TRUE(EnableWindow(c, FALSE)) << "was disabled; no second WM_ENABLE";
    EXPECT_FALSE(IsWindowEnabled(c));
    EXPECT_TRUE(EnableWindow(c, TRUE));
    EXPECT_EQ(Take(), (Lines{"c WM_ENABLE 0", "c WM_ENABLE 1"}));

    EXPECT_TRUE(SetWindowText(c, u"hello"));
    EXPECT_EQ(GetWindowTextLength(c), 5);
    char16_t buf[4];
    EXPECT_EQ(GetWindowText(c, buf, 4), 3);
    EXPECT_EQ(std::u16string(buf), u"hel") << "cut to the buffer, with its terminator";

    ShowWindow(top, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(c)) << "a hidden parent hides its children";
    EXPECT_TRUE(GetWindowLongPtr(c, GWL_STYLE) & WS_VISIBLE);
}

TEST_F(UserTest, PaintComesOnlyWhenNothingElseWaitsAndEraseIsHonoured)
{
    HWND top = Make("top", WS_VISIBLE, 0, 0, 100, 100);
    PumpMessages();
    Watch({WM_PAINT, WM_ERASEBKGND, WM_USER});
    BOOL fErase = -1;
    RECT rcPaint{};
    L().hooks[top] = [&](HWND h, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (m != WM_PAINT) return false;
        PAINTSTRUCT ps;
        BeginPaint(h, &ps);
        fErase = ps.fErase;
        rcPaint = ps.rcPaint;
        EndPaint(h, &ps);
        return true;
    };
    RECT a{10, 10, 20, 20}, b{30, 5, 40, 15};
    InvalidateRect(top, &a, FALSE);
    PostMessage(top, WM_USER, 0, 0);
    InvalidateRect(top, &b, TRUE);
    RECT u;
    EXPECT_TRUE(GetUpdateRect(top, &u, FALSE));
    EXPECT_EQ(CRect(u), CRect(10, 5, 40, 20));
    PumpMessages();
    // The erase goes to the default handler, which has no class brush to erase with.
    EXPECT_EQ(Take(), (Lines{"top WM_USER", "top WM_PAINT", "top WM_ERASEBKGND"}));
    EXPECT_EQ(CRect(rcPaint), CRect(10, 5, 40, 20));
    EXPECT_TRUE(fErase) << "nobody erased: the painter must";
    EXPECT_FALSE(GetUpdateRect(top, &u, FALSE));

    InvalidateRect(top, nullptr, FALSE);
    ValidateRect(top, nullptr);
    EXPECT_EQ(PumpMessages(), 0);

    InvalidateRect(top, nullptr, FALSE);
    UpdateWindow(top);
    EXPECT_EQ(Take(), (Lines{"top WM_PAINT"})) << "UpdateWindow paints at once";
    EXPECT_FALSE(fErase);
}

// Timers on the virtual clock, the order of synthesised messages, metrics and beeps.
#include "spy.h"

using namespace spy;
using Lines = std::vector<std::string>;

TEST_F(UserTest, TimersFireInDueOrderOnTheVirtualClock)
{
    HWND w = Make("w", 0, 0, 0, 10, 10);
    std::vector<std::string> fired;
    L().hooks[w] = [&](HWND, UINT m, WPARAM id, LPARAM, LRESULT*) {
        if (m == WM_TIMER) fired.push_back(std::to_string(id) + "@" + std::to_string(GetTickCount()));
        return m == WM_TIMER;
    };
    EXPECT_EQ(SetTimer(w, 410, 30, nullptr), 410u);
    EXPECT_EQ(SetTimer(w, 420, 20, nullptr), 420u);
    AdvanceClock(65);
    EXPECT_EQ(fired, (Lines{"420@20", "410@30", "420@40", "410@60", "420@60"}));
    fired.clear();

    EXPECT_TRUE(KillTimer(w, 420));
    EXPECT_FALSE(KillTimer(w, 420));
    SetTimer(w, 410, 0, nullptr);      // 0 is the platform minimum, 10 ms
    AdvanceClock(25);
    EXPECT_EQ(fired, (Lines{"410@75", "410@85"}));
    EXPECT_EQ(GetTickCount(), 90u);
    EXPECT_EQ(GetLiveTimerCount(), 1);
    DestroyWindow(w);
    EXPECT_EQ(GetLiveTimerCount(), 0) << "timers end with their window";
}

TEST_F(UserTest, SetTimerFailureHookAndThreadTimers)
{
    HWND w = Make("w", 0, 0, 0, 10, 10);
    SetTimerFailure(TRUE);
    EXPECT_EQ(SetTimer(w, 410, 100, nullptr), 0u);
    EXPECT_EQ(GetLiveTimerCount(), 0);
    SetTimerFailure(FALSE);

    static int calls = 0;
    calls = 0;
    UINT_PTR id = SetTimer(nullptr, 0, 15, [](HWND, UINT, UINT_PTR, DWORD) { ++calls; });
    EXPECT_NE(id, 0u);
    AdvanceClock(31);
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(KillTimer(nullptr, id));
}

TEST_F(UserTest, PostedThenInputThenPaintThenTimer)
{
    HWND w = Make("w", WS_VISIBLE, 0, 0, 50, 50);
    PumpMessages();
    Watch({WM_USER, WM_PAINT, WM_TIMER, WM_MOUSEMOVE});
    SetTimer(w, 1, 10, nullptr);
    AdvanceClock(0);
    // A timer comes due while other messages wait: they all go first.
    L().hooks[w] = [](HWND h, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (m == WM_USER) {
            AdvanceClock(0);   // nested pumping is allowed
            return true;
        }
        if (m == WM_TIMER) KillTimer(h, 1);
        return false;
    };
    SimulateMouseMove(5, 5);
    InvalidateRect(w, nullptr, FALSE);
    PostMessage(w, WM_USER, 0, 0);
    AdvanceClock(10);
    const Lines kOrder = {"w WM_USER", "w WM_MOUSEMOVE 5,5", "w WM_PAINT", "w WM_TIMER 1"};
    EXPECT_EQ(Take(), kOrder);

    MSG msg;
    PostMessage(w, WM_USER, 7, 0);
    EXPECT_TRUE(PeekMessage(&msg, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_TRUE(PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 7u);
    EXPECT_FALSE(PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE));
    PostQuitMessage(3);
    EXPECT_FALSE(GetMessage(&msg, nullptr, 0, 0));
    EXPECT_EQ(msg.wParam, 3u);
}

TEST_F(UserTest, MetricsFollowTheVirtualScreen)
{
    EXPECT_EQ(GetSystemMetrics(SM_CXVSCROLL), 17);
    EXPECT_EQ(GetSystemMetrics(SM_CXICON), 32);
    SetVirtualScreen(800, 600, 2);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 800);
    EXPECT_EQ(GetSystemMetrics(SM_CMONITORS), 2);
    EXPECT_EQ(GetSystemMetrics(SM_CXVIRTUALSCREEN), 1600);
    EXPECT_EQ(GetSystemMetrics(SM_CYVIRTUALSCREEN), 600);
    MONITORINFO mi{sizeof mi, {}, {}, 0};
    EXPECT_TRUE(GetMonitorInfo(MonitorFromPoint(POINT{900, 10}, MONITOR_DEFAULTTONULL), &mi));
    EXPECT_EQ(CRect(mi.rcMonitor), CRect(800, 0, 1600, 600));
    EXPECT_EQ(mi.dwFlags, 0u);
    EXPECT_EQ(MonitorFromPoint(POINT{-5, 10}, MONITOR_DEFAULTTONULL), nullptr);
    RECT work;
    EXPECT_TRUE(SystemParametersInfo(SPI_GETWORKAREA, 0, &work, 0));
    EXPECT_EQ(CRect(work), CRect(0, 0, 800, 600));

    std::vector<UINT> beeps;
    SetMessageBeepHook([&](UINT t) { beeps.push_back(t); });
    MessageBeep(MB_ICONEXCLAMATION);
    MessageBeep(MB_OK);
    EXPECT_EQ(beeps, (std::vector<UINT>{MB_ICONEXCLAMATION, MB_OK}));
    EXPECT_EQ(GetMessageBeepCount(), 2);
}

// Tick counts wrap: an advance of half the range or more still reaches the timers due within it.
TEST_F(UserTest, LongAdvancesDeliverTheTimersDueWithinThem)
{
    HWND w = Make("w", 0, 0, 0, 10, 10);
    std::vector<DWORD> fired;
    L().hooks[w] = [&](HWND, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (m == WM_TIMER) fired.push_back(GetTickCount());
        return m == WM_TIMER;
    };
    const DWORD start = GetTickCount(), period = USER_TIMER_MAXIMUM;
    SetTimer(w, 1, period, nullptr);
    AdvanceClock(0x80000000u + 5);
    EXPECT_EQ(fired, (std::vector<DWORD>{start + period}));
    fired.clear();
    AdvanceClock(0xFFFFFFFFu); // the clock wraps during the advance
    EXPECT_EQ(fired, (std::vector<DWORD>{start + 2 * period, start + 3 * period}));
    EXPECT_EQ(GetTickCount(), start + 0x80000000u + 5 + 0xFFFFFFFFu);
    DestroyWindow(w);
}

// Screens that cannot be are refused, and sums of far-apart coordinates do not wrap.
TEST_F(UserTest, ImpossibleScreensAndFarCoordinates)
{
    EXPECT_FALSE(SetVirtualScreen(0, 0, 0));
    EXPECT_FALSE(SetVirtualScreen(-800, 600, 1));
    EXPECT_FALSE(SetVirtualScreen(1024, 768, 2147483647));
    EXPECT_FALSE(SetVirtualScreen(100000, 100000, 1));
    EXPECT_EQ(GetSystemMetrics(SM_CXVIRTUALSCREEN), 1024) << "a refused screen changes nothing";
    EXPECT_TRUE(SetVirtualScreen(16000, 900, 2));
    EXPECT_EQ(GetSystemMetrics(SM_CXVIRTUALSCREEN), 32000);

    HWND w = Make("w", 0, 2147483000, 10, 1000, 10);
    RECT rc;
    GetWindowRect(w, &rc);
    EXPECT_EQ(rc.right, 2147483647) << "held to the range";
    POINT pt{-2147483647 - 1, 5};
    ScreenToClient(w, &pt);
    EXPECT_EQ(pt.x, -2147483647 - 1);
    pt = POINT{2147483647, 5};
    ClientToScreen(w, &pt);
    EXPECT_EQ(pt.x, 2147483647);
    DestroyWindow(w);
}

// Focus hand-over, capture routing, cursor, double clicks and keyboard translation.
#include "spy.h"

using namespace spy;
using Lines = std::vector<std::string>;

class FocusTest : public UserTest {
protected:
    void SetUp() override
    {
        UserTest::SetUp();
        form = Make("form", WS_VISIBLE, 100, 100, 300, 200);
        a = Make("a", WS_CHILD | WS_VISIBLE, 0, 0, 100, 50, form);
        b = Make("b", WS_CHILD | WS_VISIBLE, 100, 0, 100, 50, form);
        c = Make("c", WS_CHILD, 200, 0, 100, 50, form);
        PumpMessages();
    }
    void TearDown() override
    {
        SetFocus(nullptr);
        UserTest::TearDown();
    }
    HWND form{}, a{}, b{}, c{};
};

TEST_F(FocusTest, KillFocusThenSetFocusEachWithTheOtherHandle)
{
    SetFocus(a);
    Watch({WM_SETFOCUS, WM_KILLFOCUS});
    EXPECT_EQ(SetFocus(b), a);
    EXPECT_EQ(Take(), (Lines{"a WM_KILLFOCUS b", "b WM_SETFOCUS a"}));
    EXPECT_EQ(SetFocus(b), b);
    EXPECT_TRUE(Take().empty()) << "no messages when the focus does not move";
    EXPECT_EQ(SetFocus(nullptr), b);
    EXPECT_EQ(Take(), (Lines{"b WM_KILLFOCUS 0"}));
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(FocusTest, SetFocusInsideSetFocusHandsOnAndOuterCallReturnsItsOwnOldFocus)
{
    SetFocus(a);
    // b passes the focus on to c at once, as the control passes it to its edit.
    L().hooks[b] = [this](HWND, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (m == WM_SETFOCUS) {
            EXPECT_EQ(SetFocus(c), b);
        }
        return false;
    };
    Watch({WM_SETFOCUS, WM_KILLFOCUS});
    EXPECT_EQ(SetFocus(b), a);
    const Lines kHandOn = {"a WM_KILLFOCUS b", "b WM_SETFOCUS a", "b WM_KILLFOCUS c", "c WM_SETFOCUS b"};
    EXPECT_EQ(Take(), kHandOn);
    EXPECT_EQ(GetFocus(), c) << "a hidden window can hold the focus";
}

TEST_F(FocusTest, DisabledWindowsRefuseFocusAndLoseIt)
{
    SetFocus(a);
    EnableWindow(b, FALSE);
    EXPECT_EQ(SetFocus(b), nullptr);
    EXPECT_EQ(GetFocus(), a);
    Watch({WM_KILLFOCUS});
    EnableWindow(a, FALSE);
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(Take(), (Lines{"a WM_KILLFOCUS 0"}));
    EnableWindow(a, TRUE);
    EnableWindow(b, TRUE);

    SetFocus(b);
    ShowWindow(b, SW_HIDE);
    EXPECT_EQ(GetFocus(), form) << "a hidden child gives the focus to its parent";
    SetFocus(c);
    DestroyWindow(c);
    EXPECT_EQ(GetFocus(), form) << "and so does a destroyed one";
}

TEST_F(FocusTest, CaptureTakesMouseInputEvenOutsideTheWindow)
{
    Watch({WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_CAPTURECHANGED, WM_SETCURSOR});
    EXPECT_EQ(SetCapture(a), nullptr);
    SimulateMouseMove(250, 120);          // over b
    SimulateMouseButton(250, 120, TRUE);
    SimulateMouseMove(50, 20);            // off the form entirely
    PumpMessages();
    // No WM_SETCURSOR while captured; coordinates are a's, negative where the pointer is above or left.
    const Lines kCaptured = {"a WM_MOUSEMOVE 150,20", "a WM_LBUTTONDOWN 150,20", "a WM_MOUSEMOVE -50,-80"};
    EXPECT_EQ(Take(), kCaptured);

    EXPECT_EQ(SetCapture(b), a);
    EXPECT_EQ(Take(), (Lines{"a WM_CAPTURECHANGED b"}));
    ReleaseCapture();
    EXPECT_EQ(Take(), (Lines{"b WM_CAPTURECHANGED 0"}));
    SimulateMouseButton(150, 120, FALSE);   // over a, no capture now
    PumpMessages();
    EXPECT_EQ(Take(), (Lines{"a WM_SETCURSOR", "form WM_SETCURSOR", "a WM_LBUTTONUP 50,20"})) << "a child asks its parent first";
    EXPECT_EQ(GetCursor(), LoadCursor(nullptr, IDC_ARROW)) << "the class cursor, set by DefWindowProc";

    // Capture released inside the press handler sends the release to the window under the pointer.
    L().hooks[a] = [](HWND h, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (m == WM_LBUTTONDOWN) SetCapture(h);
        if (m == WM_MOUSEMOVE) ReleaseCapture();
        return false;
    };
    Watch({WM_LBUTTONUP});
    SimulateMouseButton(150, 120, TRUE);
    SimulateMouseMove(250, 120);
    SimulateMouseButton(250, 120, FALSE);
    PumpMessages();
    EXPECT_EQ(Take(), (Lines{"b WM_LBUTTONUP 50,20"}));
}

TEST_F(FocusTest, DoubleClickOnlyForClassesWithDblClks)
{
    HWND d = Make("d", WS_CHILD | WS_VISIBLE, 0, 100, 100, 50, form, kClassDbl);
    Watch({WM_LBUTTONDOWN, WM_LBUTTONDBLCLK});
    auto click = [](int x, int y) {
        SimulateMouseButton(x, y, TRUE);
        SimulateMouseButton(x, y, FALSE);
    };
    click(110, 210);
    AdvanceClock(400);
    click(112, 212);           // within 500 ms and 2 px: a double click
    click(112, 212);           // a third press starts again
    AdvanceClock(600);
    click(112, 212);           // too late
    PumpMessages();
    AdvanceClock(100);
    click(115, 212);           // too far
    PumpMessages();
    const Lines kDbl = {"d WM_LBUTTONDOWN 10,10", "d WM_LBUTTONDBLCLK 12,12", "d WM_LBUTTONDOWN 12,12",
                        "d WM_LBUTTONDOWN 12,12", "d WM_LBUTTONDOWN 15,12"};
    EXPECT_EQ(Take(), kDbl);

    click(110, 110);
    click(110, 110);
    PumpMessages();
    EXPECT_EQ(Take(), (Lines{"a WM_LBUTTONDOWN 10,10", "a WM_LBUTTONDOWN 10,10"})) << "no CS_DBLCLKS";
    (void)d;
}

TEST_F(FocusTest, KeysGoToFocusAndTranslateToCharactersWithTheirModifiers)
{
    SetFocus(b);
    Watch({WM_KEYDOWN, WM_KEYUP, WM_CHAR});
    std::vector<LPARAM> keyData;
    L().hooks[b] = [&](HWND, UINT m, WPARAM, LPARAM lp, LRESULT*) {
        if (m == WM_KEYDOWN || m == WM_KEYUP) keyData.push_back(lp);
        return false;
    };
    SimulateChar(u'A');     // Shift, a, release, Shift released
    SimulateKey(VK_CONTROL, TRUE);
    SimulateKey('V', TRUE);
    SimulateKey('V', FALSE);
    SimulateKey(VK_CONTROL, FALSE);
    SimulateChar(u'\u00e9');
    PumpMessages();
    const Lines kTyped = {"b WM_KEYDOWN 16", "b WM_KEYDOWN 65", "b WM_CHAR 65", "b WM_KEYUP 65", "b WM_KEYUP 16",
                          "b WM_KEYDOWN 17", "b WM_KEYDOWN 86", "b WM_CHAR 22", "b WM_KEYUP 86", "b WM_KEYUP 17",
                          "b WM_KEYDOWN 231", "b WM_CHAR 233", "b WM_KEYUP 231"};
    EXPECT_EQ(Take(), kTyped);
    ASSERT_GE(keyData.size(), 3u);
    EXPECT_EQ((DWORD)keyData[1], 1u) << "repeat count 1, key was up";
    EXPECT_EQ((DWORD)keyData[2], 0xC0000001u) << "release: bits 30 and 31";
    EXPECT_EQ(GetKeyState(VK_SHIFT) & 0x8000, 0);

    // GetKeyState follows retrieval: while the first key is handled the second is not down yet.
    SHORT shiftSeen = 0;
    L().hooks[b] = [&](HWND, UINT m, WPARAM wp, LPARAM, LRESULT*) {
        if (m == WM_KEYDOWN && wp == 'X') shiftSeen = GetKeyState(VK_SHIFT);
        return false;
    };
    SimulateKey('X', TRUE);
    SimulateKey(VK_SHIFT, TRUE);
    EXPECT_LT(GetAsyncKeyState(VK_SHIFT), 0);
    PumpMessages();
    EXPECT_GE(shiftSeen, 0);
    EXPECT_LT(GetKeyState(VK_SHIFT), 0);
    SimulateKey('X', FALSE);
    SimulateKey(VK_SHIFT, FALSE);
    PumpMessages();
}

TEST_F(FocusTest, WheelGoesToFocusAndClimbsToTheParent)
{
    HWND inner = Make("inner", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, a);
    SetFocus(inner);
    Watch({WM_MOUSEWHEEL});
    WPARAM seen = 0;
    LPARAM seenPos = 0;
    L().hooks[a] = [&](HWND, UINT m, WPARAM wp, LPARAM lp, LRESULT* r) {
        if (m != WM_MOUSEWHEEL) return false;
        seen = wp;
        seenPos = lp;
        *r = 0;
        return true;
    };
    SimulateMouseButton(260, 150, TRUE);
    SimulateWheel(260, 150, -120);
    PumpMessages();
    SimulateMouseButton(260, 150, FALSE);
    PumpMessages();
    EXPECT_EQ(Take(), (Lines{"inner WM_MOUSEWHEEL", "a WM_MOUSEWHEEL"}));
    EXPECT_EQ(GET_WHEEL_DELTA_WPARAM(seen), -120);
    EXPECT_EQ(GET_KEYSTATE_WPARAM(seen), MK_LBUTTON);
    EXPECT_EQ(GET_X_LPARAM(seenPos), 260) << "screen coordinates";
    EXPECT_EQ(GET_Y_LPARAM(seenPos), 150);
}

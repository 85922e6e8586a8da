// The painted buttons under the mouse: spin presses with their repeat, drop presses with dragging,
// hover with DisplayStyle Flat, and design mode, compared as whole event sequences.
#include "Harness.h"
#include "control/QuillonCtrl.h"
#include "user/winuser.h"

namespace {

class Buttons : public ControlTest {
protected:
    // A 120 by 24 control with both buttons: upper spin x 102..117, rows 2..13; lower rows 12..21;
    // drop x 86..101.
    CControlSite* WithButtons()
    {
        CControlSite* q = Create();
        Put(q, u"SpinButton", COleVariant(SHORT(1), VT_BOOL));
        Put(q, u"DropButton", COleVariant(SHORT(1), VT_BOOL));
        m_host.Pump();
        TakeLog();
        return q;
    }
    // Screen point of a client point of the control.
    POINT At(CControlSite* q, int x, int y)
    {
        POINT p{x, y};
        ::ClientToScreen(q->Window(), &p);
        return p;
    }
    void Press(CControlSite* q, int x, int y) { POINT p = At(q, x, y); m_host.Press(p.x, p.y); }
    void Release(CControlSite* q, int x, int y) { POINT p = At(q, x, y); m_host.Release(p.x, p.y); }
    void MoveTo(CControlSite* q, int x, int y) { POINT p = At(q, x, y); m_host.Move(p.x, p.y); }
    // Mouse moves are many and not the point here.
    std::vector<std::string> TakeWithoutMoves()
    {
        std::vector<std::string> out;
        for (auto& line : TakeLog())
            if (line.rfind("MouseMove", 0) != 0) out.push_back(line);
        return out;
    }
};


// A click on the upper spin button at (110, 5): the spin event comes before the stock mouse events.
const std::vector<std::string> kClickUpperSpin = {"ClickSpin 0", "MouseDown 1 0 110 5", "MouseUp 1 0 110 5", "Click"};
} // namespace

TEST_F(Buttons, SpinRepeatsAfterTheFirstPeriodUntilRelease)
{
    CControlSite* q = WithButtons();
    Press(q, 110, 5);
    ExpectSequence({"ClickSpin 0", "MouseDown 1 0 110 5"}, TakeWithoutMoves()); // immediate, before MouseDown
    EXPECT_EQ(Inside(q)->m_nSpinPressed, 1);
    m_host.Advance(199);
    ExpectSequence({}, TakeWithoutMoves());
    m_host.Advance(1);
    ExpectSequence({"ClickSpin 0"}, TakeWithoutMoves()); // the first period: InitialDelay 200
    m_host.Advance(60);
    ExpectSequence({"ClickSpin 0", "ClickSpin 0", "ClickSpin 0"}, TakeWithoutMoves()); // every 1000 / 50 ms
    MoveTo(q, 40, 5);
    m_host.Advance(20);
    ExpectSequence({"ClickSpin 0"}, TakeWithoutMoves()); // dragging off does not matter to a spin press
    Release(q, 40, 5);
    ExpectSequence({"MouseUp 1 0 40 5", "Click"}, TakeWithoutMoves());
    m_host.Advance(100);
    ExpectSequence({}, TakeWithoutMoves());
    EXPECT_EQ(Inside(q)->m_nSpinPressed, 0);
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(Buttons, LowerSpinAndTheOverlapGoToTheUpperButton)
{
    CControlSite* q = WithButtons();
    Press(q, 110, 12); // both rectangles hold row 12: the upper one wins
    Release(q, 110, 12);
    Press(q, 110, 20);
    Release(q, 110, 20);
    ExpectSequence({"ClickSpin 0", "MouseDown 1 0 110 12", "MouseUp 1 0 110 12", "Click",
                    "ClickSpin 1", "MouseDown 1 0 110 20", "MouseUp 1 0 110 20", "Click"}, TakeWithoutMoves());
}

TEST_F(Buttons, StopTimerInAHandlerEndsTheRepeat)
{
    CControlSite* q = WithButtons();
    int clicks = 0;
    q->SetEventHandler([&](const EventInfo& e, VARIANT*, UINT) {
        if (e.name == u"ClickSpin" && ++clicks == 2) Call(q, u"StopTimer");
    });
    Press(q, 110, 5);
    m_host.Advance(500);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(Inside(q)->m_nSpinPressed, 0) << "the button pops";
    Release(q, 110, 5);
    m_host.Advance(100);
    EXPECT_EQ(clicks, 2);
}

TEST_F(Buttons, RepeatRateZeroAndFailingTimers)
{
    CControlSite* q = WithButtons();
    Put(q, u"RepeatRate", COleVariant(LONG(0)));
    Put(q, u"InitialDelay", COleVariant(LONG(50)));
    TakeLog();
    Press(q, 110, 5);
    m_host.Advance(50);
    m_host.Advance(10);
    Release(q, 110, 5);
    ExpectSequence({"ClickSpin 0", "MouseDown 1 0 110 5", "ClickSpin 0", "ClickSpin 0", "MouseUp 1 0 110 5", "Click"},
                   TakeWithoutMoves());

    m_host.Advance(600); // no double click
    SetTimerFailure(TRUE);
    Press(q, 110, 5);
    SetTimerFailure(FALSE);
    EXPECT_EQ(Inside(q)->m_nSpinPressed, 0);
    Release(q, 110, 5);
    ExpectSequence({"MouseDown 1 0 110 5", "MouseUp 1 0 110 5", "Click"}, TakeWithoutMoves());
}

TEST_F(Buttons, DropClicksOnlyWhenReleasedOnTheButton)
{
    CControlSite* q = WithButtons();
    Press(q, 90, 10);
    EXPECT_EQ(Inside(q)->m_nDropPressed, 1);
    MoveTo(q, 40, 10);
    EXPECT_EQ(Inside(q)->m_nDropPressed, 0) << "dragged out, drawn released";
    MoveTo(q, 95, 10);
    EXPECT_EQ(Inside(q)->m_nDropPressed, 1);
    Release(q, 95, 10);
    ExpectSequence({"MouseDown 1 0 90 10", "ClickDrop", "MouseUp 1 0 95 10", "Click"}, TakeWithoutMoves());

    m_host.Advance(600); // each press a single click
    Press(q, 90, 10);
    MoveTo(q, 40, 10);
    Release(q, 40, 10);
    ExpectSequence({"MouseDown 1 0 90 10", "MouseUp 1 0 40 10", "Click"}, TakeWithoutMoves());
    POINT outside = At(q, 200, 10);
    m_host.Advance(600);
    Press(q, 90, 10);
    m_host.Release(outside.x, outside.y);
    ExpectSequence({"MouseDown 1 0 90 10", "MouseUp 1 0 200 10"}, TakeWithoutMoves());
}

TEST_F(Buttons, HoverWithFlatStyleUntilThePollFindsAnotherWindow)
{
    CControlSite* q = WithButtons();
    Put(q, u"DisplayStyle", COleVariant(LONG(1)));
    TakeLog();
    MoveTo(q, 50, 10);
    MoveTo(q, 60, 10);
    ExpectSequence({"MouseOn"}, TakeWithoutMoves());
    EXPECT_TRUE(Inside(q)->m_bMouseOver);
    POINT away = At(q, 50, 100);
    m_host.Move(away.x, away.y);
    m_host.Advance(10);
    EXPECT_FALSE(Inside(q)->m_bMouseOver);
    MoveTo(q, 50, 10);
    ExpectSequence({"MouseOn"}, TakeWithoutMoves());
    m_host.Move(away.x, away.y);
    m_host.Advance(10);

    Put(q, u"DisplayStyle", COleVariant(LONG(0)));
    TakeLog();
    MoveTo(q, 50, 10);
    ExpectSequence({}, TakeWithoutMoves());
}

TEST_F(Buttons, DesignModePressesButRaisesNoClicks)
{
    m_host.m_bUserMode = FALSE;
    CControlSite* q = WithButtons();
    Press(q, 110, 5);
    EXPECT_EQ(Inside(q)->m_nSpinPressed, 1) << "the button still looks pressed";
    m_host.Advance(220);
    Release(q, 110, 5);
    m_host.Advance(600);
    Press(q, 90, 10);
    Release(q, 90, 10);
    ExpectSequence({"MouseDown 1 0 110 5", "MouseUp 1 0 110 5", "Click", "MouseDown 1 0 90 10", "MouseUp 1 0 90 10",
                    "Click"}, TakeWithoutMoves());
}

TEST_F(Buttons, DoubleClickOnASpinButtonIsASecondPress)
{
    CControlSite* q = WithButtons();
    POINT p = At(q, 110, 20);
    m_host.DblClick(p.x, p.y);
    ExpectSequence({"ClickSpin 1", "MouseDown 1 0 110 20", "MouseUp 1 0 110 20", "Click", "ClickSpin 1",
                    "MouseDown 1 0 110 20", "DblClick", "MouseUp 1 0 110 20"}, TakeWithoutMoves());
}

// A disabled control's window is disabled too: the mouse goes past it to the form, so neither the
// buttons nor the stock mouse events hear the press.
TEST_F(Buttons, DisabledControlsHearNoMouse)
{
    CControlSite* q = WithButtons();
    Put(q, u"Enabled", COleVariant(SHORT(0), VT_BOOL));
    m_host.Pump();
    EXPECT_FALSE(::IsWindowEnabled(q->Window()));
    TakeLog();
    Press(q, 110, 5);
    Release(q, 110, 5);
    ExpectSequence({}, TakeWithoutMoves());
    Put(q, u"Enabled", COleVariant(SHORT(1), VT_BOOL));
    Press(q, 110, 5);
    Release(q, 110, 5);
    ExpectSequence(kClickUpperSpin, TakeWithoutMoves());
}

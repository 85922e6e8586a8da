// The child edit: made at the first run-mode paint, placed over the text area while focused,
// text and selection moved at each change of focus, mouse events relayed with the inset offset.
#include "Harness.h"
#include "control/QuillonCtrl.h"
#include "gdi/wingdi.h"
#include "user/winuser.h"

namespace {

class EditFocus : public ControlTest {
protected:
    HWND EditOf(CControlSite* q) { return reinterpret_cast<HWND>(static_cast<uintptr_t>(Call(q, u"EditHwnd").lVal)); }
    CRect EditRect(CControlSite* q)
    {
        CRect rc;
        ::GetWindowRect(EditOf(q), &rc);
        POINT origin{0, 0};
        ::ClientToScreen(q->Window(), &origin);
        rc.OffsetRect(-origin.x, -origin.y);
        return rc;
    }
    void FocusForm() { ::SetFocus(m_form->Window()); m_host.Pump(); }
};

} // namespace

TEST_F(EditFocus, MadeAtTheFirstPaintAndShownOnlyWithTheFocus)
{
    CControlSite* q = Create();
    EXPECT_EQ(Call(q, u"EditHwnd").lVal, 0) << "no edit before the first paint";
    // The control's own paint, without the form's repaint that follows it in the host's loop.
    ::UpdateWindow(q->Window());
    HWND edit = EditOf(q);
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(::GetDlgCtrlID(edit), 210);
    EXPECT_TRUE(::IsWindowVisible(edit)) << "the first paint places and so shows it";
    Put(q, u"BorderColor", COleVariant(LONG(1)));
    m_host.Pump();
    EXPECT_FALSE(::IsWindowVisible(edit)) << "a paint without the focus hides it";
    m_host.Focus(*q);
    EXPECT_EQ(::GetFocus(), edit) << "the control hands the focus over";
    EXPECT_TRUE(::IsWindowVisible(edit));
    EXPECT_EQ(EditRect(q), CRect(3, 3, 116, 21));
    FocusForm();
    EXPECT_FALSE(::IsWindowVisible(edit));
}

TEST_F(EditFocus, FocusBeforeTheFirstPaintPassesOnAtThePaint)
{
    CControlSite* q = Create();
    ::SetFocus(q->Window());
    EXPECT_EQ(Call(q, u"EditHwnd").lVal, 0);
    m_host.Pump();
    EXPECT_EQ(::GetFocus(), EditOf(q));
}

TEST_F(EditFocus, PlacedByBorderAndButtons)
{
    struct { LONG border; bool drop, spin; CRect expected; } cases[] = {
        {3, false, false, CRect(3, 3, 116, 21)}, {3, true, false, CRect(3, 3, 101, 21)},
        {3, true, true, CRect(3, 3, 86, 21)},    {0, false, false, CRect(2, 2, 117, 22)},
        {1, false, false, CRect(1, 1, 118, 23)}, {2, false, true, CRect(3, 3, 101, 21)},
    };
    CControlSite* q = Create();
    m_host.Focus(*q);
    for (const auto& c : cases) {
        Put(q, u"BorderType", COleVariant(c.border));
        Put(q, u"DropButton", COleVariant(SHORT(c.drop), VT_BOOL));
        Put(q, u"SpinButton", COleVariant(SHORT(c.spin), VT_BOOL));
        m_host.Pump();
        EXPECT_EQ(EditRect(q), c.expected) << "border " << c.border << " drop " << c.drop << " spin " << c.spin;
    }
}

TEST_F(EditFocus, TextMovesInAtFocusAndSelectionCollapsesAtFocusOut)
{
    CControlSite* q = Create();
    Put(q, u"Text", COleVariant(u"hello"));
    m_host.Pump();
    HWND edit = EditOf(q);
    EXPECT_EQ(CWnd::FromHandle(edit)->GetWindowText(), u"") << "the hidden edit holds the template";
    m_host.Focus(*q);
    EXPECT_EQ(CWnd::FromHandle(edit)->GetWindowText(), u"hello");
    Call(q, u"SetSel", {COleVariant(SHORT(1)), COleVariant(SHORT(4)), COleVariant(SHORT(0), VT_BOOL)});
    FocusForm();
    EXPECT_EQ(Call(q, u"SelStart").iVal, 1);
    EXPECT_EQ(Call(q, u"SelEnd").iVal, 1) << "collapsed to its start";
    m_host.Focus(*q);
    EXPECT_EQ(Call(q, u"SelStart").iVal, 1) << "the caret comes back where it was";

    Put(q, u"SelectOnFocus", COleVariant(SHORT(1), VT_BOOL));
    FocusForm();
    m_host.Focus(*q);
    EXPECT_EQ(Call(q, u"SelStart").iVal, 0);
    EXPECT_EQ(Call(q, u"SelEnd").iVal, 5);
}

TEST_F(EditFocus, SetSelWithMinusOneSelectsAll)
{
    CControlSite* q = Create();
    Put(q, u"Text", COleVariant(u"abcdef"));
    m_host.Focus(*q);
    Call(q, u"SetSel", {COleVariant(SHORT(0)), COleVariant(SHORT(-1)), COleVariant(SHORT(0), VT_BOOL)});
    EXPECT_EQ(Call(q, u"SelEnd").iVal, 6);
    EXPECT_EQ(Call(q, u"CaretPosition").iVal, Call(q, u"SelStart").iVal);
}

TEST_F(EditFocus, MouseOnTheEditReachesTheHostInControlCoordinates)
{
    CControlSite* q = Create();
    m_host.Focus(*q);
    POINT edit{0, 0};
    ::ClientToScreen(EditOf(q), &edit);
    TakeLog();
    m_host.Click(edit.x, edit.y);
    ExpectSequence({"MouseDown 1 0 3 3", "MouseUp 1 0 3 3", "Click"}, TakeLog());
    EXPECT_EQ(::GetCursor(), ::LoadCursor(nullptr, IDC_IBEAM));
}

TEST_F(EditFocus, DesignModeMakesNoChildWindows)
{
    m_host.m_bUserMode = FALSE;
    CControlSite* q = Create();
    Put(q, u"EditMask", COleVariant(u"##"));
    m_host.Pump();
    m_host.Focus(*q);
    EXPECT_EQ(::GetFocus(), q->Window()) << "the control keeps the focus itself";
    EXPECT_EQ(Call(q, u"EditHwnd").lVal, 0);
    EXPECT_EQ(Call(q, u"SelStart").iVal, -1);
    EXPECT_EQ(GetLiveWindowCount(), 2) << "the form and the control, no child windows";
    ExpectSequence({}, TakeLog()); // no FirstDraw at design time
}

TEST_F(EditFocus, FirstDrawOnceAfterLoad)
{
    CControlSite* q = Create();
    m_host.Pump();
    ExpectSequence({"FirstDraw"}, TakeLog());
    Put(q, u"BorderColor", COleVariant(LONG(5)));
    m_host.Pump();
    ExpectSequence({}, TakeLog());
}

TEST_F(EditFocus, EditColoursFollowTheStockColours)
{
    CControlSite* q = Create();
    Put(q, u"Text", COleVariant(u"abc"));
    m_host.Focus(*q);
    CRect rc;
    ::GetWindowRect(EditOf(q), &rc);
    EXPECT_EQ(m_host.Pixel(rc.right - 3, rc.top + 2), RGB(0xFF, 0xFF, 0xFF));
    Put(q, u"BackColor", COleVariant(LONG(0x00FFFF)));
    ::InvalidateRect(EditOf(q), nullptr, TRUE);
    EXPECT_EQ(m_host.Pixel(rc.right - 3, rc.top + 2), RGB(0xFF, 0xFF, 0)) << "the edit asks again at its next paint";
}

TEST_F(EditFocus, DesignModeDrawsIntoTheContainersDcAtItsCoordinates)
{
    m_host.m_bUserMode = FALSE;
    CControlSite* q = Create();
    Put(q, u"EditMask", COleVariant(u"##-##"));
    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP bm = CreateBitmap(200, 100, 1, 32, nullptr);
    HGDIOBJ old = SelectObject(dc, bm);
    GdiSetDrawLog(TRUE);
    q->DrawInto(dc); // the site's rectangle on the form: (10, 10) to (130, 34)
    std::vector<std::string> log = GdiGetDrawLog();
    GdiSetDrawLog(FALSE);
    SelectObject(dc, old);
    DeleteObject(bm);
    DeleteDC(dc);
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[0], "FillRect 10,10,130,34 #FFFFFF") << "no buffer: straight into the container's DC";
    bool maskDrawn = false;
    for (const auto& line : log) maskDrawn |= line.rfind("DrawText 13,13,", 0) == 0 && line.find("\"##-##\"") != std::string::npos;
    EXPECT_TRUE(maskDrawn) << "the mask shows at container coordinates";
}

TEST_F(EditFocus, PreTranslationSendsNavigationKeysToTheirWindows)
{
    CControlSite* q = Create();
    Put(q, u"Text", COleVariant(u"abcd"));
    m_host.Focus(*q);
    Call(q, u"SetSel", {COleVariant(SHORT(2)), COleVariant(SHORT(2)), COleVariant(SHORT(0), VT_BOOL)});
    TakeLog();
    m_host.Key(VK_LEFT);
    EXPECT_EQ(Call(q, u"SelStart").iVal, 1) << "Left reaches the edit";
    m_host.Key(VK_RETURN);
    ExpectSequence({"KeyDown 37 0", "KeyUp 37 0", "KeyDown 13 0", "KeyUp 13 0"}, TakeLog());
    EXPECT_EQ(GetText(q, u"Text"), u"abcd") << "Return never became a character";

    m_host.m_bUserMode = FALSE;
    m_host.Key(VK_DELETE);
    EXPECT_EQ(CWnd::FromHandle(EditOf(q))->GetWindowText(), u"abcd") << "design mode swallows Delete";
}

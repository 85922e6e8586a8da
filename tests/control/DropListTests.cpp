// The drop list as a user meets it: auto-complete opening and filling it, keys and the wheel walking
// it, the mouse on its rows and scroll bar, and everything that closes it.
#include <functional>
#include "Harness.h"
#include "control/QuillonCtrl.h"
#include "user/winuser.h"

namespace {

class DropList : public ControlTest {
protected:
    // A focused field over the items, its child windows made by the first paint.
    CControlSite* Field(std::vector<const char16_t*> items, SHORT nAuto = AutoBoth, SHORT nFindSize = 1)
    {
        CControlSite* q = Create();
        Put(q, u"AutoComplete", COleVariant(nAuto));
        Put(q, u"AutoFindSize", COleVariant(nFindSize));
        for (const char16_t* s : items) Inside(q)->AddItem(s);
        m_host.Pump();
        m_host.Focus(*q);
        m_host.Pump();
        TakeLog();
        return q;
    }
    // Twenty items that all start with "a": "a00" to "a19".
    CControlSite* LongField()
    {
        static std::vector<std::u16string> names;
        for (int i = names.size(); i < 20; ++i) names.push_back(u"a" + std::u16string(1, u'0' + i / 10) + std::u16string(1, u'0' + i % 10));
        std::vector<const char16_t*> items;
        for (auto& s : names) items.push_back(s.c_str());
        return Field(items);
    }
    CDropList& List(CControlSite* q) { return Inside(q)->m_dropList; }
    bool IsOpen(CControlSite* q) { return ::IsWindowVisible(List(q).m_hWnd) && List(q).m_bShown; }
    // The candidates as the rows show them, top to bottom.
    std::vector<std::string> Rows(CControlSite* q)
    {
        std::vector<std::string> out;
        for (size_t i = 0; i < List(q).m_autoItems.size(); ++i) out.push_back(ToUtf8(List(q).GetCandidateText(int(i))));
        return out;
    }
    CString EditText(CControlSite* q) { return Inside(q)->m_edit.GetWindowText(); }
    CRect ListRect(CControlSite* q)
    {
        CRect rc;
        ::GetWindowRect(List(q).m_hWnd, &rc);
        return rc;
    }
    // The screen point in the middle of a visible row.
    POINT RowPoint(CControlSite* q, int row)
    {
        int h = Inside(q)->GetRowHeight();
        CRect rc = ListRect(q);
        return POINT{rc.left + 20, rc.top + 1 + h * row + h / 2};
    }
    void TypeKeys(const char16_t* s) { m_host.Type(s); m_host.Pump(); }
    // The screen point of a point in the list's client area.
    POINT OnList(CControlSite* q, LONG x, LONG y)
    {
        CRect rc = ListRect(q);
        return POINT{rc.left + x, rc.top + y};
    }
    void SelectAll(CControlSite* q) { Call(q, u"SetSel", {COleVariant(SHORT(0)), COleVariant(SHORT(-1)), COleVariant(SHORT(0), VT_BOOL)}); }
    std::pair<int, int> TopAndPos(CControlSite* q) { return {List(q).m_nTopItem, List(q).m_nScrollPos}; }
};

// "b" typed into an empty field whose items "bern" and "basel" start with it.
const std::vector<std::string> kTypeB = {"KeyDown 66 0", "KeyPress 98", "PropertyChanged Text", "Change", "KeyUp 66 0"};

} // namespace

TEST_F(DropList, TypingOpensTheListAndCompletesFromTheFirstMatch)
{
    CControlSite* q = Field({u"bern", u"zug", u"basel", u"Bar"});
    m_host.Type(u"b");
    ExpectSequence(kTypeB, TakeLog());
    EXPECT_TRUE(IsOpen(q));
    EXPECT_EQ(Rows(q), (std::vector<std::string>{"bern", "basel", "Bar"})) << "array order, case-blind";
    EXPECT_EQ(EditText(q), u"bern");
    EXPECT_EQ(Call(q, u"SelStart").iVal, 1);
    EXPECT_EQ(Call(q, u"SelEnd").iVal, 4) << "the completion is selected";
    EXPECT_EQ(::GetFocus(), Inside(q)->m_edit.m_hWnd) << "the focus stays with the edit";
    EXPECT_EQ(::GetCapture(), List(q).m_hWnd) << "the list holds the mouse";
    EXPECT_EQ(::GetClassLongPtr(List(q).m_hWnd, GCL_STYLE), 0x1803u) << "no CS_DBLCLKS";
    EXPECT_EQ(::GetClassLongPtr(List(q).m_hWnd, GCLP_HCURSOR), 0u) << "the list sets the arrow itself";
    EXPECT_EQ(::GetParent(List(q).m_hWnd), m_form->Window()) << "a popup owned by the form the control is on";
    m_host.Type(u"a");
    EXPECT_EQ(Rows(q), (std::vector<std::string>{"basel", "Bar"})) << "the typed key replaced the completion";
    EXPECT_EQ(EditText(q), u"basel");
    m_host.Key(VK_BACK);
    EXPECT_EQ(EditText(q), u"ba") << "Backspace removes the completion and completes nothing";
    EXPECT_EQ(Rows(q), (std::vector<std::string>{"basel", "Bar"}));
    m_host.Type(u"x");
    EXPECT_FALSE(IsOpen(q)) << "no candidate closes the list";
    EXPECT_EQ(GetText(q, u"Text"), u"bax");
}

TEST_F(DropList, ModesFindSizeCaseAndPasswordGovernThePasses)
{
    struct Case {
        SHORT nAuto, nFindSize;
        BOOL bMatchCase;
        const char16_t *typed, *password;
        bool bOpen;
        const char16_t* text;
    };
    const Case cases[] = {
        {AutoAppend, 1, FALSE, u"ap", u"", false, u"apple pie"},   // Append never opens the list
        {AutoSuggest, 1, FALSE, u"ap", u"", true, u"ap"},          // Suggest never completes
        {AutoNone, 1, FALSE, u"ap", u"", false, u"ap"},
        {AutoBoth, 5, FALSE, u"appl", u"", false, u"appl"},        // four keys are below AutoFindSize 5
        {AutoBoth, 5, FALSE, u"apple", u"", true, u"apple pie"},   // the fifth opens and completes
        {AutoBoth, 1, FALSE, u"APP", u"", true, u"APPle pie"},     // the typed part keeps its case
        {AutoBoth, 1, TRUE, u"APP", u"", false, u"APP"},
        {AutoBoth, 1, FALSE, u"ap", u"*", false, u"ap"},           // nothing with a password character
    };
    for (const Case& c : cases) {
        CControlSite* q = Field({u"apple pie", u"apple tart", u"cherry"}, c.nAuto, c.nFindSize);
        Put(q, u"MatchCase", COleVariant(SHORT(c.bMatchCase ? -1 : 0), VT_BOOL));
        Put(q, u"PasswordChar", COleVariant(c.password));
        TypeKeys(c.typed);
        EXPECT_EQ(IsOpen(q), c.bOpen) << ToUtf8(CString(c.typed)) << " mode " << c.nAuto << " find " << c.nFindSize;
        EXPECT_EQ(GetText(q, u"Text"), c.text) << ToUtf8(CString(c.typed)) << " mode " << c.nAuto;
        m_host.Key(VK_ESCAPE);
    }
}

TEST_F(DropList, SortedSearchSortsTheItemsFirstAndRemoveItemFollowsTheNewOrder)
{
    for (BOOL bSorted : {FALSE, TRUE}) {
        CControlSite* q = Field({u"pear", u"Peach", u"plum"}, AutoBoth, 2);
        Put(q, u"Sorted", COleVariant(SHORT(bSorted ? -1 : 0), VT_BOOL));
        TypeKeys(u"pe");
        EXPECT_EQ(GetText(q, u"Text"), bSorted ? u"peach" : u"pear");
        EXPECT_EQ(Rows(q), bSorted ? (std::vector<std::string>{"Peach", "pear"}) : (std::vector<std::string>{"pear", "Peach"}));
        TakeLog();
        EXPECT_EQ(Call(q, u"RemoveItem", {COleVariant(SHORT(0))}).boolVal, VARIANT_TRUE);
        EXPECT_FALSE(IsOpen(q)) << "a removal closes the list";
        TypeKeys(u"a");
        EXPECT_EQ(GetText(q, u"Text"), bSorted ? u"pear" : u"peach") << "index 0 was the first item of the array as it stood";
    }
}

// A press on another control while the list is open: the list passes it on, relative to that window.
const std::vector<std::string> kPressPassedOn = {"MouseDown 1 0 7 9"};
// RemoveItem(5) with two items.
const std::vector<std::string> kRemoveBadIndex = {"CtrlError 32003 5"};
// Taking an item with a click, and a press on the control's own face while the list is open.
const std::vector<std::string> kNothing = {};

// Down pressed in the edit while the list is open: the control's window takes the key.
const std::vector<std::string> kWalkDown = {"KeyDown 40 0", "KeyUp 40 0"};

TEST_F(DropList, KeysWalkTheListPuttingEachItemIntoTheEdit)
{
    CControlSite* q = LongField();
    TypeKeys(u"a");
    ASSERT_EQ(List(q).m_nVisibleRows, 8);
    TakeLog();
    m_host.Key(VK_DOWN);
    ExpectSequence(kWalkDown, TakeLog());
    EXPECT_EQ(EditText(q), u"a00");
    EXPECT_EQ(Call(q, u"SelEnd").iVal, 3) << "the item is wholly selected";
    auto walk = [&](UINT vk) {
        m_host.Key(vk);
        return std::make_pair(int(List(q).m_nHotItem), int(List(q).m_nTopItem));
    };
    EXPECT_EQ(walk(VK_NEXT), std::make_pair(7, 0));
    EXPECT_EQ(walk(VK_DOWN), std::make_pair(8, 1)) << "the view follows the hot row";
    EXPECT_EQ(walk(VK_NEXT), std::make_pair(15, 8));
    EXPECT_EQ(walk(VK_PRIOR), std::make_pair(8, 8)) << "the new hot stands in the first row";
    EXPECT_EQ(walk(VK_UP), std::make_pair(7, 7));
    ::SendMessage(Inside(q)->m_hWnd, WM_KEYDOWN, VK_END, 0);
    EXPECT_EQ(std::make_pair(int(List(q).m_nHotItem), int(List(q).m_nTopItem)), std::make_pair(19, 12));
    EXPECT_EQ(GetText(q, u"Text"), u"a19");
    m_host.Key(VK_HOME);
    EXPECT_EQ(List(q).m_nHotItem, 19) << "Home stays with the edit";
    m_host.Key(VK_RETURN);
    EXPECT_FALSE(IsOpen(q));
    EXPECT_EQ(GetText(q, u"Text"), u"a19");

    TypeKeys(u"a");
    m_host.Key(VK_ESCAPE);
    EXPECT_FALSE(IsOpen(q));
    EXPECT_EQ(GetText(q, u"Text"), u"a00") << "Escape leaves the text as typed and completed";
    m_host.Key(VK_BACK);
    EXPECT_TRUE(IsOpen(q)) << "Backspace over the completion searches again";
    m_host.Key(VK_RETURN);
    EXPECT_EQ(GetText(q, u"Text"), u"") << "Enter without a hot row takes no item: the text empties";
}

TEST_F(DropList, WheelScrollsOneRowPerNotch)
{
    CControlSite* q = LongField();
    TypeKeys(u"a");
    CRect rc = ListRect(q);
    m_host.Wheel(rc.left + 5, rc.top + 5, -360);
    EXPECT_EQ(List(q).m_nTopItem, 1);
    m_host.Wheel(rc.left + 5, rc.top + 5, 120);
    m_host.Wheel(rc.left + 5, rc.top + 5, 120);
    EXPECT_EQ(List(q).m_nTopItem, 0);
    EXPECT_EQ(::GetFocus(), Inside(q)->m_edit.m_hWnd);
}

TEST_F(DropList, RowClickRightAfterOpeningIsSwallowedAndTheNextTakesTheItem)
{
    CControlSite* q = Field({u"bern", u"basel", u"bar"});
    TypeKeys(u"b");
    POINT p = RowPoint(q, 1);
    m_host.Click(p.x, p.y);
    EXPECT_TRUE(IsOpen(q)) << "the first release only clears the flag";
    EXPECT_EQ(GetText(q, u"Text"), u"bern");
    TakeLog();
    m_host.Click(p.x, p.y);
    EXPECT_FALSE(IsOpen(q));
    EXPECT_EQ(GetText(q, u"Text"), u"basel");
    ExpectSequence(kNothing, TakeLog());

    TypeKeys(u"b");
    p = RowPoint(q, 1);
    m_host.Move(p.x, p.y);
    EXPECT_EQ(List(q).m_nHotItem, 1);
    m_host.Move(p.x + 500, p.y);
    EXPECT_EQ(List(q).m_nHotItem, 1) << "leaving the rows keeps the highlight";
    m_host.Click(p.x + 500, p.y);
    EXPECT_FALSE(IsOpen(q)) << "a press outside closes the list";
    EXPECT_EQ(GetText(q, u"Text"), u"bern");
}

TEST_F(DropList, HeldArrowRepeatsAfter400ThenEvery80MillisecondsWhileThePointerIsOnIt)
{
    CControlSite* q = LongField();
    TypeKeys(u"a");
    ASSERT_EQ(Inside(q)->GetRowHeight(), 15);
    ASSERT_EQ(ListRect(q).Height(), 122) << "8 rows of 15 and the frame";
    const CRect down = List(q).m_rcDown;
    POINT on = OnList(q, down.left + 5, down.top + 5);
    m_host.Press(on.x, on.y);
    EXPECT_EQ(List(q).m_nTopItem, 1) << "the press scrolls at once";
    EXPECT_TRUE(List(q).m_bDownSunken);
    m_host.Advance(399);
    EXPECT_EQ(List(q).m_nTopItem, 1);
    m_host.Advance(1);
    EXPECT_EQ(List(q).m_nTopItem, 2);
    m_host.Advance(160);
    EXPECT_EQ(List(q).m_nTopItem, 4);
    POINT off = OnList(q, 20, 20);
    m_host.Move(off.x, off.y);
    EXPECT_FALSE(List(q).m_bDownSunken);
    m_host.Advance(160);
    EXPECT_EQ(List(q).m_nTopItem, 4) << "paused while the pointer is off the arrow";
    m_host.Move(on.x, on.y);
    m_host.Advance(80);
    EXPECT_EQ(List(q).m_nTopItem, 5);
    m_host.Release(on.x, on.y);
    m_host.Advance(400);
    EXPECT_EQ(List(q).m_nTopItem, 5) << "the release stops the repeat";
    EXPECT_TRUE(IsOpen(q)) << "a release on the bar takes no item";
    EXPECT_EQ(GetText(q, u"Text"), u"a00");
}

TEST_F(DropList, TrackPressesPageByOneRowLessThanTheView)
{
    CControlSite* q = LongField();
    TypeKeys(u"a");
    std::vector<int> tops;
    auto pressIn = [&](const CRect& region) {
        POINT p = OnList(q, region.left + 5, (region.top + region.bottom) / 2);
        m_host.Press(p.x, p.y);
        m_host.Release(p.x, p.y);
        tops.push_back(List(q).m_nTopItem);
    };
    pressIn(List(q).m_rcPageDown);
    pressIn(List(q).m_rcPageDown);
    pressIn(List(q).m_rcDown); // at the end, a line down changes nothing
    pressIn(List(q).m_rcPageUp);
    pressIn(List(q).m_rcPageUp);
    EXPECT_EQ(tops, (std::vector<int>{7, 12, 12, 5, 0})) << "20 candidates in 8 rows: the last top is 12";
    EXPECT_TRUE(IsOpen(q));
}

TEST_F(DropList, DraggedThumbMovesTheRowsAndJumpsBackWhenThePointerStraysFarOff)
{
    CControlSite* q = LongField();
    TypeKeys(u"a");
    // 20 candidates in 8 rows: range 12, an 8-pixel thumb in an 86-pixel track, 78 free pixels cut
    // into 13 bands of 6.
    const CRect thumb = List(q).m_rcThumb;
    ASSERT_EQ(thumb, CRect(102, 18, 119, 26));
    POINT press = OnList(q, thumb.left + 8, thumb.top + 4);
    m_host.Press(press.x, press.y);
    m_host.Move(press.x, press.y + 30);
    EXPECT_EQ(List(q).m_nTopItem, 5) << "30 pixels down is band 5";
    const LONG farRight = OnList(q, List(q).m_rcBar.right + 30, 0).x;
    m_host.Move(farRight + 1, press.y + 30);
    EXPECT_EQ(List(q).m_nTopItem, 0) << "beyond 30 pixels off the bar the thumb jumps back";
    const LONG lowest = OnList(q, 0, List(q).m_rcBar.bottom + 30).y;
    m_host.Move(farRight, lowest);
    EXPECT_EQ(List(q).m_nTopItem, 12) << "back in range, and held at the track's end";
    m_host.Release(farRight, lowest);
    EXPECT_EQ(TopAndPos(q), std::make_pair(12, 12));
    EXPECT_EQ(List(q).m_rcThumb, CRect(102, 96, 119, 104)) << "at the end the thumb touches the lower arrow";
    EXPECT_EQ(GetText(q, u"Text"), u"a00");
}

TEST_F(DropList, PressOutsideClosesTheListAndReachesTheWindowUnderThePointer)
{
    CControlSite* other = Create();
    ::SetWindowPos(other->Window(), nullptr, 200, 10, 100, 24, SWP_NOZORDER);
    CControlSite* q = Field({u"bern", u"basel"});
    TypeKeys(u"b");
    TakeLog();
    CRect rc;
    ::GetWindowRect(other->Window(), &rc);
    m_host.Press(rc.left + 7, rc.top + 9);
    EXPECT_FALSE(IsOpen(q));
    ExpectSequence(kPressPassedOn, TakeLog());
    m_host.Release(rc.left + 7, rc.top + 9);
    TakeLog();

    m_host.Focus(*q);
    SelectAll(q);
    TypeKeys(u"b");
    TakeLog();
    ASSERT_TRUE(IsOpen(q));
    ASSERT_EQ(::GetCapture(), List(q).m_hWnd);
    ::GetWindowRect(q->Window(), &rc);
    m_host.Press(rc.left + 7, rc.top + 9);
    EXPECT_FALSE(IsOpen(q));
    ExpectSequence(kNothing, TakeLog());
    m_host.Release(rc.left + 7, rc.top + 9);
}

TEST_F(DropList, SizeMoveFocusLossAndItemChangesCloseTheList)
{
    CControlSite* other = Create();
    CControlSite* q = Field({u"bern", u"basel"});
    std::vector<std::pair<const char*, std::function<void()>>> closers = {
        {"size", [&] { ::SetWindowPos(q->Window(), nullptr, 0, 0, 130, 30, SWP_NOMOVE | SWP_NOZORDER); }},
        {"move", [&] { ::SetWindowPos(q->Window(), nullptr, 12, 12, 0, 0, SWP_NOSIZE | SWP_NOZORDER); }},
        {"focus", [&] { m_host.Focus(*other); }},
        {"RemoveItem of an item that is no candidate", [&] { Inside(q)->AddItem(u"zug"); Call(q, u"RemoveItem", {COleVariant(SHORT(2))}); }},
        {"ClearItems", [&] { Call(q, u"ClearItems"); }},
        {"HideList", [&] { Call(q, u"HideList"); }},
    };
    for (auto& [name, close] : closers) {
        if (!Inside(q)->ItemCount()) Inside(q)->AddItem(u"bern");
        m_host.Focus(*q);
        SelectAll(q);
        TypeKeys(u"b");
        ASSERT_TRUE(IsOpen(q)) << name;
        close();
        m_host.Pump();
        EXPECT_FALSE(IsOpen(q)) << name;
        EXPECT_EQ(::GetCapture(), nullptr) << name;
    }
    TakeLog();
    EXPECT_EQ(Call(q, u"RemoveItem", {COleVariant(SHORT(5))}).boolVal, VARIANT_FALSE);
    ExpectSequence(kRemoveBadIndex, TakeLog());
}

TEST_F(DropList, DesignModeMakesNoListAndHideListOnlyRepaints)
{
    m_host.m_bUserMode = FALSE;
    CControlSite* q = Create();
    Put(q, u"AutoComplete", COleVariant(SHORT(AutoBoth)));
    m_host.Pump();
    EXPECT_FALSE(Inside(q)->m_bListCreated);
    int before = q->InvalidateCount();
    Call(q, u"HideList");
    EXPECT_EQ(q->InvalidateCount(), before + 1);
}

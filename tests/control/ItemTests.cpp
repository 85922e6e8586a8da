// The item array: limits, error reports, removal and the deferred, case-blind sort.
#include "Harness.h"
#include "control/QuillonCtrl.h"

namespace {

std::vector<std::string> Items(CQuillonCtrl* c)
{
    std::vector<std::string> out;
    for (SHORT i = 0; i < c->ItemCount(); ++i) out.push_back(ToUtf8(c->GetItemText(i)));
    return out;
}
} // namespace

TEST_F(ControlTest, AddAndRemoveReportBadIndices)
{
    CControlSite* q = Create();
    EXPECT_EQ(Call(q, u"AddItem", {COleVariant(u"b")}).iVal, 0);
    EXPECT_EQ(Call(q, u"AddItem", {COleVariant(u"")}).iVal, 1);
    EXPECT_EQ(Call(q, u"AddItem", {COleVariant(u"b")}).iVal, 2) << "duplicates are kept";
    EXPECT_FALSE(q->IsDirty()) << "AddItem does not mark the control modified";
    TakeLog();
    EXPECT_EQ(Call(q, u"RemoveItem", {COleVariant(SHORT(-1))}).boolVal, VARIANT_FALSE);
    EXPECT_EQ(Call(q, u"RemoveItem", {COleVariant(SHORT(3))}).boolVal, VARIANT_FALSE);
    ExpectSequence({"CtrlError 32003 -1", "CtrlError 32003 3"}, TakeLog());
    EXPECT_FALSE(q->IsDirty());
    EXPECT_EQ(Call(q, u"RemoveItem", {COleVariant(SHORT(1))}).boolVal, VARIANT_TRUE);
    EXPECT_TRUE(q->IsDirty());
    EXPECT_EQ(Call(q, u"ItemCount").iVal, 2);
    Call(q, u"ClearItems");
    EXPECT_EQ(Call(q, u"ItemCount").iVal, 0);
    ExpectSequence({}, TakeLog());
}

TEST_F(ControlTest, ListStopsAt32760Items)
{
    CControlSite* q = Create();
    CQuillonCtrl* c = Inside(q);
    for (int i = 0; i < 32759; ++i) c->AddItem(u"x");
    EXPECT_EQ(Call(q, u"AddItem", {COleVariant(u"last")}).iVal, 32759);
    TakeLog();
    EXPECT_EQ(Call(q, u"AddItem", {COleVariant(u"over")}).iVal, -1);
    ExpectSequence({"CtrlError 32002 0"}, TakeLog());
    EXPECT_EQ(Call(q, u"ItemCount").iVal, 32760);
}

TEST_F(ControlTest, AddItemOutOfMemoryIsAnAutomationErrorAndChangesNothing)
{
    CControlSite* q = Create();
    Call(q, u"AddItem", {COleVariant(u"first")});
    TakeLog();
    for (int nSucceeding : {0, 1}) { // the item itself fails, then the array's room for it
        AfxFailAllocationAfter(nSucceeding);
        COleVariant result;
        EXPECT_EQ(q->Call(u"AddItem", {COleVariant(u"second")}, &result), CTL_E_OUTOFMEMORY) << nSucceeding;
        AfxFailAllocationAfter(-1);
    }
    EXPECT_EQ(Call(q, u"ItemCount").iVal, 1);
    ExpectSequence({}, TakeLog());
}

TEST_F(ControlTest, SortWaitsForASearchAndIgnoresCase)
{
    CControlSite* q = Create();
    CQuillonCtrl* c = Inside(q);
    Put(q, u"Sorted", COleVariant(SHORT(1), VT_BOOL));
    Put(q, u"MatchCase", COleVariant(SHORT(1), VT_BOOL));
    for (auto s : {u"pear", u"Apple", u"fig", u"banana", u"apple", u"Cherry", u"date"}) c->AddItem(s);
    EXPECT_EQ(Items(c)[0], "pear") << "nothing moves before a search";
    c->EnsureSorted();
    std::vector<std::string> sorted = Items(c);
    ASSERT_EQ(sorted.size(), 7u);
    for (size_t i = 1; i < sorted.size(); ++i)
        EXPECT_LE(CString(FromUtf8(sorted[i - 1])).CompareNoCase(FromUtf8(sorted[i]).c_str()), 0) << i;
    EXPECT_EQ(CString(FromUtf8(sorted[0])).CompareNoCase(u"apple"), 0);
    EXPECT_EQ(CString(FromUtf8(sorted[1])).CompareNoCase(u"apple"), 0);
    EXPECT_FALSE(c->m_bItemsDirty);

    Put(q, u"Sorted", COleVariant(SHORT(0), VT_BOOL));
    c->AddItem(u"aardvark");
    c->EnsureSorted();
    EXPECT_EQ(Items(c).back(), "aardvark");
    EXPECT_TRUE(c->m_bItemsDirty) << "with Sorted off the flag waits for a later sort";
    Put(q, u"Sorted", COleVariant(SHORT(1), VT_BOOL));
    c->EnsureSorted();
    EXPECT_EQ(Items(c).front(), "aardvark");
}

TEST_F(ControlTest, ItemTextTakenWithoutChange)
{
    CControlSite* q = Create();
    CQuillonCtrl* c = Inside(q);
    c->AddItem(u"apple");
    TakeLog();
    c->SetTextFromItem(0);
    EXPECT_EQ(GetText(q, u"Text"), u"apple");
    c->SetTextFromItem(5);
    EXPECT_EQ(GetText(q, u"Text"), u"");
    ExpectSequence({}, TakeLog());
    EXPECT_FALSE(q->IsDirty());
}

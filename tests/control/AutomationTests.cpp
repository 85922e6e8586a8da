// The automation surface: the dispatch table, the put classes and their guards, Text and events.
#include "Harness.h"
#include "control/QuillonCtrl.h"

namespace {

struct Row { const char* name; DISPID dispid; };

// The dispatch table in its order, as hosts and the type library know it.
const Row kTable[] = {
    {"AboutBox", -552}, {"BackColor", -501}, {"ForeColor", -513}, {"Enabled", -514}, {"Font", -512},
    {"hWnd", -515}, {"Text", -517}, {"BorderColor", 1}, {"BorderType", 2}, {"ArrowType", 3}, {"ButtonBevel", 4},
    {"DropButton", 5}, {"DropBackColor", 6}, {"DropForeColor", 7}, {"DropPicture", 8}, {"DropWidth", 9},
    {"PicXOffset", 10}, {"PicYOffset", 11}, {"RepeatRate", 12}, {"SpinButton", 13}, {"SpinForeColor", 14},
    {"SpinWidth", 15}, {"InitialDelay", 16}, {"SpinBackColor", 17}, {"DisabledColor", 18}, {"EditMask", 19},
    {"CaseType", 20}, {"Alignment", 21}, {"UseMaskChars", 22}, {"SelectOnFocus", 23}, {"DisplayStyle", 24},
    {"MaskBitmap", 25}, {"MaskColor", 26}, {"EmbossBitmap", 27}, {"AutoComplete", 28}, {"ScrollStyle", 29},
    {"ListOffset", 30}, {"AutoFindSize", 31}, {"MatchCase", 32}, {"Sorted", 33}, {"ButtonFillType", 34},
    {"DropBackColorTo", 35}, {"SpinBackColorTo", 36}, {"ButtonStyle", 37}, {"ReverseBorder", 38},
    {"ScrollBackColor", 39}, {"ScrollBackColorTo", 40}, {"ScrollForeColor", 41}, {"XMLRead", 42},
    {"XMLWrite", 43}, {"ControlStyle", 44}, {"PasswordChar", 45}, {"Text", 46}, {"CaretPosition", 47},
    {"StopTimer", 48}, {"SelStart", 49}, {"SelEnd", 50}, {"SetSel", 51}, {"RemoveItem", 52}, {"ClearItems", 53},
    {"ItemCount", 54}, {"AddItem", 55}, {"HideList", 56}, {"ReadFile", 57}, {"WriteFile", 58},
    {"ReadXMLString", 59}, {"PropertyPages", 60}, {"EditHwnd", 61},
};


// One put of Text that changes it: the bound-property notice, then Change.
const std::vector<std::string> kOneTextPut = {"PropertyChanged Text", "Change"};
} // namespace

TEST_F(ControlTest, DispatchTableInOrderWithDispids)
{
    CControlSite* q = Create();
    const auto& entries = CQuillonCtrl::DispatchMap().Entries();
    ASSERT_GE(entries.size(), std::size(kTable));
    for (size_t i = 0; i < std::size(kTable); ++i) {
        EXPECT_EQ(ToUtf8(entries[i].name), kTable[i].name) << "row " << i;
        EXPECT_EQ(entries[i].dispid, kTable[i].dispid) << kTable[i].name;
    }
    DISPID id = 0;
    LPCOLESTR name[] = {u"text"};
    ASSERT_EQ(q->Control()->GetIDsOfNames(IID_NULL, name, 1, 0, &id), S_OK);
    EXPECT_EQ(id, 46) << "names are found without regard to case, and Text is the control's own";
    LPCOLESTR bogus[] = {u"Bogus"};
    EXPECT_EQ(q->Control()->GetIDsOfNames(IID_NULL, bogus, 1, 0, &id), DISP_E_UNKNOWNNAME);
}

TEST_F(ControlTest, PutClassesStoreFlagAndRepaint)
{
    CControlSite* q = Create();
    int paints = q->InvalidateCount();
    Put(q, u"BorderColor", COleVariant(LONG(0xFF0000)));                  // class A
    EXPECT_TRUE(q->IsDirty());
    EXPECT_EQ(q->InvalidateCount(), paints + 1);
    q->Save();
    Put(q, u"RepeatRate", COleVariant(LONG(20)));                         // class B
    EXPECT_TRUE(q->IsDirty());
    EXPECT_EQ(q->InvalidateCount(), paints + 1) << "class B does not repaint";
    EXPECT_EQ(GetLong(q, u"RepeatRate"), 20);
    q->Save();
    Put(q, u"AutoComplete", COleVariant(LONG(3)));                        // class C without repaint
    EXPECT_EQ(q->InvalidateCount(), paints + 1);
    EXPECT_TRUE(q->IsDirty());
    Put(q, u"ButtonFillType", COleVariant(LONG(13)));                     // class C with repaint
    EXPECT_EQ(q->InvalidateCount(), paints + 2);
    EXPECT_EQ(GetLong(q, u"ButtonFillType"), 13);
}

TEST_F(ControlTest, RefusedPutsChangeNothingAtAll)
{
    CControlSite* q = Create();
    q->Save();
    int paints = q->InvalidateCount();
    struct { const char16_t* name; LONG value; LONG kept; } refused[] = {
        {u"BorderType", 4, 3}, {u"BorderType", -1, 3}, {u"ArrowType", 4, 0}, {u"CaseType", 3, 0},
        {u"Alignment", 3, 0}, {u"DisplayStyle", 2, 0}, {u"AutoComplete", 4, 0}, {u"ScrollStyle", 3, 0},
        {u"ButtonFillType", 14, 0}, {u"ButtonStyle", 2, 0}, {u"ButtonStyle", -32768, 0},
    };
    for (const auto& r : refused) {
        Put(q, r.name, COleVariant(r.value));
        EXPECT_EQ(GetLong(q, r.name), r.kept) << ToUtf8(CString(r.name)) << " = " << r.value;
    }
    EXPECT_FALSE(q->IsDirty());
    EXPECT_EQ(q->InvalidateCount(), paints);
    ExpectSequence({}, TakeLog());
    EXPECT_EQ(Inside(q)->m_nInsetLeft, 2) << "a refused BorderType leaves the insets";
    Put(q, u"BorderType", COleVariant(LONG(0)));
    EXPECT_EQ(Inside(q)->m_nInsetLeft, 1) << "an accepted one updates them";
}

TEST_F(ControlTest, RaisedLimitsAndFixedGetters)
{
    CControlSite* q = Create();
    struct { const char16_t* name; LONG put; LONG reads; } cases[] = {
        {u"DropWidth", 1, 2}, {u"DropWidth", -5, 2}, {u"DropWidth", 2, 2}, {u"SpinWidth", 0, 0},
        {u"SpinWidth", -3, -3}, {u"AutoFindSize", 0, 1}, {u"AutoFindSize", -1, 1}, {u"AutoFindSize", 7, 7},
    };
    for (const auto& c : cases) {
        Put(q, c.name, COleVariant(c.put));
        EXPECT_EQ(GetLong(q, c.name), c.reads) << ToUtf8(CString(c.name)) << " = " << c.put;
    }
    EXPECT_EQ(GetText(q, u"XMLRead"), u"");
    EXPECT_EQ(GetText(q, u"XMLWrite"), u"");
    EXPECT_EQ(GetLong(q, u"ControlStyle"), 0);
    EXPECT_EQ(GetLong(q, u"PropertyPages"), 0);
    EXPECT_EQ(q->Put(u"hWnd", COleVariant(LONG(5))), CTL_E_SETNOTSUPPORTED);
    EXPECT_EQ(q->Put(u"DropWidth", COleVariant(LONG(40000))), DISP_E_OVERFLOW) << "a short cannot hold it";
    EXPECT_EQ(GetLong(q, u"DropWidth"), 2);
}

TEST_F(ControlTest, MethodsWithoutAnEditGiveNeutralResults)
{
    CControlSite* q = Create();
    EXPECT_EQ(Call(q, u"CaretPosition").iVal, -1);
    EXPECT_EQ(Call(q, u"SelStart").iVal, -1);
    EXPECT_EQ(Call(q, u"SelEnd").iVal, -1);
    EXPECT_EQ(Call(q, u"EditHwnd").lVal, 0);
    Call(q, u"SetSel", {COleVariant(SHORT(0)), COleVariant(SHORT(-1)), COleVariant(SHORT(0), VT_BOOL)});
    int paints = q->InvalidateCount();
    Call(q, u"HideList");
    EXPECT_EQ(q->InvalidateCount(), paints + 1) << "HideList always repaints";
    EXPECT_EQ(q->Call(u"SetSel", {COleVariant(SHORT(0))}, nullptr), DISP_E_BADPARAMCOUNT);
}

TEST_F(ControlTest, TextShapedByMaskAndCase)
{
    CControlSite* q = Create();
    Put(q, u"EditMask", COleVariant(u"(###)"));
    Put(q, u"UseMaskChars", COleVariant(SHORT(0), VT_BOOL));
    Put(q, u"Text", COleVariant(u""));
    EXPECT_EQ(Inside(q)->m_strText, u"(   )") << "empty text is the template";
    EXPECT_EQ(GetText(q, u"Text"), u"   ");
    Put(q, u"UseMaskChars", COleVariant(SHORT(1), VT_BOOL));
    Put(q, u"Text", COleVariant(u""));
    EXPECT_EQ(Inside(q)->m_strText, u"");

    Put(q, u"EditMask", COleVariant(u"##-##"));
    Put(q, u"UseMaskChars", COleVariant(SHORT(0), VT_BOOL));
    Put(q, u"Text", COleVariant(u"1234567"));
    EXPECT_EQ(GetText(q, u"Text"), u"1234") << "cut to the mask";
    Put(q, u"UseMaskChars", COleVariant(SHORT(1), VT_BOOL));
    EXPECT_EQ(GetText(q, u"Text"), u"12-34");
    Put(q, u"Text", COleVariant(u"1234567"));
    EXPECT_EQ(GetText(q, u"Text"), u"1234567") << "kept whole with the mask characters on";
    Put(q, u"UseMaskChars", COleVariant(SHORT(0), VT_BOOL));
    EXPECT_EQ(GetText(q, u"Text"), u"124567") << "literal positions left out, the tail kept";

    Put(q, u"UseMaskChars", COleVariant(SHORT(1), VT_BOOL));
    Put(q, u"CaseType", COleVariant(LONG(1)));
    Put(q, u"Text", COleVariant(u"stra\u00dfe \u00e9t\u00e9"));
    EXPECT_EQ(GetText(q, u"Text"), u"STRA\u00dfE \u00c9T\u00c9") << "the string library's upper case, all letters";
    Put(q, u"CaseType", COleVariant(LONG(2)));
    EXPECT_EQ(GetText(q, u"Text"), u"STRA\u00dfE \u00c9T\u00c9") << "a CaseType change does not reshape";
    Put(q, u"EditMask", COleVariant(u"AA"));
    EXPECT_EQ(Inside(q)->m_strText, u"STRA\u00dfE \u00c9T\u00c9") << "a mask change does not reshape";
    EXPECT_EQ(Inside(q)->m_strLiteral, u"  ");
}

// Each Text put: the data-binding notice under -517, then Change, even for an equal value.
TEST_F(ControlTest, EveryTextPutNotifiesAndRaisesChange)
{
    CControlSite* q = Create();
    TakeLog();
    Put(q, u"Text", COleVariant(u"abc"));
    Put(q, u"Text", COleVariant(u"abc"));
    Put(q, u"EditMask", COleVariant(u"###"));
    Put(q, u"BorderColor", COleVariant(LONG(1)));
    const std::vector<std::string> kTwoTextPuts = {"PropertyChanged Text", "Change", "PropertyChanged Text", "Change"};
    ExpectSequence(kTwoTextPuts, TakeLog());
    EXPECT_TRUE(q->IsDirty());

    m_host.m_bUserMode = FALSE;
    Put(q, u"Text", COleVariant(u"12"));
    ExpectSequence(kOneTextPut, TakeLog());

    // The default value (dispid 0) is the same text.
    COleVariant v;
    ASSERT_EQ(q->InvokeById(DISPID_VALUE, DISPATCH_PROPERTYGET, {}, &v), S_OK);
    EXPECT_EQ(BstrToString(v.bstrVal), u"12");
}

TEST_F(ControlTest, TruthValuesKeepTheirStoredForm)
{
    CControlSite* q = Create();
    Put(q, u"DropButton", COleVariant(SHORT(1), VT_BOOL));
    EXPECT_EQ(Inside(q)->m_bDropButton, -1) << "a put stores VARIANT_TRUE sign-extended";
    CControlSite* r = Load(q->Save());
    EXPECT_EQ(Inside(r)->m_bDropButton, 1) << "a load stores TRUE";
    EXPECT_EQ(GetLong(r, u"DropButton"), -1) << "both read back as true";
    Put(q, u"Sorted", COleVariant(u"True"));
    EXPECT_NE(Inside(q)->m_bSorted, 0);
}

TEST_F(ControlTest, DesignModeKeepsTheTemplateEmptyUntilTheMaskIsPut)
{
    m_host.m_bUserMode = FALSE;
    CControlSite* q = Load(u"EditMask = \"##-##\"\n");
    EXPECT_EQ(Inside(q)->m_strLiteral, u"");
    Put(q, u"EditMask", COleVariant(u"##-#"));
    EXPECT_EQ(Inside(q)->m_strLiteral, u"  - ");
    m_host.m_bUserMode = TRUE;
    CControlSite* r = Load(u"EditMask = \"##-##\"\n");
    EXPECT_EQ(Inside(r)->m_strLiteral, u"  -  ") << "built at load in run mode";
}

// Loading, saving and resetting the control's properties through a property bag and a stream.
#include "Harness.h"
#include "control/QuillonCtrl.h"

namespace {

// The keys a save writes, in order: version, stock properties, then the control's own table.
const std::vector<std::string> kBagKeys = {
    "_Version", "BackColor", "ForeColor", "Enabled", "Font", "Text",
    "DropPicture", "BackColor", "ForeColor", "BorderColor", "DropBackColor", "DropBackColorTo", "DropForeColor",
    "SpinBackColor", "SpinBackColorTo", "SpinForeColor", "DisabledColor", "MaskColor", "ScrollBackColor",
    "ScrollBackColorTo", "ScrollForeColor", "BorderType", "ArrowSize", "CaseType", "Alignment", "DisplayStyle",
    "AutoComplete", "ScrollStyle", "ButtonFillType", "ButtonStyle", "DropWidth", "SpinWidth", "ButtonBevel",
    "InitialDelay", "RepeatRate", "PicXOffset", "PicYOffset", "ListOffset", "AutoFindSize", "DropButton",
    "SpinButton", "SelectOnFocus", "MaskBitmap", "EmbossBitmap", "UseMaskChars", "MatchCase", "Sorted",
    "ReverseBorder", "EditMask", "Text", "PasswordChar",
};

std::vector<std::string> Keys(const CString& bag)
{
    std::vector<std::string> keys;
    std::string text = ToUtf8(bag);
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        std::string line = text.substr(start, end - start);
        keys.push_back(line.substr(0, line.find(" = ")));
        start = end == std::string::npos ? text.size() : end + 1;
    }
    return keys;
}

std::string ValueOf(const CString& bag, const std::string& key, int occurrence = 0)
{
    std::string text = ToUtf8(bag);
    size_t pos = 0;
    for (int n = 0;; ++n) {
        pos = text.find("\n" + key + " = ", pos ? pos + 1 : 0);
        if (pos == std::string::npos && n == 0 && text.rfind(key + " = ", 0) == 0) pos = 0;
        if (pos == std::string::npos) return "<missing>";
        if (n == occurrence) break;
    }
    size_t start = text.find(" = ", pos) + 3;
    return text.substr(start, text.find('\n', start) - start);
}

} // namespace

TEST_F(ControlTest, ResetAndEmptyLoadDifferOnGlyphColours)
{
    CControlSite* reset = Create();
    CControlSite* loaded = Load(u"");
    EXPECT_EQ(GetLong(reset, u"DropForeColor"), 0);
    EXPECT_EQ(GetLong(reset, u"SpinForeColor"), 0);
    EXPECT_EQ(static_cast<ULONG>(GetLong(loaded, u"DropForeColor")), 0x80000012u);
    EXPECT_EQ(static_cast<ULONG>(GetLong(loaded, u"SpinForeColor")), 0x80000012u);
    // The rest of the table agrees between the two.
    for (auto name : {u"BorderType", u"DropWidth", u"SpinWidth", u"ButtonBevel", u"InitialDelay", u"RepeatRate",
                      u"AutoFindSize", u"UseMaskChars", u"DisabledColor", u"MaskColor", u"ScrollBackColor",
                      u"DropBackColor", u"BackColor", u"ForeColor", u"Enabled"})
        EXPECT_EQ(GetLong(reset, name), GetLong(loaded, name)) << ToUtf8(CString(name));
    EXPECT_EQ(GetLong(reset, u"BorderType"), 3);
    EXPECT_EQ(GetLong(reset, u"InitialDelay"), 200);
    EXPECT_EQ(static_cast<ULONG>(GetLong(reset, u"BackColor")), 0x80000005u);
    EXPECT_FALSE(reset->IsDirty()) << "a new control is clean";
    EXPECT_FALSE(loaded->IsDirty());
}

TEST_F(ControlTest, BagKeepsExchangeOrderAndKeys)
{
    CControlSite* q = Create();
    Put(q, u"ArrowType", COleVariant(LONG(2)));
    Put(q, u"BackColor", COleVariant(LONG(0xFF)));
    Put(q, u"EditMask", COleVariant(u"##-##"));
    CString bag = q->Save();
    EXPECT_EQ(Keys(bag), kBagKeys);
    EXPECT_EQ(ValueOf(bag, "ArrowSize"), "2") << "ArrowType is stored under ArrowSize";
    EXPECT_EQ(ValueOf(bag, "_Version"), std::to_string(0x20000));
    EXPECT_EQ(ValueOf(bag, "BackColor", 0), "255") << "the stock BackColor";
    EXPECT_EQ(ValueOf(bag, "BackColor", 1), std::to_string(LONG(0x80000005))) << "the control's own m_clrBack";
    EXPECT_EQ(ValueOf(bag, "EditMask"), "\"##-##\"");
}

TEST_F(ControlTest, BagRoundTripRestoresEveryValue)
{
    CControlSite* q = Create();
    Put(q, u"ArrowType", COleVariant(LONG(2)));
    Put(q, u"BackColor", COleVariant(LONG(0x123456)));
    Put(q, u"SpinForeColor", COleVariant(LONG(0x80000012)));
    Put(q, u"DropWidth", COleVariant(LONG(30)));
    Put(q, u"PicXOffset", COleVariant(LONG(-4)));
    Put(q, u"MatchCase", COleVariant(SHORT(1), VT_BOOL));
    Put(q, u"UseMaskChars", COleVariant(SHORT(0), VT_BOOL));
    Put(q, u"EditMask", COleVariant(u"(###) ###-####"));
    Put(q, u"Text", COleVariant(u"5551234567"));
    Put(q, u"PasswordChar", COleVariant(u"*"));
    Put(q, u"Enabled", COleVariant(SHORT(0), VT_BOOL));
    CString bag = q->Save();
    EXPECT_FALSE(q->IsDirty()) << "saving clears the dirty flag";

    CControlSite* r = Load(bag);
    for (auto name : {u"ArrowType", u"BackColor", u"SpinForeColor", u"DropWidth", u"PicXOffset", u"MatchCase",
                      u"UseMaskChars", u"Enabled"})
        EXPECT_EQ(GetLong(r, name), GetLong(q, name)) << ToUtf8(CString(name));
    EXPECT_EQ(GetText(r, u"EditMask"), u"(###) ###-####");
    EXPECT_EQ(GetText(r, u"Text"), u"5551234567");
    EXPECT_EQ(GetText(r, u"PasswordChar"), u"*");
    EXPECT_EQ(r->Save(), bag) << "a second save writes the same bag";
}

TEST_F(ControlTest, TextWithAwkwardCharactersSurvivesTheBag)
{
    CControlSite* q = Create();
    const char16_t* text = u"a \"quoted\" = b\\c\nline\t\u00e9\U0001F600 ";
    Put(q, u"Text", COleVariant(text));
    CControlSite* r = Load(q->Save());
    EXPECT_EQ(GetText(r, u"Text"), CString(text));
}

TEST_F(ControlTest, StreamRoundTripKeepsOrderAndValues)
{
    CControlSite* q = Create();
    Put(q, u"BorderType", COleVariant(LONG(1)));
    Put(q, u"DropButton", COleVariant(SHORT(1), VT_BOOL));
    Put(q, u"EditMask", COleVariant(u"AA-99"));
    Put(q, u"Text", COleVariant(u"xy-12"));
    Put(q, u"Font", COleVariant(static_cast<IDispatch*>(nullptr)));
    std::vector<BYTE> bytes = q->SaveStream();
    ASSERT_GE(bytes.size(), 4u);
    DWORD version = bytes[0] | bytes[1] << 8 | bytes[2] << 16 | DWORD(bytes[3]) << 24;
    EXPECT_EQ(version, 0x20000u) << "the version comes first";

    CControlSite* r = Create();
    ASSERT_EQ(r->LoadStream(bytes), S_OK);
    EXPECT_EQ(GetLong(r, u"BorderType"), 1);
    EXPECT_EQ(GetLong(r, u"DropButton"), -1);
    EXPECT_EQ(GetText(r, u"EditMask"), u"AA-99");
    EXPECT_EQ(GetText(r, u"Text"), u"xy-12");
    // A loaded truth value is stored as 1 where the put stored -1; from then on the stream is stable.
    std::vector<BYTE> again = r->SaveStream();
    ASSERT_EQ(again.size(), bytes.size());
    CControlSite* t = Create();
    ASSERT_EQ(t->LoadStream(again), S_OK);
    EXPECT_EQ(t->SaveStream(), again);

    // A stream cut short gives the defaults from the cut on.
    std::vector<BYTE> head(bytes.begin(), bytes.begin() + 8);
    CControlSite* s = Create();
    ASSERT_EQ(s->LoadStream(head), S_OK);
    EXPECT_EQ(GetLong(s, u"BorderType"), 3);
    EXPECT_EQ(static_cast<ULONG>(GetLong(s, u"DropForeColor")), 0x80000012u);
}

TEST_F(ControlTest, StoredValuesOutsideThePutLimitsLoadAsStored)
{
    CControlSite* q = Load(u"DropWidth = 1\nBorderType = 7\nAutoFindSize = 0\n");
    EXPECT_EQ(GetLong(q, u"DropWidth"), 1);
    EXPECT_EQ(GetLong(q, u"BorderType"), 7);
    EXPECT_EQ(GetLong(q, u"AutoFindSize"), 0);
}

TEST_F(ControlTest, FontSurvivesTheBag)
{
    CControlSite* q = Create();
    COleVariant font = Get(q, u"Font");
    ASSERT_EQ(font.vt, VT_DISPATCH);
    IFont* pFont = nullptr;
    ASSERT_EQ(font.pdispVal->QueryInterface(IID_IFont, reinterpret_cast<void**>(&pFont)), S_OK);
    BSTR name = nullptr;
    pFont->get_Name(&name);
    EXPECT_EQ(BstrToString(name), u"MS Sans Serif") << "the ambient font";
    SysFreeString(name);
    pFont->put_Bold(TRUE);
    BSTR arial = SysAllocString(u"Arial");
    pFont->put_Name(arial);
    SysFreeString(arial);
    pFont->Release();
    EXPECT_GE(q->InvalidateCount(), 1) << "a font change repaints";

    CControlSite* r = Load(q->Save());
    COleVariant loaded = Get(r, u"Font");
    COleVariant bold, loadedName;
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    DISPID boldId = 3, nameId = 0;
    ASSERT_EQ(loaded.pdispVal->Invoke(boldId, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &bold, nullptr, nullptr), S_OK);
    ASSERT_EQ(loaded.pdispVal->Invoke(nameId, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &loadedName, nullptr, nullptr), S_OK);
    EXPECT_EQ(bold.boolVal, VARIANT_TRUE);
    EXPECT_EQ(BstrToString(loadedName.bstrVal), u"Arial");
}

TEST_F(ControlTest, PictureKindsPersist)
{
    CControlSite* q = Create();
    CPictureHolder icon;
    ASSERT_TRUE(icon.CreateFromMetafile(nullptr, 40, 20, FALSE));
    COleVariant pic(static_cast<IDispatch*>(nullptr));
    pic.pdispVal = icon.GetPictureDispatch();
    Put(q, u"DropPicture", pic);
    CControlSite* r = Load(q->Save());
    COleVariant back = Get(r, u"DropPicture");
    ASSERT_EQ(back.vt, VT_DISPATCH);
    ASSERT_NE(back.pdispVal, nullptr);
    IPicture* p = nullptr;
    ASSERT_EQ(back.pdispVal->QueryInterface(IID_IPicture, reinterpret_cast<void**>(&p)), S_OK);
    SHORT type = 0;
    LONG width = 0;
    p->get_Type(&type);
    p->get_Width(&width);
    p->Release();
    EXPECT_EQ(type, PICTYPE_METAFILE);
    EXPECT_EQ(width, 1058) << "40 px in HIMETRIC";
}

// Internal state that no door shows: insets, the template and the stored truth values.
TEST(ControlState, InsetsTemplateAndTruthValues)
{
    CQuillonCtrl* ctrl = new CQuillonCtrl;
    ctrl->InitNew();
    EXPECT_EQ(ctrl->m_nInsetLeft, 2) << "Lowered";
    ctrl->m_nBorderType = 0;
    ctrl->UpdateInsets();
    EXPECT_EQ(ctrl->m_nInsetTop, 1);
    ctrl->m_nBorderType = 1;
    ctrl->UpdateInsets();
    EXPECT_EQ(ctrl->m_nInsetBottom, 0);
    ctrl->m_nBorderType = 9;
    ctrl->UpdateInsets();
    EXPECT_EQ(ctrl->m_nInsetRight, 0) << "an unknown kind leaves the insets";
    ctrl->SetEditMask(u"(##)");
    EXPECT_EQ(ctrl->m_strLiteral, u"(  )");
    EXPECT_EQ(ctrl->m_nPicWidth, 0);
    ctrl->Release();
}

// A damaged store gives the defaults where it is damaged and loses nothing else.
TEST_F(ControlTest, DamagedStoresLoadWhatTheyCan)
{
    CControlSite* q = Load(u"Font = Arial\nDropPicture = {object} 12\nBorderType = many\nEditMask = \"##\"\n");
    COleVariant font = Get(q, u"Font");
    ASSERT_EQ(font.vt, VT_DISPATCH);
    EXPECT_NE(font.pdispVal, nullptr) << "the ambient font stands in for a font that is not one";
    EXPECT_EQ(GetLong(q, u"BorderType"), 3);
    EXPECT_EQ(GetText(q, u"EditMask"), u"##");
    std::vector<BYTE> noise(200, 0xA5);
    CControlSite* r = Create();
    EXPECT_EQ(r->LoadStream(noise), S_OK);
    EXPECT_FALSE(r->SaveStream().empty());
}

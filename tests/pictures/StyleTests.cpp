// ControlStyle: each preset writes its look in its order, marks the control modified and repaints;
// anything but 1 to 5 changes nothing.
#include "PictureKit.h"

namespace {

struct Row {
    const char16_t* name;
    long long value;
};

struct Preset {
    SHORT nStyle;
    const char* pszName;
    std::vector<Row> rows;        // in the order the preset writes them
    size_t nFirstRepaint, nLastRepaint; // the rows after which the control is invalidated
    SHORT nInset;                 // the frame insets of its border kind
};

constexpr long long kBtnFace = 0x8000000f, kBtnText = 0x80000012, kInactiveCaption = 0x80000003,
                    kInactiveCaptionText = 0x80000013, kCaptionText = 0x80000009;

std::vector<Row> ClassicRows(long long arrow, long long border, long long borderType, long long dropBack,
                             long long dropBackTo, bool bBevel, long long fill, long long dropFore, long long style,
                             long long dropWidth, long long display, long long spinBack, long long spinBackTo,
                             long long spinFore, long long scrollBack, long long scrollBackTo, long long scrollFore,
                             long long scrollStyle)
{
    std::vector<Row> rows{{u"ArrowType", arrow}, {u"BorderColor", border}, {u"BorderType", borderType},
                          {u"DropBackColor", dropBack}, {u"DropBackColorTo", dropBackTo}};
    if (bBevel) rows.push_back({u"ButtonBevel", 1});
    rows.insert(rows.end(), {{u"ButtonFillType", fill}, {u"DropForeColor", dropFore}, {u"ButtonStyle", style},
                             {u"DropWidth", dropWidth}, {u"DisplayStyle", display}, {u"ReverseBorder", 0},
                             {u"SpinBackColor", spinBack}, {u"SpinBackColorTo", spinBackTo}, {u"SpinWidth", 16},
                             {u"SpinForeColor", spinFore}, {u"ScrollBackColor", scrollBack},
                             {u"ScrollBackColorTo", scrollBackTo}, {u"ScrollForeColor", scrollFore},
                             {u"ScrollStyle", scrollStyle}});
    return rows;
}

Preset Classic(SHORT nStyle, const char* pszName, std::vector<Row> rows, SHORT nInset)
{
    size_t n = rows.size();
    return {nStyle, pszName, std::move(rows), 0, n - 2, nInset}; // ScrollStyle, the last, is not repainted
}

// The looks as the product defines them (colours as OLE_COLORs).
const std::vector<Preset>& Presets()
{
    static const std::vector<Preset> presets{
        Classic(1, "Default",
                ClassicRows(ArrowSmall, 0, BorderLowered, kBtnFace, 0xffffff, true, FillSolid, kBtnText, ButtonRegular,
                            16, DisplayRegular, kBtnFace, kBtnFace, kBtnText, kInactiveCaption, kInactiveCaptionText,
                            kCaptionText, ScrollRegular), 2),
        Classic(2, "Standard",
                ClassicRows(ArrowSmall, 0, BorderLowered, kBtnFace, 0xffffff, true, FillSolid, kBtnText, ButtonRegular,
                            16, DisplayFlat, kBtnFace, 0xffffff, kBtnText, kInactiveCaption, kInactiveCaptionText,
                            kCaptionText, ScrollThin), 2),
        Classic(3, "XP Blue",
                ClassicRows(ArrowLine1, 0xb99d7f, BorderRegular, 0xf3c6af, 0xfeeae1, false, FillDiagonal, 0x85614d,
                            ButtonModern, 17, DisplayRegular, 0xf3c6af, 0xfeeae1, 0x85614d, 0xf3c6af, 0xfeeae1,
                            0x85614d, ScrollModern), 1),
        Classic(4, "XP Olive",
                ClassicRows(ArrowLine1, 0xa9d0c2, BorderRegular, 0x7da997, 0xbad7cb, false, FillDiagonal, 0xffffff,
                            ButtonModern, 17, DisplayRegular, 0x7da997, 0xbad7cb, 0xffffff, 0x7da997, 0xbad7cb,
                            0xffffff, ScrollModern), 1),
        {5, "Vista Blue",
         {{u"BorderType", BorderRegular}, {u"ArrowType", ArrowLine2}, {u"BorderColor", 0xcf9365},
          {u"SpinButton", 1}, {u"DropButton", 1}, {u"SpinWidth", 17}, {u"DropWidth", 17},
          {u"SpinBackColor", 0xffefe3}, {u"SpinBackColorTo", 0xffd1ad}, {u"SpinForeColor", 0x85614d},
          {u"DropBackColor", 0xffefe3}, {u"DropBackColorTo", 0xffd1ad}, {u"DropForeColor", 0x85614d},
          {u"ButtonFillType", FillVertEdge}, {u"ButtonStyle", ButtonModern}, {u"ReverseBorder", 1},
          {u"ScrollBackColorTo", 0xffefe3}, {u"ScrollBackColor", 0xffd1ad}, {u"ScrollForeColor", 0x85614d},
          {u"ScrollStyle", ScrollModern}},
         16, 19, 1},
    };
    return presets;
}

// Properties that no preset may touch, read before and after.
const char16_t* const kUntouched[] = {
    u"BackColor", u"ForeColor", u"Enabled", u"DisabledColor", u"MaskColor", u"MaskBitmap", u"EmbossBitmap",
    u"PicXOffset", u"PicYOffset", u"AutoComplete", u"InitialDelay", u"RepeatRate", u"ListOffset",
    u"AutoFindSize", u"CaseType", u"Alignment", u"MatchCase", u"Sorted", u"SelectOnFocus", u"UseMaskChars"};

// A value that differs from the preset's and that the property's own put accepts.
long long Other(const Row& row)
{
    std::u16string name(row.name);
    if (name.find(u"Color") != std::u16string::npos) return 0x010203;
    if (name.find(u"Width") != std::u16string::npos) return 30;
    return row.value == 1 ? 0 : 1;
}

// A client site that, at each invalidation, writes down which rows of a preset already hold their
// new value, the frame inset and the modified flag.
class RecordingSite final : public IOleClientSite {
public:
    RecordingSite(CQuillonCtrl* pCtrl, const Preset& preset) : m_pCtrl(pCtrl), m_preset(preset) {}
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (riid == IID_IUnknown || riid == IID_IOleClientSite) { *ppv = this; return S_OK; }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    HRESULT GetAmbientProperty(DISPID, VARIANT*) override { return E_NOTIMPL; }
    HRESULT OnInvalidate(const RECT*, BOOL) override
    {
        m_states.push_back(State(m_pCtrl, m_preset));
        return S_OK;
    }
    static std::string State(CQuillonCtrl* pCtrl, const Preset& preset)
    {
        std::string written;
        for (const Row& row : preset.rows) written += GetNumber(pCtrl, row.name) == row.value ? '1' : '0';
        return written + " inset " + std::to_string(pCtrl->m_nInsetTop) + (pCtrl->IsModified() ? " modified" : "");
    }
    std::vector<std::string> m_states;

private:
    CQuillonCtrl* m_pCtrl;
    const Preset& m_preset;
};

} // namespace

using StyleTest = PictureTest;

// The writes come in the preset's order, each visible at the invalidation that follows it; the insets
// follow the border kind as soon as it is written, before anything is repainted.
TEST_F(StyleTest, PresetsWriteTheirRowsInOrderAndRepaintAfterEach)
{
    for (const Preset& preset : Presets()) {
        SCOPED_TRACE(preset.pszName);
        for (const Row& row : preset.rows) PutNumber(m_ctrl, row.name, Other(row));
        PutNumber(m_ctrl, u"BorderType", BorderNone);
        m_ctrl->SetModifiedFlag(FALSE);
        RecordingSite site(m_ctrl, preset);
        ASSERT_EQ(RecordingSite::State(m_ctrl, preset), std::string(preset.rows.size(), '0') + " inset 0");

        m_ctrl->SetClientSite(&site);
        m_ctrl->SetControlStyle(preset.nStyle);
        m_ctrl->SetClientSite(nullptr);

        std::vector<std::string> expected;
        size_t nBorderRow = 0;
        while (std::u16string(preset.rows[nBorderRow].name) != u"BorderType") ++nBorderRow;
        for (size_t i = preset.nFirstRepaint; i <= preset.nLastRepaint; ++i) {
            std::string written = std::string(i + 1, '1') + std::string(preset.rows.size() - i - 1, '0');
            expected.push_back(written + " inset " + std::to_string(i >= nBorderRow ? preset.nInset : 0) + " modified");
        }
        EXPECT_EQ(site.m_states, expected);
        EXPECT_EQ(RecordingSite::State(m_ctrl, preset), std::string(preset.rows.size(), '1') + " inset " +
                                                            std::to_string(preset.nInset) + " modified");
        EXPECT_EQ(m_ctrl->m_nInsetLeft, preset.nInset);
        EXPECT_EQ(m_ctrl->m_nInsetBottom, preset.nInset);
    }
}

// Through the host: one put sets the whole look, reads back 0, makes the control dirty, touches
// nothing else, and the look survives a save and reload because its members persist.
TEST_F(HostTest, ControlStyleSetsAWholeLookThatPersists)
{
    const int kRepaints[] = {19, 19, 18, 18, 4};
    for (const Preset& preset : Presets()) {
        SCOPED_TRACE(preset.pszName);
        CControlSite* q = Create();
        IDispatch* d = q->Control();
        PutNumber(d, u"ButtonBevel", 7);
        PutNumber(d, u"BackColor", 0x0000ff);
        std::vector<long long> untouched;
        for (const char16_t* name : kUntouched) untouched.push_back(GetNumber(d, name));
        q->Save();
        int nInvalidates = q->InvalidateCount();

        PutNumber(d, u"ControlStyle", preset.nStyle);
        EXPECT_EQ(GetNumber(d, u"ControlStyle"), 0);
        EXPECT_TRUE(q->IsDirty());
        EXPECT_EQ(q->InvalidateCount() - nInvalidates, kRepaints[preset.nStyle - 1]);
        for (const Row& row : preset.rows) EXPECT_EQ(GetNumber(d, row.name), row.value) << ToUtf8(CString(row.name));
        EXPECT_EQ(GetNumber(d, u"ButtonBevel"), preset.nStyle <= 2 ? 1 : 7);
        EXPECT_EQ(GetNumber(d, u"SpinButton"), preset.nStyle == 5);
        EXPECT_EQ(GetNumber(d, u"DropButton"), preset.nStyle == 5);
        for (size_t i = 0; i < std::size(kUntouched); ++i)
            EXPECT_EQ(GetNumber(d, kUntouched[i]), untouched[i]) << ToUtf8(CString(kUntouched[i]));

        CControlSite* reloaded = Load(q->Save());
        for (const Row& row : preset.rows)
            EXPECT_EQ(GetNumber(reloaded->Control(), row.name), row.value) << "after reload: " << ToUtf8(CString(row.name));
    }
}

// 0 is the "Style" entry of the list and does nothing, like every value outside 1 to 5; a preset
// that turned the buttons on leaves them on for the next.
TEST_F(HostTest, OtherStyleValuesChangeNothingAndButtonsStayOn)
{
    CControlSite* q = Create();
    IDispatch* d = q->Control();
    PutNumber(d, u"BorderColor", 0x123456);
    CString before = q->Save();
    int nInvalidates = q->InvalidateCount();
    for (long long value : {0, 6, -1, 32767, -32768}) {
        PutNumber(d, u"ControlStyle", value);
        EXPECT_FALSE(q->IsDirty()) << value;
    }
    EXPECT_EQ(q->InvalidateCount(), nInvalidates);
    EXPECT_EQ(q->Save(FALSE), before);

    PutNumber(d, u"ControlStyle", StyleVistaBlue);
    PutNumber(d, u"ControlStyle", StyleDefault);
    EXPECT_EQ(GetNumber(d, u"SpinButton"), 1);
    EXPECT_EQ(GetNumber(d, u"DropButton"), 1);
    EXPECT_EQ(GetNumber(d, u"ReverseBorder"), 0);
    EXPECT_EQ(GetNumber(d, u"BorderType"), BorderLowered);
}

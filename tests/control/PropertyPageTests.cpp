// The property pages through the frame: what the pages show, the order of the puts that Apply
// sends (compared whole), that only changed fields are written, the puts' own rules, the
// PropertyPages property, the host's own frame, the Properties verb, the keyboard, and the About box.
#include <filesystem>
#include <functional>
#include "Golden.h"
#include "Harness.h"
#include "com/proppage.h"
#include "control/QuillonCtrl.h"
#include "gdi/standin.h"
#include "host/DialogDriver.h"
#include "server/QuillonApp.h"
#include "server/QuillonPages.h"

namespace {

using Lines = std::vector<std::string>;

// The objects the frame edits, seen through a recorder that writes each put as "Name value" and
// passes it on to the control.
class CPutRecorder final : public IDispatch {
public:
    CPutRecorder(IDispatch* inner, Lines& log) : m_pInner(inner), m_log(log) {}
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (riid == IID_IUnknown || riid == IID_IDispatch) { *ppv = this; return S_OK; }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return 2; }
    ULONG Release() override { return 1; }
    HRESULT GetTypeInfoCount(UINT* p) override { return m_pInner->GetTypeInfoCount(p); }
    HRESULT GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT GetIDsOfNames(REFIID riid, LPCOLESTR* names, UINT n, LCID lcid, DISPID* ids) override
    {
        HRESULT hr = m_pInner->GetIDsOfNames(riid, names, n, lcid, ids);
        if (SUCCEEDED(hr)) m_names[ids[0]] = ToUtf8(CString(names[0]));
        return hr;
    }
    HRESULT Invoke(DISPID id, REFIID riid, LCID lcid, WORD flags, DISPPARAMS* p, VARIANT* result, EXCEPINFO* e, UINT* arg) override
    {
        if (flags & DISPATCH_PROPERTYPUT) {
            COleVariant text;
            VariantChangeType(&text, &p->rgvarg[0], 0, VT_BSTR);
            m_log.push_back(m_names[id] + " " + ToUtf8(BstrToString(text.bstrVal)));
        }
        return m_pInner->Invoke(id, riid, lcid, flags, p, result, e, arg);
    }
private:
    IDispatch* m_pInner;
    Lines& m_log;
    std::map<DISPID, std::string> m_names;
};

// Apply on the General page with every field changed: the puts in the exchange's row order.
const Lines kApplyGeneralPage = {
    "ArrowType 2", "BorderType 3", "DropButton -1", "DropWidth 1", "InitialDelay 300", "RepeatRate 20",
    "SpinButton -1", "SpinWidth 14", "Text abc", "ButtonBevel 3", "PicXOffset 4", "PicYOffset 5",
    "DisplayStyle 1", "Alignment 2", "ButtonFillType 10", "ButtonStyle 1", "ReverseBorder -1",
};
// Apply on the More page with every field changed.
const Lines kApplyMorePage = {
    "CaseType 1", "EditMask ##-##", "Enabled 0", "UseMaskChars 0", "SelectOnFocus -1", "MaskBitmap -1",
    "EmbossBitmap -1", "AutoComplete 3", "AutoFindSize 2", "ListOffset 4", "MatchCase -1", "ScrollStyle 2",
    "Sorted -1", "PasswordChar *",
};
// Apply with only the Text and ReverseBorder fields changed.
const Lines kApplyTwoFields = {"Text x", "ReverseBorder -1"};
// OK after a Border Type box was left without a selection (typed text, or a key that picks no line).
const Lines kApplyUnselectedBorderType = {"BorderType -1"};

} // namespace

class PropertyPageTest : public ControlTest {
protected:
    PropertyPageTest() { m_host.m_onDialog = [this](HWND h) { if (m_drive) { CDialogDriver d(h); m_drive(d); } }; }

    // The control's pages in a frame over the recorder, driven by the function.
    void EditWithRecorder(CControlSite* q, std::function<void(CDialogDriver&)> drive)
    {
        CPutRecorder recorder(q->Control(), m_puts);
        IUnknown* object = &recorder;
        ULONG n = 0;
        LPCLSID pages = Inside(q)->GetPropPageIDs(n);
        m_drive = std::move(drive);
        OleCreatePropertyFrame(m_form->Window(), 0, 0, u"Quillon Control 2.0", 1, &object, n, pages, 1033, 0, nullptr);
        m_drive = nullptr;
    }
    static void Set(CDialogDriver& d, int id, const char16_t* text) { d.SetText(d.Field(id), text); }
    static void Pick(CDialogDriver& d, int id, int index) { d.SetIndex(d.Field(id), index); }
    static void Check(CDialogDriver& d, int id, bool on) { d.SetChecked(d.Field(id), on); }

    std::function<void(CDialogDriver&)> m_drive;
    Lines m_puts;
};

TEST_F(PropertyPageTest, GeneralPageAppliesEveryChangedFieldInExchangeOrder)
{
    CControlSite* q = Create();
    EditWithRecorder(q, [](CDialogDriver& d) {
        EXPECT_EQ(d.Caption(), u"Quillon Control 2.0 Properties");
        EXPECT_TRUE(d.SelectPage(u"General"));
        // Changed in tab order, which is not the exchange order.
        Set(d, 201, u"abc");
        Pick(d, 203, 3);
        Pick(d, 204, 2);
        Pick(d, 221, 1);
        Pick(d, 232, 10);
        Pick(d, 234, 1);
        Pick(d, 217, 2);
        Check(d, 205, true);
        Set(d, 206, u"14");
        Check(d, 207, true);
        Set(d, 208, u"1");
        Check(d, 235, true);
        Set(d, 209, u"300");
        Set(d, 210, u"20");
        Set(d, 211, u"3");
        Set(d, 212, u"4");
        Set(d, 213, u"5");
        d.Press(u"OK");
    });
    ExpectSequence(kApplyGeneralPage, m_puts);
    // The puts' own rules: a drop button width of 1 becomes 2.
    EXPECT_EQ(GetLong(q, u"DropWidth"), 2);
    EXPECT_EQ(GetLong(q, u"ButtonFillType"), 10);
    EXPECT_EQ(GetText(q, u"Text"), u"abc");
}

TEST_F(PropertyPageTest, MorePageAppliesInExchangeOrder)
{
    CControlSite* q = Create();
    EditWithRecorder(q, [](CDialogDriver& d) {
        EXPECT_TRUE(d.SelectPage(u"More"));
        Set(d, 202, u"##-##");
        Pick(d, 216, 1);
        Check(d, 218, false);
        Check(d, 220, true);
        Check(d, 219, false);
        Check(d, 222, true);
        Check(d, 223, true);
        Pick(d, 224, 3);
        Pick(d, 226, 2);
        Set(d, 227, u"2");
        Set(d, 228, u"4");
        Check(d, 229, true);
        Check(d, 230, true);
        Set(d, 203, u"*");
        d.Press(u"Apply");
        d.Press(u"Cancel");
    });
    ExpectSequence(kApplyMorePage, m_puts);
    EXPECT_EQ(GetText(q, u"EditMask"), u"##-##");
    EXPECT_EQ(GetText(q, u"PasswordChar"), u"*");
}

TEST_F(PropertyPageTest, OnlyChangedFieldsAreWrittenAndApplyTwiceWritesNothingNew)
{
    CControlSite* q = Create();
    EditWithRecorder(q, [](CDialogDriver& d) {
        HWND apply = ::GetDlgItem(d.Window(), ID_APPLY_NOW);
        EXPECT_FALSE(::IsWindowEnabled(apply)) << "nothing changed yet";
        Check(d, 235, true);
        Set(d, 201, u"x");
        EXPECT_TRUE(::IsWindowEnabled(apply));
        d.Press(u"Apply");
        EXPECT_FALSE(::IsWindowEnabled(apply));
        d.Press(u"OK");
    });
    ExpectSequence(kApplyTwoFields, m_puts);
}

TEST_F(PropertyPageTest, PagesShowTheControlsValuesAndComboIndexIsTheValue)
{
    CControlSite* q = Create();
    Put(q, u"ButtonFillType", COleVariant(SHORT(12)));
    Put(q, u"AutoComplete", COleVariant(SHORT(2)));
    Put(q, u"SpinWidth", COleVariant(SHORT(17)));
    Put(q, u"MatchCase", COleVariant(true));
    Put(q, u"EditMask", COleVariant(u"(###)"));
    EditWithRecorder(q, [](CDialogDriver& d) {
        std::vector<CString> titles = d.PageTitles();
        EXPECT_EQ(titles.front(), u"General");
        EXPECT_EQ(titles.back(), u"About");
        d.SelectPage(u"General");
        EXPECT_EQ(d.Index(d.Field(232)), 12);
        EXPECT_EQ(d.Text(d.Field(232)), u"12 - Vertical Edge");
        EXPECT_EQ(d.Text(d.Field(206)), u"17");
        std::vector<CString> lines = d.Lines(d.Field(232));
        ASSERT_EQ(lines.size(), 14u);
        for (size_t i = 0; i < lines.size(); ++i)
            EXPECT_TRUE(lines[i].Find(CString(FromUtf8(std::to_string(i) + " - ").c_str())) == 0) << ToUtf8(lines[i]);
        // In every list the line at an index starts with that index.
        for (int id : {203, 204, 221, 234, 217}) {
            std::vector<CString> l = d.Lines(d.Field(id));
            for (size_t i = 0; i < l.size(); ++i) EXPECT_EQ(l[i].Left(1), CString(FromUtf8(std::to_string(i)).c_str())) << id;
        }
        d.SelectPage(u"More");
        EXPECT_EQ(d.Index(d.Field(224)), 2);
        EXPECT_TRUE(d.Checked(d.Field(229)));
        EXPECT_EQ(d.Text(d.Field(202)), u"(###)");
    });
    EXPECT_TRUE(m_puts.empty()) << "cancelled: nothing written";
}

TEST_F(PropertyPageTest, RefusedAndTypedValuesFollowThePutsOwnRules)
{
    CControlSite* q = Create();
    Put(q, u"BorderType", COleVariant(SHORT(2)));
    EditWithRecorder(q, [](CDialogDriver& d) {
        // Typed text that is not a line of the list leaves the box without a selection: -1 is refused.
        Set(d, 203, u"7 - Sunken");
        EXPECT_EQ(d.Index(d.Field(203)), -1);
        d.Press(u"OK");
    });
    ExpectSequence(kApplyUnselectedBorderType, m_puts);
    EXPECT_EQ(GetLong(q, u"BorderType"), 2) << "the refused value leaves the property as it was";
}

TEST_F(PropertyPageTest, ABadNumberKeepsTheFrameOpenOnItsPage)
{
    CControlSite* q = Create();
    m_host.Pump();
    TakeLog();
    bool stayed = false;
    EditWithRecorder(q, [&](CDialogDriver& d) {
        Set(d, 208, u"wide");
        d.Press(u"OK");
        stayed = d.IsOpen();
    });
    EXPECT_TRUE(stayed);
    EXPECT_TRUE(m_puts.empty());
    EXPECT_EQ(TakeLog(), (Lines{"Beep"}));
    (void)q;
}

namespace {
// The field holding the focus; a combo box's edit counts as its combo box.
int FocusedFieldId()
{
    HWND f = ::GetFocus();
    if (::GetDlgCtrlID(f) == 1001) f = ::GetParent(f);
    return ::GetDlgCtrlID(f);
}
} // namespace

TEST_F(PropertyPageTest, KeyboardTabOrderEnterAndEscape)
{
    CControlSite* q = Create();
    std::vector<int> order;
    EditWithRecorder(q, [&](CDialogDriver&) {
        order.push_back(FocusedFieldId());
        for (int i = 0; i < 19; ++i) {
            m_host.Key(VK_TAB);
            order.push_back(FocusedFieldId());
        }
        m_host.Key(VK_TAB, true);
        order.push_back(FocusedFieldId());
        m_host.Key(VK_TAB);
        m_host.Key(VK_TAB);
        m_host.Type(u"7");
        m_host.Key(VK_RETURN);   // OK, the default button: applies and closes
    });
    // The page's fields as the table lists them, then OK and Cancel (Apply is disabled while nothing changed).
    std::vector<int> expected = {201, 203, 204, 221, 232, 234, 217, 205, 206, 207, 208, 235, 209, 210, 211, 212, 213,
                                 IDOK, IDCANCEL, 201, IDCANCEL};
    EXPECT_EQ(order, expected);
    ExpectSequence(kApplyUnselectedBorderType, m_puts);
    m_puts.clear();
    EditWithRecorder(q, [&](CDialogDriver& d) {
        Set(d, 201, u"gone");
        m_host.Key(VK_ESCAPE);
        EXPECT_FALSE(d.IsOpen());
    });
    EXPECT_TRUE(m_puts.empty()) << "Escape cancels";

    order.clear();
    EditWithRecorder(q, [&](CDialogDriver& d) {
        d.SelectPage(u"More");
        for (int i = 0; i < 14; ++i, m_host.Key(VK_TAB)) order.push_back(FocusedFieldId());
        d.Press(u"Cancel");
    });
    // The More page by its table: Password Char stands at the top right, yet comes last.
    EXPECT_EQ(order, (std::vector<int>{202, 216, 218, 220, 219, 222, 223, 224, 226, 227, 228, 229, 230, 203}));
}

class FrameTest : public PropertyPageTest {
protected:
    FrameTest()
    {
        m_host.m_onEnableModeless = [this](CControlSite&, BOOL on) { m_log.push_back(on ? "EnableModeless 1" : "EnableModeless 0"); };
    }
    // Each dialog that opens is logged by its caption and closed with the button.
    void AnswerWith(const char16_t* button)
    {
        m_drive = [this, button](CDialogDriver& d) {
            m_log.push_back("Dialog " + ToUtf8(d.Caption()));
            d.Press(CString(button));
        };
    }
};

// PropertyPages = 1 with a host that has no frame of its own.
const Lines kPropertyFrameOpens = {"EnableModeless 0", "Dialog Quillon Control 2.0 Properties", "EnableModeless 1"};
// PropertyPages = 1 with a host that shows the pages in a frame of its own.
const Lines kHostFrameOpens = {"Dialog Host Properties"};
// AboutBox: dialog 1, closed with OK.
const Lines kAboutBoxOpens = {"Dialog About Quillon Control"};

TEST_F(FrameTest, PropertyPagesOpensTheFrameForOneAndMoreAndReadsZero)
{
    CControlSite* q = Create();
    m_host.Pump();
    TakeLog();
    AnswerWith(u"Cancel");
    for (SHORT v : {0, -1}) {
        Put(q, u"PropertyPages", COleVariant(v));
        EXPECT_TRUE(TakeLog().empty()) << v << " shows nothing";
    }
    for (SHORT v : {1, 2}) {
        Put(q, u"PropertyPages", COleVariant(v));
        ExpectSequence(kPropertyFrameOpens, TakeLog());
        EXPECT_EQ(GetLong(q, u"PropertyPages"), 0) << "the value is not kept";
    }
    // The frame sits at the form's origin, as the control's parent lies there.
    m_drive = [](CDialogDriver& d) {
        RECT rc{};
        ::GetWindowRect(d.Window(), &rc);
        EXPECT_EQ(rc.left, 100);
        EXPECT_EQ(rc.top, 100);
    };
    Put(q, u"PropertyPages", COleVariant(SHORT(1)));
}

TEST_F(FrameTest, AHostWithItsOwnFrameGetsNoFrameFromTheControl)
{
    CControlSite* q = Create();
    m_host.Pump();
    TakeLog();
    m_host.m_bShowPropertyFrame = TRUE;
    AnswerWith(u"Cancel");
    Put(q, u"PropertyPages", COleVariant(SHORT(1)));
    ExpectSequence(kHostFrameOpens, TakeLog());
}

TEST_F(FrameTest, PropertiesVerbShowsTheFrameAndAppliesThroughIt)
{
    CControlSite* q = Create();
    m_host.Pump();
    TakeLog();
    CComPtr<IOleObject> ole;
    ASSERT_EQ(q->Control()->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&ole)), S_OK);
    m_drive = [](CDialogDriver& d) {
        Set(d, 208, u"1");
        Check(d, 207, true);
        d.Press(u"OK");
    };
    EXPECT_EQ(ole->DoVerb(0, nullptr, nullptr, 0, nullptr, nullptr), S_OK);
    EXPECT_EQ(GetLong(q, u"DropWidth"), 2) << "1 entered becomes 2";
    EXPECT_EQ(GetLong(q, u"DropButton"), -1);
    AnswerWith(u"Cancel");
    EXPECT_EQ(ole->DoVerb(OLEIVERB_PROPERTIES, nullptr, nullptr, 0, nullptr, nullptr), S_OK);
    EXPECT_EQ(ole->DoVerb(1, nullptr, nullptr, 0, nullptr, nullptr), OLEOBJ_S_INVALIDVERB);
    // The first frame (verb 0) was answered by the handler above, which logs nothing itself.
    Lines expected = {"EnableModeless 0", "EnableModeless 1"};
    expected.insert(expected.end(), kPropertyFrameOpens.begin(), kPropertyFrameOpens.end());
    ExpectSequence(expected, TakeLog());
}

TEST_F(FrameTest, AboutBoxIsDialogOneAndOKClosesIt)
{
    CControlSite* q = Create();
    m_host.Pump();
    TakeLog();
    RECT rc{}, du{0, 0, 260, 95};
    m_drive = [&](CDialogDriver& d) {
        m_log.push_back("Dialog " + ToUtf8(d.Caption()));
        ::GetWindowRect(d.Window(), &rc);
        ::MapDialogRect(d.Window(), &du);
        m_host.Key(VK_RETURN);
        EXPECT_FALSE(d.IsOpen()) << "Enter presses OK";
    };
    Call(q, u"AboutBox");
    ExpectSequence(kAboutBoxOpens, TakeLog());
    EXPECT_EQ(rc.right - rc.left, du.right + 2 * DLG_FRAME_CX);
    EXPECT_EQ(rc.bottom - rc.top, du.bottom + DLG_CAPTION_CY + DLG_FRAME_CX);
    m_drive = nullptr;
    Call(q, u"AboutBox");   // nobody answers: cancelled, and the call returns
}

// Golden images of what a person sees: the three pages in the frame, and the About box.
TEST_F(FrameTest, GoldenPagesAndAboutBox)
{
    CControlSite* q = Create();
    Put(q, u"EditMask", COleVariant(u"##-##"));
    Put(q, u"SpinButton", COleVariant(true));
    auto shoot = [this](CDialogDriver& d, const char* name) {
        RECT rc{};
        ::GetWindowRect(d.Window(), &rc);
        HBITMAP shot = m_host.Capture(&rc);
        ExpectMatchesGolden(shot, name);
        ::DeleteObject(shot);
    };
    m_drive = [&](CDialogDriver& d) {
        d.SelectPage(u"General");
        shoot(d, "page_general");
        d.SelectPage(u"More");
        shoot(d, "page_more");
        d.SelectPage(u"About");
        shoot(d, "page_about");
    };
    Put(q, u"PropertyPages", COleVariant(SHORT(1)));
    m_drive = [&](CDialogDriver& d) { shoot(d, "aboutbox"); };
    Call(q, u"AboutBox");
}

// The stock pages: a colour for a colour property, the font's attributes, a picture from a file.
TEST_F(FrameTest, StockPagesEditColoursTheFontAndPictures)
{
    CControlSite* q = Create();
    std::string png = (std::filesystem::temp_directory_path() / "quillon-stock-page.png").string();
    HBITMAP b = CreateBitmap(12, 10, 1, 32, nullptr);
    bool saved = SaveBitmapPng(b, png.c_str());
    DeleteObject(b);
    ASSERT_TRUE(saved);
    m_host.m_onFileDialog = [&](const char* kind, const CString&, CString& path) {
        EXPECT_STREQ(kind, "open");
        path = CString(FromUtf8(png).c_str());
        return true;
    };
    m_drive = [](CDialogDriver& d) {
        ASSERT_TRUE(d.SelectPage(u"Color"));
        HWND prop = d.Field(0x101);
        std::vector<CString> props = d.Lines(prop);
        EXPECT_NE(std::find(props.begin(), props.end(), CString(u"BorderColor")), props.end());
        EXPECT_NE(std::find(props.begin(), props.end(), CString(u"BackColor")), props.end());
        d.SetIndex(prop, static_cast<int>(std::find(props.begin(), props.end(), CString(u"SpinBackColor")) - props.begin()));
        d.SetIndex(d.Field(0x102), 9);   // Red
        ASSERT_TRUE(d.SelectPage(u"Font"));
        d.SetChecked(d.Field(0x113), true);
        d.SetText(d.Field(0x112), u"12");
        ASSERT_TRUE(d.SelectPage(u"Picture"));
        EXPECT_EQ(d.Lines(d.Field(0x121)), std::vector<CString>{u"DropPicture"}) << "the font is no picture";
        EXPECT_EQ(d.Text(d.Field(0x124)), u"(None)");
        d.Press(0x122);
        EXPECT_EQ(d.Text(d.Field(0x124)), u"Bitmap, 12 x 10 pixels");
        d.Press(u"OK");
    };
    Put(q, u"PropertyPages", COleVariant(SHORT(1)));
    EXPECT_EQ(GetLong(q, u"SpinBackColor"), 0x0000FF);
    COleVariant font = Get(q, u"Font");
    CComPtr<IFont> f;
    ASSERT_EQ(font.pdispVal->QueryInterface(IID_IFont, reinterpret_cast<void**>(&f)), S_OK);
    BOOL bold = FALSE;
    CY size{};
    f->get_Bold(&bold);
    f->get_Size(&size);
    EXPECT_TRUE(bold);
    EXPECT_EQ(size.int64, 120000);
    EXPECT_EQ(Get(q, u"DropPicture").vt, VT_DISPATCH);
    EXPECT_TRUE(Get(q, u"DropPicture").pdispVal);
}

// The frame stands at x, y pixels from its owner's origin.
TEST_F(PropertyPageTest, FrameIsPlacedFromItsOwnersOrigin)
{
    CControlSite* q = Create();
    RECT rc{};
    m_drive = [&](CDialogDriver& d) { ::GetWindowRect(d.Window(), &rc); };
    IUnknown* object = q->Control();
    OleCreatePropertyFrame(m_form->Window(), 30, 20, u"Placed", 1, &object, 0, nullptr, 1033, 0, nullptr);
    EXPECT_EQ(rc.left, 100 + 30);
    EXPECT_EQ(rc.top, 100 + 20);
}

// The module's images: the two icons and the toolbox picture, with the sizes they are given.
TEST(QuillonResources, IconsAndToolboxBitmap)
{
    for (WORD id : {1, 204}) {
        ICONINFO info{};
        ASSERT_TRUE(GetIconInfo(LoadIcon(nullptr, MAKEINTRESOURCE(id)), &info)) << id;
        BITMAP bm{};
        GetObject(info.hbmColor, sizeof bm, &bm);
        EXPECT_EQ(bm.bmWidth, 32);
        EXPECT_EQ(bm.bmHeight, 32);
        DeleteObject(info.hbmColor);
        DeleteObject(info.hbmMask);
    }
    BITMAP bm{};
    ASSERT_TRUE(GetObject(LoadBitmap(nullptr, MAKEINTRESOURCE(1)), sizeof bm, &bm));
    EXPECT_EQ(bm.bmWidth, 16);
    EXPECT_EQ(bm.bmHeight, 15);
}

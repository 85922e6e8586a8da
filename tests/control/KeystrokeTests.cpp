// The keystroke engine through real key messages to the real edit window, as a user types.
#include "Harness.h"
#include "control/QuillonCtrl.h"
#include "user/winuser.h"

namespace {

class Keystrokes : public ControlTest {
protected:
    // A focused control with the mask, its edit made by the first paint.
    CControlSite* Focused(const char16_t* mask)
    {
        CControlSite* q = Create();
        Put(q, u"EditMask", COleVariant(mask));
        m_host.Pump();
        m_host.Focus(*q);
        TakeLog();
        return q;
    }
    CString EditText(CControlSite* q) { return CWnd::FromHandle(EditHwndOf(q))->GetWindowText(); }
    HWND EditHwndOf(CControlSite* q) { return reinterpret_cast<HWND>(static_cast<uintptr_t>(Call(q, u"EditHwnd").lVal)); }
    int Caret(CControlSite* q) { return Call(q, u"SelStart").iVal; }
    void Select(CControlSite* q, short start, short end)
    {
        Call(q, u"SetSel", {COleVariant(start), COleVariant(end), COleVariant(SHORT(0), VT_BOOL)});
    }
    // Puts text into the edit as if typed before, without events.
    void Prepare(CControlSite* q, const char16_t* text, short caret)
    {
        ::SetWindowText(EditHwndOf(q), text);
        Select(q, caret, caret);
        TakeLog();
    }
};

// "1" typed into an empty "##-##" field.
const std::vector<std::string> kTypeOneIntoEmptyMask = {
    "KeyDown 49 0", "KeyPress 49", "PropertyChanged Text", "Change", "KeyUp 49 0"};

} // namespace

TEST_F(Keystrokes, TypingFillsPlaceholdersAndSkipsLiterals)
{
    CControlSite* q = Focused(u"##-##");
    EXPECT_EQ(EditText(q), u"") << "the focus brought the empty Text into the edit";
    m_host.Type(u"1");
    ExpectSequence(kTypeOneIntoEmptyMask, TakeLog());
    EXPECT_EQ(EditText(q), u"1 -  ");
    EXPECT_EQ(Caret(q), 1);
    EXPECT_EQ(GetText(q, u"Text"), u"1 -  ");
    m_host.Type(u"2");
    EXPECT_EQ(EditText(q), u"12-  ");
    EXPECT_EQ(Caret(q), 2) << "the caret rests before the literal";
    TakeLog();
    m_host.Type(u"3");
    EXPECT_EQ(EditText(q), u"12-3 ");
    EXPECT_EQ(Caret(q), 4);
    ExpectSequence({"KeyDown 51 0", "KeyPress 51", "PropertyChanged Text", "Change", "KeyUp 51 0"}, TakeLog());
}

TEST_F(Keystrokes, RefusedKeysBeepAndRaiseNoChange)
{
    CControlSite* q = Focused(u"##-##");
    Prepare(q, u"12-  ", 2);
    m_host.Type(u"x");
    ExpectSequence({"KeyDown 88 0", "KeyPress 120", "Beep", "KeyUp 88 0"}, TakeLog());
    EXPECT_EQ(EditText(q), u"12-  ");
    EXPECT_EQ(Caret(q), 3) << "the literal was skipped before the refusal";
    Prepare(q, u"12-34", 5);
    m_host.Type(u"5");
    ExpectSequence({"KeyDown 53 0", "KeyPress 53", "Beep", "KeyUp 53 0"}, TakeLog());
    m_host.Key(VK_DELETE);
    ExpectSequence({"Beep", "KeyDown 46 0", "KeyUp 46 0"}, TakeLog());
    EXPECT_EQ(EditText(q), u"12-34");
}

TEST_F(Keystrokes, BackspaceRestoresTheTemplate)
{
    CControlSite* q = Focused(u"##-##");
    Prepare(q, u"12-3 ", 4);
    m_host.Key(VK_BACK);
    EXPECT_EQ(EditText(q), u"12-  ");
    EXPECT_EQ(Caret(q), 3);
    ExpectSequence({"KeyDown 8 0", "KeyPress 8", "PropertyChanged Text", "Change", "KeyUp 8 0"}, TakeLog());

    m_host.Key(VK_BACK); // restores "-" at 2, then blanks 1
    EXPECT_EQ(EditText(q), u"1 -  ");
    EXPECT_EQ(Caret(q), 1);
    ExpectSequence({"KeyDown 8 0", "KeyPress 8", "PropertyChanged Text", "Change", "PropertyChanged Text", "Change",
                    "KeyUp 8 0"}, TakeLog());

    Prepare(q, u"12-  ", 2);
    m_host.Key(VK_BACK);
    EXPECT_EQ(EditText(q), u"1 -  ") << "the caret first moved behind the literal";

    Prepare(q, u"", 0);
    m_host.Key(VK_BACK);
    ExpectSequence({"KeyDown 8 0", "KeyPress 8", "KeyUp 8 0"}, TakeLog());
}

TEST_F(Keystrokes, SelectionsAreErasedBeforeTheKey)
{
    CControlSite* q = Focused(u"##-##");
    Prepare(q, u"12-34", 0);
    Select(q, 1, 4);
    TakeLog();
    m_host.Type(u"9");
    EXPECT_EQ(EditText(q), u"19- 4");
    EXPECT_EQ(Caret(q), 2);
    ExpectSequence({"KeyDown 57 0", "KeyPress 57", "PropertyChanged Text", "Change", "PropertyChanged Text", "Change",
                    "KeyUp 57 0"}, TakeLog());

    Prepare(q, u"12-34", 0);
    Select(q, 0, 2);
    m_host.Key(VK_BACK);
    EXPECT_EQ(EditText(q), u"  -34");
    EXPECT_EQ(Caret(q), 0);

    Prepare(q, u"12-34", 0);
    Select(q, 1, 2);
    TakeLog();
    m_host.Key(VK_BACK);
    EXPECT_EQ(EditText(q), u"  -34");
    ExpectSequence({"KeyDown 8 0", "KeyPress 8", "PropertyChanged Text", "Change", "PropertyChanged Text", "Change",
                    "KeyUp 8 0"}, TakeLog());
}

TEST_F(Keystrokes, DeleteLetsTheEditRemoveThenFollows)
{
    CControlSite* q = Focused(u"##-##");
    Prepare(q, u"12-34", 1);
    m_host.Key(VK_DELETE);
    EXPECT_EQ(EditText(q), u"1-34");
    EXPECT_EQ(Caret(q), 1);
    EXPECT_EQ(GetText(q, u"Text"), u"1-34");
    ExpectSequence({"PropertyChanged Text", "Change", "KeyDown 46 0", "KeyUp 46 0"}, TakeLog());
    m_host.Type(u"9");
    EXPECT_EQ(EditText(q), u"1934 ") << "the moved literal is overwritten";

    Prepare(q, u"12-34", 2);
    m_host.Key(VK_DELETE);
    EXPECT_EQ(EditText(q), u"1234");
    EXPECT_EQ(Caret(q), 3);
}

TEST_F(Keystrokes, CaseAndPlaceholdersOfEveryKind)
{
    CControlSite* q = Focused(u"A#!X");
    Put(q, u"CaseType", COleVariant(LONG(1)));
    TakeLog();
    m_host.Type(u"a");
    ExpectSequence({"KeyDown 65 0", "KeyPress 65", "PropertyChanged Text", "Change", "KeyUp 65 0"}, TakeLog());
    m_host.Type(u"a");
    ExpectSequence({"KeyDown 65 0", "KeyPress 65", "Beep", "KeyUp 65 0"}, TakeLog()); // "#" refuses a letter
    m_host.Type(u"5b");
    EXPECT_EQ(EditText(q), u"A5B ");
    Put(q, u"CaseType", COleVariant(LONG(2)));
    m_host.Type(u"Q");
    EXPECT_EQ(EditText(q), u"A5Bq");
}

TEST_F(Keystrokes, WithoutAMaskTheEditTypesAndCaseFollows)
{
    CControlSite* q = Focused(u"");
    m_host.Type(u"ab");
    EXPECT_EQ(EditText(q), u"ab");
    Put(q, u"CaseType", COleVariant(LONG(1)));
    Select(q, 0, 1);
    TakeLog();
    m_host.Type(u"c");
    EXPECT_EQ(EditText(q), u"Cb") << "pre-translation already raised it";
    EXPECT_EQ(Caret(q), 1);
    ExpectSequence({"KeyDown 67 0", "KeyPress 67", "PropertyChanged Text", "Change", "KeyUp 67 0"}, TakeLog());
    m_host.Key(VK_BACK);
    EXPECT_EQ(GetText(q, u"Text"), u"b");
}

TEST_F(Keystrokes, PasswordCharBypassesTheMask)
{
    CControlSite* q = Focused(u"##");
    Put(q, u"PasswordChar", COleVariant(u"xyz"));
    m_host.Type(u"ab");
    EXPECT_EQ(EditText(q), u"ab") << "no mask with a password character";
    EXPECT_EQ(::SendMessage(EditHwndOf(q), EM_GETPASSWORDCHAR, 0, 0), LRESULT(u'x'));
}

TEST_F(Keystrokes, KeyPressHandlersCannotSteerTheEngine)
{
    CControlSite* q = Focused(u"##");
    q->SetEventHandler([](const EventEntry& e, VARIANT* args, UINT) {
        if (e.name == u"KeyPress") *args[0].piVal = u'7';
    });
    m_host.Type(u"x");
    EXPECT_EQ(EditText(q), u"") << "the engine goes on with its own key";
    ExpectSequence({"Beep"}, TakeLog());
}

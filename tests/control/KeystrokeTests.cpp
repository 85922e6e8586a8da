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

// "3" typed after "12-": the literal skipped, one change.
const std::vector<std::string> kTypeThreeAfterLiteral = {
    "KeyDown 51 0", "KeyPress 51", "PropertyChanged Text", "Change", "KeyUp 51 0"};

// "x" typed at a "#" placeholder: refused with a beep, no change.
const std::vector<std::string> kLetterRefusedByDigit = {"KeyDown 88 0", "KeyPress 120", "Beep", "KeyUp 88 0"};

// "5" typed with the caret after the last placeholder.
const std::vector<std::string> kDigitPastTheEnd = {"KeyDown 53 0", "KeyPress 53", "Beep", "KeyUp 53 0"};

// Delete with the caret at the end: the beep comes before the key events.
const std::vector<std::string> kDeletePastTheEnd = {"Beep", "KeyDown 46 0", "KeyUp 46 0"};

// Backspace that blanks one placeholder.
const std::vector<std::string> kBackspaceBlanksOne = {
    "KeyDown 8 0", "KeyPress 8", "PropertyChanged Text", "Change", "KeyUp 8 0"};

// Backspace over a literal, or over a selection: two changes, each reported.
const std::vector<std::string> kBackspaceInTwoSteps = {
    "KeyDown 8 0", "KeyPress 8", "PropertyChanged Text", "Change", "PropertyChanged Text", "Change", "KeyUp 8 0"};

// Backspace in an empty field: nothing changes.
const std::vector<std::string> kBackspaceInEmptyField = {"KeyDown 8 0", "KeyPress 8", "KeyUp 8 0"};

// "9" typed over a selection: erased first, then typed.
const std::vector<std::string> kTypeNineOverSelection = {
    "KeyDown 57 0", "KeyPress 57", "PropertyChanged Text", "Change", "PropertyChanged Text", "Change", "KeyUp 57 0"};

// Delete: the edit removes the character first, then the control follows.
const std::vector<std::string> kDeleteAfterTheEdit = {"PropertyChanged Text", "Change", "KeyDown 46 0", "KeyUp 46 0"};

// "a" typed with CaseType Upper.
const std::vector<std::string> kTypeUpperA = {
    "KeyDown 65 0", "KeyPress 65", "PropertyChanged Text", "Change", "KeyUp 65 0"};

// "a" typed at a "#" placeholder.
const std::vector<std::string> kLetterRefused = {"KeyDown 65 0", "KeyPress 65", "Beep", "KeyUp 65 0"};

// "c" typed without a mask, CaseType Upper.
const std::vector<std::string> kTypeUpperCWithoutMask = {
    "KeyDown 67 0", "KeyPress 67", "PropertyChanged Text", "Change", "KeyUp 67 0"};

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
    ExpectSequence(kTypeThreeAfterLiteral, TakeLog());
}

TEST_F(Keystrokes, RefusedKeysBeepAndRaiseNoChange)
{
    CControlSite* q = Focused(u"##-##");
    Prepare(q, u"12-  ", 2);
    m_host.Type(u"x");
    ExpectSequence(kLetterRefusedByDigit, TakeLog());
    EXPECT_EQ(EditText(q), u"12-  ");
    EXPECT_EQ(Caret(q), 3) << "the literal was skipped before the refusal";
    Prepare(q, u"12-34", 5);
    m_host.Type(u"5");
    ExpectSequence(kDigitPastTheEnd, TakeLog());
    m_host.Key(VK_DELETE);
    ExpectSequence(kDeletePastTheEnd, TakeLog());
    EXPECT_EQ(EditText(q), u"12-34");
}

TEST_F(Keystrokes, BackspaceRestoresTheTemplate)
{
    CControlSite* q = Focused(u"##-##");
    Prepare(q, u"12-3 ", 4);
    m_host.Key(VK_BACK);
    EXPECT_EQ(EditText(q), u"12-  ");
    EXPECT_EQ(Caret(q), 3);
    ExpectSequence(kBackspaceBlanksOne, TakeLog());

    m_host.Key(VK_BACK); // restores "-" at 2, then blanks 1
    EXPECT_EQ(EditText(q), u"1 -  ");
    EXPECT_EQ(Caret(q), 1);
    ExpectSequence(kBackspaceInTwoSteps, TakeLog());

    Prepare(q, u"12-  ", 2);
    m_host.Key(VK_BACK);
    EXPECT_EQ(EditText(q), u"1 -  ") << "the caret first moved behind the literal";

    Prepare(q, u"", 0);
    m_host.Key(VK_BACK);
    ExpectSequence(kBackspaceInEmptyField, TakeLog());
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
    ExpectSequence(kTypeNineOverSelection, TakeLog());

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
    ExpectSequence(kBackspaceInTwoSteps, TakeLog());
}

TEST_F(Keystrokes, DeleteLetsTheEditRemoveThenFollows)
{
    CControlSite* q = Focused(u"##-##");
    Prepare(q, u"12-34", 1);
    m_host.Key(VK_DELETE);
    EXPECT_EQ(EditText(q), u"1-34");
    EXPECT_EQ(Caret(q), 1);
    EXPECT_EQ(GetText(q, u"Text"), u"1-34");
    ExpectSequence(kDeleteAfterTheEdit, TakeLog());
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
    ExpectSequence(kTypeUpperA, TakeLog());
    m_host.Type(u"a");
    ExpectSequence(kLetterRefused, TakeLog()); // "#" refuses a letter
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
    ExpectSequence(kTypeUpperCWithoutMask, TakeLog());
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
    q->SetEventHandler([](const EventInfo& e, VARIANT* args, UINT) {
        if (e.name == u"KeyPress") *args[0].piVal = u'7';
    });
    m_host.Type(u"x");
    EXPECT_EQ(EditText(q), u"") << "the engine goes on with its own key";
    ExpectSequence({"Beep"}, TakeLog());
}

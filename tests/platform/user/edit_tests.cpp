// The EDIT window class: typing, keys, selection messages, password echo, clipboard, mouse, paint.
#include "gdi/standin.h"
#include "gdi/wingdi.h"
#include "spy.h"

using namespace spy;
using Lines = std::vector<std::string>;

class EditTest : public UserTest {
protected:
    void SetUp() override
    {
        UserTest::SetUp();
        form = Make("form", WS_VISIBLE, 100, 100, 300, 200);
        edit = Make("edit", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 10, 10, 120, 20, form, WC_EDIT, 210);
        L().hooks[form] = [this](HWND, UINT m, WPARAM wp, LPARAM lp, LRESULT*) {
            if (m == WM_COMMAND && (HWND)lp == edit) notes.push_back(NoteName(HIWORD(wp)));
            return false;
        };
        SetFocus(edit);
        PumpMessages();
        notes.clear();
    }
    void TearDown() override
    {
        SetFocus(nullptr);
        UserTest::TearDown();
    }
    static std::string NoteName(WORD code)
    {
        switch (code) {
        case EN_CHANGE: return "EN_CHANGE";
        case EN_UPDATE: return "EN_UPDATE";
        case EN_MAXTEXT: return "EN_MAXTEXT";
        case EN_SETFOCUS: return "EN_SETFOCUS";
        case EN_KILLFOCUS: return "EN_KILLFOCUS";
        default: return std::to_string(code);
        }
    }
    std::u16string Text()
    {
        char16_t buf[256];
        GetWindowText(edit, buf, 256);
        return buf;
    }
    std::pair<int, int> Sel()
    {
        DWORD a = 99, b = 99;
        LRESULT r = SendMessage(edit, EM_GETSEL, (WPARAM)&a, (LPARAM)&b);
        EXPECT_EQ(LOWORD(r), a);
        EXPECT_EQ(HIWORD(r), b);
        return {(int)a, (int)b};
    }
    void Type(const char16_t* s)
    {
        for (; *s; ++s) SimulateChar(*s);
        PumpMessages();
    }
    void Key(UINT vk, bool shift = false, bool ctrl = false)
    {
        if (shift) SimulateKey(VK_SHIFT, TRUE);
        if (ctrl) SimulateKey(VK_CONTROL, TRUE);
        SimulateKey(vk, TRUE);
        SimulateKey(vk, FALSE);
        if (ctrl) SimulateKey(VK_CONTROL, FALSE);
        if (shift) SimulateKey(VK_SHIFT, FALSE);
        PumpMessages();
    }
    int XOf(int pos) { return GET_X_LPARAM(SendMessage(edit, EM_POSFROMCHAR, pos, 0)); }
    HWND form{}, edit{};
    std::vector<std::string> notes;
};

TEST_F(EditTest, TypingBackspaceDeleteAndShiftArrows)
{
    Type(u"Hello");
    EXPECT_EQ(Text(), u"Hello");
    EXPECT_EQ(Sel(), std::make_pair(5, 5));
    EXPECT_EQ(notes.size(), 10u) << "EN_UPDATE and EN_CHANGE per character";
    EXPECT_EQ(notes[0], "EN_UPDATE");
    EXPECT_EQ(notes[1], "EN_CHANGE");

    Type(u"\b");
    EXPECT_EQ(Text(), u"Hell");
    Key(VK_LEFT, true);
    Key(VK_LEFT, true);
    EXPECT_EQ(Sel(), std::make_pair(2, 4));
    Type(u"y");
    EXPECT_EQ(Text(), u"Hey") << "a character replaces the selection";
    Key(VK_HOME);
    Key(VK_DELETE);
    EXPECT_EQ(Text(), u"ey");
    Key(VK_END, true);
    EXPECT_EQ(Sel(), std::make_pair(0, 2));
    Key(VK_RIGHT);
    EXPECT_EQ(Sel(), std::make_pair(2, 2)) << "Right collapses at the caret end";
    Key(VK_DELETE);
    EXPECT_EQ(Text(), u"ey") << "Delete at the end does nothing";
    Key(VK_LEFT, false, true);
    EXPECT_EQ(Sel(), std::make_pair(0, 0)) << "Ctrl+Left goes to the word's start";

    notes.clear();
    Type(u"\r\x1b");
    EXPECT_EQ(Text(), u"ey") << "Return and Escape are not text";
    EXPECT_TRUE(notes.empty());
    Key('A', false, true);
    EXPECT_EQ(Sel(), std::make_pair(0, 2)) << "Ctrl+A selects all";
}

TEST_F(EditTest, SetSelAndGetSelMeanings)
{
    SetWindowText(edit, u"abcdef");
    EXPECT_EQ(Sel(), std::make_pair(0, 0)) << "new text puts the caret at the start";
    SendMessage(edit, EM_SETSEL, 0, -1);
    EXPECT_EQ(Sel(), std::make_pair(0, 6));
    SendMessage(edit, EM_SETSEL, 4, 1);
    EXPECT_EQ(Sel(), std::make_pair(1, 4)) << "given in either order, reported in order";
    Key(VK_RIGHT, true);
    EXPECT_EQ(Sel(), std::make_pair(2, 4)) << "the caret is at the end given second";
    SendMessage(edit, EM_SETSEL, (WPARAM)-1, 0);
    EXPECT_EQ(Sel(), std::make_pair(2, 2)) << "-1 removes the selection and keeps the caret";
    SendMessage(edit, EM_SETSEL, 3, -1);
    EXPECT_EQ(Sel(), std::make_pair(3, 6)) << "-1 as end: to the end of the text";
    SendMessage(edit, EM_SETSEL, 50, 60);
    EXPECT_EQ(Sel(), std::make_pair(6, 6));
    EXPECT_EQ(SendMessage(edit, EM_GETSEL, 0, 0), MAKELONG(6, 6)) << "null out pointers are fine";

    SendMessage(edit, EM_SETSEL, 1, 3);
    notes.clear();
    SendMessage(edit, EM_REPLACESEL, FALSE, (LPARAM)u"XYZ");
    EXPECT_EQ(Text(), u"aXYZdef");
    EXPECT_EQ(Sel(), std::make_pair(4, 4));
    EXPECT_EQ(notes, (Lines{"EN_UPDATE", "EN_CHANGE"}));
    SendMessage(edit, EM_LIMITTEXT, 8, 0);
    Type(u"12");
    EXPECT_EQ(Text(), u"aXYZ1def");
    EXPECT_EQ(notes.back(), "EN_MAXTEXT");
}

TEST_F(EditTest, PasswordEchoHidesTextFromTheClipboard)
{
    HWND pw = Make("pw", WS_CHILD | WS_VISIBLE | ES_PASSWORD, 10, 40, 120, 20, form, WC_EDIT);
    EXPECT_EQ(SendMessage(pw, EM_GETPASSWORDCHAR, 0, 0), u'*');
    SetWindowText(pw, u"secret");
    auto xOf = [pw](int pos) { return GET_X_LPARAM(SendMessage(pw, EM_POSFROMCHAR, pos, 0)); };
    EXPECT_GT(xOf(2), 0);
    EXPECT_EQ(xOf(2) * 3, xOf(6)) << "every character echoes as the same width";
    SendMessage(pw, EM_SETSEL, 0, -1);
    SendMessage(pw, WM_COPY, 0, 0);
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    SendMessage(pw, WM_CUT, 0, 0);
    char16_t buf[16];
    GetWindowText(pw, buf, 16);
    EXPECT_EQ(std::u16string(buf), u"secret") << "no cut from a password";

    SendMessage(pw, EM_SETPASSWORDCHAR, 0, 0);
    EXPECT_FALSE(GetWindowLongPtr(pw, GWL_STYLE) & ES_PASSWORD);
    SendMessage(edit, EM_SETPASSWORDCHAR, u'#', 0);
    EXPECT_EQ(SendMessage(edit, EM_GETPASSWORDCHAR, 0, 0), u'#');
    EXPECT_TRUE(GetWindowLongPtr(edit, GWL_STYLE) & ES_PASSWORD);
}

TEST_F(EditTest, CutAndPasteThroughTheClipboard)
{
    Type(u"one two");
    SendMessage(edit, EM_SETSEL, 0, 4);
    Key('X', false, true);
    EXPECT_EQ(Text(), u"two");
    Key(VK_END);
    Key('V', false, true);
    EXPECT_EQ(Text(), u"twoone ");
    ASSERT_TRUE(OpenClipboard(nullptr));
    auto* p = static_cast<const char16_t*>(GetClipboardData(CF_UNICODETEXT));
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(std::u16string(p), u"one ");
    EmptyClipboard();
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, 16 * sizeof(char16_t));
    std::u16string lines = u"ab\r\ncd";
    std::copy(lines.c_str(), lines.c_str() + lines.size() + 1, static_cast<char16_t*>(GlobalLock(h)));
    SetClipboardData(CF_UNICODETEXT, h);
    CloseClipboard();
    SendMessage(edit, EM_SETSEL, 0, -1);
    SendMessage(edit, WM_PASTE, 0, 0);
    EXPECT_EQ(Text(), u"ab") << "a single line stops at the first line break";
    SendMessage(edit, EM_SETSEL, 0, 1);
    SendMessage(edit, WM_CLEAR, 0, 0);
    EXPECT_EQ(Text(), u"b");
}

TEST_F(EditTest, MouseClickDragAndDoubleClickSelect)
{
    SetWindowText(edit, u"alpha beta gamma");
    SetFocus(nullptr);
    POINT o{0, 0};
    ClientToScreen(edit, &o);
    int xBeta = XOf(6), xGamma = XOf(11);
    auto at = [&](int x) { return POINT{o.x + x, o.y + 5}; };

    POINT p = at(xBeta + 1);
    SimulateMouseButton(p.x, p.y, TRUE);
    PumpMessages();
    EXPECT_EQ(GetFocus(), edit) << "a click focuses the edit";
    EXPECT_EQ(GetCapture(), edit);
    EXPECT_EQ(Sel(), std::make_pair(6, 6));
    POINT q = at(xGamma + 1);
    SimulateMouseMove(q.x, q.y);
    SimulateMouseButton(q.x, q.y, FALSE);
    PumpMessages();
    EXPECT_EQ(Sel(), std::make_pair(6, 11));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(GetCursor(), LoadCursor(nullptr, IDC_IBEAM));

    AdvanceClock(1000);
    SimulateMouseButton(q.x, q.y, TRUE);
    SimulateMouseButton(q.x, q.y, FALSE);
    SimulateMouseButton(q.x, q.y, TRUE);
    SimulateMouseButton(q.x, q.y, FALSE);
    PumpMessages();
    EXPECT_EQ(Sel(), std::make_pair(11, 16)) << "double click selects the word";
    SimulateMouseButton(p.x, p.y, TRUE);
    SimulateMouseButton(p.x, p.y, FALSE);
    PumpMessages();
    AdvanceClock(100);
    SimulateMouseButton(p.x, p.y, TRUE);
    SimulateMouseButton(p.x, p.y, FALSE);
    PumpMessages();
    EXPECT_EQ(Sel(), std::make_pair(6, 11)) << "with the blank that follows it";
}

TEST_F(EditTest, ScrollCaretKeepsTheCaretInsideTheWindow)
{
    std::u16string lng(60, u'w');
    SetWindowText(edit, lng.c_str());
    SendMessage(edit, EM_SETSEL, 60, 60);
    EXPECT_GT(XOf(60), 120) << "EM_SETSEL alone does not scroll";
    SendMessage(edit, EM_SCROLLCARET, 0, 0);
    EXPECT_GE(XOf(60), 0);
    EXPECT_LT(XOf(60), 120);
    Key(VK_HOME);
    EXPECT_EQ(XOf(0), 0);
    SendMessage(edit, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELONG(4, 6));
    EXPECT_EQ(SendMessage(edit, EM_GETMARGINS, 0, 0), MAKELONG(4, 6));
    EXPECT_EQ(XOf(0), 4);
    CaretState cs;
    ASSERT_TRUE(GetCaretState(&cs));
    EXPECT_EQ(cs.hwnd, edit);
    EXPECT_EQ(cs.rc.left, 4);
}

TEST_F(EditTest, PaintAsksTheParentForColoursAndHighlightsTheSelection)
{
    HBRUSH hbr = CreateSolidBrush(RGB(0xFF, 0xFF, 0xC0));
    int asked = 0;
    L().hooks[form] = [&](HWND, UINT m, WPARAM wp, LPARAM, LRESULT* r) {
        if (m != WM_CTLCOLOREDIT) return false;
        ++asked;
        SetTextColor((HDC)wp, RGB(0, 0, 0x80));
        SetBkColor((HDC)wp, RGB(0xFF, 0xFF, 0xC0));
        *r = (LRESULT)hbr;
        return true;
    };
    SetWindowText(edit, u"MMMM");
    SendMessage(edit, EM_SETSEL, 0, 2);
    PumpMessages();
    EXPECT_EQ(asked, 1);
    const DWORD* px = GdiBitmapPixels(GetWindowSurface(edit));
    ASSERT_NE(px, nullptr);
    auto pixel = [&](int x, int y) { return px[y * 120 + x]; };
    EXPECT_EQ(pixel(119, 19), 0xFFFFC0u) << "the parent's brush, as 0x00RRGGBB";
    int x1 = XOf(1);
    EXPECT_EQ(pixel(x1, 1), 0x3399FFu) << "COLOR_HIGHLIGHT behind the selection";
    bool anyText = false;
    for (int x = XOf(2); x < XOf(4); ++x)
        for (int y = 0; y < 20; ++y) anyText |= pixel(x, y) == 0x000080u;
    EXPECT_TRUE(anyText) << "unselected text in the parent's text colour";

    SetFocus(nullptr);
    PumpMessages();
    EXPECT_EQ(asked, 2) << "asked again at the next paint";
    EXPECT_EQ(GetWindowSurface(edit) ? GdiBitmapPixels(GetWindowSurface(edit))[1 * 120 + x1] : 0, 0xFFFFC0u)
        << "no highlight without the focus";
    L().hooks.erase(form);
    DeleteObject(hbr);
}

// The edit keeps the x of every boundary across changes and redoes only what follows the first
// changed character: after any change, a font or a password character, each boundary must still
// lie where measuring its whole prefix puts it.
TEST_F(EditTest, BoundariesFollowEveryChangeOfTextFontAndEcho)
{
    LOGFONTW lf{};
    lf.lfHeight = -20;
    HFONT big = CreateFontIndirect(&lf);
    auto expectBoundaries = [this](HFONT font, const std::u16string& shown, const char* when) {
        HDC dc = CreateCompatibleDC(nullptr);
        HGDIOBJ old = font ? SelectObject(dc, font) : nullptr;
        for (int pos = 0; pos <= (int)shown.size(); ++pos) {
            SIZE sz{0, 0};
            if (pos) GetTextExtentPoint32(dc, shown.data(), pos, &sz);
            EXPECT_EQ(XOf(pos) - XOf(0), sz.cx) << when << ", boundary " << pos;
        }
        if (old) SelectObject(dc, old);
        DeleteDC(dc);
    };
    const std::u16string texts[] = {u"abcdef", u"abXdef", u"Wbcdefgh", u"a\U0001F600bc", u"a\U0001F600", u"a"};
    for (const std::u16string& t : texts) {
        SetWindowText(edit, t.c_str());
        expectBoundaries(nullptr, t, "text");
    }
    SendMessage(edit, WM_SETFONT, (WPARAM)big, FALSE);
    SetWindowText(edit, u"abcdef");
    expectBoundaries(big, u"abcdef", "font");
    SendMessage(edit, EM_SETPASSWORDCHAR, u'*', 0);
    expectBoundaries(big, u"******", "echo");
    SendMessage(edit, EM_SETPASSWORDCHAR, 0, 0);
    SendMessage(edit, WM_SETFONT, 0, FALSE);
    DeleteObject(big);
}

// Without ES_AUTOHSCROLL a paste keeps the longest start that fits the width, and says it cut.
TEST_F(EditTest, APasteIntoAFixedEditKeepsWhatFits)
{
    HWND fixed = Make("fixed", WS_CHILD | WS_VISIBLE, 10, 40, 120, 20, form, WC_EDIT, 211);
    std::u16string text(500, u'm');
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(char16_t));
    std::copy(text.c_str(), text.c_str() + text.size() + 1, static_cast<char16_t*>(GlobalLock(h)));
    GlobalUnlock(h);
    SetClipboardData(CF_UNICODETEXT, h);
    CloseClipboard();
    SendMessage(fixed, WM_PASTE, 0, 0);
    char16_t buf[600];
    int n = GetWindowText(fixed, buf, 600);
    RECT rc;
    GetClientRect(fixed, &rc);
    int x = GET_X_LPARAM(SendMessage(fixed, EM_POSFROMCHAR, n - 1, 0));
    SIZE one{};
    HDC dc = CreateCompatibleDC(nullptr);
    GetTextExtentPoint32(dc, u"m", 1, &one);
    DeleteDC(dc);
    EXPECT_GT(n, 0);
    EXPECT_LE(x + one.cx, rc.right) << "the last character kept fits";
    EXPECT_GT(x + 2 * one.cx, rc.right) << "one more would not";
}

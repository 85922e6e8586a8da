// Dialogs: the base-unit arithmetic, layout from a template, Tab, Enter and Escape, the modal loop,
// the drop-down combo box, and the common file dialogs.
#include "gdi/standin.h"
#include "gdi/wingdi.h"
#include "spy.h"
#include "user/commdlg.h"

using namespace spy;
using Lines = std::vector<std::string>;

TEST(DialogUnits, BaseUnitsAndRectanglesByTable)
{
    // The 52 letters' extent rounds to the nearest whole average; the height is the font's.
    struct { int extent, height, cx, cy; } units[] = {
        {312, 13, 6, 13}, {337, 13, 6, 13}, {338, 13, 7, 13}, {364, 16, 7, 16}, {0, 0, 0, 0},
    };
    for (auto& u : units) {
        DLGBASEUNITS b = DialogBaseUnitsFromFont(u.extent, u.height);
        EXPECT_EQ(b.cx, u.cx) << u.extent;
        EXPECT_EQ(b.cy, u.cy) << u.extent;
    }
    // x * cx / 4 and y * cy / 8, each rounded to nearest (MulDiv), halves away from zero.
    struct { RECT du; DLGBASEUNITS b; RECT px; } rects[] = {
        {{57, 3, 249, 15}, {6, 13}, {86, 5, 374, 24}},
        {{0, 0, 260, 146}, {6, 13}, {0, 0, 390, 237}},
        {{2, 4, 6, 12}, {6, 13}, {3, 7, 9, 20}},
        {{1, 1, 3, 3}, {7, 16}, {2, 2, 5, 6}},
        {{-10, -4, 0, 0}, {6, 13}, {-15, -7, 0, 0}},
    };
    for (auto& r : rects) {
        RECT px = DialogRectToPixels(r.du, r.b);
        EXPECT_EQ(px.left, r.px.left);
        EXPECT_EQ(px.top, r.px.top);
        EXPECT_EQ(px.right, r.px.right);
        EXPECT_EQ(px.bottom, r.px.bottom);
    }
}

namespace {

enum { IDC_NAME = 100, IDC_CHECK = 101, IDC_COMBO = 102, IDC_LABEL = 103 };

const DLGITEMTEMPLATE kItems[] = {
    {SS_LEFT, 0, 4, 4, 40, 8, IDC_LABEL, WC_STATIC, u"Name :"},
    {WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, 0, 50, 3, 100, 12, IDC_NAME, WC_EDIT, u""},
    {WS_TABSTOP | BS_AUTOCHECKBOX, 0, 4, 20, 60, 10, IDC_CHECK, WC_BUTTON, u"Check"},
    {WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN, 0, 50, 36, 80, 60, IDC_COMBO, WC_COMBOBOX, u""},
    {WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 110, 80, 40, 14, IDOK, WC_BUTTON, u"OK"},
    {WS_TABSTOP | BS_PUSHBUTTON, 0, 155, 80, 40, 14, IDCANCEL, WC_BUTTON, u"Cancel"},
};
const DLGTEMPLATE kDialog = {WS_POPUP | WS_CAPTION | DS_SETFONT | DS_MODALFRAME, 0, 10, 10, 200, 100, u"Test",
                             8, u"MS Shell Dlg", kItems, 6};

Lines g_commands;

INT_PTR RecordingProc(HWND hDlg, UINT msg, WPARAM wp, LPARAM)
{
    if (msg == WM_INITDIALOG) return TRUE;
    if (msg != WM_COMMAND || HIWORD(wp) != BN_CLICKED) return FALSE;
    g_commands.push_back(std::to_string(LOWORD(wp)) + " " + std::to_string(HIWORD(wp)));
    if (LOWORD(wp) == IDOK || LOWORD(wp) == IDCANCEL) EndDialog(hDlg, LOWORD(wp));
    return TRUE;
}

} // namespace

class DialogTest : public UserTest {
protected:
    void SetUp() override
    {
        UserTest::SetUp();
        g_commands.clear();
        owner = Make("owner", WS_VISIBLE, 0, 0, 600, 400);
    }
    void TearDown() override
    {
        SetModalDialogHook(nullptr);
        if (dlg) DestroyWindow(dlg);
        UserTest::TearDown();
    }
    void Open()
    {
        dlg = CreateDialogIndirectParam(nullptr, &kDialog, owner, &RecordingProc, 0);
        ASSERT_TRUE(dlg);
        ShowWindow(dlg, SW_SHOW);
        PumpMessages();
    }
    static void Key(UINT vk, bool shift = false)
    {
        if (shift) SimulateKey(VK_SHIFT, TRUE);
        SimulateKey(vk, TRUE);
        SimulateKey(vk, FALSE);
        if (shift) SimulateKey(VK_SHIFT, FALSE);
    }
    // Keys go through the dialog manager as a modal loop would.
    void Deliver()
    {
        MSG msg;
        while (PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE))
            if (!IsDialogMessage(dlg, &msg)) { TranslateMessage(&msg); DispatchMessage(&msg); }
    }
    int FocusId() { return GetDlgCtrlID(GetParent(GetFocus()) == dlg ? GetFocus() : GetParent(GetFocus())); }
    RECT ItemRect(int id)
    {
        RECT rc{};
        GetWindowRect(GetDlgItem(dlg, id), &rc);
        MapWindowPoints(nullptr, dlg, reinterpret_cast<POINT*>(&rc), 2);
        return rc;
    }
    HWND owner{}, dlg{};
};

TEST_F(DialogTest, ItemsArePlacedFromDialogUnitsOfTheDialogFont)
{
    Open();
    DLGBASEUNITS u = DialogBaseUnitsOf((HFONT)SendMessage(dlg, WM_GETFONT, 0, 0));
    EXPECT_GT(u.cx, 3);
    EXPECT_GT(u.cy, 8);
    RECT mapped{4, 20, 64, 30};
    MapDialogRect(dlg, &mapped);
    POINT off = GetDialogClientOffset(dlg);
    EXPECT_EQ(off.y, DLG_CAPTION_CY) << "a captioned dialog's controls start below its caption";
    RECT check = ItemRect(IDC_CHECK);
    EXPECT_EQ(check.left, mapped.left + off.x);
    EXPECT_EQ(check.top, mapped.top + off.y);
    EXPECT_EQ(check.right, mapped.right + off.x);
    RECT edit = ItemRect(IDC_NAME), du{50, 3, 150, 15};
    MapDialogRect(dlg, &du);
    EXPECT_EQ(edit.left, du.left + off.x + 2) << "a bordered edit leaves two pixels for its sunken edge";
    EXPECT_EQ(edit.bottom, du.bottom + off.y - 2);
    RECT combo = ItemRect(IDC_COMBO);
    EXPECT_LT(combo.bottom - combo.top, 30) << "the field is one line high; the template's height is the open list's";
    RECT rc{};
    GetWindowRect(dlg, &rc);
    RECT all{0, 0, 200, 100};
    MapDialogRect(dlg, &all);
    EXPECT_EQ(rc.right - rc.left, all.right + 2 * DLG_FRAME_CX);
    EXPECT_EQ(rc.bottom - rc.top, all.bottom + DLG_CAPTION_CY + DLG_FRAME_CX);
}

TEST_F(DialogTest, TabShiftTabEnterEscapeAndSpace)
{
    Open();
    SetActiveWindow(dlg);
    PumpMessages();
    EXPECT_EQ(FocusId(), IDC_NAME) << "the first tab stop has the focus; the label is no tab stop";
    std::vector<int> order;
    for (int i = 0; i < 5; ++i) { Key(VK_TAB); Deliver(); order.push_back(FocusId()); }
    EXPECT_EQ(order, (std::vector<int>{IDC_CHECK, IDC_COMBO, IDOK, IDCANCEL, IDC_NAME}));
    Key(VK_TAB, true);
    Deliver();
    EXPECT_EQ(FocusId(), IDCANCEL) << "Shift+Tab goes back, round the end";
    Key(VK_TAB, true);
    Key(VK_TAB, true);
    Key(VK_TAB, true);
    Deliver();
    EXPECT_EQ(FocusId(), IDC_CHECK);
    Key(VK_SPACE);
    Deliver();
    EXPECT_EQ(IsDlgButtonChecked(dlg, IDC_CHECK), (UINT)BST_CHECKED);
    Key(VK_TAB);
    Key(VK_RETURN);
    Deliver();
    Key(VK_TAB);
    Key(VK_TAB);
    Key(VK_RETURN);
    Deliver();
    Key(VK_ESCAPE);
    Deliver();
    EXPECT_EQ(g_commands, (Lines{"101 0", "1 0", "2 0", "2 0"}))
        << "Space clicks the box; Enter in the combo presses the default OK, on Cancel presses Cancel; Escape is Cancel";
}

TEST_F(DialogTest, ModalLoopRunsTheHostsAnswerAndCancelsWhenNobodyAnswers)
{
    EXPECT_EQ(DialogBoxIndirectParam(nullptr, &kDialog, owner, &RecordingProc, 0), IDCANCEL);
    EXPECT_EQ(g_commands, (Lines{"2 0"})) << "with nobody to answer, the dialog ends as by Escape";

    g_commands.clear();
    bool ownerDisabled = false;
    int ticks = 0;
    L().hooks[owner] = [&](HWND, UINT m, WPARAM, LPARAM, LRESULT*) { if (m == WM_TIMER) ++ticks; return false; };
    SetTimer(owner, 7, 100, nullptr);
    SetModalDialogHook([&](HWND hDlg) {
        ownerDisabled = !IsWindowEnabled(owner);
        EXPECT_EQ(GetModalDialogDepth(), 1);
        AdvanceClock(350);
        SimulateChar(u'x');
        Key(VK_RETURN);
        PumpMessages();
        char16_t buf[8] = {};
        GetDlgItemText(hDlg, IDC_NAME, buf, 8);
        EXPECT_EQ(std::u16string(buf), u"x");
    });
    EXPECT_EQ(DialogBoxIndirectParam(nullptr, &kDialog, owner, &RecordingProc, 0), IDOK);
    KillTimer(owner, 7);
    EXPECT_TRUE(ownerDisabled);
    EXPECT_TRUE(IsWindowEnabled(owner)) << "the owner is enabled again after the loop";
    EXPECT_EQ(ticks, 3) << "the host's clock runs while the dialog is up";
    EXPECT_EQ(g_commands, (Lines{"1 0"}));
}

class ComboTest : public UserTest {
protected:
    void SetUp() override
    {
        UserTest::SetUp();
        form = Make("form", WS_VISIBLE, 100, 100, 300, 200);
        L().hooks[form] = [this](HWND, UINT m, WPARAM wp, LPARAM, LRESULT*) {
            if (m == WM_COMMAND && LOWORD(wp) >= 300) notes.push_back(Note(HIWORD(wp)));
            return false;
        };
    }
    HWND MakeCombo(DWORD style, std::initializer_list<const char16_t*> lines, int id = 300)
    {
        HWND h = CreateWindowEx(0, WC_COMBOBOX, u"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWN | style, 10, 10,
                                150, 120, form, (HMENU)(intptr_t)id, nullptr, nullptr);
        SendMessage(h, WM_SETFONT, (WPARAM)GetStockObject(DEFAULT_GUI_FONT), 0);
        for (auto* s : lines) SendMessage(h, CB_ADDSTRING, 0, (LPARAM)s);
        return h;
    }
    static std::string Note(WORD code)
    {
        static const char* names[] = {"0", "SELCHANGE", "DBLCLK", "SETFOCUS", "KILLFOCUS", "EDITCHANGE", "EDITUPDATE",
                                      "DROPDOWN", "CLOSEUP", "SELENDOK", "SELENDCANCEL"};
        return code <= 10 ? names[code] : std::to_string(code);
    }
    static std::u16string Line(HWND h, int i)
    {
        char16_t buf[64] = {};
        SendMessage(h, CB_GETLBTEXT, i, (LPARAM)buf);
        return buf;
    }
    static std::u16string Text(HWND h)
    {
        char16_t buf[64] = {};
        GetWindowText(h, buf, 64);
        return buf;
    }
    static void Key(UINT vk)
    {
        SimulateKey(vk, TRUE);
        SimulateKey(vk, FALSE);
        PumpMessages();
    }
    HWND List()
    {
        for (HWND h = GetTopWindow(nullptr); h; h = GetWindow(h, GW_HWNDNEXT))
            if (IsWindowVisible(h) && GetWindowLongPtr(h, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) return h;
        return nullptr;
    }
    HWND form{};
    Lines notes;
};

TEST_F(ComboTest, SortedAndUnsortedLinesAndFinding)
{
    HWND sorted = MakeCombo(CBS_SORT, {u"2 - Vertical", u"10 - Ellipse", u"1 - Horizontal"});
    HWND plain = MakeCombo(0, {u"2 - Vertical", u"10 - Ellipse", u"1 - Horizontal"}, 301);
    EXPECT_EQ(Line(sorted, 0), u"1 - Horizontal");
    EXPECT_EQ(Line(sorted, 1), u"10 - Ellipse") << "sorted as text, 10 before 2";
    EXPECT_EQ(Line(sorted, 2), u"2 - Vertical");
    EXPECT_EQ(Line(plain, 0), u"2 - Vertical") << "without CBS_SORT the lines keep their order";
    EXPECT_EQ(SendMessage(plain, CB_INSERTSTRING, 1, (LPARAM)u"x"), 1);
    EXPECT_EQ(SendMessage(plain, CB_GETCOUNT, 0, 0), 4);
    EXPECT_EQ(SendMessage(sorted, CB_FINDSTRING, (WPARAM)-1, (LPARAM)u"1"), 0);
    EXPECT_EQ(SendMessage(sorted, CB_FINDSTRING, 0, (LPARAM)u"1"), 1) << "the search starts after the given line";
    EXPECT_EQ(SendMessage(sorted, CB_FINDSTRINGEXACT, (WPARAM)-1, (LPARAM)u"2 - VERTICAL"), 2);
    EXPECT_EQ(SendMessage(sorted, CB_SETCURSEL, 7, 0), CB_ERR);
    EXPECT_EQ(SendMessage(sorted, CB_SETCURSEL, 2, 0), 2);
    EXPECT_EQ(Text(sorted), u"2 - Vertical");
    EXPECT_EQ(SendMessage(sorted, CB_GETCURSEL, 0, 0), 2);
    EXPECT_TRUE(notes.empty()) << "changes made by messages are not notified";
}

TEST_F(ComboTest, TypingKeysAndTheDropDownList)
{
    HWND h = MakeCombo(0, {u"0 - None", u"1 - Upper", u"2 - Lower"});
    SendMessage(h, CB_SETCURSEL, 1, 0);
    SetFocus(h);
    PumpMessages();
    notes.clear();
    SimulateChar(u'2');
    PumpMessages();
    EXPECT_EQ(Text(h), u"2") << "focus selected the text; typing replaced it";
    EXPECT_EQ(SendMessage(h, CB_GETCURSEL, 0, 0), CB_ERR) << "typed text takes the selection away";
    EXPECT_EQ(notes, (Lines{"EDITUPDATE", "EDITCHANGE"}));

    notes.clear();
    Key(VK_F4);
    ASSERT_TRUE(List());
    EXPECT_TRUE(SendMessage(h, CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(SendMessage(h, CB_GETCURSEL, 0, 0), 2) << "the open list starts on the line the text begins";
    Key(VK_UP);
    EXPECT_EQ(Text(h), u"1 - Upper");
    Key(VK_RETURN);
    EXPECT_FALSE(List());
    EXPECT_EQ(SendMessage(h, CB_GETCURSEL, 0, 0), 1);
    EXPECT_EQ(notes, (Lines{"DROPDOWN", "SELCHANGE", "SELENDOK", "CLOSEUP"}));

    notes.clear();
    Key(VK_DOWN);
    EXPECT_EQ(Text(h), u"2 - Lower") << "Down with the list closed moves the selection too";
    Key(VK_DOWN);
    EXPECT_EQ(notes, (Lines{"SELCHANGE"})) << "not past the last line";

    // The mouse: a click on the button opens the list, a click on a row picks it.
    RECT rc{};
    GetWindowRect(h, &rc);
    SimulateMouseButton(rc.right - 5, rc.top + 5, TRUE);
    SimulateMouseButton(rc.right - 5, rc.top + 5, FALSE);
    PumpMessages();
    HWND list = List();
    ASSERT_TRUE(list);
    RECT lr{};
    GetWindowRect(list, &lr);
    EXPECT_EQ(lr.top, rc.bottom) << "the list opens right under the field";
    int item = (int)SendMessage(h, CB_GETITEMHEIGHT, 0, 0);
    SimulateMouseButton(lr.left + 10, lr.top + 1 + item / 2, TRUE);
    SimulateMouseButton(lr.left + 10, lr.top + 1 + item / 2, FALSE);
    PumpMessages();
    EXPECT_FALSE(List());
    EXPECT_EQ(Text(h), u"0 - None");
    EXPECT_EQ(SendMessage(h, CB_GETCURSEL, 0, 0), 0);

    // A click elsewhere closes it and keeps the selection.
    SendMessage(h, CB_SHOWDROPDOWN, TRUE, 0);
    SimulateMouseButton(290, 290, TRUE);
    SimulateMouseButton(290, 290, FALSE);
    PumpMessages();
    EXPECT_FALSE(List());
    EXPECT_EQ(SendMessage(h, CB_GETCURSEL, 0, 0), 0);
    SetFocus(nullptr);
}

TEST_F(ComboTest, LongListScrollsToKeepTheSelectionInView)
{
    HWND h = MakeCombo(0, {u"0", u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8", u"9", u"10", u"11", u"12", u"13"});
    SetFocus(h);
    SendMessage(h, CB_SHOWDROPDOWN, TRUE, 0);
    PumpMessages();
    HWND list = List();
    ASSERT_TRUE(list);
    RECT lr{}, rc{};
    GetWindowRect(list, &lr);
    GetWindowRect(h, &rc);
    int item = (int)SendMessage(h, CB_GETITEMHEIGHT, 0, 0);
    int rows = (lr.bottom - lr.top - 2) / item;
    EXPECT_LT(rows, 14) << "the rows fit the height given at creation";
    EXPECT_EQ(rows, (120 - (rc.bottom - rc.top) - 2) / item);
    for (int i = 0; i < 13; ++i) Key(VK_DOWN);
    EXPECT_EQ(Text(h), u"12");
    // The last row on show is the selected one: a click on it picks it.
    SimulateMouseButton(lr.left + 10, lr.top + 1 + (rows - 1) * item + 2, TRUE);
    SimulateMouseButton(lr.left + 10, lr.top + 1 + (rows - 1) * item + 2, FALSE);
    PumpMessages();
    EXPECT_EQ(Text(h), u"12");
    EXPECT_FALSE(List());
    SetFocus(nullptr);
}

// The common file dialogs answer with the host's choice: the default extension goes to a name that
// has none, and a path longer than the caller's buffer is refused, as the real dialog refuses it.
TEST(CommonFileDialog, HostAnswersIntoTheCallersBuffer)
{
    char16_t file[16] = u"in";
    OPENFILENAME ofn{sizeof(OPENFILENAME), nullptr, nullptr, file, 16, 0, u"xml"};
    EXPECT_FALSE(GetSaveFileName(&ofn)) << "without a host every dialog is cancelled";
    CString answer;
    Lines asked;
    SetFileDialogHook([&](BOOL bOpen, const CString& initial, CString& path) {
        asked.push_back((bOpen ? "open " : "save ") + ToUtf8(initial));
        path = answer;
        return true;
    });
    answer = u"/a.b/c";
    EXPECT_TRUE(GetSaveFileName(&ofn));
    EXPECT_EQ(CString(file), u"/a.b/c.xml");
    answer = u"/d.txt";
    EXPECT_TRUE(GetOpenFileName(&ofn));
    EXPECT_EQ(CString(file), u"/d.txt");
    answer = u"/fifteen/chars";
    EXPECT_FALSE(GetOpenFileName(&ofn)) << "no room for the extension and the terminator";
    EXPECT_EQ(CString(file), u"/d.txt");
    EXPECT_EQ(asked, (Lines{"save in", "open /a.b/c.xml", "open /d.txt"}));
    SetFileDialogHook(nullptr);
}

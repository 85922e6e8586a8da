// CDialog and CDialogEx: a template of the module run modally, lines from its initialisation data,
// UpdateData both ways through DDX_Text, DDX_Check and DDX_CBIndex, and a failed exchange.
#include "framework/dialog.h"
#include "gdi/standin.h"
#include "spy.h"

namespace {

enum { IDD_TEST = 900, IDC_COUNT = 10, IDC_NAME = 11, IDC_FLAG = 12, IDC_KIND = 13 };

const DLGITEMTEMPLATE kItems[] = {
    {WS_TABSTOP | WS_BORDER, 0, 5, 5, 40, 12, IDC_COUNT, WC_EDIT, u""},
    {WS_TABSTOP | WS_BORDER, 0, 5, 20, 80, 12, IDC_NAME, WC_EDIT, u""},
    {WS_TABSTOP | BS_AUTOCHECKBOX, 0, 5, 35, 60, 10, IDC_FLAG, WC_BUTTON, u"Flag"},
    {WS_TABSTOP | CBS_DROPDOWN | CBS_SORT, 0, 5, 50, 80, 60, IDC_KIND, WC_COMBOBOX, u""},
    {WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 100, 5, 40, 14, IDOK, WC_BUTTON, u"OK"},
    {WS_TABSTOP, 0, 100, 22, 40, 14, IDCANCEL, WC_BUTTON, u"Cancel"},
};
const DLGTEMPLATE kTemplate = {WS_POPUP | WS_CAPTION | DS_SETFONT, 0, 0, 0, 150, 80, u"Data", 8, u"MS Shell Dlg", kItems, 6};
const DLGINITENTRY kInit[] = {{IDC_KIND, CB_ADDSTRING, u"b - second"}, {IDC_KIND, CB_ADDSTRING, u"a - first"}};

class CDataDialog : public CDialogEx {
public:
    CDataDialog() : CDialogEx(IDD_TEST) {}
    int m_nCount = 7, m_bFlag = 1, m_nKind = 1;
    CString m_strName = u"seven";
    void DoDataExchange(CDataExchange* pDX) override
    {
        DDX_Text(pDX, IDC_COUNT, m_nCount);
        DDX_Text(pDX, IDC_NAME, m_strName);
        DDX_Check(pDX, IDC_FLAG, m_bFlag);
        DDX_CBIndex(pDX, IDC_KIND, m_nKind);
    }
};

CString Text(HWND hDlg, int id)
{
    CString s;
    CWnd::FromHandle(::GetDlgItem(hDlg, id))->GetWindowText(s);
    return s;
}

void Replace(HWND hDlg, int id, const char16_t* text)
{
    HWND h = ::GetDlgItem(hDlg, id);
    ::SendMessage(h, EM_SETSEL, 0, -1);
    ::SendMessage(h, EM_REPLACESEL, 0, (LPARAM)text);
}

} // namespace

class DialogClassTest : public spy::UserTest {
protected:
    void SetUp() override
    {
        UserTest::SetUp();
        RegisterDialogResource(IDD_TEST, &kTemplate, kInit, 2);
    }
    void TearDown() override
    {
        SetModalDialogHook(nullptr);
        UserTest::TearDown();
    }
};

TEST_F(DialogClassTest, MembersReachTheFieldsAndComeBackOnOK)
{
    CDataDialog dlg;
    SetModalDialogHook([](HWND hDlg) {
        EXPECT_EQ(Text(hDlg, IDC_COUNT), u"7");
        EXPECT_EQ(Text(hDlg, IDC_NAME), u"seven");
        EXPECT_EQ(::IsDlgButtonChecked(hDlg, IDC_FLAG), (UINT)BST_CHECKED);
        EXPECT_EQ(Text(hDlg, IDC_KIND), u"b - second") << "index 1 of the sorted lines";
        Replace(hDlg, IDC_COUNT, u" -12 ");
        Replace(hDlg, IDC_NAME, u"twelve");
        ::SendDlgItemMessage(hDlg, IDC_FLAG, BM_CLICK, 0, 0);
        ::SendDlgItemMessage(hDlg, IDC_KIND, CB_SETCURSEL, 0, 0);
        ::SendDlgItemMessage(hDlg, IDOK, BM_CLICK, 0, 0);
    });
    EXPECT_EQ(dlg.DoModal(), IDOK);
    EXPECT_EQ(dlg.m_nCount, -12);
    EXPECT_EQ(dlg.m_strName, u"twelve");
    EXPECT_EQ(dlg.m_bFlag, 0);
    EXPECT_EQ(dlg.m_nKind, 0);
    EXPECT_EQ(dlg.GetSafeHwnd(), nullptr) << "DoModal destroys the window";
}

TEST_F(DialogClassTest, ABadNumberKeepsTheDialogOpenAndCancelLeavesTheMembers)
{
    CDataDialog dlg;
    int beeps = GetMessageBeepCount();
    SetModalDialogHook([](HWND hDlg) {
        Replace(hDlg, IDC_NAME, u"changed");
        Replace(hDlg, IDC_COUNT, u"12a");
        ::SendDlgItemMessage(hDlg, IDOK, BM_CLICK, 0, 0);
        EXPECT_TRUE(::IsWindowVisible(hDlg)) << "the exchange failed: the dialog stays";
        EXPECT_EQ(::GetFocus(), ::GetDlgItem(hDlg, IDC_COUNT)) << "the field that failed has the focus";
    });
    EXPECT_EQ(dlg.DoModal(), IDCANCEL) << "nobody answers after the hook: Cancel";
    EXPECT_EQ(GetMessageBeepCount(), beeps + 1);
    EXPECT_EQ(dlg.m_nCount, 7);
    EXPECT_EQ(dlg.m_strName, u"seven") << "the exchange stopped at the failing field, before the name";
}

// CDialogDriver: fields, tabs and buttons of a dialog, changed as a person would change them.
#include "host/DialogDriver.h"
#include "com/proppage.h"

namespace {
CString WindowText(HWND h)
{
    int n = ::GetWindowTextLength(h);
    std::u16string s(n + 1, u'\0');
    n = ::GetWindowText(h, s.data(), n + 1);
    s.resize(n > 0 ? n : 0);
    return CString(std::move(s));
}
} // namespace

CString CDialogDriver::Caption() const { return WindowText(m_hDlg); }

bool CDialogDriver::IsFrame() const { return ::SendMessage(m_hDlg, PSM_GETPAGECOUNT_STANDIN, 0, 0) > 0; }

std::vector<CString> CDialogDriver::PageTitles() const
{
    std::vector<CString> out;
    int n = static_cast<int>(::SendMessage(m_hDlg, PSM_GETPAGECOUNT_STANDIN, 0, 0));
    HWND current = reinterpret_cast<HWND>(::SendMessage(m_hDlg, PSM_GETCURRENTPAGEHWND, 0, 0));
    int at = -1;
    for (int i = 0; i < n; ++i) {
        if (reinterpret_cast<HWND>(::SendMessage(m_hDlg, PSM_INDEXTOHWND, i, 0)) == current) at = i;
    }
    // A page has a window only while it is shown: each is visited to read its title.
    for (int i = 0; i < n; ++i) {
        ::SendMessage(m_hDlg, PSM_SETCURSEL, i, 0);
        out.push_back(WindowText(reinterpret_cast<HWND>(::SendMessage(m_hDlg, PSM_GETCURRENTPAGEHWND, 0, 0))));
    }
    if (at >= 0) ::SendMessage(m_hDlg, PSM_SETCURSEL, at, 0);
    return out;
}

bool CDialogDriver::SelectPage(const CString& title)
{
    int n = static_cast<int>(::SendMessage(m_hDlg, PSM_GETPAGECOUNT_STANDIN, 0, 0));
    for (int i = 0; i < n; ++i) {
        ::SendMessage(m_hDlg, PSM_SETCURSEL, i, 0);
        if (WindowText(reinterpret_cast<HWND>(::SendMessage(m_hDlg, PSM_GETCURRENTPAGEHWND, 0, 0))) == title) return true;
    }
    return false;
}

HWND CDialogDriver::Field(int id) const
{
    if (IsFrame()) {
        HWND page = reinterpret_cast<HWND>(::SendMessage(m_hDlg, PSM_GETCURRENTPAGEHWND, 0, 0));
        if (HWND h = page ? ::GetDlgItem(page, id) : nullptr) return h;
    }
    return ::GetDlgItem(m_hDlg, id);
}

CString CDialogDriver::Text(HWND field) const { return WindowText(field); }

void CDialogDriver::SetText(HWND field, const CString& text)
{
    HWND edit = field;
    if (HWND inner = ::GetWindow(field, GW_CHILD)) edit = inner;   // a combo box's edit
    ::SetFocus(edit);
    ::SendMessage(edit, EM_SETSEL, 0, -1);
    ::SendMessage(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.GetString()));
}

bool CDialogDriver::Checked(HWND field) const { return ::SendMessage(field, BM_GETCHECK, 0, 0) == BST_CHECKED; }

void CDialogDriver::SetChecked(HWND field, bool checked)
{
    if (Checked(field) != checked) ::SendMessage(field, BM_CLICK, 0, 0);
}

int CDialogDriver::Index(HWND field) const { return static_cast<int>(::SendMessage(field, CB_GETCURSEL, 0, 0)); }

void CDialogDriver::SetIndex(HWND field, int index)
{
    ::SendMessage(field, CB_SETCURSEL, index, 0);
    ::SendMessage(::GetParent(field), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(field), CBN_SELCHANGE), reinterpret_cast<LPARAM>(field));
}

std::vector<CString> CDialogDriver::Lines(HWND field) const
{
    std::vector<CString> out;
    int n = static_cast<int>(::SendMessage(field, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < n; ++i) {
        std::u16string s(::SendMessage(field, CB_GETLBTEXTLEN, i, 0) + 1, u'\0');
        int len = static_cast<int>(::SendMessage(field, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(s.data())));
        s.resize(len > 0 ? len : 0);
        out.push_back(CString(std::move(s)));
    }
    return out;
}

bool CDialogDriver::Press(const CString& name)
{
    int id = name == u"OK" ? IDOK : name == u"Cancel" ? IDCANCEL : name == u"Apply" ? ID_APPLY_NOW : 0;
    return id && Press(id);
}

bool CDialogDriver::Press(int id)
{
    HWND button = ::GetDlgItem(m_hDlg, id);
    if (!button) button = Field(id);
    if (!button && id == IDCANCEL) {
        // A dialog without a Cancel button is still closed as by Escape.
        ::SendMessage(m_hDlg, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
        return true;
    }
    if (!button) return false;
    ::SendMessage(button, BM_CLICK, 0, 0);
    return true;
}

// CDialog and CDialogEx: templates of the module, the modal loop, OK and Cancel, UpdateData and the
// DDX_ functions.
#include "dialog.h"
#include <cassert>
#include <cstdio>
#include "gdi/wingdi.h"

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    AFX_MSG_THUNK(WM_INITDIALOG, return self->HandleInitDialog();)
    AFX_MSG_THUNK(WM_COMMAND, return self->OnCommand(wParam, lParam) ? 0 : self->Default();)
END_MESSAGE_MAP()

INT_PTR AfxDlgProc(HWND hWnd, UINT message, WPARAM, LPARAM lParam)
{
    if (message != WM_INITDIALOG) return FALSE;
    auto* pDlg = reinterpret_cast<CDialog*>(lParam);
    if (!pDlg || CWnd::FromHandlePermanent(hWnd)) return FALSE;
    // From here on the window's messages go through the object's message map first.
    pDlg->Attach(hWnd);
    pDlg->m_pfnSuper = reinterpret_cast<WNDPROC>(::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    return static_cast<INT_PTR>(pDlg->HandleInitDialog());
}

HWND CDialog::MakeWindow(LPCDLGTEMPLATE lpTemplate, HWND hWndParent)
{
    assert(!m_hWnd && "CDialog: the dialog already has a window");
    if (!lpTemplate) {
        std::fprintf(stderr, "framework: dialog template %u is not among the module's resources\n", m_nIDTemplate);
        return nullptr;
    }
    return ::CreateDialogIndirectParam(nullptr, lpTemplate, hWndParent, &AfxDlgProc, reinterpret_cast<LPARAM>(this));
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd)
{
    return MakeWindow(lpDialogTemplate, pParentWnd ? pParentWnd->m_hWnd : nullptr) != nullptr;
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    m_nIDTemplate = nIDTemplate;
    return CreateIndirect(::FindDialogResource(static_cast<WORD>(nIDTemplate)), pParentWnd);
}

// The owner is the parent's top-level window, or the active window when there is no parent.
INT_PTR CDialog::DoModal()
{
    HWND hOwner = m_pParentWnd ? ::GetAncestor(m_pParentWnd->m_hWnd, GA_ROOT) : ::GetActiveWindow();
    if (!MakeWindow(::FindDialogResource(static_cast<WORD>(m_nIDTemplate)), hOwner)) return -1;
    INT_PTR result = ::RunModalDialog(m_hWnd, hOwner);
    DestroyWindow();
    return result;
}

LRESULT CDialog::HandleInitDialog()
{
    ExecuteDlgInit(m_nIDTemplate);
    return OnInitDialog();
}

BOOL CDialog::ExecuteDlgInit(UINT nIDTemplate)
{
    size_t n = 0;
    const DLGINITENTRY* init = ::FindDlgInitResource(static_cast<WORD>(nIDTemplate), &n);
    for (size_t i = 0; i < n; ++i)
        ::SendDlgItemMessage(m_hWnd, init[i].nIDC, init[i].message, 0, reinterpret_cast<LPARAM>(init[i].lpszData));
    return TRUE;
}

BOOL CDialog::OnInitDialog()
{
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK()
{
    if (!UpdateData(TRUE)) return;
    EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

BOOL CDialog::OnCommand(WPARAM wParam, LPARAM)
{
    if (HIWORD(wParam) != BN_CLICKED) return FALSE;
    if (LOWORD(wParam) == IDOK) { OnOK(); return TRUE; }
    if (LOWORD(wParam) == IDCANCEL) { OnCancel(); return TRUE; }
    return FALSE;
}

BOOL CDialog::UpdateData(BOOL bSaveAndValidate)
{
    CDataExchange dx(this, bSaveAndValidate);
    try {
        DoDataExchange(&dx);
    } catch (const CUserException&) {
        return FALSE;
    }
    return TRUE;
}

BEGIN_MESSAGE_MAP(CDialogEx, CDialog)
    AFX_MSG_THUNK(WM_CTLCOLORDLG, HBRUSH hbr = self->OnCtlColorDlg(reinterpret_cast<HDC>(wParam));
                  return hbr ? reinterpret_cast<LRESULT>(hbr) : self->Default();)
    AFX_MSG_THUNK(WM_CTLCOLORSTATIC, HBRUSH hbr = self->OnCtlColorDlg(reinterpret_cast<HDC>(wParam));
                  return hbr ? reinterpret_cast<LRESULT>(hbr) : self->Default();)
END_MESSAGE_MAP()

CDialogEx::~CDialogEx()
{
    if (m_brBkgr) ::DeleteObject(m_brBkgr);
}

void CDialogEx::SetBackgroundColor(COLORREF color, BOOL bRepaint)
{
    if (m_brBkgr) ::DeleteObject(m_brBkgr);
    m_brBkgr = ::CreateSolidBrush(color);
    if (bRepaint && m_hWnd) Invalidate();
}

HBRUSH CDialogEx::OnCtlColorDlg(HDC hdc)
{
    if (!m_brBkgr) return nullptr;
    LOGBRUSH lb{};
    ::GetObject(m_brBkgr, sizeof lb, &lb);
    ::SetBkColor(hdc, lb.lbColor);
    return m_brBkgr;
}

// Data exchange ----------------------------------------------------------------------------------

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    HWND h = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    assert(h && "DDX: the dialog has no control with this id");
    m_idLastControl = nIDC;
    return h;
}

// Stand-in: the real framework shows a message box saying what was wrong; here the failure is a beep.
void CDataExchange::Fail()
{
    ::MessageBeep(MB_ICONEXCLAMATION);
    if (HWND h = ::GetDlgItem(m_pDlgWnd->m_hWnd, m_idLastControl)) {
        ::SetFocus(h);
        ::SendMessage(h, EM_SETSEL, 0, -1);
    }
    throw CUserException();
}

namespace {

CString FieldText(HWND h)
{
    CString s;
    CWnd::FromHandle(h)->GetWindowText(s);
    return s;
}

// An integer with optional blanks around it and an optional sign.
bool ParseInt(const CString& text, int& value)
{
    std::string s = ToUtf8(text);
    size_t a = s.find_first_not_of(' '), b = s.find_last_not_of(' ');
    if (a == std::string::npos) return false;
    s = s.substr(a, b - a + 1);
    size_t i = (s[0] == '-' || s[0] == '+') ? 1 : 0;
    if (i == s.size()) return false;
    long long v = 0;
    for (; i < s.size(); ++i) {
        if (s[i] < '0' || s[i] > '9') return false;
        v = v * 10 + (s[i] - '0');
        if (v > 0x80000000LL) return false;
    }
    if (s[0] == '-') v = -v;
    if (v > 0x7FFFFFFFLL) return false;
    value = static_cast<int>(v);
    return true;
}

} // namespace

void DDX_Text(CDataExchange* pDX, int nIDC, int& value)
{
    HWND h = pDX->PrepareCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        ::SetWindowText(h, FromUtf8(std::to_string(value)).c_str());
        return;
    }
    if (!ParseInt(FieldText(h), value)) pDX->Fail();
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    HWND h = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) value = FieldText(h);
    else ::SetWindowText(h, value);
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    HWND h = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) value = static_cast<int>(::SendMessage(h, BM_GETCHECK, 0, 0));
    else ::SendMessage(h, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    HWND h = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) index = static_cast<int>(::SendMessage(h, CB_GETCURSEL, 0, 0));
    else ::SendMessage(h, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

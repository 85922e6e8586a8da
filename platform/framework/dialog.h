// CDialog, CDialogEx and dialog data exchange (CDataExchange, DDX_Text, DDX_Check, DDX_CBIndex):
// MFC's dialog classes over the dialog manager of USER.
#pragma once
#include "base/coll.h"
#include "wnd.h"

// The exception that ends a failed exchange; UpdateData catches it and reports FALSE.
class CUserException : public CException {};

class CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}
    BOOL m_bSaveAndValidate;   // TRUE: fields to members; FALSE: members to fields
    CWnd* m_pDlgWnd;
    int m_idLastControl = 0;
    // The field with the id, which a failure will give the focus back to.
    HWND PrepareCtrl(int nIDC);
    // Ends the exchange: the field that failed gets the focus and its text is selected.
    [[noreturn]] void Fail();
};

void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);

class CDialog : public CWnd {
public:
    CDialog() = default;
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr) : m_nIDTemplate(nIDTemplate), m_pParentWnd(pParentWnd) {}

    // Runs the dialog modally in the host's message loop; IDOK, IDCANCEL or what EndDialog was given,
    // -1 when the template cannot be found.
    virtual INT_PTR DoModal();
    // A modeless dialog from a template of the module (a property page inside its frame).
    BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd);
    void EndDialog(int nResult) { ::EndDialog(m_hWnd, nResult); }

    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual void DoDataExchange(CDataExchange*) {}
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);
    // Sends the template's initialisation data (the combo box lines) to its controls.
    BOOL ExecuteDlgInit(UINT nIDTemplate);
    CWnd* GetDlgItem(int nID) const { return CWnd::FromHandle(::GetDlgItem(m_hWnd, nID)); }
    UINT GetTemplateID() const { return m_nIDTemplate; }

    DECLARE_MESSAGE_MAP()

protected:
    UINT m_nIDTemplate = 0;
    CWnd* m_pParentWnd = nullptr;

private:
    LRESULT HandleInitDialog();
    HWND MakeWindow(LPCDLGTEMPLATE lpTemplate, HWND hWndParent);
    friend INT_PTR AfxDlgProc(HWND, UINT, WPARAM, LPARAM);
};

// The procedure of every CDialog's window: it hands the window to its object at WM_INITDIALOG.
INT_PTR AfxDlgProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

// CDialogEx: a dialog whose background colour can be set.
class CDialogEx : public CDialog {
public:
    using CDialog::CDialog;
    ~CDialogEx() override;
    void SetBackgroundColor(COLORREF color, BOOL bRepaint = TRUE);

    DECLARE_MESSAGE_MAP()

private:
    HBRUSH OnCtlColorDlg(HDC hdc);
    HBRUSH m_brBkgr = nullptr;
};

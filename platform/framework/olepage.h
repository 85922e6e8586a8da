// COlePropertyPage: MFC's property page, a dialog that is an OLE page (IPropertyPage), with the
// DDP_ functions that bind its members to properties of the objects it edits, by name.
#pragma once
#include <vector>
#include "com/proppage.h"
#include "dialog.h"

class COlePropertyPage : public CDialog, public IPropertyPage {
public:
    // The page's dialog and the string resource of its caption.
    COlePropertyPage(UINT idDlg, UINT idCaption);
    ~COlePropertyPage() override;

    // IUnknown: the object lives until its last reference goes.
    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override { return ++m_nRef; }
    ULONG Release() override;

    // IPropertyPage
    HRESULT SetPageSite(IPropertyPageSite* pPageSite) override;
    HRESULT Activate(HWND hWndParent, LPCRECT pRect, BOOL bModal) override;
    HRESULT Deactivate() override;
    HRESULT GetPageInfo(PROPPAGEINFO* pPageInfo) override;
    HRESULT SetObjects(ULONG cObjects, IUnknown** ppUnk) override;
    HRESULT Show(UINT nCmdShow) override;
    HRESULT Move(LPCRECT pRect) override;
    HRESULT IsPageDirty() override { return m_bDirty ? S_OK : S_FALSE; }
    HRESULT Apply() override;
    HRESULT Help(LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT TranslateAccelerator(MSG*) override { return S_FALSE; }

    virtual HRESULT GetClassID(CLSID* pClassID) = 0;

    // The objects the page edits, as dispatch interfaces.
    LPDISPATCH* GetObjectArray(ULONG* pnObjects);
    void SetModifiedFlag(BOOL bModified = TRUE);
    BOOL IsModified() const { return m_bDirty; }
    // Whether the user changed a field since it was loaded or applied.
    void SetControlStatus(UINT nID, BOOL bDirty);
    BOOL GetControlStatus(UINT nID) const;

    BOOL OnInitDialog() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override {}
    void OnCancel() override {}
    void PostNcDestroy() override {}

    // A changed field waiting for DDP_PostProcessing to write it: the member is read then, after
    // the DDX_ function of its row has filled it.
    struct PendingPut {
        UINT nID;
        CString strName;
        VARTYPE vt;            // VT_I4 (int), VT_BOOL (int), VT_BSTR (CString)
        void* pMember;
    };
    std::vector<PendingPut> m_pending;

private:
    UINT m_idCaption;
    ULONG m_nRef = 1;
    IPropertyPageSite* m_pPageSite = nullptr;
    std::vector<LPDISPATCH> m_objects;
    std::vector<UINT> m_changed;
    BOOL m_bDirty = FALSE;
    BOOL m_bLoading = FALSE;
};

// Reads the property into the member when the page loads; on apply, queues the member for the
// property when the user changed the field. Call the matching DDX_ function after each.
void DDP_Text(CDataExchange* pDX, int nCtrlID, int& member, LPCTSTR pszPropName);
void DDP_Text(CDataExchange* pDX, int nCtrlID, CString& member, LPCTSTR pszPropName);
void DDP_Check(CDataExchange* pDX, int nCtrlID, int& member, LPCTSTR pszPropName);
// After the last row: writes the queued properties, in the order of the rows.
void DDP_PostProcessing(CDataExchange* pDX);

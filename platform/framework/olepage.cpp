// COlePropertyPage: the page as an IPropertyPage in its frame, the record of changed fields, and the
// DDP_ functions that read and write the edited objects' properties by name.
#include "olepage.h"
#include <algorithm>
#include <cassert>
#include "com/bstr.h"
#include "olefact.h"

COlePropertyPage::COlePropertyPage(UINT idDlg, UINT idCaption) : CDialog(idDlg), m_idCaption(idCaption)
{
    AfxOleLockApp();
}

COlePropertyPage::~COlePropertyPage()
{
    if (m_hWnd) DestroyWindow();
    SetObjects(0, nullptr);
    if (m_pPageSite) m_pPageSite->Release();
    AfxOleUnlockApp();
}

HRESULT COlePropertyPage::QueryInterface(REFIID riid, void** ppv)
{
    if (riid == IID_IUnknown || riid == IID_IPropertyPage) {
        *ppv = static_cast<IPropertyPage*>(this);
        AddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

ULONG COlePropertyPage::Release()
{
    ULONG n = --m_nRef;
    if (n == 0) delete this;
    return n;
}

HRESULT COlePropertyPage::SetPageSite(IPropertyPageSite* pPageSite)
{
    if (pPageSite) pPageSite->AddRef();
    if (m_pPageSite) m_pPageSite->Release();
    m_pPageSite = pPageSite;
    return S_OK;
}

HRESULT COlePropertyPage::Activate(HWND hWndParent, LPCRECT pRect, BOOL)
{
    if (m_hWnd) return E_UNEXPECTED;
    if (!Create(m_nIDTemplate, CWnd::FromHandle(hWndParent))) return E_FAIL;
    Move(pRect);
    return S_OK;
}

HRESULT COlePropertyPage::Deactivate()
{
    if (m_hWnd) DestroyWindow();
    return S_OK;
}

HRESULT COlePropertyPage::GetPageInfo(PROPPAGEINFO* pInfo)
{
    if (!pInfo) return E_POINTER;
    WCHAR title[256] = {};
    int n = ::LoadString(nullptr, m_idCaption, title, 256);
    pInfo->pszTitle = static_cast<LPOLESTR>(CoTaskMemAlloc((n + 1) * sizeof(OLECHAR)));
    std::copy_n(title, n + 1, pInfo->pszTitle);
    pInfo->size = SIZE{0, 0};
    if (LPCDLGTEMPLATE t = ::FindDialogResource(static_cast<WORD>(m_nIDTemplate))) pInfo->size = ::GetDialogTemplateSize(t);
    pInfo->pszDocString = nullptr;
    pInfo->pszHelpFile = nullptr;
    pInfo->dwHelpContext = 0;
    return S_OK;
}

HRESULT COlePropertyPage::SetObjects(ULONG cObjects, IUnknown** ppUnk)
{
    for (LPDISPATCH p : m_objects) p->Release();
    m_objects.clear();
    for (ULONG i = 0; i < cObjects; ++i) {
        LPDISPATCH p = nullptr;
        if (ppUnk[i] && SUCCEEDED(ppUnk[i]->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&p)))) m_objects.push_back(p);
    }
    return S_OK;
}

HRESULT COlePropertyPage::Show(UINT nCmdShow)
{
    if (m_hWnd) ShowWindow(static_cast<int>(nCmdShow));
    return S_OK;
}

HRESULT COlePropertyPage::Move(LPCRECT pRect)
{
    if (m_hWnd && pRect) ::MoveWindow(m_hWnd, pRect->left, pRect->top, pRect->right - pRect->left, pRect->bottom - pRect->top, TRUE);
    return S_OK;
}

HRESULT COlePropertyPage::Apply()
{
    if (!m_bDirty) return S_OK;
    m_pending.clear();
    if (m_hWnd && !UpdateData(TRUE)) return E_FAIL;
    SetModifiedFlag(FALSE);
    return S_OK;
}

LPDISPATCH* COlePropertyPage::GetObjectArray(ULONG* pnObjects)
{
    *pnObjects = static_cast<ULONG>(m_objects.size());
    return m_objects.data();
}

void COlePropertyPage::SetModifiedFlag(BOOL bModified)
{
    if (m_bDirty == bModified) return;
    m_bDirty = bModified;
    if (m_pPageSite) m_pPageSite->OnStatusChange(bModified ? PROPPAGESTATUS_DIRTY : PROPPAGESTATUS_CLEAN);
}

void COlePropertyPage::SetControlStatus(UINT nID, BOOL bDirty)
{
    auto it = std::find(m_changed.begin(), m_changed.end(), nID);
    if (bDirty && it == m_changed.end()) m_changed.push_back(nID);
    else if (!bDirty && it != m_changed.end()) m_changed.erase(it);
}

BOOL COlePropertyPage::GetControlStatus(UINT nID) const
{
    return std::find(m_changed.begin(), m_changed.end(), nID) != m_changed.end();
}

// The fields are filled without counting as the user's changes.
BOOL COlePropertyPage::OnInitDialog()
{
    m_bLoading = TRUE;
    UpdateData(FALSE);
    m_bLoading = FALSE;
    m_changed.clear();
    return FALSE;   // the frame decides where the focus goes
}

// A field the user changed is remembered, and the page becomes dirty.
BOOL COlePropertyPage::OnCommand(WPARAM wParam, LPARAM lParam)
{
    switch (HIWORD(wParam)) {
    case EN_CHANGE: case BN_CLICKED: case CBN_SELCHANGE: case CBN_EDITCHANGE:
        if (!m_bLoading && lParam) {
            SetControlStatus(LOWORD(wParam), TRUE);
            SetModifiedFlag(TRUE);
        }
        return TRUE;
    default: return FALSE;
    }
}

// DDP ---------------------------------------------------------------------------------------------

namespace {

COlePropertyPage* PageOf(CDataExchange* pDX)
{
    auto* page = dynamic_cast<COlePropertyPage*>(pDX->m_pDlgWnd);
    assert(page && "DDP_ functions belong in a property page's DoDataExchange");
    return page;
}

HRESULT GetProp(LPDISPATCH p, LPCTSTR name, VARIANT* out)
{
    DISPID id;
    LPCOLESTR names[] = {name};
    HRESULT hr = p->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
    if (FAILED(hr)) return hr;
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    return p->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, out, nullptr, nullptr);
}

HRESULT PutProp(LPDISPATCH p, LPCTSTR name, VARIANT value)
{
    DISPID id, named = DISPID_PROPERTYPUT;
    LPCOLESTR names[] = {name};
    HRESULT hr = p->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
    if (FAILED(hr)) return hr;
    DISPPARAMS args{&value, &named, 1, 1};
    return p->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &args, nullptr, nullptr, nullptr);
}

// On load the first object's value, coerced to the member's type; on save the field is queued.
bool Load(CDataExchange* pDX, int nCtrlID, void* member, LPCTSTR name, VARTYPE vt, COleVariant* pValue)
{
    COlePropertyPage* page = PageOf(pDX);
    if (pDX->m_bSaveAndValidate) {
        if (page->GetControlStatus(nCtrlID)) page->m_pending.push_back({static_cast<UINT>(nCtrlID), CString(name), vt, member});
        return false;
    }
    ULONG n = 0;
    LPDISPATCH* objects = page->GetObjectArray(&n);
    return n && SUCCEEDED(GetProp(objects[0], name, pValue)) && SUCCEEDED(pValue->ChangeType(vt == VT_BOOL ? VARTYPE(VT_I4) : vt));
}

} // namespace

void DDP_Text(CDataExchange* pDX, int nCtrlID, int& member, LPCTSTR pszPropName)
{
    COleVariant v;
    if (Load(pDX, nCtrlID, &member, pszPropName, VT_I4, &v)) member = v.lVal;
}

void DDP_Text(CDataExchange* pDX, int nCtrlID, CString& member, LPCTSTR pszPropName)
{
    COleVariant v;
    if (Load(pDX, nCtrlID, &member, pszPropName, VT_BSTR, &v)) member = CString(v.bstrVal ? v.bstrVal : u"");
}

void DDP_Check(CDataExchange* pDX, int nCtrlID, int& member, LPCTSTR pszPropName)
{
    COleVariant v;
    if (Load(pDX, nCtrlID, &member, pszPropName, VT_BOOL, &v)) member = v.lVal ? 1 : 0;
}

void DDP_PostProcessing(CDataExchange* pDX)
{
    COlePropertyPage* page = PageOf(pDX);
    if (!pDX->m_bSaveAndValidate) return;
    ULONG n = 0;
    LPDISPATCH* objects = page->GetObjectArray(&n);
    std::vector<COlePropertyPage::PendingPut> pending;
    pending.swap(page->m_pending);
    for (const auto& p : pending) {
        COleVariant v;
        if (p.vt == VT_BSTR) v = COleVariant(static_cast<CString*>(p.pMember)->GetString());
        else if (p.vt == VT_BOOL) { v.vt = VT_BOOL; v.boolVal = *static_cast<int*>(p.pMember) ? VARIANT_TRUE : VARIANT_FALSE; }
        else { v.vt = VT_I4; v.lVal = *static_cast<int*>(p.pMember); }
        for (ULONG i = 0; i < n; ++i) PutProp(objects[i], p.strName, v);
        page->SetControlStatus(p.nID, FALSE);
    }
}

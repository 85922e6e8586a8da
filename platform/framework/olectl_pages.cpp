// COleControl's property pages: the page list for ISpecifyPropertyPages, the verbs, the Properties
// verb with its frame, and telling the container about modal dialogs.
#include "olectl.h"
#include <algorithm>
#include "com/bstr.h"
#include "user/winuser.h"


LPCLSID COleControl::GetPropPageIDs(ULONG& cPropPages)
{
    cPropPages = 0;
    return nullptr;
}

const std::vector<COleControl::VerbHandler>& COleControl::GetVerbMap() const
{
    static const std::vector<VerbHandler> none;
    return none;
}

HRESULT COleControl::GetPages(CAUUID* pPages)
{
    if (!pPages) return E_POINTER;
    ULONG n = 0;
    LPCLSID ids = GetPropPageIDs(n);
    pPages->cElems = n;
    pPages->pElems = static_cast<GUID*>(CoTaskMemAlloc(std::max<ULONG>(n, 1) * sizeof(GUID)));
    std::copy_n(ids, n, pPages->pElems);
    return S_OK;
}

HRESULT COleControl::DoVerb(LONG iVerb, MSG* lpmsg, IOleClientSite*, LONG, HWND hwndParent, LPCRECT lprcPosRect)
{
    if (iVerb == OLEIVERB_PROPERTIES) return OnProperties(lpmsg, hwndParent, lprcPosRect) ? S_OK : E_FAIL;
    const auto& verbs = GetVerbMap();
    if (iVerb < 0 || iVerb >= static_cast<LONG>(verbs.size())) return OLEOBJ_S_INVALIDVERB;
    return verbs[iVerb](this, lpmsg, hwndParent, lprcPosRect) ? S_OK : E_FAIL;
}

HRESULT COleControl::GetMiscStatus(DWORD dwAspect, DWORD* pdwStatus)
{
    if (!pdwStatus) return E_POINTER;
    *pdwStatus = dwAspect == DVASPECT_CONTENT ? GetMiscStatus() : 0;
    return S_OK;
}

CString COleControl::GetUserType()
{
    WCHAR name[256] = {};
    ::LoadString(nullptr, GetUserTypeNameID(), name, 256);
    return CString(name);
}

LCID COleControl::AmbientLocaleID()
{
    LONG lcid = 0;
    return GetAmbientProperty(DISPID_AMBIENT_LOCALEID, VT_I4, &lcid) ? static_cast<LCID>(lcid) : 0;
}

HRESULT COleControl::ShowSitePropertyFrame()
{
    CComPtr<IOleControlSite> site;
    if (!m_pClientSite || FAILED(m_pClientSite->QueryInterface(IID_IOleControlSite, reinterpret_cast<void**>(&site))))
        return E_NOINTERFACE;
    return site->ShowPropertyFrame();
}

HWND COleControl::GetInPlaceParentWindow()
{
    CComPtr<IOleInPlaceSite> site;
    HWND hwnd = nullptr;
    if (m_pClientSite && SUCCEEDED(m_pClientSite->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(&site))))
        site->GetWindow(&hwnd);
    return hwnd;
}

void COleControl::PreModalDialog(HWND)
{
    CComPtr<IOleInPlaceSite> site;
    if (m_pClientSite && SUCCEEDED(m_pClientSite->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(&site))))
        site->EnableModeless(FALSE);
}

void COleControl::PostModalDialog(HWND)
{
    CComPtr<IOleInPlaceSite> site;
    if (m_pClientSite && SUCCEEDED(m_pClientSite->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(&site))))
        site->EnableModeless(TRUE);
}

BOOL COleControl::OnProperties(LPMSG, HWND hWndParent, LPCRECT)
{
    if (SUCCEEDED(ShowSitePropertyFrame())) return TRUE;
    HWND parent = hWndParent ? hWndParent : GetInPlaceParentWindow();
    HWND owner = CWnd::GetSafeOwner_(parent, nullptr);
    RECT rcParent{}, rcOwner{};
    if (parent) ::GetWindowRect(parent, &rcParent);
    if (owner) ::GetWindowRect(owner, &rcOwner);
    ULONG n = 0;
    LPCLSID pages = GetPropPageIDs(n);
    CString caption = GetUserType();
    IUnknown* object = static_cast<IDispatch*>(this);
    PreModalDialog(owner);
    HRESULT hr = OleCreatePropertyFrame(owner, static_cast<UINT>(rcParent.left - rcOwner.left), static_cast<UINT>(rcParent.top - rcOwner.top),
                                        caption, 1, &object, n, pages, AmbientLocaleID(), 0, nullptr);
    PostModalDialog(owner);
    return SUCCEEDED(hr);
}

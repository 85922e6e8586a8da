// COleControl: the COM doors (IUnknown, IDispatch, events, site) and the services a control calls.
#include "olectl.h"
#include "com/typeinfo.h"
#include "base/colors.h"

namespace {

// The framework's error texts by id; an id it does not know has no text.
const char16_t* FrameworkText(UINT nID)
{
    switch (nID) {
    case AFX_IDP_E_OUTOFMEMORY: return u"Out of memory";
    default: return u"";
    }
}

} // namespace

COleControl::COleControl() = default;

COleControl::~COleControl()
{
    for (auto& s : m_sinks) s.second->Release();
    if (m_pClientSite) m_pClientSite->Release();
}

HRESULT COleControl::QueryInterface(REFIID riid, void** ppv)
{
    if (!ppv) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IDispatch) *ppv = static_cast<IDispatch*>(this);
    else if (riid == IID_IPersistPropertyBag) *ppv = static_cast<IPersistPropertyBag*>(this);
    else if (riid == IID_IPersistStreamInit) *ppv = static_cast<IPersistStreamInit*>(this);
    else if (riid == IID_IConnectionPointContainer) *ppv = static_cast<IConnectionPointContainer*>(this);
    else if (riid == IID_IOleObject) *ppv = static_cast<IOleObject*>(this);
    else if (riid == IID_IProvideClassInfo) *ppv = static_cast<IProvideClassInfo*>(this);
    else if (riid == IID_IOleInPlaceObject) *ppv = static_cast<IOleInPlaceObject*>(this);
    else if (riid == IID_IOleInPlaceActiveObject) *ppv = static_cast<IOleInPlaceActiveObject*>(this);
    else if (riid == IID_IViewObject) *ppv = static_cast<IViewObject*>(this);
    else if (riid == IID_ISpecifyPropertyPages) *ppv = static_cast<ISpecifyPropertyPages*>(this);
    else { *ppv = nullptr; return E_NOINTERFACE; }
    AddRef();
    return S_OK;
}

ULONG COleControl::AddRef() { return m_ref.AddRefImpl(); }
ULONG COleControl::Release() { return m_ref.ReleaseImpl(this); }

HRESULT COleControl::GetTypeInfoCount(UINT* pctinfo)
{
    *pctinfo = 1;
    return S_OK;
}

HRESULT COleControl::GetTypeLib(ITypeLib** ppTLib)
{
    if (ppTLib) *ppTLib = nullptr;
    return TYPE_E_LIBNOTREGISTERED;
}

const IID& COleControl::GetPrimaryDispatchIID() const { return IID_NULL; }
const IID& COleControl::GetEventsIID() const { return IID_NULL; }

namespace {
// A type of the control's library by its GUID.
HRESULT TypeInfoOf(COleControl& control, REFGUID guid, ITypeInfo** ppTInfo)
{
    if (!ppTInfo) return E_POINTER;
    *ppTInfo = nullptr;
    CComPtr<ITypeLib> lib;
    HRESULT hr = control.GetTypeLib(&lib);
    return FAILED(hr) ? hr : lib->GetTypeInfoOfGuid(guid, ppTInfo);
}
} // namespace

HRESULT COleControl::GetTypeInfo(UINT iTInfo, LCID, ITypeInfo** ppTInfo)
{
    if (iTInfo != 0) return DISP_E_BADINDEX;
    return TypeInfoOf(*this, GetPrimaryDispatchIID(), ppTInfo);
}

HRESULT COleControl::GetClassInfo(ITypeInfo** ppTI) { return TypeInfoOf(*this, GetClassIDRef(), ppTI); }

HRESULT COleControl::GetIDsOfNames(REFIID, LPCOLESTR* names, UINT count, LCID, DISPID* ids)
{
    HRESULT hr = S_OK;
    for (UINT i = 0; i < count; ++i) {
        const DispEntry* e = i == 0 ? GetDispatchMap().FindByName(names[i]) : nullptr;
        ids[i] = e ? e->dispid : DISPID_UNKNOWN;
        if (!e) hr = DISP_E_UNKNOWNNAME;
    }
    return hr;
}

HRESULT COleControl::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* pExcepInfo,
                            UINT* argErr)
{
    AddRef(); // a handler may drop the host's last reference while the call runs
    HRESULT hr;
    try {
        hr = GetDispatchMap().Invoke(this, id, flags, params, result, argErr);
    } catch (COleDispatchException* e) {
        if (pExcepInfo) *pExcepInfo = EXCEPINFO{0, e->m_pszDescription, e->m_scError};
        e->Delete();
        hr = DISP_E_EXCEPTION;
    }
    Release();
    return hr;
}

void COleControl::ThrowError(HRESULT sc, UINT nDescriptionID, UINT nHelpID)
{
    throw new COleDispatchException(sc, FrameworkText(nDescriptionID), nHelpID);
}

HRESULT COleControl::FindConnectionPoint(REFIID riid, IConnectionPoint** ppCP)
{
    if (!ppCP) return E_POINTER;
    *ppCP = nullptr;
    if (riid == IID_NULL || riid != GetEventsIID()) return CONNECT_E_NOCONNECTION;
    AddRef();
    *ppCP = static_cast<IConnectionPoint*>(this);
    return S_OK;
}

HRESULT COleControl::Advise(IUnknown* sink, DWORD* cookie)
{
    IDispatch* disp = nullptr;
    if (!sink || !cookie || FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&disp)))) return E_NOINTERFACE;
    m_sinks.emplace_back(m_nextCookie, disp);
    *cookie = m_nextCookie++;
    return S_OK;
}

HRESULT COleControl::Unadvise(DWORD cookie)
{
    for (auto it = m_sinks.begin(); it != m_sinks.end(); ++it) {
        if (it->first != cookie) continue;
        IDispatch* disp = it->second;
        m_sinks.erase(it);
        disp->Release();
        return S_OK;
    }
    return E_INVALIDARG;
}

HRESULT COleControl::SetClientSite(IOleClientSite* site)
{
    if (site) site->AddRef();
    if (m_pClientSite) m_pClientSite->Release();
    m_pClientSite = site;
    return S_OK;
}

HRESULT COleControl::GetClientSite(IOleClientSite** pp)
{
    *pp = m_pClientSite;
    if (m_pClientSite) m_pClientSite->AddRef();
    return S_OK;
}

HRESULT COleControl::Close(DWORD)
{
    InPlaceDeactivate();
    SetClientSite(nullptr);
    return S_OK;
}

BOOL COleControl::GetAmbientProperty(DISPID dispid, VARTYPE vt, void* pv)
{
    if (!m_pClientSite) return FALSE;
    COleVariant value, converted;
    if (FAILED(m_pClientSite->GetAmbientProperty(dispid, &value))) return FALSE;
    if (FAILED(VariantChangeType(&converted, &value, 0, vt))) return FALSE;
    switch (vt) {
    case VT_BOOL: *static_cast<BOOL*>(pv) = converted.boolVal != 0; break;
    case VT_I4: *static_cast<LONG*>(pv) = converted.lVal; break;
    case VT_DISPATCH: *static_cast<LPDISPATCH*>(pv) = converted.pdispVal; if (converted.pdispVal) converted.pdispVal->AddRef(); break;
    default: return FALSE;
    }
    return TRUE;
}

BOOL COleControl::AmbientUserMode()
{
    BOOL user = TRUE;
    return GetAmbientProperty(DISPID_AMBIENT_USERMODE, VT_BOOL, &user) ? user : TRUE;
}

OLE_COLOR COleControl::AmbientBackColor()
{
    LONG clr = 0;
    return GetAmbientProperty(DISPID_AMBIENT_BACKCOLOR, VT_I4, &clr) ? static_cast<OLE_COLOR>(clr) : 0x80000005;
}

OLE_COLOR COleControl::AmbientForeColor()
{
    LONG clr = 0;
    return GetAmbientProperty(DISPID_AMBIENT_FORECOLOR, VT_I4, &clr) ? static_cast<OLE_COLOR>(clr) : 0x80000008;
}

LPFONTDISP COleControl::AmbientFont()
{
    LPDISPATCH font = nullptr;
    return GetAmbientProperty(DISPID_AMBIENT_FONT, VT_DISPATCH, &font) ? font : nullptr;
}

// With a window the window is invalidated; the site hears of it either way (a container
// without windows repaints the control itself).
void COleControl::InvalidateControl(LPCRECT lpRect, BOOL bErase)
{
    if (m_hWnd) ::InvalidateRect(m_hWnd, lpRect, bErase);
    if (m_pClientSite) m_pClientSite->OnInvalidate(lpRect, bErase);
}

void COleControl::FireEvent(DISPID dispid, std::vector<VARIANT> args)
{
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());   // COM passes arguments last first
    DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    auto sinks = m_sinks; // a handler may unadvise while the event runs
    for (auto& s : sinks) s.second->AddRef();
    for (auto& s : sinks) {
        s.second->Invoke(dispid, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
        s.second->Release();
    }
}

// Stand-in: the site's own IPropertyNotifySink hears the change, instead of a sink advised
// through the control's connection point for that interface.
void COleControl::BoundPropertyChanged(DISPID dispid)
{
    IPropertyNotifySink* sink = nullptr;
    if (m_pClientSite && SUCCEEDED(m_pClientSite->QueryInterface(IID_IPropertyNotifySink, reinterpret_cast<void**>(&sink)))) {
        sink->OnChanged(dispid);
        sink->Release();
    }
}

COLORREF COleControl::TranslateColor(OLE_COLOR clr, HPALETTE hpal)
{
    COLORREF rgb = 0;
    return SUCCEEDED(OleTranslateColor(clr, hpal, &rgb)) ? rgb : RGB(0, 0, 0);
}

HRESULT COleControl::CFontNotify::QueryInterface(REFIID riid, void** ppv)
{
    if (riid == IID_IUnknown || riid == IID_IPropertyNotifySink) { *ppv = this; return S_OK; }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

// CControlSite: siting a control, answering it, hearing it, and reaching it by name.
#include "host/ControlSite.h"
#include "com/propbag.h"
#include "com/stream.h"
#include "host/Host.h"
#include "user/winuser.h"

CControlSite::CControlSite(CHost& host, IUnknown* pControl, const RECT& rc) : m_host(host), m_info(pControl), m_rc(rc)
{
    pControl->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&m_pDispatch));
    CComPtr<IOleObject> ole;
    if (SUCCEEDED(pControl->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&ole)))) ole->SetClientSite(this);
    // The sink hears the events interface the class information names, at the point the control has for it.
    CComPtr<IConnectionPointContainer> points;
    if (m_info.EventsIID() != IID_NULL &&
        SUCCEEDED(pControl->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&points))) &&
        SUCCEEDED(points->FindConnectionPoint(m_info.EventsIID(), &m_pEventPoint)) &&
        FAILED(m_pEventPoint->Advise(static_cast<IDispatch*>(this), &m_dwEventCookie)))
        m_pEventPoint.Reset();
}

CControlSite::~CControlSite()
{
    if (m_pEventPoint) m_pEventPoint->Unadvise(m_dwEventCookie);
    m_pEventPoint.Reset();
    if (!m_pDispatch) return;
    CComPtr<IOleObject> ole;
    if (SUCCEEDED(m_pDispatch->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&ole)))) ole->Close(0);
    m_pDispatch->Release();
}

HRESULT CControlSite::QueryInterface(REFIID riid, void** ppv)
{
    if (riid == IID_IUnknown || riid == IID_IOleClientSite) *ppv = static_cast<IOleClientSite*>(this);
    else if (riid == IID_IPropertyNotifySink) *ppv = static_cast<IPropertyNotifySink*>(this);
    else if (riid == IID_IDispatch) *ppv = static_cast<IDispatch*>(this);
    else if (riid == IID_IOleControlSite) *ppv = static_cast<IOleControlSite*>(this);
    else if (riid == IID_IOleInPlaceSite && m_hWndForm) *ppv = static_cast<IOleInPlaceSite*>(this);
    else { *ppv = nullptr; return E_NOINTERFACE; }
    return S_OK;
}

HRESULT CControlSite::GetAmbientProperty(DISPID dispid, VARIANT* pvar)
{
    VariantInit(pvar);
    switch (dispid) {
    case DISPID_AMBIENT_LOCALEID: pvar->vt = VT_I4; pvar->lVal = static_cast<LONG>(m_host.m_lcid); return S_OK;
    case DISPID_AMBIENT_USERMODE: pvar->vt = VT_BOOL; pvar->boolVal = m_host.m_bUserMode ? VARIANT_TRUE : VARIANT_FALSE; return S_OK;
    case DISPID_AMBIENT_FORECOLOR: pvar->vt = VT_I4; pvar->lVal = static_cast<LONG>(m_host.m_clrAmbientFore); return S_OK;
    case DISPID_AMBIENT_BACKCOLOR: pvar->vt = VT_I4; pvar->lVal = static_cast<LONG>(m_host.m_clrAmbientBack); return S_OK;
    case DISPID_AMBIENT_FONT:
        if (!m_host.AmbientFont()) return DISP_E_MEMBERNOTFOUND;
        pvar->vt = VT_DISPATCH;
        return m_host.AmbientFont()->QueryInterface(IID_IFontDisp, reinterpret_cast<void**>(&pvar->pdispVal));
    }
    return DISP_E_MEMBERNOTFOUND;
}

// A control with a window repaints itself; one without is painted by the form.
HRESULT CControlSite::OnInvalidate(const RECT*, BOOL fErase)
{
    ++m_nInvalidates;
    if (m_hWndForm && !Window()) ::InvalidateRect(m_hWndForm, &m_rc, fErase);
    return S_OK;
}

// A host that has a frame of its own shows the control's pages in it, with its own caption.
HRESULT CControlSite::ShowPropertyFrame()
{
    if (!m_host.m_bShowPropertyFrame) return E_NOTIMPL;
    CComPtr<ISpecifyPropertyPages> specify;
    HRESULT hr = m_pDispatch->QueryInterface(IID_ISpecifyPropertyPages, reinterpret_cast<void**>(&specify));
    CAUUID pages{0, nullptr};
    if (SUCCEEDED(hr)) hr = specify->GetPages(&pages);
    if (FAILED(hr)) return hr;
    IUnknown* object = m_pDispatch;
    hr = OleCreatePropertyFrame(m_hWndForm, 0, 0, u"Host", 1, &object, pages.cElems, pages.pElems, m_host.m_lcid, 0, nullptr);
    CoTaskMemFree(pages.pElems);
    return hr;
}

HRESULT CControlSite::GetWindow(HWND* phwnd)
{
    *phwnd = m_hWndForm;
    return m_hWndForm ? S_OK : E_FAIL;
}

HRESULT CControlSite::EnableModeless(BOOL fEnable)
{
    if (m_host.m_onEnableModeless) m_host.m_onEnableModeless(*this, fEnable);
    return S_OK;
}

HWND CControlSite::Window() const
{
    HWND hwnd = nullptr;
    CComPtr<IOleInPlaceObject> inplace;
    if (SUCCEEDED(m_pDispatch->QueryInterface(IID_IOleInPlaceObject, reinterpret_cast<void**>(&inplace)))) inplace->GetWindow(&hwnd);
    return hwnd;
}

HRESULT CControlSite::InPlaceDeactivate()
{
    CComPtr<IOleInPlaceObject> inplace;
    HRESULT hr = m_pDispatch->QueryInterface(IID_IOleInPlaceObject, reinterpret_cast<void**>(&inplace));
    return SUCCEEDED(hr) ? inplace->InPlaceDeactivate() : hr;
}

HRESULT CControlSite::InPlaceActivate(HWND hwndParent)
{
    m_hWndForm = hwndParent;
    CComPtr<IOleInPlaceObject> inplace;
    HRESULT hr = m_pDispatch->QueryInterface(IID_IOleInPlaceObject, reinterpret_cast<void**>(&inplace));
    return SUCCEEDED(hr) ? inplace->InPlaceActivate(hwndParent, &m_rc) : hr;
}

bool CControlSite::PreTranslate(MSG& msg)
{
    CComPtr<IOleInPlaceActiveObject> active;
    if (FAILED(m_pDispatch->QueryInterface(IID_IOleInPlaceActiveObject, reinterpret_cast<void**>(&active)))) return false;
    return active->TranslateAccelerator(&msg) == S_OK;
}

void CControlSite::DrawInto(HDC hdc)
{
    CComPtr<IViewObject> view;
    if (SUCCEEDED(m_pDispatch->QueryInterface(IID_IViewObject, reinterpret_cast<void**>(&view)))) view->Draw(hdc, &m_rc);
}

HRESULT CControlSite::OnChanged(DISPID dispID)
{
    if (m_host.m_onPropertyChanged) m_host.m_onPropertyChanged(*this, dispID);
    return S_OK;
}

HRESULT CControlSite::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* p, VARIANT*, EXCEPINFO*, UINT*)
{
    const EventInfo* event = m_info.FindEvent(id);
    if (!event) return DISP_E_MEMBERNOTFOUND;
    if (!m_onEvent) return S_OK;
    std::vector<VARIANT> args(p ? p->rgvarg : nullptr, p ? p->rgvarg + p->cArgs : nullptr);
    std::reverse(args.begin(), args.end()); // COM passes arguments last first
    m_onEvent(*event, args.data(), static_cast<UINT>(args.size()));
    return S_OK;
}

HRESULT CControlSite::InitNew()
{
    CComPtr<IPersistPropertyBag> persist;
    HRESULT hr = m_pDispatch->QueryInterface(IID_IPersistPropertyBag, reinterpret_cast<void**>(&persist));
    return SUCCEEDED(hr) ? persist->InitNew() : hr;
}

HRESULT CControlSite::Load(const CString& bagText)
{
    CComPtr<IPersistPropertyBag> persist;
    CComPtr<IPropertyBag> bag;
    HRESULT hr = m_pDispatch->QueryInterface(IID_IPersistPropertyBag, reinterpret_cast<void**>(&persist));
    if (SUCCEEDED(hr)) hr = CreateTextPropertyBag(bagText, &bag);
    return SUCCEEDED(hr) ? persist->Load(bag.Get(), nullptr) : hr;
}

CString CControlSite::Save(BOOL fClearDirty)
{
    CComPtr<IPersistPropertyBag> persist;
    CComPtr<IPropertyBag> bag;
    if (FAILED(m_pDispatch->QueryInterface(IID_IPersistPropertyBag, reinterpret_cast<void**>(&persist)))) return CString();
    CreateTextPropertyBag(CString(), &bag);
    persist->Save(bag.Get(), fClearDirty, TRUE);
    return GetPropertyBagText(bag.Get());
}

std::vector<BYTE> CControlSite::SaveStream(BOOL fClearDirty)
{
    CComPtr<IPersistStreamInit> persist;
    CComPtr<IStream> stm;
    if (FAILED(m_pDispatch->QueryInterface(IID_IPersistStreamInit, reinterpret_cast<void**>(&persist)))) return {};
    CreateStreamOnHGlobal({}, &stm);
    persist->Save(stm.Get(), fClearDirty);
    return GetStreamBytes(stm.Get());
}

HRESULT CControlSite::LoadStream(const std::vector<BYTE>& bytes)
{
    CComPtr<IPersistStreamInit> persist;
    CComPtr<IStream> stm;
    HRESULT hr = m_pDispatch->QueryInterface(IID_IPersistStreamInit, reinterpret_cast<void**>(&persist));
    if (FAILED(hr)) return hr;
    CreateStreamOnHGlobal(bytes, &stm);
    return persist->Load(stm.Get());
}

bool CControlSite::IsDirty()
{
    CComPtr<IPersistStreamInit> persist;
    if (FAILED(m_pDispatch->QueryInterface(IID_IPersistStreamInit, reinterpret_cast<void**>(&persist)))) return false;
    return persist->IsDirty() == S_OK;
}

HRESULT CControlSite::InvokeById(DISPID id, WORD flags, std::vector<VARIANT> args, VARIANT* result)
{
    std::reverse(args.begin(), args.end());
    DISPID named = DISPID_PROPERTYPUT;
    bool put = flags & DISPATCH_PROPERTYPUT;
    DISPPARAMS params{args.data(), put ? &named : nullptr, static_cast<UINT>(args.size()), put ? 1u : 0u};
    EXCEPINFO error{0, nullptr, S_OK};
    HRESULT hr = m_pDispatch->Invoke(id, IID_NULL, 0, flags, &params, result, &error, nullptr);
    // An automation error raised by the control is reported by its own code.
    return hr == DISP_E_EXCEPTION && FAILED(error.scode) ? error.scode : hr;
}

namespace {
HRESULT IdOf(IDispatch* p, const CString& name, DISPID& id)
{
    LPCOLESTR names[] = {name.GetString()};
    return p->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
}
} // namespace

HRESULT CControlSite::Get(const CString& name, VARIANT* result)
{
    DISPID id;
    HRESULT hr = IdOf(m_pDispatch, name, id);
    return SUCCEEDED(hr) ? InvokeById(id, DISPATCH_PROPERTYGET, {}, result) : hr;
}

HRESULT CControlSite::Put(const CString& name, const VARIANT& value)
{
    DISPID id;
    HRESULT hr = IdOf(m_pDispatch, name, id);
    return SUCCEEDED(hr) ? InvokeById(id, DISPATCH_PROPERTYPUT, {value}, nullptr) : hr;
}

HRESULT CControlSite::Call(const CString& name, std::vector<VARIANT> args, VARIANT* result)
{
    DISPID id;
    HRESULT hr = IdOf(m_pDispatch, name, id);
    return SUCCEEDED(hr) ? InvokeById(id, DISPATCH_METHOD, std::move(args), result) : hr;
}

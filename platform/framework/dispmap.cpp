// Look-up and invocation of dispatch map rows, and the VARIANT conversions of their arguments.
#include "dispmap.h"

const DispEntry* CDispatchMap::FindById(DISPID dispid) const
{
    for (const auto& e : m_entries)
        if (e.dispid == dispid) return &e;
    return nullptr;
}

const DispEntry* CDispatchMap::FindByName(const CString& name) const
{
    const DispEntry* found = nullptr;
    for (const auto& e : m_entries)
        if (e.name.CompareNoCase(name) == 0 && (!found || found->bStock)) found = &e;
    return found;
}

void CDispatchMap::Alias(DISPID dispid, DISPID target, const CString& name)
{
    DispEntry e = *FindById(target);
    e.dispid = dispid;
    e.name = name;
    m_entries.push_back(std::move(e));
}

const EventEntry* CEventMap::FindById(DISPID dispid) const
{
    for (const auto& e : m_entries)
        if (e.dispid == dispid) return &e;
    return nullptr;
}

const EventEntry* CEventMap::FindByName(const CString& name) const
{
    for (const auto& e : m_entries)
        if (e.name.CompareNoCase(name) == 0) return &e;
    return nullptr;
}

namespace {

HRESULT InvokeMethod(const DispEntry& e, CCmdTarget* t, DISPPARAMS* p, VARIANT* result, UINT* argErr)
{
    if (p->cNamedArgs) return DISP_E_NONAMEDARGS;
    if (p->cArgs != e.params.size()) return DISP_E_BADPARAMCOUNT;
    std::vector<COleVariant> args(p->cArgs);
    for (UINT i = 0; i < p->cArgs; ++i) {
        const VARIANT& given = p->rgvarg[p->cArgs - 1 - i];   // COM passes arguments last first
        HRESULT hr = VariantChangeType(&args[i], &given, 0, e.params[i]);
        if (FAILED(hr)) { if (argErr) *argErr = p->cArgs - 1 - i; return hr; }
    }
    std::vector<VARIANT> plain(args.begin(), args.end());
    if (result) VariantInit(result);
    return e.call(t, plain.data(), result);
}

HRESULT InvokeProperty(const DispEntry& e, CCmdTarget* t, WORD flags, DISPPARAMS* p, VARIANT* result)
{
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        if (p->cArgs != 1) return DISP_E_BADPARAMCOUNT;
        if (!e.put) return DISP_E_MEMBERNOTFOUND;
        return e.put(t, p->rgvarg[0]);
    }
    if (p->cArgs != 0) return DISP_E_BADPARAMCOUNT;
    if (!e.get) return DISP_E_MEMBERNOTFOUND;
    COleVariant value;
    HRESULT hr = e.get(t, &value);
    if (SUCCEEDED(hr) && result) *result = value.Detach();
    return hr;
}

} // namespace

HRESULT CDispatchMap::Invoke(CCmdTarget* t, DISPID dispid, WORD flags, DISPPARAMS* p, VARIANT* result,
                             UINT* argErr) const
{
    const DispEntry* e = FindById(dispid);
    if (!e) return DISP_E_MEMBERNOTFOUND;
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    if (!p) p = &none;
    if (e->flags & DISPATCH_METHOD) {
        if (!(flags & DISPATCH_METHOD)) return DISP_E_MEMBERNOTFOUND;
        return InvokeMethod(*e, t, p, result, argErr);
    }
    // A property get may come as a method call, as script engines do.
    if (flags & DISPATCH_METHOD && !(flags & DISPATCH_PROPERTYGET) && p->cArgs) return DISP_E_MEMBERNOTFOUND;
    return InvokeProperty(*e, t, flags, p, result);
}

HRESULT DispFromVariant(const VARIANT& v, VARTYPE vt, SHORT& out)
{
    COleVariant c;
    HRESULT hr = VariantChangeType(&c, &v, 0, vt == VT_BOOL ? VT_BOOL : VT_I2);
    if (SUCCEEDED(hr)) out = c.vt == VT_BOOL ? c.boolVal : c.iVal;
    return hr;
}

HRESULT DispFromVariant(const VARIANT& v, VARTYPE vt, LONG& out)
{
    COleVariant c;
    HRESULT hr = VariantChangeType(&c, &v, 0, vt == VT_BOOL ? VT_BOOL : VT_I4);
    if (SUCCEEDED(hr)) out = c.vt == VT_BOOL ? static_cast<LONG>(c.boolVal) : c.lVal; // true arrives as -1
    return hr;
}

HRESULT DispFromVariant(const VARIANT& v, VARTYPE, OLE_COLOR& out)
{
    COleVariant c;
    HRESULT hr = VariantChangeType(&c, &v, 0, VT_I8);
    if (FAILED(hr)) return hr;
    if (c.llVal < INT32_MIN || c.llVal > static_cast<LONGLONG>(UINT32_MAX)) return DISP_E_OVERFLOW;
    out = static_cast<OLE_COLOR>(c.llVal);
    return S_OK;
}

HRESULT DispFromVariant(const VARIANT& v, VARTYPE, CString& out)
{
    COleVariant c;
    HRESULT hr = VariantChangeType(&c, &v, 0, VT_BSTR);
    if (SUCCEEDED(hr)) out = BstrToString(c.bstrVal);
    return hr;
}

HRESULT DispFromVariant(const VARIANT& v, VARTYPE, LPDISPATCH& out)
{
    const VARIANT* p = &v;
    while (p->vt == (VT_BYREF | VT_VARIANT)) p = p->pvarVal;
    if (p->vt == VT_DISPATCH || p->vt == VT_UNKNOWN) { out = p->pdispVal; return S_OK; }
    if (p->vt == VT_EMPTY || p->vt == VT_NULL) { out = nullptr; return S_OK; }
    return DISP_E_TYPEMISMATCH;
}

void DispToVariant(SHORT value, VARTYPE vt, VARIANT* out)
{
    VariantInit(out);
    out->vt = vt == VT_BOOL ? VT_BOOL : VT_I2;
    if (vt == VT_BOOL) out->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    else out->iVal = value;
}

void DispToVariant(LONG value, VARTYPE vt, VARIANT* out)
{
    VariantInit(out);
    out->vt = vt == VT_BOOL ? VT_BOOL : VT_I4;
    if (vt == VT_BOOL) out->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    else out->lVal = value;
}

void DispToVariant(OLE_COLOR value, VARTYPE, VARIANT* out)
{
    VariantInit(out);
    out->vt = VT_UI4;
    out->ulVal = value;
}

void DispToVariant(const CString& value, VARTYPE, VARIANT* out)
{
    VariantInit(out);
    out->vt = VT_BSTR;
    out->bstrVal = SysAllocStringLen(value.GetString(), value.GetLength());
}

void DispToVariant(LPDISPATCH value, VARTYPE, VARIANT* out)
{
    VariantInit(out);
    out->vt = VT_DISPATCH;
    out->pdispVal = value;
}

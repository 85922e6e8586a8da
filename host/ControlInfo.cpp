// CControlInfo: the coclass walked through ITypeInfo, as a container binds to a control it has
// never seen.
#include "host/ControlInfo.h"
#include <algorithm>
#include "com/ocidl.h"

namespace {

CString TakeString(BSTR b)
{
    CString s = BstrToString(b);
    SysFreeString(b);
    return s;
}

// The interface the coclass names as its default one, or as its default source of events.
CComPtr<ITypeInfo> DefaultInterface(ITypeInfo* coclass, bool bSource)
{
    CComPtr<ITypeInfo> out;
    TYPEATTR* attr = nullptr;
    if (FAILED(coclass->GetTypeAttr(&attr))) return out;
    for (UINT i = 0; i < attr->cImplTypes && !out; ++i) {
        INT flags = 0;
        HREFTYPE ref = 0;
        if (coclass->GetImplTypeFlags(i, &flags) != S_OK || !(flags & IMPLTYPEFLAG_FDEFAULT)) continue;
        if (((flags & IMPLTYPEFLAG_FSOURCE) != 0) != bSource) continue;
        if (coclass->GetRefTypeOfImplType(i, &ref) == S_OK) coclass->GetRefTypeInfo(ref, &out);
    }
    coclass->ReleaseTypeAttr(attr);
    return out;
}

// A type with the name of the type it refers to. An alias and an interface resolve to the automation
// type that travels (OLE_COLOR to VT_UI4, IFontDisp to VT_DISPATCH); an enumeration stays
// VT_USERDEFINED, its values being the library's constants.
ElemInfo Elem(ITypeInfo* info, const TYPEDESC& t, const CString& name = CString())
{
    ElemInfo e{name, static_cast<VARTYPE>(t.vt & ~VT_BYREF), CString(), (t.vt & VT_BYREF) != 0};
    CComPtr<ITypeInfo> ref;
    BSTR typeName = nullptr;
    TYPEATTR* attr = nullptr;
    if (e.vt != VT_USERDEFINED || info->GetRefTypeInfo(t.hreftype, &ref) != S_OK) return e;
    if (ref->GetDocumentation(MEMBERID_NIL, &typeName, nullptr, nullptr, nullptr) == S_OK) e.typeName = TakeString(typeName);
    if (ref->GetTypeAttr(&attr) != S_OK) return e;
    if (attr->typekind == TKIND_ALIAS) e.vt = attr->tdescAlias.vt;
    else if (attr->typekind == TKIND_DISPATCH || attr->typekind == TKIND_INTERFACE) e.vt = VT_DISPATCH;
    ref->ReleaseTypeAttr(attr);
    return e;
}

// The member's name, then its parameters' names.
std::vector<CString> Names(ITypeInfo* info, MEMBERID memid, UINT cParams)
{
    std::vector<BSTR> names(cParams + 1, nullptr);
    UINT n = 0;
    info->GetNames(memid, names.data(), cParams + 1, &n);
    std::vector<CString> out;
    for (UINT i = 0; i < n; ++i) out.push_back(TakeString(names[i]));
    out.resize(cParams + 1);
    return out;
}

// A function's name and its parameters, named and typed.
template <class Info>
Info FunctionOf(ITypeInfo* info, const FUNCDESC& f)
{
    const UINT cParams = static_cast<UINT>(std::max<SHORT>(f.cParams, 0));
    const std::vector<CString> names = Names(info, f.memid, cParams);
    Info out;
    out.name = names[0];
    out.dispid = f.memid;
    for (UINT i = 0; i < cParams; ++i) out.params.push_back(Elem(info, f.lprgelemdescParam[i].tdesc, names[i + 1]));
    return out;
}

template <class T>
const T* ByName(const std::vector<T>& items, const CString& name)
{
    auto it = std::find_if(items.begin(), items.end(), [&](const T& x) { return x.name.CompareNoCase(name) == 0; });
    return it == items.end() ? nullptr : &*it;
}

template <class T>
const T* ById(const std::vector<T>& items, DISPID dispid)
{
    auto it = std::find_if(items.begin(), items.end(), [&](const T& x) { return x.dispid == dispid; });
    return it == items.end() ? nullptr : &*it;
}

} // namespace

CControlInfo::CControlInfo(IUnknown* pControl)
{
    CComPtr<IProvideClassInfo> provide;
    CComPtr<ITypeInfo> coclass;
    if (!pControl || FAILED(pControl->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(&provide))) ||
        FAILED(provide->GetClassInfo(&coclass)))
        return;
    if (CComPtr<ITypeInfo> dispatch = DefaultInterface(coclass.Get(), false)) ReadMembers(dispatch.Get());
    if (CComPtr<ITypeInfo> events = DefaultInterface(coclass.Get(), true)) ReadEvents(events.Get());
}

// A dispatch interface declares its properties as variables and its methods as functions.
void CControlInfo::ReadMembers(ITypeInfo* pDispatch)
{
    TYPEATTR* attr = nullptr;
    if (FAILED(pDispatch->GetTypeAttr(&attr))) return;
    for (UINT i = 0; i < attr->cVars; ++i) {
        VARDESC* v = nullptr;
        if (FAILED(pDispatch->GetVarDesc(i, &v))) continue;
        if (v->varkind == VAR_DISPATCH) {
            const bool bReadOnly = (v->wVarFlags & VARFLAG_FREADONLY) != 0;
            m_members.push_back({Names(pDispatch, v->memid, 0)[0], v->memid,
                                 static_cast<WORD>(DISPATCH_PROPERTYGET | (bReadOnly ? 0 : DISPATCH_PROPERTYPUT)),
                                 Elem(pDispatch, v->elemdescVar.tdesc), {}});
        }
        pDispatch->ReleaseVarDesc(v);
    }
    for (UINT i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* f = nullptr;
        if (FAILED(pDispatch->GetFuncDesc(i, &f))) continue;
        MemberInfo m = FunctionOf<MemberInfo>(pDispatch, *f);
        m.wInvoke = DISPATCH_METHOD;
        m.result = Elem(pDispatch, f->elemdescFunc.tdesc);
        m_members.push_back(std::move(m));
        pDispatch->ReleaseFuncDesc(f);
    }
    pDispatch->ReleaseTypeAttr(attr);
}

void CControlInfo::ReadEvents(ITypeInfo* pEvents)
{
    TYPEATTR* attr = nullptr;
    if (FAILED(pEvents->GetTypeAttr(&attr))) return;
    m_iidEvents = attr->guid;
    for (UINT i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* f = nullptr;
        if (FAILED(pEvents->GetFuncDesc(i, &f))) continue;
        m_events.push_back(FunctionOf<EventInfo>(pEvents, *f));
        pEvents->ReleaseFuncDesc(f);
    }
    pEvents->ReleaseTypeAttr(attr);
}

const MemberInfo* CControlInfo::FindMember(const CString& name) const { return ByName(m_members, name); }
const MemberInfo* CControlInfo::FindMember(DISPID dispid) const { return ById(m_members, dispid); }
const EventInfo* CControlInfo::FindEvent(const CString& name) const { return ByName(m_events, name); }
const EventInfo* CControlInfo::FindEvent(DISPID dispid) const { return ById(m_events, dispid); }

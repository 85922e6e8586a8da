// Dispatch and event maps of CCmdTarget: the MFC tables that turn IDispatch calls into member calls.
#pragma once
#include <functional>
#include <initializer_list>
#include <type_traits>
#include <vector>
#include "com/variant.h"

class CCmdTarget {
public:
    virtual ~CCmdTarget() = default;
};

// One row of a dispatch map. Typed by the VARTYPE of the type library, not by the C++ type,
// so that a BOOL and a LONG (the same C++ type) convert as their rows say.
struct DispEntry {
    CString name;
    DISPID dispid = DISPID_UNKNOWN;
    WORD flags = 0;                 // DISPATCH_METHOD, or DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT
    VARTYPE vt = VT_EMPTY;          // property type or method result; VT_EMPTY for none
    std::vector<VARTYPE> params;    // method parameters, in declaration order
    bool bStock = false;            // the framework's own stock entry
    std::function<HRESULT(CCmdTarget*, VARIANT*)> get;
    std::function<HRESULT(CCmdTarget*, const VARIANT&)> put;
    std::function<HRESULT(CCmdTarget*, const VARIANT*, VARIANT*)> call; // arguments coerced, in order
};

inline DispEntry MakeDispEntry(const char16_t* name, DISPID dispid, WORD flags, VARTYPE vt)
{
    DispEntry e;
    e.name = name;
    e.dispid = dispid;
    e.flags = flags;
    e.vt = vt;
    return e;
}

struct EventEntry {
    CString name;
    DISPID dispid;
    std::vector<VARTYPE> params;    // VT_BYREF | VT_I2 for a by-reference short
};

class CDispatchMap {
public:
    CDispatchMap() = default;
    CDispatchMap(std::initializer_list<DispEntry> entries) : m_entries(entries) {}
    const std::vector<DispEntry>& Entries() const { return m_entries; }
    const DispEntry* FindById(DISPID dispid) const;
    // Case-insensitive, as automation looks names up; an own entry hides a stock one of the same name.
    const DispEntry* FindByName(const CString& name) const;
    HRESULT Invoke(CCmdTarget* pTarget, DISPID dispid, WORD wFlags, DISPPARAMS* pParams, VARIANT* pResult,
                   UINT* puArgErr) const;
    void Add(DispEntry e) { m_entries.push_back(std::move(e)); }
    void Alias(DISPID dispid, DISPID target, const CString& name);

private:
    std::vector<DispEntry> m_entries;
};

class CEventMap {
public:
    CEventMap(std::initializer_list<EventEntry> entries) : m_entries(entries) {}
    const std::vector<EventEntry>& Entries() const { return m_entries; }
    const EventEntry* FindById(DISPID dispid) const;
    const EventEntry* FindByName(const CString& name) const;
private:
    std::vector<EventEntry> m_entries;
};

// Conversions between a VARIANT of the row's type and the member's C++ type.
HRESULT DispFromVariant(const VARIANT& v, VARTYPE vt, SHORT& out);
HRESULT DispFromVariant(const VARIANT& v, VARTYPE vt, LONG& out);      // VT_I4, VT_BOOL (sign-extended)
HRESULT DispFromVariant(const VARIANT& v, VARTYPE vt, OLE_COLOR& out); // VT_UI4 taking any 32-bit value
HRESULT DispFromVariant(const VARIANT& v, VARTYPE vt, CString& out);
HRESULT DispFromVariant(const VARIANT& v, VARTYPE vt, LPDISPATCH& out); // borrowed, not AddRef'd
void DispToVariant(SHORT value, VARTYPE vt, VARIANT* out);
void DispToVariant(LONG value, VARTYPE vt, VARIANT* out);
void DispToVariant(OLE_COLOR value, VARTYPE vt, VARIANT* out);
void DispToVariant(const CString& value, VARTYPE vt, VARIANT* out);
void DispToVariant(LPDISPATCH value, VARTYPE vt, VARIANT* out);           // takes over the reference

template <class T>
using DispArgType = std::conditional_t<std::is_same_v<std::decay_t<T>, LPCTSTR>, CString, std::decay_t<T>>;

// Stand-in: a parameter declared LPCTSTR reads its string up to the first NUL, so a BSTR holding a
// NUL would arrive cut; it is refused instead, where the real framework passes it on silently short.
template <class A>
HRESULT DispCheckArg(const DispArgType<A>& value)
{
    if constexpr (std::is_same_v<std::decay_t<A>, LPCTSTR>) return value.Find(u'\0') >= 0 ? DISP_E_TYPEMISMATCH : S_OK;
    else return S_OK;
}

// DISP_PROPERTY_EX: a property with a get and a set member.
template <class C, class R, class A>
DispEntry DispProperty(const char16_t* name, DISPID dispid, VARTYPE vt, R (C::*get)(), void (C::*set)(A))
{
    DispEntry e = MakeDispEntry(name, dispid, DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT, vt);
    e.get = [get, vt](CCmdTarget* t, VARIANT* out) {
        DispToVariant((static_cast<C*>(t)->*get)(), vt, out);
        return S_OK;
    };
    e.put = [set, vt](CCmdTarget* t, const VARIANT& v) {
        DispArgType<A> value{};
        HRESULT hr = DispFromVariant(v, vt, value);
        if (SUCCEEDED(hr)) hr = DispCheckArg<A>(value);
        if (SUCCEEDED(hr)) (static_cast<C*>(t)->*set)(value);
        return hr;
    };
    return e;
}

namespace dispmap_detail {
template <class C, class R, class... A, size_t... I>
HRESULT CallMember(C* self, R (C::*fn)(A...), const std::vector<VARTYPE>& types, const VARIANT* args,
                   VARIANT* result, VARTYPE vtResult, std::index_sequence<I...>)
{
    std::tuple<DispArgType<A>...> values;
    HRESULT hr = S_OK;
    ((hr = SUCCEEDED(hr) ? DispFromVariant(args[I], types[I], std::get<I>(values)) : hr), ...);
    ((hr = SUCCEEDED(hr) ? DispCheckArg<A>(std::get<I>(values)) : hr), ...);
    if (FAILED(hr)) return hr;
    if constexpr (std::is_void_v<R>) {
        (self->*fn)(std::get<I>(values)...);
    } else {
        auto r = (self->*fn)(std::get<I>(values)...);
        if (result) DispToVariant(r, vtResult, result);
    }
    return S_OK;
}
} // namespace dispmap_detail

// DISP_FUNCTION: a method with its parameter types.
template <class C, class R, class... A>
DispEntry DispMethod(const char16_t* name, DISPID dispid, VARTYPE vtResult, R (C::*fn)(A...),
                     std::vector<VARTYPE> params = {})
{
    DispEntry e = MakeDispEntry(name, dispid, DISPATCH_METHOD, vtResult);
    e.params = params;
    e.call = [fn, params, vtResult](CCmdTarget* t, const VARIANT* args, VARIANT* result) {
        return dispmap_detail::CallMember(static_cast<C*>(t), fn, params, args, result, vtResult,
                                          std::index_sequence_for<A...>{});
    };
    return e;
}

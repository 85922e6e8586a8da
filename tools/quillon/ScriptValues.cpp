// Script objects over dispatch interfaces (a Proxy per object) and the VARIANT conversions.
#include "ScriptValues.h"
#include <duktape.h>
#include <map>
#include "ScriptHost.h"
#include "ScriptWrappers.h"

namespace {

const char* HResultName(HRESULT hr)
{
    switch (hr) {
    case E_NOTIMPL: return "not implemented yet";
    case DISP_E_TYPEMISMATCH: return "type mismatch";
    case DISP_E_OVERFLOW: return "value out of range";
    case DISP_E_BADPARAMCOUNT: return "wrong number of arguments";
    case DISP_E_MEMBERNOTFOUND: return "no such member";
    case DISP_E_UNKNOWNNAME: return "unknown name";
    case CTL_E_SETNOTSUPPORTED: return "the property is read-only";
    }
    return "failed";
}

std::string Utf8(const CString& s) { return ToUtf8(s); }

// Names a script engine asks of every object; they are not members of the control.
bool IsEngineName(const char* key)
{
    static const char* names[] = {"toString", "valueOf", "toJSON", "inspect", "constructor", "then"};
    for (const char* n : names)
        if (std::string(key) == n) return true;
    return false;
}

} // namespace

void ThrowDispatchError(duk_context* ctx, const CString& member, HRESULT hr)
{
    (void)duk_error(ctx, DUK_ERR_ERROR, "'%s': %s (0x%08X)", Utf8(member).c_str(), HResultName(hr), static_cast<unsigned>(hr));
    for (;;) {} // duk_error does not return
}

void PushVariant(duk_context* ctx, const VARIANT& in)
{
    COleVariant v;
    if (FAILED(VariantCopy(&v, &in)) || ((v.vt & VT_BYREF) && FAILED(VariantChangeType(&v, &in, 0, in.vt & ~VT_BYREF)))) {
        duk_push_undefined(ctx);
        return;
    }
    switch (v.vt) {
    case VT_EMPTY: duk_push_undefined(ctx); return;
    case VT_NULL: duk_push_null(ctx); return;
    case VT_BOOL: duk_push_boolean(ctx, v.boolVal != 0); return;
    case VT_BSTR: duk_push_string(ctx, Utf8(BstrToString(v.bstrVal)).c_str()); return;
    case VT_DISPATCH: case VT_UNKNOWN:
        if (!v.pdispVal) duk_push_null(ctx);
        else PushDispatch(ctx, v.pdispVal);
        return;
    }
    COleVariant number;
    if (SUCCEEDED(VariantChangeType(&number, &v, 0, VT_R8))) duk_push_number(ctx, number.dblVal);
    else duk_push_undefined(ctx);
}

COleVariant ToVariant(duk_context* ctx, int idx)
{
    COleVariant v;
    if (duk_is_boolean(ctx, idx)) return COleVariant(SHORT(duk_get_boolean(ctx, idx) ? 1 : 0), VT_BOOL);
    if (duk_is_string(ctx, idx)) return COleVariant(CString(FromUtf8(duk_get_string(ctx, idx))));
    if (duk_is_null(ctx, idx)) { v.vt = VT_NULL; return v; }
    if (duk_is_number(ctx, idx)) {
        double d = duk_get_number(ctx, idx);
        if (d == static_cast<double>(static_cast<long long>(d)) && d >= -2147483648.0 && d < 4294967296.0) {
            if (d < 2147483648.0) return COleVariant(static_cast<LONG>(d));
            v.vt = VT_UI4;
            v.ulVal = static_cast<ULONG>(d);
            return v;
        }
        return COleVariant(d);
    }
    if (duk_is_object(ctx, idx)) {
        if (IDispatch* p = WrappedDispatch(ctx, idx)) return COleVariant(p);
    }
    return v; // undefined and anything else: empty
}

// The get trap: a method becomes a function; a property is read; an unknown name is an error.
static duk_ret_t ObjectGet(duk_context* ctx)
{
    if (!duk_is_string(ctx, 1)) return 0;
    const char* key = duk_get_string(ctx, 1);
    Wrapped w = WrappedOf(ctx, 0);
    if (w.site && std::string(key) == "on") { PushOnFunction(ctx, w.site); return 1; }
    if (IsEngineName(key)) return 0;
    CString name(FromUtf8(key));
    MemberKind kind = FindMember(w, name);
    if (kind == MemberKind::Unknown) return duk_error(ctx, DUK_ERR_REFERENCE_ERROR, "unknown property or method '%s'", key);
    if (kind == MemberKind::Method) { PushMethodFunction(ctx, w, name); return 1; }
    COleVariant value;
    HRESULT hr = InvokeMember(w, name, DISPATCH_PROPERTYGET, {}, &value);
    ScriptHostOf(ctx).ThrowPending();
    if (FAILED(hr)) ThrowDispatchError(ctx, name, hr);
    PushVariant(ctx, value);
    return 1;
}

static duk_ret_t ObjectSet(duk_context* ctx)
{
    if (!duk_is_string(ctx, 1)) return 0;
    const char* key = duk_get_string(ctx, 1);
    Wrapped w = WrappedOf(ctx, 0);
    CString name(FromUtf8(key));
    if (FindMember(w, name) != MemberKind::Property)
        return duk_error(ctx, DUK_ERR_REFERENCE_ERROR, "unknown property '%s'", key);
    COleVariant value = ToVariant(ctx, 2);
    HRESULT hr = InvokeMember(w, name, DISPATCH_PROPERTYPUT, {value}, nullptr);
    ScriptHostOf(ctx).ThrowPending();
    if (FAILED(hr)) ThrowDispatchError(ctx, name, hr);
    duk_push_true(ctx);
    return 1;
}

void PushProxy(duk_context* ctx, const Wrapped& w)
{
    duk_push_object(ctx); // the target holds nothing: every access goes through the traps
    RegisterWrapped(ctx, -1, w);
    duk_push_object(ctx);
    duk_push_c_function(ctx, ObjectGet, 3);
    duk_put_prop_string(ctx, -2, "get");
    duk_push_c_function(ctx, ObjectSet, 4);
    duk_put_prop_string(ctx, -2, "set");
    duk_push_proxy(ctx, 0);
    RegisterWrapped(ctx, -1, w);
}

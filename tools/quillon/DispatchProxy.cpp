// The script object of any other automation object (a control's Font, a picture): its properties
// by name through IDispatch, and the reference it holds released when the script drops the object.
#include <string>
#include <string_view>
#include "ScriptArgs.h"
#include "ScriptBinding.h"
#include "ScriptObjects.h"
#include "ScriptValues.h"

namespace {
const char kDispatchKey[] = DUK_HIDDEN_SYMBOL("dispatch");

IDispatch* TargetDispatch(duk_context* ctx, duk_idx_t idx)
{
    return static_cast<IDispatch*>(GetHiddenPointer(ctx, idx, kDispatchKey));
}

HRESULT IdOfName(IDispatch* p, const CString& wide, DISPID& id)
{
    if (wide.Find(u'\0') >= 0) return DISP_E_UNKNOWNNAME; // the name would arrive cut
    LPCOLESTR names[] = {wide.GetString()};
    return p->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
}

HRESULT InvokeProperty(IDispatch* p, DISPID id, WORD flags, VARIANT* arg, VARIANT* result)
{
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{arg, arg ? &named : nullptr, arg ? 1u : 0u, arg ? 1u : 0u};
    return p->Invoke(id, IID_NULL, 0, flags, &params, result, nullptr, nullptr);
}

// get trap [target key receiver]
duk_ret_t GetBody(duk_context* ctx)
{
    IDispatch* p = TargetDispatch(ctx, 0);
    if (duk_is_symbol(ctx, 1)) {
        duk_dup(ctx, 1);
        duk_get_prop(ctx, 0);
        return 1;
    }
    DISPID id = DISPID_UNKNOWN;
    if (SUCCEEDED(IdOfName(p, ScriptString(ctx, 1), id))) {
        COleVariant value;
        HRESULT hr = InvokeProperty(p, id, DISPATCH_PROPERTYGET, nullptr, &value);
        if (FAILED(hr)) return PushDispatchError(ctx, "reading", ScriptString(ctx, 1), hr);
        PushVariant(ctx, value);
        return 1;
    }
    const char* name = duk_get_string(ctx, 1);
    duk_dup(ctx, 1);
    if (duk_has_prop(ctx, 0)) { // the whole key, NULs and all
        duk_dup(ctx, 1);
        duk_get_prop(ctx, 0);
        return 1;
    }
    if (std::string_view(name) == "valueOf" || std::string_view(name) == "toJSON") return 0;
    return PushScriptError(ctx, "unknown property '" + std::string(name) + "'");
}

// set trap [target key value receiver]
duk_ret_t SetBody(duk_context* ctx)
{
    IDispatch* p = TargetDispatch(ctx, 0);
    std::string name = duk_is_symbol(ctx, 1) ? "(symbol)" : duk_get_string(ctx, 1);
    DISPID id = DISPID_UNKNOWN;
    if (duk_is_symbol(ctx, 1) || FAILED(IdOfName(p, ScriptString(ctx, 1), id))) return PushScriptError(ctx, "unknown property '" + name + "'");
    COleVariant value;
    if (!ToVariant(ctx, 2, value))
        return PushScriptError(ctx, "'" + name + "' cannot be set to " + ScriptTypeName(ctx, 2));
    HRESULT hr = InvokeProperty(p, id, DISPATCH_PROPERTYPUT, &value, nullptr);
    // A name the object knows that takes no put is a property it only lets be read.
    if (hr == CTL_E_SETNOTSUPPORTED || hr == DISP_E_MEMBERNOTFOUND)
        return PushScriptError(ctx, "'" + name + "' is a read-only property");
    if (FAILED(hr)) return PushDispatchError(ctx, "setting", CString(FromUtf8(name)), hr);
    duk_push_true(ctx);
    return 1;
}

duk_ret_t Finalize(duk_context* ctx)
{
    if (IDispatch* p = TargetDispatch(ctx, 0)) {
        PutHiddenPointer(ctx, 0, kDispatchKey, nullptr);
        p->Release();
    }
    return 0;
}

duk_ret_t ToStringBody(duk_context* ctx)
{
    duk_push_string(ctx, "[object Dispatch]");
    return 1;
}
} // namespace

void PushDispatch(duk_context* ctx, IDispatch* p)
{
    // The finalizer sits on the target, which only the proxy reaches: it runs once the proxy is gone,
    // or when the heap is destroyed.
    duk_push_bare_object(ctx);
    p->AddRef();
    PutHiddenPointer(ctx, -1, kDispatchKey, p);
    PutFunction(ctx, -1, "toString", &ToStringBody, 0);
    duk_push_c_function(ctx, &Finalize, 2);
    duk_set_finalizer(ctx, -2);
    duk_push_bare_object(ctx);
    PutFunction(ctx, -1, "get", &Guarded<GetBody>, 3);
    PutFunction(ctx, -1, "set", &Guarded<SetBody>, 4);
    duk_push_proxy(ctx, 0);
}

IDispatch* DispatchOf(duk_context* ctx, duk_idx_t idx)
{
    return TargetDispatch(ctx, idx);
}

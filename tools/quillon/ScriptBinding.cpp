// Errors and hidden properties shared by the script's C functions.
#include "ScriptBinding.h"
#include <cstdio>
#include "ScriptHost.h"

void ThrowPendingHandlerError(duk_context* ctx)
{
    CScriptHost& host = ScriptHostOf(ctx);
    if (!host.HasHandlerError()) return;
    host.TakeHandlerError();
    (void)duk_throw(ctx);
}

duk_ret_t PushScriptError(duk_context* ctx, const std::string& message)
{
    // No C file name: Duktape then blames the script line that made the call.
    duk_push_error_object_raw(ctx, DUK_ERR_ERROR, nullptr, 0, "%s", message.c_str());
    return kThrow;
}

std::string HResultText(HRESULT hr)
{
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%08X", static_cast<unsigned>(hr));
    const char* name = nullptr;
    switch (hr) {
    case E_NOTIMPL: name = "not implemented"; break;
    case E_FAIL: name = "unspecified failure"; break;
    case DISP_E_MEMBERNOTFOUND: name = "member not found"; break;
    case DISP_E_TYPEMISMATCH: name = "type mismatch"; break;
    case DISP_E_UNKNOWNNAME: name = "unknown name"; break;
    case DISP_E_OVERFLOW: name = "overflow"; break;
    case DISP_E_BADPARAMCOUNT: name = "wrong number of arguments"; break;
    case DISP_E_PARAMNOTFOUND: name = "parameter not found"; break;
    case DISP_E_EXCEPTION: name = "exception"; break;
    }
    return name ? std::string(hex) + " (" + name + ")" : std::string(hex);
}

duk_ret_t PushDispatchError(duk_context* ctx, const std::string& what, const CString& member, HRESULT hr)
{
    return PushScriptError(ctx, what + " '" + ToUtf8(member) + "' failed: HRESULT " + HResultText(hr));
}

void PutHiddenPointer(duk_context* ctx, duk_idx_t obj, const char* key, void* p)
{
    obj = duk_normalize_index(ctx, obj);
    duk_push_pointer(ctx, p);
    duk_put_prop_string(ctx, obj, key);
}

void* GetHiddenPointer(duk_context* ctx, duk_idx_t obj, const char* key)
{
    if (!duk_is_object(ctx, obj)) return nullptr;
    duk_get_prop_string(ctx, obj, key);
    void* p = duk_get_pointer(ctx, -1);
    duk_pop(ctx);
    return p;
}

void PutFunction(duk_context* ctx, duk_idx_t obj, const char* name, duk_c_function fn, duk_idx_t nargs)
{
    obj = duk_normalize_index(ctx, obj);
    duk_push_c_function(ctx, fn, nargs);
    duk_put_prop_string(ctx, obj, name);
}

// Script values to VARIANTs and back, by-reference arguments as {value: n} objects.
#include "ScriptValues.h"
#include <cmath>
#include "ScriptArgs.h"
#include "ScriptBinding.h"
#include "ScriptObjects.h"

namespace {
void PushString(duk_context* ctx, const CString& s) { PushScriptString(ctx, s); }

// Types the control does not hand out itself, through the coercions automation defines.
void PushOther(duk_context* ctx, const VARIANT& v)
{
    COleVariant number;
    if (SUCCEEDED(VariantChangeType(&number, &v, 0, VT_R8))) {
        duk_push_number(ctx, number.dblVal);
        return;
    }
    COleVariant text;
    if (SUCCEEDED(VariantChangeType(&text, &v, 0, VT_BSTR))) PushString(ctx, BstrToString(text.bstrVal));
    else duk_push_undefined(ctx);
}

void FromNumber(double d, COleVariant& out)
{
    out.Clear();
    if (std::trunc(d) == d && d >= -2147483648.0 && d <= 2147483647.0) {
        out.vt = VT_I4;
        out.lVal = static_cast<LONG>(d);
    } else if (std::trunc(d) == d && d > 0 && d < 4294967296.0) {
        out.vt = VT_UI4;
        out.ulVal = static_cast<ULONG>(d);
    } else {
        out.vt = VT_R8;
        out.dblVal = d;
    }
}

bool FromObject(duk_context* ctx, duk_idx_t idx, COleVariant& out)
{
    IDispatch* p = nullptr;
    if (CControlSite* site = ControlOf(ctx, idx)) p = site->Control();
    else p = DispatchOf(ctx, idx);
    if (!p) return false;
    out = COleVariant(p);
    return true;
}

bool IsByRefShort(const VARIANT& v) { return v.vt == (VT_BYREF | VT_I2); }

// [.. holder] -> [..]: the holder's value into the short the control reads back.
bool WriteBack(duk_context* ctx, VARIANT& arg, unsigned position)
{
    duk_get_prop_string(ctx, -1, "value");
    COleVariant value, shortValue;
    HRESULT hr = DISP_E_TYPEMISMATCH;
    if (ToVariant(ctx, -1, value)) hr = VariantChangeType(&shortValue, &value, 0, VT_I2);
    duk_pop_2(ctx);
    if (SUCCEEDED(hr)) {
        *arg.piVal = shortValue.iVal;
        return true;
    }
    PushScriptError(ctx, "by-reference argument " + std::to_string(position + 1) +
                             " must hold a short (-32768..32767), HRESULT " + HResultText(hr));
    return false;
}
} // namespace

void PushVariant(duk_context* ctx, const VARIANT& v)
{
    switch (v.vt) {
    case VT_EMPTY: duk_push_undefined(ctx); break;
    case VT_NULL: duk_push_null(ctx); break;
    case VT_I2: duk_push_int(ctx, v.iVal); break;
    case VT_I4: duk_push_int(ctx, v.lVal); break;
    case VT_UI4: duk_push_uint(ctx, v.ulVal); break;
    case VT_R4: duk_push_number(ctx, v.fltVal); break;
    case VT_R8: duk_push_number(ctx, v.dblVal); break;
    case VT_CY: duk_push_number(ctx, static_cast<double>(v.cyVal.int64) / 10000.0); break;
    case VT_BOOL: duk_push_boolean(ctx, v.boolVal != VARIANT_FALSE); break;
    case VT_BSTR: PushString(ctx, BstrToString(v.bstrVal)); break;
    case VT_DISPATCH:
        if (v.pdispVal) PushDispatch(ctx, v.pdispVal);
        else duk_push_null(ctx);
        break;
    default: PushOther(ctx, v); break;
    }
}

bool ToVariant(duk_context* ctx, duk_idx_t idx, COleVariant& out)
{
    out.Clear();
    switch (duk_get_type(ctx, idx)) {
    case DUK_TYPE_UNDEFINED: return true;
    case DUK_TYPE_NULL: out.vt = VT_NULL; return true;
    case DUK_TYPE_BOOLEAN:
        out.vt = VT_BOOL;
        out.boolVal = duk_get_boolean(ctx, idx) ? VARIANT_TRUE : VARIANT_FALSE;
        return true;
    case DUK_TYPE_NUMBER: FromNumber(duk_get_number(ctx, idx), out); return true;
    case DUK_TYPE_STRING: {
        out = COleVariant(ScriptString(ctx, idx));
        return true;
    }
    case DUK_TYPE_OBJECT: return FromObject(ctx, idx, out);
    default: return false;
    }
}

std::string ScriptTypeName(duk_context* ctx, duk_idx_t idx)
{
    if (duk_is_function(ctx, idx)) return "a function";
    if (duk_is_array(ctx, idx)) return "an array";
    switch (duk_get_type(ctx, idx)) {
    case DUK_TYPE_OBJECT: return "an object";
    case DUK_TYPE_BUFFER: return "a buffer";
    case DUK_TYPE_POINTER: return "a pointer";
    default: return "a value of this type";
    }
}

bool CallWithEventArgs(duk_context* ctx, VARIANT* args, unsigned count)
{
    duk_idx_t fn = duk_get_top_index(ctx);
    for (unsigned i = 0; i < count; ++i) {
        if (IsByRefShort(args[i])) {
            duk_push_object(ctx);
            duk_push_int(ctx, *args[i].piVal);
            duk_put_prop_string(ctx, -2, "value");
        } else {
            PushVariant(ctx, args[i]);
        }
    }
    // Keep the holders: the function gets copies of the references, and they are read afterwards.
    for (unsigned i = 0; i < count; ++i) duk_dup(ctx, fn + 1 + static_cast<duk_idx_t>(i));
    duk_dup(ctx, fn);
    duk_insert(ctx, fn + 1 + static_cast<duk_idx_t>(count));
    if (duk_pcall(ctx, static_cast<duk_idx_t>(count)) != DUK_EXEC_SUCCESS) {
        duk_replace(ctx, fn);
        duk_set_top(ctx, fn + 1);
        return false;
    }
    duk_pop(ctx);
    bool ok = true;
    for (unsigned i = 0; i < count && ok; ++i) {
        if (!IsByRefShort(args[i])) continue;
        duk_dup(ctx, fn + 1 + static_cast<duk_idx_t>(i));
        ok = WriteBack(ctx, args[i], i);
    }
    if (!ok) duk_replace(ctx, fn);
    duk_set_top(ctx, ok ? fn : fn + 1);
    return ok;
}

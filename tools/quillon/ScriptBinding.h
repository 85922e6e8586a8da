// Helpers for the C functions the script calls: errors raised without unwinding past C++ objects.
#pragma once
#include <duktape.h>
#include <string>
#include "com/variant.h"

// Duktape unwinds with longjmp, which would skip the destructors of C++ locals. A binding's body
// therefore never throws: it pushes the error and returns kThrow, and Guarded throws it from a frame
// that holds nothing to destroy. Guarded also rethrows an error that an event handler raised while
// the body was inside the control.
inline constexpr duk_ret_t kThrow = -1000;

void ThrowPendingHandlerError(duk_context* ctx);

template <duk_ret_t (*Body)(duk_context*)>
duk_ret_t Guarded(duk_context* ctx)
{
    duk_ret_t rc = Body(ctx);
    ThrowPendingHandlerError(ctx);
    return rc == kThrow ? duk_throw(ctx) : rc;
}

// Pushes an Error with the message, blamed on the script's line rather than on this source; returns kThrow.
duk_ret_t PushScriptError(duk_context* ctx, const std::string& message);
// The error for a failed dispatch call: the member and the HRESULT in hex; returns kThrow.
duk_ret_t PushDispatchError(duk_context* ctx, const std::string& what, const CString& member, HRESULT hr);
// "0x80020005 (type mismatch)", or just the hex for codes without a name.
std::string HResultText(HRESULT hr);

// A pointer kept in a hidden property, which scripts cannot see or change.
void PutHiddenPointer(duk_context* ctx, duk_idx_t obj, const char* key, void* p);
void* GetHiddenPointer(duk_context* ctx, duk_idx_t obj, const char* key);

// Adds a C function as a property of the object at obj.
void PutFunction(duk_context* ctx, duk_idx_t obj, const char* name, duk_c_function fn, duk_idx_t nargs);

// Helpers for the C functions the script calls: errors raised without unwinding past C++ objects.
#pragma once
#include <duktape.h>
#include <span>
#include <string>
#include <vector>
#include "com/variant.h"

// Duktape unwinds with longjmp, which would skip the destructors of C++ locals. A binding's body
// therefore never throws: it pushes the error and returns kThrow, and Guarded throws it from a frame
// that holds nothing to destroy. Guarded also rethrows an error that an event handler raised while
// the body was inside the control.
inline constexpr duk_ret_t kThrow = -1000;

void ThrowPendingHandlerError(duk_context* ctx);

// The arguments a call of the script API takes, named for messages; a function put with a
// signature has its arguments checked before its body runs.
enum class Arg { String, Number, Control, Function, Any };
struct Param {
    const char* name;
    Arg kind;
    bool optional = false;
};
struct Signature {
    const char* call; // "form.create"
    std::span<const Param> params;
};
// False with the error pushed when an argument is missing or of the wrong kind ("form.create(progID,
// x, y, w, h): missing w and h"); true for a function put without a signature.
bool CheckArguments(duk_context* ctx);

template <duk_ret_t (*Body)(duk_context*)>
duk_ret_t Guarded(duk_context* ctx)
{
    if (!CheckArguments(ctx)) return duk_throw(ctx);
    duk_ret_t rc = Body(ctx);
    ThrowPendingHandlerError(ctx);
    return rc == kThrow ? duk_throw(ctx) : rc;
}

// Pushes an Error with the message, blamed on the script's line rather than on this source; returns kThrow.
duk_ret_t PushScriptError(duk_context* ctx, const std::string& message);
// The error for a failed dispatch call: the member and the HRESULT in hex; returns kThrow.
duk_ret_t PushDispatchError(duk_context* ctx, const std::string& what, const CString& member, HRESULT hr);
// "0x80020005 DISP_E_TYPEMISMATCH (type mismatch)": the code, its name and what it means.
std::string HResultText(HRESULT hr);

// The candidate a misspelt name most likely meant (letters compared without regard to case), or
// empty when none is close enough to be a slip of the keyboard.
std::string NearestName(const std::string& name, const std::vector<std::string>& candidates);
// " (did you mean 'Text'?)" for the nearest candidate, or empty.
std::string DidYouMean(const std::string& name, const std::vector<std::string>& candidates);

// A pointer kept in a hidden property, which scripts cannot see or change.
void PutHiddenPointer(duk_context* ctx, duk_idx_t obj, const char* key, void* p);
void* GetHiddenPointer(duk_context* ctx, duk_idx_t obj, const char* key);

// Adds a C function as a property of the object at obj.
void PutFunction(duk_context* ctx, duk_idx_t obj, const char* name, duk_c_function fn, duk_idx_t nargs);
// The same for a function of the script API whose arguments are checked against the signature
// (which must outlive the heap).
void PutCall(duk_context* ctx, duk_idx_t obj, const char* name, duk_c_function fn, const Signature& signature);

// Replaces the object on top of the stack by a proxy that refuses names it does not have, reading or
// writing, with an error that names the object ("host.pmup is not a function or property") and the
// nearest name it does have.
void MakeStrict(duk_context* ctx, const char* objectName);

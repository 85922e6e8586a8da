// Arguments of the script's C functions, checked: numbers within the range the host can take,
// strings with their whole length, names and paths without NUL characters. Each check pushes a
// script error naming the function and the argument and returns false (the body then returns kThrow).
#pragma once
#include <duktape.h>
#include <string>
#include "base/cstring.h"
#include "base/rect.h"

// Screen and client coordinates that can stand in a mouse message's 16-bit halves.
inline constexpr int kMinCoordinate = -32768;
inline constexpr int kMaxCoordinate = 32767;
// Window widths and heights.
inline constexpr int kMaxExtent = 32767;

bool RequireInt(duk_context* ctx, duk_idx_t idx, const char* function, const char* name, int lo, int hi, int& out);
inline bool RequireCoordinate(duk_context* ctx, duk_idx_t idx, const char* function, const char* name, int& out)
{
    return RequireInt(ctx, idx, function, name, kMinCoordinate, kMaxCoordinate, out);
}
inline bool RequireExtent(duk_context* ctx, duk_idx_t idx, const char* function, const char* name, int& out)
{
    return RequireInt(ctx, idx, function, name, 0, kMaxExtent, out);
}
// x, y, w, h from idx on, as a rectangle.
bool RequireRect(duk_context* ctx, duk_idx_t idx, const char* function, RECT& out);

// Script strings are CESU-8 (a character outside the BMP is two 3-byte surrogates); both helpers
// keep every code unit, NUL included.
CString ScriptString(duk_context* ctx, duk_idx_t idx);
void PushScriptString(duk_context* ctx, const CString& s);
std::string ToCesu8(const CString& s);
// The string as UTF-8 for the terminal and files.
std::string ScriptStringUtf8(duk_context* ctx, duk_idx_t idx);

bool RequireText(duk_context* ctx, duk_idx_t idx, CString& out);
// A name or path: a string without NUL characters, as UTF-8.
bool RequireName(duk_context* ctx, duk_idx_t idx, const char* function, const char* name, std::string& out);

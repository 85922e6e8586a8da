// Checked arguments of the script's C functions, and strings across the script boundary.
#include "ScriptArgs.h"
#include <cmath>
#include "ScriptBinding.h"

bool RequireInt(duk_context* ctx, duk_idx_t idx, const char* function, const char* name, int lo, int hi, int& out)
{
    double d = duk_require_number(ctx, idx);
    if (!(d >= lo && d <= hi) || std::trunc(d) != d) {
        PushScriptError(ctx, std::string(function) + ": " + name + " must be a whole number from " + std::to_string(lo) +
                                 " to " + std::to_string(hi));
        return false;
    }
    out = static_cast<int>(d);
    return true;
}

bool RequireRect(duk_context* ctx, duk_idx_t idx, const char* function, RECT& out)
{
    int x, y, w, h;
    if (!RequireCoordinate(ctx, idx, function, "x", x) || !RequireCoordinate(ctx, idx + 1, function, "y", y) ||
        !RequireExtent(ctx, idx + 2, function, "width", w) || !RequireExtent(ctx, idx + 3, function, "height", h))
        return false;
    out = RECT{x, y, x + w, y + h}; // within 32-bit range: both halves are 16-bit
    return true;
}

CString ScriptString(duk_context* ctx, duk_idx_t idx)
{
    duk_size_t len = 0;
    const char* s = duk_get_lstring(ctx, idx, &len);
    return CString(FromUtf8(std::string_view(s ? s : "", s ? len : 0))); // CESU-8 surrogates decode unit by unit
}

std::string ToCesu8(const CString& s)
{
    // Unit by unit, so that a surrogate pair becomes the two 3-byte sequences the engine keeps.
    std::string cesu;
    cesu.reserve(static_cast<size_t>(s.GetLength()) * 3);
    for (int i = 0; i < s.GetLength(); ++i) cesu += ToUtf8(std::u16string(1, s[i]));
    return cesu;
}

void PushScriptString(duk_context* ctx, const CString& s)
{
    std::string cesu = ToCesu8(s);
    duk_push_lstring(ctx, cesu.data(), cesu.size());
}

std::string ScriptStringUtf8(duk_context* ctx, duk_idx_t idx) { return ToUtf8(ScriptString(ctx, idx)); }

bool RequireText(duk_context* ctx, duk_idx_t idx, CString& out)
{
    duk_require_string(ctx, idx);
    out = ScriptString(ctx, idx);
    return true;
}

bool RequireName(duk_context* ctx, duk_idx_t idx, const char* function, const char* name, std::string& out)
{
    duk_require_string(ctx, idx);
    out = ScriptStringUtf8(ctx, idx);
    if (out.find('\0') == std::string::npos) return true;
    PushScriptError(ctx, std::string(function) + ": " + name + " must not contain a NUL character");
    return false;
}

// The script engine: heap, globals, print, running a script and reporting its errors.
#include "ScriptHost.h"
#include <duktape.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include "ScriptArgs.h"
#include "ScriptBinding.h"
#include "ScriptObjects.h"

namespace {
const char kHostKey[] = DUK_HIDDEN_SYMBOL("scriptHost");
const char kHeldErrorKey[] = DUK_HIDDEN_SYMBOL("heldError");
const char kLastThrowKey[] = DUK_HIDDEN_SYMBOL("lastThrow");

void OnFatal(void*, const char* msg)
{
    std::fprintf(stderr, "quillon: script engine failure: %s\n", msg ? msg : "(no message)");
    std::abort();
}

// print(...): each argument through String(), separated by one blank, then a newline.
duk_ret_t PrintBody(duk_context* ctx)
{
    duk_idx_t n = duk_get_top(ctx);
    for (duk_idx_t i = 0; i < n; ++i) {
        duk_get_global_string(ctx, "String");
        duk_dup(ctx, i);
        if (duk_pcall(ctx, 1) != DUK_EXEC_SUCCESS) return kThrow;
        duk_replace(ctx, i);
    }
    duk_push_string(ctx, " ");
    duk_insert(ctx, 0);
    duk_join(ctx, n);
    ScriptHostOf(ctx).Print(ScriptStringUtf8(ctx, -1)); // the terminal reads UTF-8, not the engine's form
    return 0;
}

void RememberThrowPlace(duk_context* ctx)
{
    duk_inspect_callstack_entry(ctx, -2); // -1 is Duktape.errThrow itself, -2 the function that threw
    if (!duk_is_object(ctx, -1)) return;
    duk_get_prop_string(ctx, -1, "lineNumber");
    duk_get_prop_string(ctx, -2, "function");
    duk_get_prop_string(ctx, -1, "fileName");
    if (!duk_is_string(ctx, -1) || duk_get_int(ctx, -3) <= 0) return;
    duk_push_global_stash(ctx);
    duk_push_bare_object(ctx);
    duk_dup(ctx, 0);
    duk_put_prop_string(ctx, -2, "value");
    duk_dup(ctx, -3);
    duk_put_prop_string(ctx, -2, "fileName");
    duk_dup(ctx, -5);
    duk_put_prop_string(ctx, -2, "lineNumber");
    duk_put_prop_string(ctx, -2, kLastThrowKey);
}

// Duktape.errThrow, which sees each value as it is thrown. An Error knows where it was made; any
// other value (throw "oops") is remembered with the place of the script line that threw it, so that
// the message can name it if nothing catches the value. A rethrow from C code keeps that place.
duk_ret_t OnThrow(duk_context* ctx)
{
    if (!duk_is_error(ctx, 0)) RememberThrowPlace(ctx);
    duk_set_top(ctx, 1);
    return 1; // the value goes on as it is
}

// [value] -> [text]: a thrown value that is no Error, with the place it was thrown from when known.
void DescribeThrownValue(duk_context* ctx)
{
    std::string place;
    duk_push_global_stash(ctx);
    if (duk_get_prop_string(ctx, -1, kLastThrowKey)) {
        duk_get_prop_string(ctx, -1, "value");
        if (duk_strict_equals(ctx, -1, -4)) {
            duk_get_prop_string(ctx, -2, "fileName");
            duk_get_prop_string(ctx, -3, "lineNumber");
            place = std::string(duk_get_string(ctx, -2)) + ":" + std::to_string(duk_get_int(ctx, -1)) + ": ";
            duk_pop_2(ctx);
        }
        duk_pop(ctx);
    }
    duk_pop_2(ctx);
    duk_dup_top(ctx);
    if (duk_is_string(ctx, -1)) duk_json_encode(ctx, -1);
    else duk_to_string(ctx, -1);
    duk_push_string(ctx, (place + "uncaught ").c_str());
    duk_swap_top(ctx, -2);
    duk_concat(ctx, 2);
}

// [error] -> [text]: "file:line: Error: message" where the error knows its place. A safe call
// sees the caller's whole stack, hence the negative indices.
duk_ret_t DescribeError(duk_context* ctx, void*)
{
    if (!duk_is_error(ctx, -1)) {
        DescribeThrownValue(ctx);
        return 1;
    }
    {
        duk_get_prop_string(ctx, -1, "fileName");
        duk_get_prop_string(ctx, -2, "lineNumber");
        if (duk_is_string(ctx, -2) && duk_is_number(ctx, -1)) {
            duk_push_sprintf(ctx, "%s:%d: ", duk_get_string(ctx, -2), static_cast<int>(duk_get_int(ctx, -1)));
            duk_dup(ctx, -4);
            duk_to_string(ctx, -1);
            duk_concat(ctx, 2);
            return 1;
        }
        duk_pop_2(ctx);
    }
    duk_dup_top(ctx);
    duk_to_string(ctx, -1);
    return 1;
}
} // namespace

CScriptHost& ScriptHostOf(duk_context* ctx)
{
    duk_push_global_stash(ctx);
    void* p = GetHiddenPointer(ctx, -1, kHostKey);
    duk_pop(ctx);
    return *static_cast<CScriptHost*>(p);
}

CScriptHost::CScriptHost()
{
    m_ctx = duk_create_heap(nullptr, nullptr, nullptr, nullptr, &OnFatal);
    if (!m_ctx) OnFatal(nullptr, "out of memory");
    duk_push_global_stash(m_ctx);
    PutHiddenPointer(m_ctx, -1, kHostKey, this);
    duk_pop(m_ctx);
    InstallGlobals();
}

CScriptHost::~CScriptHost()
{
    // The heap goes first, running the finalizers that release automation objects, while every
    // control still exists; no event may reach a script function after that.
    m_host.m_onPropertyChanged = nullptr;
    m_host.m_onBeep = nullptr;
    *m_pAlive = false;
    duk_destroy_heap(m_ctx);
    m_ctx = nullptr;
}

void CScriptHost::InstallGlobals()
{
    duk_push_global_object(m_ctx);
    PutFunction(m_ctx, -1, "print", &Guarded<PrintBody>, DUK_VARARGS);
    PushHostObject(m_ctx);
    duk_put_prop_string(m_ctx, -2, "host");
    duk_get_prop_string(m_ctx, -1, "Duktape");
    PutFunction(m_ctx, -1, "errThrow", &OnThrow, 1);
    duk_pop_2(m_ctx);
    ListenToHost(m_ctx, m_host);
}

void CScriptHost::Print(const std::string& line) const
{
    if (m_onPrint) {
        m_onPrint(line);
        return;
    }
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

std::string CScriptHost::Describe(int idx)
{
    duk_dup(m_ctx, idx);
    if (duk_safe_call(m_ctx, &DescribeError, nullptr, 1, 1) != DUK_EXEC_SUCCESS) {
        duk_pop(m_ctx);
        return "script error (its message cannot be shown)";
    }
    std::string text = duk_get_string(m_ctx, -1) ? duk_get_string(m_ctx, -1) : "";
    duk_pop(m_ctx);
    return text;
}

namespace {
// The offset of the first byte that does not belong to well-formed UTF-8, or npos.
size_t FirstBadUtf8(const std::string& text)
{
    auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    auto tail = [&](size_t i, unsigned lo = 0x80, unsigned hi = 0xBF) { return byte(i) >= lo && byte(i) <= hi; };
    for (size_t i = 0; i < text.size();) {
        unsigned b = byte(i);
        size_t n = b < 0x80 ? 1
                 : b >= 0xC2 && b <= 0xDF && tail(i + 1) ? 2
                 : b == 0xE0 && tail(i + 1, 0xA0) && tail(i + 2) ? 3
                 : b == 0xED && tail(i + 1, 0x80, 0x9F) && tail(i + 2) ? 3 // no surrogates
                 : b >= 0xE1 && b <= 0xEF && b != 0xED && tail(i + 1) && tail(i + 2) ? 3
                 : b == 0xF0 && tail(i + 1, 0x90) && tail(i + 2) && tail(i + 3) ? 4
                 : b >= 0xF1 && b <= 0xF3 && tail(i + 1) && tail(i + 2) && tail(i + 3) ? 4
                 : b == 0xF4 && tail(i + 1, 0x80, 0x8F) && tail(i + 2) && tail(i + 3) ? 4
                 : 0;
        if (!n) return i;
        i += n;
    }
    return std::string::npos;
}
} // namespace

bool CScriptHost::Run(const std::string& source, const std::string& fileName)
{
    m_strError.clear();
    if (size_t bad = FirstBadUtf8(source); bad != std::string::npos) {
        char what[128];
        std::snprintf(what, sizeof what, ": invalid UTF-8 at byte offset %zu (0x%02X); scripts are read as UTF-8", bad,
                      static_cast<unsigned>(static_cast<unsigned char>(source[bad])));
        m_strError = fileName + ":" + std::to_string(1 + std::count(source.begin(), source.begin() + static_cast<long>(bad), '\n')) + what;
        return false;
    }
    // A character outside the BMP written in the file becomes the surrogate pair the engine's own
    // strings hold, so that it compares equal to the same text coming back from the control.
    std::string cesu = ToCesu8(CString(FromUtf8(source)));
    duk_push_lstring(m_ctx, cesu.data(), cesu.size());
    duk_push_lstring(m_ctx, fileName.data(), fileName.size());
    bool ok = duk_pcompile(m_ctx, 0) == DUK_EXEC_SUCCESS && duk_pcall(m_ctx, 0) == DUK_EXEC_SUCCESS;
    if (!ok) m_strError = Describe(-1);
    duk_pop(m_ctx);
    if (ok && m_bHandlerError) {
        TakeHandlerError();
        m_strError = Describe(-1);
        duk_pop(m_ctx);
        ok = false;
    }
    return ok;
}

void CScriptHost::HoldHandlerError()
{
    if (!m_bHandlerError) {
        duk_push_global_stash(m_ctx);
        duk_dup(m_ctx, -2);
        duk_put_prop_string(m_ctx, -2, kHeldErrorKey);
        duk_pop(m_ctx);
        m_bHandlerError = true;
        m_host.EndCall(); // the error ends the call that raised it, after the current message
    }
    duk_pop(m_ctx);
}

std::string CScriptHost::TakeHandlerErrorText()
{
    if (!m_bHandlerError) return std::string();
    TakeHandlerError();
    std::string text = Describe(-1);
    duk_pop(m_ctx);
    return text;
}

void CScriptHost::TakeHandlerError()
{
    duk_push_global_stash(m_ctx);
    duk_get_prop_string(m_ctx, -1, kHeldErrorKey);
    duk_push_undefined(m_ctx);
    duk_put_prop_string(m_ctx, -3, kHeldErrorKey);
    duk_remove(m_ctx, -2);
    m_bHandlerError = false;
}

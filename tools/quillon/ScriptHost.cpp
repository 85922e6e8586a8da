// CScriptHost: the Duktape heap, print, running a script and reporting its errors.
#include "ScriptHost.h"
#include <cstdio>
#include <duktape.h>
#include "ScriptApi.h"
#include "ScriptWrappers.h"

namespace {

CScriptHost* g_host = nullptr; // the tool runs one script host at a time

// print(...): each argument through String(), separated by a blank, then a newline.
duk_ret_t Print(duk_context* ctx)
{
    std::string line;
    for (int i = 0, n = duk_get_top(ctx); i < n; ++i) {
        if (i) line += ' ';
        duk_dup(ctx, i);
        line += duk_safe_to_string(ctx, -1);
        duk_pop(ctx);
    }
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
    return 0;
}

} // namespace

CScriptHost& ScriptHostOf(duk_context*) { return *g_host; }

CScriptHost::CScriptHost()
{
    g_host = this;
    m_ctx = duk_create_heap_default();
    duk_push_c_function(m_ctx, Print, DUK_VARARGS);
    duk_put_global_string(m_ctx, "print");
    PushHostObject(m_ctx);
    duk_put_global_string(m_ctx, "host");
}

CScriptHost::~CScriptHost()
{
    duk_destroy_heap(m_ctx);
    ReleaseWrapped();
    m_host.m_onPropertyChanged = nullptr;
    m_host.m_onBeep = nullptr;
    g_host = nullptr;
}

void CScriptHost::ThrowPending()
{
    if (m_pending.empty()) return;
    std::string message = m_pending;
    m_pending.clear();
    (void)duk_error(m_ctx, DUK_ERR_ERROR, "in an event handler: %s", message.c_str());
}

bool CScriptHost::Run(const std::string& source, const std::string& fileName)
{
    duk_push_string(m_ctx, fileName.c_str());
    bool ok = duk_pcompile_lstring_filename(m_ctx, 0, source.data(), source.size()) == 0 &&
              duk_pcall(m_ctx, 0) == DUK_EXEC_SUCCESS;
    if (ok && !m_pending.empty()) { // an error in a handler that ran after the script's last statement
        m_error = m_pending;
        ok = false;
    } else if (!ok) {
        m_error = duk_safe_to_stacktrace(m_ctx, -1);
    }
    duk_pop(m_ctx);
    return ok;
}

// CScriptHost: runs a script against a host: the global print and host objects, forms, controls
// reached by name through their dispatch interface, and events delivered to script functions.
#pragma once
#include <string>
#include "host/Host.h"

struct duk_hthread;
typedef struct duk_hthread duk_context;

class CScriptHost {
public:
    CScriptHost();
    ~CScriptHost();
    CScriptHost(const CScriptHost&) = delete;
    CScriptHost& operator=(const CScriptHost&) = delete;

    // Runs the source; false on a script error, whose message (with file and line) is in Error().
    bool Run(const std::string& source, const std::string& fileName);
    const std::string& Error() const { return m_error; }

    CHost& Host() { return m_host; }
    duk_context* Context() { return m_ctx; }
    // An error raised inside an event handler, held until control returns to the script.
    void SetPending(const std::string& message) { if (m_pending.empty()) m_pending = message; }
    // Throws the held error into the script, if there is one.
    void ThrowPending();

private:
    CHost m_host;
    duk_context* m_ctx = nullptr;
    std::string m_error;
    std::string m_pending;
};

// The script host a C function of the script runs under.
CScriptHost& ScriptHostOf(duk_context* ctx);

// CScriptHost: runs a script against a container: the global print and host objects, forms,
// controls reached by name through their dispatch interface, and events delivered to script functions.
#pragma once
#include <functional>
#include <memory>
#include <string>
#include "host/Host.h"

struct duk_hthread;
typedef struct duk_hthread duk_context;

class CScriptHost {
public:
    // Where print writes its lines; standard output unless a test listens.
    using PrintSink = std::function<void(const std::string& line)>;

    CScriptHost();
    ~CScriptHost();
    CScriptHost(const CScriptHost&) = delete;
    CScriptHost& operator=(const CScriptHost&) = delete;

    // Runs the source; false on a script error, whose message (with file and line) is in Error().
    bool Run(const std::string& source, const std::string& fileName);
    const std::string& Error() const { return m_strError; }

    CHost& Host() { return m_host; }
    duk_context* Context() { return m_ctx; }
    void SetPrintSink(PrintSink sink) { m_onPrint = std::move(sink); }
    void Print(const std::string& line) const;

    // An error thrown by an event handler cannot unwind through the control that fired the event;
    // it is held (the first one only) and thrown into the script once the dispatch call returns.
    // Takes the error value on top of the stack.
    void HoldHandlerError();
    bool HasHandlerError() const { return m_bHandlerError; }
    // Pushes the held error and forgets it.
    void TakeHandlerError();
    // The held error as "file:line: message", forgotten; empty when none is held.
    std::string TakeHandlerErrorText();
    // False once the script engine is gone: controls outlive it while the container closes them,
    // and whatever they fire then must not reach it.
    std::shared_ptr<const bool> AliveFlag() const { return m_pAlive; }

private:
    void InstallGlobals();
    std::string Describe(int idx);

    CHost m_host;
    duk_context* m_ctx = nullptr;
    PrintSink m_onPrint;
    std::string m_strError;
    bool m_bHandlerError = false;
    std::shared_ptr<bool> m_pAlive = std::make_shared<bool>(true);
};

// The script host that a C function of the script runs under.
CScriptHost& ScriptHostOf(duk_context* ctx);
// The script shown by `quillon demo`.
extern const char* const kDemoScript;
// The form `quillon view` shows when it is given no script.
extern const char* const kShowcaseScript;

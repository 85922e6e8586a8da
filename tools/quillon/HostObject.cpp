// The global host object: forms, the ambient UserMode, persistence, the host's notifications and
// its answer to file dialogs.
#include <string>
#include "ScriptArgs.h"
#include "ScriptBinding.h"
#include "ScriptHost.h"
#include "ScriptObjects.h"
#include "host/DialogDriver.h"

namespace {
const char kHostHandlersKey[] = DUK_HIDDEN_SYMBOL("hostHandlers");

duk_ret_t FormBody(duk_context* ctx)
{
    RECT rc;
    if (!RequireRect(ctx, 0, "form", rc)) return kThrow;
    PushFormObject(ctx, ScriptHostOf(ctx).Host().NewForm(rc));
    return 1;
}

CControlSite* ControlArg(duk_context* ctx, const char* function)
{
    CControlSite* site = ControlOf(ctx, 0);
    if (!site) PushScriptError(ctx, std::string(function) + ": the argument must be a control");
    return site;
}

// host.save(q): the control's property bag as text; clears its dirty flag.
duk_ret_t SaveBody(duk_context* ctx)
{
    CControlSite* site = ControlArg(ctx, "save");
    if (!site) return kThrow;
    PushScriptString(ctx, site->Save(TRUE));
    return 1;
}

// host.isDirty(q): the control's modified flag, as a container's IsDirty sees it.
duk_ret_t IsDirtyBody(duk_context* ctx)
{
    CControlSite* site = ControlArg(ctx, "isDirty");
    if (!site) return kThrow;
    duk_push_boolean(ctx, site->IsDirty());
    return 1;
}

// host.on(name, fn): PropertyChanged (dispid, control), Beep (type) or Dialog (the open dialog).
duk_ret_t OnBody(duk_context* ctx)
{
    std::string name = duk_require_string(ctx, 0);
    if (name != "PropertyChanged" && name != "Beep" && name != "Dialog")
        return PushScriptError(ctx, "unknown host event '" + name + "'" + DidYouMean(name, {"PropertyChanged", "Beep", "Dialog"}));
    if (!duk_is_function(ctx, 1) && !duk_is_null_or_undefined(ctx, 1))
        return PushScriptError(ctx, "on: the handler must be a function");
    duk_push_global_stash(ctx);
    duk_get_prop_string(ctx, -1, kHostHandlersKey);
    duk_dup(ctx, 1);
    duk_put_prop_string(ctx, -2, name.c_str());
    return 0;
}

// A yes-or-no setting of the host as a property of the host object: userMode, showPropertyFrame.
template <BOOL CHost::*Flag>
duk_ret_t GetHostFlag(duk_context* ctx)
{
    duk_push_boolean(ctx, ScriptHostOf(ctx).Host().*Flag);
    return 1;
}

template <BOOL CHost::*Flag>
duk_ret_t SetHostFlag(duk_context* ctx)
{
    ScriptHostOf(ctx).Host().*Flag = duk_to_boolean(ctx, 0) ? TRUE : FALSE;
    return 0;
}

template <BOOL CHost::*Flag>
void DefineHostFlag(duk_context* ctx, const char* name)
{
    duk_push_string(ctx, name);
    duk_push_c_function(ctx, &GetHostFlag<Flag>, 0);
    duk_push_c_function(ctx, &SetHostFlag<Flag>, 1);
    duk_def_prop(ctx, -4, DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_HAVE_SETTER | DUK_DEFPROP_SET_ENUMERABLE);
}

// host.fileDialog: the function that answers a control's file dialog, or null.
duk_ret_t GetFileDialog(duk_context* ctx)
{
    duk_push_global_stash(ctx);
    duk_get_prop_string(ctx, -1, kHostHandlersKey);
    duk_get_prop_string(ctx, -1, "fileDialog");
    if (duk_is_undefined(ctx, -1)) duk_push_null(ctx);
    return 1;
}

duk_ret_t SetFileDialogBody(duk_context* ctx)
{
    if (!duk_is_function(ctx, 0) && !duk_is_null_or_undefined(ctx, 0))
        return PushScriptError(ctx, "fileDialog: the handler must be a function or null");
    duk_push_global_stash(ctx);
    duk_get_prop_string(ctx, -1, kHostHandlersKey);
    duk_dup(ctx, 0);
    duk_put_prop_string(ctx, -2, "fileDialog");
    return 0;
}

void DefineFileDialog(duk_context* ctx)
{
    duk_push_string(ctx, "fileDialog");
    duk_push_c_function(ctx, &GetFileDialog, 0);
    duk_push_c_function(ctx, &Guarded<SetFileDialogBody>, 1);
    duk_def_prop(ctx, -4, DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_HAVE_SETTER | DUK_DEFPROP_SET_ENUMERABLE);
}

// [] -> [handler] and true, or [undefined] and false when the script set none.
bool PushHostHandler(duk_context* ctx, const char* name)
{
    duk_push_global_stash(ctx);
    duk_get_prop_string(ctx, -1, kHostHandlersKey);
    duk_get_prop_string(ctx, -1, name);
    duk_replace(ctx, -3);
    duk_pop(ctx);
    if (duk_is_function(ctx, -1)) return true;
    duk_pop(ctx);
    duk_push_undefined(ctx);
    return false;
}

// [] -> [undefined or error]: the Dialog handler with the dialog's object; without one, nothing.
duk_ret_t DeliverDialogSafely(duk_context* ctx, void* udata)
{
    if (!PushHostHandler(ctx, "Dialog")) return 1;
    PushDialogObject(ctx, static_cast<CDialogDriver*>(udata));
    if (duk_pcall(ctx, 1) != DUK_EXEC_SUCCESS) return 1;
    duk_pop(ctx);
    duk_push_undefined(ctx);
    return 1;
}

// While the handler runs the dialog is up in the modal loop; when it returns, whatever it left open
// is cancelled by the loop. A handler's error is held for the script.
void DeliverDialog(duk_context* ctx, HWND hDlg)
{
    CScriptHost& host = ScriptHostOf(ctx);
    if (host.HasHandlerError()) return;
    CDialogDriver driver(hDlg);
    duk_safe_call(ctx, &DeliverDialogSafely, &driver, 0, 1);
    ForgetDialogObject(&driver);
    if (duk_is_undefined(ctx, -1)) duk_pop(ctx);
    else host.HoldHandlerError();
}

struct FileDialogCall {
    const char* kind;
    std::string initialName;
};

// [] -> [the handler's result, or an error]; the result is undefined when there is no handler.
duk_ret_t AskFileDialogSafely(duk_context* ctx, void* udata)
{
    auto* call = static_cast<FileDialogCall*>(udata);
    if (!PushHostHandler(ctx, "fileDialog")) return 1;
    duk_push_string(ctx, call->kind);
    duk_push_lstring(ctx, call->initialName.data(), call->initialName.size());
    if (duk_pcall(ctx, 2) != DUK_EXEC_SUCCESS) duk_push_true(ctx); // marks the error below it
    else duk_push_false(ctx);
    return 2;
}

// The path the script's handler returns; a handler error is held for the script and cancels.
bool AskFileDialog(duk_context* ctx, const char* kind, const CString& initialName, CString& path)
{
    CScriptHost& host = ScriptHostOf(ctx);
    if (host.HasHandlerError()) return false;
    FileDialogCall call{kind, ToCesu8(initialName)};
    duk_safe_call(ctx, &AskFileDialogSafely, &call, 0, 2);
    bool failed = duk_get_boolean_default(ctx, -1, false);
    duk_pop(ctx);
    if (failed) {
        host.HoldHandlerError();
        return false;
    }
    bool chosen = duk_is_string(ctx, -1);
    if (chosen) path = ScriptString(ctx, -1);
    duk_pop(ctx);
    if (chosen && path.Find(u'\0') >= 0) {
        PushScriptError(ctx, "fileDialog: the path must not contain a NUL character");
        host.HoldHandlerError();
        return false;
    }
    return chosen;
}

struct HostEvent {
    const char* name;
    CControlSite* site; // PropertyChanged: the control that changed
    double value;       // its dispid, or the beep's type
};

// [] -> [undefined or error]
duk_ret_t DeliverSafely(duk_context* ctx, void* udata)
{
    auto* e = static_cast<HostEvent*>(udata);
    if (!PushHostHandler(ctx, e->name)) return 1;
    duk_push_number(ctx, e->value);
    if (e->site) PushControl(ctx, e->site);
    if (duk_pcall(ctx, e->site ? 2 : 1) != DUK_EXEC_SUCCESS) return 1;
    duk_pop(ctx);
    duk_push_undefined(ctx);
    return 1;
}

void Deliver(duk_context* ctx, HostEvent event)
{
    CScriptHost& host = ScriptHostOf(ctx);
    if (host.HasHandlerError()) return;
    duk_safe_call(ctx, &DeliverSafely, &event, 0, 1);
    if (duk_is_undefined(ctx, -1)) duk_pop(ctx);
    else host.HoldHandlerError();
}
} // namespace

namespace {
constexpr Param kRect[] = {{"x", Arg::Number}, {"y", Arg::Number}, {"w", Arg::Number}, {"h", Arg::Number}};
constexpr Param kControl[] = {{"control", Arg::Control}};
constexpr Param kOn[] = {{"event", Arg::String}, {"handler", Arg::Any, true}};
constexpr Signature kFormCall{"host.form", kRect}, kSaveCall{"host.save", kControl}, kIsDirtyCall{"host.isDirty", kControl},
    kOnCall{"host.on", kOn};
} // namespace

void PushHostObject(duk_context* ctx)
{
    duk_push_global_stash(ctx);
    duk_push_bare_object(ctx);
    duk_put_prop_string(ctx, -2, kHostHandlersKey);
    duk_pop(ctx);

    duk_push_object(ctx);
    PutCall(ctx, -1, "form", &Guarded<FormBody>, kFormCall);
    PutCall(ctx, -1, "save", &Guarded<SaveBody>, kSaveCall);
    PutCall(ctx, -1, "isDirty", &Guarded<IsDirtyBody>, kIsDirtyCall);
    PutCall(ctx, -1, "on", &Guarded<OnBody>, kOnCall);
    DefineHostFlag<&CHost::m_bUserMode>(ctx, "userMode");
    DefineFileDialog(ctx);
    // showPropertyFrame: the site shows the control's pages in a frame of the host's own.
    DefineHostFlag<&CHost::m_bShowPropertyFrame>(ctx, "showPropertyFrame");
    AddWindowCalls(ctx, -1);
    MakeStrict(ctx, "host");
}

void ListenToHost(duk_context* ctx, CHost& host)
{
    host.m_onPropertyChanged = [ctx](CControlSite& site, DISPID dispid) {
        Deliver(ctx, HostEvent{"PropertyChanged", &site, static_cast<double>(dispid)});
    };
    host.m_onBeep = [ctx](UINT type) { Deliver(ctx, HostEvent{"Beep", nullptr, static_cast<double>(type)}); };
    host.m_onFileDialog = [ctx](const char* kind, const CString& initialName, CString& path) {
        return AskFileDialog(ctx, kind, initialName, path);
    };
    host.m_onDialog = [ctx](HWND hDlg) { DeliverDialog(ctx, hDlg); };
}

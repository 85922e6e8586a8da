// The script API: host.form, form.create and form.load, host.userMode, save, isDirty, on.
#include "ScriptApi.h"
#include <duktape.h>
#include "ScriptEvents.h"
#include "ScriptHost.h"
#include "ScriptInput.h"
#include "ScriptValues.h"

namespace {

CHost& HostOf(duk_context* ctx) { return ScriptHostOf(ctx).Host(); }

RECT RectArgs(duk_context* ctx, int first)
{
    int x = duk_require_int(ctx, first), y = duk_require_int(ctx, first + 1);
    return RECT{x, y, x + duk_require_int(ctx, first + 2), y + duk_require_int(ctx, first + 3)};
}

CForm* FormOfThis(duk_context* ctx)
{
    duk_push_this(ctx);
    duk_get_prop_string(ctx, -1, DUK_HIDDEN_SYMBOL("form"));
    auto* form = static_cast<CForm*>(duk_get_pointer(ctx, -1));
    duk_pop_2(ctx);
    if (!form) (void)duk_error(ctx, DUK_ERR_TYPE_ERROR, "not a form");
    return form;
}

CControlSite* RequireControl(duk_context* ctx, int idx)
{
    CControlSite* site = ControlOf(ctx, idx);
    if (!site) (void)duk_error(ctx, DUK_ERR_TYPE_ERROR, "argument %d is not a control", idx + 1);
    return site;
}

duk_ret_t PushMade(duk_context* ctx, CControlSite* site, HRESULT hr, const char* progid)
{
    ScriptHostOf(ctx).ThrowPending();
    if (!site) return duk_error(ctx, DUK_ERR_ERROR, "cannot create '%s' (0x%08X)", progid, static_cast<unsigned>(hr));
    if (FAILED(hr)) return duk_error(ctx, DUK_ERR_ERROR, "cannot initialise '%s' (0x%08X)", progid, static_cast<unsigned>(hr));
    PushControl(ctx, site);
    return 1;
}

duk_ret_t FormCreate(duk_context* ctx)
{
    const char* progid = duk_require_string(ctx, 0);
    HRESULT hr = S_OK;
    CControlSite* site = FormOfThis(ctx)->Create(CString(FromUtf8(progid)), RectArgs(ctx, 1), &hr);
    return PushMade(ctx, site, hr, progid);
}

duk_ret_t FormLoad(duk_context* ctx)
{
    const char* progid = duk_require_string(ctx, 0);
    const char* bag = duk_require_string(ctx, 1);
    HRESULT hr = S_OK;
    CControlSite* site = FormOfThis(ctx)->Load(CString(FromUtf8(progid)), CString(FromUtf8(bag)), RectArgs(ctx, 2), &hr);
    return PushMade(ctx, site, hr, progid);
}

duk_ret_t HostForm(duk_context* ctx)
{
    CForm* form = HostOf(ctx).NewForm(RectArgs(ctx, 0));
    duk_push_object(ctx);
    duk_push_pointer(ctx, form);
    duk_put_prop_string(ctx, -2, DUK_HIDDEN_SYMBOL("form"));
    duk_push_c_function(ctx, FormCreate, 5);
    duk_put_prop_string(ctx, -2, "create");
    duk_push_c_function(ctx, FormLoad, 6);
    duk_put_prop_string(ctx, -2, "load");
    return 1;
}

duk_ret_t HostSave(duk_context* ctx)
{
    duk_push_string(ctx, ToUtf8(RequireControl(ctx, 0)->Save()).c_str());
    return 1;
}

duk_ret_t HostIsDirty(duk_context* ctx)
{
    duk_push_boolean(ctx, RequireControl(ctx, 0)->IsDirty());
    return 1;
}

duk_ret_t GetUserMode(duk_context* ctx)
{
    duk_push_boolean(ctx, HostOf(ctx).m_bUserMode != FALSE);
    return 1;
}

duk_ret_t SetUserMode(duk_context* ctx)
{
    HostOf(ctx).m_bUserMode = duk_to_boolean(ctx, 0) ? TRUE : FALSE;
    return 0;
}

// host.on("PropertyChanged", fn) and host.on("Beep", fn).
duk_ret_t HostOn(duk_context* ctx)
{
    std::string name = duk_require_string(ctx, 0);
    duk_require_function(ctx, 1);
    CHost& host = HostOf(ctx);
    if (name == "PropertyChanged") {
        host.m_onPropertyChanged = [ctx](CControlSite&, DISPID id) {
            CallHandler(ctx, "host/PropertyChanged", [&] { duk_push_int(ctx, id); return 1; });
        };
    } else if (name == "Beep") {
        host.m_onBeep = [ctx](UINT) { CallHandler(ctx, "host/Beep", [] { return 0; }); };
    } else {
        return duk_error(ctx, DUK_ERR_REFERENCE_ERROR, "unknown host event '%s'", name.c_str());
    }
    SetHandler(ctx, "host/" + name, 1);
    return 0;
}

void PutFunction(duk_context* ctx, const char* name, duk_c_function fn, int nargs)
{
    duk_push_c_function(ctx, fn, nargs);
    duk_put_prop_string(ctx, -2, name);
}

} // namespace

void PushHostObject(duk_context* ctx)
{
    duk_push_object(ctx);
    PutFunction(ctx, "form", HostForm, 4);
    PutFunction(ctx, "save", HostSave, 1);
    PutFunction(ctx, "isDirty", HostIsDirty, 1);
    PutFunction(ctx, "on", HostOn, 2);
    AddInputFunctions(ctx);
    duk_push_string(ctx, "userMode");
    duk_push_c_function(ctx, GetUserMode, 0);
    duk_push_c_function(ctx, SetUserMode, 1);
    duk_def_prop(ctx, -4, DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_HAVE_SETTER);
}

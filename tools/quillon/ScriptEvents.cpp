// Event handlers in the script: storage in the heap's stash, calls with by-reference arguments.
#include "ScriptEvents.h"
#include <duktape.h>
#include "ScriptHost.h"
#include "ScriptValues.h"
#include "ScriptWrappers.h"
#include "host/ControlSite.h"

namespace {

void PushHandlers(duk_context* ctx)
{
    duk_push_global_stash(ctx);
    if (!duk_get_prop_string(ctx, -1, "handlers")) {
        duk_pop(ctx);
        duk_push_object(ctx);
        duk_dup(ctx, -1);
        duk_put_prop_string(ctx, -3, "handlers");
    }
    duk_remove(ctx, -2);
}

// Pushes the event's arguments; a by-reference short becomes {value: n}.
int PushEventArgs(duk_context* ctx, const EventEntry& e, VARIANT* args, UINT count)
{
    for (UINT i = 0; i < count; ++i) {
        if (args[i].vt == (VT_BYREF | VT_I2)) {
            duk_push_object(ctx);
            duk_push_int(ctx, *args[i].piVal);
            duk_put_prop_string(ctx, -2, "value");
        } else {
            PushVariant(ctx, args[i]);
        }
    }
    (void)e;
    return static_cast<int>(count);
}

void ReadBackByRef(duk_context* ctx, int first, VARIANT* args, UINT count)
{
    for (UINT i = 0; i < count; ++i) {
        if (args[i].vt != (VT_BYREF | VT_I2)) continue;
        duk_get_prop_string(ctx, first + static_cast<int>(i), "value");
        if (duk_is_number(ctx, -1)) *args[i].piVal = static_cast<SHORT>(duk_get_int(ctx, -1));
        duk_pop(ctx);
    }
}

} // namespace

std::string EventKey(CControlSite* site, const std::string& eventName)
{
    return std::to_string(reinterpret_cast<uintptr_t>(site)) + "/" + eventName;
}

void SetHandler(duk_context* ctx, const std::string& key, int idx)
{
    idx = duk_normalize_index(ctx, idx);
    PushHandlers(ctx);
    duk_dup(ctx, idx);
    duk_put_prop_string(ctx, -2, key.c_str());
    duk_pop(ctx);
}

void CallHandler(duk_context* ctx, const std::string& key, const std::function<int()>& pushArgs,
                 const std::function<void(int)>& after)
{
    PushHandlers(ctx);
    bool found = duk_get_prop_string(ctx, -1, key.c_str()) && duk_is_function(ctx, -1);
    if (!found) {
        duk_pop_2(ctx);
        return;
    }
    int first = duk_get_top(ctx);
    int n = pushArgs();
    duk_dup(ctx, first - 1);                               // the function, above its arguments
    for (int i = 0; i < n; ++i) duk_dup(ctx, first + i);  // copies, so the originals stay readable
    if (duk_pcall(ctx, n) != DUK_EXEC_SUCCESS) ScriptHostOf(ctx).SetPending(duk_safe_to_stacktrace(ctx, -1));
    else if (after) after(first);
    duk_set_top(ctx, first - 2);
}

void ListenToControl(duk_context* ctx, CControlSite* site)
{
    const std::string mark = EventKey(site, "\xFFlistening");
    PushHandlers(ctx);
    bool listening = duk_get_prop_string(ctx, -1, mark.c_str());
    duk_pop(ctx);
    duk_push_true(ctx);
    duk_put_prop_string(ctx, -2, mark.c_str());
    duk_pop(ctx);
    if (listening) return;
    site->SetEventHandler([ctx, site](const EventEntry& e, VARIANT* args, UINT count) {
        CallHandler(ctx, EventKey(site, ToUtf8(e.name)), [&] { return PushEventArgs(ctx, e, args, count); },
                    [&](int first) { ReadBackByRef(ctx, first, args, count); });
    });
}

static duk_ret_t On(duk_context* ctx)
{
    duk_push_current_function(ctx);
    duk_get_prop_string(ctx, -1, DUK_HIDDEN_SYMBOL("owner"));
    CControlSite* site = ControlOf(ctx, -1);
    duk_pop_2(ctx);
    const char* name = duk_require_string(ctx, 0);
    duk_require_function(ctx, 1);
    const EventEntry* e = site && site->EventInfo() ? site->EventInfo()->FindByName(CString(FromUtf8(name))) : nullptr;
    if (!e) return duk_error(ctx, DUK_ERR_REFERENCE_ERROR, "unknown event '%s'", name);
    SetHandler(ctx, EventKey(site, ToUtf8(e->name)), 1);
    ListenToControl(ctx, site);
    return 0;
}

void PushOnFunction(duk_context* ctx, CControlSite* site)
{
    duk_push_c_function(ctx, On, 2);
    PushControl(ctx, site);
    duk_put_prop_string(ctx, -2, DUK_HIDDEN_SYMBOL("owner"));
}

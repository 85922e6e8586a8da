// The script object of a control: a Proxy whose traps reach every dispatch member by name, and the
// delivery of the control's events to the functions set with on().
#include <string>
#include <string_view>
#include <vector>
#include "ScriptArgs.h"
#include "ScriptBinding.h"
#include "ScriptHost.h"
#include "ScriptObjects.h"
#include "ScriptValues.h"

namespace {
const char kSiteKey[] = DUK_HIDDEN_SYMBOL("site");
const char kMethodSiteKey[] = DUK_HIDDEN_SYMBOL("methodSite");
const char kEntryKey[] = DUK_HIDDEN_SYMBOL("entry");
const char kHandlersKey[] = DUK_HIDDEN_SYMBOL("handlers");
const char kControlsKey[] = DUK_HIDDEN_SYMBOL("controls");

CControlSite* SiteOf(duk_context* ctx, duk_idx_t idx)
{
    return static_cast<CControlSite*>(GetHiddenPointer(ctx, idx, kSiteKey));
}

// The member of that whole name: one with a NUL in it names none.
const MemberInfo* FindMember(CControlSite* site, const CString& name)
{
    return site && name.Find(u'\0') < 0 ? site->Info().FindMember(name) : nullptr;
}

duk_ret_t UnknownMember(duk_context* ctx, CControlSite* site, const std::string& name)
{
    std::vector<std::string> names;
    if (site)
        for (const MemberInfo& m : site->Info().Members()) names.push_back(ToUtf8(m.name));
    return PushScriptError(ctx, "unknown property or method '" + name + "'" + DidYouMean(name, names));
}

duk_ret_t ReadOnly(duk_context* ctx, const MemberInfo* member)
{
    return PushScriptError(ctx, "'" + ToUtf8(member->name) + "' is a read-only property");
}

// A method of the control, called with the script's arguments.
duk_ret_t MethodBody(duk_context* ctx)
{
    duk_idx_t n = duk_get_top(ctx);
    duk_push_current_function(ctx);
    auto* site = static_cast<CControlSite*>(GetHiddenPointer(ctx, -1, kMethodSiteKey));
    auto* entry = static_cast<const MemberInfo*>(GetHiddenPointer(ctx, -1, kEntryKey));
    duk_pop(ctx);
    std::vector<COleVariant> values(static_cast<size_t>(n));
    for (duk_idx_t i = 0; i < n; ++i)
        if (!ToVariant(ctx, i, values[i]))
            return PushScriptError(ctx, "argument " + std::to_string(i + 1) + " of '" + ToUtf8(entry->name) +
                                            "' cannot be " + ScriptTypeName(ctx, i));
    COleVariant result;
    HRESULT hr = site->InvokeById(entry->dispid, DISPATCH_METHOD, std::vector<VARIANT>(values.begin(), values.end()), &result);
    if (FAILED(hr)) return PushDispatchError(ctx, "calling", entry->name, hr);
    PushVariant(ctx, result);
    return 1;
}

void PushMethod(duk_context* ctx, CControlSite* site, const MemberInfo* entry)
{
    duk_push_c_function(ctx, &Guarded<MethodBody>, DUK_VARARGS);
    PutHiddenPointer(ctx, -1, kMethodSiteKey, site);
    PutHiddenPointer(ctx, -1, kEntryKey, const_cast<MemberInfo*>(entry));
}

// get trap [target key receiver]: a method as a function, a property's value, or the target's own
// helpers (on, toString) for names the control does not have.
duk_ret_t GetBody(duk_context* ctx)
{
    CControlSite* site = SiteOf(ctx, 0);
    if (duk_is_symbol(ctx, 1)) {
        duk_dup(ctx, 1);
        duk_get_prop(ctx, 0);
        return 1;
    }
    if (const MemberInfo* entry = FindMember(site, ScriptString(ctx, 1))) {
        if (entry->IsMethod()) {
            PushMethod(ctx, site, entry);
            return 1;
        }
        COleVariant value;
        HRESULT hr = site->InvokeById(entry->dispid, DISPATCH_PROPERTYGET, {}, &value);
        if (FAILED(hr)) return PushDispatchError(ctx, "reading", entry->name, hr);
        PushVariant(ctx, value);
        return 1;
    }
    const char* name = duk_get_string(ctx, 1);
    duk_dup(ctx, 1);
    if (duk_has_prop(ctx, 0)) { // the whole key, NULs and all
        duk_dup(ctx, 1);
        duk_get_prop(ctx, 0);
        return 1;
    }
    // Asked by the language itself when it turns the object into a primitive or text.
    if (std::string_view(name) == "valueOf" || std::string_view(name) == "toJSON") return 0;
    return UnknownMember(ctx, site, name);
}

// set trap [target key value receiver]: a property put.
duk_ret_t SetBody(duk_context* ctx)
{
    CControlSite* site = SiteOf(ctx, 0);
    std::string name = duk_is_symbol(ctx, 1) ? "(symbol)" : duk_get_string(ctx, 1);
    const MemberInfo* entry = duk_is_symbol(ctx, 1) ? nullptr : FindMember(site, ScriptString(ctx, 1));
    if (!entry) return UnknownMember(ctx, site, name);
    if (entry->IsMethod())
        return PushScriptError(ctx, "'" + ToUtf8(entry->name) + "' is a method and cannot be assigned");
    if (entry->IsReadOnly()) return ReadOnly(ctx, entry);
    COleVariant value;
    if (!ToVariant(ctx, 2, value))
        return PushScriptError(ctx, "'" + ToUtf8(entry->name) + "' cannot be set to " + ScriptTypeName(ctx, 2));
    HRESULT hr = site->InvokeById(entry->dispid, DISPATCH_PROPERTYPUT, {value}, nullptr);
    if (hr == CTL_E_SETNOTSUPPORTED) return ReadOnly(ctx, entry);
    if (FAILED(hr)) return PushDispatchError(ctx, "setting", entry->name, hr);
    duk_push_true(ctx);
    return 1;
}

// q.on(eventName, fn): fn hears the event from now on, in place of any earlier one; null stops it.
duk_ret_t OnBody(duk_context* ctx)
{
    const char* name = duk_require_string(ctx, 0);
    if (!duk_is_function(ctx, 1) && !duk_is_null_or_undefined(ctx, 1))
        return PushScriptError(ctx, "on: the handler must be a function");
    duk_push_this(ctx);
    CControlSite* site = SiteOf(ctx, -1);
    if (!site) return PushScriptError(ctx, "on: not called on a control");
    const EventInfo* event = site->Info().FindEvent(CString(FromUtf8(name)));
    if (!event) {
        std::vector<std::string> names;
        for (const EventInfo& e : site->Info().Events()) names.push_back(ToUtf8(e.name));
        return PushScriptError(ctx, "unknown event '" + std::string(name) + "'" + DidYouMean(name, names));
    }
    duk_get_prop_string(ctx, -1, kHandlersKey);
    duk_push_int(ctx, event->dispid);
    duk_dup(ctx, 1);
    duk_put_prop(ctx, -3);
    return 0;
}

duk_ret_t ToStringBody(duk_context* ctx)
{
    duk_push_string(ctx, "[object Control]");
    return 1;
}

struct EventDelivery {
    CControlSite* site;
    const EventInfo* event;
    VARIANT* args;
    UINT count;
};

// [] -> [undefined or error]: calls the control's handler for the event, if it has one.
duk_ret_t DeliverSafely(duk_context* ctx, void* udata)
{
    auto* d = static_cast<EventDelivery*>(udata);
    PushControl(ctx, d->site);
    duk_get_prop_string(ctx, -1, kHandlersKey);
    duk_push_int(ctx, d->event->dispid);
    duk_get_prop(ctx, -2);
    if (!duk_is_function(ctx, -1)) {
        duk_pop_3(ctx);
        duk_push_undefined(ctx);
        return 1;
    }
    duk_remove(ctx, -2);
    duk_remove(ctx, -2);
    if (!CallWithEventArgs(ctx, d->args, d->count)) return 1;
    duk_push_undefined(ctx);
    return 1;
}

void Deliver(duk_context* ctx, CControlSite* site, const EventInfo& event, VARIANT* args, UINT count)
{
    CScriptHost& host = ScriptHostOf(ctx);
    if (host.HasHandlerError()) return; // the script is on its way out
    EventDelivery d{site, &event, args, count};
    duk_safe_call(ctx, &DeliverSafely, &d, 0, 1);
    if (duk_is_undefined(ctx, -1)) duk_pop(ctx);
    else host.HoldHandlerError();
}

constexpr Param kOn[] = {{"event", Arg::String}, {"handler", Arg::Any, true}};
constexpr Signature kOnCall{"control.on", kOn};

void PushProxyHandler(duk_context* ctx)
{
    duk_push_bare_object(ctx);
    PutFunction(ctx, -1, "get", &Guarded<GetBody>, 3);
    PutFunction(ctx, -1, "set", &Guarded<SetBody>, 4);
}

void MakeControlObject(duk_context* ctx, CControlSite* site)
{
    duk_push_bare_object(ctx);
    PutHiddenPointer(ctx, -1, kSiteKey, site);
    duk_push_bare_object(ctx);
    duk_put_prop_string(ctx, -2, kHandlersKey);
    PutCall(ctx, -1, "on", &Guarded<OnBody>, kOnCall);
    PutFunction(ctx, -1, "toString", &ToStringBody, 0);
    PushProxyHandler(ctx);
    duk_push_proxy(ctx, 0);
    site->SetEventHandler([ctx, site, alive = ScriptHostOf(ctx).AliveFlag()](const EventInfo& event, VARIANT* args,
                                                                             UINT count) {
        if (*alive) Deliver(ctx, site, event, args, count);
    });
}
} // namespace

void PushControl(duk_context* ctx, CControlSite* site)
{
    duk_push_global_stash(ctx);
    if (!duk_get_prop_string(ctx, -1, kControlsKey)) {
        duk_pop(ctx);
        duk_push_bare_object(ctx);
        duk_dup_top(ctx);
        duk_put_prop_string(ctx, -3, kControlsKey);
    }
    duk_push_sprintf(ctx, "%p", static_cast<void*>(site));
    if (!duk_get_prop(ctx, -2)) {
        duk_pop(ctx);
        MakeControlObject(ctx, site);
        duk_push_sprintf(ctx, "%p", static_cast<void*>(site));
        duk_dup(ctx, -2);
        duk_put_prop(ctx, -4);
    }
    duk_replace(ctx, -3);
    duk_pop(ctx);
}

CControlSite* ControlOf(duk_context* ctx, duk_idx_t idx)
{
    return SiteOf(ctx, idx);
}

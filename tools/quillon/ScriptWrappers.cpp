// Script objects over controls and other automation objects: the registry, member look-up and calls.
#include "ScriptWrappers.h"
#include <duktape.h>
#include <map>
#include "ScriptHost.h"
#include "ScriptValues.h"
#include "host/ControlSite.h"

namespace {

std::map<void*, Wrapped>& Registry()
{
    static std::map<void*, Wrapped> registry;
    return registry;
}

std::map<CControlSite*, int>& ControlSlots() // each control's proxy, by its slot in the stash
{
    static std::map<CControlSite*, int> slots;
    return slots;
}

// Keeps the object at idx alive in the stash array "wrapped"; returns its slot.
int KeepAlive(duk_context* ctx, int idx)
{
    idx = duk_normalize_index(ctx, idx);
    duk_push_global_stash(ctx);
    if (!duk_get_prop_string(ctx, -1, "wrapped")) {
        duk_pop(ctx);
        duk_push_array(ctx);
        duk_dup(ctx, -1);
        duk_put_prop_string(ctx, -3, "wrapped");
    }
    int slot = static_cast<int>(duk_get_length(ctx, -1));
    duk_dup(ctx, idx);
    duk_put_prop_index(ctx, -2, slot);
    duk_pop_2(ctx);
    return slot;
}

HRESULT IdOf(IDispatch* p, const CString& name, DISPID& id)
{
    LPCOLESTR names[] = {name.GetString()};
    return p->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
}

} // namespace

void RegisterWrapped(duk_context* ctx, int idx, const Wrapped& w)
{
    if (w.disp) w.disp->AddRef();
    Registry()[duk_get_heapptr(ctx, idx)] = w;
    KeepAlive(ctx, idx);
}

Wrapped WrappedOf(duk_context* ctx, int idx)
{
    auto it = Registry().find(duk_get_heapptr(ctx, idx));
    return it == Registry().end() ? Wrapped{} : it->second;
}

IDispatch* WrappedDispatch(duk_context* ctx, int idx)
{
    Wrapped w = WrappedOf(ctx, idx);
    return w.site ? w.site->Control() : w.disp;
}

void ReleaseWrapped()
{
    for (auto& entry : Registry())
        if (entry.second.disp) entry.second.disp->Release();
    Registry().clear();
    ControlSlots().clear();
}

MemberKind FindMember(const Wrapped& w, const CString& name)
{
    if (w.site) {
        const DispEntry* e = w.site->DispatchInfo() ? w.site->DispatchInfo()->FindByName(name) : nullptr;
        if (!e) return MemberKind::Unknown;
        return (e->flags & DISPATCH_METHOD) ? MemberKind::Method : MemberKind::Property;
    }
    DISPID id;
    return w.disp && SUCCEEDED(IdOf(w.disp, name, id)) ? MemberKind::Property : MemberKind::Unknown;
}

HRESULT InvokeMember(const Wrapped& w, const CString& name, WORD flags, std::vector<VARIANT> args, VARIANT* result)
{
    if (w.site) {
        if (flags & DISPATCH_PROPERTYPUT) return w.site->Put(name, args.at(0));
        if (flags & DISPATCH_METHOD) return w.site->Call(name, std::move(args), result);
        return w.site->Get(name, result);
    }
    DISPID id;
    HRESULT hr = IdOf(w.disp, name, id);
    if (FAILED(hr)) return hr;
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    DISPID named = DISPID_PROPERTYPUT;
    bool put = flags & DISPATCH_PROPERTYPUT;
    DISPPARAMS params{reversed.data(), put ? &named : nullptr, static_cast<UINT>(reversed.size()), put ? 1u : 0u};
    return w.disp->Invoke(id, IID_NULL, 0, flags, &params, result, nullptr, nullptr);
}

static duk_ret_t CallMethod(duk_context* ctx)
{
    int argc = duk_get_top(ctx);
    duk_push_current_function(ctx);
    duk_get_prop_string(ctx, -1, DUK_HIDDEN_SYMBOL("name"));
    CString name(FromUtf8(duk_get_string(ctx, -1)));
    duk_get_prop_string(ctx, -2, DUK_HIDDEN_SYMBOL("owner"));
    Wrapped w = WrappedOf(ctx, -1);
    duk_pop_3(ctx);
    std::vector<COleVariant> owned;
    for (int i = 0; i < argc; ++i) owned.push_back(ToVariant(ctx, i));
    std::vector<VARIANT> args(owned.begin(), owned.end());
    COleVariant result;
    HRESULT hr = InvokeMember(w, name, DISPATCH_METHOD, std::move(args), &result);
    ScriptHostOf(ctx).ThrowPending();
    if (FAILED(hr)) ThrowDispatchError(ctx, name, hr);
    PushVariant(ctx, result);
    return 1;
}

void PushMethodFunction(duk_context* ctx, const Wrapped& w, const CString& name)
{
    duk_push_c_function(ctx, CallMethod, DUK_VARARGS);
    duk_push_string(ctx, ToUtf8(name).c_str());
    duk_put_prop_string(ctx, -2, DUK_HIDDEN_SYMBOL("name"));
    if (w.site) PushControl(ctx, w.site);
    else PushDispatch(ctx, w.disp);
    duk_put_prop_string(ctx, -2, DUK_HIDDEN_SYMBOL("owner"));
}

void PushControl(duk_context* ctx, CControlSite* site)
{
    auto it = ControlSlots().find(site);
    if (it != ControlSlots().end()) {
        duk_push_global_stash(ctx);
        duk_get_prop_string(ctx, -1, "wrapped");
        duk_get_prop_index(ctx, -1, it->second);
        duk_remove(ctx, -2);
        duk_remove(ctx, -2);
        return;
    }
    PushProxy(ctx, Wrapped{site, nullptr});
    duk_push_global_stash(ctx);
    duk_get_prop_string(ctx, -1, "wrapped");
    ControlSlots()[site] = static_cast<int>(duk_get_length(ctx, -1)) - 1;
    duk_pop_2(ctx);
}

CControlSite* ControlOf(duk_context* ctx, int idx) { return WrappedOf(ctx, idx).site; }

void PushDispatch(duk_context* ctx, IDispatch* p) { PushProxy(ctx, Wrapped{nullptr, p}); }

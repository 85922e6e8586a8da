// host.screen, focus, type, key, press, move, release, click, dblclick, wheel, advance, pump,
// pixel, snapshot and sysColor: each delivered through the host's message loop.
#include "ScriptInput.h"
#include <duktape.h>
#include <string>
#include "ScriptHost.h"
#include "ScriptValues.h"

namespace {

CHost& HostOf(duk_context* ctx) { return ScriptHostOf(ctx).Host(); }

// Every call may run event handlers; an error in one surfaces as the call's own.
duk_ret_t Done(duk_context* ctx, duk_ret_t n = 0)
{
    ScriptHostOf(ctx).ThrowPending();
    return n;
}

duk_ret_t Screen(duk_context* ctx)
{
    int monitors = duk_is_undefined(ctx, 2) ? 1 : duk_require_int(ctx, 2);
    HostOf(ctx).Screen(duk_require_int(ctx, 0), duk_require_int(ctx, 1), monitors);
    return 0;
}

duk_ret_t Focus(duk_context* ctx)
{
    CControlSite* site = ControlOf(ctx, 0);
    if (!site) return duk_error(ctx, DUK_ERR_TYPE_ERROR, "focus needs a control");
    HostOf(ctx).Focus(*site);
    return Done(ctx);
}

duk_ret_t Type(duk_context* ctx)
{
    HostOf(ctx).Type(CString(FromUtf8(duk_require_string(ctx, 0))));
    return Done(ctx);
}

UINT KeyCode(const std::string& name)
{
    static const struct { const char* name; UINT vk; } keys[] = {
        {"Enter", VK_RETURN}, {"Escape", VK_ESCAPE}, {"Backspace", VK_BACK}, {"Delete", VK_DELETE},
        {"Left", VK_LEFT}, {"Right", VK_RIGHT}, {"Up", VK_UP}, {"Down", VK_DOWN}, {"Home", VK_HOME},
        {"End", VK_END}, {"PageUp", VK_PRIOR}, {"PageDown", VK_NEXT}, {"Tab", VK_TAB},
    };
    for (const auto& k : keys)
        if (name == k.name) return k.vk;
    return 0;
}

bool Flag(duk_context* ctx, int idx, const char* name)
{
    if (!duk_is_object(ctx, idx)) return false;
    duk_get_prop_string(ctx, idx, name);
    bool on = duk_to_boolean(ctx, -1);
    duk_pop(ctx);
    return on;
}

duk_ret_t Key(duk_context* ctx)
{
    const char* name = duk_require_string(ctx, 0);
    UINT vk = KeyCode(name);
    if (!vk) return duk_error(ctx, DUK_ERR_RANGE_ERROR, "unknown key '%s'", name);
    HostOf(ctx).Key(vk, Flag(ctx, 1, "shift"), Flag(ctx, 1, "ctrl"));
    return Done(ctx);
}

template <void (CHost::*Action)(int, int)>
duk_ret_t Mouse(duk_context* ctx)
{
    (HostOf(ctx).*Action)(duk_require_int(ctx, 0), duk_require_int(ctx, 1));
    return Done(ctx);
}

duk_ret_t Press(duk_context* ctx) { HostOf(ctx).Press(duk_require_int(ctx, 0), duk_require_int(ctx, 1)); return Done(ctx); }
duk_ret_t Release(duk_context* ctx) { HostOf(ctx).Release(duk_require_int(ctx, 0), duk_require_int(ctx, 1)); return Done(ctx); }

duk_ret_t Wheel(duk_context* ctx)
{
    HostOf(ctx).Wheel(duk_require_int(ctx, 0), duk_require_int(ctx, 1), duk_require_int(ctx, 2));
    return Done(ctx);
}

duk_ret_t Advance(duk_context* ctx)
{
    HostOf(ctx).Advance(static_cast<DWORD>(duk_require_uint(ctx, 0)));
    return Done(ctx);
}

duk_ret_t Pump(duk_context* ctx)
{
    HostOf(ctx).Pump();
    return Done(ctx);
}

duk_ret_t Pixel(duk_context* ctx)
{
    duk_push_uint(ctx, HostOf(ctx).Pixel(duk_require_int(ctx, 0), duk_require_int(ctx, 1)));
    return Done(ctx, 1);
}

duk_ret_t Snapshot(duk_context* ctx)
{
    const char* path = duk_require_string(ctx, 0);
    RECT area{};
    bool part = !duk_is_undefined(ctx, 1);
    if (part) {
        int x = duk_require_int(ctx, 1), y = duk_require_int(ctx, 2);
        area = RECT{x, y, x + duk_require_int(ctx, 3), y + duk_require_int(ctx, 4)};
    }
    if (!HostOf(ctx).Snapshot(path, part ? &area : nullptr)) return duk_error(ctx, DUK_ERR_ERROR, "cannot write '%s'", path);
    return Done(ctx);
}

duk_ret_t SysColor(duk_context* ctx)
{
    HostOf(ctx).SysColor(duk_require_int(ctx, 0), static_cast<COLORREF>(duk_require_uint(ctx, 1)));
    return Done(ctx);
}

void Put(duk_context* ctx, const char* name, duk_c_function fn, int nargs)
{
    duk_push_c_function(ctx, fn, nargs);
    duk_put_prop_string(ctx, -2, name);
}

} // namespace

void AddInputFunctions(duk_context* ctx)
{
    Put(ctx, "screen", Screen, 3);
    Put(ctx, "focus", Focus, 1);
    Put(ctx, "type", Type, 1);
    Put(ctx, "key", Key, 2);
    Put(ctx, "press", Press, 2);
    Put(ctx, "release", Release, 2);
    Put(ctx, "move", Mouse<&CHost::Move>, 2);
    Put(ctx, "click", Mouse<&CHost::Click>, 2);
    Put(ctx, "dblclick", Mouse<&CHost::DblClick>, 2);
    Put(ctx, "wheel", Wheel, 3);
    Put(ctx, "advance", Advance, 1);
    Put(ctx, "pump", Pump, 0);
    Put(ctx, "pixel", Pixel, 2);
    Put(ctx, "snapshot", Snapshot, 5);
    Put(ctx, "sysColor", SysColor, 2);
}

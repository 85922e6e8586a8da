// The host object's calls that go through the window system: the virtual screen, simulated
// keyboard and mouse, the clock and the message loop, pixels and snapshots, colours and pictures.
#include <strings.h>
#include <string>
#include "ScriptBinding.h"
#include "ScriptHost.h"
#include "ScriptObjects.h"
#include "user/winuser.h"

namespace {
CHost& HostOf(duk_context* ctx) { return ScriptHostOf(ctx).Host(); }

// host.screen(width, height, monitors): the virtual screen; 1024 x 768 on one monitor by default.
duk_ret_t ScreenBody(duk_context* ctx)
{
    int w = duk_get_top(ctx) > 0 ? duk_require_int(ctx, 0) : 1024;
    int h = duk_get_top(ctx) > 1 ? duk_require_int(ctx, 1) : 768;
    int monitors = duk_get_top(ctx) > 2 ? duk_require_int(ctx, 2) : 1;
    HostOf(ctx).Screen(w, h, monitors);
    return 0;
}

duk_ret_t FocusBody(duk_context* ctx)
{
    CControlSite* site = ControlOf(ctx, 0);
    if (!site) return PushScriptError(ctx, "focus: the argument must be a control");
    HostOf(ctx).Focus(*site);
    return 0;
}

duk_ret_t TypeBody(duk_context* ctx)
{
    const char* text = duk_require_string(ctx, 0);
    HostOf(ctx).Type(CString(FromUtf8(text)));
    return 0;
}

struct NamedKey { const char* name; UINT vk; };
constexpr NamedKey kKeys[] = {
    {"Enter", VK_RETURN}, {"Escape", VK_ESCAPE}, {"Backspace", VK_BACK}, {"Delete", VK_DELETE},
    {"Left", VK_LEFT}, {"Right", VK_RIGHT}, {"Up", VK_UP}, {"Down", VK_DOWN}, {"Home", VK_HOME},
    {"End", VK_END}, {"PageUp", VK_PRIOR}, {"PageDown", VK_NEXT}, {"Tab", VK_TAB}, {"F4", VK_F4},
};

bool OptionFlag(duk_context* ctx, const char* name)
{
    if (!duk_is_object(ctx, 1)) return false;
    duk_get_prop_string(ctx, 1, name);
    bool on = duk_to_boolean(ctx, -1);
    duk_pop(ctx);
    return on;
}

// host.key(name, {shift, ctrl}): one key down and up, with the modifiers held around it.
duk_ret_t KeyBody(duk_context* ctx)
{
    const char* name = duk_require_string(ctx, 0);
    bool shift = OptionFlag(ctx, "shift"), ctrl = OptionFlag(ctx, "ctrl");
    for (const NamedKey& key : kKeys) {
        if (strcasecmp(key.name, name) != 0) continue;
        HostOf(ctx).Key(key.vk, shift, ctrl);
        return 0;
    }
    return PushScriptError(ctx, "unknown key '" + std::string(name) + "'");
}

template <void (CHost::*Fn)(int, int, int)>
duk_ret_t ButtonBody(duk_context* ctx)
{
    int x = duk_require_int(ctx, 0), y = duk_require_int(ctx, 1);
    (HostOf(ctx).*Fn)(x, y, VK_LBUTTON);
    return 0;
}

template <void (CHost::*Fn)(int, int)>
duk_ret_t PointBody(duk_context* ctx)
{
    int x = duk_require_int(ctx, 0), y = duk_require_int(ctx, 1);
    (HostOf(ctx).*Fn)(x, y);
    return 0;
}

duk_ret_t WheelBody(duk_context* ctx)
{
    int x = duk_require_int(ctx, 0), y = duk_require_int(ctx, 1), delta = duk_require_int(ctx, 2);
    HostOf(ctx).Wheel(x, y, delta);
    return 0;
}

duk_ret_t AdvanceBody(duk_context* ctx)
{
    double ms = duk_require_number(ctx, 0);
    if (!(ms >= 0 && ms <= 4294967295.0)) return PushScriptError(ctx, "advance: milliseconds must be 0 or more");
    HostOf(ctx).Advance(static_cast<DWORD>(ms));
    return 0;
}

duk_ret_t PumpBody(duk_context* ctx)
{
    HostOf(ctx).Pump();
    return 0;
}

// host.pixel(x, y): the composed screen's COLORREF 0x00BBGGRR.
duk_ret_t PixelBody(duk_context* ctx)
{
    int x = duk_require_int(ctx, 0), y = duk_require_int(ctx, 1);
    duk_push_uint(ctx, HostOf(ctx).Pixel(x, y));
    return 1;
}

// host.snapshot(path) or host.snapshot(path, x, y, w, h): the composed screen as PNG.
duk_ret_t SnapshotBody(duk_context* ctx)
{
    const char* path = duk_require_string(ctx, 0);
    bool part = duk_get_top(ctx) > 1;
    RECT area{};
    if (part) {
        int x = duk_require_int(ctx, 1), y = duk_require_int(ctx, 2);
        area = RECT{x, y, x + duk_require_int(ctx, 3), y + duk_require_int(ctx, 4)};
    }
    if (!HostOf(ctx).Snapshot(path, part ? &area : nullptr))
        return PushScriptError(ctx, "snapshot: cannot write '" + std::string(path) + "'");
    return 0;
}

// host.freeze(x, y, w, h): that area of the screen, as it looks now, stays over every window in
// later pixels and snapshots until host.thaw().
duk_ret_t FreezeBody(duk_context* ctx)
{
    int x = duk_require_int(ctx, 0), y = duk_require_int(ctx, 1);
    RECT area{x, y, x + duk_require_int(ctx, 2), y + duk_require_int(ctx, 3)};
    if (!HostOf(ctx).Freeze(area)) return PushScriptError(ctx, "freeze: the area must be non-empty");
    return 0;
}

duk_ret_t ThawBody(duk_context* ctx)
{
    HostOf(ctx).Thaw();
    return 0;
}

duk_ret_t SysColorBody(duk_context* ctx)
{
    int index = duk_require_int(ctx, 0);
    auto rgb = static_cast<COLORREF>(duk_require_uint(ctx, 1));
    HostOf(ctx).SysColor(index, rgb);
    return 0;
}

duk_ret_t LoadPictureBody(duk_context* ctx)
{
    const char* path = duk_require_string(ctx, 0);
    std::string reason;
    IPictureDisp* picture = HostOf(ctx).LoadPicture(path, &reason);
    if (!picture) return PushScriptError(ctx, "loadPicture: " + reason);
    PushDispatch(ctx, picture);
    picture->Release(); // the script object holds its own reference
    return 1;
}
} // namespace

void AddWindowCalls(duk_context* ctx, duk_idx_t host)
{
    PutFunction(ctx, host, "screen", &Guarded<ScreenBody>, DUK_VARARGS);
    PutFunction(ctx, host, "focus", &Guarded<FocusBody>, 1);
    PutFunction(ctx, host, "type", &Guarded<TypeBody>, 1);
    PutFunction(ctx, host, "key", &Guarded<KeyBody>, 2);
    PutFunction(ctx, host, "press", &Guarded<ButtonBody<&CHost::Press>>, 2);
    PutFunction(ctx, host, "release", &Guarded<ButtonBody<&CHost::Release>>, 2);
    PutFunction(ctx, host, "move", &Guarded<PointBody<&CHost::Move>>, 2);
    PutFunction(ctx, host, "click", &Guarded<PointBody<&CHost::Click>>, 2);
    PutFunction(ctx, host, "dblclick", &Guarded<PointBody<&CHost::DblClick>>, 2);
    PutFunction(ctx, host, "wheel", &Guarded<WheelBody>, 3);
    PutFunction(ctx, host, "advance", &Guarded<AdvanceBody>, 1);
    PutFunction(ctx, host, "pump", &Guarded<PumpBody>, 0);
    PutFunction(ctx, host, "pixel", &Guarded<PixelBody>, 2);
    PutFunction(ctx, host, "snapshot", &Guarded<SnapshotBody>, DUK_VARARGS);
    PutFunction(ctx, host, "freeze", &Guarded<FreezeBody>, 4);
    PutFunction(ctx, host, "thaw", &Guarded<ThawBody>, 0);
    PutFunction(ctx, host, "sysColor", &Guarded<SysColorBody>, 2);
    PutFunction(ctx, host, "loadPicture", &Guarded<LoadPictureBody>, 1);
}

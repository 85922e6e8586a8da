// The host object's calls that go through the window system: the virtual screen, simulated
// keyboard and mouse, the clock and the message loop, pixels and snapshots, colours and pictures.
#include <strings.h>
#include <string>
#include <vector>
#include "ScriptArgs.h"
#include "ScriptBinding.h"
#include "ScriptHost.h"
#include "ScriptObjects.h"
#include "user/winuser.h"

namespace {
CHost& HostOf(duk_context* ctx) { return ScriptHostOf(ctx).Host(); }

// host.screen(width, height, monitors): the virtual screen; 1024 x 768 on one monitor by default.
duk_ret_t ScreenBody(duk_context* ctx)
{
    int w = 1024, h = 768, monitors = 1;
    duk_idx_t n = duk_get_top(ctx);
    if ((n > 0 && !RequireInt(ctx, 0, "screen", "width", 1, kMaxExtent, w)) ||
        (n > 1 && !RequireInt(ctx, 1, "screen", "height", 1, kMaxExtent, h)) ||
        (n > 2 && !RequireInt(ctx, 2, "screen", "monitors", 1, kMaxExtent, monitors)))
        return kThrow;
    if (!HostOf(ctx).Screen(w, h, monitors))
        return PushScriptError(ctx, "screen: the monitors side by side must be at most " + std::to_string(kMaxExtent) +
                                        " pixels wide");
    return 0;
}

duk_ret_t FocusBody(duk_context* ctx)
{
    CControlSite* site = ControlOf(ctx, 0);
    if (!site) return PushScriptError(ctx, "focus: the argument must be a control");
    HostOf(ctx).Focus(*site);
    return 0;
}

// Keys go to the window that holds the focus. With none, or with a form that ignores them, they
// would be lost without a word.
bool KeysWouldBeLost(duk_context* ctx)
{
    HWND focus = ::GetFocus();
    return !focus || HostOf(ctx).FormOfWindow(focus);
}

duk_ret_t LostKeysError(duk_context* ctx, const char* call)
{
    const char* where = ::GetFocus() ? "the focus is on a form, not in a control" : "no window has the focus";
    return PushScriptError(ctx, std::string(call) + ": " + where + ", so the keys would go nowhere; call host.focus(control) first");
}

duk_ret_t TypeBody(duk_context* ctx)
{
    CString text;
    if (!RequireText(ctx, 0, text)) return kThrow;
    if (KeysWouldBeLost(ctx)) return LostKeysError(ctx, "host.type");
    HostOf(ctx).Type(text);
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
    std::string name;
    if (!RequireName(ctx, 0, "key", "the key's name", name)) return kThrow;
    bool shift = OptionFlag(ctx, "shift"), ctrl = OptionFlag(ctx, "ctrl");
    std::vector<std::string> names;
    for (const NamedKey& key : kKeys) {
        names.push_back(key.name);
        if (strcasecmp(key.name, name.c_str()) != 0) continue;
        if (KeysWouldBeLost(ctx)) return LostKeysError(ctx, "host.key");
        HostOf(ctx).Key(key.vk, shift, ctrl);
        return 0;
    }
    return PushScriptError(ctx, "unknown key '" + name + "'" + DidYouMean(name, names));
}

constexpr char kPress[] = "press", kRelease[] = "release", kMove[] = "move", kClick[] = "click", kDblClick[] = "dblclick";

// The screen point of a mouse call.
bool PointArgs(duk_context* ctx, const char* function, int& x, int& y)
{
    return RequireCoordinate(ctx, 0, function, "x", x) && RequireCoordinate(ctx, 1, function, "y", y);
}

template <void (CHost::*Fn)(int, int, int), const char* Name>
duk_ret_t ButtonBody(duk_context* ctx)
{
    int x, y;
    if (!PointArgs(ctx, Name, x, y)) return kThrow;
    (HostOf(ctx).*Fn)(x, y, VK_LBUTTON);
    return 0;
}

template <void (CHost::*Fn)(int, int), const char* Name>
duk_ret_t PointBody(duk_context* ctx)
{
    int x, y;
    if (!PointArgs(ctx, Name, x, y)) return kThrow;
    (HostOf(ctx).*Fn)(x, y);
    return 0;
}

duk_ret_t WheelBody(duk_context* ctx)
{
    int x, y, delta;
    if (!PointArgs(ctx, "wheel", x, y) || !RequireInt(ctx, 2, "wheel", "delta", -32768, 32767, delta)) return kThrow;
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
    int x, y;
    if (!PointArgs(ctx, "pixel", x, y)) return kThrow;
    int w = ::GetSystemMetrics(SM_CXVIRTUALSCREEN), h = ::GetSystemMetrics(SM_CYVIRTUALSCREEN);
    if (x < 0 || y < 0 || x >= w || y >= h)
        return PushScriptError(ctx, "host.pixel: (" + std::to_string(x) + ", " + std::to_string(y) + ") is outside the " +
                                        std::to_string(w) + " x " + std::to_string(h) + " screen");
    duk_push_uint(ctx, HostOf(ctx).Pixel(x, y));
    return 1;
}

// host.snapshot(path) or host.snapshot(path, x, y, w, h): the composed screen as PNG.
duk_ret_t SnapshotBody(duk_context* ctx)
{
    std::string path, reason;
    if (!RequireName(ctx, 0, "snapshot", "the path", path)) return kThrow;
    bool part = duk_get_top(ctx) > 1;
    RECT area{};
    if (part && !RequireRect(ctx, 1, "snapshot", area)) return kThrow;
    if (!HostOf(ctx).Snapshot(path.c_str(), part ? &area : nullptr, &reason))
        return PushScriptError(ctx, "snapshot: " + reason);
    return 0;
}

// host.freeze(x, y, w, h): that area of the screen, as it looks now, stays over every window in
// later pixels and snapshots until host.thaw().
duk_ret_t FreezeBody(duk_context* ctx)
{
    RECT area;
    if (!RequireRect(ctx, 0, "freeze", area)) return kThrow;
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
    std::string path, reason;
    if (!RequireName(ctx, 0, "loadPicture", "the path", path)) return kThrow;
    IPictureDisp* picture = HostOf(ctx).LoadPicture(path.c_str(), &reason);
    if (!picture) return PushScriptError(ctx, "loadPicture: " + reason);
    PushDispatch(ctx, picture);
    picture->Release(); // the script object holds its own reference
    return 1;
}
} // namespace

namespace {
constexpr Param kXY[] = {{"x", Arg::Number}, {"y", Arg::Number}};
constexpr Param kArea[] = {{"x", Arg::Number}, {"y", Arg::Number}, {"w", Arg::Number}, {"h", Arg::Number}};
constexpr Param kScreen[] = {{"width", Arg::Number, true}, {"height", Arg::Number, true}, {"monitors", Arg::Number, true}};
constexpr Param kFocus[] = {{"control", Arg::Control}};
constexpr Param kType[] = {{"text", Arg::String}};
constexpr Param kKey[] = {{"name", Arg::String}, {"modifiers", Arg::Any, true}};
constexpr Param kWheel[] = {{"x", Arg::Number}, {"y", Arg::Number}, {"delta", Arg::Number}};
constexpr Param kAdvance[] = {{"ms", Arg::Number}};
constexpr Param kSnapshot[] = {{"path", Arg::String}, {"x", Arg::Number, true}, {"y", Arg::Number, true},
                               {"w", Arg::Number, true}, {"h", Arg::Number, true}};
constexpr Param kSysColor[] = {{"index", Arg::Number}, {"rgb", Arg::Number}};
constexpr Param kPath[] = {{"path", Arg::String}};

constexpr Signature kScreenCall{"host.screen", kScreen}, kFocusCall{"host.focus", kFocus}, kTypeCall{"host.type", kType},
    kKeyCall{"host.key", kKey}, kPressCall{"host.press", kXY}, kReleaseCall{"host.release", kXY},
    kMoveCall{"host.move", kXY}, kClickCall{"host.click", kXY}, kDblClickCall{"host.dblclick", kXY},
    kWheelCall{"host.wheel", kWheel}, kAdvanceCall{"host.advance", kAdvance}, kPumpCall{"host.pump", {}},
    kPixelCall{"host.pixel", kXY}, kSnapshotCall{"host.snapshot", kSnapshot}, kFreezeCall{"host.freeze", kArea},
    kThawCall{"host.thaw", {}}, kSysColorCall{"host.sysColor", kSysColor}, kLoadPictureCall{"host.loadPicture", kPath};
} // namespace

void AddWindowCalls(duk_context* ctx, duk_idx_t host)
{
    PutCall(ctx, host, "screen", &Guarded<ScreenBody>, kScreenCall);
    PutCall(ctx, host, "focus", &Guarded<FocusBody>, kFocusCall);
    PutCall(ctx, host, "type", &Guarded<TypeBody>, kTypeCall);
    PutCall(ctx, host, "key", &Guarded<KeyBody>, kKeyCall);
    PutCall(ctx, host, "press", &Guarded<ButtonBody<&CHost::Press, kPress>>, kPressCall);
    PutCall(ctx, host, "release", &Guarded<ButtonBody<&CHost::Release, kRelease>>, kReleaseCall);
    PutCall(ctx, host, "move", &Guarded<PointBody<&CHost::Move, kMove>>, kMoveCall);
    PutCall(ctx, host, "click", &Guarded<PointBody<&CHost::Click, kClick>>, kClickCall);
    PutCall(ctx, host, "dblclick", &Guarded<PointBody<&CHost::DblClick, kDblClick>>, kDblClickCall);
    PutCall(ctx, host, "wheel", &Guarded<WheelBody>, kWheelCall);
    PutCall(ctx, host, "advance", &Guarded<AdvanceBody>, kAdvanceCall);
    PutCall(ctx, host, "pump", &Guarded<PumpBody>, kPumpCall);
    PutCall(ctx, host, "pixel", &Guarded<PixelBody>, kPixelCall);
    PutCall(ctx, host, "snapshot", &Guarded<SnapshotBody>, kSnapshotCall);
    PutCall(ctx, host, "freeze", &Guarded<FreezeBody>, kFreezeCall);
    PutCall(ctx, host, "thaw", &Guarded<ThawBody>, kThawCall);
    PutCall(ctx, host, "sysColor", &Guarded<SysColorBody>, kSysColorCall);
    PutCall(ctx, host, "loadPicture", &Guarded<LoadPictureBody>, kLoadPictureCall);
}

// The script object of a form: controls are created on it, new or loaded from a property bag's text.
#include <algorithm>
#include <string>
#include "ScriptArgs.h"
#include "ScriptBinding.h"
#include "ScriptHost.h"
#include "ScriptObjects.h"
#include "com/propbag.h"
#include "user/winuser.h"

namespace {
const char kFormKey[] = DUK_HIDDEN_SYMBOL("form");

CForm* ThisForm(duk_context* ctx)
{
    duk_push_this(ctx);
    auto* form = static_cast<CForm*>(GetHiddenPointer(ctx, -1, kFormKey));
    duk_pop(ctx);
    return form;
}

// A load that fails leaves its site on the form, as a container keeps a control it could not load.
duk_ret_t Made(duk_context* ctx, CControlSite* site, HRESULT hr, const char* what, const char* progID)
{
    // The class lookup knows no such name: the usual slip of a misspelt ProgID.
    if (hr == CO_E_CLASSSTRING || hr == REGDB_E_CLASSNOTREG)
        return PushScriptError(ctx, std::string("form.") + what + ": no control is registered as '" + progID + "'");
    if (!site || FAILED(hr))
        return PushScriptError(ctx, std::string("cannot ") + what + " '" + progID + "': HRESULT " + HResultText(hr));
    PushControl(ctx, site);
    return 1;
}

// form.create(progID, x, y, w, h): a new control, reset to its defaults.
duk_ret_t CreateBody(duk_context* ctx)
{
    std::string progID;
    RECT rc;
    if (!RequireName(ctx, 0, "create", "the ProgID", progID) || !RequireRect(ctx, 1, "create", rc)) return kThrow;
    CForm* form = ThisForm(ctx);
    if (!form) return PushScriptError(ctx, "create: not called on a form");
    HRESULT hr = E_FAIL;
    CControlSite* site = form->Create(CString(FromUtf8(progID)), rc, &hr);
    return Made(ctx, site, hr, "create", progID.c_str());
}

// form.load(progID, bagText, x, y, w, h): a control loaded from saved text ("" is an empty bag).
duk_ret_t LoadBody(duk_context* ctx)
{
    std::string progID;
    CString bag, damage;
    RECT rc;
    if (!RequireName(ctx, 0, "load", "the ProgID", progID) || !RequireText(ctx, 1, bag) || !RequireRect(ctx, 2, "load", rc))
        return kThrow;
    CForm* form = ThisForm(ctx);
    if (!form) return PushScriptError(ctx, "load: not called on a form");
    CComPtr<IPropertyBag> check;
    if (FAILED(CreateTextPropertyBag(bag, &check, &damage)))
        return PushScriptError(ctx, "load: the saved text is damaged at " + ToUtf8(damage));
    HRESULT hr = E_FAIL;
    CControlSite* site = form->Load(CString(FromUtf8(progID)), bag, rc, &hr);
    return Made(ctx, site, hr, "load", progID.c_str());
}
// form.snapshot(path): the part of the screen the form covers, as PNG.
duk_ret_t SnapshotBody(duk_context* ctx)
{
    const char* path = duk_require_string(ctx, 0);
    CForm* form = ThisForm(ctx);
    if (!form) return PushScriptError(ctx, "snapshot: not called on a form");
    const RECT& rc = form->Rect();
    RECT area{std::max<LONG>(rc.left, 0), std::max<LONG>(rc.top, 0),
              std::min<LONG>(rc.right, ::GetSystemMetrics(SM_CXVIRTUALSCREEN)),
              std::min<LONG>(rc.bottom, ::GetSystemMetrics(SM_CYVIRTUALSCREEN))};
    if (area.right <= area.left || area.bottom <= area.top)
        return PushScriptError(ctx, "form.snapshot: the form is outside the screen");
    if (!ScriptHostOf(ctx).Host().Snapshot(path, &area))
        return PushScriptError(ctx, "form.snapshot: cannot write '" + std::string(path) + "'");
    return 0;
}

constexpr Param kCreate[] = {{"progID", Arg::String}, {"x", Arg::Number}, {"y", Arg::Number}, {"w", Arg::Number},
                             {"h", Arg::Number}};
constexpr Param kLoad[] = {{"progID", Arg::String}, {"bag", Arg::String}, {"x", Arg::Number}, {"y", Arg::Number},
                           {"w", Arg::Number}, {"h", Arg::Number}};
constexpr Param kPath[] = {{"path", Arg::String}};
constexpr Signature kCreateCall{"form.create", kCreate}, kLoadCall{"form.load", kLoad}, kSnapshotCall{"form.snapshot", kPath};
} // namespace

void PushFormObject(duk_context* ctx, CForm* form)
{
    duk_push_object(ctx);
    PutHiddenPointer(ctx, -1, kFormKey, form);
    PutCall(ctx, -1, "create", &Guarded<CreateBody>, kCreateCall);
    PutCall(ctx, -1, "load", &Guarded<LoadBody>, kLoadCall);
    PutCall(ctx, -1, "snapshot", &Guarded<SnapshotBody>, kSnapshotCall);
    MakeStrict(ctx, "form");
}

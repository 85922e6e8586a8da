// The script object of a form: controls are created on it, new or loaded from a property bag's text.
#include <string>
#include "ScriptBinding.h"
#include "ScriptObjects.h"

namespace {
const char kFormKey[] = DUK_HIDDEN_SYMBOL("form");

// x, y, w, h from the arguments starting at first, in the form's client coordinates.
RECT RectArgs(duk_context* ctx, duk_idx_t first)
{
    int x = duk_require_int(ctx, first), y = duk_require_int(ctx, first + 1);
    int w = duk_require_int(ctx, first + 2), h = duk_require_int(ctx, first + 3);
    return RECT{x, y, x + w, y + h};
}

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
    if (!site || FAILED(hr))
        return PushScriptError(ctx, std::string("cannot ") + what + " '" + progID + "': HRESULT " + HResultText(hr));
    PushControl(ctx, site);
    return 1;
}

// form.create(progID, x, y, w, h): a new control, reset to its defaults.
duk_ret_t CreateBody(duk_context* ctx)
{
    const char* progID = duk_require_string(ctx, 0);
    RECT rc = RectArgs(ctx, 1);
    CForm* form = ThisForm(ctx);
    if (!form) return PushScriptError(ctx, "create: not called on a form");
    HRESULT hr = E_FAIL;
    CControlSite* site = form->Create(CString(FromUtf8(progID)), rc, &hr);
    return Made(ctx, site, hr, "create", progID);
}

// form.load(progID, bagText, x, y, w, h): a control loaded from saved text ("" is an empty bag).
duk_ret_t LoadBody(duk_context* ctx)
{
    const char* progID = duk_require_string(ctx, 0);
    const char* bag = duk_require_string(ctx, 1);
    RECT rc = RectArgs(ctx, 2);
    CForm* form = ThisForm(ctx);
    if (!form) return PushScriptError(ctx, "load: not called on a form");
    HRESULT hr = E_FAIL;
    CControlSite* site = form->Load(CString(FromUtf8(progID)), CString(FromUtf8(bag)), rc, &hr);
    return Made(ctx, site, hr, "load", progID);
}
} // namespace

void PushFormObject(duk_context* ctx, CForm* form)
{
    duk_push_object(ctx);
    PutHiddenPointer(ctx, -1, kFormKey, form);
    PutFunction(ctx, -1, "create", &Guarded<CreateBody>, 5);
    PutFunction(ctx, -1, "load", &Guarded<LoadBody>, 6);
}

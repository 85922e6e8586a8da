// The script object of a form: controls are created on it, new or loaded from a property bag's text.
#include <string>
#include "ScriptArgs.h"
#include "ScriptBinding.h"
#include "ScriptObjects.h"
#include "com/propbag.h"

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
} // namespace

void PushFormObject(duk_context* ctx, CForm* form)
{
    duk_push_object(ctx);
    PutHiddenPointer(ctx, -1, kFormKey, form);
    PutFunction(ctx, -1, "create", &Guarded<CreateBody>, 5);
    PutFunction(ctx, -1, "load", &Guarded<LoadBody>, 6);
}

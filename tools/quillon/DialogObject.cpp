// The script object of an open modal dialog or property frame, handed to host.on("Dialog", fn):
// its caption, page(name), field(id) with text, checked, index and lines, and press(button).
#include <set>
#include <string>
#include "ScriptBinding.h"
#include "ScriptObjects.h"
#include "host/DialogDriver.h"

namespace {
const char kDialogKey[] = DUK_HIDDEN_SYMBOL("dialog");
const char kFieldKey[] = DUK_HIDDEN_SYMBOL("field");

// The drivers of the dialogs whose handlers are running; a script may keep the object longer.
std::set<CDialogDriver*>& LiveDrivers()
{
    static std::set<CDialogDriver*> live;
    return live;
}

// The driver of the dialog `this` stands for; an error once the dialog has closed.
CDialogDriver* ThisDialog(duk_context* ctx, const char* what)
{
    duk_push_this(ctx);
    auto* d = static_cast<CDialogDriver*>(GetHiddenPointer(ctx, -1, kDialogKey));
    duk_pop(ctx);
    if (!LiveDrivers().count(d) || !d->IsOpen()) {
        PushScriptError(ctx, std::string(what) + ": the dialog is no longer open");
        return nullptr;
    }
    return d;
}

HWND ThisField(duk_context* ctx, CDialogDriver** pd, const char* what)
{
    duk_push_this(ctx);
    HWND h = static_cast<HWND>(GetHiddenPointer(ctx, -1, kFieldKey));
    duk_pop(ctx);
    *pd = ThisDialog(ctx, what);
    return *pd && ::IsWindow(h) ? h : nullptr;
}

void PushText(duk_context* ctx, const CString& s)
{
    std::string text = ToUtf8(s);
    duk_push_lstring(ctx, text.data(), text.size());
}

// A field's accessor, given the field and its dialog; ResolveField finds them or throws, naming the
// accessor.
using FieldAccess = duk_ret_t (*)(duk_context* ctx, CDialogDriver& d, HWND h);

template <const char* Name, FieldAccess Access>
duk_ret_t ResolveField(duk_context* ctx)
{
    CDialogDriver* d;
    HWND h = ThisField(ctx, &d, Name);
    return h ? Access(ctx, *d, h) : kThrow;
}

duk_ret_t GetText(duk_context* ctx, CDialogDriver& d, HWND h)
{
    PushText(ctx, d.Text(h));
    return 1;
}

duk_ret_t SetText(duk_context* ctx, CDialogDriver& d, HWND h)
{
    d.SetText(h, CString(FromUtf8(duk_to_string(ctx, 0))));
    return 0;
}

duk_ret_t GetChecked(duk_context* ctx, CDialogDriver& d, HWND h)
{
    duk_push_boolean(ctx, d.Checked(h));
    return 1;
}

duk_ret_t SetChecked(duk_context* ctx, CDialogDriver& d, HWND h)
{
    d.SetChecked(h, duk_to_boolean(ctx, 0));
    return 0;
}

duk_ret_t GetIndex(duk_context* ctx, CDialogDriver& d, HWND h)
{
    duk_push_int(ctx, d.Index(h));
    return 1;
}

duk_ret_t SetIndex(duk_context* ctx, CDialogDriver& d, HWND h)
{
    int i = duk_to_int(ctx, 0);
    if (i < 0 || i >= static_cast<int>(d.Lines(h).size())) return PushScriptError(ctx, "index: no line " + std::to_string(i));
    d.SetIndex(h, i);
    return 0;
}

duk_ret_t GetLines(duk_context* ctx, CDialogDriver& d, HWND h)
{
    duk_push_array(ctx);
    duk_uarridx_t i = 0;
    for (const CString& line : d.Lines(h)) {
        PushText(ctx, line);
        duk_put_prop_index(ctx, -2, i++);
    }
    return 1;
}

constexpr char kText[] = "text", kChecked[] = "checked", kIndex[] = "index", kLines[] = "lines";

void DefineAccessor(duk_context* ctx, const char* name, duk_c_function get, duk_c_function set)
{
    duk_push_string(ctx, name);
    duk_push_c_function(ctx, get, 0);
    duk_uint_t flags = DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_SET_ENUMERABLE;
    if (set) {
        duk_push_c_function(ctx, set, 1);
        flags |= DUK_DEFPROP_HAVE_SETTER;
    }
    duk_def_prop(ctx, -3 - (set ? 1 : 0), flags);
}

// dlg.field(id): the field with the id on the frame's current page or in the dialog.
duk_ret_t FieldBody(duk_context* ctx)
{
    int id = duk_require_int(ctx, 0);
    CDialogDriver* d = ThisDialog(ctx, "field");
    if (!d) return kThrow;
    HWND h = d->Field(id);
    if (!h) return PushScriptError(ctx, "field: the dialog has no field " + std::to_string(id) + " here");
    duk_push_object(ctx);
    PutHiddenPointer(ctx, -1, kDialogKey, d);
    PutHiddenPointer(ctx, -1, kFieldKey, h);
    DefineAccessor(ctx, kText, &Guarded<ResolveField<kText, GetText>>, &Guarded<ResolveField<kText, SetText>>);
    DefineAccessor(ctx, kChecked, &Guarded<ResolveField<kChecked, GetChecked>>, &Guarded<ResolveField<kChecked, SetChecked>>);
    DefineAccessor(ctx, kIndex, &Guarded<ResolveField<kIndex, GetIndex>>, &Guarded<ResolveField<kIndex, SetIndex>>);
    DefineAccessor(ctx, kLines, &Guarded<ResolveField<kLines, GetLines>>, nullptr);
    return 1;
}

// dlg.page(name): selects the frame's tab with that title.
duk_ret_t PageBody(duk_context* ctx)
{
    CString name(FromUtf8(duk_require_string(ctx, 0)));
    CDialogDriver* d = ThisDialog(ctx, "page");
    if (!d) return kThrow;
    if (!d->SelectPage(name)) return PushScriptError(ctx, "page: no tab '" + ToUtf8(name) + "'");
    return 0;
}

// dlg.press("OK" | "Cancel" | "Apply" | id)
duk_ret_t PressBody(duk_context* ctx)
{
    CDialogDriver* d = ThisDialog(ctx, "press");
    if (!d) return kThrow;
    bool pressed = duk_is_number(ctx, 0) ? d->Press(duk_get_int(ctx, 0)) : d->Press(CString(FromUtf8(duk_require_string(ctx, 0))));
    if (!pressed) return PushScriptError(ctx, std::string("press: no button ") + duk_safe_to_string(ctx, 0));
    return 0;
}

duk_ret_t GetCaptionBody(duk_context* ctx)
{
    CDialogDriver* d = ThisDialog(ctx, "caption");
    if (!d) return kThrow;
    PushText(ctx, d->Caption());
    return 1;
}

} // namespace

void ForgetDialogObject(CDialogDriver* driver) { LiveDrivers().erase(driver); }

void PushDialogObject(duk_context* ctx, CDialogDriver* driver)
{
    LiveDrivers().insert(driver);
    duk_push_object(ctx);
    PutHiddenPointer(ctx, -1, kDialogKey, driver);
    PutFunction(ctx, -1, "page", &Guarded<PageBody>, 1);
    PutFunction(ctx, -1, "field", &Guarded<FieldBody>, 1);
    PutFunction(ctx, -1, "press", &Guarded<PressBody>, 1);
    DefineAccessor(ctx, "caption", &Guarded<GetCaptionBody>, nullptr);
}

// Conversions between script values and VARIANTs, and the script objects over dispatch interfaces.
#pragma once
#include "com/variant.h"

struct duk_hthread;
typedef struct duk_hthread duk_context;
class CControlSite;

// Pushes the value: numbers, booleans, strings; objects as script objects; empty as undefined.
void PushVariant(duk_context* ctx, const VARIANT& v);
// The script value at idx as a VARIANT the caller clears.
COleVariant ToVariant(duk_context* ctx, int idx);
// A script object for a control on a form, reaching every property and method by name.
void PushControl(duk_context* ctx, CControlSite* site);
// The control behind a script object made by PushControl, or null.
CControlSite* ControlOf(duk_context* ctx, int idx);
// A script object for any other automation object (a font, a picture); takes a reference.
void PushDispatch(duk_context* ctx, IDispatch* p);
// Throws a script error for a failed dispatch call on the named member.
[[noreturn]] void ThrowDispatchError(duk_context* ctx, const CString& member, HRESULT hr);

// The script's objects: host, forms, controls on forms, and other automation objects.
#pragma once
#include <duktape.h>
#include "host/Host.h"

// The global host object: forms, ambient UserMode, persistence, host notifications.
void PushHostObject(duk_context* ctx);
// Adds the calls that go through the window system to the host object at idx.
void AddWindowCalls(duk_context* ctx, duk_idx_t host);
// Starts delivering the host's own notifications (PropertyChanged, Beep) to handlers set by host.on.
void ListenToHost(duk_context* ctx, CHost& host);
class CDialogDriver;
// The object of an open dialog for host.on("Dialog") handlers; it answers while the driver is live,
// until ForgetDialogObject.
void PushDialogObject(duk_context* ctx, CDialogDriver* driver);
void ForgetDialogObject(CDialogDriver* driver);
// A form: create and load controls on it.
void PushFormObject(duk_context* ctx, CForm* form);

// The script object of a control (the same object each time for the same control): every property
// and method of its dispatch map by name, and on(event, fn). The first push starts event delivery.
void PushControl(duk_context* ctx, CControlSite* site);
// The control behind a script object made by PushControl, or null.
CControlSite* ControlOf(duk_context* ctx, duk_idx_t idx);

// A script object for any other automation object (a font, a picture), reaching its properties by
// name; holds a reference until the script lets go of the object.
void PushDispatch(duk_context* ctx, IDispatch* p);
// The automation object behind a script object made by PushDispatch, or null.
IDispatch* DispatchOf(duk_context* ctx, duk_idx_t idx);

// Script functions as event handlers: a control's events, and the host's own notifications.
#pragma once
#include <functional>
#include <string>

struct duk_hthread;
typedef struct duk_hthread duk_context;
class CControlSite;

// Stores the function at idx as the handler under key (a later one replaces it).
void SetHandler(duk_context* ctx, const std::string& key, int idx);
// Calls the handler under key, if any, with the arguments pushArgs pushes (it returns their
// count); after() runs with the arguments still on the stack, at the index of the first one.
// An error in the handler is held and thrown when control returns to the script.
void CallHandler(duk_context* ctx, const std::string& key, const std::function<int()>& pushArgs,
                 const std::function<void(int firstArg)>& after = nullptr);
// The key of a control's event.
std::string EventKey(CControlSite* site, const std::string& eventName);
// Makes the control's events reach the handlers set with on().
void ListenToControl(duk_context* ctx, CControlSite* site);

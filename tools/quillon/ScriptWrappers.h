// The registry of script objects that stand for automation objects, and their member calls.
#pragma once
#include <vector>
#include "com/variant.h"

struct duk_hthread;
typedef struct duk_hthread duk_context;
class CControlSite;

// What a script object stands for: a control on a form, or another automation object.
struct Wrapped {
    CControlSite* site = nullptr;
    IDispatch* disp = nullptr;
};

enum class MemberKind { Unknown, Property, Method };

// Remembers the object at idx (kept alive for the script's life) as standing for w.
void RegisterWrapped(duk_context* ctx, int idx, const Wrapped& w);
Wrapped WrappedOf(duk_context* ctx, int idx);
IDispatch* WrappedDispatch(duk_context* ctx, int idx);
// Releases the references the registry holds; the heap must be gone already.
void ReleaseWrapped();

MemberKind FindMember(const Wrapped& w, const CString& name);
HRESULT InvokeMember(const Wrapped& w, const CString& name, WORD flags, std::vector<VARIANT> args, VARIANT* result);

// Pushes the proxy for w; the get and set traps reach members by name.
void PushProxy(duk_context* ctx, const Wrapped& w);
// Pushes a function that calls the named method of w.
void PushMethodFunction(duk_context* ctx, const Wrapped& w, const CString& name);
// Pushes q.on for the control: on(eventName, fn).
void PushOnFunction(duk_context* ctx, CControlSite* site);

// Conversions between script values and VARIANTs, and calls of script functions with event arguments.
#pragma once
#include <duktape.h>
#include <string>
#include "com/variant.h"

// Pushes the value: numbers (currency as its decimal value), booleans, strings, automation objects
// as script objects, empty as undefined, null as null.
void PushVariant(duk_context* ctx, const VARIANT& v);

// The script value at idx as a VARIANT: a whole number in the 32-bit signed range as VT_I4, a larger
// one below 2^32 as VT_UI4 (colours such as 0x80000005), any other number as VT_R8; booleans,
// strings, null, undefined (VT_EMPTY) and the script objects of automation objects. False for a value
// that has no VARIANT form (a plain object or a function).
bool ToVariant(duk_context* ctx, duk_idx_t idx, COleVariant& out);

// The script value's kind for messages: "an object", "a function".
std::string ScriptTypeName(duk_context* ctx, duk_idx_t idx);

// Calls the function on top of the stack with the event's arguments and pops it. A by-reference
// short is passed as an object {value: n} and its value is written back after the call, as the
// control reads it then. False when the function threw or a written-back value is no short; the
// error is then left on top of the stack.
bool CallWithEventArgs(duk_context* ctx, VARIANT* args, unsigned count);

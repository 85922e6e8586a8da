// The window-side calls of the script API: screen, focus, keys, mouse, clock, pixels, snapshots.
#pragma once

struct duk_hthread;
typedef struct duk_hthread duk_context;

// Adds them to the host object on top of the stack.
void AddInputFunctions(duk_context* ctx);

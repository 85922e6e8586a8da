// The host object of the script API: forms, input, clock, screen, persistence and notifications.
#pragma once

struct duk_hthread;
typedef struct duk_hthread duk_context;

void PushHostObject(duk_context* ctx);

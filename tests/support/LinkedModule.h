// The control's module linked into a test program: its classes served from the process, and its
// registration written into the process's registry, so that ProgIDs resolve as after an install.
#pragma once
#include "com/objbase.h"
#include "server/QuillonApp.h"

inline void UseLinkedModule()
{
    CoRegisterInprocServer(&DllGetClassObject);
    DllRegisterServer();
}

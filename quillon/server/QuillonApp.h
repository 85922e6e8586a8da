// The Quillon module: its application object and the exports a host loads it by.
#pragma once
#include "com/objbase.h"
#include "framework/olefact.h"

class CQuillonApp : public COleControlModule {
public:
    BOOL InitInstance() override { return COleControlModule::InitInstance(); }
    int ExitInstance() override { return COleControlModule::ExitInstance(); }
};

extern CQuillonApp theApp;

// The type library the control is described by, and its version.
inline constexpr GUID LIBID_QuillonLib = {0x5C4B1F2F, 0x3E2A, 0x4B7D, {0x9A, 0x61, 0x2F, 0x0C, 0x8D, 0x7E, 0x4A, 0x10}};
inline constexpr WORD kLibVerMajor = 2;
inline constexpr WORD kLibVerMinor = 0;

// The module's exports, found by name (server/Quillon.map).
STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
STDAPI DllCanUnloadNow();
STDAPI DllRegisterServer();
STDAPI DllUnregisterServer();

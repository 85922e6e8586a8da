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

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
HRESULT DllCanUnloadNow();

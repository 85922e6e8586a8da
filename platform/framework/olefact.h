// COleObjectFactory and COleControlModule: MFC's class factories and the module that serves them.
#pragma once
#include <functional>
#include "com/objbase.h"
#include "base/cstring.h"

class COleObjectFactory : public IClassFactory {
public:
    typedef std::function<IUnknown*()> Creator; // stand-in for the runtime class: makes one object

    COleObjectFactory(REFCLSID clsid, Creator create, BOOL bMultiInstance, LPCTSTR lpszProgID);
    virtual ~COleObjectFactory();

    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override { return 2; }  // a global object: never deleted through COM
    ULONG Release() override { return 1; }
    HRESULT CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) override;
    HRESULT LockServer(BOOL fLock) override;

    virtual BOOL UpdateRegistry(BOOL bRegister);
    static BOOL UpdateRegistryAll(BOOL bRegister);

    REFCLSID GetClassID() const { return m_clsid; }
    LPCTSTR GetProgID() const { return m_strProgID; }
    static long LiveObjectCount();
    static long LockCount();

private:
    CLSID m_clsid;
    Creator m_create;
    CString m_strProgID;
};

// Serves the module's factories: AfxDllGetClassObject walks them by class identifier.
HRESULT AfxDllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
HRESULT AfxDllCanUnloadNow();
// Objects made by the module count towards DllCanUnloadNow while they live.
void AfxOleLockApp();
void AfxOleUnlockApp();

// The module object: built at module load, it makes the module it lives in the instance handle
// that AfxGetInstanceHandle gives.
class COleControlModule {
public:
    COleControlModule();
    virtual ~COleControlModule() = default;
    virtual BOOL InitInstance() { return TRUE; }
    virtual int ExitInstance() { return 0; }
    HINSTANCE m_hInstance = nullptr;
};

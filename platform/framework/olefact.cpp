// The module's list of class factories and object counting.
#include "olefact.h"
#include <atomic>
#include <vector>
#include "base/module.h"
#include "olereg.h"

namespace {

std::vector<COleObjectFactory*>& Factories()
{
    static std::vector<COleObjectFactory*> list;
    return list;
}

HINSTANCE g_hInstance = nullptr;
std::atomic<long> g_objects{0};
std::atomic<long> g_locks{0};

} // namespace

COleControlModule::COleControlModule()
{
    GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                      reinterpret_cast<LPCTSTR>(this), &m_hInstance);
    g_hInstance = m_hInstance;
}

HINSTANCE AfxGetInstanceHandle() { return g_hInstance; }

void AfxOleLockApp() { ++g_objects; }
void AfxOleUnlockApp() { --g_objects; }
long COleObjectFactory::LiveObjectCount() { return g_objects; }
long COleObjectFactory::LockCount() { return g_locks; }

COleObjectFactory::COleObjectFactory(REFCLSID clsid, Creator create, BOOL, LPCTSTR lpszProgID)
    : m_clsid(clsid), m_create(std::move(create)), m_strProgID(lpszProgID ? lpszProgID : u"")
{
    Factories().push_back(this);
}

COleObjectFactory::~COleObjectFactory()
{
    auto& list = Factories();
    for (auto it = list.begin(); it != list.end(); ++it)
        if (*it == this) { list.erase(it); break; }
}

HRESULT COleObjectFactory::QueryInterface(REFIID riid, void** ppv)
{
    if (riid == IID_IUnknown || riid == IID_IClassFactory) { *ppv = static_cast<IClassFactory*>(this); return S_OK; }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

HRESULT COleObjectFactory::CreateInstance(IUnknown* outer, REFIID riid, void** ppv)
{
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    IUnknown* obj = m_create();
    if (!obj) return E_OUTOFMEMORY;
    HRESULT hr = obj->QueryInterface(riid, ppv);
    obj->Release();
    return hr;
}

HRESULT COleObjectFactory::LockServer(BOOL fLock)
{
    fLock ? ++g_locks : --g_locks;
    return S_OK;
}

BOOL COleObjectFactory::UpdateRegistry(BOOL) { return TRUE; }

BOOL COleObjectFactory::UpdateRegistryAll(BOOL bRegister)
{
    for (auto* f : Factories())
        if (!f->UpdateRegistry(bRegister)) return FALSE;
    return TRUE;
}

HRESULT AfxDllGetClassObject(REFCLSID clsid, REFIID riid, void** ppv)
{
    *ppv = nullptr;
    for (auto* f : Factories())
        if (f->GetClassID() == clsid) return f->QueryInterface(riid, ppv);
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT AfxDllCanUnloadNow() { return g_objects == 0 && g_locks == 0 ? S_OK : S_FALSE; }

// The class factory of a server that comes with the system (the DOM, the category manager): a static
// object that makes a T for each request. T starts with one reference, which the factory gives up.
#pragma once
#include "unknwn.h"

template <class T>
class CSystemClassFactory final : public IClassFactory {
public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (riid != IID_IUnknown && riid != IID_IClassFactory) return E_NOINTERFACE;
        *ppv = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    ULONG AddRef() override { return 2; } // a static object
    ULONG Release() override { return 1; }
    HRESULT CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (pUnkOuter) return CLASS_E_NOAGGREGATION;
        auto* object = new T;
        HRESULT hr = object->QueryInterface(riid, ppv);
        object->Release();
        return hr;
    }
    HRESULT LockServer(BOOL) override { return S_OK; }
};

// DllGetClassObject of a system server serving the one class clsid.
template <class T>
HRESULT GetSystemClassObject(REFCLSID clsid, REFCLSID rclsid, REFIID riid, void** ppv)
{
    static CSystemClassFactory<T> factory;
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    if (rclsid != clsid) return CLASS_E_CLASSNOTAVAILABLE;
    return factory.QueryInterface(riid, ppv);
}

// The table of in-process servers and ProgIDs behind CoCreateInstance.
#include "objbase.h"
#include <map>
#include <cassert>
#include <vector>
#include "base/cstring.h"
#include "comcat.h"
#include "msxml.h"

namespace {

std::vector<LPFNGETCLASSOBJECT>& Servers()
{
    // The system's own servers are there from the start.
    static std::vector<LPFNGETCLASSOBJECT> servers{&MsxmlDllGetClassObject, &ComcatDllGetClassObject};
    return servers;
}

std::map<std::u16string, CLSID>& ProgIDs()
{
    static std::map<std::u16string, CLSID> progids;
    return progids;
}

std::u16string Key(LPCOLESTR progid) { return CString(progid).MakeLower().str(); }

} // namespace

void CoRegisterInprocServer(LPFNGETCLASSOBJECT pfn)
{
    for (auto p : Servers()) if (p == pfn) return;
    Servers().push_back(pfn);
}

void CoRevokeInprocServer(LPFNGETCLASSOBJECT pfn) { std::erase(Servers(), pfn); }

namespace {
int g_nInitialized = 0;
} // namespace

HRESULT CoInitialize(void*) { return g_nInitialized++ == 0 ? S_OK : S_FALSE; }

void CoUninitialize()
{
    assert(g_nInitialized > 0 && "CoUninitialize without CoInitialize");
    --g_nInitialized;
}

int CoGetInitializeCount() { return g_nInitialized; }

void CoRegisterProgID(LPCOLESTR progid, REFCLSID clsid) { ProgIDs()[Key(progid)] = clsid; }

HRESULT CLSIDFromProgID(LPCOLESTR progid, CLSID* clsid)
{
    if (!progid || !clsid) return E_INVALIDARG;
    auto it = ProgIDs().find(Key(progid));
    if (it == ProgIDs().end()) return CO_E_CLASSSTRING;
    *clsid = it->second;
    return S_OK;
}

HRESULT CoGetClassObject(REFCLSID clsid, DWORD ctx, void*, REFIID riid, void** ppv)
{
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    if (!(ctx & CLSCTX_INPROC_SERVER)) return REGDB_E_CLASSNOTREG;
    for (auto server : Servers())
        if (SUCCEEDED(server(clsid, riid, ppv))) return S_OK;
    return REGDB_E_CLASSNOTREG;
}

HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD ctx, REFIID riid, void** ppv)
{
    IClassFactory* factory = nullptr;
    HRESULT hr = CoGetClassObject(clsid, ctx, nullptr, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    if (FAILED(hr)) return hr;
    hr = factory->CreateInstance(outer, riid, ppv);
    factory->Release();
    return hr;
}

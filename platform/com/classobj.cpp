// Class objects: the process's own servers, then the registry's in-process servers, loaded from the
// file their InprocServer32 key names; ProgIDs from the registry.
#include "objbase.h"
#include <cassert>
#include <vector>
#include "base/cstring.h"
#include "base/module.h"
#include "comcat.h"
#include "msxml.h"
#include "winreg.h"

namespace {

std::vector<LPFNGETCLASSOBJECT>& Servers()
{
    // The system's own servers are there from the start.
    static std::vector<LPFNGETCLASSOBJECT> servers{&MsxmlDllGetClassObject, &ComcatDllGetClassObject};
    return servers;
}

constexpr LONG kValueBuffer = 4096;

// A key's default value under HKEY_CLASSES_ROOT, or false when the key or its value is not there.
bool ClassesRootValue(const std::u16string& subKey, std::u16string& value)
{
    OLECHAR buffer[kValueBuffer / sizeof(OLECHAR)];
    LONG cb = kValueBuffer;
    if (RegQueryValue(HKEY_CLASSES_ROOT, subKey.c_str(), buffer, &cb) != ERROR_SUCCESS || !*buffer) return false;
    value = buffer;
    return true;
}

// The registered in-process server of a class: its module loaded, asked for the class object. COM
// keeps the module loaded once it has been asked.
HRESULT RegisteredClassObject(REFCLSID clsid, REFIID riid, void** ppv)
{
    std::u16string path;
    if (!ClassesRootValue(u"CLSID\\" + GuidString(clsid) + u"\\InprocServer32", path)) return REGDB_E_CLASSNOTREG;
    HMODULE hModule = LoadLibrary(path.c_str());
    if (!hModule) return CO_E_DLLNOTFOUND;
    auto getClassObject = reinterpret_cast<LPFNGETCLASSOBJECT>(GetProcAddress(hModule, "DllGetClassObject"));
    if (!getClassObject) {
        FreeLibrary(hModule);
        return CO_E_ERRORINDLL;
    }
    return getClassObject(clsid, riid, ppv);
}

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

HRESULT CLSIDFromProgID(LPCOLESTR progid, CLSID* clsid)
{
    if (!progid || !clsid) return E_INVALIDARG;
    std::u16string text;
    if (!*progid || !ClassesRootValue(std::u16string(progid) + u"\\CLSID", text)) return CO_E_CLASSSTRING;
    return CLSIDFromString(text.c_str(), clsid);
}

HRESULT CoGetClassObject(REFCLSID clsid, DWORD ctx, void*, REFIID riid, void** ppv)
{
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    if (!(ctx & CLSCTX_INPROC_SERVER)) return REGDB_E_CLASSNOTREG;
    for (auto server : Servers())
        if (SUCCEEDED(server(clsid, riid, ppv))) return S_OK;
    return RegisteredClassObject(clsid, riid, ppv);
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

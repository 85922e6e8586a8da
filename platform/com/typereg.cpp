// Type libraries in modules and in the registry:
//   TypeLib\{libid}\2.0              the help string;  FLAGS "0", HELPDIR, 0\win32 the file
//   Interface\{iid}                  the interface's name; ProxyStubClsid(32) the automation marshaler,
//                                    TypeLib the library with its "Version"
#include <map>
#include <vector>
#include "base/module.h"
#include "objbase.h"
#include "typeinfo.h"
#include "winreg.h"

namespace {

// The automation marshaler that carries every dispatch interface.
constexpr const char16_t* kOleAutomationMarshaler = u"{00020424-0000-0000-C000-000000000046}";
constexpr DWORD kPathBuffer = 4096;

// A module's TYPELIB resource: the source its library is made from.
using LibraryResource = const TypeLibSource& (*)();

std::map<HINSTANCE, LibraryResource>& Resources()
{
    static std::map<HINSTANCE, LibraryResource> resources;
    return resources;
}

std::u16string Number(unsigned n)
{
    std::string s = std::to_string(n);
    return std::u16string(s.begin(), s.end());
}

std::u16string VersionKey(REFGUID libid, WORD wMajor, WORD wMinor)
{
    return u"TypeLib\\" + GuidString(libid) + u"\\" + Number(wMajor) + u"." + Number(wMinor);
}

bool SetString(const std::u16string& key, const char16_t* name, const std::u16string& value)
{
    // Registry strings stay far below 2 GB.
    return RegSetKeyValue(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, value.c_str(),
                          static_cast<DWORD>((value.size() + 1) * sizeof(char16_t))) == ERROR_SUCCESS;
}

std::u16string Folder(const std::u16string& path)
{
    size_t slash = path.find_last_of(u"/\\");
    return slash == std::u16string::npos ? u"" : path.substr(0, slash);
}

// The dispatch interfaces of a library, with their names.
std::vector<std::pair<GUID, std::u16string>> DispatchInterfaces(ITypeLib* ptlib)
{
    std::vector<std::pair<GUID, std::u16string>> out;
    for (UINT i = 0; i < ptlib->GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        if (ptlib->GetTypeInfoType(i, &kind) != S_OK || kind != TKIND_DISPATCH) continue;
        CComPtr<ITypeInfo> info;
        ptlib->GetTypeInfo(i, &info);
        TYPEATTR* attr = nullptr;
        info->GetTypeAttr(&attr);
        BSTR name = nullptr;
        info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
        out.emplace_back(attr->guid, BstrToString(name).str());
        SysFreeString(name);
        info->ReleaseTypeAttr(attr);
    }
    return out;
}

// The library resource of the loaded module at that path, or null.
LibraryResource LoadedLibraryResource(LPCOLESTR szFile)
{
    for (const auto& [hModule, source] : Resources()) {
        OLECHAR path[kPathBuffer];
        DWORD n = GetModuleFileName(hModule, path, kPathBuffer);
        if (n > 0 && n < kPathBuffer && std::u16string(path) == szFile) return source;
    }
    return nullptr;
}

} // namespace

void AddTypeLibResource(HINSTANCE hModule, LibraryResource pfnSource) { Resources()[hModule] = pfnSource; }

void RemoveTypeLibResource(HINSTANCE hModule) { Resources().erase(hModule); }

HRESULT LoadTypeLib(LPCOLESTR szFile, ITypeLib** pptlib)
{
    if (!szFile || !pptlib) return E_INVALIDARG;
    *pptlib = nullptr;
    auto source = LoadedLibraryResource(szFile);
    // A module not loaded yet is loaded for its resource, and stays loaded.
    if (!source && LoadLibrary(szFile)) source = LoadedLibraryResource(szFile);
    return source ? CreateTypeLibFromSource(source(), pptlib) : TYPE_E_CANTLOADLIBRARY;
}

HRESULT RegisterTypeLib(ITypeLib* ptlib, LPCOLESTR szFullPath, LPCOLESTR szHelpDir)
{
    if (!ptlib || !szFullPath) return E_INVALIDARG;
    TLIBATTR* attr = nullptr;
    ptlib->GetLibAttr(&attr);
    const std::u16string key = VersionKey(attr->guid, attr->wMajorVerNum, attr->wMinorVerNum);
    const std::u16string libid = GuidString(attr->guid);
    const std::u16string version = Number(attr->wMajorVerNum) + u"." + Number(attr->wMinorVerNum);
    ptlib->ReleaseTLibAttr(attr);
    BSTR help = nullptr;
    ptlib->GetDocumentation(-1, nullptr, &help, nullptr, nullptr);
    bool ok = SetString(key, u"", BstrToString(help).str()) && SetString(key + u"\\FLAGS", u"", u"0") &&
              SetString(key + u"\\0\\win32", u"", szFullPath) &&
              SetString(key + u"\\HELPDIR", u"", szHelpDir ? std::u16string(szHelpDir) : Folder(szFullPath));
    SysFreeString(help);
    for (const auto& [iid, name] : DispatchInterfaces(ptlib)) {
        const std::u16string interfaceKey = u"Interface\\" + GuidString(iid);
        ok = ok && SetString(interfaceKey, u"", name) && SetString(interfaceKey + u"\\ProxyStubClsid", u"", kOleAutomationMarshaler) &&
             SetString(interfaceKey + u"\\ProxyStubClsid32", u"", kOleAutomationMarshaler) &&
             SetString(interfaceKey + u"\\TypeLib", u"", libid) && SetString(interfaceKey + u"\\TypeLib", u"Version", version);
    }
    return ok ? S_OK : TYPE_E_REGISTRYACCESS;
}

HRESULT UnRegisterTypeLib(REFGUID libID, WORD wVerMajor, WORD wVerMinor, LCID, SYSKIND)
{
    CComPtr<ITypeLib> lib;
    HRESULT hr = LoadRegTypeLib(libID, wVerMajor, wVerMinor, 0, &lib);
    if (FAILED(hr)) return TYPE_E_REGISTRYACCESS;
    for (const auto& [iid, name] : DispatchInterfaces(lib.Get())) RegDeleteTree(HKEY_CLASSES_ROOT, (u"Interface\\" + GuidString(iid)).c_str());
    RegDeleteTree(HKEY_CLASSES_ROOT, VersionKey(libID, wVerMajor, wVerMinor).c_str());
    RegDeleteKey(HKEY_CLASSES_ROOT, (u"TypeLib\\" + GuidString(libID)).c_str()); // refused while other versions stay
    return S_OK;
}

HRESULT LoadRegTypeLib(REFGUID rguid, WORD wVerMajor, WORD wVerMinor, LCID, ITypeLib** pptlib)
{
    if (!pptlib) return E_INVALIDARG;
    *pptlib = nullptr;
    OLECHAR path[kPathBuffer];
    LONG cb = sizeof path;
    const std::u16string key = VersionKey(rguid, wVerMajor, wVerMinor) + u"\\0\\win32";
    if (RegQueryValue(HKEY_CLASSES_ROOT, key.c_str(), path, &cb) != ERROR_SUCCESS) return TYPE_E_LIBNOTREGISTERED;
    return LoadTypeLib(path, pptlib);
}

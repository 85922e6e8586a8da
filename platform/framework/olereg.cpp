// The class entries of the registry, written and removed.
#include "olereg.h"
#include <string>
#include <vector>
#include "base/module.h"
#include "com/objbase.h"
#include "com/typeinfo.h"
#include "com/winreg.h"
#include "user/dlgctl.h"

namespace {

constexpr int kTypeNameBuffer = 256;
constexpr DWORD kPathBuffer = 4096;

std::u16string Number(unsigned long n)
{
    std::string s = std::to_string(n);
    return std::u16string(s.begin(), s.end());
}

struct RegEntry {
    std::u16string key;   // under HKEY_CLASSES_ROOT
    std::u16string name;  // empty: the key's default value
    std::u16string value;
};

// Writes every entry, stopping at the first the registry refuses.
bool WriteEntries(const std::vector<RegEntry>& entries)
{
    for (const auto& e : entries)
        // Registry strings stay far below 2 GB.
        if (RegSetKeyValue(HKEY_CLASSES_ROOT, e.key.c_str(), e.name.c_str(), REG_SZ, e.value.c_str(),
                           static_cast<DWORD>((e.value.size() + 1) * sizeof(char16_t))) != ERROR_SUCCESS)
            return false;
    return true;
}

// The module's full path; false when it cannot be had whole.
bool ModulePath(HINSTANCE hInstance, std::u16string& path)
{
    OLECHAR file[kPathBuffer];
    DWORD n = GetModuleFileName(hInstance, file, kPathBuffer);
    if (n == 0 || n == kPathBuffer) return false;
    path = file;
    return true;
}

bool ModuleStrings(HINSTANCE hInstance, UINT idTypeName, std::u16string& typeName, std::u16string& path)
{
    OLECHAR name[kTypeNameBuffer];
    if (LoadString(hInstance, idTypeName, name, kTypeNameBuffer) == 0) return false;
    typeName = name;
    return ModulePath(hInstance, path);
}

// The class key, its type name and its server.
std::vector<RegEntry> ServerEntries(const std::u16string& clsKey, const std::u16string& typeName,
                                    const std::u16string& path, int nRegFlags)
{
    std::vector<RegEntry> entries{{clsKey, u"", typeName}, {clsKey + u"\\InprocServer32", u"", path}};
    if (nRegFlags & afxRegApartmentThreading) entries.push_back({clsKey + u"\\InprocServer32", u"ThreadingModel", u"Apartment"});
    return entries;
}

bool DeleteTreeIfThere(const std::u16string& key)
{
    LSTATUS status = RegDeleteTree(HKEY_CLASSES_ROOT, key.c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

} // namespace

BOOL AfxOleRegisterControlClass(HINSTANCE hInstance, REFCLSID clsid, LPCTSTR pszProgID, UINT idTypeName,
                                UINT idBitmap, int nRegFlags, DWORD dwMiscStatus, REFGUID tlid, WORD wVerMajor,
                                WORD wVerMinor)
{
    std::u16string typeName, path;
    if (!pszProgID || !ModuleStrings(hInstance, idTypeName, typeName, path)) return FALSE;
    const std::u16string clsKey = u"CLSID\\" + GuidString(clsid), progID = pszProgID;
    std::vector<RegEntry> entries = ServerEntries(clsKey, typeName, path, nRegFlags);
    entries.insert(entries.end(), {
        {clsKey + u"\\ProgID", u"", progID},
        {clsKey + u"\\ToolboxBitmap32", u"", path + u", " + Number(idBitmap)},
        {clsKey + u"\\MiscStatus", u"", u"0"},
        {clsKey + u"\\MiscStatus\\1", u"", Number(dwMiscStatus)},
        {clsKey + u"\\Control", u"", u""},
        {clsKey + u"\\TypeLib", u"", GuidString(tlid)},
        {clsKey + u"\\Version", u"", Number(wVerMajor) + u"." + Number(wVerMinor)},
        {progID, u"", typeName},
        {progID + u"\\CLSID", u"", GuidString(clsid)},
    });
    if (nRegFlags & afxRegInsertable) entries.push_back({clsKey + u"\\Insertable", u"", u""});
    return WriteEntries(entries);
}

BOOL AfxOleRegisterPropertyPageClass(HINSTANCE hInstance, REFCLSID clsid, UINT idTypeName, int nRegFlags)
{
    std::u16string typeName, path;
    if (!ModuleStrings(hInstance, idTypeName, typeName, path)) return FALSE;
    return WriteEntries(ServerEntries(u"CLSID\\" + GuidString(clsid), typeName, path, nRegFlags));
}

BOOL AfxOleUnregisterClass(REFCLSID clsid, LPCTSTR pszProgID)
{
    bool ok = DeleteTreeIfThere(u"CLSID\\" + GuidString(clsid));
    if (pszProgID && *pszProgID) ok = DeleteTreeIfThere(pszProgID) && ok;
    return ok;
}

BOOL AfxOleRegisterTypeLib(HINSTANCE hInstance, REFGUID tlid, LPCTSTR pszFileName, LPCTSTR pszHelpDir)
{
    std::u16string file;
    if (!pszFileName) {
        if (!ModulePath(hInstance, file)) return FALSE;
        pszFileName = file.c_str();
    }
    CComPtr<ITypeLib> lib;
    if (FAILED(LoadTypeLib(pszFileName, &lib))) return FALSE;
    TLIBATTR* attr = nullptr;
    lib->GetLibAttr(&attr);
    const bool bSame = attr->guid == tlid;
    lib->ReleaseTLibAttr(attr);
    return bSame && SUCCEEDED(RegisterTypeLib(lib.Get(), pszFileName, pszHelpDir));
}

BOOL AfxOleUnregisterTypeLib(REFGUID tlid, WORD wVerMajor, WORD wVerMinor, LCID lcid)
{
    return SUCCEEDED(UnRegisterTypeLib(tlid, wVerMajor, wVerMinor, lcid, SYS_WIN32));
}

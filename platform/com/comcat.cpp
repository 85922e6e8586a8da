// The category manager over the registry:
//   Component Categories\{catid}                       value "409" (the locale in hex) = description
//   CLSID\{clsid}\Implemented Categories\{catid}       an empty key
#include "comcat.h"
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>
#include "objbase.h"
#include "sysfactory_p.h"
#include "winreg.h"

namespace {


std::u16string LocaleValueName(LCID lcid)
{
    char name[16];
    std::snprintf(name, sizeof name, "%x", static_cast<unsigned>(lcid));
    return std::u16string(name, name + std::char_traits<char>::length(name));
}

HRESULT FromStatus(LSTATUS status) { return status == ERROR_SUCCESS ? S_OK : E_FAIL; }

class CCategoryManager final : public ICatRegister {
public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (riid != IID_IUnknown && riid != IID_ICatRegister) return E_NOINTERFACE;
        AddRef();
        *ppv = static_cast<ICatRegister*>(this);
        return S_OK;
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }

    HRESULT RegisterCategories(ULONG cCategories, CATEGORYINFO rgInfo[]) override
    {
        if (cCategories && !rgInfo) return E_POINTER;
        for (ULONG i = 0; i < cCategories; ++i) {
            const std::u16string key = u"Component Categories\\" + GuidString(rgInfo[i].catid);
            const std::u16string name = LocaleValueName(rgInfo[i].lcid);
            // The description ends at its terminator or at the end of its field.
            const auto& field = rgInfo[i].szDescription;
            const std::u16string text(field, std::find(field, field + std::size(field), u'\0'));
            if (RegSetKeyValue(HKEY_CLASSES_ROOT, key.c_str(), name.c_str(), REG_SZ, text.c_str(),
                               static_cast<DWORD>((text.size() + 1) * sizeof(char16_t))) != ERROR_SUCCESS)
                return E_FAIL;
        }
        return S_OK;
    }
    HRESULT RegisterClassImplCategories(REFCLSID rclsid, ULONG cCategories, CATID rgcatid[]) override
    {
        if (cCategories && !rgcatid) return E_POINTER;
        for (ULONG i = 0; i < cCategories; ++i) {
            HKEY hKey = nullptr;
            HRESULT hr = FromStatus(RegCreateKey(HKEY_CLASSES_ROOT, CategoryKey(rclsid, rgcatid[i]).c_str(), &hKey));
            if (FAILED(hr)) return hr;
            RegCloseKey(hKey);
        }
        return S_OK;
    }
    // A class left in no category loses its "Implemented Categories" key too.
    HRESULT UnRegisterClassImplCategories(REFCLSID rclsid, ULONG cCategories, CATID rgcatid[]) override
    {
        if (cCategories && !rgcatid) return E_POINTER;
        for (ULONG i = 0; i < cCategories; ++i) RegDeleteKey(HKEY_CLASSES_ROOT, CategoryKey(rclsid, rgcatid[i]).c_str());
        RegDeleteKey(HKEY_CLASSES_ROOT, ImplementedKey(rclsid).c_str()); // refused while categories remain
        return S_OK;
    }

private:
    friend class CComRefCount<CCategoryManager>;
    static std::u16string ImplementedKey(REFCLSID rclsid) { return u"CLSID\\" + GuidString(rclsid) + u"\\Implemented Categories"; }
    static std::u16string CategoryKey(REFCLSID rclsid, REFCATID catid) { return ImplementedKey(rclsid) + u"\\" + GuidString(catid); }
    ~CCategoryManager() = default;
    CComRefCount<CCategoryManager> m_ref;
};

} // namespace

HRESULT ComcatDllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    return GetSystemClassObject<CCategoryManager>(CLSID_StdComponentCategoriesMgr, rclsid, riid, ppv);
}

// The module object, the factories of the control and its pages, and the module exports.
#include "server/QuillonApp.h"
#include <algorithm>
#include <iterator>
#include <string>
#include "base/module.h"
#include "base/winver.h"
#include "com/comcat.h"
#include "control/QuillonCtrl.h"
#include "framework/olereg.h"
#include "server/QuillonPages.h"
#include "server/QuillonResources.h"
#include "server/QuillonTypeLib.h"
#include "server/resource.h"

CQuillonApp theApp;

namespace {

class CQuillonCtrlFactory : public COleObjectFactory {
public:
    CQuillonCtrlFactory()
        : COleObjectFactory(CQuillonCtrl::clsid, [] { return static_cast<IDispatch*>(new CQuillonCtrl); }, FALSE,
                            u"QUILLON.QuillonCtrl.2")
    {
    }
    BOOL UpdateRegistry(BOOL bRegister) override
    {
        if (!bRegister) return AfxOleUnregisterClass(GetClassID(), GetProgID());
        return AfxOleRegisterControlClass(AfxGetInstanceHandle(), GetClassID(), GetProgID(), IDS_QUILLON, IDB_QUILLON,
                                          afxRegApartmentThreading, CQuillonCtrl::dwOleMisc, LIBID_QuillonLib,
                                          kLibVerMajor, kLibVerMinor);
    }
};

// A page's factory. A page is registered by its type name alone: the ProgID it is given is never
// written to the registry.
template <class TPage>
class CPageFactory : public COleObjectFactory {
public:
    CPageFactory(LPCTSTR lpszProgID, UINT idTypeName)
        : COleObjectFactory(TPage::clsid, [] { return static_cast<IPropertyPage*>(new TPage); }, FALSE, lpszProgID),
          m_idTypeName(idTypeName)
    {
    }
    BOOL UpdateRegistry(BOOL bRegister) override
    {
        if (!bRegister) return AfxOleUnregisterClass(GetClassID(), nullptr);
        return AfxOleRegisterPropertyPageClass(AfxGetInstanceHandle(), GetClassID(), m_idTypeName, afxRegApartmentThreading);
    }

private:
    UINT m_idTypeName;
};

// The resources go to the platform's tables as the module loads, before any factory is asked; the
// type library and the version resource are found by the module's own handle. What points into the
// module's memory leaves with the module when it is unloaded.
struct CResourceLoader {
    CResourceLoader()
    {
        RegisterQuillonResources();
        GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                          reinterpret_cast<LPCTSTR>(this), &m_hModule);
        AddTypeLibResource(m_hModule, &QuillonTypeLibSource);
        RegisterQuillonVersion(m_hModule);
    }
    ~CResourceLoader()
    {
        RevokeQuillonResources();
        RemoveTypeLibResource(m_hModule);
        UnregisterVersionResource(m_hModule);
    }
    HMODULE m_hModule = nullptr;
};

} // namespace

// Built at module load, like the module object, and entered into the module's list of factories.
CResourceLoader g_resources;
CQuillonCtrlFactory g_ctrlFactory;
CPageFactory<CQuillonPropPage> g_generalPageFactory(u"QUILLON.QuillonPropPage.1", IDS_QUILLON_PPG);
CPageFactory<CMorePropPage> g_morePageFactory(u"Quillon.MorePropPage", IDS_MORE_PPG);
CPageFactory<CAboutPropPage> g_aboutPageFactory(u"Quillon.AboutPropPage", IDS_ABOUT_PPG);

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    return AfxDllGetClassObject(rclsid, riid, ppv);
}

STDAPI DllCanUnloadNow() { return AfxDllCanUnloadNow(); }

namespace {

constexpr LCID kCategoryLocale = 1033; // English (United States)

// Enters a category into the registry with its description, cut to the field's 127 characters.
HRESULT CreateComponentCategory(REFCATID catid, const char16_t* pszDescription)
{
    ICatRegister* pcr = nullptr;
    HRESULT hr = CoCreateInstance(CLSID_StdComponentCategoriesMgr, nullptr, CLSCTX_INPROC_SERVER, IID_ICatRegister,
                                  reinterpret_cast<void**>(&pcr));
    if (FAILED(hr)) return hr;
    CATEGORYINFO info{catid, kCategoryLocale, {}};
    const size_t nLength = std::min(std::char_traits<char16_t>::length(pszDescription), std::size(info.szDescription) - 1);
    std::copy_n(pszDescription, nLength, info.szDescription);
    hr = pcr->RegisterCategories(1, &info);
    pcr->Release();
    return hr;
}

// Enters the control's class into a category, or takes it out.
HRESULT ChangeClassCategory(REFCATID catid, bool bEnter)
{
    ICatRegister* pcr = nullptr;
    HRESULT hr = CoCreateInstance(CLSID_StdComponentCategoriesMgr, nullptr, CLSCTX_INPROC_SERVER, IID_ICatRegister,
                                  reinterpret_cast<void**>(&pcr));
    if (FAILED(hr)) return hr;
    CATID rgcatid[1] = {catid};
    hr = bEnter ? pcr->RegisterClassImplCategories(CQuillonCtrl::clsid, 1, rgcatid)
                : pcr->UnRegisterClassImplCategories(CQuillonCtrl::clsid, 1, rgcatid);
    pcr->Release();
    return hr;
}

} // namespace

// The library, the classes, then the two safety categories with the control entered into each. What
// is done stays when a later step fails.
STDAPI DllRegisterServer()
{
    if (!AfxOleRegisterTypeLib(AfxGetInstanceHandle(), LIBID_QuillonLib)) return SELFREG_E_TYPELIB;
    if (!COleObjectFactory::UpdateRegistryAll(TRUE)) return SELFREG_E_CLASS;
    HRESULT hr = CreateComponentCategory(CATID_SafeForInitializing, u"Controls safely initializable from persistent data!");
    if (SUCCEEDED(hr)) hr = ChangeClassCategory(CATID_SafeForInitializing, true);
    if (SUCCEEDED(hr)) hr = CreateComponentCategory(CATID_SafeForScripting, u"Controls safely scriptable!");
    if (SUCCEEDED(hr)) hr = ChangeClassCategory(CATID_SafeForScripting, true);
    return FAILED(hr) ? hr : S_OK;
}

// The categories first; the categories themselves stay, shared with the system's other components.
STDAPI DllUnregisterServer()
{
    HRESULT hr = ChangeClassCategory(CATID_SafeForInitializing, false);
    if (FAILED(hr)) return hr;
    hr = ChangeClassCategory(CATID_SafeForScripting, false);
    if (FAILED(hr)) return hr;
    if (!AfxOleUnregisterTypeLib(LIBID_QuillonLib, kLibVerMajor, kLibVerMinor, 0)) return SELFREG_E_TYPELIB;
    if (!COleObjectFactory::UpdateRegistryAll(FALSE)) return SELFREG_E_CLASS;
    return S_OK;
}

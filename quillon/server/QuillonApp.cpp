// The module object, the control's class factory and the module exports.
#include "server/QuillonApp.h"
#include "base/module.h"
#include "control/QuillonCtrl.h"
#include "framework/olereg.h"
#include "server/QuillonTypeLib.h"
#include "server/Resource.h"
#include "com/comcat.h"
#include <algorithm>
#include <iterator>
#include <string>
#include "user/resource.h"

namespace {

// The string table and the type library, entered before anything of the module is built.
bool EnterResources()
{
    HMODULE hModule = nullptr;
    GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                      reinterpret_cast<LPCTSTR>(&EnterResources), &hModule);
    AddTypeLibResource(hModule, &QuillonTypeLibSource);
    AddStringResources(hModule, {
        {IDS_QUILLON, u"Quillon Control 2.0"},
        {IDS_QUILLON_PPG, u"Quillon Property Page"},
        {IDS_MORE_PPG, u"Quillon Property Page"},
        {IDS_MORE_PPG_CAPTION, u"More"},
        {IDS_ABOUT_PPG, u"Quillon Property Page"},
        {IDS_ABOUT_PPG_CAPTION, u"About"},
        {IDS_QUILLON_PPG_CAPTION, u"General"},
    });
    return true;
}
const bool g_bResources = EnterResources();

} // namespace

CQuillonApp theApp;

namespace {

// What a container reads before it creates the control: recomposed on resize, not linked inside,
// activated inside-out and when visible, the client site set first.
constexpr DWORD kQuillonMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                     OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

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
                                          afxRegApartmentThreading, kQuillonMiscStatus, LIBID_QuillonLib,
                                          kLibVerMajor, kLibVerMinor);
    }
};

} // namespace

// Built at module load, like the module object, so that the ProgID is known from the start.
CQuillonCtrlFactory g_ctrlFactory;

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    return AfxDllGetClassObject(rclsid, riid, ppv);
}

HRESULT DllCanUnloadNow() { return AfxDllCanUnloadNow(); }

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
HRESULT DllRegisterServer()
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
HRESULT DllUnregisterServer()
{
    HRESULT hr = ChangeClassCategory(CATID_SafeForInitializing, false);
    if (FAILED(hr)) return hr;
    hr = ChangeClassCategory(CATID_SafeForScripting, false);
    if (FAILED(hr)) return hr;
    if (!AfxOleUnregisterTypeLib(LIBID_QuillonLib, kLibVerMajor, kLibVerMinor, 0)) return SELFREG_E_TYPELIB;
    if (!COleObjectFactory::UpdateRegistryAll(FALSE)) return SELFREG_E_CLASS;
    return S_OK;
}

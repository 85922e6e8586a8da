// The module object, the control's class factory and the module exports.
#include "server/QuillonApp.h"
#include "control/QuillonCtrl.h"
#include "server/QuillonPages.h"
#include "server/QuillonResources.h"

CQuillonApp theApp;

namespace {

class CQuillonCtrlFactory : public COleObjectFactory {
public:
    CQuillonCtrlFactory()
        : COleObjectFactory(CQuillonCtrl::clsid, [] { return static_cast<IDispatch*>(new CQuillonCtrl); }, FALSE,
                            u"QUILLON.QuillonCtrl.2")
    {
    }
};

// A page's factory.
template <class TPage>
class CPageFactory : public COleObjectFactory {
public:
    explicit CPageFactory(LPCTSTR lpszProgID)
        : COleObjectFactory(TPage::clsid, [] { return static_cast<IPropertyPage*>(new TPage); }, FALSE, lpszProgID)
    {
    }
};

// The resources go to the platform's tables as the module loads, before any factory is asked.
struct CResourceLoader {
    CResourceLoader() { RegisterQuillonResources(); }
};

} // namespace

// Built at module load, like the module object, so that the ProgID is known from the start.
CResourceLoader g_resources;
CQuillonCtrlFactory g_ctrlFactory;
CPageFactory<CQuillonPropPage> g_generalPageFactory(u"QUILLON.QuillonPropPage.1");
CPageFactory<CMorePropPage> g_morePageFactory(u"Quillon.MorePropPage");
CPageFactory<CAboutPropPage> g_aboutPageFactory(u"Quillon.AboutPropPage");

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    return AfxDllGetClassObject(rclsid, riid, ppv);
}

HRESULT DllCanUnloadNow() { return AfxDllCanUnloadNow(); }

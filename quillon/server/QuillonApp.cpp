// The module object, the control's class factory and the module exports.
#include "server/QuillonApp.h"
#include "control/QuillonCtrl.h"

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

} // namespace

// Built at module load, like the module object, so that the ProgID is known from the start.
CQuillonCtrlFactory g_ctrlFactory;

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    return AfxDllGetClassObject(rclsid, riid, ppv);
}

HRESULT DllCanUnloadNow() { return AfxDllCanUnloadNow(); }

// The module object, the control's class factory and the module exports.
#include "server/QuillonApp.h"
#include "base/module.h"
#include "control/QuillonCtrl.h"
#include "framework/olereg.h"
#include "server/Resource.h"
#include "user/resource.h"

namespace {

// The string table, entered before anything of the module is built.
bool EnterStringTable()
{
    HMODULE hModule = nullptr;
    GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                      reinterpret_cast<LPCTSTR>(&EnterStringTable), &hModule);
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
const bool g_bStringTable = EnterStringTable();

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

// The control reached as a container reaches it, through the registry alone: this program links no
// part of the control, and COM loads the module the class's InprocServer32 key names.
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "Registration.h"
#include "base/module.h"
#include "base/winver.h"
#include "com/objbase.h"
#include "com/winreg.h"
#include "com/typeinfo.h"
#include "user/dlgctl.h"

namespace {
constexpr char16_t kProgID[] = u"QUILLON.QuillonCtrl.2";
constexpr char16_t kControlClass[] = u"{5C4B1F20-3E2A-4B7D-9A61-2F0C8D7E4A10}";

CLSID ClassOf(const char16_t* text)
{
    CLSID clsid{};
    EXPECT_EQ(CLSIDFromString(text, &clsid), S_OK);
    return clsid;
}

HRESULT ClassObject(REFCLSID clsid)
{
    CComPtr<IClassFactory> factory;
    return CoGetClassObject(clsid, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, reinterpret_cast<void**>(&factory));
}
} // namespace

TEST(Activation, UnregisteredClassesAndUnloadableServersAreRefused)
{
    RegClearClassesRoot();
    CLSID clsid{};
    EXPECT_EQ(CLSIDFromProgID(kProgID, &clsid), CO_E_CLASSSTRING);
    EXPECT_EQ(ClassObject(ClassOf(kControlClass)), REGDB_E_CLASSNOTREG);

    const std::u16string server = std::u16string(u"CLSID\\") + kControlClass + u"\\InprocServer32";
    const std::u16string missing = u"/no/such/Quillon.ocx";
    RegSetValue(HKEY_CLASSES_ROOT, server.c_str(), REG_SZ, missing.c_str(), 0);
    EXPECT_EQ(ClassObject(ClassOf(kControlClass)), CO_E_DLLNOTFOUND);
    // A library that loads but serves no classes.
    const std::u16string platform = FromUtf8(QUILLON_PLATFORM_LIBRARY);
    RegSetValue(HKEY_CLASSES_ROOT, server.c_str(), REG_SZ, platform.c_str(), 0);
    EXPECT_EQ(ClassObject(ClassOf(kControlClass)), CO_E_ERRORINDLL);
    RegClearClassesRoot();
}

// Registered by its own export, made by ProgID, driven by name; the module may be unloaded only once
// no object it made is alive and no client holds it locked.
TEST(Activation, TheModuleRegisteredServesTheControlByProgID)
{
    RegClearClassesRoot();
    std::string problem;
    ASSERT_TRUE(CallRegistrationExport(QUILLON_MODULE, true, problem)) << problem;
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromProgID(kProgID, &clsid), S_OK);
    EXPECT_EQ(clsid, ClassOf(kControlClass));

    HMODULE hModule = LoadLibrary(FromUtf8(QUILLON_MODULE).c_str());
    ASSERT_NE(hModule, nullptr);
    auto canUnloadNow = reinterpret_cast<HRESULT (*)()>(GetProcAddress(hModule, "DllCanUnloadNow"));
    ASSERT_NE(canUnloadNow, nullptr);
    EXPECT_EQ(GetProcAddress(hModule, "AfxDllGetClassObject"), nullptr) << "only the four entries are exported";
    EXPECT_EQ(canUnloadNow(), S_OK);

    IDispatch* control = nullptr;
    ASSERT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&control)), S_OK);
    LPCOLESTR name = u"EditMask";
    DISPID dispid = 0;
    ASSERT_EQ(control->GetIDsOfNames(IID_NULL, &name, 1, 0, &dispid), S_OK);
    EXPECT_EQ(dispid, 19);
    EXPECT_EQ(canUnloadNow(), S_FALSE) << "a control is alive";
    control->Release();
    EXPECT_EQ(canUnloadNow(), S_OK);

    IClassFactory* factory = nullptr;
    ASSERT_EQ(CoGetClassObject(clsid, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
    factory->LockServer(TRUE);
    EXPECT_EQ(canUnloadNow(), S_FALSE) << "a client holds the module";
    factory->LockServer(FALSE);
    EXPECT_EQ(canUnloadNow(), S_OK);
    factory->Release();
    EXPECT_TRUE(FreeLibrary(hModule));
    RegClearClassesRoot();
}

// Reading the version loads the module for the look; unloaded again, it leaves nothing of its memory
// in the platform's tables, and loads afresh when a library is asked of it.
TEST(Activation, ReadingTheVersionLeavesNothingOfTheModuleBehind)
{
    const std::u16string module = FromUtf8(QUILLON_MODULE);
    const DWORD cb = GetFileVersionInfoSize(module.c_str(), nullptr);
    std::vector<BYTE> block(cb);
    ASSERT_TRUE(cb > 0 && GetFileVersionInfo(module.c_str(), 0, cb, block.data()));
    EXPECT_EQ(FindDialogResource(1), nullptr) << "the About box left with the module";
    CComPtr<ITypeLib> lib;
    EXPECT_EQ(LoadTypeLib(module.c_str(), &lib), S_OK);
    EXPECT_NE(FindDialogResource(1), nullptr);
}

// The module's class entries in the registry, written and removed through its factories.
#include <gtest/gtest.h>
#include "base/module.h"
#include "com/comcat.h"
#include "com/winreg.h"
#include "framework/olefact.h"
#include "framework/olereg.h"
#include "server/QuillonApp.h"
#include "com/typeinfo.h"
#include "control/QuillonCtrl.h"

namespace {

std::string ModulePath()
{
    char16_t path[4096];
    DWORD n = GetModuleFileName(AfxGetInstanceHandle(), path, 4096);
    return n > 0 && n < 4096 ? ToUtf8(std::u16string(path)) : "(no module path)";
}

std::string Escaped(const std::string& s)
{
    std::string out;
    for (char ch : s) out += ch == '\\' || ch == '"' ? std::string("\\") + ch : std::string(1, ch);
    return out;
}

// The three property pages: a type name and a server each, and no ProgID.
std::string PageEntries(const std::string& path)
{
    std::string out;
    for (const char* clsid : {"{5D3A1E21-7C44-4B8E-9A61-2F0B31C75201}", "{5D3A1E22-7C44-4B8E-9A61-2F0B31C75201}",
                              "{5D3A1E23-7C44-4B8E-9A61-2F0B31C75201}"}) {
        const std::string key = std::string("[HKEY_CLASSES_ROOT\\CLSID\\") + clsid;
        out += key + "]\n@=\"Quillon Property Page\"\n\n" + key + "\\InprocServer32]\n@=\"" + Escaped(path) +
               "\"\n\"ThreadingModel\"=\"Apartment\"\n\n";
    }
    return out;
}

// The class keys of the control and its pages after UpdateRegistryAll(TRUE), with the module's path;
// the control's ProgID key below.
std::string ControlEntries(const std::string& path)
{
    const std::string cls = "[HKEY_CLASSES_ROOT\\CLSID\\{5C4B1F20-3E2A-4B7D-9A61-2F0C8D7E4A10}";
    return "[HKEY_CLASSES_ROOT\\CLSID]\n\n" +
           cls + "]\n@=\"Quillon Control 2.0\"\n\n" +
           cls + "\\Control]\n@=\"\"\n\n" +
           cls + "\\InprocServer32]\n@=\"" + Escaped(path) + "\"\n\"ThreadingModel\"=\"Apartment\"\n\n" +
           cls + "\\MiscStatus]\n@=\"0\"\n\n" +
           cls + "\\MiscStatus\\1]\n@=\"131473\"\n\n" +
           cls + "\\ProgID]\n@=\"QUILLON.QuillonCtrl.2\"\n\n" +
           cls + "\\ToolboxBitmap32]\n@=\"" + Escaped(path) + ", 1\"\n\n" +
           cls + "\\TypeLib]\n@=\"{5C4B1F2F-3E2A-4B7D-9A61-2F0C8D7E4A10}\"\n\n" +
           cls + "\\Version]\n@=\"2.0\"\n\n" + PageEntries(path);
}

constexpr const char* kProgID = "[HKEY_CLASSES_ROOT\\QUILLON.QuillonCtrl.2]\n@=\"Quillon Control 2.0\"\n\n"
                                "[HKEY_CLASSES_ROOT\\QUILLON.QuillonCtrl.2\\CLSID]\n@=\"{5C4B1F20-3E2A-4B7D-9A61-2F0C8D7E4A10}\"\n\n";

constexpr const char* kHeader = "Windows Registry Editor Version 5.00\n\n";
constexpr const char* kInitializing = "{7DD95802-9882-11CF-9FA9-00AA006C42C4}";
constexpr const char* kScripting = "{7DD95801-9882-11CF-9FA9-00AA006C42C4}";

std::string Categories()
{
    return std::string("[HKEY_CLASSES_ROOT\\Component Categories]\n\n") +
           "[HKEY_CLASSES_ROOT\\Component Categories\\" + kScripting + "]\n\"409\"=\"Controls safely scriptable!\"\n\n" +
           "[HKEY_CLASSES_ROOT\\Component Categories\\" + kInitializing +
           "]\n\"409\"=\"Controls safely initializable from persistent data!\"\n\n";
}

// The library's two dispatch interfaces; the library's own key below.
std::string LibraryInterfaces()
{
    std::string out = "[HKEY_CLASSES_ROOT\\Interface]\n\n";
    for (auto [iid, name] : {std::pair{"{5C4B1F21-3E2A-4B7D-9A61-2F0C8D7E4A10}", "_DQuillon"},
                             std::pair{"{5C4B1F22-3E2A-4B7D-9A61-2F0C8D7E4A10}", "_DQuillonEvents"}}) {
        const std::string key = std::string("[HKEY_CLASSES_ROOT\\Interface\\") + iid;
        out += key + "]\n@=\"" + name + "\"\n\n" +
               key + "\\ProxyStubClsid]\n@=\"{00020424-0000-0000-C000-000000000046}\"\n\n" +
               key + "\\ProxyStubClsid32]\n@=\"{00020424-0000-0000-C000-000000000046}\"\n\n" +
               key + "\\TypeLib]\n@=\"{5C4B1F2F-3E2A-4B7D-9A61-2F0C8D7E4A10}\"\n\"Version\"=\"2.0\"\n\n";
    }
    return out;
}

std::string LibraryKey(const std::string& path)
{
    const std::string lib = "[HKEY_CLASSES_ROOT\\TypeLib\\{5C4B1F2F-3E2A-4B7D-9A61-2F0C8D7E4A10}";
    const std::string folder = path.substr(0, path.rfind('/'));
    return "[HKEY_CLASSES_ROOT\\TypeLib]\n\n" + lib + "]\n\n" +
           lib + "\\2.0]\n@=\"Quillon (2.0) Masked Edit ActiveX Control\"\n\n" +
           lib + "\\2.0\\0]\n\n" + lib + "\\2.0\\0\\win32]\n@=\"" + Escaped(path) + "\"\n\n" +
           lib + "\\2.0\\FLAGS]\n@=\"0\"\n\n" + lib + "\\2.0\\HELPDIR]\n@=\"" + Escaped(folder) + "\"\n\n";
}

// The control's class entries with its two categories.
std::string ControlEntriesWithCategories(const std::string& path)
{
    std::string entries = ControlEntries(path);
    const std::string cls = "[HKEY_CLASSES_ROOT\\CLSID\\{5C4B1F20-3E2A-4B7D-9A61-2F0C8D7E4A10}";
    const std::string implemented = cls + "\\Implemented Categories]\n\n" + cls + "\\Implemented Categories\\" + kScripting +
                                    "]\n\n" + cls + "\\Implemented Categories\\" + kInitializing + "]\n\n";
    entries.insert(entries.find(cls + "\\InprocServer32]"), implemented);
    return entries;
}

} // namespace

TEST(Registration, ServerRegistersLibraryClassesAndCategoriesAndUnregistersAllButTheCategories)
{
    RegClearClassesRoot();
    const std::string path = ModulePath();
    ASSERT_EQ(DllRegisterServer(), S_OK);
    EXPECT_EQ(RegExportText(), kHeader + ControlEntriesWithCategories(path) + Categories() + LibraryInterfaces() + kProgID +
                                  LibraryKey(path)) << "keys in the registry's order";
    CComPtr<ITypeLib> lib;
    EXPECT_EQ(LoadRegTypeLib(LIBID_QuillonLib, 2, 0, 0, &lib), S_OK) << "found through the registry";
    EXPECT_EQ(LoadRegTypeLib(LIBID_QuillonLib, 1, 0, 0, &lib), TYPE_E_LIBNOTREGISTERED);

    ASSERT_EQ(DllUnregisterServer(), S_OK);
    EXPECT_EQ(RegExportText(), std::string(kHeader) + "[HKEY_CLASSES_ROOT\\CLSID]\n\n" + Categories() +
                                   "[HKEY_CLASSES_ROOT\\Interface]\n\n[HKEY_CLASSES_ROOT\\TypeLib]\n\n");
    EXPECT_EQ(DllUnregisterServer(), SELFREG_E_TYPELIB) << "no library left to remove";
    RegClearClassesRoot();
}

TEST(Registration, WithoutTheCategoryManagerWhatWasDoneStays)
{
    RegClearClassesRoot();
    const std::string path = ModulePath();
    CoRevokeInprocServer(&ComcatDllGetClassObject);
    EXPECT_EQ(DllRegisterServer(), REGDB_E_CLASSNOTREG) << "the registrar's own failure";
    EXPECT_EQ(RegExportText(), kHeader + ControlEntries(path) + LibraryInterfaces() + kProgID + LibraryKey(path))
        << "library and classes stay";
    const std::string before = RegExportText();
    EXPECT_EQ(DllUnregisterServer(), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(RegExportText(), before) << "nothing removed after the first step fails";
    CoRegisterInprocServer(&ComcatDllGetClassObject);
    RegClearClassesRoot();
}

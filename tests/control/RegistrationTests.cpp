// The module's class entries in the registry, written and removed through its factories, and the
// module's own data: its version resource, strings and status bits.
#include <gtest/gtest.h>
#include <vector>
#include "base/module.h"
#include "base/winver.h"
#include "com/comcat.h"
#include "com/winreg.h"
#include "framework/olefact.h"
#include "framework/olereg.h"
#include "server/QuillonApp.h"
#include "com/typeinfo.h"
#include "control/QuillonCtrl.h"
#include "user/dlgctl.h"

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

namespace {

std::u16string VersionText(const std::vector<BYTE>& block, const std::u16string& name)
{
    void* value = nullptr;
    UINT cch = 0;
    const std::u16string path = u"\\StringFileInfo\\040904B0\\" + name;
    return VerQueryValue(block.data(), path.c_str(), &value, &cch) ? static_cast<const char16_t*>(value) : u"(none)";
}

} // namespace

// The module's version resource as an installer reads it from the module's file.
TEST(ModuleData, VersionResource)
{
    const std::u16string path = FromUtf8(ModulePath());
    const DWORD cb = GetFileVersionInfoSize(path.c_str(), nullptr);
    std::vector<BYTE> block(cb);
    ASSERT_TRUE(cb > 0 && GetFileVersionInfo(path.c_str(), 0, cb, block.data()));
    VS_FIXEDFILEINFO* pFixed = nullptr;
    UINT cbValue = 0;
    ASSERT_TRUE(VerQueryValue(block.data(), u"\\", reinterpret_cast<void**>(&pFixed), &cbValue));
    EXPECT_EQ(pFixed->dwSignature, DWORD(VS_FFI_SIGNATURE));
    EXPECT_EQ(std::vector<DWORD>({pFixed->dwFileVersionMS, pFixed->dwFileVersionLS, pFixed->dwProductVersionMS,
                                  pFixed->dwProductVersionLS, pFixed->dwFileType, pFixed->dwFileFlags}),
              std::vector<DWORD>({0x00020000, 4, 0x00020000, 4, VFT_DLL, 0})) << "2.0.0.4, a DLL, a release build";
    DWORD* pTranslation = nullptr;
    ASSERT_TRUE(VerQueryValue(block.data(), u"\\VarFileInfo\\Translation", reinterpret_cast<void**>(&pTranslation), &cbValue));
    EXPECT_EQ(std::vector<DWORD>(pTranslation, pTranslation + cbValue / 4), std::vector<DWORD>({0x04B00409}));
    for (auto [name, value] : {std::pair{u"FileDescription", u"Quillon Masked Edit ActiveX Control"},
                               std::pair{u"InternalName", u"QUILLON"}, std::pair{u"OriginalFilename", u"QUILLON.OCX"},
                               std::pair{u"ProductName", u"Quillon ActiveX Control"}, std::pair{u"OLESelfRegister", u""},
                               std::pair{u"FileVersion", u"2, 0, 0, 4"}, std::pair{u"ProductVersion", u"2, 0, 0, 4"},
                               std::pair{u"Comments", u"(none)"}})
        EXPECT_EQ(ToUtf8(VersionText(block, name)), ToUtf8(std::u16string(value))) << ToUtf8(std::u16string(name));
}

// Strings 1 to 6 and 200, and none beside them; the status a container reads from the object
// itself is the one the class registers.
TEST(ModuleData, StringsAndMiscStatus)
{
    CoRegisterInprocServer(&DllGetClassObject);   // the class served from this program
    const std::vector<std::pair<UINT, std::u16string>> strings = {
        {1, u"Quillon Control 2.0"}, {2, u"Quillon Property Page"}, {3, u"Quillon Property Page"}, {4, u"More"},
        {5, u"Quillon Property Page"}, {6, u"About"}, {200, u"General"}};
    for (const auto& [id, text] : strings) {
        WCHAR buffer[64] = {};
        EXPECT_EQ(LoadString(nullptr, id, buffer, 64), static_cast<int>(text.size())) << id;
        EXPECT_EQ(ToUtf8(std::u16string(buffer)), ToUtf8(text)) << id;
    }
    for (UINT id : {0u, 7u, 199u, 201u}) {
        WCHAR buffer[64] = {};
        EXPECT_EQ(LoadString(nullptr, id, buffer, 64), 0) << id;
    }

    IDispatch* control = nullptr;
    ASSERT_EQ(CoCreateInstance(CQuillonCtrl::clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                               reinterpret_cast<void**>(&control)), S_OK);
    IOleObject* ole = nullptr;
    ASSERT_EQ(control->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&ole)), S_OK);
    DWORD dwStatus = 1;
    EXPECT_EQ(ole->GetMiscStatus(DVASPECT_CONTENT, &dwStatus), S_OK);
    EXPECT_EQ(dwStatus, 131473u);
    EXPECT_EQ(ole->GetMiscStatus(4, &dwStatus), S_OK);   // DVASPECT_ICON
    EXPECT_EQ(dwStatus, 0u);
    EXPECT_EQ(ToUtf8(static_cast<CQuillonCtrl*>(control)->GetUserType()), "Quillon Control 2.0") << "string 1";
    ole->Release();
    control->Release();
}

// The module's class entries in the registry, written and removed through its factories.
#include <gtest/gtest.h>
#include "base/module.h"
#include "com/winreg.h"
#include "framework/olefact.h"
#include "framework/olereg.h"
#include "server/QuillonApp.h"

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

// The control's entries after UpdateRegistryAll(TRUE), with the module's path.
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
           cls + "\\Version]\n@=\"2.0\"\n\n"
           "[HKEY_CLASSES_ROOT\\QUILLON.QuillonCtrl.2]\n@=\"Quillon Control 2.0\"\n\n"
           "[HKEY_CLASSES_ROOT\\QUILLON.QuillonCtrl.2\\CLSID]\n@=\"{5C4B1F20-3E2A-4B7D-9A61-2F0C8D7E4A10}\"\n\n";
}

constexpr const char* kHeader = "Windows Registry Editor Version 5.00\n\n";

} // namespace

TEST(Registration, FactoriesWriteTheControlsEntriesAndRemoveThemAgain)
{
    RegClearClassesRoot();
    const std::string path = ModulePath();
    ASSERT_NE(path.find('/'), std::string::npos) << path;
    ASSERT_TRUE(COleObjectFactory::UpdateRegistryAll(TRUE));
    EXPECT_EQ(RegExportText(), kHeader + ControlEntries(path));
    ASSERT_TRUE(COleObjectFactory::UpdateRegistryAll(TRUE)) << "registering twice rewrites the same entries";
    EXPECT_EQ(RegExportText(), kHeader + ControlEntries(path));
    ASSERT_TRUE(COleObjectFactory::UpdateRegistryAll(FALSE));
    EXPECT_EQ(RegExportText(), std::string(kHeader) + "[HKEY_CLASSES_ROOT\\CLSID]\n\n") << "the shared CLSID key stays";
    EXPECT_TRUE(COleObjectFactory::UpdateRegistryAll(FALSE)) << "removing what is not there is no failure";
    RegClearClassesRoot();
}

// quillon register and unregister against a registry file kept between runs.
#include <gtest/gtest.h>
#include <cstdio>
#include <fstream>
#include <sstream>
#include "Registration.h"
#include "com/winreg.h"

namespace {
std::string FileText(const std::string& path)
{
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}
} // namespace

TEST(RegistrationCommand, RegisterThenUnregisterThroughAFileKeepsOnlyTheSharedKeys)
{
    const std::string file = ::testing::TempDir() + "quillon-command.reg";
    std::remove(file.c_str());
    std::string out, problem;
    const std::string controlKey = "[HKEY_CLASSES_ROOT\\CLSID\\{5C4B1F20-3E2A-4B7D-9A61-2F0C8D7E4A10}]\n@=\"Quillon Control 2.0\"\n";

    RegClearClassesRoot();
    ASSERT_TRUE(RunRegistration(true, file, QUILLON_MODULE, out, problem)) << problem;
    EXPECT_NE(out.find(controlKey), std::string::npos) << out;
    EXPECT_NE(out.find("[HKEY_CLASSES_ROOT\\QUILLON.QuillonCtrl.2\\CLSID]"), std::string::npos);
    EXPECT_EQ(FileText(file), RegExportText()) << "the file holds the registry as it was left";

    RegClearClassesRoot(); // a later run: the registry comes from the file
    ASSERT_TRUE(RunRegistration(true, file, QUILLON_MODULE, out, problem)) << problem;
    EXPECT_EQ(out, "") << "registering again writes nothing new";

    RegClearClassesRoot();
    ASSERT_TRUE(RunRegistration(false, file, QUILLON_MODULE, out, problem)) << problem;
    EXPECT_NE(out.find(controlKey), std::string::npos) << "the removed keys are printed";
    EXPECT_EQ(out.find("Component Categories"), std::string::npos) << "the categories stay";
    EXPECT_NE(FileText(file).find("Controls safely scriptable!"), std::string::npos);
    EXPECT_EQ(FileText(file).find("Quillon Control 2.0"), std::string::npos);

    EXPECT_FALSE(RunRegistration(false, file, QUILLON_MODULE, out, problem)) << "nothing left to unregister";
    EXPECT_NE(problem.find("DllUnregisterServer failed: 0x80040200 SELFREG_E_TYPELIB"), std::string::npos) << problem;

    std::ofstream(file) << "Windows Registry Editor Version 5.00\n\n[HKEY_CLASSES_ROOT\\A]\n@=dword:1\n";
    problem.clear();
    EXPECT_FALSE(RunRegistration(true, file, QUILLON_MODULE, out, problem));
    EXPECT_EQ(problem, "the registry file '" + file + "' is damaged at line 4");
    RegClearClassesRoot();
}

// The registry, its .reg text, GUID text and the category manager.
#include <gtest/gtest.h>
#include <algorithm>
#include <fstream>
#include <iterator>
#include "com/comcat.h"
#include "com/objbase.h"
#include "com/winreg.h"
#include "base/cstring.h"

namespace {

class Registry : public ::testing::Test {
protected:
    void SetUp() override { RegClearClassesRoot(); }
    void TearDown() override { RegClearClassesRoot(); }
    static std::u16string Default(LPCTSTR key)
    {
        char16_t text[64];
        LONG cb = sizeof text;
        return RegQueryValue(HKEY_CLASSES_ROOT, key, text, &cb) == ERROR_SUCCESS ? text : u"(none)";
    }
    static std::string Path(const char* name) { return ::testing::TempDir() + name; }
};

} // namespace

TEST_F(Registry, KeysAreCaseBlindAndCaseKeptValuesAreStringsAndDeletionRespectsSubKeys)
{
    HKEY hKey = nullptr;
    ASSERT_EQ(RegCreateKey(HKEY_CLASSES_ROOT, u"CLSID\\{A}\\InprocServer32", &hKey), ERROR_SUCCESS);
    const char16_t model[] = u"Apartment";
    EXPECT_EQ(RegSetValueEx(hKey, u"ThreadingModel", 0, REG_SZ, reinterpret_cast<const BYTE*>(model), sizeof model), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(hKey), ERROR_SUCCESS);
    EXPECT_EQ(RegSetValue(HKEY_CLASSES_ROOT, u"clsid\\{a}", REG_SZ, u"Thing", 0), ERROR_SUCCESS);
    EXPECT_EQ(Default(u"CLSID\\{A}"), u"Thing") << "another spelling names the same key";
    EXPECT_EQ(Default(u"CLSID\\{A}\\InprocServer32"), u"") << "an unset default reads empty";
    EXPECT_EQ(Default(u"CLSID\\{B}"), u"(none)");

    ASSERT_EQ(RegOpenKey(HKEY_CLASSES_ROOT, u"Clsid\\{A}\\INPROCSERVER32", &hKey), ERROR_SUCCESS);
    char16_t text[4];
    DWORD cb = sizeof text, type = 0;
    EXPECT_EQ(RegQueryValueEx(hKey, u"threadingmodel", nullptr, &type, reinterpret_cast<BYTE*>(text), &cb), ERROR_MORE_DATA);
    EXPECT_EQ(cb, sizeof model) << "the size needed, terminator included";
    EXPECT_EQ(type, DWORD(REG_SZ));
    EXPECT_EQ(RegQueryValueEx(hKey, u"Missing", nullptr, nullptr, nullptr, &cb), ERROR_FILE_NOT_FOUND);
    RegCloseKey(hKey);

    RegSetValue(HKEY_CLASSES_ROOT, u"CLSID\\{A}\\Control", REG_SZ, u"", 0);
    ASSERT_EQ(RegOpenKey(HKEY_CLASSES_ROOT, u"CLSID\\{A}", &hKey), ERROR_SUCCESS);
    char16_t name[32];
    EXPECT_EQ(RegEnumKey(hKey, 0, name, 32), ERROR_SUCCESS);
    EXPECT_EQ(std::u16string(name), u"Control") << "sub-keys in case-blind order";
    EXPECT_EQ(RegEnumKey(hKey, 1, name, 32), ERROR_SUCCESS);
    EXPECT_EQ(std::u16string(name), u"InprocServer32") << "the name as first written";
    EXPECT_EQ(RegEnumKey(hKey, 2, name, 32), ERROR_NO_MORE_ITEMS);
    RegCloseKey(hKey);

    EXPECT_EQ(RegDeleteKey(HKEY_CLASSES_ROOT, u"CLSID\\{A}"), ERROR_ACCESS_DENIED) << "it has sub-keys";
    EXPECT_EQ(RegDeleteKey(HKEY_CLASSES_ROOT, u"CLSID\\{A}\\Control"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteTree(HKEY_CLASSES_ROOT, u"CLSID\\{A}"), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKey(HKEY_CLASSES_ROOT, u"CLSID\\{A}\\InprocServer32", &hKey), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteTree(HKEY_CLASSES_ROOT, u"CLSID\\{A}"), ERROR_FILE_NOT_FOUND);
}

TEST_F(Registry, RegTextRoundTripsAndABadLineLeavesTheRegistryAlone)
{
    RegSetValue(HKEY_CLASSES_ROOT, u"Quillon.Test\\CLSID", REG_SZ, u"{X}", 0);
    RegSetValue(HKEY_CLASSES_ROOT, u"Quillon.Test", REG_SZ, u"Say \"hi\" C:\\dir \u00e9", 0);
    const std::string text = RegExportText();
    EXPECT_EQ(text, "Windows Registry Editor Version 5.00\n\n"
                    "[HKEY_CLASSES_ROOT\\Quillon.Test]\n@=\"Say \\\"hi\\\" C:\\\\dir \xC3\xA9\"\n\n"
                    "[HKEY_CLASSES_ROOT\\Quillon.Test\\CLSID]\n@=\"{X}\"\n\n");
    const std::string path = Path("quillon-round.reg");
    ASSERT_TRUE(RegExportFile(path.c_str()));
    RegClearClassesRoot();
    ASSERT_TRUE(RegImportFile(path.c_str()));
    EXPECT_EQ(RegExportText(), text);

    const std::string bad = Path("quillon-bad.reg");
    std::ofstream(bad) << "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CLASSES_ROOT\\A]\r\n@=\"a\"\r\n"
                          "\"N\"=dword:00000001\r\n";
    int nLine = 0;
    EXPECT_FALSE(RegImportFile(bad.c_str(), &nLine));
    EXPECT_EQ(nLine, 5) << "values other than strings are not kept";
    EXPECT_EQ(RegExportText(), text) << "a failed import changes nothing";
    std::ofstream(bad) << "[HKEY_LOCAL_MACHINE\\A]\n";
    EXPECT_FALSE(RegImportFile(bad.c_str(), &nLine));
    EXPECT_EQ(nLine, 1);
    std::ofstream(bad) << "[-HKEY_CLASSES_ROOT\\Quillon.Test\\CLSID]\n";
    EXPECT_TRUE(RegImportFile(bad.c_str())) << "a deletion of what is not there is no error";
    EXPECT_FALSE(RegImportFile(Path("quillon-missing.reg").c_str()));
}

TEST(GuidText, RoundTripsInRegistryFormAndRefusesOtherForms)
{
    const GUID g = {0x7DD95801, 0x9882, 0x11CF, {0x9F, 0xA9, 0x00, 0xAA, 0x00, 0x6C, 0x42, 0xC4}};
    OLECHAR text[39];
    EXPECT_EQ(StringFromGUID2(g, text, 38), 0) << "no room for the terminator";
    ASSERT_EQ(StringFromGUID2(g, text, 39), 39);
    EXPECT_EQ(std::u16string(text), u"{7DD95801-9882-11CF-9FA9-00AA006C42C4}");
    GUID back{};
    EXPECT_EQ(CLSIDFromString(u"{7dd95801-9882-11cf-9fa9-00aa006c42c4}", &back), S_OK);
    EXPECT_EQ(back, g);
    for (auto bad : {u"7DD95801-9882-11CF-9FA9-00AA006C42C4", u"{7DD95801-9882-11CF-9FA9-00AA006C42C}",
                     u"{7DD95801-9882-11CF-9FA9+00AA006C42C4}", u"{7DD9580G-9882-11CF-9FA9-00AA006C42C4}"})
        EXPECT_EQ(CLSIDFromString(bad, &back), CO_E_CLASSSTRING) << ToUtf8(std::u16string(bad));
}

TEST_F(Registry, CategoryManagerEntersCategoriesAndClassesAndRemovesEmptiedKeys)
{
    CComPtr<ICatRegister> cats;
    ASSERT_EQ(CoCreateInstance(CLSID_StdComponentCategoriesMgr, nullptr, CLSCTX_INPROC_SERVER, IID_ICatRegister,
                               reinterpret_cast<void**>(&cats)), S_OK);
    CATEGORYINFO info{CATID_SafeForScripting, 1033, {}};
    std::fill(std::begin(info.szDescription), std::end(info.szDescription), u'x'); // no terminator in the field
    EXPECT_EQ(cats->RegisterCategories(1, &info), S_OK);
    const CLSID clsid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    CATID both[] = {CATID_SafeForScripting, CATID_SafeForInitializing};
    EXPECT_EQ(cats->RegisterClassImplCategories(clsid, 2, both), S_OK);
    const std::string clsKey = "[HKEY_CLASSES_ROOT\\CLSID\\{00000001-0002-0003-0405-060708090A0B}";
    EXPECT_EQ(RegExportText(), "Windows Registry Editor Version 5.00\n\n"
                               "[HKEY_CLASSES_ROOT\\CLSID]\n\n" + clsKey + "]\n\n" +
                               clsKey + "\\Implemented Categories]\n\n" +
                               clsKey + "\\Implemented Categories\\{7DD95801-9882-11CF-9FA9-00AA006C42C4}]\n\n" +
                               clsKey + "\\Implemented Categories\\{7DD95802-9882-11CF-9FA9-00AA006C42C4}]\n\n"
                               "[HKEY_CLASSES_ROOT\\Component Categories]\n\n"
                               "[HKEY_CLASSES_ROOT\\Component Categories\\{7DD95801-9882-11CF-9FA9-00AA006C42C4}]\n"
                               "\"409\"=\"" + std::string(128, 'x') + "\"\n\n");
    EXPECT_EQ(cats->UnRegisterClassImplCategories(clsid, 1, both), S_OK);
    EXPECT_NE(RegExportText().find("Implemented Categories\\{7DD95802"), std::string::npos) << "one category left";
    EXPECT_EQ(cats->UnRegisterClassImplCategories(clsid, 1, both + 1), S_OK);
    EXPECT_EQ(RegExportText().find("Implemented Categories"), std::string::npos) << "the emptied key goes too";
}

// The loader over dlopen and version resources read from a module's file, on a module that the
// tests load themselves.
#include <gtest/gtest.h>
#include <dlfcn.h>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>
#include "base/cstring.h"
#include "base/winver.h"

namespace {

const std::u16string kModule = FromUtf8(VERSION_TEST_MODULE);

bool IsLoaded()
{
    void* handle = dlopen(VERSION_TEST_MODULE, RTLD_LAZY | RTLD_NOLOAD);
    if (handle) dlclose(handle);
    return handle != nullptr;
}

WORD WordAt(const std::vector<BYTE>& block, size_t offset)
{
    WORD w;
    std::memcpy(&w, block.data() + offset, sizeof w);
    return w;
}

std::u16string Text(const std::vector<BYTE>& block, const char16_t* path, UINT* pcch)
{
    void* value = nullptr;
    return VerQueryValue(block.data(), path, &value, pcch) ? std::u16string(static_cast<const char16_t*>(value)) : u"(none)";
}

} // namespace

TEST(Loader, LoadsFindsAndUnloadsAModule)
{
    ASSERT_FALSE(IsLoaded());
    HMODULE hModule = LoadLibrary(kModule.c_str());
    ASSERT_TRUE(hModule);
    auto answer = reinterpret_cast<int (*)()>(GetProcAddress(hModule, "VersionTestModuleAnswer"));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer(), 42);
    HMODULE hOwner = nullptr;
    ASSERT_TRUE(GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCTSTR>(answer), &hOwner));
    EXPECT_EQ(hOwner, hModule) << "the handle is the module's image";
    EXPECT_EQ(GetProcAddress(hModule, "NoSuchFunction"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_PROC_NOT_FOUND));
    EXPECT_TRUE(FreeLibrary(hModule));
    EXPECT_FALSE(IsLoaded());
    EXPECT_EQ(LoadLibrary(u"/no/such/module.so"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_MOD_NOT_FOUND));
}

// The module is loaded for the look and unloaded after; the block is the binary VS_VERSIONINFO.
TEST(Version, BlockOfAModuleNotLoadedYet)
{
    DWORD dwHandle = 99;
    const DWORD cb = GetFileVersionInfoSize(kModule.c_str(), &dwHandle);
    ASSERT_GT(cb, 0u);
    EXPECT_EQ(dwHandle, 0u);
    EXPECT_FALSE(IsLoaded());
    std::vector<BYTE> block(cb);
    EXPECT_FALSE(GetFileVersionInfo(kModule.c_str(), 0, cb - 1, block.data()));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INSUFFICIENT_BUFFER));
    ASSERT_TRUE(GetFileVersionInfo(kModule.c_str(), 0, cb, block.data()));
    // wLength, wValueLength, wType, the key, then the fixed info on the next 32-bit boundary.
    EXPECT_EQ(WordAt(block, 0), cb);
    EXPECT_EQ(WordAt(block, 2), sizeof(VS_FIXEDFILEINFO));
    EXPECT_EQ(WordAt(block, 4), 0);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(block.data() + 6)), u"VS_VERSION_INFO");

    VS_FIXEDFILEINFO* pFixed = nullptr;
    UINT cbValue = 0;
    ASSERT_TRUE(VerQueryValue(block.data(), u"\\", reinterpret_cast<void**>(&pFixed), &cbValue));
    EXPECT_EQ(reinterpret_cast<BYTE*>(pFixed), block.data() + 40);
    EXPECT_EQ(cbValue, sizeof(VS_FIXEDFILEINFO));
    EXPECT_EQ(pFixed->dwSignature, 0xFEEF04BDu);
    EXPECT_EQ(pFixed->dwStrucVersion, 0x00010000u);
    EXPECT_EQ(std::vector<DWORD>({pFixed->dwFileVersionMS, pFixed->dwFileVersionLS, pFixed->dwProductVersionMS,
                                  pFixed->dwProductVersionLS, pFixed->dwFileFlags, pFixed->dwFileOS, pFixed->dwFileType}),
              std::vector<DWORD>({0x00010002, 0x00030004, 0x00050006, 0x00070008, VS_FF_DEBUG, VOS_NT_WINDOWS32, VFT_DLL}));

    DWORD* pTranslation = nullptr;
    ASSERT_TRUE(VerQueryValue(block.data(), u"\\VarFileInfo\\Translation", reinterpret_cast<void**>(&pTranslation), &cbValue));
    EXPECT_EQ(cbValue, 4u);
    EXPECT_EQ(*pTranslation, 0x04E40407u) << "language in the low word, code page in the high";
}

TEST(Version, QueriesByCaseBlindPathAndMissingEntries)
{
    const DWORD cb = GetFileVersionInfoSize(kModule.c_str(), nullptr);
    std::vector<BYTE> block(cb);
    ASSERT_TRUE(GetFileVersionInfo(kModule.c_str(), 0, cb, block.data()));
    UINT cch = 0;
    EXPECT_EQ(Text(block, u"\\stringfileinfo\\040704e4\\FILEDESCRIPTION", &cch), u"Version test module");
    EXPECT_EQ(cch, 20u) << "the terminator counted";
    EXPECT_EQ(Text(block, u"\\StringFileInfo\\040704E4\\SpecialBuild", &cch), u"") << "there, with no text";
    EXPECT_EQ(cch, 1u);
    void* value = nullptr;
    for (const char16_t* missing : {u"\\StringFileInfo\\040704E4\\Comments", u"\\StringFileInfo\\040904B0\\FileDescription",
                                    u"\\VarFileInfo\\Translation\\More", u"\\Nothing"})
        EXPECT_FALSE(VerQueryValue(block.data(), missing, &value, &cch)) << ToUtf8(std::u16string(missing));
    EXPECT_TRUE(VerQueryValue(block.data(), u"\\StringFileInfo", &value, &cch));
    EXPECT_EQ(cch, 0u) << "a block of blocks has no value of its own";

    // A node that claims to run past its parent ends the search instead of being read.
    std::vector<BYTE> broken = block;
    const WORD wTooLong = 0xFFF0;
    std::memcpy(broken.data() + 92, &wTooLong, sizeof wTooLong);   // StringFileInfo, after the fixed info
    EXPECT_FALSE(VerQueryValue(broken.data(), u"\\StringFileInfo\\040704E4\\FileDescription", &value, &cch));
}

TEST(Version, PathsWithoutABlock)
{
    EXPECT_EQ(GetFileVersionInfoSize(u"/no/such/file.so", nullptr), 0u);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_FILE_NOT_FOUND));
    const std::string text = (std::filesystem::temp_directory_path() / "quillon-version-text.txt").string();
    std::ofstream(text) << "no module\n";
    BYTE buffer[256];
    EXPECT_FALSE(GetFileVersionInfo(FromUtf8(text).c_str(), 0, sizeof buffer, buffer));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_RESOURCE_TYPE_NOT_FOUND)) << "a file that is no module";
    std::filesystem::remove(text);
    char16_t self[PATH_MAX];
    HMODULE hSelf = nullptr;
    ASSERT_TRUE(GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCTSTR>(&IsLoaded), &hSelf));
    ASSERT_GT(GetModuleFileName(hSelf, self, PATH_MAX), 0u);
    EXPECT_EQ(GetFileVersionInfoSize(self, nullptr), 0u);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_RESOURCE_TYPE_NOT_FOUND)) << "a loaded module without one";
}

// Finding the shipped files from the program's own path, and the module's version resource.
#include "Shipped.h"
#include <cstdio>
#include <filesystem>
#include <vector>
#include "base/cstring.h"
#include "base/winerror.h"
#include "base/winver.h"

std::string ShippedFile(const std::string& name, const std::string& installedFolder)
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return "";
    for (const auto& place : {program.parent_path(), program.parent_path() / installedFolder}) {
        const std::filesystem::path file = (place / name).lexically_normal();
        if (std::filesystem::exists(file, error)) return file.string();
    }
    return "";
}

std::string ShippedModulePath() { return ShippedFile("Quillon.ocx", QUILLON_MODULE_FROM_BIN); }

std::string ShippedDemoPicture() { return ShippedFile("arrow.bmp", QUILLON_DATA_FROM_BIN); }

namespace {

// A text entry of the block's first translation; null when the block has none by that name.
const char16_t* VersionString(const std::vector<BYTE>& block, const char* pszName)
{
    DWORD* pTranslation = nullptr;
    UINT cb = 0;
    if (!VerQueryValue(block.data(), u"\\VarFileInfo\\Translation", reinterpret_cast<void**>(&pTranslation), &cb) ||
        cb < sizeof(DWORD))
        return nullptr;
    char key[64];
    std::snprintf(key, sizeof key, "\\StringFileInfo\\%04X%04X\\%s", LOWORD(*pTranslation), HIWORD(*pTranslation), pszName);
    void* pValue = nullptr;
    UINT cch = 0;
    return VerQueryValue(block.data(), FromUtf8(key).c_str(), &pValue, &cch) ? static_cast<const char16_t*>(pValue) : nullptr;
}

} // namespace

bool DescribeModule(const std::string& path, std::string& text)
{
    const std::u16string strPath = FromUtf8(path);
    DWORD dwHandle = 0;
    const DWORD cb = GetFileVersionInfoSize(strPath.c_str(), &dwHandle);
    std::vector<BYTE> block(cb);
    if (cb == 0 || !GetFileVersionInfo(strPath.c_str(), dwHandle, cb, block.data())) {
        text = GetLastError() == ERROR_FILE_NOT_FOUND ? "no such file" : "no version resource";
        return false;
    }
    VS_FIXEDFILEINFO* pFixed = nullptr;
    UINT cbFixed = 0;
    const char16_t* pszDescription = VersionString(block, "FileDescription");
    if (!VerQueryValue(block.data(), u"\\", reinterpret_cast<void**>(&pFixed), &cbFixed) || cbFixed < sizeof *pFixed ||
        !pszDescription) {
        text = "a version resource without the file's version or description";
        return false;
    }
    char version[64];
    std::snprintf(version, sizeof version, "%u.%u.%u.%u", HIWORD(pFixed->dwFileVersionMS), LOWORD(pFixed->dwFileVersionMS),
                  HIWORD(pFixed->dwFileVersionLS), LOWORD(pFixed->dwFileVersionLS));
    text = "  " + ToUtf8(std::u16string(pszDescription)) + " " + version + "\n";
    if (VersionString(block, "OLESelfRegister")) text += "  self-registering\n";
    return true;
}

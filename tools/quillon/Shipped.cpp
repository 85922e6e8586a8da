// Finding the shipped files from the program's own path.
#include "Shipped.h"
#include <filesystem>

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

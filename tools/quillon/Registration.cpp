// The program's registry and the module's registration, compared key by key before and after.
#include "Registration.h"
#include <cstdio>
#include <filesystem>
#include <set>
#include <sstream>
#include <vector>
#include "ScriptBinding.h"
#include "Shipped.h"
#include "base/module.h"
#include "com/objbase.h"
#include "com/winreg.h"

namespace {

// The .reg text cut into its keys, each with its values: "[path]\nvalue lines\n".
std::vector<std::string> Keys(const std::string& regText)
{
    std::vector<std::string> keys;
    std::istringstream in(regText);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line[0] == '[') keys.push_back(line + "\n");
        else if (!line.empty() && !keys.empty()) keys.back() += line + "\n";
    }
    return keys;
}

// The keys of one text (with their values) that the other does not hold as they are, as .reg text.
std::string Missing(const std::string& from, const std::string& in)
{
    const std::vector<std::string> inKeys = Keys(in);
    const std::set<std::string> present(inKeys.begin(), inKeys.end());
    std::string out;
    for (const std::string& key : Keys(from))
        if (!present.count(key)) out += key + "\n";
    return out;
}

// The registry of a .reg file, when there is one yet.
bool ImportRegistry(const std::string& registryFile, std::string& problem)
{
    int nBadLine = 0;
    if (!std::filesystem::exists(registryFile) || RegImportFile(registryFile.c_str(), &nBadLine)) return true;
    problem = nBadLine ? "the registry file '" + registryFile + "' is damaged at line " + std::to_string(nBadLine)
                       : "the registry file '" + registryFile + "' cannot be read";
    return false;
}

} // namespace

bool CallRegistrationExport(const std::string& modulePath, bool bRegister, std::string& problem)
{
    const char* exportName = bRegister ? "DllRegisterServer" : "DllUnregisterServer";
    HMODULE hModule = modulePath.empty() ? nullptr : LoadLibrary(FromUtf8(modulePath).c_str());
    if (!hModule) {
        problem = modulePath.empty() ? "the control's module (Quillon.ocx) is not beside the program"
                                     : "cannot load the module '" + modulePath + "'";
        return false;
    }
    auto entry = reinterpret_cast<HRESULT (*)()>(GetProcAddress(hModule, exportName));
    const HRESULT hr = entry ? entry() : E_FAIL;
    // The module stays loaded: the classes it registered are served from it.
    if (!entry) problem = "the module '" + modulePath + "' exports no " + exportName;
    else if (FAILED(hr)) problem = std::string(exportName) + " failed: " + HResultText(hr);
    return problem.empty();
}

bool PrepareRegistry(const std::string& registryFile, std::string& problem)
{
    if (!registryFile.empty()) return ImportRegistry(registryFile, problem);
    return CallRegistrationExport(ShippedModulePath(), true, problem);
}

bool RunRegistration(bool bRegister, const std::string& registryFile, const std::string& modulePath, std::string& out,
                     std::string& problem)
{
    if (!registryFile.empty() && !ImportRegistry(registryFile, problem)) return false;
    const std::string before = RegExportText();
    CallRegistrationExport(modulePath, bRegister, problem);
    const std::string after = RegExportText();
    out = bRegister ? Missing(after, before) : Missing(before, after);
    if (!registryFile.empty() && !RegExportFile(registryFile.c_str()) && problem.empty())
        problem = "the registry file '" + registryFile + "' cannot be written";
    return problem.empty();
}

HRESULT LoadRegisteredTypeLib(const std::u16string& progID, ITypeLib** pptlib)
{
    CLSID clsid{};
    HRESULT hr = CLSIDFromProgID(progID.c_str(), &clsid);
    if (FAILED(hr)) return hr;
    const std::u16string classKey = u"CLSID\\" + GuidString(clsid);
    OLECHAR libid[64], version[16];
    LONG cbLibid = sizeof libid, cbVersion = sizeof version;
    if (RegQueryValue(HKEY_CLASSES_ROOT, (classKey + u"\\TypeLib").c_str(), libid, &cbLibid) != ERROR_SUCCESS ||
        RegQueryValue(HKEY_CLASSES_ROOT, (classKey + u"\\Version").c_str(), version, &cbVersion) != ERROR_SUCCESS)
        return TYPE_E_LIBNOTREGISTERED;
    GUID guid{};
    unsigned major = 0, minor = 0;
    if (FAILED(CLSIDFromString(libid, &guid)) || std::sscanf(ToUtf8(std::u16string(version)).c_str(), "%u.%u", &major, &minor) != 2)
        return TYPE_E_LIBNOTREGISTERED;
    // Version numbers of a library are 16 bits wide.
    return LoadRegTypeLib(guid, static_cast<WORD>(major), static_cast<WORD>(minor), 0, pptlib);
}

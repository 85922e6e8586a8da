// The registry before and after the module's registration, compared key by key.
#include "Registration.h"
#include <sys/stat.h>
#include <set>
#include <sstream>
#include <vector>
#include "ScriptBinding.h"
#include "com/winreg.h"
#include "server/QuillonApp.h"

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

bool Exists(const std::string& path)
{
    struct stat st;
    return ::stat(path.c_str(), &st) == 0;
}

} // namespace

bool RunRegistration(bool bRegister, const std::string& registryFile, std::string& out, std::string& problem)
{
    if (!registryFile.empty() && Exists(registryFile)) {
        int nBadLine = 0;
        if (!RegImportFile(registryFile.c_str(), &nBadLine)) {
            problem = nBadLine ? "the registry file '" + registryFile + "' is damaged at line " + std::to_string(nBadLine)
                               : "the registry file '" + registryFile + "' cannot be read";
            return false;
        }
    }
    const std::string before = RegExportText();
    const HRESULT hr = bRegister ? DllRegisterServer() : DllUnregisterServer();
    const std::string after = RegExportText();
    out = bRegister ? Missing(after, before) : Missing(before, after);
    if (FAILED(hr)) problem = std::string(bRegister ? "DllRegisterServer" : "DllUnregisterServer") + " failed: " + HResultText(hr);
    if (!registryFile.empty() && !RegExportFile(registryFile.c_str()) && problem.empty())
        problem = "the registry file '" + registryFile + "' cannot be written";
    return problem.empty();
}

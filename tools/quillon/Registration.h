// `quillon register` and `quillon unregister`: the module's own registration entries, run against
// the program's registry or a .reg file kept between runs, with the keys written or removed printed.
#pragma once
#include <string>

// Runs DllRegisterServer (bRegister) or DllUnregisterServer. With a registry file, the registry is
// read from it first (when it exists) and written back after. The keys that changed go to out as
// .reg text; a failure is described in problem.
bool RunRegistration(bool bRegister, const std::string& registryFile, std::string& out, std::string& problem);

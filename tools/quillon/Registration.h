// The registry a run of the program works in, and `quillon register` and
// `quillon unregister`: a module's own registration entries, run against the program's registry or a
// .reg file kept between runs, with the keys written or removed printed.
#pragma once
#include <string>
#include "com/typeinfo.h"

// Loads a module and runs its DllRegisterServer (bRegister) or DllUnregisterServer. False, with the
// reason in problem, when the module cannot be loaded, lacks the export, or the export fails.
bool CallRegistrationExport(const std::string& modulePath, bool bRegister, std::string& problem);
// The registry for a command that uses the control: read from the .reg file when one is given, else
// the program's own, empty, with the shipped module registered in it. False with the reason in problem.
bool PrepareRegistry(const std::string& registryFile, std::string& problem);
// Runs a module's registration (bRegister) or unregistration. With a registry file, the registry is
// read from it first (when it exists) and written back after. The keys that changed go to out as
// .reg text; a failure is described in problem.
bool RunRegistration(bool bRegister, const std::string& registryFile, const std::string& modulePath, std::string& out,
                     std::string& problem);
// The type library of a registered class, found as a container finds it: the ProgID's class, then the
// class's TypeLib and Version keys.
HRESULT LoadRegisteredTypeLib(const std::u16string& progID, ITypeLib** pptlib);

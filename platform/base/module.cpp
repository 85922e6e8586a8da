// Module handles and paths over the dynamic loader (dladdr).
#include "module.h"
#include <dlfcn.h>
#include <cassert>
#include <climits>
#include <cstdlib>
#include <unistd.h>
#include <string>
#include "cstring.h"

BOOL GetModuleHandleEx(DWORD dwFlags, LPCTSTR lpModuleName, HMODULE* phModule)
{
    assert((dwFlags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS) && "GetModuleHandleEx: only the lookup from an address is offered");
    if (!phModule || !(dwFlags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS)) return FALSE;
    Dl_info info{};
    *phModule = dladdr(lpModuleName, &info) ? static_cast<HMODULE>(info.dli_fbase) : nullptr;
    return *phModule != nullptr;
}

DWORD GetModuleFileName(HMODULE hModule, LPTSTR lpFilename, DWORD nSize)
{
    Dl_info info{};
    if (!hModule || !lpFilename || nSize == 0 || !dladdr(hModule, &info) || !info.dli_fname) return 0;
    // The main program may be named as it was started, or not at all; a full path is what a registry keeps.
    char full[PATH_MAX];
    std::string path;
    if (*info.dli_fname && realpath(info.dli_fname, full)) path = full;
    else if (ssize_t n = readlink("/proc/self/exe", full, sizeof full - 1); n > 0) path.assign(full, static_cast<size_t>(n));
    else return 0;
    std::u16string wide = FromUtf8(path);
    const DWORD n = wide.size() < nSize ? static_cast<DWORD>(wide.size()) : nSize - 1;
    wide.copy(lpFilename, n);
    lpFilename[n] = 0;
    return wide.size() < nSize ? n : nSize;
}

// Module handles and paths over the dynamic loader (dladdr, dlopen).
#include "module.h"
#include <dlfcn.h>
#include <link.h>
#include <cassert>
#include <climits>
#include <cstdlib>
#include <unistd.h>
#include <string>
#include "cstring.h"
#include "winerror.h"

namespace {

// A loaded module's image address: the module holding its own dynamic section.
HMODULE ImageOf(void* handle)
{
    link_map* map = nullptr;
    Dl_info info{};
    if (!handle || dlinfo(handle, RTLD_DI_LINKMAP, &map) != 0 || !dladdr(map->l_ld, &info)) return nullptr;
    return static_cast<HMODULE>(info.dli_fbase);
}

// The loader's own handle of a module that is loaded already, with one more reference on it. The
// main program is known by its image, not by a path.
void* LoadedModule(HMODULE hModule)
{
    void* program = dlopen(nullptr, RTLD_LAZY);
    if (hModule && ImageOf(program) == hModule) return program;
    if (program) dlclose(program);
    Dl_info info{};
    if (!hModule || !dladdr(hModule, &info) || !info.dli_fname || !*info.dli_fname) return nullptr;
    return dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
}

} // namespace

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

HMODULE LoadLibrary(LPCTSTR lpLibFileName)
{
    void* handle = lpLibFileName ? dlopen(ToUtf8(std::u16string(lpLibFileName)).c_str(), RTLD_NOW | RTLD_LOCAL) : nullptr;
    HMODULE hModule = ImageOf(handle);
    if (!hModule) {
        if (handle) dlclose(handle);
        SetLastError(ERROR_MOD_NOT_FOUND);
    }
    return hModule;
}

BOOL FreeLibrary(HMODULE hLibModule)
{
    void* handle = LoadedModule(hLibModule);
    if (!handle) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return FALSE;
    }
    dlclose(handle);   // the reference just taken to find it
    return dlclose(handle) == 0;
}

FARPROC GetProcAddress(HMODULE hModule, const char* lpProcName)
{
    void* handle = LoadedModule(hModule);
    void* proc = handle && lpProcName ? dlsym(handle, lpProcName) : nullptr;
    if (handle) dlclose(handle);
    if (!proc) SetLastError(handle ? ERROR_PROC_NOT_FOUND : ERROR_MOD_NOT_FOUND);
    return reinterpret_cast<FARPROC>(proc);
}

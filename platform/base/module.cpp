// Module handles and paths over the dynamic loader (dladdr).
#include "module.h"
#include <dlfcn.h>
#include <link.h>
#include <cassert>
#include <climits>
#include <cstdlib>
#include <unistd.h>
#include <map>
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

namespace {

// Each module LoadLibrary gave, by load address: the loader's handle and the loads not yet freed.
struct LoadedModule {
    void* handle;
    int nLoads;
};

std::map<HMODULE, LoadedModule>& Loaded()
{
    static std::map<HMODULE, LoadedModule> loaded;
    return loaded;
}

} // namespace

HMODULE LoadLibrary(LPCTSTR lpLibFileName)
{
    if (!lpLibFileName || !*lpLibFileName) return nullptr;
    void* handle = dlopen(ToUtf8(std::u16string(lpLibFileName)).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) return nullptr;
    // The load address is found from an address inside the module: its dynamic section.
    link_map* map = nullptr;
    HMODULE hModule = nullptr;
    if (dlinfo(handle, RTLD_DI_LINKMAP, &map) != 0 ||
        !GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCTSTR>(map->l_ld), &hModule)) {
        dlclose(handle);
        return nullptr;
    }
    // dlopen counts every load as LoadLibrary does; each FreeLibrary gives one back.
    LoadedModule& loaded = Loaded()[hModule];
    loaded.handle = handle;
    ++loaded.nLoads;
    return hModule;
}

BOOL FreeLibrary(HMODULE hLibModule)
{
    auto it = Loaded().find(hLibModule);
    assert(it != Loaded().end() && "FreeLibrary: not a module LoadLibrary gave");
    if (it == Loaded().end()) return FALSE;
    if (dlclose(it->second.handle) != 0) return FALSE;
    if (--it->second.nLoads == 0) Loaded().erase(it);
    return TRUE;
}

FARPROC GetProcAddress(HMODULE hModule, LPCSTR lpProcName)
{
    auto it = Loaded().find(hModule);
    assert(it != Loaded().end() && "GetProcAddress: only the exports of a module LoadLibrary gave are looked up");
    if (it == Loaded().end() || !lpProcName) return nullptr;
    return reinterpret_cast<FARPROC>(dlsym(it->second.handle, lpProcName));
}

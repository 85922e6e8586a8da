// Modules as libloaderapi.h names them: an instance handle is the address a module's image is
// loaded at, found from any address inside it, and the module's file is found from the handle.
#pragma once
#include "wintypes.h"

typedef HINSTANCE HMODULE;
// Stand-in: returns nothing rather than INT_PTR, the one function type the compiler lets a caller
// cast to the export's real type without a warning.
typedef void (*FARPROC)();

#define GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT 0x2
#define GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS 0x4

// Only the lookup from an address is offered: dwFlags must hold GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
// and lpModuleName is then that address. The loader counts no reference either way.
BOOL GetModuleHandleEx(DWORD dwFlags, LPCTSTR lpModuleName, HMODULE* phModule);
// The module's full path; the characters copied, without the terminator, or 0. A path cut to fit
// returns nSize, as the real call does.
DWORD GetModuleFileName(HMODULE hModule, LPTSTR lpFilename, DWORD nSize);

// LoadLibrary over dlopen: the module at that path, loaded and its initialisers run if it was not
// loaded yet, with one more reference counted. The handle is the module's load address, as
// GetModuleHandleEx finds it. Null with ERROR_MOD_NOT_FOUND when the file is no loadable module.
// Stand-in: the path is a file's path; there is no search of the system's folders.
HMODULE LoadLibrary(LPCTSTR lpLibFileName);
// FreeLibrary over dlclose: drops one reference; the last one unloads the module.
BOOL FreeLibrary(HMODULE hLibModule);
// GetProcAddress over dlsym: an exported function of a loaded module by name; null with
// ERROR_PROC_NOT_FOUND when it exports none by that name.
FARPROC GetProcAddress(HMODULE hModule, const char* lpProcName);

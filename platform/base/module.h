// Modules as libloaderapi.h names them: an instance handle is the address a module's image is
// loaded at, found from any address inside it, and the module's file is found from the handle.
#pragma once
#include "wintypes.h"

typedef HINSTANCE HMODULE;

#define GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT 0x2
#define GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS 0x4

// Only the lookup from an address is offered: dwFlags must hold GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
// and lpModuleName is then that address. The loader counts no reference either way.
BOOL GetModuleHandleEx(DWORD dwFlags, LPCTSTR lpModuleName, HMODULE* phModule);
// The module's full path; the characters copied, without the terminator, or 0. A path cut to fit
// returns nSize, as the real call does.
DWORD GetModuleFileName(HMODULE hModule, LPTSTR lpFilename, DWORD nSize);

// Stand-in: returns nothing rather than INT_PTR, the one function type the compiler lets a caller
// cast to the export's real type without a warning.
typedef void (*FARPROC)();

// The module at that path, loaded (dlopen, its static objects built) or, when it already is, counted
// once more; its handle is its load address, as GetModuleHandleEx gives. Null when the file cannot be
// loaded. Stand-in: no search path; a name without a folder is looked up as the dynamic loader does.
HMODULE LoadLibrary(LPCTSTR lpLibFileName);
// One count less; the module is unloaded when none is left. FALSE for a handle LoadLibrary did not give.
BOOL FreeLibrary(HMODULE hLibModule);
// An export of a module LoadLibrary gave, by name; null when it has none of that name.
FARPROC GetProcAddress(HMODULE hModule, LPCSTR lpProcName);

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

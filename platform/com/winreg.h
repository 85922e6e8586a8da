// The registry as winreg.h names it, for the keys COM servers write under HKEY_CLASSES_ROOT: keys
// case-blind and case-kept, string values (REG_SZ) only, the default value named by an empty name.
// The machine's registry is the process's own: RegImportFile and RegExportFile stand for regedit's
// import and export of .reg text, so that a registry can be kept between runs.
#pragma once
#include <string>
#include "base/winerror.h"
#include "base/wintypes.h"

DECLARE_HANDLE(HKEY);
typedef LONG LSTATUS;

#define HKEY_CLASSES_ROOT ((HKEY)(uintptr_t)0x80000000)
#define REG_SZ 1

// Sub-key paths are separated by backslashes; an empty or null path names the key itself.
LSTATUS RegCreateKey(HKEY hKey, LPCTSTR lpSubKey, HKEY* phkResult);
LSTATUS RegOpenKey(HKEY hKey, LPCTSTR lpSubKey, HKEY* phkResult);
LSTATUS RegCloseKey(HKEY hKey);
// Creates the sub-key when needed and sets its default value; cbData is not used.
LSTATUS RegSetValue(HKEY hKey, LPCTSTR lpSubKey, DWORD dwType, LPCTSTR lpData, DWORD cbData);
// Creates the sub-key when needed and sets one of its values; cbData counts bytes, NUL included.
LSTATUS RegSetKeyValue(HKEY hKey, LPCTSTR lpSubKey, LPCTSTR lpValueName, DWORD dwType, const void* lpData, DWORD cbData);
// cbData counts bytes, the terminating NUL included.
LSTATUS RegSetValueEx(HKEY hKey, LPCTSTR lpValueName, DWORD Reserved, DWORD dwType, const BYTE* lpData, DWORD cbData);
// The sub-key's default value; *lpcbData is the buffer's size in bytes, and on return the size needed.
LSTATUS RegQueryValue(HKEY hKey, LPCTSTR lpSubKey, LPTSTR lpData, LONG* lpcbData);
LSTATUS RegQueryValueEx(HKEY hKey, LPCTSTR lpValueName, DWORD* lpReserved, DWORD* lpType, BYTE* lpData, DWORD* lpcbData);
// The name of the sub-key at an index, in the registry's order (case-blind by name).
LSTATUS RegEnumKey(HKEY hKey, DWORD dwIndex, LPTSTR lpName, DWORD cchName);
// Deletes a key without sub-keys; a key that has some is refused with ERROR_ACCESS_DENIED.
LSTATUS RegDeleteKey(HKEY hKey, LPCTSTR lpSubKey);
// Deletes a key with everything below it.
LSTATUS RegDeleteTree(HKEY hKey, LPCTSTR lpSubKey);

// Replaces the whole of HKEY_CLASSES_ROOT with a .reg file's keys; false, with the registry left as
// it was and *pnBadLine set, for a file that cannot be read or a line that is no key, value or comment.
bool RegImportFile(const char* pszPath, int* pnBadLine = nullptr);
// Writes HKEY_CLASSES_ROOT as .reg text (UTF-8), keys in the registry's order; false when it cannot.
bool RegExportFile(const char* pszPath);
// The .reg text of HKEY_CLASSES_ROOT, as RegExportFile writes it.
std::string RegExportText();
// Empties HKEY_CLASSES_ROOT, as a fresh machine has it.
void RegClearClassesRoot();

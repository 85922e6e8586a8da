// System error codes as winerror.h numbers them, and the calling thread's last error
// (errhandlingapi.h) that the loader and the version functions leave behind when they fail.
#pragma once
#include "wintypes.h"

#define ERROR_SUCCESS 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_INSUFFICIENT_BUFFER 122L
#define ERROR_MOD_NOT_FOUND 126L
#define ERROR_PROC_NOT_FOUND 127L
#define ERROR_MORE_DATA 234L
#define ERROR_NO_MORE_ITEMS 259L
#define ERROR_RESOURCE_TYPE_NOT_FOUND 1813L

DWORD GetLastError();
void SetLastError(DWORD dwErrCode);

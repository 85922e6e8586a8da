// The last error, one per thread as on the real platform.
#include "winerror.h"

namespace {
thread_local DWORD t_dwLastError = ERROR_SUCCESS;
}

DWORD GetLastError() { return t_dwLastError; }

void SetLastError(DWORD dwErrCode) { t_dwLastError = dwErrCode; }

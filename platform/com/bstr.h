// BSTR: length-prefixed UTF-16 strings of OLE Automation (SysAllocString and friends).
#pragma once
#include "base/wintypes.h"

typedef char16_t* BSTR;

BSTR SysAllocString(const OLECHAR* psz);
BSTR SysAllocStringLen(const OLECHAR* pch, UINT cch);
void SysFreeString(BSTR bstr);
UINT SysStringLen(BSTR bstr);
// Live strings, so that tests can tell a leak.
long SysLiveStringCount();

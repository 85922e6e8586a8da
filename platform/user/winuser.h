// Win32 USER (winuser.h) as the stand-in provides it: windows, messages, input, system services and
// the EDIT window class. Include this one header.
#pragma once
#include "user/userconst.h"
#include "user/userkeys.h"
#include "user/wndapi.h"
#include "user/msgapi.h"
#include "user/inputapi.h"
#include "user/sysapi.h"
#include "user/editctl.h"
#include "user/drawapi.h"
#include "user/dlgctl.h"

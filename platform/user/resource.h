// String resources as LoadString reads them from a module. Stand-in: what the resource compiler
// links into a module's image, the module enters at load with AddStringResources.
#pragma once
#include <initializer_list>
#include "base/wintypes.h"

struct STRINGRESOURCE {
    UINT id;
    LPCTSTR text;
};

void AddStringResources(HINSTANCE hInstance, std::initializer_list<STRINGRESOURCE> strings);
// Copies at most cchBufferMax - 1 characters and a terminator; the characters copied, or 0 for a
// string the module does not have. A zero cchBufferMax (the read-only pointer form) is not offered.
int LoadString(HINSTANCE hInstance, UINT uID, LPTSTR lpBuffer, int cchBufferMax);

// The module's resources, handed to the platform's tables once when the module loads.
#pragma once
#include "base/module.h"

void RegisterQuillonResources();
// The version resource, kept under the module's own handle.
void RegisterQuillonVersion(HMODULE hModule);

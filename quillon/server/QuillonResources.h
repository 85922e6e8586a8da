// The module's resources, handed to the platform's tables once when the module loads.
#pragma once
#include "base/module.h"

void RegisterQuillonResources();
// Withdraws what lives in the module's memory (the dialogs and their data) as the module unloads;
// the strings and images are the platform's copies and stay.
void RevokeQuillonResources();
// The version resource, kept under the module's own handle.
void RegisterQuillonVersion(HMODULE hModule);

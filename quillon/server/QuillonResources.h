// The module's resources, handed to the platform's tables once when the module loads.
#pragma once
#include "base/wintypes.h"

void RegisterQuillonResources();

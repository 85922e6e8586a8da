// The script `quillon demo` runs.
#pragma once

extern const char* const kDemoScript;

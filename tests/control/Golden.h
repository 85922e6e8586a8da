// Golden images: a bitmap compared pixel for pixel with a PNG under tests/golden.
#pragma once
#include <string>
#include "base/wintypes.h"

// Fails unless the bitmap equals the golden of that name. A missing golden fails too, unless
// UPDATE_GOLDENS=1 is set, which writes (or rewrites) it. A mismatch writes the actual image and
// a diff image into the build folder and reports the first differing pixel and the count.
void ExpectMatchesGolden(HBITMAP bitmap, const std::string& name);

// swscanf_s of the Microsoft runtime over UTF-16 text, for the conversions the control uses.
#pragma once
#include "wintypes.h"

// Reads the text by the format and stores each converted field through the next pointer; returns
// the number of fields stored, or EOF (-1) when the text ends before the first conversion.
// Conversions: %d (int*), %u (unsigned*), %f (float*) and %[set] / %[^set] (WCHAR*, then the
// buffer's size in characters as an unsigned). Numbers skip leading white space, a set does not;
// white space in the format matches any run of it; other format characters must match exactly.
// A field that does not fit its buffer empties the buffer and ends the scan. Integer fields
// keep the low 32 bits of what they read, as the runtime does. Stand-in: widths, %s, %c, %x and
// the size prefixes are not provided (asserted).
int swscanf_s(const WCHAR* buffer, const WCHAR* format, ...);

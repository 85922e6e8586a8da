// Internal: the ternary raster operation on pixel values, shared by the blits, icons and their tests.
#pragma once
#include <cstdint>

namespace gdi {

// Applies operation index idx (bits 16..23 of a ROP code) to 24-bit pattern, source and destination values.
uint32_t Rop3(uint8_t idx, uint32_t p, uint32_t s, uint32_t d);

}  // namespace gdi

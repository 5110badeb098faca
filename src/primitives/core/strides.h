// The three row-stride rules. Each family keeps its own rule; the two aligned forms agree for
// every width of at least 1 and differ at 0 (bitmap form 0, row-byte form 4), and the packed rule
// differs from both whenever a row's bytes are not a multiple of 4. All 32-bit signed, wrapping,
// with truncating division.
#pragma once

#include <cstdint>

#include "primitives/core/wrap.h"

namespace framekit {

// Aligned stride, bitmap form: ((width * bits + 31) / 32) * 4. Used by the flips.
constexpr int32_t BitmapStride(int32_t width, int32_t bits_per_pixel) {
  return WrapMul(WrapDiv(WrapAdd(WrapMul(width, bits_per_pixel), 31), 32), 4);
}

// Aligned stride, row-byte form: ((n - 1) / 4) * 4 + 4 for a row of n bytes. Used by the
// conversions, crops, cuts, fill, and the greyscale and invert effects.
constexpr int32_t RowByteStride(int32_t row_bytes) {
  return WrapAdd(WrapMul(WrapDiv(WrapSub(row_bytes, 1), 4), 4), 4);
}
constexpr int32_t RowByteStrideRGB24(int32_t width) { return RowByteStride(WrapMul(3, width)); }
constexpr int32_t RowByteStrideRGB32(int32_t width) { return RowByteStride(WrapMul(4, width)); }

// Packed: bytes per pixel times width, no padding. Used by most RGB24 effects and the YUV sides
// of the conversions.
constexpr int32_t PackedStride(int32_t width, int32_t bytes_per_pixel) {
  return WrapMul(width, bytes_per_pixel);
}

}  // namespace framekit

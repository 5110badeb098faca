// How the effects walk RGB24 frames (see effects.h): the width-path test, the byte count of
// packed rows and the whole frame seen as one row of pixels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "primitives/core/types.h"
#include "primitives/core/wrap.h"

namespace framekit::effects {

// Signed remainder: -6 % 4 is -2, so negative widths that are not multiples of 4 go the general
// way and negative multiples of 4 the fast way.
static inline bool FastPath(int32_t width) { return width % 4 == 0; }

// Bytes covered by height rows of 3 * width bytes (0 when either is below 1).
static inline size_t RowBytes(int32_t width, int32_t height) {
  if (width < 1 || height < 1) return 0;
  return size_t{3} * static_cast<size_t>(width) * static_cast<size_t>(height);
}

// The whole frame as one row of n = width * height pixels (wrapped); false when n <= 0.
static inline bool AsOneRow(int32_t width, int32_t height, prim::Size* row) {
  const int32_t n = WrapMul(width, height);
  *row = {n, 1};
  return n > 0;
}

}  // namespace framekit::effects

// Box-blur passes over three-byte pixels, in place, by running sums: each output is the mean of
// the window [i - radius, i + radius] clipped to the image (2 * radius + 1 samples inside it,
// fewer near the edges), per channel.
//
//   BlurRows     along each row, truncating division. Each row's results are built in `row`
//                (at least 3 * width bytes) and copied back, so `row` ends up holding the last
//                row's results.
//   BlurColumns  along each column, in strips of 16 pixel columns: a strip's results are built
//                in `work` (at least 48 * height bytes) and copied back. Pixel columns below
//                `rounded_width` divide by multiplying with float(1 / n) and rounding to nearest
//                even (the rounding of the fast path); the others use truncating division.
//
// Checks: null image or buffer (-8), width or height below 1 (-6), then a negative radius (-6).
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using BlurRowsSig = Status(uint8_t* p, int32_t step, Size roi, int32_t radius, uint8_t* row);
using BlurRowsFn = BlurRowsSig*;
using BlurColumnsSig = Status(uint8_t* p, int32_t step, Size roi, int32_t radius,
                              int32_t rounded_width, uint8_t* work);
using BlurColumnsFn = BlurColumnsSig*;

namespace ref {
BlurRowsSig BlurRows;
BlurColumnsSig BlurColumns;
}  // namespace ref
namespace sse2 {
BlurRowsSig BlurRows;
BlurColumnsSig BlurColumns;
}  // namespace sse2
namespace avx2 {
BlurRowsSig BlurRows;
BlurColumnsSig BlurColumns;
}  // namespace avx2

FK_PRIMITIVE(BlurRows, BlurRowsSig);
FK_PRIMITIVE(BlurColumns, BlurColumnsSig);

}  // namespace framekit::prim

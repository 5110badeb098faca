#include "primitives/core/rows.h"
#include "primitives/difference/difference.h"

namespace framekit::prim::ref {

Status MotionDiff_8u_C3C1R(const uint8_t* a, int32_t a_step, const uint8_t* b, int32_t b_step,
                           uint8_t* map, int32_t map_step, Size roi, int32_t channels,
                           uint64_t* sum) {
  if (const Status s = CheckMotionDiff(a, b, map, roi, channels, sum); s != ippStsNoErr) return s;
  uint64_t total = 0;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* pa = RowAt(a, a_step, y);
    const uint8_t* pb = RowAt(b, b_step, y);
    uint8_t* out = RowAt(map, map_step, y);
    for (int64_t x = 0; x < roi.width; ++x) {
      out[x] = MotionDiffPixel(pa + 3 * x, pb + 3 * x, channels);
      total += out[x];
    }
  }
  *sum += total;
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

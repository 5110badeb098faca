// Reference set: pixel by pixel.
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/set/set.h"

namespace framekit::prim::ref {

Status ippiSet_8u_C3R(const uint8_t* value, uint8_t* dst, int32_t dst_step, Size roi) {
  if (const Status s = CheckTwo(value, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t c = 0; c < roi.width; ++c) {
      d[3 * c + 0] = value[0];
      d[3 * c + 1] = value[1];
      d[3 * c + 2] = value[2];
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

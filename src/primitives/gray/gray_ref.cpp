// Reference grey primitives: pixel by pixel.
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/core/wrap.h"
#include "primitives/gray/gray.h"

namespace framekit::prim::ref {

Status ippiColorToGray_8u_C3C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi, const float* weights) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  int32_t w[3];
  GrayWeights(weights, w);
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t x = 0; x < roi.width; ++x) d[x] = GreyOf(s + 3 * x, w);
  }
  return ippStsNoErr;
}

Status ippiDup_8u_C1C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                        Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t x = 0; x < roi.width; ++x, d += 3) d[0] = d[1] = d[2] = s[x];
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

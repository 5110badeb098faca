// Reference grey primitives: pixel by pixel.
#include "primitives/core/checks.h"
#include "primitives/core/wrap.h"
#include "primitives/gray/gray.h"

namespace framekit::prim::ref {

Status ippiColorToGray_8u_C3C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi, const float* weights) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  int32_t w[3];
  GrayWeights(weights, w);
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = src + int64_t{r} * src_step;
    uint8_t* d = dst + int64_t{r} * dst_step;
    for (int32_t x = 0; x < roi.width; ++x, s += 3) {
      const int32_t sum = WrapAdd(WrapAdd(WrapMul(w[0], s[0]), WrapMul(w[1], s[1])),
                                  WrapAdd(WrapMul(w[2], s[2]), 16384));
      d[x] = static_cast<uint8_t>(static_cast<uint32_t>(sum) >> 15);
    }
  }
  return ippStsNoErr;
}

Status ippiDup_8u_C1C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                        Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = src + int64_t{r} * src_step;
    uint8_t* d = dst + int64_t{r} * dst_step;
    for (int32_t x = 0; x < roi.width; ++x, d += 3) d[0] = d[1] = d[2] = s[x];
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

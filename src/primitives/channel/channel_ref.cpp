// Channel primitives, reference bodies: byte loops over each row's pixels.
#include "primitives/channel/channel.h"
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"

namespace framekit::prim::ref {

Status ippiCopy_8u_AC4C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    CopyC4ToC3(RowAt(src, src_step, r), RowAt(dst, dst_step, r), 0, roi.width);
  }
  return ippStsNoErr;
}

Status ippiCopy_8u_C3AC4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    CopyC3ToC4(RowAt(src, src_step, r), RowAt(dst, dst_step, r), 0, roi.width);
  }
  return ippStsNoErr;
}

Status ippiAddC_8u_C4IRSfs(const uint8_t value[4], uint8_t* p, int32_t step, Size roi,
                           int32_t scale) {
  if (const Status s = CheckTwo(value, p, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* d = RowAt(p, step, r);
    if (scale == 0) {
      AddCPixels(value, d, 0, roi.width);
      continue;
    }
    for (int32_t i = 0; i < 4 * roi.width; ++i) d[i] = ScaledSum(d[i] + value[i & 3], scale);
  }
  return ippStsNoErr;
}

Status CopyC3AC4AddC(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi,
                     const uint8_t value[4]) {
  if (value == nullptr) return ippStsNullPtrErr;
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    CopyAddPixels(RowAt(src, src_step, r), RowAt(dst, dst_step, r), value, 0, roi.width);
  }
  return ippStsNoErr;
}

Status ippiSwapChannels_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                               Size roi, const int32_t order[3]) {
  if (const Status s = CheckSwap(src, dst, roi, order); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    SwapPixels(RowAt(src, src_step, r), RowAt(dst, dst_step, r), order, 0, roi.width);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

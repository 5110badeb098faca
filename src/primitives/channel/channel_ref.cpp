// Channel primitives, reference bodies: byte loops over each row's pixels.
#include "primitives/channel/channel.h"
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"

namespace framekit::prim::ref {
Status ippiCopy_8u_AC4C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t x = 0; x < roi.width; ++x, s += 4, d += 3) {
      d[0] = s[0];
      d[1] = s[1];
      d[2] = s[2];
    }
  }
  return ippStsNoErr;
}

Status ippiCopy_8u_C3AC4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t x = 0; x < roi.width; ++x, s += 3, d += 4) {
      d[0] = s[0];
      d[1] = s[1];
      d[2] = s[2];
    }
  }
  return ippStsNoErr;
}

Status ippiAddC_8u_C4IRSfs(const uint8_t value[4], uint8_t* p, int32_t step, Size roi,
                           int32_t scale) {
  if (const Status s = CheckTwo(value, p, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* d = RowAt(p, step, r);
    for (int32_t i = 0; i < 4 * roi.width; ++i) {
      const int32_t sum = d[i] + value[i & 3];
      d[i] = scale == 0 ? static_cast<uint8_t>(sum > 255 ? 255 : sum) : ScaledSum(sum, scale);
    }
  }
  return ippStsNoErr;
}

Status CopyC3AC4AddC(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi,
                     const uint8_t value[4]) {
  if (value == nullptr) return ippStsNullPtrErr;
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t x = 0; x < roi.width; ++x, s += 3, d += 4) {
      const int32_t sums[4] = {s[0] + value[0], s[1] + value[1], s[2] + value[2], d[3] + value[3]};
      for (int c = 0; c < 4; ++c) d[c] = static_cast<uint8_t>(sums[c] > 255 ? 255 : sums[c]);
    }
  }
  return ippStsNoErr;
}

Status ippiSwapChannels_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                               Size roi, const int32_t order[3]) {
  if (const Status s = CheckSwap(src, dst, roi, order); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t x = 0; x < roi.width; ++x, s += 3, d += 3) {
      const uint8_t px[3] = {s[0], s[1], s[2]};  // read first: src may be dst
      d[0] = px[order[0]];
      d[1] = px[order[1]];
      d[2] = px[order[2]];
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

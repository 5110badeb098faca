#include "primitives/blend/blend.h"
#include "primitives/core/rows.h"

namespace framekit::prim::ref {

Status BlendAlpha_8u_AC4C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                            Size roi, int32_t scale) {
  if (const Status s = CheckBlend(src, dst, roi, scale); s != ippStsNoErr) return s;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* in = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    for (int64_t x = 0; x < roi.width; ++x) BlendAlphaPixel(in + 4 * x, out + 3 * x, scale);
  }
  return ippStsNoErr;
}

Status BlendConst_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t t) {
  if (const Status s = CheckBlend(src, dst, roi, t); s != ippStsNoErr) return s;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* in = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    for (int64_t i = 0; i < 3 * int64_t{roi.width}; ++i) out[i] = RoundBlend(out[i], in[i], t);
  }
  return ippStsNoErr;
}

Status AlphaShift_8u_AC4IR(uint8_t* p, int32_t step, Size roi, int32_t delta) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const auto low = static_cast<uint8_t>(delta & 0xFF);
  const int64_t block = AlphaShiftBlockPixels(roi.width);
  for (int64_t y = 0; y < roi.height; ++y) {
    uint8_t* row = RowAt(p, step, y);
    for (int64_t x = 0; x < block; ++x) {
      uint8_t& a = row[4 * x + 3];
      a = a > low ? static_cast<uint8_t>(a - low) : 0;
    }
    for (int64_t x = block; x < roi.width; ++x)
      row[4 * x + 3] = ShiftAlphaClamped(row[4 * x + 3], delta);
  }
  return ippStsNoErr;
}

Status ippiAlphaComp_8u_AC4R(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                             int32_t src2_step, uint8_t* dst, int32_t dst_step, Size roi,
                             int32_t alpha_type) {
  if (const Status s = CheckAlphaComp(src1, src2, dst, roi, alpha_type); s != ippStsNoErr) {
    return s;
  }
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* a = RowAt(src1, src1_step, y);
    const uint8_t* b = RowAt(src2, src2_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    for (int64_t x = 0; x < roi.width; ++x) CompositeOverPixel(a + 4 * x, b + 4 * x, out + 4 * x);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

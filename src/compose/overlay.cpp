#include <cstring>

#include "compose/compose.h"
#include "primitives/blend/blend.h"
#include "primitives/channel/channel.h"
#include "primitives/copy/copy.h"
#include "primitives/core/rows.h"
#include "primitives/core/strides.h"
#include "primitives/core/wrap.h"

namespace framekit::compose {
namespace {

uint8_t* Placed(const Placement& p, int bytes_per_pixel) {
  return p.dst + int64_t{p.y} * p.dst_step + int64_t{p.x} * bytes_per_pixel;
}

// c + (((s - c) * a) >> 8) for the channels red, green, blue of one pixel.
void ShiftBlend(const uint8_t* s, uint8_t* c, int32_t a) {
  for (int k = 2; k >= 0; --k) c[k] = static_cast<uint8_t>(c[k] + (((s[k] - c[k]) * a) >> 8));
}

}  // namespace

int32_t CopyRGB24(const Placement& p) {
  return prim::ippiCopy_8u_C3R(p.src, p.src_step, Placed(p, 3), p.dst_step, {p.width, p.height});
}

void BlendRGB32OnRGB24(const Placement& p, int32_t t, bool fast) {
  uint8_t* dst = Placed(p, 3);
  if (fast) {
    prim::BlendAlpha_8u_AC4C3R(p.src, p.src_step, dst, p.dst_step, {p.width, p.height}, t);
    return;
  }
  for (int64_t r = 0; r < p.height; ++r) {
    const uint8_t* in = prim::RowAt(p.src, p.src_step, r);
    uint8_t* out = prim::RowAt(dst, p.dst_step, r);
    // (A * t) >> 8 is the integer part of A * (t * 0.00390625) in double precision: the product
    // is exact there, and with t = 256 it is A itself.
    for (int64_t x = 0; x < p.width; ++x) {
      ShiftBlend(in + 4 * x, out + 3 * x, (in[4 * x + 3] * t) >> 8);
    }
  }
}

void BlendRGB24(const Placement& p, int32_t t, bool fast) {
  uint8_t* dst = Placed(p, 3);
  if (fast) {
    prim::BlendConst_8u_C3R(p.src, p.src_step, dst, p.dst_step, {p.width, p.height}, t);
    return;
  }
  for (int64_t r = 0; r < p.height; ++r) {
    const uint8_t* in = prim::RowAt(p.src, p.src_step, r);
    uint8_t* out = prim::RowAt(dst, p.dst_step, r);
    for (int64_t x = 0; x < p.width; ++x) ShiftBlend(in + 3 * x, out + 3 * x, t);
  }
}

void CopyRGB24IntoRGB32(const Placement& p) {
  // The saturating add of 255 to the fourth byte sets it to 255 whatever it held.
  static constexpr uint8_t kOpaque[4] = {0, 0, 0, 255};
  prim::CopyC3AC4AddC(p.src, p.src_step, Placed(p, 4), p.dst_step, {p.width, p.height}, kOpaque);
}

void CompositeRGB32(const Placement& p, uint8_t* work, int32_t work_step, int32_t work_height) {
  uint8_t* target = work + int64_t{p.y} * work_step + int64_t{p.x} * 4;
  prim::ippiAlphaComp_8u_AC4R(p.src, p.src_step, p.dst, p.dst_step, target, work_step,
                              {p.width, p.height}, prim::kAlphaOver);
  const int32_t bytes = WrapMul(work_step, work_height);
  if (bytes > 0) std::memmove(p.dst, work, static_cast<size_t>(bytes));
}

void ShiftAlpha(uint8_t* frame, int32_t width, int32_t height, int32_t delta) {
  if (width < 1 || height < 1) return;
  const int32_t step = RowByteStrideRGB32(width);
  if (width % 4 == 0) {
    prim::AlphaShift_8u_AC4IR(frame, step, {width, height}, delta);
    return;
  }
  for (int64_t r = 0; r < height; ++r) {
    uint8_t* row = prim::RowAt(frame, step, r);
    for (int64_t x = 0; x < width; ++x) {
      row[4 * x + 3] = prim::ShiftAlphaClamped(row[4 * x + 3], delta);
    }
  }
}

}  // namespace framekit::compose

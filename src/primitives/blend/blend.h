// Overlay blends. Pixels are bytes blue, green, red (3-byte) or blue, green, red, alpha (4-byte).
//
//   BlendAlpha_8u_AC4C3R  a 4-byte source over a 3-byte destination: with A the source pixel's
//                         byte 3 and a = (A * scale) >> 8 (scale 0..256; 256 uses A as it is),
//                         each destination channel c and source channel s give
//                         c + RoundHalfEven((s - c) * a / 256).
//   BlendConst_8u_C3R     every destination byte c and source byte s give
//                         c + RoundHalfEven((s - c) * t / 256), t in 0..256.
//   AlphaShift_8u_AC4IR   in place on 4-byte pixels: in each row the first 16 * (width / 16)
//                         pixels' byte 3 loses (delta & 0xFF) with unsigned saturation, the rest
//                         become min(max(byte 3 - delta, 0), 255) with delta as a signed value.
//   ippiAlphaComp_8u_AC4R the over composite of a first 4-byte source A onto a second B, each
//                         weighted by its own byte 3 (alpha type 0): with d(x) =
//                         (x + (x >> 8) + 1) >> 8, colour byte k = d(A[k] aA) +
//                         d(d(B[k] aB) (255 - aA)), byte 3 = aA + d(aB (255 - aA)); the colour
//                         stays multiplied by alpha. Types 1..11 are accepted names of other
//                         operations that this library does not provide
//                         (ippStsNotSupportedModeErr).
//
// The rounded blends are the single-precision products (s - c) * factor of the overlay's fast
// path converted to the nearest integer, ties to even, done here in integers: the same bytes on
// every processor and whatever the floating-point rounding mode. Checks, in order: null pointers
// (-8), sizes below 1 (-6), then scale or t outside 0..256 (ippStsOutOfRangeErr), an alpha type
// outside 0..11 (ippStsAlphaTypeErr). Steps are not checked. Sources and destinations are
// separate buffers.
#pragma once

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using BlendSig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                        Size roi, int32_t factor);
using AlphaShiftSig = Status(uint8_t* p, int32_t step, Size roi, int32_t delta);
using AlphaCompSig = Status(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                            int32_t src2_step, uint8_t* dst, int32_t dst_step, Size roi,
                            int32_t alpha_type);
using BlendFn = BlendSig*;
using AlphaShiftFn = AlphaShiftSig*;
using AlphaCompFn = AlphaCompSig*;

inline constexpr int32_t kAlphaOver = 0;
inline constexpr int32_t kAlphaTypeLast = 11;

static inline Status CheckBlend(const void* src, const void* dst, Size roi, int32_t factor) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  return (factor < 0 || factor > 256) ? ippStsOutOfRangeErr : ippStsNoErr;
}

static inline Status CheckAlphaComp(const void* src1, const void* src2, const void* dst, Size roi,
                                    int32_t alpha_type) {
  if (src1 == nullptr || src2 == nullptr || dst == nullptr) return ippStsNullPtrErr;
  if (const Status s = CheckSize(roi); s != ippStsNoErr) return s;
  if (alpha_type < 0 || alpha_type > kAlphaTypeLast) return ippStsAlphaTypeErr;
  return alpha_type == kAlphaOver ? ippStsNoErr : ippStsNotSupportedModeErr;
}

// c + RoundHalfEven((s - c) * f / 256) for f in 0..256. With p = (s - c) f, q = floor(p / 256)
// and r = p mod 256, the rounding adds one when r > 128, or r = 128 and q is odd.
static inline uint8_t RoundBlend(int32_t c, int32_t s, int32_t f) {
  const int32_t p = (s - c) * f;
  const int32_t q = p >> 8;  // arithmetic: floor
  return static_cast<uint8_t>(c + q + (((p & 255) + 127 + (q & 1)) >> 8));
}

// The pixels of a row that AlphaShift_8u_AC4IR takes 16 at a time.
static inline int64_t AlphaShiftBlockPixels(int32_t width) { return int64_t{width} / 16 * 16; }

// Byte 3 minus delta, clamped to 0..255 (any delta).
static inline uint8_t ShiftAlphaClamped(uint8_t a, int32_t delta) {
  const int64_t v = int64_t{a} - delta;
  return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v));
}

// The division by 255 of the composite: d(x) = (x + (x >> 8) + 1) >> 8.
static inline uint32_t Div255(uint32_t x) { return (x + (x >> 8) + 1) >> 8; }

// The constant blend's plan for the vector bodies. With P the byte pairs (c, s), one multiply-add
// by signed weight pairs and a rounding multiply-high give the half-up result:
//   t even:        weights (128 - t / 2, t / 2) make (c * 256 + (s - c) t) / 2 exactly, and the
//                  multiply-high by 256 rounds it to c + floor((s - c) t / 256 + 0.5) directly;
//   t odd < 128:   weights (-t, t) make (s - c) t, rounded by a multiply-high by 128; add c;
//   t odd > 128:   weights (w, -w), w = 256 - t, make -(s - c) w, rounded likewise; add s (as
//                  c + (s - c) t / 256 = s - (s - c) w / 256).
// (At t = 128 the rounded mean of the pair serves.) Half-up and nearest-even differ only at
// ties, (s - c) t = 128 (mod 256), where half-up is one too high when the floor n of
// (s - c) t / 256 is even. For t = 2^k m (m odd) the ties are s - c = 2^(7 - k) (2j + 1), with
// n = j m + (m - 1) / 2: n is even when the parity of j (bit 8 - k of s - c) equals that of
// (m - 1) / 2. For k >= 1 both conditions are bits of the bytes' difference, one masked compare
// whose all-ones result, added, subtracts the one. For odd t the ties are s - c = +128 or -128,
// and exactly one of them rounds down: +128 when (m - 1) / 2 is even; the saturating difference
// s - c (or c - s) equal to 128 finds it.
struct ConstBlendPlan {
  int8_t weight_c, weight_s;      // the multiply-add's weights for c and s
  int16_t multiplier;             // of the rounding multiply-high
  bool odd, from_s;               // t odd; the rounded term added to s (t > 128) rather than c
  bool down_positive;             // t odd: the tie that rounds down is s - c = +128 (else -128)
  uint8_t down_mask, down_value;  // t even: (s - c) & mask == value where half-up is one high
};

static inline ConstBlendPlan PlanConstBlend(int32_t t) {  // t in 1..255
  int k = 0;
  while (((t >> k) & 1) == 0) ++k;
  const int32_t j_parity = (((t >> k) - 1) / 2) & 1;  // the parity of j at which ties round down
  ConstBlendPlan plan{};
  plan.odd = k == 0;
  if (!plan.odd) {
    plan.weight_c = static_cast<int8_t>(128 - t / 2);
    plan.weight_s = static_cast<int8_t>(t / 2);
    plan.multiplier = 256;
    plan.down_mask = static_cast<uint8_t>((1 << (9 - k)) - 1);
    plan.down_value = static_cast<uint8_t>((1 << (7 - k)) | (j_parity << (8 - k)));
  } else {
    plan.from_s = t > 128;
    const int32_t w = plan.from_s ? 256 - t : t;
    plan.weight_c = static_cast<int8_t>(plan.from_s ? w : -w);
    plan.weight_s = static_cast<int8_t>(plan.from_s ? -w : w);
    plan.multiplier = 128;
    plan.down_positive = j_parity == 0;
  }
  return plan;
}

// One pixel of each blend, for references and vector tails.
static inline void BlendAlphaPixel(const uint8_t* in, uint8_t* out, int32_t scale) {
  const int32_t a = (in[3] * scale) >> 8;
  for (int k = 0; k < 3; ++k) out[k] = RoundBlend(out[k], in[k], a);
}
static inline void CompositeOverPixel(const uint8_t* a, const uint8_t* b, uint8_t* out) {
  const uint32_t alpha_a = a[3], alpha_b = b[3];
  for (int k = 0; k < 3; ++k) {
    out[k] = static_cast<uint8_t>(Div255(a[k] * alpha_a) +
                                  Div255(Div255(b[k] * alpha_b) * (255 - alpha_a)));
  }
  out[3] = static_cast<uint8_t>(alpha_a + Div255(alpha_b * (255 - alpha_a)));
}

#define FK_BLEND_BODIES                             \
  BlendSig BlendAlpha_8u_AC4C3R, BlendConst_8u_C3R; \
  AlphaShiftSig AlphaShift_8u_AC4IR;                \
  AlphaCompSig ippiAlphaComp_8u_AC4R;

namespace ref {
FK_BLEND_BODIES
}  // namespace ref
namespace ssse3 {
FK_BLEND_BODIES
}  // namespace ssse3
namespace avx2 {
FK_BLEND_BODIES
}  // namespace avx2
#undef FK_BLEND_BODIES

FK_PRIMITIVE(BlendAlpha_8u_AC4C3R, BlendSig);
FK_PRIMITIVE(BlendConst_8u_C3R, BlendSig);
FK_PRIMITIVE(AlphaShift_8u_AC4IR, AlphaShiftSig);
FK_PRIMITIVE(ippiAlphaComp_8u_AC4R, AlphaCompSig);

}  // namespace framekit::prim

// Grey primitives: three-channel pixels to one grey byte, and one byte back to three channels.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/wrap.h"
#include "primitives/core/types.h"

namespace framekit::prim {

// grey = (w0 * byte0 + w1 * byte1 + w2 * byte2 + 16384) >> 15, each weight turned into 15-bit
// fixed point as trunc(weight * 32768 + 0.5) in double precision. Null weights mean the default
// red-first set for bytes 0, 1, 2: 9798, 19235, 3736. Weights are meant to lie in 0..1 with a
// sum near 1 (fixed-point sum at most 32769, which keeps white at 255); the result is the low
// 8 bits of the sum otherwise. Checks: null src or dst (-8), then the size (-6).
using ColorToGraySig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                              Size roi, const float* weights);
using ColorToGrayFn = ColorToGraySig*;
// Each source byte into all three bytes of the destination pixel.
using DupSig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                      Size roi);
using DupFn = DupSig*;

static constexpr int32_t kDefaultGrayWeights[3] = {9798, 19235, 3736};

// The 15-bit fixed-point weights. Internal linkage: per-ISA files call it too.
static inline void GrayWeights(const float* weights, int32_t out[3]) {
  for (int i = 0; i < 3; ++i) {
    if (weights == nullptr) {
      out[i] = kDefaultGrayWeights[i];
      continue;
    }
    const double w = static_cast<double>(weights[i]) * 32768.0 + 0.5;
    // Weights far outside 0..1 are not meaningful; keep the conversion defined for them.
    out[i] = (w > -65536.0 && w < 65536.0) ? static_cast<int32_t>(w) : 0;
  }
}

// One grey byte: the 32-bit sum's bits 15 and up, cut to 8 bits.
static inline uint8_t GreyOf(const uint8_t* s, const int32_t w[3]) {
  const int32_t sum = WrapAdd(WrapAdd(WrapMul(w[0], s[0]), WrapMul(w[1], s[1])),
                              WrapAdd(WrapMul(w[2], s[2]), 16384));
  return static_cast<uint8_t>(static_cast<uint32_t>(sum) >> 15);
}

namespace ref {
ColorToGraySig ippiColorToGray_8u_C3C1R;
DupSig ippiDup_8u_C1C3R;
}  // namespace ref
namespace ssse3 {
ColorToGraySig ippiColorToGray_8u_C3C1R;
DupSig ippiDup_8u_C1C3R;
}  // namespace ssse3

FK_PRIMITIVE(ippiColorToGray_8u_C3C1R, ColorToGraySig);
FK_PRIMITIVE(ippiDup_8u_C1C3R, DupSig);

}  // namespace framekit::prim

// The per-byte and per-pixel formulas of the tone effects, in plain scalar code.
//
// The fast path of an effect processes 16 pixels at a time in single precision: bytes widened to
// 32-bit lanes, converted to float, multiplied, converted back with round-to-nearest-even and
// packed with saturation. These functions reproduce those steps exactly, including what the
// vector conversion does with NaN or an out-of-range value (it gives INT32_MIN), so they serve
// as the reference for every vector variant and as the fast path itself on other processors.
// The last n % 16 pixels of a fast-path frame and the general paths truncate instead.
//
// Everything here has internal linkage: per-ISA files use these for their tails, and a merged
// out-of-line copy compiled with their flags must never serve baseline code.
#pragma once

#include <cstdint>

#include "primitives/core/lane_math.h"
#include "primitives/core/wrap.h"

namespace framekit::prim::tone {

// The lane operations of the vector bodies, as scalar code (lane_math.h).
using prim::ClampByte;
using prim::ClampInt16;
using prim::RoundEven;
using prim::Truncate;

// ---- Lightness and darkness: level is the clamped amount, 1..255 from the effects.

static inline float LevelScale(int32_t level) { return static_cast<float>(level) / 255.0f; }

// Block pixels: the lane sum wraps in 32 bits and the pack saturates.
static inline uint8_t LightnessBlockByte(uint8_t v, float scale) {
  return ClampByte(WrapAdd(v, RoundEven(static_cast<float>(255 - v) * scale)));
}
static inline uint8_t DarknessBlockByte(uint8_t v, float scale) {
  return ClampByte(WrapSub(v, RoundEven(static_cast<float>(v) * scale)));
}
// Tail and general path: exact truncating division by 255.
static inline uint8_t LightnessTruncByte(uint8_t v, int32_t level) {
  return ClampByte(WrapAdd(v, WrapMul(255 - v, level) / 255));
}
static inline uint8_t DarknessTruncByte(uint8_t v, int32_t level) {
  return ClampByte(WrapSub(v, WrapMul(v, level) / 255));
}

// ---- Contrast about 128. The factor is not guarded: K = 259 divides by zero.

static inline float ContrastFactorSingle(int32_t k) {
  return static_cast<float>(WrapAdd(k, 255)) * 259.0f / ((259.0f - static_cast<float>(k)) * 255.0f);
}
static inline double ContrastFactorDouble(int32_t k) {
  return static_cast<double>(WrapAdd(k, 255)) * 259.0 / ((259.0 - static_cast<double>(k)) * 255.0);
}
// Block pixels: the product saturates to 16 bits, 128 is added, and the pack saturates to a byte.
static inline uint8_t ContrastBlockByte(uint8_t v, float factor) {
  const int32_t r = ClampInt16(RoundEven(static_cast<float>(v - 128) * factor));
  return ClampByte(r + 128);
}
// Tail pixels of the fast path: single precision, truncated.
static inline uint8_t ContrastTailByte(uint8_t v, float factor) {
  return ClampByte(Truncate(static_cast<float>(v - 128) * factor + 128.0f));
}
// The general path: double precision, truncated.
static inline uint8_t ContrastGeneralByte(uint8_t v, double factor) {
  return ClampByte(Truncate(static_cast<double>(v - 128) * factor + 128.0));
}

// ---- Saturation about the pixel's mean. s is float(S) / 255.

static inline float SaturationScale(uint32_t s) { return static_cast<float>(s) / 255.0f; }

// Block pixels: rounded mean, rounded scaled difference, 32-bit wrapping sum, saturating pack.
static inline void SaturationBlockPixel(uint8_t* p, float scale) {
  const int32_t m = RoundEven(static_cast<float>(p[0] + p[1] + p[2]) * 0.33333334f);
  for (int c = 0; c < 3; ++c) {
    p[c] = ClampByte(WrapAdd(m, RoundEven(static_cast<float>(WrapSub(p[c], m)) * scale)));
  }
}
// The block formula in 16-bit integers, for the vector bodies. The rounded mean of a sum of three
// bytes is (sum * 10923 + 2^14) >> 15 (pmulhrsw). The scaled difference d * S / 255 is never a
// half (2dS is even, 255 times an odd number is odd) and single precision keeps it far from one,
// so it is d * q + (d * multiplier + 2^14) >> 15 with q = S / 255 (0 or 1 here) for some 15-bit
// multiplier near (S - 255q) / 255 * 2^15. FitSaturation finds it and checks it against the
// model for every difference -255..255; false when no multiplier fits or S is 510 or more.
struct SaturationFit {
  bool above_identity;  // q = 1: the channel plus the rounded term, else the mean plus it
  int16_t multiplier;
};

static inline int32_t MulHrs(int32_t a, int32_t b) { return (a * b + 16384) >> 15; }

static inline int32_t SaturationMean(int32_t sum) { return MulHrs(sum, 10923); }

static inline bool FitSaturation(uint32_t s, SaturationFit* fit) {
  if (s >= 510) return false;
  const float scale = SaturationScale(s);
  const int32_t q = s >= 255 ? 1 : 0;
  const int32_t centre =
      static_cast<int32_t>((s - 255u * static_cast<uint32_t>(q)) * 32768u / 255u);
  for (int32_t a = centre - 4; a <= centre + 4; ++a) {
    if (a < 0 || a > 32767) continue;
    bool exact = true;
    for (int32_t d = -255; d <= 255 && exact; ++d) {
      exact = RoundEven(static_cast<float>(d) * scale) == d * q + MulHrs(d, a);
    }
    if (exact) {
      *fit = {q == 1, static_cast<int16_t>(a)};
      return true;
    }
  }
  return false;
}

// What the fitted vector bodies compute for one block pixel.
static inline void SaturationFitPixel(uint8_t* p, const SaturationFit& fit) {
  const int32_t m = SaturationMean(p[0] + p[1] + p[2]);
  for (int c = 0; c < 3; ++c) {
    const int32_t base = fit.above_identity ? p[c] : m;
    p[c] = ClampByte(base + MulHrs(p[c] - m, fit.multiplier));
  }
}

// Tail and general path: truncated mean, signed truncating division, low 8 bits kept (a
// saturation above 255 may wrap).
static inline void SaturationTruncPixel(uint8_t* p, uint32_t s) {
  const int32_t m = (p[0] + p[1] + p[2]) / 3;
  for (int c = 0; c < 3; ++c) {
    const int32_t q = WrapMul(p[c] - m, static_cast<int32_t>(s)) / 255;
    p[c] = static_cast<uint8_t>(WrapAdd(m, q));
  }
}

}  // namespace framekit::prim::tone

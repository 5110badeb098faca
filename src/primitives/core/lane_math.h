// Scalar models of single vector-lane operations, for references and tails that must give the
// vector bodies' bytes exactly: the float-to-int conversions (what cvtps2dq and cvttsd2si do with
// NaN and out-of-range values included) and the saturations of the packs.
//
// Internal linkage throughout: per-ISA files use these for their tails, and a merged out-of-line
// copy compiled with their flags must never serve baseline code. Written without the library's
// floor and fmod, whose inline wrappers have external linkage.
#pragma once

#include <cstdint>

namespace framekit::prim {

// Float to int32 as cvtps2dq does it in the default rounding mode: nearest, ties to even; NaN
// and values outside the int32 range give INT32_MIN.
static inline int32_t RoundEven(float x) {
  if (!(x >= -2147483648.0f && x < 2147483648.0f)) return INT32_MIN;
  if (!(x > -8388608.0f && x < 8388608.0f)) return static_cast<int32_t>(x);  // already whole
  int32_t whole = static_cast<int32_t>(x);                                   // toward zero
  const float frac = x - static_cast<float>(whole);                          // exact below 2^23
  const bool odd = (whole & 1) != 0;
  if (frac > 0.5f || (frac == 0.5f && odd)) ++whole;
  if (frac < -0.5f || (frac == -0.5f && odd)) --whole;
  return whole;
}

// Truncation toward zero as cvttsd2si does it: NaN and out-of-range values give INT32_MIN.
// (A float argument converts to double exactly.)
static inline int32_t Truncate(double x) {
  if (!(x > -2147483649.0 && x < 2147483648.0)) return INT32_MIN;
  return static_cast<int32_t>(x);
}

static inline uint8_t ClampByte(int32_t v) {
  return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v));
}
static inline int32_t ClampInt16(int32_t v) {
  return v < -32768 ? -32768 : (v > 32767 ? 32767 : v);
}

}  // namespace framekit::prim

// The sharpen filter's scalar pieces: its checks and one byte. Internal linkage throughout
// (per-ISA files include this for their row ends).
#pragma once

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"

namespace framekit::prim::filter {

static inline Status CheckSharpen(const uint8_t* src, int32_t src_step, const uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  return (src_step < 1 || dst_step < 1) ? ippStsStepErr : ippStsNoErr;
}

// v = 17c - (sum of the 3 x 3 window), divided by 8 with ties to even, clamped.
static inline uint8_t SharpenValue(int32_t centre, int32_t window_sum) {
  const int32_t v = 17 * centre - window_sum;
  if (v < 0) return 0;
  const int32_t q = (v + 3 + ((v >> 3) & 1)) >> 3;
  return static_cast<uint8_t>(q > 255 ? 255 : q);
}

// Bytes [from, to) of one output row; above, at and below point at the source rows' first
// region byte.
static inline void SharpenBytes(const uint8_t* above, const uint8_t* at, const uint8_t* below,
                                uint8_t* out, int64_t from, int64_t to) {
  for (int64_t i = from; i < to; ++i) {
    const int32_t sum = above[i - 3] + above[i] + above[i + 3] + at[i - 3] + at[i] + at[i + 3] +
                        below[i - 3] + below[i] + below[i + 3];
    out[i] = SharpenValue(at[i], sum);
  }
}

}  // namespace framekit::prim::filter

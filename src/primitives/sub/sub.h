// Subtraction primitive, in place: src_dst = src_dst - src per byte, clipped at 0, then scaled.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

// Scale factor f: the clipped difference d becomes d for f = 0, d / 2^f rounded to nearest with
// ties to even for f > 0 (0 once f >= 9), and d * 2^-f saturated at 255 for f < 0 (255 for any
// d > 0 once -f >= 8). The effects always pass 0. Checks: null src or src_dst (-8), then the
// size (-6).
using SubC3ISfsSig = Status(const uint8_t* src, int32_t src_step, uint8_t* src_dst,
                            int32_t src_dst_step, Size roi, int32_t scale);
using SubC3ISfsFn = SubC3ISfsSig*;

// One byte of the result. Internal linkage: per-ISA files use it for their scaled forms.
static inline uint8_t SubScaledByte(uint8_t a, uint8_t b, int32_t scale) {
  const int32_t d = a > b ? a - b : 0;
  if (scale == 0) return static_cast<uint8_t>(d);
  if (scale > 0) {
    if (scale >= 9) return 0;
    const int32_t q = d >> scale, rem = d - (q << scale), half = 1 << (scale - 1);
    return static_cast<uint8_t>(q + ((rem > half || (rem == half && (q & 1))) ? 1 : 0));
  }
  if (d == 0) return 0;
  if (scale <= -8) return 255;
  const int32_t v = d << -scale;
  return static_cast<uint8_t>(v > 255 ? 255 : v);
}

namespace ref {
SubC3ISfsSig ippiSub_8u_C3IRSfs;
}
namespace sse2 {
SubC3ISfsSig ippiSub_8u_C3IRSfs;
}
namespace avx2 {
SubC3ISfsSig ippiSub_8u_C3IRSfs;
}

FK_PRIMITIVE(ippiSub_8u_C3IRSfs, SubC3ISfsSig);

}  // namespace framekit::prim

// Frame difference of two 3-byte frames (bytes blue, green, red) into a 1-byte map, with the
// sum of the map's bytes added to *sum.
//
//   MotionDiff_8u_C3C1R  channels 0: v = |(b + g + r) / 3 of a - (b + g + r) / 3 of b|, each
//                        mean an integer division. Channels 1..7 (bit 0 red, bit 1 green, bit 2
//                        blue): v = |sum over the chosen channels of (a - b)| / 3, always divided
//                        by 3. map = v.
//
// Checks: a null a, b, map or sum (-8), sizes below 1 (-6), channels outside 0..7
// (ippStsOutOfRangeErr); nothing is written on failure.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using MotionDiffSig = Status(const uint8_t* a, int32_t a_step, const uint8_t* b, int32_t b_step,
                             uint8_t* map, int32_t map_step, Size roi, int32_t channels,
                             uint64_t* sum);
using MotionDiffFn = MotionDiffSig*;

inline constexpr int32_t kDiffLuminance = 0;
inline constexpr int32_t kDiffRed = 1, kDiffGreen = 2, kDiffBlue = 4;

static inline Status CheckMotionDiff(const void* a, const void* b, const void* map, Size roi,
                                     int32_t channels, const void* sum) {
  if (a == nullptr || b == nullptr || map == nullptr || sum == nullptr) return ippStsNullPtrErr;
  if (roi.width <= 0 || roi.height <= 0) return ippStsSizeErr;
  return (channels < 0 || channels > 7) ? ippStsOutOfRangeErr : ippStsNoErr;
}

static inline uint8_t MotionDiffPixel(const uint8_t* a, const uint8_t* b, int32_t channels) {
  if (channels == kDiffLuminance) {
    const int ga = (a[0] + a[1] + a[2]) / 3, gb = (b[0] + b[1] + b[2]) / 3;
    return static_cast<uint8_t>(ga > gb ? ga - gb : gb - ga);
  }
  int d = 0;
  if (channels & kDiffRed) d += a[2] - b[2];
  if (channels & kDiffGreen) d += a[1] - b[1];
  if (channels & kDiffBlue) d += a[0] - b[0];
  return static_cast<uint8_t>((d < 0 ? -d : d) / 3);
}

namespace ref {
MotionDiffSig MotionDiff_8u_C3C1R;
}  // namespace ref
namespace ssse3 {
MotionDiffSig MotionDiff_8u_C3C1R;
}  // namespace ssse3
namespace avx2 {
MotionDiffSig MotionDiff_8u_C3C1R;
}  // namespace avx2

FK_PRIMITIVE(MotionDiff_8u_C3C1R, MotionDiffSig);

}  // namespace framekit::prim

// Band threshold on one channel of three-byte pixels, in place: the channel's byte becomes 255
// when low < value < high (open band) and 0 otherwise; the two other bytes become 0. Checks: null
// pointer (-8), width or height below 1 (-6), a channel other than 0, 1 or 2 (-6).
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/rows.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using BandC3Sig = Status(uint8_t* p, int32_t step, Size roi, int32_t channel, uint8_t low,
                         uint8_t high);
using BandC3Fn = BandC3Sig*;

static inline Status CheckBand(const void* p, Size roi, int32_t channel) {
  if (p == nullptr) return ippStsNullPtrErr;
  if (roi.width <= 0 || roi.height <= 0 || channel < 0 || channel > 2) return ippStsSizeErr;
  return ippStsNoErr;
}

namespace ref {
BandC3Sig BandThresholdC3;
}
namespace sse2 {
BandC3Sig BandThresholdC3;
}
namespace avx2 {
BandC3Sig BandThresholdC3;
}

FK_PRIMITIVE(BandThresholdC3, BandC3Sig);

}  // namespace framekit::prim

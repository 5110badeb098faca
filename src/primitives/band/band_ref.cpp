// Band threshold, reference: 16 pixels (three 16-byte compiler vectors) at a time, which is
// SSE2 on x86-64 and the native vectors elsewhere; classes 0 to 5.
#include <cstdint>
#include <cstring>

#include "primitives/band/band.h"

namespace framekit::prim::ref {

#include "primitives/band/band_kernel.h"

Status BandThresholdC3(uint8_t* p, int32_t step, Size roi, int32_t channel, uint8_t low,
                       uint8_t high) {
  if (const Status s = CheckBand(p, roi, channel); s != ippStsNoErr) return s;
  return BandRows<Bytes16, Signed16>(p, step, roi, channel, low, high);
}

}  // namespace framekit::prim::ref

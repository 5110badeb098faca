// Band threshold, SSE2 level: classes 1 to 5. The vector loop of band_kernel.h with 16-byte
// vectors: 16 pixels (three vectors) a step, the rest of a row pixel by pixel; nothing outside a
// row's 3 * width bytes is touched.
#include <cstdint>
#include <cstring>

#include "primitives/band/band.h"

namespace framekit::prim::sse2 {

#include "primitives/band/band_kernel.h"

Status BandThresholdC3(uint8_t* p, int32_t step, Size roi, int32_t channel, uint8_t low,
                       uint8_t high) {
  if (const Status s = CheckBand(p, roi, channel); s != ippStsNoErr) return s;
  return BandRows<Bytes16, Signed16>(p, step, roi, channel, low, high);
}

}  // namespace framekit::prim::sse2

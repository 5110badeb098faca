// Band threshold, AVX2 level: class 6. The vector loop of band_kernel.h with 32-byte vectors:
// 32 pixels a step, the rest pixel by pixel.
#include <cstdint>
#include <cstring>

#include "primitives/band/band.h"

namespace framekit::prim::avx2 {

#include "primitives/band/band_kernel.h"

Status BandThresholdC3(uint8_t* p, int32_t step, Size roi, int32_t channel, uint8_t low,
                       uint8_t high) {
  if (const Status s = CheckBand(p, roi, channel); s != ippStsNoErr) return s;
  return BandRows<Bytes32, Signed32>(p, step, roi, channel, low, high);
}

}  // namespace framekit::prim::avx2

#include "primitives/band/band.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kBandC3Table, BandThresholdC3, BandC3Fn, .ref = ref::BandThresholdC3,
                   .avx2 = FK_X86(avx2::BandThresholdC3));

Status BandThresholdC3(uint8_t* p, int32_t step, Size roi, int32_t channel, uint8_t low,
                       uint8_t high) {
  return kBandC3Table[ClassIndex()](p, step, roi, channel, low, high);
}

}  // namespace framekit::prim

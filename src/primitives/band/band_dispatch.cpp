#include "primitives/band/band.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(BandThresholdC3, BandC3Sig, .ref = ref::BandThresholdC3,
                   .sse2 = FK_X86(sse2::BandThresholdC3), .avx2 = FK_X86(avx2::BandThresholdC3));

}  // namespace framekit::prim

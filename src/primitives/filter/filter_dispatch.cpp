#include "primitives/filter/filter.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiFilterSharpen_8u_C3R, FilterC3Sig, .ref = ref::ippiFilterSharpen_8u_C3R,
                   .sse2 = FK_X86(sse2::ippiFilterSharpen_8u_C3R),
                   .avx2 = FK_X86(avx2::ippiFilterSharpen_8u_C3R));

}  // namespace framekit::prim

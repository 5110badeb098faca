#include "primitives/set/set.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiSet_8u_C3R, SetC3Sig, .ref = ref::ippiSet_8u_C3R,
                   .sse2 = FK_X86(sse2::ippiSet_8u_C3R), .avx2 = FK_X86(avx2::ippiSet_8u_C3R));

}  // namespace framekit::prim

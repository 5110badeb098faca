#include "primitives/rotate/rotate.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiRotate_8u_C3R, RotateSig, .ref = ref::ippiRotate_8u_C3R,
                   .sse2 = FK_X86(sse2::ippiRotate_8u_C3R),
                   .avx2 = FK_X86(avx2::ippiRotate_8u_C3R));
FK_PRIMITIVE_TABLE(ippiRotate_8u_C4R, RotateSig, .ref = ref::ippiRotate_8u_C4R,
                   .sse2 = FK_X86(sse2::ippiRotate_8u_C4R),
                   .avx2 = FK_X86(avx2::ippiRotate_8u_C4R));

}  // namespace framekit::prim

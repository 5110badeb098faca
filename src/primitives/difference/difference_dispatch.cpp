#include "primitives/difference/difference.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(MotionDiff_8u_C3C1R, MotionDiffSig, .ref = ref::MotionDiff_8u_C3C1R,
                   .ssse3 = FK_X86(ssse3::MotionDiff_8u_C3C1R),
                   .avx2 = FK_X86(avx2::MotionDiff_8u_C3C1R));

}  // namespace framekit::prim

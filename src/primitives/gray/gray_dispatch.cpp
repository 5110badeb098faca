#include "primitives/gray/gray.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiColorToGray_8u_C3C1R, ColorToGraySig, .ref = ref::ippiColorToGray_8u_C3C1R,
                   .ssse3 = FK_X86(ssse3::ippiColorToGray_8u_C3C1R));
FK_PRIMITIVE_TABLE(ippiDup_8u_C1C3R, DupSig, .ref = ref::ippiDup_8u_C1C3R,
                   .ssse3 = FK_X86(ssse3::ippiDup_8u_C1C3R));

}  // namespace framekit::prim

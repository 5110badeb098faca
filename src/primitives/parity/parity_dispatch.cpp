#include "primitives/parity/parity.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(CopyParity_8u_C3R, CopyParitySig, .ref = ref::CopyParity_8u_C3R,
                   .avx2 = FK_X86(avx2::CopyParity_8u_C3R));

}  // namespace framekit::prim

#include "primitives/negate/negate.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(NegateC3IntoCopy, NegateC3Sig, .ref = ref::NegateC3IntoCopy,
                   .sse2 = FK_X86(sse2::NegateC3IntoCopy), .avx2 = FK_X86(avx2::NegateC3IntoCopy));

}  // namespace framekit::prim

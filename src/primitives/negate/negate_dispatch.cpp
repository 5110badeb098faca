#include "primitives/negate/negate.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kNegateC3Table, NegateC3IntoCopy, NegateC3Fn, .ref = ref::NegateC3IntoCopy,
                   .avx2 = FK_X86(avx2::NegateC3IntoCopy));

Status NegateC3IntoCopy(uint8_t* frame, int32_t frame_step, uint8_t* copy, int32_t copy_step,
                        Size roi) {
  return kNegateC3Table[ClassIndex()](frame, frame_step, copy, copy_step, roi);
}

}  // namespace framekit::prim

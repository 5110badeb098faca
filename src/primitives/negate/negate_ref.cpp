// Negate into a copy, reference: 16-byte compiler vectors (SSE2 on x86-64, the native vectors
// elsewhere); classes 0 to 5.
#include <cstdint>
#include <cstring>

#include "primitives/core/checks.h"
#include "primitives/negate/negate.h"

namespace framekit::prim::ref {

#include "primitives/negate/negate_kernel.h"

Status NegateC3IntoCopy(uint8_t* frame, int32_t frame_step, uint8_t* copy, int32_t copy_step,
                        Size roi) {
  return NegateRows<Bytes16>(frame, frame_step, copy, copy_step, roi);
}

}  // namespace framekit::prim::ref

// Negate into a copy, SSE2 level: classes 1 to 5. The vector loop of negate_kernel.h with
// 16-byte vectors, the rest of a row byte by byte.
#include <cstdint>
#include <cstring>

#include "primitives/core/checks.h"
#include "primitives/negate/negate.h"

namespace framekit::prim::sse2 {

#include "primitives/negate/negate_kernel.h"

Status NegateC3IntoCopy(uint8_t* frame, int32_t frame_step, uint8_t* copy, int32_t copy_step,
                        Size roi) {
  return NegateRows<Bytes16>(frame, frame_step, copy, copy_step, roi);
}

}  // namespace framekit::prim::sse2

#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/parity/parity.h"

namespace framekit::prim::ref {

Status CopyParity_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t parity) {
  if (const Status s = CheckCopyParity(src, dst, roi, parity); s != ippStsNoErr) return s;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* in = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    for (int64_t x = parity; x < roi.width; x += 2) std::memcpy(out + 3 * x, in + 3 * x, 3);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

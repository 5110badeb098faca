// Negate into a copy, reference: byte by byte, the definition every vector body is tested
// against.
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/negate/negate.h"

namespace framekit::prim::ref {

Status NegateC3IntoCopy(uint8_t* frame, int32_t frame_step, uint8_t* copy, int32_t copy_step,
                        Size roi) {
  if (const Status s = CheckTwo(frame, copy, roi); s != ippStsNoErr) return s;
  const int64_t n = int64_t{roi.width} * 3;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* f = RowAt(frame, frame_step, r);
    uint8_t* c = RowAt(copy, copy_step, r);
    for (int64_t i = 0; i < n; ++i) c[i] = f[i] = static_cast<uint8_t>(255 - f[i]);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

// Reference subtraction: byte by byte.
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/sub/sub.h"

namespace framekit::prim::ref {

Status ippiSub_8u_C3IRSfs(const uint8_t* src, int32_t src_step, uint8_t* src_dst,
                          int32_t src_dst_step, Size roi, int32_t scale) {
  if (const Status s = CheckTwo(src, src_dst, roi); s != ippStsNoErr) return s;
  const int64_t n = int64_t{roi.width} * 3;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(src_dst, src_dst_step, r);
    for (int64_t i = 0; i < n; ++i) d[i] = SubScaledByte(d[i], s[i], scale);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

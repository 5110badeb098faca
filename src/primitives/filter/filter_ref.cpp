// Sharpen filter, reference level: class 0.
#include <cstdint>

#include "primitives/filter/filter.h"
#include "primitives/filter/filter_kernels.h"

namespace framekit::prim::ref {

Status ippiFilterSharpen_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi) {
  if (const Status s = filter::CheckSharpen(src, src_step, dst, dst_step, roi); s != ippStsNoErr) {
    return s;
  }
  for (int32_t y = 0; y < roi.height; ++y) {
    filter::SharpenBytes(RowAt(src, src_step, y - 1), RowAt(src, src_step, y),
                         RowAt(src, src_step, y + 1), RowAt(dst, dst_step, y), 0,
                         int64_t{3} * roi.width);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

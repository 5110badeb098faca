// Box-blur passes, reference level: classes 0 (columns) and 0-6 (rows).
#include <cstdint>
#include <cstring>

#include "primitives/blur/blur.h"
#include "primitives/blur/blur_kernels.h"

namespace framekit::prim::ref {

Status BlurRows(uint8_t* p, int32_t step, Size roi, int32_t radius, uint8_t* row) {
  if (const Status s = blur::CheckPass(p, row, roi, radius); s != ippStsNoErr) return s;
  blur::ScalarRows(p, step, roi, radius, row, 0);
  return ippStsNoErr;
}

Status BlurColumns(uint8_t* p, int32_t step, Size roi, int32_t radius, int32_t rounded_width,
                   uint8_t* work) {
  if (const Status s = blur::CheckPass(p, work, roi, radius); s != ippStsNoErr) return s;
  blur::ScalarStrips(p, step, roi, radius, 0, blur::RoundedEnd(roi, rounded_width), work);
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

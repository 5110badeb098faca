// Rotation, SSE2 level: the shared body of rotate_fast.h compiled for this level.
#include "primitives/rotate/rotate.h"
#include "primitives/rotate/rotate_fast.h"

namespace framekit::prim::sse2 {

Status ippiRotate_8u_C3R(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                         uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle,
                         double x_shift, double y_shift, int32_t interpolation) {
  return rotate::Fast<rotate::PlainKernels, 3>(src, src_size, src_step, src_roi, dst, dst_step,
                                               dst_roi, angle, x_shift, y_shift, interpolation);
}
Status ippiRotate_8u_C4R(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                         uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle,
                         double x_shift, double y_shift, int32_t interpolation) {
  return rotate::Fast<rotate::PlainKernels, 4>(src, src_size, src_step, src_roi, dst, dst_step,
                                               dst_roi, angle, x_shift, y_shift, interpolation);
}

}  // namespace framekit::prim::sse2

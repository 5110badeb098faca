#include "geometry/rotate_ops.h"

#include <cstring>

#include "geometry/resize_ops.h"
#include "primitives/core/memory.h"
#include "primitives/core/strides.h"
#include "primitives/resize/resize.h"
#include "primitives/rotate/rotate.h"

namespace framekit::geometry {

void RotateFrame(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp, double angle,
                 int32_t stretch, uint8_t* buffer, int32_t* size_holder, int channels) {
  if (angle == 0.0 || angle == 360.0) return;
  const bool one_shot = size_holder != nullptr && *size_holder == 0;
  if (frame != nullptr && temp != nullptr && width >= 1 && height >= 1) {
    const int32_t bits = 8 * channels;
    const int32_t stride = BitmapStride(width, bits);
    const auto frame_bytes = static_cast<size_t>(stride) * static_cast<size_t>(height);
    auto& rotate = channels == 3 ? prim::ippiRotate_8u_C3R : prim::ippiRotate_8u_C4R;
    const Rect whole{0, 0, width, height};
    std::memset(temp, 0, frame_bytes);
    if (stretch != 0 && (angle == 90.0 || angle == 270.0)) {
      // A quarter turn into temp, `height` pixels wide, then stretched back over the frame.
      const double xs = angle == 90.0 ? 0.0 : height, ys = angle == 90.0 ? width : 0.0;
      const Rect turned{0, 0, height, width};
      rotate(frame, {width, height}, stride, &whole, temp, BitmapStride(height, bits), &turned,
             angle, xs, ys, prim::kResizeLinear);  // statuses dropped
      auto& resize = channels == 3 ? ResizeRGB24Region : ResizeRGB32Region;
      resize(temp, {height, width}, turned, frame, whole, prim::kResizeLinear,
             {&buffer, size_holder});
    } else {
      double xs = 0.0, ys = 0.0;
      prim::ippiGetRotateShift(width * 0.5, height * 0.5, angle, &xs, &ys);
      rotate(frame, {width, height}, stride, &whole, temp, stride, &whole, angle, xs, ys,
             prim::kResizeLinear);
      std::memcpy(frame, temp, frame_bytes);
    }
  }
  if (one_shot && buffer != nullptr) prim::ippiFree(buffer);
}

}  // namespace framekit::geometry

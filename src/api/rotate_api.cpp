// Rotation exports: argument forwarding only.
#include "framekit/framekit.h"
#include "geometry/rotate_ops.h"
#include "primitives/rotate/rotate.h"

namespace prim = framekit::prim;

extern "C" {

void RotateIn(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp, double angle,
              int32_t stretch_quarter_turns, uint8_t* buffer, int32_t* buffer_size) noexcept {
  framekit::geometry::RotateFrame(frame, width, height, temp, angle, stretch_quarter_turns, buffer,
                                  buffer_size, 3);
}

void RotateIn32(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp, double angle,
                int32_t stretch_quarter_turns, uint8_t* buffer, int32_t* buffer_size) noexcept {
  framekit::geometry::RotateFrame(frame, width, height, temp, angle, stretch_quarter_turns, buffer,
                                  buffer_size, 4);
}

int32_t zqippiRotate_8u_C3R(const uint8_t* src, FrameKitSize src_size, int32_t src_step,
                            const FrameKitRegion* src_roi, uint8_t* dst, int32_t dst_step,
                            const FrameKitRegion* dst_roi, double angle, double x_shift,
                            double y_shift, int32_t interpolation) noexcept {
  // The regions as the primitive's own type (null stays null: the primitive says -8).
  auto region = [](const FrameKitRegion* r, prim::Rect* copy) -> const prim::Rect* {
    if (r == nullptr) return nullptr;
    *copy = {r->x, r->y, r->width, r->height};
    return copy;
  };
  prim::Rect src_copy{}, dst_copy{};
  return prim::ippiRotate_8u_C3R(
      src, {src_size.width, src_size.height}, src_step, region(src_roi, &src_copy), dst, dst_step,
      region(dst_roi, &dst_copy), angle, x_shift, y_shift, interpolation);
}

}  // extern "C"

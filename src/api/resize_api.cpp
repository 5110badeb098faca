// Resize exports: argument forwarding only (ResizeRGB24 maps its mode to the primitive's code).
#include "framekit/framekit.h"
#include "geometry/resize_ops.h"
#include "primitives/core/wrap.h"
#include "primitives/resize/resize.h"

namespace geo = framekit::geometry;
namespace prim = framekit::prim;

extern "C" {

int32_t ResizeRGB24(const uint8_t* src, int32_t src_width, int32_t src_height, uint8_t* dst,
                    int32_t dst_width, int32_t dst_height, int32_t mode, uint8_t** buffer,
                    int32_t* buffer_size) noexcept {
  int32_t code = prim::kResizeNearest;
  switch (mode) {
    case 2:
      code = prim::kResizeLinear;
      break;
    case 3:
      code = prim::kResizeCubic;
      break;
    case 4:
      code = prim::kResizeLanczos;
      break;
    default:
      break;
  }
  return geo::ResizeRGB24Region(src, {src_width, src_height}, {0, 0, src_width, src_height}, dst,
                                {0, 0, dst_width, dst_height}, code, {buffer, buffer_size});
}

void ResizeRGB32LB(uint8_t* src, FrameKitSize src_size, const FrameKitRect* crop, uint8_t* dst,
                   uint8_t* work, FrameKitSize dst_size, int32_t interpolation, uint8_t* buffer,
                   int32_t buffer_size) noexcept {
  if (crop == nullptr) return;
  const prim::Rect rect{crop->left, crop->top, framekit::WrapSub(crop->right, crop->left),
                        framekit::WrapSub(crop->bottom, crop->top)};
  geo::ResizeRGB32Letterbox(src, {src_size.width, src_size.height}, rect, dst, work,
                            {dst_size.width, dst_size.height}, interpolation, buffer, buffer_size);
}

int32_t ResizeYUY2(const uint8_t* src, uint8_t* dst, int32_t src_width, int32_t src_height,
                   int32_t dst_width, int32_t dst_height) noexcept {
  return geo::ResizeYUY2(src, dst, src_width, src_height, dst_width, dst_height);
}

}  // extern "C"

// Flip, crop, cut and fill exports: argument forwarding only.
#include "convert/geometry.h"
#include "framekit/framekit.h"

namespace {

using framekit::convert::HostRect;
using framekit::convert::PixelBytes;
namespace prim = framekit::prim;

HostRect ToHost(const FrameKitRect* r) { return {r->left, r->top, r->right, r->bottom}; }

}  // namespace

extern "C" {

int32_t FlipHorizontalRGB24(uint8_t* frame, int32_t width, int32_t height) noexcept {
  return framekit::convert::FlipRGB24(frame, width, height, prim::kAxisHorizontal);
}
int32_t FlipVerticalRGB24(uint8_t* frame, int32_t width, int32_t height) noexcept {
  return framekit::convert::FlipRGB24(frame, width, height, prim::kAxisVertical);
}
int32_t FlipHorizontalRGB32(uint8_t* frame, int32_t width, int32_t height) noexcept {
  return framekit::convert::FlipRGB32(frame, width, height, prim::kAxisHorizontal);
}
int32_t FlipVerticalRGB32(uint8_t* frame, int32_t width, int32_t height) noexcept {
  return framekit::convert::FlipRGB32(frame, width, height, prim::kAxisVertical);
}
int32_t FlipHorizontalRGB32Ex(const uint8_t* src, uint8_t* dst, int32_t width,
                              int32_t height) noexcept {
  return framekit::convert::FlipRGB32Into(src, dst, width, height, prim::kAxisHorizontal);
}
int32_t FlipVerticalRGB32Ex(const uint8_t* src, uint8_t* dst, int32_t width,
                            int32_t height) noexcept {
  return framekit::convert::FlipRGB32Into(src, dst, width, height, prim::kAxisVertical);
}
int32_t FlipHorizontalYUY2(uint8_t* frame, int32_t width, int32_t height) noexcept {
  return framekit::convert::FlipYUY2Rows(frame, width, height);
}
int32_t FlipHorizontalYUY2Ex(const uint8_t* src, uint8_t* dst, int32_t width,
                             int32_t height) noexcept {
  return framekit::convert::FlipYUY2RowsInto(src, dst, width, height);
}

int32_t Crop24(const uint8_t* src, int32_t width, int32_t /*height*/, uint8_t* dst,
               const FrameKitRect* rect) noexcept {
  return framekit::convert::Crop(PixelBytes::kRGB24, src, width, dst, ToHost(rect));
}
int32_t Crop32(const uint8_t* src, int32_t width, int32_t /*height*/, uint8_t* dst,
               const FrameKitRect* rect) noexcept {
  return framekit::convert::Crop(PixelBytes::kRGB32, src, width, dst, ToHost(rect));
}

void ImageCutRGB24(const uint8_t* src, int32_t width, int32_t height, uint8_t* dst,
                   int32_t cut_width, int32_t cut_height) noexcept {
  framekit::convert::Cut(PixelBytes::kRGB24, src, width, height, dst, cut_width, cut_height);
}
void ImageCutRGB32(const uint8_t* src, int32_t width, int32_t height, uint8_t* dst,
                   int32_t cut_width, int32_t cut_height) noexcept {
  framekit::convert::Cut(PixelBytes::kRGB32, src, width, height, dst, cut_width, cut_height);
}

int32_t FillColor(uint8_t* frame, int32_t width, int32_t /*height*/, const FrameKitRect* rect,
                  uint32_t colour) noexcept {
  return framekit::convert::Fill(frame, width, ToHost(rect), colour);
}

}  // extern "C"

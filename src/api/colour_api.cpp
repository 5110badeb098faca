// Colour-conversion exports: argument forwarding only.
#include "convert/colour.h"
#include "framekit/framekit.h"

extern "C" {

int32_t YUY2ToRGB24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) noexcept {
  return framekit::convert::Yuy2ToRgb24(src, dst, width, height);
}
int32_t RGB24ToYUY2(uint8_t* src, uint8_t* dst, int32_t width, int32_t height) noexcept {
  return framekit::convert::Rgb24ToYuy2(src, dst, width, height);
}
int32_t YV12ToRGB24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) noexcept {
  return framekit::convert::Yv12ToRgb24(src, dst, width, height);
}
int32_t RGB24ToYV12(uint8_t* src, uint8_t* dst, int32_t width, int32_t height) noexcept {
  return framekit::convert::Rgb24ToYv12(src, dst, width, height);
}
int32_t RGB32ToRGB24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) noexcept {
  return framekit::convert::Rgb32ToRgb24(src, dst, width, height);
}
int32_t RGB24ToRGB32(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) noexcept {
  return framekit::convert::Rgb24ToRgb32(src, dst, width, height);
}
int32_t RGB24ToRGBA(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height,
                    uint8_t alpha) noexcept {
  return framekit::convert::Rgb24ToRgba(src, dst, width, height, alpha);
}
int32_t RGB24ToBGR24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height,
                     int32_t step) noexcept {
  return framekit::convert::Rgb24ToBgr24(src, dst, width, height, step);
}

}  // extern "C"

#include "image.h"

#include <algorithm>
#include <cstring>

namespace framekit::tool {
namespace {

uint8_t Clamp255(int32_t v) { return static_cast<uint8_t>(std::clamp(v, 0, 255)); }

struct Yuv {
  int32_t y, u, v;
};

Yuv ToYuv(const uint8_t* bgr) {
  const int32_t b = bgr[0], g = bgr[1], r = bgr[2];
  return {((66 * r + 129 * g + 25 * b + 128) >> 8) + 16,
          ((-38 * r - 74 * g + 112 * b + 128) >> 8) + 128,
          ((112 * r - 94 * g - 18 * b + 128) >> 8) + 128};
}

void FromYuv(int32_t y, int32_t u, int32_t v, uint8_t* bgr) {
  const int32_t c = 298 * (y - 16) + 128, d = u - 128, e = v - 128;
  bgr[0] = Clamp255((c + 516 * d) >> 8);
  bgr[1] = Clamp255((c - 100 * d - 208 * e) >> 8);
  bgr[2] = Clamp255((c + 409 * e) >> 8);
}

}  // namespace

int32_t StrideFor(PixelFormat format, int32_t width) {
  switch (format) {
    case PixelFormat::kRGB24:
      return (3 * width + 3) / 4 * 4;
    case PixelFormat::kRGB32:
      return 4 * width;
    case PixelFormat::kYUY2:
      return (width * 16 + 31) / 32 * 4;
  }
  return 0;
}

Image MakeImage(PixelFormat format, int32_t width, int32_t height) {
  Image image;
  image.format = format;
  if (width < 1 || height < 1) return image;
  image.width = width;
  image.height = height;
  image.stride = StrideFor(format, width);
  image.bytes.assign(static_cast<size_t>(image.stride) * static_cast<size_t>(height), 0);
  return image;
}

bool SamePixels(const Image& a, const Image& b) {
  if (a.format != b.format || a.width != b.width || a.height != b.height) return false;
  const size_t bytes_per_pixel =
      a.format == PixelFormat::kRGB24 ? 3 : (a.format == PixelFormat::kRGB32 ? 4 : 2);
  const size_t row_bytes = bytes_per_pixel * static_cast<size_t>(a.width);
  for (int32_t y = 0; y < a.height; ++y) {
    if (std::memcmp(a.Row(y), b.Row(y), row_bytes) != 0) return false;
  }
  return true;
}

Image RGB24ToRGB32(const Image& rgb24) {
  Image out = MakeImage(PixelFormat::kRGB32, rgb24.width, rgb24.height);
  for (int32_t y = 0; y < out.height; ++y) {
    const uint8_t* s = rgb24.Row(y);
    uint8_t* d = out.Row(y);
    for (int32_t x = 0; x < out.width; ++x, s += 3, d += 4) {
      d[0] = s[0];
      d[1] = s[1];
      d[2] = s[2];
      d[3] = 255;
    }
  }
  return out;
}

Image RGB32ToRGB24(const Image& rgb32) {
  Image out = MakeImage(PixelFormat::kRGB24, rgb32.width, rgb32.height);
  for (int32_t y = 0; y < out.height; ++y) {
    const uint8_t* s = rgb32.Row(y);
    uint8_t* d = out.Row(y);
    for (int32_t x = 0; x < out.width; ++x, s += 4, d += 3) std::memcpy(d, s, 3);
  }
  return out;
}

// An odd width leaves the last pixel without a partner: it is paired with itself, and its
// group's second half lands in the row padding that the aligned stride provides.
Image RGB24ToYUY2(const Image& rgb24) {
  Image out = MakeImage(PixelFormat::kYUY2, rgb24.width, rgb24.height);
  for (int32_t y = 0; y < out.height; ++y) {
    const uint8_t* s = rgb24.Row(y);
    uint8_t* d = out.Row(y);
    for (int32_t x = 0; x < out.width; x += 2, d += 4) {
      const Yuv p0 = ToYuv(s + 3 * x);
      const Yuv p1 = ToYuv(s + 3 * std::min(x + 1, out.width - 1));
      d[0] = Clamp255(p0.y);
      d[1] = Clamp255((p0.u + p1.u + 1) >> 1);
      d[2] = Clamp255(p1.y);
      d[3] = Clamp255((p0.v + p1.v + 1) >> 1);
    }
  }
  return out;
}

Image YUY2ToRGB24(const Image& yuy2) {
  Image out = MakeImage(PixelFormat::kRGB24, yuy2.width, yuy2.height);
  for (int32_t y = 0; y < out.height; ++y) {
    const uint8_t* s = yuy2.Row(y);
    uint8_t* d = out.Row(y);
    for (int32_t x = 0; x < out.width; ++x) {
      const uint8_t* group = s + 4 * (x / 2);
      FromYuv(group[(x % 2) * 2], group[1], group[3], d + 3 * x);
    }
  }
  return out;
}

}  // namespace framekit::tool

// Pictures the demo draws, hands to the library and saves: one owned buffer with the row stride
// each format uses in the library's frame functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace framekit::tool {

enum class PixelFormat {
  kRGB24,  // blue, green, red; rows at the aligned row stride (row bytes rounded up to 4)
  kRGB32,  // blue, green, red, alpha; rows of 4 * width bytes
  kYUY2,   // Y0, U, Y1, V per pixel pair; rows at the aligned bitmap stride (16 bits a pixel)
};

struct Image {
  PixelFormat format = PixelFormat::kRGB24;
  int32_t width = 0;
  int32_t height = 0;
  int32_t stride = 0;
  std::vector<uint8_t> bytes;

  bool empty() const { return bytes.empty(); }
  uint8_t* data() { return bytes.data(); }
  const uint8_t* data() const { return bytes.data(); }
  uint8_t* Row(int32_t y) { return bytes.data() + static_cast<std::size_t>(y) * stride; }
  const uint8_t* Row(int32_t y) const {
    return bytes.data() + static_cast<std::size_t>(y) * stride;
  }
};

// The row stride of a format at a width, as the library computes it for that format.
int32_t StrideFor(PixelFormat format, int32_t width);

// A zero-filled image; an empty one when width or height is below 1.
Image MakeImage(PixelFormat format, int32_t width, int32_t height);

// True when the two images have the same format, size and pixels (row padding is ignored).
bool SamePixels(const Image& a, const Image& b);

// Format changes done by the demo itself, so each flip can be shown on the format it takes.
// RGB32 gets an opaque alpha byte. YUY2 uses BT.601 studio range with 8-bit fixed-point
// coefficients; the chroma of a pixel pair is the rounded mean of the two pixels.
Image RGB24ToRGB32(const Image& rgb24);
Image RGB32ToRGB24(const Image& rgb32);
Image RGB24ToYUY2(const Image& rgb24);
Image YUY2ToRGB24(const Image& yuy2);

}  // namespace framekit::tool

// Flip, crop, cut and fill of whole frames. Each function uses the stride rule of its family and
// hands back the status of the primitive it calls; nothing here checks rectangles or cut sizes
// against the frame.
#pragma once

#include <cstdint>

#include "primitives/core/types.h"

namespace framekit::convert {

using prim::Status;

// The rectangle as the host passes it: left, top, right, bottom; right and bottom exclusive.
struct HostRect {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
};

enum class PixelBytes : int32_t { kRGB24 = 3, kRGB32 = 4 };

Status FlipRGB24(uint8_t* frame, int32_t width, int32_t height, int32_t axis);
Status FlipRGB32(uint8_t* frame, int32_t width, int32_t height, int32_t axis);
Status FlipRGB32Into(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height, int32_t axis);
Status FlipYUY2Rows(uint8_t* frame, int32_t width, int32_t height);
Status FlipYUY2RowsInto(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height);

Status Crop(PixelBytes bpp, const uint8_t* src, int32_t width, uint8_t* dst, const HostRect& rect);
void Cut(PixelBytes bpp, const uint8_t* src, int32_t width, int32_t height, uint8_t* dst,
         int32_t cut_width, int32_t cut_height);
Status Fill(uint8_t* frame, int32_t width, const HostRect& rect, uint32_t colour);

}  // namespace framekit::convert

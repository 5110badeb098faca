// Whole-frame and region resizes over the resize primitives, the letterbox fit, and the
// work-buffer cache they share.
//
// The cache is the caller's pair (buffer, size): a buffer of exactly the size the primitive asks
// for is reused; otherwise a held buffer is released and a new one of that size allocated and
// stored back. Allocation failures are passed on: the primitive then reports -8.
#pragma once

#include <cstdint>

#include "primitives/core/types.h"

namespace framekit::geometry {

using prim::Rect;
using prim::Size;
using prim::Status;

// The caller's work-buffer cache.
struct BufferCache {
  uint8_t** buffer;
  int32_t* size;
};

// Scales crop of an RGB24 (RGB32) source of src_size into dst_rect of a destination whose rows
// are dst_rect.width pixels long (aligned row stride), through the cache. The factor is
// dst_rect / crop per axis and the crop's corner enters only as the shift -trunc(crop.x / xf):
// the whole source is the primitive's source region.
Status ResizeRGB24Region(const uint8_t* src, Size src_size, const Rect& crop, uint8_t* dst,
                         const Rect& dst_rect, int32_t interpolation, BufferCache cache);
Status ResizeRGB32Region(const uint8_t* src, Size src_size, const Rect& crop, uint8_t* dst,
                         const Rect& dst_rect, int32_t interpolation, BufferCache cache);

// The largest rectangle of src's aspect that fits box, centred; each side made even by adding 1
// when odd (so an odd box side gives a fit one larger, at offset -1).
Rect FitLetterboxRect(Size src, Size box);

// The letterbox: crop scaled to the fit of src_size in dst_size, written packed into dst, the
// source cleared, the picture copied into work at the fit's place (clipped to work's frame) and
// work copied to dst. buffer and buffer_size are the caller's by value: a buffer of the asked
// size is used; any other is released and a fresh one used for this call only (and freed).
void ResizeRGB32Letterbox(uint8_t* src, Size src_size, const Rect& crop, uint8_t* dst,
                          uint8_t* work, Size dst_size, int32_t interpolation, uint8_t* buffer,
                          int32_t buffer_size);

// YUY2 nearest neighbour, whole frames, bitmap strides of 2 bytes a pixel.
Status ResizeYUY2(const uint8_t* src, uint8_t* dst, int32_t src_width, int32_t src_height,
                  int32_t dst_width, int32_t dst_height);

}  // namespace framekit::geometry

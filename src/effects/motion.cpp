// Motion and transition effects: zoom and pan through the region resize, shake, the two mirrors
// and the fade, all on packed RGB24 rows in place.
#include <cstring>

#include "effects/effects.h"
#include "effects/frame_walk.h"
#include "geometry/resize_ops.h"
#include "primitives/core/lane_math.h"
#include "primitives/core/memory.h"
#include "primitives/core/strides.h"
#include "primitives/core/wrap.h"
#include "primitives/mirror/mirror.h"
#include "primitives/parity/parity.h"
#include "primitives/resize/resize.h"

namespace framekit::effects {
namespace {

int32_t Min(int32_t a, int32_t b) { return a < b ? a : b; }
int32_t Max(int32_t a, int32_t b) { return a > b ? a : b; }

// b - a of two 64-bit times, wrapping, as a double.
double Elapsed(int64_t a, int64_t b) {
  return static_cast<double>(
      static_cast<int64_t>(static_cast<uint64_t>(b) - static_cast<uint64_t>(a)));
}

// Clears the scratch frame, resizes `crop` of the frame onto all of it (cubic) and copies it back
// over the frame. The region resize works on aligned rows; where a packed row is not a multiple
// of 4 bytes the frame's bytes are read as aligned rows from a copy (zeros past the frame) and
// the first 3 * width * height bytes of the aligned result become the scratch frame, so nothing
// outside the caller's frame or scratch is read or written.
void ResizeOnto(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch,
                const prim::Rect& crop, uint8_t* buffer, int32_t* size) {
  const int32_t entry = size != nullptr ? *size : -1;
  uint8_t* held = buffer;  // the resize's buffer holder: the caller's pointer is never updated
  const size_t bytes = RowBytes(width, height);
  if (bytes > 0) {
    std::memset(scratch, 0, bytes);
    const prim::Size whole{width, height};
    const prim::Rect target{0, 0, width, height};
    const geometry::BufferCache cache{&held, size};
    const auto stride = static_cast<size_t>(RowByteStride(WrapMul(3, width)));
    if (stride == size_t{3} * static_cast<size_t>(width)) {
      geometry::ResizeRGB24Region(frame, whole, crop, scratch, target, prim::kResizeCubic, cache);
      std::memcpy(frame, scratch, bytes);
    } else {
      const size_t aligned = stride * static_cast<size_t>(height);
      uint8_t* in = prim::ippsMalloc_8u(static_cast<int32_t>(aligned));
      uint8_t* out = prim::ippsMalloc_8u(static_cast<int32_t>(aligned));
      if (in != nullptr && out != nullptr && aligned <= INT32_MAX) {
        std::memcpy(in, frame, bytes);
        std::memset(in + bytes, 0, aligned - bytes);
        std::memset(out, 0, aligned);
        geometry::ResizeRGB24Region(in, whole, crop, out, target, prim::kResizeCubic, cache);
        std::memcpy(scratch, out, bytes);
        std::memcpy(frame, scratch, bytes);
      }
      prim::ippiFree(in);
      prim::ippiFree(out);
    }
  }
  if (entry == 0 && held != nullptr) prim::ippiFree(held);
}

}  // namespace

void Zoom(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch, double zoom_x,
          double zoom_y, int32_t centre_x, int32_t centre_y, uint8_t* buffer, int32_t* size) {
  if (frame == nullptr || scratch == nullptr) return;
  if (zoom_x == 1.0 && zoom_y == 1.0) return;
  const int32_t sw = prim::Truncate(width / zoom_x), sh = prim::Truncate(height / zoom_y);
  // The offset is multiplied by the zoom twice: the region resize divides the crop's corner by
  // the scale once, so the picture moves by offset * zoom destination pixels.
  auto origin = [](int32_t spare, int32_t centre, double zoom) {
    const int32_t clamped = Min(spare, Max(WrapAdd(centre, WrapDiv(spare, 2)), 0));
    return prim::Truncate(clamped * zoom * zoom);
  };
  const prim::Rect crop{origin(WrapSub(width, sw), centre_x, zoom_x),
                        origin(WrapSub(height, sh), centre_y, zoom_y), sw, sh};
  ResizeOnto(frame, width, height, scratch, crop, buffer, size);
}

void Pan(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch, const PanRect& from,
         const PanRect& to, int64_t start, int64_t end, int64_t now, uint8_t* buffer,
         int32_t* size) {
  if (frame == nullptr || scratch == nullptr) return;
  const double span = Elapsed(start, end), elapsed = Elapsed(start, now);
  // Progress is not clamped: before the start or after the end the rectangle keeps moving.
  auto along = [&](int32_t a, int32_t b, int32_t base) {
    return WrapAdd(prim::Truncate(static_cast<double>(WrapSub(b, a)) / span * elapsed), base);
  };
  const prim::Rect crop{
      along(from.x, to.x, from.x), along(from.y, to.y, from.y),
      along(Min(width, from.width), Min(width, to.width), Min(from.width, width)),
      along(Min(height, from.height), Min(height, to.height), Min(from.height, height))};
  ResizeOnto(frame, width, height, scratch, crop, buffer, size);
}

void ShakeDown(uint8_t* frame, int32_t width, int32_t height, int32_t divisor) {
  if (frame == nullptr || divisor == 0 || width < 1) return;
  const int32_t shift = WrapDiv(height, divisor);
  if (shift <= 0 || shift >= height) return;  // nothing moves (or it would leave the frame)
  // Even columns up by `shift` rows (rows in increasing order), odd columns down (rows in
  // decreasing order, as a negative step); the rows each move vacates keep what they held.
  const int32_t step = WrapMul(3, width);
  const size_t row = size_t{3} * static_cast<size_t>(width);
  auto at = [&](int32_t y) { return frame + row * static_cast<size_t>(y); };
  const prim::Size moved{width, height - shift};
  prim::CopyParity_8u_C3R(at(shift), step, at(0), step, moved, 0);
  prim::CopyParity_8u_C3R(at(height - shift - 1), -step, at(height - 1), -step, moved, 1);
}

void MirrorDown(uint8_t* frame, int32_t width, int32_t height) {
  if (frame == nullptr || width < 1 || height < 1) return;
  const size_t row = size_t{3} * static_cast<size_t>(width);
  // Up to height / 2 inclusive: the last step copies a row onto itself or onto its equal.
  for (int32_t k = 0; k <= height / 2; ++k) {
    std::memmove(frame + row * static_cast<size_t>(height - 1 - k),
                 frame + row * static_cast<size_t>(k), row);
  }
}

void MirrorRight(uint8_t* frame, int32_t width, int32_t height) {
  if (frame == nullptr || width < 1 || height < 1) return;
  // Pixel width - 1 - i takes pixel i for i up to width / 2: the right half becomes the left half
  // reversed (the last step, and a middle pixel, change nothing). The left half is copied across
  // and then reversed in place by the mirror primitive.
  const int32_t half = width / 2;
  if (half < 1) return;
  const size_t row = size_t{3} * static_cast<size_t>(width);
  uint8_t* right = frame + size_t{3} * static_cast<size_t>(width - half);
  for (int32_t y = 0; y < height; ++y) {
    std::memcpy(right + row * static_cast<size_t>(y), frame + row * static_cast<size_t>(y),
                size_t{3} * static_cast<size_t>(half));
  }
  if (half > 1) {
    prim::ippiMirror_8u_C3IR(right, static_cast<int32_t>(row), {half, height}, prim::kAxisVertical);
  }
}

void FadeInOut(uint8_t* frame, int32_t width, int32_t height, int64_t start, int64_t end,
               int64_t now, int32_t fade_in) {
  if (frame == nullptr) return;
  const double p = Elapsed(start, now) / Elapsed(start, end);
  const double amount = fade_in == 0 ? p * 255.0 : (1.0 - p) * 255.0;
  DarknessRows(frame, width, height, prim::Truncate(amount));
}

}  // namespace framekit::effects

// Marble, spray and mosaic on packed RGB24 frames.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "effects/effects.h"
#include "effects/random.h"
#include "primitives/core/trig.h"
#include "primitives/core/wrap.h"

namespace framekit::effects {
namespace {

struct FreeDeleter {
  void operator()(void* p) const { std::free(p); }
};
template <typename T>
using Owned = std::unique_ptr<T[], FreeDeleter>;

uint8_t* PixelAt(uint8_t* frame, int64_t width, int64_t x, int64_t y) {
  return frame + 3 * (y * width + x);
}

// |v| as a pixel index: truncated, plus one when the dropped fraction is above one half (a half
// exactly rounds down). -1 when v is not a number or beyond any index.
int64_t MarbleIndex(double v) {
  const double a = v < 0 ? -v : v;
  if (!(a < 2147483648.0)) return -1;
  const auto i = static_cast<int64_t>(a);
  return a - static_cast<double>(i) > 0.5 ? i + 1 : i;
}

}  // namespace

// Forward scatter into a zeroed image: pixel (x, y) goes to (tx, ty), later pixels winning;
// pixels nothing reaches stay black. Per column sx = -(sin((x mod T) / S) * S), per row
// cy = cos((y mod T) / S) * S, and tx = |x + sx + cy|, ty = |y + cy + sx| in that order.
void Marble(uint8_t* frame, int32_t width, int32_t height, double scale, int32_t period) {
  if (frame == nullptr || width < 1 || height < 1 || period == 0) return;
  const size_t bytes = size_t{3} * static_cast<size_t>(width) * static_cast<size_t>(height);
  Owned<uint8_t> image(static_cast<uint8_t*>(std::calloc(bytes, 1)));
  Owned<double> sx(static_cast<double*>(std::malloc(sizeof(double) * static_cast<size_t>(width))));
  if (!image || !sx) return;
  for (int32_t x = 0; x < width; ++x) {
    sx[x] = -(prim::Sin(static_cast<double>(x % period) / scale) * scale);
  }
  for (int32_t y = 0; y < height; ++y) {
    const double cy = prim::Cos(static_cast<double>(y % period) / scale) * scale;
    for (int32_t x = 0; x < width; ++x) {
      const int64_t tx = MarbleIndex(static_cast<double>(x) + sx[x] + cy);
      const int64_t ty = MarbleIndex(static_cast<double>(y) + cy + sx[x]);
      if (tx < 0 || ty < 0 || tx >= width || ty >= height) continue;
      std::memcpy(PixelAt(image.get(), width, tx, ty), PixelAt(frame, width, x, y), 3);
    }
  }
  std::memcpy(frame, image.get(), bytes);
}

// Columns outer, rows inner, in place: a pixel may take a value moved earlier in the same call.
void Spray(uint8_t* frame, int32_t width, int32_t height, int32_t amount) {
  if (frame == nullptr || amount == 0 || amount == -1 || width < 1) return;
  const int32_t modulus = WrapAdd(amount, 1);
  for (int64_t x = 0; x < width; ++x) {
    for (int64_t y = 0; y < height; ++y) {
      const int32_t r = Rand() % modulus;
      const int64_t dx = r - Rand() % (2 * r + 1);
      const int64_t dy = r - Rand() % (2 * r + 1);
      const int64_t sx = x + dx, sy = y + dy;
      if (sx < 0 || sx >= width || sy < 0 || sy >= height) continue;
      std::memmove(PixelAt(frame, width, x, y), PixelAt(frame, width, sx, sy), 3);
    }
  }
}

// A run of `pixels` pixels of one colour, written 8 bytes at a time (2 pixels and 2 bytes of the
// next run, which that run then overwrites): up to 8 bytes past the run may be written.
void FillRun(uint8_t* dst, int64_t pixels, const uint8_t colour[3]) {
  uint8_t pattern[8];
  for (int k = 0; k < 8; ++k) pattern[k] = colour[k % 3];
  for (int64_t at = 0; at < 3 * pixels; at += 6) std::memcpy(dst + at, pattern, 8);
}

// Every pixel of the covered area takes the colour of its block's top-left pixel. The area is
// the rectangle, or its first row or column when it is empty that way (the block loops test
// their bounds after a first pass). Blocks only read their own corner pixel, which they rewrite
// with its own value, so the order of the passes does not matter: each block row is built once
// from its corner pixels, in a row of its own, and copied to every row of the block.
void Mosaic(uint8_t* frame, int32_t width, int32_t height, int32_t block, const MosaicRect& rect) {
  if (frame == nullptr || block <= 1 || width < 1 || height < 1) return;
  const int64_t b = block, w = width, h = height;
  const int64_t left = rect.left, top = rect.top;
  const int64_t right = rect.right > left ? rect.right : left + 1;
  const int64_t bottom = rect.bottom > top ? rect.bottom : top + 1;
  // Columns and rows of the area inside the frame.
  const int64_t x0 = left > 0 ? left : 0, x1 = right < w ? right : w;
  const int64_t y0 = top > 0 ? top : 0, y1 = bottom < h ? bottom : h;
  if (x0 >= x1 || y0 >= y1) return;
  // A block whose corner lies outside the frame (left or top below 0) has no colour to give:
  // its pixels stay as they are. So the copied columns start at the first corner at or right
  // of column 0, and block rows whose corner row is above the frame are skipped.
  const int64_t from = left < 0 ? left + (-left + b - 1) / b * b : left;
  if (from >= x1) return;
  const size_t bytes = static_cast<size_t>(3 * (x1 - from));
  Owned<uint8_t> built(static_cast<uint8_t*>(std::malloc(bytes + 8)));
  if (!built) return;
  for (int64_t yb = top + (y0 - top) / b * b; yb < y1; yb += b) {
    if (yb < 0) continue;
    const uint8_t* corners = PixelAt(frame, w, 0, yb);
    for (int64_t xr = from; xr < x1; xr += b) {
      FillRun(built.get() + 3 * (xr - from), (xr + b < x1 ? xr + b : x1) - xr, corners + 3 * xr);
    }
    const int64_t rows_end = yb + b < y1 ? yb + b : y1;
    for (int64_t y = yb > y0 ? yb : y0; y < rows_end; ++y) {
      std::memcpy(PixelAt(frame, w, from, y), built.get(), bytes);
    }
  }
}

}  // namespace framekit::effects

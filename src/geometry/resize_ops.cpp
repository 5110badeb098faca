#include "geometry/resize_ops.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "primitives/copy/copy.h"
#include "primitives/core/lane_math.h"
#include "primitives/core/memory.h"
#include "primitives/core/strides.h"
#include "primitives/core/wrap.h"
#include "primitives/resize/resize.h"

namespace framekit::geometry {
namespace {

// The cache rule: reuse a buffer of exactly `size` bytes, else release it and allocate anew.
// Returns whether it allocated.
bool Refresh(BufferCache cache, int32_t size) {
  if (*cache.buffer != nullptr && *cache.size == size) return false;
  if (*cache.buffer != nullptr) prim::ippiFree(*cache.buffer);
  *cache.buffer = prim::ippsMalloc_8u(size);
  *cache.size = size;
  return true;
}

// -trunc(offset / factor) as a 32-bit integer (out of range: INT32_MIN, as the conversion
// instruction gives), then as a double.
double Shift(int32_t offset, double factor) {
  return static_cast<double>(WrapSub(0, prim::Truncate(offset / factor)));
}

template <int C>
Status RegionResize(const uint8_t* src, Size src_size, const Rect& crop, uint8_t* dst,
                    const Rect& dst_rect, int32_t interpolation, BufferCache cache) {
  if (cache.buffer == nullptr || cache.size == nullptr) return prim::ippStsNullPtrErr;
  const int32_t src_step = RowByteStride(WrapMul(C, src_size.width));
  const int32_t dst_step = RowByteStride(WrapMul(C, dst_rect.width));
  const double xf = static_cast<double>(dst_rect.width) / crop.width;
  const double yf = static_cast<double>(dst_rect.height) / crop.height;
  const Rect whole{0, 0, src_size.width, src_size.height};
  int32_t size = 0;
  prim::ippiResizeGetBufSize(&whole, &dst_rect, C, interpolation, &size);  // not checked
  Refresh(cache, size);
  auto& resize = C == 3 ? prim::ippiResizeSqrPixel_8u_C3R : prim::ippiResizeSqrPixel_8u_C4R;
  return resize(src, src_size, src_step, &whole, dst, dst_step, &dst_rect, xf, yf,
                Shift(crop.x, xf), Shift(crop.y, yf), interpolation, *cache.buffer);
}

int32_t Even(int32_t v) { return v > 0 && v % 2 == 1 ? v + 1 : v; }

}  // namespace

Status ResizeRGB24Region(const uint8_t* src, Size src_size, const Rect& crop, uint8_t* dst,
                         const Rect& dst_rect, int32_t interpolation, BufferCache cache) {
  return RegionResize<3>(src, src_size, crop, dst, dst_rect, interpolation, cache);
}

Status ResizeRGB32Region(const uint8_t* src, Size src_size, const Rect& crop, uint8_t* dst,
                         const Rect& dst_rect, int32_t interpolation, BufferCache cache) {
  return RegionResize<4>(src, src_size, crop, dst, dst_rect, interpolation, cache);
}

// Single precision as the aspect test; truncations as the conversion instruction does them.
Rect FitLetterboxRect(Size src, Size box) {
  int32_t width = 0, height = 0;
  if (box.width > 0 && box.height > 0) {
    const float aspect = static_cast<float>(src.width) / static_cast<float>(src.height);
    if (aspect > static_cast<float>(box.width) / static_cast<float>(box.height)) {
      width = box.width;
      height = prim::Truncate(static_cast<float>(src.height) / static_cast<float>(src.width) *
                              static_cast<float>(box.width));
    } else {
      height = box.height;
      width = prim::Truncate(static_cast<float>(box.height) * aspect);
    }
  }
  width = Even(width);
  height = Even(height);
  const int32_t x = WrapSub(prim::Truncate(box.width * 0.5), prim::Truncate(width * 0.5));
  const int32_t y = WrapSub(prim::Truncate(box.height * 0.5), prim::Truncate(height * 0.5));
  return {x, y, width, height};
}

void ResizeRGB32Letterbox(uint8_t* src, Size src_size, const Rect& crop, uint8_t* dst,
                          uint8_t* work, Size dst_size, int32_t interpolation, uint8_t* buffer,
                          int32_t buffer_size) {
  const Rect fit = FitLetterboxRect(src_size, dst_size);
  const int32_t src_step = RowByteStride(WrapMul(4, src_size.width));
  const int32_t fit_step = RowByteStride(WrapMul(4, fit.width));
  const double xf = static_cast<double>(fit.width) / crop.width;
  const double yf = static_cast<double>(fit.height) / crop.height;
  const Rect whole{0, 0, src_size.width, src_size.height}, target{0, 0, fit.width, fit.height};
  int32_t size = 0;
  prim::ippiResizeGetBufSize(&whole, &target, 4, interpolation, &size);  // not checked
  // The cache sees copies: a fresh buffer cannot reach the caller, so it lives for this call.
  const bool fresh = Refresh({&buffer, &buffer_size}, size);
  // The picture goes to dst, packed, unless a fit larger than the destination (an odd box side)
  // would not fit there: then to a block of its own. dst is overwritten from work at the end.
  const int64_t picture_bytes = int64_t{fit_step} * fit.height;
  const int64_t dst_bytes = int64_t{4} * dst_size.width * dst_size.height;
  uint8_t* picture = dst;
  if (picture_bytes > dst_bytes) {
    picture = picture_bytes <= INT32_MAX ? prim::ippsMalloc_8u(static_cast<int32_t>(picture_bytes))
                                         : nullptr;
  }
  prim::ippiResizeSqrPixel_8u_C4R(src, src_size, src_step, &whole, picture, fit_step, &target, xf,
                                  yf, Shift(crop.x, xf), Shift(crop.y, yf), interpolation, buffer);
  if (fresh) prim::ippiFree(buffer);
  if (src != nullptr && src_size.width > 0 && src_size.height > 0) {
    std::memset(src, 0, static_cast<size_t>(src_step) * static_cast<size_t>(src_size.height));
  }
  if (dst == nullptr || work == nullptr || dst_size.width < 1 || dst_size.height < 1) return;
  // The picture at the fit's place in work, clipped to work's frame (an odd box side puts the
  // fit one pixel before it).
  const int32_t dst_step = WrapMul(4, dst_size.width);
  const int32_t x0 = fit.x < 0 ? 0 : fit.x, y0 = fit.y < 0 ? 0 : fit.y;
  const int64_t x1 = std::min<int64_t>(int64_t{fit.x} + fit.width, dst_size.width);
  const int64_t y1 = std::min<int64_t>(int64_t{fit.y} + fit.height, dst_size.height);
  if (picture != nullptr && x0 < x1 && y0 < y1) {
    prim::ippiCopy_8u_C4R(picture + int64_t{fit_step} * (y0 - fit.y) + 4 * int64_t{x0 - fit.x},
                          fit_step, work + int64_t{dst_step} * y0 + 4 * int64_t{x0}, dst_step,
                          {static_cast<int32_t>(x1 - x0), static_cast<int32_t>(y1 - y0)});
  }
  if (picture != dst) prim::ippiFree(picture);
  std::memcpy(dst, work, static_cast<size_t>(dst_step) * static_cast<size_t>(dst_size.height));
}

Status ResizeYUY2(const uint8_t* src, uint8_t* dst, int32_t src_width, int32_t src_height,
                  int32_t dst_width, int32_t dst_height) {
  const Rect whole{0, 0, src_width, src_height};
  return prim::ippiResizeYUV422_8u_C2R(
      src, {src_width, src_height}, RowByteStride(WrapMul(2, src_width)), &whole, dst,
      RowByteStride(WrapMul(2, dst_width)), {dst_width, dst_height},
      static_cast<double>(dst_width) / src_width, static_cast<double>(dst_height) / src_height,
      prim::kResizeNearest);
}

}  // namespace framekit::geometry

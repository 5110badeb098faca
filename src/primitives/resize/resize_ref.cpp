// Resize, reference level: every class for now. Rows of the source are filtered across for each
// tap of a destination row and accumulated down, in the fixed point of resize.h.
#include <cstdint>
#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/resize/resize.h"
#include "primitives/resize/resize_kernels.h"

namespace framekit::prim::ref {
namespace {

using resize::Axis;

template <int C>
Status Resize(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
              uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double xf, double yf, double xs,
              double ys, int32_t interpolation, uint8_t* buffer) {
  const resize::Plan p = resize::PlanResize(src, src_size, src_roi, dst, dst_roi, xf, yf, xs, ys,
                                            interpolation, buffer);
  if (!p.write) return p.status;
  const resize::Layout bound =
      resize::BufferLayout(src_size, {dst_roi->width, dst_roi->height}, C, interpolation);
  Axis ax, ay;
  ax.count = p.x1 - p.x0, ay.count = p.y1 - p.y0;
  ax.taps = resize::TapCount(p.code, interpolation, xf);
  ay.taps = resize::TapCount(p.code, interpolation, yf);
  if (ax.taps > bound.x_taps || ay.taps > bound.y_taps) return ippStsResizeFactorErr;
  // The buffer, 8-byte aligned: indices, filtered row, accumulators, then weights.
  auto* at = reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(buffer) + 7) & ~uintptr_t{7});
  ax.index = reinterpret_cast<int32_t*>(at);
  ay.index = ax.index + ax.count * ax.taps;
  int32_t* filtered = ay.index + ay.count * ay.taps;
  int32_t* sums = filtered + ax.count * C;
  ax.weight = reinterpret_cast<int16_t*>(sums + ax.count * C);
  ay.weight = ax.weight + ax.count * ax.taps;
  resize::FillAxis(ax, p.code, interpolation, xf, xs, p.x0, p.src.x, p.src.width);
  resize::FillAxis(ay, p.code, interpolation, yf, ys, p.y0, p.src.y, p.src.height);
  for (int64_t k = 0; k < ay.count; ++k) {
    std::memset(sums, 0, sizeof(int32_t) * static_cast<size_t>(ax.count * C));
    for (int64_t v = 0; v < ay.taps; ++v) {
      const int32_t wy = ay.weight[k * ay.taps + v];
      if (wy == 0) continue;
      const uint8_t* row = RowAt(src, src_step, ay.index[k * ay.taps + v]);
      for (int64_t x = 0; x < ax.count; ++x) {
        for (int c = 0; c < C; ++c) {
          int32_t h = 0;
          for (int64_t t = 0; t < ax.taps; ++t) {
            h += ax.weight[x * ax.taps + t] * row[C * int64_t{ax.index[x * ax.taps + t]} + c];
          }
          filtered[x * C + c] = (h + 128) >> 8;
        }
      }
      for (int64_t i = 0; i < ax.count * C; ++i) sums[i] += wy * filtered[i];
    }
    uint8_t* out = RowAt(dst, dst_step, p.y0 + k) + C * p.x0;
    for (int64_t i = 0; i < ax.count * C; ++i) {
      const int32_t v = (sums[i] + (1 << 19)) >> 20;
      out[i] = static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v));
    }
  }
  if (resize::EdgeFlag(interpolation)) resize::SmoothEdges<C>(dst, dst_step, p);
  return p.status;
}

}  // namespace

Status ippiResizeSqrPixel_8u_C3R(const uint8_t* src, Size src_size, int32_t src_step,
                                 const Rect* src_roi, uint8_t* dst, int32_t dst_step,
                                 const Rect* dst_roi, double xf, double yf, double xs, double ys,
                                 int32_t interpolation, uint8_t* buffer) {
  return Resize<3>(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, xf, yf, xs, ys,
                   interpolation, buffer);
}
Status ippiResizeSqrPixel_8u_C4R(const uint8_t* src, Size src_size, int32_t src_step,
                                 const Rect* src_roi, uint8_t* dst, int32_t dst_step,
                                 const Rect* dst_roi, double xf, double yf, double xs, double ys,
                                 int32_t interpolation, uint8_t* buffer) {
  return Resize<4>(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, xf, yf, xs, ys,
                   interpolation, buffer);
}

Status ippiResizeYUV422_8u_C2R(const uint8_t* src, Size src_size, int32_t src_step,
                               const Rect* src_roi, uint8_t* dst, int32_t dst_step, Size dst_size,
                               double xf, double yf, int32_t interpolation) {
  if (src == nullptr || dst == nullptr || src_roi == nullptr) return ippStsNullPtrErr;
  const Rect r = *src_roi;
  if (src_size.width <= 0 || src_size.height <= 0 || r.x < 0 || r.y < 0 || r.width <= 0 ||
      r.height <= 0 || dst_size.width <= 0 || dst_size.height <= 0) {
    return ippStsSizeErr;
  }
  if (!(xf > 0) || !(yf > 0)) return ippStsResizeFactorErr;
  if (interpolation != kResizeNearest) return ippStsInterpolationErr;
  if (r.x >= src_size.width || r.y >= src_size.height) return ippStsResizeOutsideSource;
  const int64_t w = src_size.width - r.x < r.width ? src_size.width - r.x : r.width;
  const int64_t h = src_size.height - r.y < r.height ? src_size.height - r.y : r.height;
  // The source pixel (absolute) under a destination position.
  auto nearest = [](double at, double factor, int64_t lo, int64_t n) {
    const double s = resize::Floor(at / factor);
    return lo + (s < 0 ? 0 : (s > static_cast<double>(n - 1) ? n - 1 : static_cast<int64_t>(s)));
  };
  const int64_t last = src_size.width - 1;
  for (int64_t y = 0; y < dst_size.height; ++y) {
    const uint8_t* in = RowAt(src, src_step, nearest(static_cast<double>(y) + 0.5, yf, r.y, h));
    uint8_t* out = RowAt(dst, dst_step, y);
    for (int64_t x = 0; x < dst_size.width; ++x) {
      const int64_t sx = nearest(static_cast<double>(x) + 0.5, xf, r.x, w);
      const int64_t pair_centre = nearest(static_cast<double>(x / 2 * 2 + 1), xf, r.x, w) / 2 * 2;
      // U sits at the pair's first pixel, V at its second; without one, U stands in for V.
      const int64_t chroma = x % 2 == 0 || pair_centre + 1 > last ? pair_centre : pair_centre + 1;
      out[2 * x] = in[2 * sx];
      out[2 * x + 1] = in[2 * chroma + 1];
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

// The rotation's set-up, shared by every body: the checks, the clipped source region, the
// angle's cosine and sine in 32.32 fixed point and each destination row's first source position.
// Internal linkage throughout.
#pragma once

#include <cstdint>

#include "primitives/core/types.h"
#include "primitives/resize/resize_kernels.h"
#include "primitives/rotate/rotate.h"

namespace framekit::prim::rotate {

inline constexpr double kOne = 4294967296.0;  // 1 in 32.32 fixed point

// v in 32.32 fixed point, rounded to nearest; beyond +-2^30 pixels it saturates there (no region
// reaches so far).
static inline int64_t ToFixed(double v) {
  constexpr double kLimit = 1073741824.0;
  const double c = v < -kLimit ? -kLimit : (v > kLimit ? kLimit : v);
  return static_cast<int64_t>(resize::Floor(c * kOne + 0.5));
}

// a + b * k, wrapping (k below 2^31, b at most 2^32 in size: exact for any position that matters).
static inline int64_t Step(int64_t a, int64_t b, int64_t k) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) +
                              static_cast<uint64_t>(b) * static_cast<uint64_t>(k));
}

namespace {  // the member functions must not be shared between the levels' objects
struct Plan {
  Status status = ippStsNoErr;
  bool write = false;
  int32_t code = 0;
  Rect src{};  // clipped to the image
  Rect dst{};
  double c = 1, s = 0, xs = 0, ys = 0;
  int64_t cf = 0, sf = 0;  // cos and sin, fixed
  // Inside test in fixed index coordinates (pixel centres at whole numbers).
  int64_t u_lo = 0, u_hi = 0, v_lo = 0, v_hi = 0;

  // The source position of destination pixel (dst.x, y), fixed, index coordinates.
  void RowStart(int64_t y, int64_t* u, int64_t* v) const {
    const double across = static_cast<double>(dst.x) + 0.5 - xs;
    const double down = static_cast<double>(y) + 0.5 - ys;
    *u = ToFixed(across * c - down * s - 0.5);
    *v = ToFixed(across * s + down * c - 0.5);
  }
  bool Inside(int64_t u, int64_t v) const { return u >= u_lo && u < u_hi && v >= v_lo && v < v_hi; }
};
}  // namespace

static inline bool Finite(double v) { return v - v == 0; }

static inline Plan PlanRotate(const uint8_t* src, Size src_size, const Rect* src_roi,
                              const uint8_t* dst, const Rect* dst_roi, double angle, double xs,
                              double ys, int32_t interpolation) {
  Plan p;
  if (src == nullptr || dst == nullptr || src_roi == nullptr || dst_roi == nullptr) {
    p.status = ippStsNullPtrErr;
    return p;
  }
  const Rect r = *src_roi, d = *dst_roi;
  if (src_size.width <= 0 || src_size.height <= 0 || r.x < 0 || r.y < 0 || r.width <= 0 ||
      r.height <= 0 || d.x < 0 || d.y < 0 || d.width <= 0 || d.height <= 0) {
    p.status = ippStsSizeErr;
    return p;
  }
  if (interpolation != 1 && interpolation != 2 && interpolation != 4) {
    p.status = ippStsInterpolationErr;
    return p;
  }
  if (r.x >= src_size.width || r.y >= src_size.height) {
    p.status = ippStsResizeOutsideSource;
    return p;
  }
  if (!Finite(angle) || !Finite(xs) || !Finite(ys)) {
    p.status = ippStsResizeNothingWritten;
    return p;
  }
  p.src = {r.x, r.y, src_size.width - r.x < r.width ? src_size.width - r.x : r.width,
           src_size.height - r.y < r.height ? src_size.height - r.y : r.height};
  p.dst = d;
  p.code = interpolation;
  RotationCosSin(angle, &p.c, &p.s);
  p.xs = xs, p.ys = ys;
  p.cf = ToFixed(p.c), p.sf = ToFixed(p.s);
  constexpr int64_t kHalf = int64_t{1} << 31;
  p.u_lo = (int64_t{p.src.x} << 32) - kHalf;
  p.u_hi = ((int64_t{p.src.x} + p.src.width) << 32) - kHalf;
  p.v_lo = (int64_t{p.src.y} << 32) - kHalf;
  p.v_hi = ((int64_t{p.src.y} + p.src.height) << 32) - kHalf;
  p.write = true;
  return p;
}

// Cubic weights for each 8-bit fraction f: taps at -1, 0, 1, 2 from the sample's floor, 14-bit,
// summing to 1 << 14 (the rounding remainder on the heaviest), the resize's code-4 polynomial.
struct CubicTable {
  int16_t w[256][4];
};

static inline void FillCubic(CubicTable* table) {
  for (int f = 0; f < 256; ++f) {
    const double at = f / 256.0;
    double v[4], total = 0;
    int heaviest = 0;
    for (int t = 0; t < 4; ++t) {
      v[t] = resize::Kernel(4, resize::Abs(t - 1 - at));
      total += v[t];
      if (resize::Abs(v[t]) > resize::Abs(v[heaviest])) heaviest = t;
    }
    int32_t sum = 0;
    for (int t = 0; t < 4; ++t) {
      const auto q = static_cast<int32_t>(resize::Floor(v[t] / total * 16384.0 + 0.5));
      table->w[f][t] = static_cast<int16_t>(q);
      sum += q;
    }
    table->w[f][heaviest] = static_cast<int16_t>(table->w[f][heaviest] + 16384 - sum);
  }
}

}  // namespace framekit::prim::rotate

// The rotation's set-up, shared by every body: the checks, the clipped source region, the
// angle's cosine and sine in 32.32 fixed point and each destination row's first source position.
// Internal linkage throughout.
#pragma once

#include <cstdint>

#include "primitives/core/rows.h"
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

// Quarter and half turns whose samples fall on pixel centres (every row's first position whole,
// the steps whole pixels) copy pixels: every kernel reproduces a pixel at a whole position. Done
// in tiles of 16 destination rows by 64 columns so that the source, walked across columns for a
// quarter turn, stays in cache. False (nothing written) when the turn is not such a one.
template <int C>
static bool TurnWholePixels(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                            const Plan& p) {
  constexpr int64_t kUnit = int64_t{1} << 32, kFraction = kUnit - 1;
  auto unit = [](int64_t f) { return f == 0 || f == kUnit || f == -kUnit; };
  if (!unit(p.cf) || !unit(p.sf) || (p.cf == 0) == (p.sf == 0)) return false;
  const int64_t y_end = int64_t{p.dst.y} + p.dst.height;
  for (int64_t y = p.dst.y; y < y_end; ++y) {
    int64_t u = 0, v = 0;
    p.RowStart(y, &u, &v);
    if (((u | v) & kFraction) != 0) return false;
  }
  const int64_t di = p.cf >> 32, dj = p.sf >> 32, width = p.dst.width;
  const int64_t left = p.src.x, right = left + p.src.width - 1;
  const int64_t top = p.src.y, bottom = top + p.src.height - 1;
  // The columns k of a row whose source i0 + k di, j0 + k dj lies inside: [*from, *to).
  auto span = [width](int64_t at, int64_t step, int64_t lo, int64_t hi, int64_t* from,
                      int64_t* to) {
    int64_t a = 0, b = width;
    if (step == 0) {
      if (at < lo || at > hi) b = 0;
    } else if (step > 0) {
      a = lo - at, b = hi - at + 1;
    } else {
      a = at - hi, b = at - lo + 1;
    }
    *from = a > *from ? a : *from;
    *to = b < *to ? b : *to;
  };
  constexpr int64_t kRows = 16, kColumns = 64;
  for (int64_t y0 = p.dst.y; y0 < y_end; y0 += kRows) {
    const int64_t rows = y_end - y0 < kRows ? y_end - y0 : kRows;
    int64_t i0[kRows], j0[kRows], from[kRows], to[kRows];
    for (int64_t r = 0; r < rows; ++r) {
      p.RowStart(y0 + r, &i0[r], &j0[r]);
      i0[r] >>= 32, j0[r] >>= 32;
      from[r] = 0, to[r] = width;
      span(i0[r], di, left, right, &from[r], &to[r]);
      span(j0[r], dj, top, bottom, &from[r], &to[r]);
    }
    for (int64_t k0 = 0; k0 < width; k0 += kColumns) {
      for (int64_t r = 0; r < rows; ++r) {
        uint8_t* out = dst + (y0 + r) * dst_step + C * int64_t{p.dst.x};
        const int64_t a = from[r] > k0 ? from[r] : k0;
        const int64_t b = to[r] < k0 + kColumns ? to[r] : k0 + kColumns;
        for (int64_t k = a; k < b; ++k) {
          const uint8_t* in = src + (j0[r] + k * dj) * src_step + C * (i0[r] + k * di);
          for (int c = 0; c < C; ++c) out[C * k + c] = in[c];
        }
      }
    }
  }
  return true;
}

// Cubic weights for each 8-bit fraction f: taps at -1, 0, 1, 2 from the sample's floor, 14-bit,
// summing to 1 << 14 (the rounding remainder on the heaviest): the resize's code-4 weights.
struct CubicTable {
  int16_t w[256][4];
};

static inline void FillCubic(CubicTable* table) {
  // The resize's weights of a destination coordinate whose centre falls f / 256 past a source
  // pixel (factor 1, the shift moving it there): taps from that pixel's left neighbour on.
  for (int f = 0; f < 256; ++f) {
    resize::CoordinateWeights(4, 4, 1.0, -f / 256.0, 0, 4, table->w[f]);
  }
}

// One destination pixel from the source point (u, v), taps clamped to the region: what the
// reference does for every pixel. The caller has checked that the point is inside.
template <int C>
static inline void Sample(const uint8_t* src, int32_t step, const Plan& p, const CubicTable& cubic,
                          int64_t u, int64_t v, uint8_t* px) {
  const int64_t left = p.src.x, right = left + p.src.width - 1;
  const int64_t top = p.src.y, bottom = top + p.src.height - 1;
  auto at = [&](int64_t i, int64_t j) {
    return RowAt(src, step, resize::Clamp(j, top, bottom)) + C * resize::Clamp(i, left, right);
  };
  const int64_t i = u >> 32, j = v >> 32;
  const auto fx = static_cast<int32_t>((u >> 24) & 255), fy = static_cast<int32_t>((v >> 24) & 255);
  if (p.code == 1) {
    const uint8_t* s = at((u + (int64_t{1} << 31)) >> 32, (v + (int64_t{1} << 31)) >> 32);
    for (int c = 0; c < C; ++c) px[c] = s[c];
  } else if (p.code == 2) {
    const uint8_t *p00 = at(i, j), *p01 = at(i + 1, j), *p10 = at(i, j + 1),
                  *p11 = at(i + 1, j + 1);
    for (int c = 0; c < C; ++c) {
      const int32_t upper = p00[c] * (256 - fx) + p01[c] * fx;
      const int32_t lower = p10[c] * (256 - fx) + p11[c] * fx;
      px[c] = static_cast<uint8_t>((upper * (256 - fy) + lower * fy + 32768) >> 16);
    }
  } else {
    for (int c = 0; c < C; ++c) {
      int32_t sum = 0;
      for (int b = 0; b < 4; ++b) {
        int32_t h = 0;
        for (int a = 0; a < 4; ++a) h += cubic.w[fx][a] * at(i - 1 + a, j - 1 + b)[c];
        sum += cubic.w[fy][b] * ((h + 128) >> 8);
      }
      const int32_t value = (sum + (1 << 19)) >> 20;
      px[c] = static_cast<uint8_t>(value < 0 ? 0 : (value > 255 ? 255 : value));
    }
  }
}

}  // namespace framekit::prim::rotate

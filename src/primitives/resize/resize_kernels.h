// The resize's set-up and weights, shared by every body: the checks and the destination extent
// (PlanResize), the kernels, the fixed-point weight tables and the work buffer's layout.
// Internal linkage throughout; no library maths (own floor and ceil for doubles).
#pragma once

#include <cstdint>

#include "primitives/core/types.h"
#include "primitives/resize/resize.h"

namespace framekit::prim::resize {

// ---- Double helpers: exact for |x| < 2^52, saturated at +-9e18 (NaN gives -9e18)

static inline double Floor(double x) {
  if (!(x > -9.0e18)) return -9.0e18;
  if (!(x < 9.0e18)) return 9.0e18;
  const auto t = static_cast<double>(static_cast<int64_t>(x));
  return t > x ? t - 1.0 : t;
}
static inline double Ceil(double x) { return -Floor(-x); }
static inline double Abs(double x) { return x < 0 ? -x : x; }
// Toward zero, saturated to int64 (the extents compare against 32-bit values).
static inline int64_t Trunc(double x) {
  if (!(x > -9.0e18)) return INT64_MIN / 2;
  if (!(x < 9.0e18)) return INT64_MAX / 2;
  return static_cast<int64_t>(x);
}

// ---- Codes

static inline int32_t Code(int32_t interpolation) { return interpolation & 0x1FFFFFFF; }
static inline int FlagCount(int32_t interpolation) {
  const auto flags = static_cast<uint32_t>(interpolation) >> 29;
  return static_cast<int>((flags & 1) + ((flags >> 1) & 1) + ((flags >> 2) & 1));
}
static inline bool ValidCode(int32_t code) {
  return code == 1 || code == 2 || code == 4 || code == 5 || code == 6 || code == 7 || code == 8 ||
         code == 16;
}
static inline bool EdgeFlag(int32_t interpolation) {
  return (interpolation & (kResizeSmoothEdge | kResizeSubpixelEdge)) != 0;
}
// Antialiasing widens these kernels; for nearest and supersampling the flag is ignored.
static inline bool Widened(int32_t code, int32_t interpolation) {
  return (interpolation & kResizeAntialias) != 0 && code != kResizeNearest && code != kResizeSuper;
}

// Half the kernel's support in source pixels, unwidened.
static inline double Support(int32_t code) {
  switch (code) {
    case kResizeLinear:
      return 1.0;
    case kResizeLanczos:
      return 3.0;
    default:
      return 2.0;  // the cubics
  }
}

// sin(pi x) / (pi x), with sin from its series on [-pi/2, pi/2] after taking out the nearest
// whole number of half turns: own code, so that the weights are the same bytes everywhere.
static inline double Sinc(double x) {
  if (x == 0) return 1.0;
  constexpr double kPi = 3.14159265358979323846;
  const double k = Floor(x + 0.5);
  const double r = kPi * (x - k), r2 = r * r;
  double series = 1.0;
  for (int n = 17; n >= 3; n -= 2) series = 1.0 - r2 / (n * (n - 1)) * series;
  const double sine = r * series;
  return (static_cast<int64_t>(k) % 2 != 0 ? -sine : sine) / (kPi * x);
}

// The kernel's weight at distance d >= 0 (in kernel units).
static inline double Kernel(int32_t code, double d) {
  const double d2 = d * d, d3 = d2 * d;
  switch (code) {
    case kResizeLinear:
      return d < 1 ? 1 - d : 0;
    case 4:
      return d < 1 ? 0.5 * d3 - d2 - 0.5 * d + 1
                   : (d < 2 ? -(1.0 / 6.0) * d3 + d2 - (11.0 / 6.0) * d + 1 : 0);
    case 5:
      return d < 1 ? 0.5 * d3 - d2 + 2.0 / 3.0
                   : (d < 2 ? -(1.0 / 6.0) * d3 + d2 - 2 * d + 4.0 / 3.0 : 0);
    case 6:
      return d < 1 ? 1.5 * d3 - 2.5 * d2 + 1 : (d < 2 ? -0.5 * d3 + 2.5 * d2 - 4 * d + 2 : 0);
    case 7:
      return d < 1
                 ? 0.95 * d3 - 1.7 * d2 + 0.8333333333333334
                 : (d < 2 ? -0.38333333333333336 * d3 + 2 * d2 - 3.4 * d + 1.8666666666666667 : 0);
    case kResizeLanczos:
      return d < 3 ? Sinc(d) * Sinc(d / 3) : 0;
    default:
      return 0;
  }
}

// Taps an axis needs at `factor` (every destination coordinate gets this many, some weighing 0).
static inline int64_t TapCount(int32_t code, int32_t interpolation, double factor) {
  if (code == kResizeNearest) return 1;
  if (code == kResizeSuper) return static_cast<int64_t>(Floor(1.0 / factor)) + 2;
  const double scale = Widened(code, interpolation) && factor < 1 ? 1.0 / factor : 1.0;
  return static_cast<int64_t>(Floor(2 * Support(code) * scale)) + 1;
}

// ---- Checks and extent

struct Plan {
  Status status = ippStsNoErr;  // an error or a warning ends the call with it; else the final
  bool write = false;           // status is `status` and pixels are written
  int32_t code = 0;
  Rect src{};  // the source region clipped to the image
  int64_t x0 = 0, x1 = 0, y0 = 0, y1 = 0;
};

static inline Plan PlanResize(const uint8_t* src, Size src_size, const Rect* src_roi,
                              const uint8_t* dst, const Rect* dst_roi, double xf, double yf,
                              double xs, double ys, int32_t interpolation, const uint8_t* buffer) {
  Plan p;
  if (src == nullptr || dst == nullptr || buffer == nullptr || src_roi == nullptr ||
      dst_roi == nullptr) {
    p.status = ippStsNullPtrErr;
    return p;
  }
  const Rect s = *src_roi, d = *dst_roi;
  if (src_size.width <= 0 || src_size.height <= 0 || s.x < 0 || s.y < 0 || s.width <= 0 ||
      s.height <= 0 || d.x < 0 || d.y < 0 || d.width <= 0 || d.height <= 0) {
    p.status = ippStsSizeErr;
    return p;
  }
  if (!(xf > 0) || !(yf > 0)) {
    p.status = ippStsResizeFactorErr;
    return p;
  }
  int32_t code = Code(interpolation);
  if (!ValidCode(code) || FlagCount(interpolation) > 1) {
    p.status = ippStsInterpolationErr;
    return p;
  }
  if (code == kResizeSuper && (xf > 1 || yf > 1)) {
    p.status = ippStsResizeFactorErr;
    return p;
  }
  if (src_size.width < 6 || src_size.height < 6) {
    const bool cubic_like = (code >= 4 && code <= 7) || code == kResizeLanczos;
    if (cubic_like && (src_size.width < 4 || src_size.height < 4)) {
      code = kResizeLinear;
    } else if (code == kResizeLanczos) {
      code = kResizeCubic;
    }
  }
  if (s.x >= src_size.width || s.y >= src_size.height || int64_t{s.x} + s.width < 1 ||
      int64_t{s.y} + s.height < 1) {
    p.status = ippStsResizeOutsideSource;
    return p;
  }
  const int32_t w = src_size.width - s.x < s.width ? src_size.width - s.x : s.width;
  const int32_t h = src_size.height - s.y < s.height ? src_size.height - s.y : s.height;
  const double dx_end = static_cast<double>(int64_t{d.x} + d.width);
  const double dy_end = static_cast<double>(int64_t{d.y} + d.height);
  double ex0 = s.x * xf + xs, ex1 = (static_cast<double>(s.x) + w) * xf + xs;
  double ey0 = s.y * yf + ys, ey1 = (static_cast<double>(s.y) + h) * yf + ys;
  ex0 = ex0 > d.x ? ex0 : d.x;
  ey0 = ey0 > d.y ? ey0 : d.y;
  ex1 = ex1 < dx_end ? ex1 : dx_end;
  ey1 = ey1 < dy_end ? ey1 : dy_end;
  if (EdgeFlag(interpolation)) {
    p.x0 = Trunc(Ceil(ex0 - 1e-10)), p.y0 = Trunc(Ceil(ey0 - 1e-10));
    p.x1 = Trunc(Floor(ex1 + 1e-10)), p.y1 = Trunc(Floor(ey1 + 1e-10));
  } else {
    p.x0 = Trunc(ex0 + 0.4999999999), p.y0 = Trunc(ey0 + 0.4999999999);
    p.x1 = Trunc(ex1 + 0.5000000001), p.y1 = Trunc(ey1 + 0.5000000001);
  }
  if (!(p.x0 < p.x1 && p.y0 < p.y1)) {
    p.status = ippStsResizeNothingWritten;
    return p;
  }
  p.code = code;
  p.src = {s.x, s.y, w, h};
  p.write = true;
  const bool ignored =
      (interpolation & kResizeAntialias) != 0 && (code == kResizeNearest || code == kResizeSuper);
  p.status = ignored ? ippStsResizeFlagIgnored : ippStsNoErr;
  return p;
}

// ---- Weight tables

// Destination coordinate x of an axis: `taps` 14-bit weights summing to 1 << 14 for the source
// indices start, start + 1, ... (before any clamping to the region); returns start.
static inline int64_t CoordinateWeights(int32_t code, int32_t interpolation, double factor,
                                        double shift, int64_t x, int64_t taps, int16_t* out) {
  const double scale = Widened(code, interpolation) && factor < 1 ? factor : 1.0;
  const double reach = Support(code) / scale;
  const auto at = static_cast<double>(x);
  const double c = (at + 0.5 - shift) / factor - 0.5;                     // the centre's position
  const double a = (at - shift) / factor, b = (at + 1 - shift) / factor;  // its footprint
  int64_t start = 0;
  if (code == kResizeNearest) {
    start = static_cast<int64_t>(Floor(c + 0.5));
  } else if (code == kResizeSuper) {
    start = static_cast<int64_t>(Floor(a));
  } else {
    start = static_cast<int64_t>(Floor(c - reach)) + 1;
  }
  auto weight = [&](int64_t t) {
    const double j = static_cast<double>(start + t);
    if (code == kResizeNearest) return t == 0 ? 1.0 : 0.0;
    if (code == kResizeSuper) {
      const double from = a > j ? a : j, to = b < j + 1 ? b : j + 1;
      return to > from ? to - from : 0.0;
    }
    return Kernel(code, Abs(c - j) * scale);
  };
  double total = 0, heaviest_size = -1;
  int64_t heaviest = 0;
  for (int64_t t = 0; t < taps; ++t) {
    const double v = weight(t);
    total += v;
    if (Abs(v) > heaviest_size) heaviest = t, heaviest_size = Abs(v);
  }
  // Normalised and rounded; the rounding remainder goes to the heaviest tap.
  int32_t sum = 0;
  for (int64_t t = 0; t < taps; ++t) {
    const double v = total != 0 ? weight(t) / total : (t == heaviest ? 1.0 : 0.0);
    const auto q = static_cast<int32_t>(Floor(v * 16384.0 + 0.5));
    out[t] = static_cast<int16_t>(q);
    sum += q;
  }
  out[heaviest] = static_cast<int16_t>(out[heaviest] + (16384 - sum));
  return start;
}

static inline int64_t Clamp(int64_t j, int64_t lo, int64_t hi) {
  return j < lo ? lo : (j > hi ? hi : j);
}

// One axis: for each destination coordinate `taps` source indices (absolute, inside the region)
// and 14-bit weights summing to 1 << 14.
struct Axis {
  int64_t count = 0;  // destination coordinates
  int64_t taps = 0;
  int32_t* index = nullptr;
  int16_t* weight = nullptr;
};

// Fills the table for destination coordinates first .. first + count - 1 of an axis whose source
// region is [lo, lo + size).
static inline void FillAxis(const Axis& axis, int32_t code, int32_t interpolation, double factor,
                            double shift, int64_t first, int32_t lo, int32_t size) {
  for (int64_t k = 0; k < axis.count; ++k) {
    const int64_t start = CoordinateWeights(code, interpolation, factor, shift, first + k,
                                            axis.taps, axis.weight + k * axis.taps);
    for (int64_t t = 0; t < axis.taps; ++t) {
      axis.index[k * axis.taps + t] = static_cast<int32_t>(Clamp(start + t, lo, lo + size - 1));
    }
  }
}

// The border of the extent averaged with its inward neighbours (flags 31 and 30).
template <int C>
static void SmoothEdges(uint8_t* dst, int32_t step, const Plan& p) {
  auto mean = [](uint8_t* a, const uint8_t* b) {
    for (int c = 0; c < C; ++c) a[c] = static_cast<uint8_t>((a[c] + b[c] + 1) >> 1);
  };
  auto row = [&](int64_t y) { return dst + y * step; };
  if (p.x1 - p.x0 >= 2) {
    for (int64_t y = p.y0; y < p.y1; ++y) {
      mean(row(y) + C * p.x0, row(y) + C * (p.x0 + 1));
      mean(row(y) + C * (p.x1 - 1), row(y) + C * (p.x1 - 2));
    }
  }
  if (p.y1 - p.y0 >= 2) {
    for (int64_t x = p.x0; x < p.x1; ++x) {
      mean(row(p.y0) + C * x, row(p.y0 + 1) + C * x);
      mean(row(p.y1 - 1) + C * x, row(p.y1 - 2) + C * x);
    }
  }
}

// ---- The work buffer. The reference keeps both axes' tables (indices and weights), one row of
// filtered values and one accumulator row. The vector bodies (resize_body.h) keep, each piece
// 64-byte aligned: per destination column its first source column, its weights and its weight
// pairs spread over a vector; per destination row its first source row and weights; and a ring
// of up to kRingRows filtered rows with the source row each holds.

inline constexpr int64_t kRingRows = 64;
inline constexpr int64_t kTableKeyBytes = 192;  // what the tables were built for

static inline int64_t Round64(int64_t n) { return (n + 63) & ~int64_t{63}; }

// In an unnamed namespace, as Columns is: its member functions must not be shared between the
// levels' objects.
namespace {
struct Layout {
  int64_t x_count, x_taps, y_count, y_taps, channels;
  int64_t XPairs() const { return (x_taps + 1) / 2; }
  int64_t RingRows() const { return y_taps < kRingRows ? y_taps : kRingRows; }
  int64_t RingStride() const { return (x_count * channels + 32 + 31) & ~int64_t{31}; }  // int16s
  int64_t RefBytes() const {
    return (x_count * x_taps + y_count * y_taps) * 6 + x_count * channels * 8 + 64;
  }
  int64_t VectorBytes() const {
    return kTableKeyBytes + Round64(4 * x_count) + Round64(2 * x_count * x_taps) +
           Round64(32 * (x_count + 3) * XPairs()) + Round64(4 * y_count) +
           Round64(2 * y_count * y_taps) + Round64(4 * RingRows()) + 2 * RingStride() * RingRows() +
           64;
  }
  int64_t Bytes() const { return RefBytes() > VectorBytes() ? RefBytes() : VectorBytes(); }
};
}  // namespace

// For a source of src's size and a destination region dst at the smallest factors a source
// region inside that source can give (dst / src).
static inline Layout BufferLayout(Size src, Size dst, int64_t channels, int32_t interpolation) {
  const int32_t code = Code(interpolation);
  const double xf = static_cast<double>(dst.width) / src.width;
  const double yf = static_cast<double>(dst.height) / src.height;
  return {dst.width, TapCount(code, interpolation, xf), dst.height,
          TapCount(code, interpolation, yf), channels};
}

}  // namespace framekit::prim::resize

// The rotation's vector-level body, one template for every level above the reference: the same
// samples (rotate_kernels.h), but each destination row split into the run of pixels whose taps
// all lie inside the source region, done without clamping or tests, and the few pixels either
// side, done as the reference does them. Internal linkage throughout.
#pragma once

#include <cstdint>

#include "primitives/core/rows.h"
#include "primitives/rotate/rotate.h"
#include "primitives/rotate/rotate_kernels.h"

namespace framekit::prim::rotate {

// Narrows [*from, *to) to the k for which lo <= a + k d < hi (never widens it; empty as
// from == to): estimated in doubles, then trimmed until both ends hold exactly (the positions
// are linear in k, so every k between holds too).
static inline void Within(int64_t a, int64_t d, int64_t lo, int64_t hi, int64_t* from,
                          int64_t* to) {
  auto holds = [&](int64_t k) {
    const int64_t at = Step(a, d, k);
    return at >= lo && at < hi;
  };
  if (d == 0) {
    if (!holds(0)) *to = *from;
    return;
  }
  double first = (static_cast<double>(lo) - static_cast<double>(a)) / static_cast<double>(d);
  double last = (static_cast<double>(hi) - static_cast<double>(a)) / static_cast<double>(d);
  if (d < 0) {
    const double t = first;
    first = last, last = t;
  }
  const double begin = resize::Floor(first) - 1, end = resize::Floor(last) + 2;
  // Converted only when strictly between the ends (so within range).
  if (begin > static_cast<double>(*from)) {
    *from = begin < static_cast<double>(*to) ? static_cast<int64_t>(begin) : *to;
  }
  if (end < static_cast<double>(*to)) {
    *to = end > static_cast<double>(*from) ? static_cast<int64_t>(end) : *from;
  }
  while (*from < *to && !holds(*from)) ++*from;
  while (*from < *to && !holds(*to - 1)) --*to;
}

// Linear samples of columns from .. to - 1 of a row, all taps inside: the position (u, v) of
// column `from` stepping by (du, dv). The plain form; a level may bring its own (K::Linear).
template <int C>
static inline void LinearRun(const uint8_t* src, int32_t src_step, uint64_t u, uint64_t v,
                             uint64_t du, uint64_t dv, uint8_t* out, int64_t from, int64_t to) {
  for (int64_t k = from; k < to; ++k, u += du, v += dv) {
    const auto su = static_cast<int64_t>(u), sv = static_cast<int64_t>(v);
    const uint8_t* r0 = src + (sv >> 32) * src_step + C * (su >> 32);
    const uint8_t* r1 = r0 + src_step;
    const auto fx = static_cast<int32_t>((u >> 24) & 255),
               fy = static_cast<int32_t>((v >> 24) & 255);
    for (int c = 0; c < C; ++c) {
      const int32_t upper = r0[c] * (256 - fx) + r0[C + c] * fx;
      const int32_t lower = r1[c] * (256 - fx) + r1[C + c] * fx;
      out[C * k + c] = static_cast<uint8_t>((upper * (256 - fy) + lower * fy + 32768) >> 16);
    }
  }
}

namespace {  // the member functions must not be shared between the levels' objects
struct PlainKernels {
  static constexpr int64_t kLinearSlack = 0;  // bytes read past a pixel pair's last byte
  template <int C>
  static void Linear(const uint8_t* src, int32_t src_step, uint64_t u, uint64_t v, uint64_t du,
                     uint64_t dv, uint8_t* out, int64_t from, int64_t to) {
    LinearRun<C>(src, src_step, u, v, du, dv, out, from, to);
  }
};
}  // namespace

template <class K, int C>
static Status Fast(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                   uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle, double xs,
                   double ys, int32_t interpolation) {
  const Plan p = PlanRotate(src, src_size, src_roi, dst, dst_roi, angle, xs, ys, interpolation);
  if (!p.write) return p.status;
  if (TurnWholePixels<C>(src, src_step, dst, dst_step, p)) return p.status;
  CubicTable cubic;
  if (p.code == 4) FillCubic(&cubic);
  // Where every tap is inside: nearest anywhere inside, linear one pixel short of the right and
  // bottom edges, cubic one more each side.
  // (A level's linear loads may read past the pair: one more pixel kept clear on the right.)
  const int64_t reach_lo = p.code == 4 ? 1 : 0;
  const int64_t reach_hi = p.code == 1 ? 0 : (p.code == 2 ? 1 + (K::kLinearSlack > 0) : 2);
  const int64_t left = p.src.x, right = left + p.src.width, top = p.src.y,
                bottom = top + p.src.height;
  const int64_t u_lo = p.code == 1 ? p.u_lo : (left + reach_lo) << 32;
  const int64_t u_hi = p.code == 1 ? p.u_hi : (right - reach_hi) << 32;
  const int64_t v_lo = p.code == 1 ? p.v_lo : (top + reach_lo) << 32;
  const int64_t v_hi = p.code == 1 ? p.v_hi : (bottom - reach_hi) << 32;
  const int64_t width = p.dst.width;
  for (int64_t y = p.dst.y; y < int64_t{p.dst.y} + p.dst.height; ++y) {
    int64_t u0 = 0, v0 = 0;
    p.RowStart(y, &u0, &v0);
    uint8_t* out = RowAt(dst, dst_step, y) + C * int64_t{p.dst.x};
    int64_t from = 0, to = width;
    Within(u0, p.cf, u_lo, u_hi, &from, &to);
    Within(v0, p.sf, v_lo, v_hi, &from, &to);
    auto edge = [&](int64_t k) {
      const int64_t u = Step(u0, p.cf, k), v = Step(v0, p.sf, k);
      if (p.Inside(u, v)) Sample<C>(src, src_step, p, cubic, u, v, out + C * k);
    };
    for (int64_t k = 0; k < from; ++k) edge(k);
    auto u = static_cast<uint64_t>(Step(u0, p.cf, from)),
         v = static_cast<uint64_t>(Step(v0, p.sf, from));
    const auto du = static_cast<uint64_t>(p.cf), dv = static_cast<uint64_t>(p.sf);
    if (p.code == 2) {
      K::template Linear<C>(src, src_step, u, v, du, dv, out, from, to);
    } else if (p.code == 1) {
      for (int64_t k = from; k < to; ++k, u += du, v += dv) {
        const auto su = static_cast<int64_t>(u + (uint64_t{1} << 31));
        const auto sv = static_cast<int64_t>(v + (uint64_t{1} << 31));
        const uint8_t* s = src + (sv >> 32) * src_step + C * (su >> 32);
        for (int c = 0; c < C; ++c) out[C * k + c] = s[c];
      }
    } else {
      for (int64_t k = from; k < to; ++k)
        Sample<C>(src, src_step, p, cubic, Step(u0, p.cf, k), Step(v0, p.sf, k), out + C * k);
    }
    for (int64_t k = to; k < width; ++k) edge(k);
  }
  return p.status;
}

}  // namespace framekit::prim::rotate

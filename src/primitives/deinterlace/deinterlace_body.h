// The vector bodies of the deinterlacers, one template for every level. V supplies N-byte
// registers (V::R) and the byte and 16-bit lane operations below; every result is the
// reference's integer, lane by lane. Rows are walked N samples a step; the first and last
// kDirectionEdge samples of a row (where not every direction fits) and the tail shorter than a
// register go through the per-sample formulas of deinterlace.h.
#pragma once

#include <cstdint>
#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/deinterlace/deinterlace.h"

namespace framekit::prim::deinterlace {
namespace {

// Unsigned a < b, byte lanes: all ones where true.
template <class V>
typename V::R LessU8(typename V::R a, typename V::R b) {
  return V::Not(V::Eq8(V::SubsU8(b, a), V::Zero()));
}

template <class V>
typename V::R AbsDiffU8(typename V::R a, typename V::R b) {
  return V::Or(V::SubsU8(a, b), V::SubsU8(b, a));
}

// The edge-directed mean of rows c and e for samples i .. i + N - 1, all directions in the row.
template <class V>
typename V::R DirectedMeanV(const uint8_t* c, const uint8_t* e, int64_t i) {
  using R = typename V::R;
  const auto cost = [&](int32_t d) {
    R sum = V::Zero();
    for (int32_t j = -1; j <= 1; ++j) {
      sum = V::AddsU8(
          sum, AbsDiffU8<V>(V::Load(c + i + kTap * (d + j)), V::Load(e + i - kTap * (d - j))));
    }
    return sum;
  };
  const auto mean = [&](int32_t d) {
    return V::AvgU8(V::Load(c + i + kTap * d), V::Load(e + i - kTap * d));
  };
  R best = cost(0), value = mean(0);
  for (int32_t side = -1; side <= 1; side += 2) {
    R taken = V::Ones();
    for (int32_t d = side; d * side <= kMaxDirection; d += side) {
      const R k = cost(d);
      taken = V::And(taken, LessU8<V>(k, best));
      best = V::Select(taken, k, best);
      value = V::Select(taken, mean(d), value);
    }
  }
  return value;
}

// Runs `vector(i)` over the samples where every direction fits, N at a time, and `scalar(i)`
// over the rest of the row.
template <class V, class Vector, class Scalar>
void WalkRow(int64_t w, Vector vector, Scalar scalar) {
  int64_t i = 0;
  if (w >= 2 * kDirectionEdge + V::kBytes) {
    for (; i < kDirectionEdge; ++i) scalar(i);
    for (; i + V::kBytes <= w - kDirectionEdge; i += V::kBytes) vector(i);
  }
  for (; i < w; ++i) scalar(i);
}

template <class V>
Status Cavt(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
            uint16_t threshold, Size roi) {
  using R = typename V::R;
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const int64_t w = roi.width;
  const R t = V::Set8(static_cast<uint8_t>(threshold < 255 ? threshold : 255));
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* o = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    if (y % 2 == 0) {
      std::memcpy(out, o, static_cast<size_t>(w));
      continue;
    }
    const uint8_t* c = RowAt(src, src_step, y - 1);
    const uint8_t* e = y + 1 < roi.height ? RowAt(src, src_step, y + 1) : c;
    WalkRow<V>(
        w,
        [&](int64_t i) {
          const R s = DirectedMeanV<V>(c, e, i);
          const R ci = V::Load(c + i), ei = V::Load(e + i), oi = V::Load(o + i);
          const R lo = V::SubsU8(V::MinU8(V::MinU8(ci, ei), s), t);
          const R hi = V::AddsU8(V::MaxU8(V::MaxU8(ci, ei), s), t);
          const R outside = V::Or(V::SubsU8(lo, oi), V::SubsU8(oi, hi));
          V::Store(out + i, V::Select(V::Eq8(outside, V::Zero()), oi, s));
        },
        [&](int64_t i) {
          out[i] = CavtSample(o[i], c[i], e[i], DirectedMean(c, e, i, w), threshold);
        });
  }
  return ippStsNoErr;
}

template <class V>
Status Triangle(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi,
                uint32_t centre_weight, uint32_t layout) {
  using R = typename V::R;
  if (const Status s = CheckTriangle(src, dst, roi, layout); s != ippStsNoErr) return s;
  const int32_t k = centre_weight >= 256 ? 0 : 256 - static_cast<int32_t>(centre_weight);
  const R k16 = V::Set16(k), round = V::Set16(128);
  const R low_bytes = V::Set16(0x00FF), high_bytes = V::Set16(0xFF00);
  const int64_t w = roi.width, h = roi.height;
  for (int64_t y = 0; y < h; ++y) {
    const uint8_t* x = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    const uint32_t part = y == 0 ? kLayoutUpper : (y == h - 1 ? kLayoutLower : kLayoutCentre);
    if (h == 1 || (layout & part) == 0 || k == 0) {
      std::memcpy(out, x, static_cast<size_t>(w));
      continue;
    }
    const uint8_t* a = RowAt(src, src_step, y > 0 ? y - 1 : y + 1);
    const uint8_t* b = RowAt(src, src_step, y + 1 < h ? y + 1 : y - 1);
    int64_t i = 0;
    for (; i + V::kBytes <= w; i += V::kBytes) {
      const R xi = V::Load(x + i), ai = V::Load(a + i), bi = V::Load(b + i);
      const R up = V::SubsU8(xi, V::MaxU8(ai, bi)), down = V::SubsU8(V::MinU8(ai, bi), xi);
      // One of up and down is 0: (tooth * k + 128) >> 8 for the even and the odd bytes in
      // 16-bit lanes, the odd ones kept in their high bytes (no widening, no packing).
      const R tooth = V::Or(up, down);
      const R even = V::Shr16x8(V::Add16(V::Mul16(V::And(tooth, low_bytes), k16), round));
      const R odd = V::And(V::Add16(V::Mul16(V::Shr16x8(tooth), k16), round), high_bytes);
      const R step = V::Or(even, odd);
      V::Store(out + i, V::AddsU8(V::SubsU8(xi, V::MinU8(step, up)), V::MinU8(step, down)));
    }
    for (; i < w; ++i) out[i] = TriangleSample(x[i], a[i], b[i], k);
  }
  return ippStsNoErr;
}

// One register half of the blend in 16-bit lanes (the scalar BlendSample, lane by lane).
template <class V>
typename V::R BlendHalf(typename V::R early, typename V::R late, typename V::R m, typename V::R s,
                        const DeinterlaceBlendState& st) {
  using R = typename V::R;
  // The weighted sum stays below 2^16: unsigned 16-bit arithmetic, a logical shift.
  const R t = V::Shr16x8(V::Add16(V::Add16(V::Mul16(early, V::Set16(st.earlier_weight)),
                                           V::Mul16(late, V::Set16(256 - st.earlier_weight))),
                                  V::Set16(128)));
  const R r = V::MulHrs16(V::Shl16x7(m), V::Set16(st.reach));
  const R moving = V::Max16(V::Min16(s, V::Add16(t, r)), V::Sub16(t, r));
  const R f = V::MulHiU16(V::Shl16x8(V::SubsU16(m, V::Set16(st.still))),
                          V::Set16(static_cast<int16_t>(st.ramp)));
  const R mix = V::Add16(t, V::MulHrs16(V::Shl16x7(V::Sub16(moving, t)), f));
  const R still = V::Not(V::Gt16(m, V::Set16(st.still)));
  const R fast = V::Gt16(m, V::Set16(st.moving - 1));
  return V::Select(still, t, V::Select(fast, moving, mix));
}

template <class V>
Status Blend(const uint8_t* const sources[3], int32_t src_step, uint8_t* dst, int32_t dst_step,
             Size size, int32_t top_first, int32_t top_field, int32_t copy_field,
             const DeinterlaceBlendState* state) {
  using R = typename V::R;
  if (const Status s = CheckDeinterlaceBlend(sources, dst, size, state); s != ippStsNoErr) {
    return s;
  }
  const BlendFrames f = ArrangeBlendFrames(sources, top_first, top_field);
  const int64_t w = size.width, h = size.height;
  for (int64_t y = 0; y < h; ++y) {
    uint8_t* out = RowAt(dst, dst_step, y);
    if ((y & 1) == f.kept_parity) {
      if (copy_field != 0) std::memcpy(out, RowAt(f.current, src_step, y), static_cast<size_t>(w));
      continue;
    }
    const BlendRows r = BlendRowsAt(f, src_step, y, h);
    WalkRow<V>(
        w,
        [&](int64_t i) {
          const R early = V::Load(r.early + i), late = V::Load(r.late + i);
          const R c = V::Load(r.c + i), e = V::Load(r.e + i);
          const R m = V::MaxU8(AbsDiffU8<V>(early, late),
                               V::MaxU8(V::AvgU8(AbsDiffU8<V>(c, V::Load(r.ce + i)),
                                                 AbsDiffU8<V>(e, V::Load(r.ee + i))),
                                        V::AvgU8(AbsDiffU8<V>(c, V::Load(r.cl + i)),
                                                 AbsDiffU8<V>(e, V::Load(r.el + i)))));
          const R s = DirectedMeanV<V>(r.c, r.e, i);
          V::Store(out + i, V::PackU16(BlendHalf<V>(V::Low16(early), V::Low16(late), V::Low16(m),
                                                    V::Low16(s), *state),
                                       BlendHalf<V>(V::High16(early), V::High16(late), V::High16(m),
                                                    V::High16(s), *state)));
        },
        [&](int64_t i) { out[i] = BlendSample(BlendTapsAt(r, i, w), *state); });
  }
  return ippStsNoErr;
}

}  // namespace
}  // namespace framekit::prim::deinterlace

// The triangle's and the blend's vector bodies, one template for every level (CAVT's is in
// deinterlace_cavt_body.h). V supplies N-byte registers (V::R) and the byte and 16-bit lane
// operations below; every result is the reference's integer, lane by lane. Rows are walked N
// samples a step; the tail shorter than a register goes through the per-sample formulas of
// deinterlace.h.
#pragma once

#include <cstdint>
#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/deinterlace/deinterlace.h"

namespace framekit::prim::deinterlace {
namespace {

template <class V>
typename V::R AbsDiffU8(typename V::R a, typename V::R b) {
  return V::Or(V::SubsU8(a, b), V::SubsU8(b, a));
}

// Runs `vector(i)` over the row N samples at a time and `scalar(i)` over the tail.
template <class V, class Vector, class Scalar>
void WalkRow(int64_t w, Vector vector, Scalar scalar) {
  int64_t i = 0;
  for (; i + V::kBytes <= w; i += V::kBytes) vector(i);
  for (; i < w; ++i) scalar(i);
}

// Applies `half(args in 16-bit lanes...)` to the low and the high halves of byte registers and
// packs the two results back with unsigned saturation.
template <class V, class Half, class... Bytes>
typename V::R ByHalves(Half half, Bytes... bytes) {
  return V::PackU16(half(V::Low16(bytes)...), half(V::High16(bytes)...));
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
    if (y % 2 == 0 || k == 0 || !TriangleFilters(layout, y, h)) {
      std::memcpy(out, x, static_cast<size_t>(w));
      continue;
    }
    const BottomRows r = BottomRowsAt(src, src_step, y, h);
    WalkRow<V>(
        w,
        [&](int64_t i) {
          const R xi = V::Load(x + i), ai = V::Load(r.c + i), bi = V::Load(r.e + i);
          const R up = V::SubsU8(xi, V::MaxU8(ai, bi)), down = V::SubsU8(V::MinU8(ai, bi), xi);
          // One of up and down is 0: (tooth * k + 128) >> 8 for the even and the odd bytes in
          // 16-bit lanes, the odd ones kept in their high bytes (no widening, no packing).
          const R tooth = V::Or(up, down);
          const R even = V::Shr16x8(V::Add16(V::Mul16(V::And(tooth, low_bytes), k16), round));
          const R odd = V::And(V::Add16(V::Mul16(V::Shr16x8(tooth), k16), round), high_bytes);
          const R step = V::Or(even, odd);
          V::Store(out + i, V::AddsU8(V::SubsU8(xi, V::MinU8(step, up)), V::MinU8(step, down)));
        },
        [&](int64_t i) { out[i] = TriangleSample(x[i], r.c[i], r.e[i], k); });
  }
  return ippStsNoErr;
}

// The blend's per-call constants in 16-bit lanes.
template <class V>
struct BlendLanes {
  explicit BlendLanes(const DeinterlaceBlendState& st)
      : early(V::Set16(st.earlier_weight)),
        late(V::Set16(256 - st.earlier_weight)),
        reach(V::Set16(st.reach)),
        still(V::Set16(st.still)),
        last_in_band(V::Set16(st.moving - 1)),
        ramp(V::Set16(st.ramp)),
        round(V::Set16(128)),
        eight(V::Set16(8)),
        top(V::Set16(255)) {}
  typename V::R early, late, reach, still, last_in_band, ramp, round, eight, top;

  // The temporal estimate: the weighted sum stays below 2^16, so unsigned 16-bit arithmetic and
  // a logical shift.
  typename V::R Estimate(typename V::R e, typename V::R l) const {
    return V::Shr16x8(V::Add16(V::Add16(V::Mul16(e, early), V::Mul16(l, late)), round));
  }

  // One missing sample per lane (the scalar BlendSample).
  typename V::R Sample(typename V::R e, typename V::R l, typename V::R eu, typename V::R lu,
                       typename V::R ed, typename V::R ld, typename V::R s, typename V::R m) const {
    using R = typename V::R;
    const R t = Estimate(e, l);
    const R detail = V::Sub16(V::Sub16(V::Add16(t, t), Estimate(eu, lu)), Estimate(ed, ld));
    const R within =
        V::Add16(s, V::Sra16x4(V::Add16(V::Add16(V::Add16(detail, detail), detail), eight)));
    const R r = V::MulHrs16(V::Shl16x7(m), reach);  // (m * reach + 128) >> 8
    const R bounded = V::Max16(V::Min16(within, V::Add16(t, r)), V::Sub16(t, r));
    const R moving = V::Max16(V::Min16(bounded, top), V::Zero());
    const R f = V::MulHiU16(V::Shl16x8(V::SubsU16(m, still)), ramp);
    const R mix = V::Add16(t, V::MulHrs16(V::Shl16x7(V::Sub16(moving, t)), f));
    const R is_still = V::Not(V::Gt16(m, still));
    const R is_moving = V::Gt16(m, last_in_band);
    return V::Select(is_still, t, V::Select(is_moving, moving, mix));
  }
};

template <class V>
Status Blend(const uint8_t* const sources[3], int32_t src_step, uint8_t* dst, int32_t dst_step,
             Size size, int32_t top_first, int32_t top_field, int32_t copy_field,
             const DeinterlaceBlendState* state) {
  using R = typename V::R;
  if (const Status s = CheckDeinterlaceBlend(sources, dst, size, state); s != ippStsNoErr) {
    return s;
  }
  const BlendFrames f = ArrangeBlendFrames(sources, top_first, top_field);
  const BlendLanes<V> lanes(*state);
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
                               V::MaxU8(V::AvgU8(AbsDiffU8<V>(c, V::Load(r.cp + i)),
                                                 AbsDiffU8<V>(e, V::Load(r.ep + i))),
                                        V::AvgU8(AbsDiffU8<V>(c, V::Load(r.cn + i)),
                                                 AbsDiffU8<V>(e, V::Load(r.en + i)))));
          V::Store(
              out + i,
              ByHalves<V>([&](R e16, R l16, R eu, R lu, R ed, R ld, R s,
                              R m16) { return lanes.Sample(e16, l16, eu, lu, ed, ld, s, m16); },
                          early, late, V::Load(r.early_up + i), V::Load(r.late_up + i),
                          V::Load(r.early_down + i), V::Load(r.late_down + i), V::AvgU8(c, e), m));
        },
        [&](int64_t i) { out[i] = BlendSample(BlendTapsAt(r, i), *state); });
  }
  return ippStsNoErr;
}

}  // namespace
}  // namespace framekit::prim::deinterlace

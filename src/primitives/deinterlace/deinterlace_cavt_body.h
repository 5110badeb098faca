// The motion-compensated CAVT's vector body, one template for every level (V as in
// deinterlace_body.h, with the SAD, 8-to-16-bit and pair multiply-add operations besides). The
// planes are first split out of the interleaved rows into padded rows (edges repeated, so every
// offset and filter tap is a plain load and equals the clamped reference); a block row of 16
// pixels is then one SAD register (two on AVX2). Columns past a plane's width are computed and
// left out: masked from the SADs, never stored.
#pragma once

#include <cstdint>
#include <cstring>

#include "primitives/deinterlace/deinterlace.h"
#include "primitives/deinterlace/deinterlace_motion.h"

namespace framekit::prim::cavt {
namespace {

constexpr int64_t kPadLeft = 16, kPadRight = 48;  // offsets reach 6 pixels; loads 32 past ends
constexpr int64_t kCandidates = kIntegerCandidates + 1;  // and the line-doubling check below
alignas(64) constexpr uint8_t kValidBytes[64] = {
    255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
    255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};

// One plane's fields, deinterleaved: the other field's rows, the kept field's rows and the kept
// field halfway between its rows (the even-row candidates' target), each padded.
struct Padded {
  uint8_t* base;
  int64_t stride, width, kept, other;
  uint8_t* Row(int64_t r) const { return base + r * stride + kPadLeft; }
  const uint8_t* Other(int64_t j) const { return Row(Clamp64(j, 0, other - 1)); }
  const uint8_t* Kept(int64_t j) const { return Row(other + Clamp64(j, 0, kept - 1)); }
  uint8_t* Mid(int64_t j) const { return Row(other + kept + j); }
};

static inline int64_t PaddedStride(int64_t width) {
  return kPadLeft + (width + 31) / 32 * 32 + kPadRight;
}

static inline void SplitRow(const uint8_t* src, int64_t width, uint8_t* row, int64_t stride) {
  for (int64_t x = 0; x < width; ++x) row[x] = src[3 * x];
  std::memset(row - kPadLeft, row[0], static_cast<size_t>(kPadLeft));
  std::memset(row + width, row[width - 1], static_cast<size_t>(stride - kPadLeft - width));
}

template <class V>
typename V::R Taps4(const int32_t* w, const uint8_t* a, const uint8_t* b, const uint8_t* c,
                    const uint8_t* d) {
  using R = typename V::R;
  R acc = V::Add16(V::Set16(32), V::Mul16(V::Set16(w[0]), V::LoadWide(a)));
  acc = V::Add16(acc, V::Mul16(V::Set16(w[1]), V::LoadWide(b)));
  acc = V::Add16(acc, V::Mul16(V::Set16(w[2]), V::LoadWide(c)));
  return V::Sra16x6(V::Add16(acc, V::Mul16(V::Set16(w[3]), V::LoadWide(d))));
}

template <class V>
void FillPlane(const Plane& p, const Padded& d) {
  for (int64_t j = 0; j < p.other; ++j) SplitRow(p.Other(j), p.width, d.Row(j), d.stride);
  for (int64_t j = 0; j < p.kept; ++j) SplitRow(p.Kept(j), p.width, d.Row(p.other + j), d.stride);
  constexpr int64_t kHalf = V::kBytes / 2;
  for (int64_t j = 0; j < p.other; ++j) {
    for (int64_t x = -kPadLeft; x < d.stride - kPadLeft; x += kHalf) {
      V::StoreNarrow(d.Mid(j) + x, Taps4<V>(kVe[4], d.Kept(j - 1) + x, d.Kept(j) + x,
                                            d.Kept(j + 1) + x, d.Kept(j + 2) + x));
    }
  }
}

// The 16 pixels at x of `row` moved by u quarter pixels (HShift), valid ones only, rest 0.
template <class V>
void ShiftedRow(const uint8_t* row, int64_t x, int32_t u, int64_t valid, uint8_t* out) {
  const int32_t s = -u, q = s & 3;
  const uint8_t* at = row + x + (s >> 2);
  if (q == 0) {
    std::memcpy(out, at, 16);
  } else {
    for (int64_t h = 0; h < 16; h += V::kBytes / 2) {
      V::StoreNarrow(out + h, Taps4<V>(kHq[q], at + h - 1, at + h, at + h + 1, at + h + 2));
    }
  }
  if (valid < 16) std::memset(out + valid, 0, static_cast<size_t>(16 - valid));
}

// The kept field at row 2 i + ph / 4 (KeptAt), 16 pixels at x, valid ones only, rest 0.
template <class V>
void KeptRow(const Padded& d, int64_t i, int64_t x, int32_t ph, int64_t valid, uint8_t* out) {
  if (ph == 0 || ph == 4) {
    std::memcpy(out, (ph == 0 ? d.Kept(i) : d.Mid(i)) + x, 16);
  } else {
    for (int64_t h = 0; h < 16; h += V::kBytes / 2) {
      V::StoreNarrow(out + h, Taps4<V>(kVe[ph], d.Kept(i - 1) + x + h, d.Kept(i) + x + h,
                                       d.Kept(i + 1) + x + h, d.Kept(i + 2) + x + h));
    }
  }
  if (valid < 16) std::memset(out + valid, 0, static_cast<size_t>(16 - valid));
}

// Sum of |a - b| over 8 rows of 16 bytes.
template <class V>
uint32_t BlockSad(const uint8_t* a, const uint8_t* b) {
  typename V::R acc = V::Zero();
  for (int64_t k = 0; k < 128; k += V::kBytes) {
    acc = V::Add64(acc, V::Sad(V::Load(a + k), V::Load(b + k)));
  }
  return V::SumSad(acc);
}

// A block's SAD at a fractional vector (the reference's BlockCost).
template <class V>
uint32_t FractionalCost(const Padded& d, int64_t i0, int64_t rows, int64_t x, int64_t valid,
                        int32_t u, int32_t v) {
  alignas(32) uint8_t pred[128] = {}, kept[128] = {};
  const Split sv = SplitV(v);
  for (int64_t r = 0; r < rows; ++r) {
    ShiftedRow<V>(d.Other(i0 + r - sv.m), x, u, valid, pred + 16 * r);
    KeptRow<V>(d, i0 + r, x, sv.f + 4, valid, kept + 16 * r);
  }
  return BlockSad<V>(pred, kept);
}

// Stage 1 for one block row: costs[bx * kCandidates + k] for every integer candidate k and,
// last, the SAD against the kept rows below (the line-doubling check's second half).
template <class V>
void IntegerCosts(const Padded& d, int64_t i0, int64_t rows, int64_t cols, uint32_t* costs) {
  using R = typename V::R;
  constexpr int64_t kBlocks = V::kBytes / 16;
  for (int64_t k = 0; k < kCandidates; ++k) {
    const int32_t u = k < kIntegerCandidates ? static_cast<int32_t>(k % 9) - kRangeU : 0;
    const int32_t v = k < kIntegerCandidates ? static_cast<int32_t>(k / 9) - kRangeV : 0;
    const Split sv = SplitV(4 * v);
    for (int64_t x = 0; x < d.width; x += V::kBytes) {
      const int64_t valid = d.width - x;
      const R mask = V::Load(kValidBytes + 32 - (valid < 32 ? valid : 32));
      R acc = V::Zero();
      for (int64_t r = 0; r < rows; ++r) {
        const int64_t i = i0 + r;
        const uint8_t* target = k == kIntegerCandidates ? d.Kept(i + 1)
                                : sv.f == 0             ? d.Mid(i)
                                                        : d.Kept(i);
        acc = V::Add64(acc, V::Sad(V::And(mask, V::Load(d.Other(i - sv.m) + x - u)),
                                   V::And(mask, V::Load(target + x))));
      }
      uint64_t lanes[V::kBytes / 8];
      V::Store(reinterpret_cast<uint8_t*>(lanes), acc);
      for (int64_t b = 0; b < kBlocks && x / 16 + b < cols; ++b) {
        costs[(x / 16 + b) * kCandidates + k] =
            static_cast<uint32_t>(lanes[2 * b] + lanes[2 * b + 1]);
      }
    }
  }
}

template <class V>
void SearchPadded(const Padded& d, BlockField& f, uint32_t* costs) {
  for (int64_t by = 0; by < f.rows; ++by) {
    const int64_t i0 = by * kBlockH;
    const int64_t rows = d.other - i0 < kBlockH ? d.other - i0 : kBlockH;
    IntegerCosts<V>(d, i0, rows, f.cols, costs);
    for (int64_t bx = 0; bx < f.cols; ++bx) {
      const uint32_t* c = costs + bx * kCandidates;
      const int64_t x = bx * kBlockW, valid = d.width - x < 16 ? d.width - x : 16;
      const Vector best = Refine(PickInteger(c), [&](int32_t u, int32_t v) {
        return FractionalCost<V>(d, i0, rows, x, valid, u, v);
      });
      const int64_t b = f.Index(by, bx);
      f.u[b] = static_cast<int8_t>(best.u);
      f.v[b] = static_cast<int8_t>(best.v);
      // Candidate (0, -1) compares each other-field row with the kept row above.
      f.same[b] = c[(kRangeV - 1) * 9 + kRangeU] == 0 || c[kIntegerCandidates] == 0 ? 1 : 0;
    }
  }
}

// 16 rebuilt samples of missing row i at x (RebuildSample).
template <class V>
void RebuildBlockRow(const Padded& d, int64_t i, int64_t x, int32_t u, int32_t v, int32_t t,
                     uint8_t* out) {
  using R = typename V::R;
  const Split sv = SplitV(v);
  const int32_t* w = kRw[sv.f + 4];
  alignas(32) uint8_t moved[3][16];
  for (int64_t k = 0; k < 3; ++k) {
    ShiftedRow<V>(d.Other(Clamp64(i - 1 + k, 0, d.other - 1) - sv.m), x, u, 16, moved[k]);
  }
  const R w01 = V::SetPair(w[0], w[1]), w23 = V::SetPair(w[2], w[3]);
  const R w45 = V::SetPair(w[4], w[5]), w6r = V::SetPair(w[6], 32), one = V::Set16(1);
  const R margin = V::Set16(t < 1024 ? t : 1024);  // past 1024 no rebuilt value is limited
  for (int64_t h = 0; h < 16; h += V::kBytes / 2) {
    const R k0 = V::LoadWide(d.Kept(i - 1) + x + h), k1 = V::LoadWide(d.Kept(i) + x + h);
    const R k2 = V::LoadWide(d.Kept(i + 1) + x + h), k3 = V::LoadWide(d.Kept(i + 2) + x + h);
    const R o0 = V::LoadWide(moved[0] + h), o1 = V::LoadWide(moved[1] + h);
    const R o2 = V::LoadWide(moved[2] + h);
    // 32-bit sums: the weights' magnitudes add up to 354, too much for 16 bits.
    const auto half = [&](auto unpack) {
      R acc = V::Add32(V::Madd16(unpack(k0, k1), w01), V::Madd16(unpack(k2, k3), w23));
      acc =
          V::Add32(acc, V::Add32(V::Madd16(unpack(o0, o1), w45), V::Madd16(unpack(o2, one), w6r)));
      return V::Sra32x6(acc);
    };
    const R r = V::PackS32(half([](R a, R b) { return V::Unpack16Lo(a, b); }),
                           half([](R a, R b) { return V::Unpack16Hi(a, b); }));
    const R lo = V::Sub16(V::Min16(k1, k2), margin), hi = V::Add16(V::Max16(k1, k2), margin);
    V::StoreNarrow(out + h, V::Max16(V::Min16(r, hi), lo));
  }
}

template <class V>
void RebuildPadded(const Padded& d, const BlockField& f, int32_t t, uint8_t* dst, int32_t dst_step,
                   int64_t channel, uint8_t* line) {
  for (int64_t i = 0; i < d.other; ++i) {
    const int64_t by = i / kBlockH;
    for (int64_t bx = 0; bx < f.cols; ++bx) {
      const int64_t b = f.Index(by, bx), x = bx * kBlockW;
      if (f.same[b] != 0) {
        std::memcpy(line + x, d.Other(i) + x, 16);
      } else {
        RebuildBlockRow<V>(d, i, x, f.u[b], f.v[b], t, line + x);
      }
    }
    uint8_t* out = RowAt(dst, dst_step, 2 * i + 1) + channel;
    for (int64_t x = 0; x < d.width; ++x) out[3 * x] = line[x];
  }
}

template <class V>
Status Cavt(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
            uint16_t threshold, Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  CopyKeptRows(src, src_step, dst, dst_step, roi);
  if (roi.height < 2) return ippStsNoErr;
  const Plane first = PlaneOf(src, src_step, roi, 0);
  const int64_t stride = PaddedStride(first.width);
  const int64_t cols = (first.width + kBlockW - 1) / kBlockW;
  const int64_t plane_bytes = (2 * first.other + first.kept) * stride;
  const int64_t cost_bytes = cols * kCandidates * 4;
  MotionFields fields(roi, plane_bytes + cost_bytes + stride);
  if (!fields.Ready()) {
    RebuildWithoutMotion(src, src_step, dst, dst_step, threshold, roi);
    return ippStsNoErr;
  }
  uint8_t* work = fields.Extra();
  uint32_t* costs = reinterpret_cast<uint32_t*>(work + plane_bytes);
  uint8_t* line = work + plane_bytes + cost_bytes;
  for (int64_t c = 0; c < fields.Planes(); ++c) {
    const Plane p = PlaneOf(src, src_step, roi, c);
    const Padded d{work, PaddedStride(p.width), p.width, p.kept, p.other};
    FillPlane<V>(p, d);
    BlockField& f = fields[c];
    SearchPadded<V>(d, f, costs);
    SmoothField(f);
    RebuildPadded<V>(d, f, threshold, dst, dst_step, c, line);
  }
  return ippStsNoErr;
}

}  // namespace
}  // namespace framekit::prim::cavt

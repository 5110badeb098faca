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

// One plane's fields, deinterleaved and padded: the other field's rows, the kept field's rows,
// the kept field at each vertical phase between its rows and the other field at each fractional
// horizontal phase, all made once so that every candidate's rows are plain loads.
struct Padded {
  uint8_t* base;
  int64_t stride, width, kept, other;
  static constexpr int64_t kRowsPerOther = 11;  // other, 7 vertical and 3 horizontal phases
  uint8_t* Row(int64_t r) const { return base + r * stride + kPadLeft; }
  const uint8_t* Other(int64_t j) const { return Row(Clamp64(j, 0, other - 1)); }
  const uint8_t* Kept(int64_t j) const { return Row(other + Clamp64(j, 0, kept - 1)); }
  // The kept field at frame row 2 j + ph / 4 (KeptAt), ph = 1..7, for j = 0..other - 1.
  uint8_t* Between(int64_t ph, int64_t j) const { return Row(other + kept + (ph - 1) * other + j); }
  uint8_t* Mid(int64_t j) const { return Between(4, j); }
  // Other(j) filtered at phase q = 1..3: sample x from samples x - 1 .. x + 2 (HShift).
  uint8_t* Shifted(int64_t q, int64_t j) const { return Row(other + kept + (6 + q) * other + j); }
  // Other(j) moved by u quarter pixels: the sample at x is Moved(j, u)[x].
  const uint8_t* Moved(int64_t j, int32_t u) const {
    const int32_t s = -u;
    const int64_t at = Clamp64(j, 0, other - 1);
    return ((s & 3) == 0 ? Row(at) : Shifted(s & 3, at)) + (s >> 2);
  }
};

static inline int64_t PaddedStride(int64_t width) {
  return kPadLeft + (width + 31) / 32 * 32 + kPadRight;
}

static inline void SplitRow(const uint8_t* src, int64_t width, uint8_t* row, int64_t stride) {
  for (int64_t x = 0; x < width; ++x) row[x] = src[3 * x];
  std::memset(row - kPadLeft, row[0], static_cast<size_t>(kPadLeft));
  std::memset(row + width, row[width - 1], static_cast<size_t>(stride - kPadLeft - width));
}

// A pair of filter taps as maddubs weights.
static inline int32_t BytePair(int32_t low, int32_t high) { return high * 256 + (low & 255); }

// n four-tap filters over 64 (w[k], into out[k]) on the same samples, whole registers at a
// time, rounded and clipped; the sample pairs are made once for all. Sample pairs times weight
// pairs stay within 16 bits: no filter's positive weights add up to more than 72.
template <class V, int64_t n>
void Taps4Rows(const int32_t (*w)[4], const uint8_t* a, const uint8_t* b, const uint8_t* c,
               const uint8_t* d, int64_t from, int64_t to, uint8_t* const* out) {
  using R = typename V::R;
  R w01[n], w23[n];
  for (int64_t k = 0; k < n; ++k) {
    w01[k] = V::Set16(BytePair(w[k][0], w[k][1]));
    w23[k] = V::Set16(BytePair(w[k][2], w[k][3]));
  }
  const R round = V::Set16(32);
  for (int64_t x = from; x < to; x += V::kBytes) {
    const R ra = V::Load(a + x), rb = V::Load(b + x), rc = V::Load(c + x), rd = V::Load(d + x);
    const R ab_lo = V::Unpack8Lo(ra, rb), cd_lo = V::Unpack8Lo(rc, rd);
    const R ab_hi = V::Unpack8Hi(ra, rb), cd_hi = V::Unpack8Hi(rc, rd);
    for (int64_t k = 0; k < n; ++k) {
      const R lo = V::Add16(V::MaddU8S8(ab_lo, w01[k]), V::MaddU8S8(cd_lo, w23[k]));
      const R hi = V::Add16(V::MaddU8S8(ab_hi, w01[k]), V::MaddU8S8(cd_hi, w23[k]));
      V::Store(out[k] + x,
               V::PackU16(V::Sra16x6(V::Add16(lo, round)), V::Sra16x6(V::Add16(hi, round))));
    }
  }
}

template <class V>
void FillPlane(const Plane& p, const Padded& d) {
  for (int64_t j = 0; j < p.other; ++j) SplitRow(p.Other(j), p.width, d.Row(j), d.stride);
  for (int64_t j = 0; j < p.kept; ++j) SplitRow(p.Kept(j), p.width, d.Row(p.other + j), d.stride);
  // Reads reach from x - 1 to x + 2 + kBytes within the row; made from -8 to past the last
  // block's end plus the widest offset.
  const int64_t from = -8, to = d.stride - kPadLeft - V::kBytes - 2;
  for (int64_t j = 0; j < p.other; ++j) {
    uint8_t* between[7];
    for (int64_t ph = 1; ph < 8; ++ph) between[ph - 1] = d.Between(ph, j);
    Taps4Rows<V, 7>(kVe + 1, d.Kept(j - 1), d.Kept(j), d.Kept(j + 1), d.Kept(j + 2), from, to,
                    between);
    uint8_t* shifted[3] = {d.Shifted(1, j), d.Shifted(2, j), d.Shifted(3, j)};
    const uint8_t* row = d.Row(j);
    Taps4Rows<V, 3>(kHq + 1, row - 1, row, row + 1, row + 2, from, to, shifted);
  }
}

// Sum of |a[r] - b[r]| over the rows' 16 bytes; `masked` leaves out the bytes that mask clears.
template <class V>
uint32_t BlockSad(const uint8_t* const* a, const uint8_t* const* b, bool masked,
                  typename V::R mask) {
  typename V::R acc = V::Zero();
  for (int64_t r = 0; r < kBlockH; r += V::kBytes / 16) {
    typename V::R x = V::LoadRows(a + r), y = V::LoadRows(b + r);
    if (masked) x = V::And(mask, x), y = V::And(mask, y);
    acc = V::Add64(acc, V::Sad(x, y));
  }
  return V::SumSad(acc);
}

// A block's SADs at fractional vectors (the reference's BlockCost) for stages 2 and 3, all rows
// from the padded planes. Rows past the field's end point both sides at zeros.
template <class V>
class FractionalCosts {
 public:
  FractionalCosts(const Padded& d, int64_t i0, int64_t rows, int64_t x, int64_t valid)
      : d_(d), i0_(i0), rows_(rows), x_(x), masked_(valid < 16) {
    alignas(32) uint8_t pattern[32] = {};
    for (int64_t k = 0; masked_ && k < 32; ++k) pattern[k] = k % 16 < valid ? 255 : 0;
    mask_ = V::Load(pattern);
  }

  uint32_t operator()(int32_t u, int32_t v) const {
    const Split sv = SplitV(v);
    const int64_t ph = sv.f + 4;
    const uint8_t *moved[kBlockH], *kept[kBlockH];
    const int64_t j0 = i0_ - sv.m;
    if (rows_ == kBlockH && j0 >= 0 && j0 + kBlockH <= d_.other) {
      // Nothing clamped: consecutive rows of each plane.
      const uint8_t* m0 = d_.Moved(j0, u) + x_;
      const uint8_t* k0 = (ph == 0 ? d_.Kept(i0_) : d_.Between(ph, i0_)) + x_;
      for (int64_t r = 0; r < kBlockH; ++r) {
        moved[r] = m0 + r * d_.stride;
        kept[r] = k0 + r * d_.stride;
      }
      return BlockSad<V>(moved, kept, masked_, mask_);
    }
    for (int64_t r = 0; r < kBlockH; ++r) {
      const int64_t i = i0_ + r;
      if (r >= rows_) {
        moved[r] = kept[r] = kValidBytes + 32;
      } else {
        moved[r] = d_.Moved(i - sv.m, u) + x_;
        kept[r] = (ph == 0 ? d_.Kept(i) : d_.Between(ph, i)) + x_;
      }
    }
    return BlockSad<V>(moved, kept, masked_, mask_);
  }

 private:
  const Padded& d_;
  int64_t i0_, rows_, x_;
  bool masked_;
  typename V::R mask_;
};

// Stage 1 for one block row: costs[bx * kCandidates + k] for every integer candidate k and,
// last, the SAD against the kept rows below (the line-doubling check's second half). Each row
// offset's target rows are loaded once for its nine horizontal offsets; only the register
// holding the plane's end is masked.
template <class V>
void IntegerCosts(const Padded& d, int64_t i0, int64_t rows, int64_t cols, uint32_t* costs) {
  using R = typename V::R;
  constexpr int64_t kBlocks = V::kBytes / 16;
  const int64_t full = d.width / V::kBytes * V::kBytes;
  const R tail_mask = V::Load(kValidBytes + 32 - (d.width - full));
  for (int32_t v = -kRangeV; v <= kRangeV + 1; ++v) {
    const bool below = v > kRangeV;  // the line-doubling check: u = 0 against the rows below
    const Split sv = SplitV(below ? 0 : 4 * v);
    const uint8_t *moved[kBlockH], *target[kBlockH];
    for (int64_t r = 0; r < rows; ++r) {
      const int64_t i = i0 + r;
      moved[r] = d.Other(i - sv.m);
      target[r] = below ? d.Kept(i + 1) : sv.f == 0 ? d.Mid(i) : d.Kept(i);
    }
    const auto columns = [&](int64_t x, R mask) {
      R t[kBlockH];
      for (int64_t r = 0; r < rows; ++r) t[r] = V::And(mask, V::Load(target[r] + x));
      for (int32_t u = below ? 0 : -kRangeU; u <= (below ? 0 : kRangeU); ++u) {
        R acc = V::Zero();
        for (int64_t r = 0; r < rows; ++r) {
          acc = V::Add64(acc, V::Sad(V::And(mask, V::Load(moved[r] + x - u)), t[r]));
        }
        const int64_t k = below ? kIntegerCandidates : (v + kRangeV) * 9 + u + kRangeU;
        uint64_t lanes[V::kBytes / 8];
        V::Store(reinterpret_cast<uint8_t*>(lanes), acc);
        for (int64_t b = 0; b < kBlocks && x / 16 + b < cols; ++b) {
          costs[(x / 16 + b) * kCandidates + k] =
              static_cast<uint32_t>(lanes[2 * b] + lanes[2 * b + 1]);
        }
      }
    };
    for (int64_t x = 0; x < full; x += V::kBytes) columns(x, V::Ones());
    if (full < d.width) columns(full, tail_mask);
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
      FractionalCosts<V> cost(d, i0, rows, x, valid);
      const Vector best = Refine(PickInteger(c), cost);
      const int64_t b = f.Index(by, bx);
      f.u[b] = static_cast<int8_t>(best.u);
      f.v[b] = static_cast<int8_t>(best.v);
      // Candidate (0, -1) compares each other-field row with the kept row above.
      f.same[b] = c[(kRangeV - 1) * 9 + kRangeU] == 0 || c[kIntegerCandidates] == 0 ? 1 : 0;
    }
  }
}

// A block's rebuilt samples (RebuildSample), rows of 16 at out.
template <class V>
void RebuildBlock(const Padded& d, int64_t i0, int64_t rows, int64_t x, int32_t u, int32_t v,
                  int32_t t, uint8_t* out, int64_t out_stride) {
  using R = typename V::R;
  const Split sv = SplitV(v);
  const int32_t* w = kRw[sv.f + 4];
  const uint8_t* moved[kBlockH + 2];
  for (int64_t k = 0; k < rows + 2; ++k) {
    moved[k] = d.Moved(Clamp64(i0 - 1 + k, 0, d.other - 1) - sv.m, u) + x;
  }
  const R w01 = V::SetPair(w[0], w[1]), w23 = V::SetPair(w[2], w[3]);
  const R w45 = V::SetPair(w[4], w[5]), w6r = V::SetPair(w[6], 32), one = V::Set16(1);
  const R margin = V::Set16(t < 1024 ? t : 1024);  // past 1024 no rebuilt value is limited
  for (int64_t r = 0; r < rows; ++r) {
    const int64_t i = i0 + r;
    const uint8_t *kept0 = d.Kept(i - 1), *kept1 = d.Kept(i), *kept2 = d.Kept(i + 1);
    const uint8_t* kept3 = d.Kept(i + 2);
    for (int64_t h = 0; h < 16; h += V::kBytes / 2) {
      const R k0 = V::LoadWide(kept0 + x + h), k1 = V::LoadWide(kept1 + x + h);
      const R k2 = V::LoadWide(kept2 + x + h), k3 = V::LoadWide(kept3 + x + h);
      const R o0 = V::LoadWide(moved[r] + h), o1 = V::LoadWide(moved[r + 1] + h);
      const R o2 = V::LoadWide(moved[r + 2] + h);
      // 32-bit sums: the weights' magnitudes add up to 354, too much for 16 bits.
      const auto half = [&](auto unpack) {
        R acc = V::Add32(V::Madd16(unpack(k0, k1), w01), V::Madd16(unpack(k2, k3), w23));
        acc = V::Add32(acc,
                       V::Add32(V::Madd16(unpack(o0, o1), w45), V::Madd16(unpack(o2, one), w6r)));
        return V::Sra32x6(acc);
      };
      const R rebuilt = V::PackS32(half([](R a, R b) { return V::Unpack16Lo(a, b); }),
                                   half([](R a, R b) { return V::Unpack16Hi(a, b); }));
      const R lo = V::Sub16(V::Min16(k1, k2), margin), hi = V::Add16(V::Max16(k1, k2), margin);
      V::StoreNarrow(out + r * out_stride + h, V::Max16(V::Min16(rebuilt, hi), lo));
    }
  }
}

// Block row by block row into `lines` (8 rows of the padded stride), then back into the plane's
// samples of the destination.
template <class V>
void RebuildPadded(const Padded& d, const BlockField& f, int32_t t, uint8_t* dst, int32_t dst_step,
                   int64_t channel, uint8_t* lines) {
  for (int64_t by = 0; by < f.rows; ++by) {
    const int64_t i0 = by * kBlockH;
    const int64_t rows = d.other - i0 < kBlockH ? d.other - i0 : kBlockH;
    for (int64_t bx = 0; bx < f.cols; ++bx) {
      const int64_t b = f.Index(by, bx), x = bx * kBlockW;
      if (f.same[b] != 0) {
        for (int64_t r = 0; r < rows; ++r)
          std::memcpy(lines + r * d.stride + x, d.Other(i0 + r) + x, 16);
      } else {
        RebuildBlock<V>(d, i0, rows, x, f.u[b], f.v[b], t, lines + x, d.stride);
      }
    }
    for (int64_t r = 0; r < rows; ++r) {
      const uint8_t* line = lines + r * d.stride;
      uint8_t* out = RowAt(dst, dst_step, 2 * (i0 + r) + 1) + channel;
      for (int64_t x = 0; x < d.width; ++x) out[3 * x] = line[x];
    }
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
  const int64_t plane_bytes = (Padded::kRowsPerOther * first.other + first.kept) * stride;
  const int64_t cost_bytes = cols * kCandidates * 4;
  MotionFields fields(roi, plane_bytes + cost_bytes + kBlockH * stride);
  if (!fields.Ready()) {
    RebuildWithoutMotion(src, src_step, dst, dst_step, threshold, roi);
    return ippStsNoErr;
  }
  uint8_t* work = fields.Extra();
  uint32_t* costs = reinterpret_cast<uint32_t*>(work + plane_bytes);
  uint8_t* lines = work + plane_bytes + cost_bytes;
  for (int64_t c = 0; c < fields.Planes(); ++c) {
    const Plane p = PlaneOf(src, src_step, roi, c);
    const Padded d{work, PaddedStride(p.width), p.width, p.kept, p.other};
    FillPlane<V>(p, d);
    BlockField& f = fields[c];
    SearchPadded<V>(d, f, costs);
    SmoothField(f);
    RebuildPadded<V>(d, f, threshold, dst, dst_step, c, lines);
  }
  return ippStsNoErr;
}

}  // namespace
}  // namespace framekit::prim::cavt

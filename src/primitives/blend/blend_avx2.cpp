// Overlay blends, AVX2 level: the SSSE3 bodies' arithmetic on 32-byte vectors (in-lane unpacks
// and packs keep the byte order). The 4-byte source over a 3-byte destination still takes 16
// pixels a step, two groups of four in each vector.
#include <immintrin.h>

#include "primitives/blend/blend.h"
#include "primitives/core/pixels_avx2.h"
#include "primitives/core/rows.h"

namespace framekit::prim::avx2 {
namespace {

inline __m256i Load(const uint8_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
inline void Store(uint8_t* p, __m256i v) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v); }
inline __m256i Div255x(__m256i x) {
  return _mm256_srli_epi16(
      _mm256_add_epi16(_mm256_add_epi16(x, _mm256_srli_epi16(x, 8)), _mm256_set1_epi16(1)), 8);
}

inline __m256i Over16(__m256i a, __m256i b, __m256i alpha_a, __m256i alpha_b) {
  const __m256i first = Div255x(_mm256_mullo_epi16(a, alpha_a));
  const __m256i second = Div255x(_mm256_mullo_epi16(
      Div255x(_mm256_mullo_epi16(b, alpha_b)), _mm256_sub_epi16(_mm256_set1_epi16(255), alpha_a)));
  return _mm256_add_epi16(first, second);
}

}  // namespace

namespace {

// c + RoundHalfEven((s - c) a / 256) for 16-bit lanes c, s, a, with c127 = c * 256 + 127: the
// low 16 bits of p = (s - c) a are exact for the sum c * 256 + p, and bit 8 of p is the parity
// of the floor of p / 256, which the ties round to.
inline __m256i AlphaBlend16(__m256i c, __m256i c127, __m256i s, __m256i a) {
  const __m256i p = _mm256_mullo_epi16(_mm256_sub_epi16(s, c), a);
  const __m256i odd = _mm256_and_si256(_mm256_srli_epi16(p, 8), _mm256_set1_epi16(1));
  return _mm256_srli_epi16(_mm256_add_epi16(_mm256_add_epi16(c127, p), odd), 8);
}

template <bool kScaled>
void BlendAlphaRow(const uint8_t* in, uint8_t* out, int64_t width, int32_t scale) {
  const __m256i zero = _mm256_setzero_si256(), low127 = _mm256_set1_epi8(127);
  const __m256i factor = _mm256_set1_epi16(static_cast<int16_t>(scale));
  const __m256i colours =
      _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1,  //
                       0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
  const __m256i alphas =
      _mm256_setr_epi8(3, 3, 3, 7, 7, 7, 11, 11, 11, 15, 15, 15, -1, -1, -1, -1,  //
                       3, 3, 3, 7, 7, 7, 11, 11, 11, 15, 15, 15, -1, -1, -1, -1);
  int64_t x = 0;
  for (; x + 32 <= width; x += 32) {
    __m256i px[4], cs[4], as[4], s3[3], a3[3];
    for (int k = 0; k < 4; ++k) {
      px[k] = Load(in + 4 * x + 32 * k);
      cs[k] = _mm256_shuffle_epi8(px[k], colours);
      as[k] = _mm256_shuffle_epi8(px[k], alphas);
    }
    avx2_pixels::PackTwelves(cs, s3);
    avx2_pixels::PackTwelves(as, a3);
    uint8_t* d = out + 3 * x;
    for (int k = 0; k < 3; ++k) {
      const __m256i c = Load(d + 32 * k), s = s3[k], a = a3[k];
      __m256i a_lo = _mm256_unpacklo_epi8(a, zero), a_hi = _mm256_unpackhi_epi8(a, zero);
      if (kScaled) {
        a_lo = _mm256_srli_epi16(_mm256_mullo_epi16(a_lo, factor), 8);
        a_hi = _mm256_srli_epi16(_mm256_mullo_epi16(a_hi, factor), 8);
      }
      const __m256i lo =
          AlphaBlend16(_mm256_unpacklo_epi8(c, zero), _mm256_unpacklo_epi8(low127, c),
                       _mm256_unpacklo_epi8(s, zero), a_lo);
      const __m256i hi =
          AlphaBlend16(_mm256_unpackhi_epi8(c, zero), _mm256_unpackhi_epi8(low127, c),
                       _mm256_unpackhi_epi8(s, zero), a_hi);
      Store(d + 32 * k, _mm256_packus_epi16(lo, hi));
    }
  }
  for (; x < width; ++x) BlendAlphaPixel(in + 4 * x, out + 3 * x, scale);
}

}  // namespace

Status BlendAlpha_8u_AC4C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                            Size roi, int32_t scale) {
  if (const Status s = CheckBlend(src, dst, roi, scale); s != ippStsNoErr) return s;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* in = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    if (scale == 256) {
      BlendAlphaRow<false>(in, out, roi.width, scale);
    } else {
      BlendAlphaRow<true>(in, out, roi.width, scale);
    }
  }
  return ippStsNoErr;
}

namespace {

// The rounded blend of 32 bytes with the plan's weights (see PlanConstBlend): the multiply-add,
// the rounding multiply-high, the base added where the result is a difference, then minus one
// at the ties that round down (an all-ones compare added).
enum class ConstKind { kEven, kOddFromC, kOddFromS };

template <ConstKind kKind, bool kPositive>
inline void ConstBlend32(const uint8_t* in, uint8_t* out, __m256i weights, __m256i multiplier,
                         __m256i down_mask, __m256i down_value) {
  const __m256i c = Load(out), s = Load(in);
  const __m256i lo =
      _mm256_mulhrs_epi16(_mm256_maddubs_epi16(_mm256_unpacklo_epi8(c, s), weights), multiplier);
  const __m256i hi =
      _mm256_mulhrs_epi16(_mm256_maddubs_epi16(_mm256_unpackhi_epi8(c, s), weights), multiplier);
  __m256i result, down;
  if (kKind == ConstKind::kEven) {
    result = _mm256_packus_epi16(lo, hi);
    down = _mm256_cmpeq_epi8(_mm256_and_si256(_mm256_sub_epi8(s, c), down_mask), down_value);
  } else {
    result = _mm256_add_epi8(_mm256_packs_epi16(lo, hi), kKind == ConstKind::kOddFromC ? c : s);
    down = _mm256_cmpeq_epi8(kPositive ? _mm256_subs_epu8(s, c) : _mm256_subs_epu8(c, s),
                             _mm256_set1_epi8(static_cast<char>(0x80)));
  }
  Store(out, _mm256_add_epi8(result, down));
}

template <ConstKind kKind, bool kPositive = false>
int64_t ConstBlendRow(const uint8_t* in, uint8_t* out, int64_t bytes, const ConstBlendPlan& plan) {
  const __m256i weights = _mm256_set1_epi16(
      static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint8_t>(plan.weight_c)) |
                           static_cast<uint16_t>(static_cast<uint8_t>(plan.weight_s) << 8)));
  const __m256i multiplier = _mm256_set1_epi16(plan.multiplier);
  const __m256i down_mask = _mm256_set1_epi8(static_cast<char>(plan.down_mask));
  const __m256i down_value = _mm256_set1_epi8(static_cast<char>(plan.down_value));
  int64_t i = 0;
  for (; i + 64 <= bytes; i += 64) {
    ConstBlend32<kKind, kPositive>(in + i, out + i, weights, multiplier, down_mask, down_value);
    ConstBlend32<kKind, kPositive>(in + i + 32, out + i + 32, weights, multiplier, down_mask,
                                   down_value);
  }
  for (; i + 32 <= bytes; i += 32) {
    ConstBlend32<kKind, kPositive>(in + i, out + i, weights, multiplier, down_mask, down_value);
  }
  return i;
}

// t = 128: the rounded mean, minus one at the ties that round down (s - c = 1 mod 4).
int64_t HalfBlendRow(const uint8_t* in, uint8_t* out, int64_t bytes) {
  const __m256i three = _mm256_set1_epi8(3), one = _mm256_set1_epi8(1);
  int64_t i = 0;
  for (; i + 32 <= bytes; i += 32) {
    const __m256i c = Load(out + i), s = Load(in + i);
    const __m256i down = _mm256_cmpeq_epi8(_mm256_and_si256(_mm256_sub_epi8(s, c), three), one);
    Store(out + i, _mm256_add_epi8(_mm256_avg_epu8(c, s), down));
  }
  return i;
}

}  // namespace

Status BlendConst_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t t) {
  if (const Status s = CheckBlend(src, dst, roi, t); s != ippStsNoErr) return s;
  if (t == 0) return ippStsNoErr;  // c + 0
  const int64_t bytes = 3 * int64_t{roi.width};
  const ConstBlendPlan plan = PlanConstBlend(t == 256 ? 1 : t);
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* in = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    int64_t i = 0;
    if (t == 256) {  // s exactly
      for (; i + 32 <= bytes; i += 32) Store(out + i, Load(in + i));
    } else if (t == 128) {
      i = HalfBlendRow(in, out, bytes);
    } else if (!plan.odd) {
      i = ConstBlendRow<ConstKind::kEven>(in, out, bytes, plan);
    } else if (plan.from_s) {
      i = plan.down_positive ? ConstBlendRow<ConstKind::kOddFromS, true>(in, out, bytes, plan)
                             : ConstBlendRow<ConstKind::kOddFromS, false>(in, out, bytes, plan);
    } else {
      i = plan.down_positive ? ConstBlendRow<ConstKind::kOddFromC, true>(in, out, bytes, plan)
                             : ConstBlendRow<ConstKind::kOddFromC, false>(in, out, bytes, plan);
    }
    for (; i < bytes; ++i) out[i] = RoundBlend(out[i], in[i], t);
  }
  return ippStsNoErr;
}

Status AlphaShift_8u_AC4IR(uint8_t* p, int32_t step, Size roi, int32_t delta) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const __m256i low =
      _mm256_set1_epi32(static_cast<int32_t>(static_cast<uint32_t>(delta & 0xFF) << 24));
  const int64_t block = AlphaShiftBlockPixels(roi.width);
  for (int64_t y = 0; y < roi.height; ++y) {
    uint8_t* row = RowAt(p, step, y);
    for (int64_t i = 0; i < 4 * block; i += 32)
      Store(row + i, _mm256_subs_epu8(Load(row + i), low));
    for (int64_t x = block; x < roi.width; ++x) {
      row[4 * x + 3] = ShiftAlphaClamped(row[4 * x + 3], delta);
    }
  }
  return ippStsNoErr;
}

Status ippiAlphaComp_8u_AC4R(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                             int32_t src2_step, uint8_t* dst, int32_t dst_step, Size roi,
                             int32_t alpha_type) {
  if (const Status s = CheckAlphaComp(src1, src2, dst, roi, alpha_type); s != ippStsNoErr) {
    return s;
  }
  // Byte 3 of both pixels read as 255: the colour formula then gives the alpha formula.
  const __m256i zero = _mm256_setzero_si256();
  const __m256i opaque = _mm256_set1_epi32(static_cast<int32_t>(0xFF000000u));
  const __m256i alpha = _mm256_setr_epi8(3, 3, 3, 3, 7, 7, 7, 7, 11, 11, 11, 11, 15, 15, 15, 15,  //
                                         3, 3, 3, 3, 7, 7, 7, 7, 11, 11, 11, 11, 15, 15, 15, 15);
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* a = RowAt(src1, src1_step, y);
    const uint8_t* b = RowAt(src2, src2_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    int64_t x = 0;
    for (; x + 8 <= width; x += 8) {
      const __m256i pa = Load(a + 4 * x), pb = Load(b + 4 * x);
      const __m256i ca = _mm256_or_si256(pa, opaque), cb = _mm256_or_si256(pb, opaque);
      const __m256i aa = _mm256_shuffle_epi8(pa, alpha), ab = _mm256_shuffle_epi8(pb, alpha);
      const __m256i lo = Over16(_mm256_unpacklo_epi8(ca, zero), _mm256_unpacklo_epi8(cb, zero),
                                _mm256_unpacklo_epi8(aa, zero), _mm256_unpacklo_epi8(ab, zero));
      const __m256i hi = Over16(_mm256_unpackhi_epi8(ca, zero), _mm256_unpackhi_epi8(cb, zero),
                                _mm256_unpackhi_epi8(aa, zero), _mm256_unpackhi_epi8(ab, zero));
      Store(out + 4 * x, _mm256_packus_epi16(lo, hi));
    }
    for (; x < width; ++x) CompositeOverPixel(a + 4 * x, b + 4 * x, out + 4 * x);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

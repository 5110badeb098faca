// Overlay blends, SSSE3 level: the constant blend as the AVX2 body does it (multiply-add of the
// byte pairs, rounding multiply-high, ties found from the bytes' difference), the others in
// 16-bit lanes. The 4-byte source over a 3-byte destination takes 16 pixels a step: the
// destination's four groups of four pixels are spread to 4-byte pixels with byte shuffles,
// blended beside the source's pixels and packed back.
#include <tmmintrin.h>

#include "primitives/blend/blend.h"
#include "primitives/core/rows.h"

namespace framekit::prim::ssse3 {
namespace {

inline __m128i Load(const uint8_t* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
inline void Store(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }

// c + RoundHalfEven((s - c) a / 256) in 16-bit lanes, with c127 = c * 256 + 127: the low 16 bits
// of p = (s - c) a are exact for the sum c * 256 + p, and bit 8 of p is the parity of the floor
// of p / 256, which the ties round to.
inline __m128i AlphaBlend16(__m128i c, __m128i c127, __m128i s, __m128i a) {
  const __m128i p = _mm_mullo_epi16(_mm_sub_epi16(s, c), a);
  const __m128i odd = _mm_and_si128(_mm_srli_epi16(p, 8), _mm_set1_epi16(1));
  return _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(c127, p), odd), 8);
}

// d(x) = (x + (x >> 8) + 1) >> 8 in 16-bit lanes (x up to 255 * 255).
inline __m128i Div255x(__m128i x) {
  return _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(x, _mm_srli_epi16(x, 8)), _mm_set1_epi16(1)),
                        8);
}

// The composite of 16-bit lanes: d(a aA) + d(d(b aB) (255 - aA)).
inline __m128i Over16(__m128i a, __m128i b, __m128i alpha_a, __m128i alpha_b) {
  const __m128i first = Div255x(_mm_mullo_epi16(a, alpha_a));
  const __m128i second = Div255x(_mm_mullo_epi16(Div255x(_mm_mullo_epi16(b, alpha_b)),
                                                 _mm_sub_epi16(_mm_set1_epi16(255), alpha_a)));
  return _mm_add_epi16(first, second);
}

}  // namespace

Status BlendAlpha_8u_AC4C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                            Size roi, int32_t scale) {
  if (const Status s = CheckBlend(src, dst, roi, scale); s != ippStsNoErr) return s;
  const __m128i zero = _mm_setzero_si128(), factor = _mm_set1_epi16(static_cast<int16_t>(scale));
  const __m128i low127 = _mm_set1_epi8(127);
  // Destination pixels 0-3 of a 16-byte load at offset 0, or 4-7 of one at offset 8 (bytes 4-15).
  const __m128i spread[2] = {
      _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1),
      _mm_setr_epi8(4, 5, 6, -1, 7, 8, 9, -1, 10, 11, 12, -1, 13, 14, 15, -1)};
  const __m128i alpha = _mm_setr_epi8(3, 3, 3, -1, 7, 7, 7, -1, 11, 11, 11, -1, 15, 15, 15, -1);
  const __m128i pack = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* in = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    int64_t x = 0;
    for (; x + 16 <= width; x += 16) {
      uint8_t* d = out + 3 * x;
      const int offsets[4] = {0, 8, 24, 32};
      __m128i r[4];
      for (int k = 0; k < 4; ++k) {
        const __m128i c = _mm_shuffle_epi8(Load(d + offsets[k]), spread[k & 1]);
        const __m128i s = Load(in + 4 * x + 16 * k);
        const __m128i a = _mm_shuffle_epi8(s, alpha);
        const __m128i a_lo = _mm_srli_epi16(_mm_mullo_epi16(_mm_unpacklo_epi8(a, zero), factor), 8);
        const __m128i a_hi = _mm_srli_epi16(_mm_mullo_epi16(_mm_unpackhi_epi8(a, zero), factor), 8);
        const __m128i lo = AlphaBlend16(_mm_unpacklo_epi8(c, zero), _mm_unpacklo_epi8(low127, c),
                                        _mm_unpacklo_epi8(s, zero), a_lo);
        const __m128i hi = AlphaBlend16(_mm_unpackhi_epi8(c, zero), _mm_unpackhi_epi8(low127, c),
                                        _mm_unpackhi_epi8(s, zero), a_hi);
        r[k] = _mm_shuffle_epi8(_mm_packus_epi16(lo, hi), pack);
      }
      Store(d, _mm_or_si128(r[0], _mm_slli_si128(r[1], 12)));
      Store(d + 16, _mm_or_si128(_mm_srli_si128(r[1], 4), _mm_slli_si128(r[2], 8)));
      Store(d + 32, _mm_or_si128(_mm_srli_si128(r[2], 8), _mm_slli_si128(r[3], 4)));
    }
    for (; x < width; ++x) BlendAlphaPixel(in + 4 * x, out + 3 * x, scale);
  }
  return ippStsNoErr;
}

namespace {

// The constant blend of 16 bytes by the plan (see PlanConstBlend), as in the AVX2 body.
enum class ConstKind { kEven, kOddFromC, kOddFromS };

template <ConstKind kKind, bool kPositive>
inline void ConstBlend16(const uint8_t* in, uint8_t* out, __m128i weights, __m128i multiplier,
                         __m128i down_mask, __m128i down_value) {
  const __m128i c = Load(out), s = Load(in);
  const __m128i lo =
      _mm_mulhrs_epi16(_mm_maddubs_epi16(_mm_unpacklo_epi8(c, s), weights), multiplier);
  const __m128i hi =
      _mm_mulhrs_epi16(_mm_maddubs_epi16(_mm_unpackhi_epi8(c, s), weights), multiplier);
  __m128i result, down;
  if (kKind == ConstKind::kEven) {
    result = _mm_packus_epi16(lo, hi);
    down = _mm_cmpeq_epi8(_mm_and_si128(_mm_sub_epi8(s, c), down_mask), down_value);
  } else {
    result = _mm_add_epi8(_mm_packs_epi16(lo, hi), kKind == ConstKind::kOddFromC ? c : s);
    down = _mm_cmpeq_epi8(kPositive ? _mm_subs_epu8(s, c) : _mm_subs_epu8(c, s),
                          _mm_set1_epi8(static_cast<char>(0x80)));
  }
  Store(out, _mm_add_epi8(result, down));
}

template <ConstKind kKind, bool kPositive = false>
int64_t ConstBlendRow(const uint8_t* in, uint8_t* out, int64_t bytes, const ConstBlendPlan& plan) {
  const __m128i weights = _mm_set1_epi16(
      static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint8_t>(plan.weight_c)) |
                           static_cast<uint16_t>(static_cast<uint8_t>(plan.weight_s) << 8)));
  const __m128i multiplier = _mm_set1_epi16(plan.multiplier);
  const __m128i down_mask = _mm_set1_epi8(static_cast<char>(plan.down_mask));
  const __m128i down_value = _mm_set1_epi8(static_cast<char>(plan.down_value));
  int64_t i = 0;
  for (; i + 16 <= bytes; i += 16) {
    ConstBlend16<kKind, kPositive>(in + i, out + i, weights, multiplier, down_mask, down_value);
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
      for (; i + 16 <= bytes; i += 16) Store(out + i, Load(in + i));
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
  const __m128i low =
      _mm_set1_epi32(static_cast<int32_t>(static_cast<uint32_t>(delta & 0xFF) << 24));
  const int64_t block = AlphaShiftBlockPixels(roi.width);
  for (int64_t y = 0; y < roi.height; ++y) {
    uint8_t* row = RowAt(p, step, y);
    for (int64_t i = 0; i < 4 * block; i += 16) Store(row + i, _mm_subs_epu8(Load(row + i), low));
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
  // With byte 3 of both pixels read as 255 the colour formula gives the alpha formula
  // (d(255 a) = a), so all four bytes take one path.
  const __m128i zero = _mm_setzero_si128();
  const __m128i opaque = _mm_set1_epi32(static_cast<int32_t>(0xFF000000u));
  const __m128i alpha = _mm_setr_epi8(3, 3, 3, 3, 7, 7, 7, 7, 11, 11, 11, 11, 15, 15, 15, 15);
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* a = RowAt(src1, src1_step, y);
    const uint8_t* b = RowAt(src2, src2_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    int64_t x = 0;
    for (; x + 4 <= width; x += 4) {
      const __m128i pa = Load(a + 4 * x), pb = Load(b + 4 * x);
      const __m128i ca = _mm_or_si128(pa, opaque), cb = _mm_or_si128(pb, opaque);
      const __m128i aa = _mm_shuffle_epi8(pa, alpha), ab = _mm_shuffle_epi8(pb, alpha);
      const __m128i lo = Over16(_mm_unpacklo_epi8(ca, zero), _mm_unpacklo_epi8(cb, zero),
                                _mm_unpacklo_epi8(aa, zero), _mm_unpacklo_epi8(ab, zero));
      const __m128i hi = Over16(_mm_unpackhi_epi8(ca, zero), _mm_unpackhi_epi8(cb, zero),
                                _mm_unpackhi_epi8(aa, zero), _mm_unpackhi_epi8(ab, zero));
      Store(out + 4 * x, _mm_packus_epi16(lo, hi));
    }
    for (; x < width; ++x) CompositeOverPixel(a + 4 * x, b + 4 * x, out + 4 * x);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ssse3

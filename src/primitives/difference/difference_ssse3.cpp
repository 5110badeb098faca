// Frame difference, SSSE3 level: 16 pixels a step, as the AVX2 body does it with one lane. Each
// group of four pixels is loaded as 16 bytes (the last group from 4 bytes earlier, so nothing past
// the 48 is read), spread to blue, green, red, 0 and summed (luminance) or weighted by the chosen
// channels with a multiply-add and a horizontal add; the divisions by 3 of sums up to 765 are a
// multiply-high by 21846 (exact below 98304 / 3).
#include <tmmintrin.h>

#include "primitives/core/rows.h"
#include "primitives/difference/difference.h"

namespace framekit::prim::ssse3 {
namespace {

inline __m128i Load(const uint8_t* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

// Weighted sums of pixels 0-7 (half 0) or 8-15 (half 1) of p, 16-bit lanes in pixel order.
inline void Sums(const uint8_t* p, __m128i weights, __m128i half[2]) {
  const __m128i at0 = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
  const __m128i at4 = _mm_setr_epi8(4, 5, 6, -1, 7, 8, 9, -1, 10, 11, 12, -1, 13, 14, 15, -1);
  __m128i pairs[4];
  for (int k = 0; k < 4; ++k) {
    const __m128i px =
        k < 3 ? _mm_shuffle_epi8(Load(p + 12 * k), at0) : _mm_shuffle_epi8(Load(p + 32), at4);
    pairs[k] = _mm_maddubs_epi16(px, weights);
  }
  half[0] = _mm_hadd_epi16(pairs[0], pairs[1]);
  half[1] = _mm_hadd_epi16(pairs[2], pairs[3]);
}

}  // namespace

Status MotionDiff_8u_C3C1R(const uint8_t* a, int32_t a_step, const uint8_t* b, int32_t b_step,
                           uint8_t* map, int32_t map_step, Size roi, int32_t channels,
                           uint64_t* sum) {
  if (const Status s = CheckMotionDiff(a, b, map, roi, channels, sum); s != ippStsNoErr) return s;
  const bool luminance = channels == kDiffLuminance;
  const auto use = [&](int32_t bit) { return luminance || (channels & bit) ? 1 : 0; };
  const __m128i weights =
      _mm_set1_epi32(use(kDiffBlue) | use(kDiffGreen) << 8 | use(kDiffRed) << 16);
  const __m128i third = _mm_set1_epi16(21846), zero = _mm_setzero_si128();
  __m128i sums = zero;
  uint64_t total = 0;
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* pa = RowAt(a, a_step, y);
    const uint8_t* pb = RowAt(b, b_step, y);
    uint8_t* out = RowAt(map, map_step, y);
    int64_t x = 0;
    for (; x + 16 <= width; x += 16) {
      __m128i sa[2], sb[2], d[2];
      Sums(pa + 3 * x, weights, sa);
      Sums(pb + 3 * x, weights, sb);
      for (int h = 0; h < 2; ++h) {
        d[h] = luminance ? _mm_abs_epi16(_mm_sub_epi16(_mm_mulhi_epu16(sa[h], third),
                                                       _mm_mulhi_epu16(sb[h], third)))
                         : _mm_mulhi_epu16(_mm_abs_epi16(_mm_sub_epi16(sa[h], sb[h])), third);
      }
      const __m128i v = _mm_packus_epi16(d[0], d[1]);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + x), v);
      sums = _mm_add_epi64(sums, _mm_sad_epu8(v, zero));
    }
    for (; x < width; ++x) {
      out[x] = MotionDiffPixel(pa + 3 * x, pb + 3 * x, channels);
      total += out[x];
    }
  }
  alignas(16) uint64_t lanes[2];
  _mm_store_si128(reinterpret_cast<__m128i*>(lanes), sums);
  *sum += total + lanes[0] + lanes[1];
  return ippStsNoErr;
}

}  // namespace framekit::prim::ssse3

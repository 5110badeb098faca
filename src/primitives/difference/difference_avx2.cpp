// Frame difference, AVX2 level: 32 pixels a step. Eight pixels are loaded as two 16-byte halves
// so that each lane holds four (the high one from 8 bytes on, its pixels in bytes 4-15), spread
// to blue, green, red, 0 and summed (luminance) or weighted by the chosen channels with
// multiply-adds; the divisions by 3 of sums up to 765 are a multiply-high by 21846.
#include <immintrin.h>

#include "primitives/core/pixels_avx2.h"
#include "primitives/core/rows.h"
#include "primitives/difference/difference.h"

namespace framekit::prim::avx2 {
namespace {

// Eight pixels as LoadFours gives them; kOver may read 8 bytes past them.
template <bool kOver>
inline __m256i Load(const uint8_t* p) {
  return kOver ? avx2_pixels::LoadFoursOver(p) : avx2_pixels::LoadFours(p);
}

// 32 pixels of the map and their sum's lanes. Blue and green, red and 0 of each pixel are
// weighted and added in pairs, and the pairs' horizontal sums give 16 pixels' weighted sums:
// pixels 0-3 and 8-11 in the low lane, 4-7 and 12-15 in the high one, which a dword move puts
// back in order once both halves are packed to bytes.
template <bool kLuminance, bool kOver>
inline __m256i Difference32(const uint8_t* pa, const uint8_t* pb, __m256i weights, __m256i spread) {
  const __m256i third = _mm256_set1_epi16(21846);
  __m256i half[2];
  for (int h = 0; h < 2; ++h) {
    __m256i sa[2], sb[2];
    for (int k = 0; k < 2; ++k) {
      const int64_t at = 3 * (16 * h + 8 * k);
      sa[k] = _mm256_maddubs_epi16(_mm256_shuffle_epi8(Load<kOver>(pa + at), spread), weights);
      sb[k] = _mm256_maddubs_epi16(_mm256_shuffle_epi8(Load<kOver>(pb + at), spread), weights);
    }
    const __m256i ta = _mm256_hadd_epi16(sa[0], sa[1]), tb = _mm256_hadd_epi16(sb[0], sb[1]);
    half[h] = kLuminance ? _mm256_abs_epi16(_mm256_sub_epi16(_mm256_mulhi_epu16(ta, third),
                                                             _mm256_mulhi_epu16(tb, third)))
                         : _mm256_mulhi_epu16(_mm256_abs_epi16(_mm256_sub_epi16(ta, tb)), third);
  }
  return _mm256_permutevar8x32_epi32(_mm256_packus_epi16(half[0], half[1]),
                                     _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}

template <bool kLuminance>
uint64_t DifferenceRows(const uint8_t* a, int32_t a_step, const uint8_t* b, int32_t b_step,
                        uint8_t* map, int32_t map_step, Size roi, int32_t channels) {
  const auto use = [&](int32_t bit) { return kLuminance || (channels & bit) ? 1 : 0; };
  const __m256i weights =
      _mm256_set1_epi32(use(kDiffBlue) | use(kDiffGreen) << 8 | use(kDiffRed) << 16);
  static constexpr int8_t kSpread[4] = {0, 1, 2, -1};  // each pixel blue, green, red, 0
  const __m256i spread = avx2_pixels::FourPixelShuffle(kSpread);
  const __m256i zero = _mm256_setzero_si256();
  __m256i sums = zero;
  uint64_t total = 0;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* pa = RowAt(a, a_step, y);
    const uint8_t* pb = RowAt(b, b_step, y);
    uint8_t* out = RowAt(map, map_step, y);
    int64_t x = 0;
    // While 8 bytes beyond a step's 96 lie in the row, the loads may read them.
    for (; x + 35 <= roi.width; x += 32) {
      const __m256i bytes = Difference32<kLuminance, true>(pa + 3 * x, pb + 3 * x, weights, spread);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + x), bytes);
      sums = _mm256_add_epi64(sums, _mm256_sad_epu8(bytes, zero));
    }
    if (x + 32 <= roi.width) {
      const __m256i bytes =
          Difference32<kLuminance, false>(pa + 3 * x, pb + 3 * x, weights, spread);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + x), bytes);
      sums = _mm256_add_epi64(sums, _mm256_sad_epu8(bytes, zero));
      x += 32;
    }
    for (; x < roi.width; ++x) {
      out[x] = MotionDiffPixel(pa + 3 * x, pb + 3 * x, channels);
      total += out[x];
    }
  }
  alignas(32) uint64_t lanes[4];
  _mm256_store_si256(reinterpret_cast<__m256i*>(lanes), sums);
  return total + lanes[0] + lanes[1] + lanes[2] + lanes[3];
}

}  // namespace

Status MotionDiff_8u_C3C1R(const uint8_t* a, int32_t a_step, const uint8_t* b, int32_t b_step,
                           uint8_t* map, int32_t map_step, Size roi, int32_t channels,
                           uint64_t* sum) {
  if (const Status s = CheckMotionDiff(a, b, map, roi, channels, sum); s != ippStsNoErr) return s;
  *sum += channels == kDiffLuminance
              ? DifferenceRows<true>(a, a_step, b, b_step, map, map_step, roi, channels)
              : DifferenceRows<false>(a, a_step, b, b_step, map, map_step, roi, channels);
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

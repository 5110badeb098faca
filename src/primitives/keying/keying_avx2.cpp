// Colour key, AVX2 level: 32 pixels a step. Each group of eight pixels of src1 is loaded as two
// lanes of four, spread to 4-byte pixels and compared with the key as 32-bit words; the pixel
// masks are narrowed back to 3 bytes a pixel and packed to the 96-byte layout to choose between
// the sources. Every load of a step comes before its stores (dst may be a source).
//
// Chroma key, AVX2 level: four pixels a step. Their bytes are widened to 32-bit lanes, the
// dominance test and the map index are integer lane operations, the four weights one gather (a
// pixel that is not keyed reads element 0 and keeps its bytes), and the blend is the reference's
// double-precision expression, multiply and add kept apart, truncated by the same conversion.
// A step reads 16 bytes of each frame and writes the 4 past its pixels back unchanged, so it runs
// while 16 bytes remain in the row; the rest goes pixel by pixel.
#include <immintrin.h>

#include "primitives/core/pixels_avx2.h"
#include "primitives/core/rows.h"
#include "primitives/keying/keying.h"

namespace framekit::prim::avx2 {
namespace {

inline __m128i Load(const uint8_t* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

// Bytes `first`, first + 3, first + 6, first + 9 of v, zero-extended to 32-bit lanes.
inline __m128i Channel(__m128i v, int first) {
  const __m128i pick = _mm_setr_epi8(
      static_cast<int8_t>(first), -1, -1, -1, static_cast<int8_t>(first + 3), -1, -1, -1,
      static_cast<int8_t>(first + 6), -1, -1, -1, static_cast<int8_t>(first + 9), -1, -1, -1);
  return _mm_shuffle_epi8(v, pick);
}

inline __m128i Mix(__m128i front, __m128i back, __m256d f, __m256d rest) {
  const __m256d mixed = _mm256_add_pd(_mm256_mul_pd(_mm256_cvtepi32_pd(back), rest),
                                      _mm256_mul_pd(_mm256_cvtepi32_pd(front), f));
  return _mm256_cvttpd_epi32(mixed);
}

}  // namespace

Status ippiCompColorKey_8u_C3R(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                               int32_t src2_step, uint8_t* dst, int32_t dst_step, Size roi,
                               const uint8_t key[3]) {
  if (const Status s = CheckColorKey(src1, src1_step, src2, src2_step, dst, dst_step, roi, key);
      s != ippStsNoErr) {
    return s;
  }
  static constexpr int8_t kSpread[4] = {0, 1, 2, -1};
  const __m256i spread = avx2_pixels::FourPixelShuffle(kSpread);
  // A lane's four words back to 12 bytes, in bytes 0-11.
  const __m256i narrow = _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1, 0,
                                          1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
  const __m256i key_word = _mm256_set1_epi32(key[0] | key[1] << 8 | key[2] << 16);
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* a = RowAt(src1, src1_step, y);
    const uint8_t* b = RowAt(src2, src2_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    int64_t x = 0;
    for (; x + 32 <= width; x += 32) {
      const uint8_t* pa = a + 3 * x;
      const uint8_t* pb = b + 3 * x;
      __m256i masks[4], take[3];
      for (int k = 0; k < 4; ++k) {
        const __m256i words = _mm256_shuffle_epi8(avx2_pixels::LoadFours(pa + 24 * k), spread);
        masks[k] = _mm256_shuffle_epi8(_mm256_cmpeq_epi32(words, key_word), narrow);
      }
      avx2_pixels::PackTwelves(masks, take);
      __m256i result[3];
      for (int k = 0; k < 3; ++k) {
        result[k] = _mm256_blendv_epi8(
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pa + 32 * k)),
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pb + 32 * k)), take[k]);
      }
      uint8_t* po = out + 3 * x;
      for (int k = 0; k < 3; ++k) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(po + 32 * k), result[k]);
      }
    }
    for (; x < width; ++x) ColorKeyPixel(a + 3 * x, b + 3 * x, out + 3 * x, key);
  }
  return ippStsNoErr;
}

Status ChromaKey_8u_C3IR(uint8_t* frame, int32_t frame_step, const uint8_t* bg, int32_t bg_step,
                         Size roi, const double* map, int32_t key_channel) {
  if (const Status s = CheckChromaKey(frame, bg, roi, map); s != ippStsNoErr) return s;
  const int key = ChromaKeyByte(key_channel);
  const __m128i two = _mm_set1_epi32(2);
  const __m256d one = _mm256_set1_pd(1.0);
  const __m256d all = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));  // every lane gathers
  // Low bytes of the three channels' 32-bit results back to pixel order, and the keyed lanes'
  // mask spread over their pixels' bytes (bytes 12-15 keep the frame's own).
  const __m128i place[3] = {
      _mm_setr_epi8(0, -1, -1, 4, -1, -1, 8, -1, -1, 12, -1, -1, -1, -1, -1, -1),
      _mm_setr_epi8(-1, 0, -1, -1, 4, -1, -1, 8, -1, -1, 12, -1, -1, -1, -1, -1),
      _mm_setr_epi8(-1, -1, 0, -1, -1, 4, -1, -1, 8, -1, -1, 12, -1, -1, -1, -1)};
  const __m128i spread = _mm_setr_epi8(0, 0, 0, 4, 4, 4, 8, 8, 8, 12, 12, 12, -1, -1, -1, -1);
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    uint8_t* row = RowAt(frame, frame_step, y);
    const uint8_t* back = RowAt(bg, bg_step, y);
    int64_t x = 0;
    for (; 3 * x + 16 <= 3 * width; x += 4) {
      const __m128i v = Load(row + 3 * x);
      const __m128i c[3] = {Channel(v, 0), Channel(v, 1), Channel(v, 2)};
      const __m128i k = c[key], o1 = c[(key + 1) % 3], o2 = c[(key + 2) % 3];
      const __m128i keyed = _mm_and_si128(_mm_cmpgt_epi32(k, o1), _mm_cmpgt_epi32(k, o2));
      if (_mm_movemask_epi8(keyed) == 0) continue;
      const __m128i index = _mm_and_si128(
          keyed, _mm_sub_epi32(_mm_add_epi32(_mm_add_epi32(k, k), two), _mm_add_epi32(o1, o2)));
      const __m256d f = _mm256_mask_i32gather_pd(_mm256_setzero_pd(), map, index, all, 8);
      const __m256d rest = _mm256_sub_pd(one, f);
      const __m128i b = Load(back + 3 * x);
      __m128i mixed = _mm_setzero_si128();
      for (int ch = 0; ch < 3; ++ch) {
        mixed =
            _mm_or_si128(mixed, _mm_shuffle_epi8(Mix(c[ch], Channel(b, ch), f, rest), place[ch]));
      }
      const __m128i take = _mm_shuffle_epi8(keyed, spread);
      const __m128i out = _mm_or_si128(_mm_andnot_si128(take, v), _mm_and_si128(take, mixed));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(row + 3 * x), out);
    }
    for (; x < width; ++x) ChromaKeyPixel(row + 3 * x, back + 3 * x, map, key);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

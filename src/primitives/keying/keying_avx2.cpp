// Colour key, AVX2 level: 32 pixels a step. Each group of eight pixels of src1 is loaded as two
// lanes of four, spread to 4-byte pixels and compared with the key as 32-bit words; the pixel
// masks are narrowed back to 3 bytes a pixel and packed to the 96-byte layout to choose between
// the sources. Every load of a step comes before its stores (dst may be a source).
//
// Chroma key, AVX2 level: eight pixels a step, as two lanes of four. Their bytes are widened to
// 32-bit lanes, the dominance test and the map index are integer lane operations, the weights
// are read one by one (a pixel that is not keyed reads element 0 and keeps its bytes; a step with
// none keyed is skipped), and the blend is the reference's double-precision expression, multiply
// and add kept apart, truncated by the same conversion (INT32_MIN for NaN and out of range). The
// 24 result bytes are packed with dword moves and stored whole.
#include <immintrin.h>

#include "primitives/core/pixels_avx2.h"
#include "primitives/core/rows.h"
#include "primitives/keying/keying.h"

namespace framekit::prim::avx2 {
namespace {

// Four pixels' blend of one channel in double precision (front, back: 32-bit lanes).
inline __m128i Mix(__m128i front, __m128i back, __m256d f, __m256d rest) {
  const __m256d mixed = _mm256_add_pd(_mm256_mul_pd(_mm256_cvtepi32_pd(back), rest),
                                      _mm256_mul_pd(_mm256_cvtepi32_pd(front), f));
  return _mm256_cvttpd_epi32(mixed);
}

// Eight pixels' blend of one channel: 32-bit lanes in, the low bytes of the results out.
inline __m256i Mix8(__m256i front, __m256i back, __m256d f_low, __m256d f_high) {
  const __m256d one = _mm256_set1_pd(1.0);
  const __m128i low = Mix(_mm256_castsi256_si128(front), _mm256_castsi256_si128(back), f_low,
                          _mm256_sub_pd(one, f_low));
  const __m128i high = Mix(_mm256_extracti128_si256(front, 1), _mm256_extracti128_si256(back, 1),
                           f_high, _mm256_sub_pd(one, f_high));
  return _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
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
  __m256i channel[3];  // byte c of each pixel to a 32-bit lane
  for (int c = 0; c < 3; ++c) {
    const int8_t pick[4] = {static_cast<int8_t>(c), -1, -1, -1};
    channel[c] = avx2_pixels::FourPixelShuffle(pick);
  }
  const __m256i two = _mm256_set1_epi32(2);
  // The three channels' result bytes back to their pixels (each lane's 12 bytes in bytes 0-11),
  // and each lane's keyed words spread over their pixels' bytes.
  __m256i place[3];
  for (int c = 0; c < 3; ++c) {
    alignas(32) int8_t idx[32];
    for (int i = 0; i < 32; ++i) {
      idx[i] = static_cast<int8_t>((i % 16 < 12 && i % 16 % 3 == c) ? i % 16 / 3 * 4 : -1);
    }
    place[c] = _mm256_load_si256(reinterpret_cast<const __m256i*>(idx));
  }
  const __m256i spread = _mm256_setr_epi8(0, 0, 0, 4, 4, 4, 8, 8, 8, 12, 12, 12, -1, -1, -1, -1,  //
                                          0, 0, 0, 4, 4, 4, 8, 8, 8, 12, 12, 12, -1, -1, -1, -1);
  const __m256i twelves = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7);
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    uint8_t* row = RowAt(frame, frame_step, y);
    const uint8_t* back = RowAt(bg, bg_step, y);
    int64_t x = 0;
    for (; x + 8 <= width; x += 8) {
      const __m256i v = avx2_pixels::LoadFours(row + 3 * x);
      const __m256i c[3] = {_mm256_shuffle_epi8(v, channel[0]), _mm256_shuffle_epi8(v, channel[1]),
                            _mm256_shuffle_epi8(v, channel[2])};
      const __m256i k = c[key], o1 = c[(key + 1) % 3], o2 = c[(key + 2) % 3];
      const __m256i keyed = _mm256_and_si256(_mm256_cmpgt_epi32(k, o1), _mm256_cmpgt_epi32(k, o2));
      if (_mm256_testz_si256(keyed, keyed)) continue;
      alignas(32) int32_t index[8];
      _mm256_store_si256(
          reinterpret_cast<__m256i*>(index),
          _mm256_and_si256(keyed, _mm256_sub_epi32(_mm256_add_epi32(_mm256_add_epi32(k, k), two),
                                                   _mm256_add_epi32(o1, o2))));
      const __m256d f_low =
          _mm256_setr_pd(map[index[0]], map[index[1]], map[index[2]], map[index[3]]);
      const __m256d f_high =
          _mm256_setr_pd(map[index[4]], map[index[5]], map[index[6]], map[index[7]]);
      const __m256i b = avx2_pixels::LoadFours(back + 3 * x);
      __m256i mixed = _mm256_setzero_si256();
      for (int ch = 0; ch < 3; ++ch) {
        const __m256i words = Mix8(c[ch], _mm256_shuffle_epi8(b, channel[ch]), f_low, f_high);
        mixed = _mm256_or_si256(mixed, _mm256_shuffle_epi8(words, place[ch]));
      }
      // The frame's own 12 bytes of each lane, the keyed pixels replaced, packed to 24 bytes.
      const __m256i own = _mm256_shuffle_epi8(
          v, _mm256_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, -1, -1, -1, -1, 4, 5, 6, 7, 8,
                              9, 10, 11, 12, 13, 14, 15, -1, -1, -1, -1));
      const __m256i take = _mm256_shuffle_epi8(keyed, spread);
      const __m256i out =
          _mm256_permutevar8x32_epi32(_mm256_blendv_epi8(own, mixed, take), twelves);
      uint8_t* at = row + 3 * x;
      _mm_storeu_si128(reinterpret_cast<__m128i*>(at), _mm256_castsi256_si128(out));
      _mm_storel_epi64(reinterpret_cast<__m128i*>(at + 16), _mm256_extracti128_si256(out, 1));
    }
    for (; x < width; ++x) ChromaKeyPixel(row + 3 * x, back + 3 * x, map, key);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

// Colour key, SSSE3 level: 16 pixels a step. The source's four groups of four pixels are loaded
// so that each group starts a 16-byte vector (at offset 0) or sits in its bytes 4-15 (a load 8
// bytes earlier, so nothing past the 48 bytes is read); the byte compares of a group are ANDed
// per pixel with byte shuffles, and the four group masks are packed back to the 48-byte layout
// to choose between the sources. Every load of a step comes before its stores, so a destination
// that is one of the sources is safe.
#include <tmmintrin.h>

#include "primitives/core/rows.h"
#include "primitives/keying/keying.h"

namespace framekit::prim::ssse3 {
namespace {

inline __m128i Load(const uint8_t* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
inline void Store(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }

inline __m128i Select(__m128i a, __m128i b, __m128i take_b) {
  return _mm_or_si128(_mm_andnot_si128(take_b, a), _mm_and_si128(take_b, b));
}

}  // namespace

Status ippiCompColorKey_8u_C3R(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                               int32_t src2_step, uint8_t* dst, int32_t dst_step, Size roi,
                               const uint8_t key[3]) {
  if (const Status s = CheckColorKey(src1, src1_step, src2, src2_step, dst, dst_step, roi, key);
      s != ippStsNoErr) {
    return s;
  }
  // For a group at offset 0 (even k) and at bytes 4-15 (odd k): the key bytes where the pixels
  // are, and for each of the 12 mask bytes the position of its pixel's blue, green and red byte.
  alignas(16) uint8_t pattern[2][16];
  alignas(16) int8_t pick[2][3][16];
  for (int odd = 0; odd < 2; ++odd) {
    const int base = 4 * odd;
    for (int i = 0; i < 16; ++i) {
      pattern[odd][i] = i >= base ? key[(i - base) % 3] : 0;
      for (int c = 0; c < 3; ++c) {
        pick[odd][c][i] = i < 12 ? static_cast<int8_t>(base + 3 * (i / 3) + c) : int8_t{-1};
      }
    }
  }
  __m128i key_bytes[2], picks[2][3];
  for (int odd = 0; odd < 2; ++odd) {
    key_bytes[odd] = _mm_load_si128(reinterpret_cast<const __m128i*>(pattern[odd]));
    for (int c = 0; c < 3; ++c) {
      picks[odd][c] = _mm_load_si128(reinterpret_cast<const __m128i*>(pick[odd][c]));
    }
  }
  const int offsets[4] = {0, 8, 24, 32};
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* a = RowAt(src1, src1_step, y);
    const uint8_t* b = RowAt(src2, src2_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    int64_t x = 0;
    for (; x + 16 <= width; x += 16) {
      const uint8_t* pa = a + 3 * x;
      const uint8_t* pb = b + 3 * x;
      __m128i m[4];
      for (int k = 0; k < 4; ++k) {
        const int odd = k & 1;
        const __m128i eq = _mm_cmpeq_epi8(Load(pa + offsets[k]), key_bytes[odd]);
        m[k] = _mm_and_si128(
            _mm_and_si128(_mm_shuffle_epi8(eq, picks[odd][0]), _mm_shuffle_epi8(eq, picks[odd][1])),
            _mm_shuffle_epi8(eq, picks[odd][2]));
      }
      const __m128i take0 = _mm_or_si128(m[0], _mm_slli_si128(m[1], 12));
      const __m128i take1 = _mm_or_si128(_mm_srli_si128(m[1], 4), _mm_slli_si128(m[2], 8));
      const __m128i take2 = _mm_or_si128(_mm_srli_si128(m[2], 8), _mm_slli_si128(m[3], 4));
      const __m128i r0 = Select(Load(pa), Load(pb), take0);
      const __m128i r1 = Select(Load(pa + 16), Load(pb + 16), take1);
      const __m128i r2 = Select(Load(pa + 32), Load(pb + 32), take2);
      uint8_t* po = out + 3 * x;
      Store(po, r0);
      Store(po + 16, r1);
      Store(po + 32, r2);
    }
    for (; x < width; ++x) ColorKeyPixel(a + 3 * x, b + 3 * x, out + 3 * x, key);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ssse3

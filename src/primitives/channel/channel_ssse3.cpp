// Channel primitives, SSSE3 level: classes 2 and 3, and 4 and 5, which have no body of their
// own. Four pixels a step. A 3-byte side is read or written as 16 bytes of which 12 are the
// step's pixels, so the vector loop runs while 6 pixels remain (3 * 6 >= 16) and the scalar loop
// finishes the row; the 4 bytes past a step's pixels are rewritten by the next step or the tail
// (the swap writes back the values it loaded there, so src == dst stays exact). Nothing outside
// a row's pixels is read or written.
#include <tmmintrin.h>

#include <cstdint>

#include "primitives/channel/channel.h"
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"

namespace framekit::prim::ssse3 {
namespace {

constexpr int32_t kWide = 6;  // pixels that must remain for one 16-byte access of a 3-byte row

inline __m128i Load(const uint8_t* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
inline void Store(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }

}  // namespace

Status ippiCopy_8u_AC4C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const __m128i pick = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    int32_t x = 0;
    for (; x + kWide <= roi.width; x += 4)
      Store(d + 3 * x, _mm_shuffle_epi8(Load(s + 4 * x), pick));
    CopyC4ToC3(s, d, x, roi.width);
  }
  return ippStsNoErr;
}

Status ippiCopy_8u_C3AC4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const __m128i place = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
  const __m128i fourth = _mm_set1_epi32(static_cast<int32_t>(0xFF000000u));
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    int32_t x = 0;
    for (; x + kWide <= roi.width; x += 4) {
      const __m128i colour = _mm_shuffle_epi8(Load(s + 3 * x), place);
      Store(d + 4 * x, _mm_or_si128(colour, _mm_and_si128(Load(d + 4 * x), fourth)));
    }
    CopyC3ToC4(s, d, x, roi.width);
  }
  return ippStsNoErr;
}

Status CopyC3AC4AddC(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi,
                     const uint8_t value[4]) {
  if (value == nullptr) return ippStsNullPtrErr;
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const __m128i place = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
  const __m128i fourth = _mm_set1_epi32(static_cast<int32_t>(0xFF000000u));
  int32_t pattern;
  __builtin_memcpy(&pattern, value, 4);
  const __m128i add = _mm_set1_epi32(pattern);
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    int32_t x = 0;
    for (; x + kWide <= roi.width; x += 4) {
      const __m128i colour = _mm_shuffle_epi8(Load(s + 3 * x), place);
      const __m128i kept = _mm_and_si128(Load(d + 4 * x), fourth);
      Store(d + 4 * x, _mm_adds_epu8(_mm_or_si128(colour, kept), add));
    }
    CopyAddPixels(s, d, value, x, roi.width);
  }
  return ippStsNoErr;
}

Status ippiAddC_8u_C4IRSfs(const uint8_t value[4], uint8_t* p, int32_t step, Size roi,
                           int32_t scale) {
  if (const Status s = CheckTwo(value, p, roi); s != ippStsNoErr) return s;
  if (scale != 0) return ref::ippiAddC_8u_C4IRSfs(value, p, step, roi, scale);
  int32_t pattern;
  __builtin_memcpy(&pattern, value, 4);
  const __m128i add = _mm_set1_epi32(pattern);
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* d = RowAt(p, step, r);
    int32_t x = 0;
    for (; x + 4 <= roi.width; x += 4) Store(d + 4 * x, _mm_adds_epu8(Load(d + 4 * x), add));
    AddCPixels(value, d, x, roi.width);
  }
  return ippStsNoErr;
}

Status ippiSwapChannels_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                               Size roi, const int32_t order[3]) {
  if (const Status s = CheckSwap(src, dst, roi, order); s != ippStsNoErr) return s;
  alignas(16) int8_t mask[16];
  for (int i = 0; i < 16; ++i) {
    mask[i] = static_cast<int8_t>(i < 12 ? (i / 3) * 3 + order[i % 3] : i);  // 12-15 kept
  }
  const __m128i shuffle = _mm_load_si128(reinterpret_cast<const __m128i*>(mask));
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    int32_t x = 0;
    for (; x + kWide <= roi.width; x += 4)
      Store(d + 3 * x, _mm_shuffle_epi8(Load(s + 3 * x), shuffle));
    SwapPixels(s, d, order, x, roi.width);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ssse3

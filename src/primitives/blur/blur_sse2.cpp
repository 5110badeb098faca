// Box-blur columns, SSE2 level: classes 1-5. A strip of 16 rounded pixel columns is 48 byte
// columns: twelve vectors of four 32-bit running sums, widened by unpacking with zero and packed
// back in order. Strips past the rounded columns, and a rounded strip narrower than 16 pixels,
// are the scalar ones of blur_kernels.h.
#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "primitives/blur/blur.h"
#include "primitives/blur/blur_kernels.h"

namespace framekit::prim::sse2 {
namespace {

// sum[4k .. 4k + 3] += (or -=) the 16 bytes at row + 16k, widened.
template <bool kAdd>
void Accumulate(__m128i* sum, const uint8_t* row) {
  const __m128i zero = _mm_setzero_si128();
  for (int k = 0; k < 3; ++k) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + 16 * k));
    const __m128i lo = _mm_unpacklo_epi8(v, zero), hi = _mm_unpackhi_epi8(v, zero);
    const __m128i parts[4] = {_mm_unpacklo_epi16(lo, zero), _mm_unpackhi_epi16(lo, zero),
                              _mm_unpacklo_epi16(hi, zero), _mm_unpackhi_epi16(hi, zero)};
    for (int j = 0; j < 4; ++j) {
      __m128i& s = sum[4 * k + j];
      s = kAdd ? _mm_add_epi32(s, parts[j]) : _mm_sub_epi32(s, parts[j]);
    }
  }
}

void RoundedStrip(uint8_t* p, int32_t step, Size roi, int32_t radius, int64_t x0, uint8_t* work) {
  __m128i sum[12];
  for (__m128i& s : sum) s = _mm_setzero_si128();
  const int64_t h = roi.height, r = radius;
  for (int64_t y = 0; y < h && y < r; ++y) Accumulate<true>(sum, RowAt(p, step, y) + x0);
  for (int64_t y = 0; y < h; ++y) {
    if (y + r < h) Accumulate<true>(sum, RowAt(p, step, y + r) + x0);
    if (y - r - 1 >= 0) Accumulate<false>(sum, RowAt(p, step, y - r - 1) + x0);
    const __m128 rcp = _mm_set1_ps(blur::Reciprocal(blur::WindowCount(y, r, h)));
    uint8_t* dst = work + 48 * y;
    for (int k = 0; k < 3; ++k) {
      __m128i q[4];
      for (int j = 0; j < 4; ++j) {
        q[j] = _mm_cvtps_epi32(_mm_mul_ps(_mm_cvtepi32_ps(sum[4 * k + j]), rcp));
      }
      const __m128i bytes =
          _mm_packus_epi16(_mm_packs_epi32(q[0], q[1]), _mm_packs_epi32(q[2], q[3]));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + 16 * k), bytes);
    }
  }
  for (int64_t y = 0; y < h; ++y) std::memcpy(RowAt(p, step, y) + x0, work + 48 * y, 48);
}

}  // namespace

Status BlurColumns(uint8_t* p, int32_t step, Size roi, int32_t radius, int32_t rounded_width,
                   uint8_t* work) {
  if (const Status s = blur::CheckPass(p, work, roi, radius); s != ippStsNoErr) return s;
  const int64_t rounded_end = blur::RoundedEnd(roi, rounded_width);
  int64_t x = 0;
  for (; x + 16 <= rounded_end; x += 16) RoundedStrip(p, step, roi, radius, 3 * x, work);
  blur::ScalarStrips(p, step, roi, radius, x, rounded_end, work);
  return ippStsNoErr;
}

}  // namespace framekit::prim::sse2

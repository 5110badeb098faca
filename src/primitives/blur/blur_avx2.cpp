// Box-blur columns, AVX2 level: class 6. A strip of 16 rounded pixel columns is 48 byte columns:
// six vectors of eight 32-bit running sums, widened straight from memory; the packs interleave
// the 128-bit halves, which one dword permutation undoes. Strips past the rounded columns, and
// a rounded strip narrower than 16 pixels, are the scalar ones of blur_kernels.h.
#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "primitives/blur/blur.h"
#include "primitives/blur/blur_kernels.h"

namespace framekit::prim::avx2 {
namespace {

__m256i Widen(const uint8_t* at) {
  return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(at)));
}

void RoundedStrip(uint8_t* p, int32_t step, Size roi, int32_t radius, int64_t x0, uint8_t* work) {
  __m256i sum[6];
  for (__m256i& s : sum) s = _mm256_setzero_si256();
  const int64_t h = roi.height, r = radius;
  for (int64_t y = 0; y < h && y < r; ++y) {
    const uint8_t* row = RowAt(p, step, y) + x0;
    for (int j = 0; j < 6; ++j) sum[j] = _mm256_add_epi32(sum[j], Widen(row + 8 * j));
  }
  const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
  for (int64_t y = 0; y < h; ++y) {
    if (y + r < h) {
      const uint8_t* in = RowAt(p, step, y + r) + x0;
      for (int j = 0; j < 6; ++j) sum[j] = _mm256_add_epi32(sum[j], Widen(in + 8 * j));
    }
    if (y - r - 1 >= 0) {
      const uint8_t* out = RowAt(p, step, y - r - 1) + x0;
      for (int j = 0; j < 6; ++j) sum[j] = _mm256_sub_epi32(sum[j], Widen(out + 8 * j));
    }
    const __m256 rcp = _mm256_set1_ps(blur::Reciprocal(blur::WindowCount(y, r, h)));
    __m256i q[6];
    for (int j = 0; j < 6; ++j) {
      q[j] = _mm256_cvtps_epi32(_mm256_mul_ps(_mm256_cvtepi32_ps(sum[j]), rcp));
    }
    const __m256i first = _mm256_permutevar8x32_epi32(
        _mm256_packus_epi16(_mm256_packs_epi32(q[0], q[1]), _mm256_packs_epi32(q[2], q[3])),
        order);
    const __m256i last = _mm256_packs_epi32(q[4], q[5]);
    const __m256i second = _mm256_permutevar8x32_epi32(_mm256_packus_epi16(last, last), order);
    uint8_t* dst = work + 48 * y;
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst), first);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + 32), _mm256_castsi256_si128(second));
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

}  // namespace framekit::prim::avx2

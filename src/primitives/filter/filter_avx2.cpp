// Sharpen filter, AVX2 level: class 6. Thirty-two output bytes a step: each 16-byte load is
// widened to a vector of 16-bit lanes, so two halves of sixteen make the 32 bytes and the final
// pack only needs its 64-bit quarters put back in order. The 16-bit arithmetic and its rounding
// are those of the SSE2 body. The last 3 * width % 32 bytes of a row are scalar.
#include <immintrin.h>

#include <cstdint>

#include "primitives/filter/filter.h"
#include "primitives/filter/filter_kernels.h"

namespace framekit::prim::avx2 {
namespace {

__m256i Load(const uint8_t* p) {
  return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}

// The 3 x 3 window sums and centres of 16 bytes at p, sharpened to 16-bit results.
__m256i Sharpen16(const uint8_t* above, const uint8_t* at, const uint8_t* below) {
  __m256i sum = _mm256_add_epi16(_mm256_add_epi16(Load(above - 3), Load(above)), Load(above + 3));
  sum = _mm256_add_epi16(sum, _mm256_add_epi16(Load(at - 3), Load(at + 3)));
  sum = _mm256_add_epi16(
      sum, _mm256_add_epi16(_mm256_add_epi16(Load(below - 3), Load(below)), Load(below + 3)));
  const __m256i c = Load(at);
  // 17c - (sum + c) = 16c - sum: the window sum above leaves the centre out.
  const __m256i v = _mm256_sub_epi16(_mm256_slli_epi16(c, 4), sum);
  const __m256i odd = _mm256_and_si256(_mm256_srai_epi16(v, 3), _mm256_set1_epi16(1));
  return _mm256_srai_epi16(_mm256_add_epi16(_mm256_add_epi16(v, _mm256_set1_epi16(3)), odd), 3);
}

}  // namespace

Status ippiFilterSharpen_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi) {
  if (const Status s = filter::CheckSharpen(src, src_step, dst, dst_step, roi); s != ippStsNoErr) {
    return s;
  }
  const int64_t n = int64_t{3} * roi.width;
  for (int32_t y = 0; y < roi.height; ++y) {
    const uint8_t* above = RowAt(src, src_step, y - 1);
    const uint8_t* at = RowAt(src, src_step, y);
    const uint8_t* below = RowAt(src, src_step, y + 1);
    uint8_t* out = RowAt(dst, dst_step, y);
    int64_t i = 0;
    for (; i + 32 <= n; i += 32) {
      const __m256i lo = Sharpen16(above + i, at + i, below + i);
      const __m256i hi = Sharpen16(above + i + 16, at + i + 16, below + i + 16);
      const __m256i bytes = _mm256_permute4x64_epi64(_mm256_packus_epi16(lo, hi), 0xD8);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), bytes);
    }
    filter::SharpenBytes(above, at, below, out, i, n);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

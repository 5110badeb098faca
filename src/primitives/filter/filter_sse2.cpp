// Sharpen filter, SSE2 level: classes 1-5. Sixteen output bytes a step in 16-bit lanes (the
// window sum and 17c stay within -2040..4335); the rounding shift is arithmetic and the final
// pack saturates, which gives 0 for every negative v. The last 3 * width % 16 bytes of a row are
// scalar.
#include <emmintrin.h>

#include <cstdint>

#include "primitives/filter/filter.h"
#include "primitives/filter/filter_kernels.h"

namespace framekit::prim::sse2 {
namespace {

struct Words {
  __m128i lo, hi;
};

Words Load(const uint8_t* p) {
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i zero = _mm_setzero_si128();
  return {_mm_unpacklo_epi8(v, zero), _mm_unpackhi_epi8(v, zero)};
}

// The three same-channel bytes around p, summed.
Words Triple(const uint8_t* p) {
  const Words a = Load(p - 3), b = Load(p), c = Load(p + 3);
  return {_mm_add_epi16(_mm_add_epi16(a.lo, b.lo), c.lo),
          _mm_add_epi16(_mm_add_epi16(a.hi, b.hi), c.hi)};
}

__m128i Sharpen(__m128i c, __m128i sum) {
  const __m128i v = _mm_sub_epi16(_mm_add_epi16(_mm_slli_epi16(c, 4), c), sum);
  const __m128i odd = _mm_and_si128(_mm_srai_epi16(v, 3), _mm_set1_epi16(1));
  return _mm_srai_epi16(_mm_add_epi16(_mm_add_epi16(v, _mm_set1_epi16(3)), odd), 3);
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
    for (; i + 16 <= n; i += 16) {
      const Words t = Triple(above + i), m = Triple(at + i), b = Triple(below + i);
      const Words c = Load(at + i);
      const __m128i lo = Sharpen(c.lo, _mm_add_epi16(_mm_add_epi16(t.lo, m.lo), b.lo));
      const __m128i hi = Sharpen(c.hi, _mm_add_epi16(_mm_add_epi16(t.hi, m.hi), b.hi));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_packus_epi16(lo, hi));
    }
    filter::SharpenBytes(above, at, below, out, i, n);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::sse2

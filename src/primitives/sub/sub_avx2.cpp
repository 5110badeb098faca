// Subtraction, AVX2 level: class 6. 32 bytes a step with an unsigned saturating subtract (the
// clipped difference) when the scale factor is 0; the rest of a row, and every row for other scale
// factors, byte by byte. In place, so the last bytes are never covered by an overlapping vector
// (subtracting twice would be wrong). Unaligned loads; nothing outside a row's 3 * width bytes
// is touched.
#include <immintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/sub/sub.h"

namespace framekit::prim::avx2 {

Status ippiSub_8u_C3IRSfs(const uint8_t* src, int32_t src_step, uint8_t* src_dst,
                          int32_t src_dst_step, Size roi, int32_t scale) {
  if (const Status s = CheckTwo(src, src_dst, roi); s != ippStsNoErr) return s;
  const int64_t n = int64_t{roi.width} * 3;
  const int64_t vector_bytes = scale == 0 ? n / 32 * 32 : 0;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(src_dst, src_dst_step, r);
    for (int64_t i = 0; i < vector_bytes; i += 32) {
      const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(d + i));
      const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + i));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(d + i), _mm256_subs_epu8(a, b));
    }
    for (int64_t i = vector_bytes; i < n; ++i) d[i] = SubScaledByte(d[i], s[i], scale);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

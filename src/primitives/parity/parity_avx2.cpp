// Alternate-pixel row copy, AVX2 level: 32 pixels (96 bytes) a step, each 32-byte third blended
// into the destination with its own byte mask; the last pixels one by one.
#include <immintrin.h>

#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/parity/parity.h"

namespace framekit::prim::avx2 {

Status CopyParity_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t parity) {
  if (const Status s = CheckCopyParity(src, dst, roi, parity); s != ippStsNoErr) return s;
  alignas(32) uint8_t bytes[96];
  for (int k = 0; k < 96; ++k) bytes[k] = (k / 3) % 2 == parity ? 0xFF : 0;
  __m256i mask[3];
  for (int j = 0; j < 3; ++j) {
    mask[j] = _mm256_load_si256(reinterpret_cast<const __m256i*>(bytes + 32 * j));
  }
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* in = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    int64_t x = 0;
    for (; x + 32 <= width; x += 32) {
      for (int j = 0; j < 3; ++j) {
        auto* to = reinterpret_cast<__m256i*>(out + 3 * x + 32 * j);
        const __m256i from =
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + 3 * x + 32 * j));
        _mm256_storeu_si256(to, _mm256_blendv_epi8(_mm256_loadu_si256(to), from, mask[j]));
      }
    }
    for (x += parity; x < width; x += 2) std::memcpy(out + 3 * x, in + 3 * x, 3);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

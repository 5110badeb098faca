// Set C3, AVX2 level: class 6.
// The three value bytes repeat every 96 bytes, so three 32-byte registers hold the pattern and a
// row is written 96 bytes a step with unaligned stores. Tails: whole 32-byte registers while
// they fit, then one store ending at the row end (setting is idempotent, so rewriting bytes
// already set is harmless); rows under 32 bytes use 16- and 8-byte stores the same way, and rows
// under 8 bytes a byte loop. Nothing outside a row's width * 3 bytes is written.
#include <immintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/set/set.h"

namespace framekit::prim::avx2 {
namespace {

inline void Store32(uint8_t* p, __m256i v) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v);
}
inline void Store16(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
inline void Store8(uint8_t* p, __m128i v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v); }

// Rows under 32 bytes. x[k] holds the pattern from byte 16 * k on (phase k).
void FillShortRow(uint8_t* d, int64_t n, const __m128i x[3], const uint8_t* value) {
  if (n >= 16) {
    Store16(d, x[0]);
    Store16(d + n - 16, x[2]);  // n is a multiple of 3: n - 16 has phase 2
  } else if (n >= 8) {
    Store8(d, x[0]);
    Store8(d + n - 8, x[1]);  // phase (n - 8) % 3 = 1
  } else {
    for (int64_t o = 0; o < n; ++o) d[o] = value[o % 3];
  }
}

// y[k] holds the pattern from byte 32 * k on: phases 0, 2 and 1.
void FillRow(uint8_t* d, int64_t n, const __m256i y[3]) {
  int64_t o = 0;
  for (; o + 96 <= n; o += 96) {
    Store32(d + o, y[0]);
    Store32(d + o + 32, y[1]);
    Store32(d + o + 64, y[2]);
  }
  for (int k = 0; o + 32 <= n; o += 32, ++k) Store32(d + o, y[k]);
  if (o < n) Store32(d + n - 32, y[2]);  // n - 32 has phase 1
}

}  // namespace

Status ippiSet_8u_C3R(const uint8_t* value, uint8_t* dst, int32_t dst_step, Size roi) {
  if (const Status s = CheckTwo(value, dst, roi); s != ippStsNoErr) return s;
  uint8_t bytes[96];  // read unaligned: mingw does not align the stack beyond 16 bytes
  for (int i = 0; i < 96; ++i) bytes[i] = value[i % 3];
  const __m256i y[3] = {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes)),
                        _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes + 32)),
                        _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes + 64))};
  const __m128i x[3] = {_mm256_castsi256_si128(y[0]), _mm256_extracti128_si256(y[0], 1),
                        _mm256_castsi256_si128(y[1])};
  const int64_t n = static_cast<int64_t>(roi.width) * 3;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* d = RowAt(dst, dst_step, r);
    if (n >= 32) {
      FillRow(d, n, y);
    } else {
      FillShortRow(d, n, x, value);
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

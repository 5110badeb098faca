// Set C3, SSE2 level: class 1, and classes 2 to 5, which have no body of their own.
// The three value bytes repeat every 48 bytes, so three 16-byte registers hold the pattern and a
// row is written 48 bytes a step with unaligned stores. Tails: whole 16-byte registers while
// they fit, then one store ending at the row end (setting is idempotent, so rewriting bytes
// already set is harmless); rows under 16 bytes take two 8-byte stores or a byte loop. Nothing
// outside a row's width * 3 bytes is written.
#include <emmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/set/set.h"

namespace framekit::prim::sse2 {
namespace {

inline void Store16(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
inline void Store8(uint8_t* p, __m128i v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v); }

// pat[k] holds the pattern from byte 16 * k on, so it starts at phase (16 * k) % 3 = k.
void FillRow(uint8_t* d, int64_t n, const __m128i pat[3], const uint8_t* value) {
  if (n >= 16) {
    int64_t o = 0;
    for (; o + 48 <= n; o += 48) {
      Store16(d + o, pat[0]);
      Store16(d + o + 16, pat[1]);
      Store16(d + o + 32, pat[2]);
    }
    for (int k = 0; o + 16 <= n; o += 16, ++k) Store16(d + o, pat[k]);
    // n is a multiple of 3, so n - 16 has phase 2.
    if (o < n) Store16(d + n - 16, pat[2]);
  } else if (n >= 8) {
    Store8(d, pat[0]);
    Store8(d + n - 8, pat[1]);  // phase (n - 8) % 3 = 1
  } else {
    for (int64_t o = 0; o < n; ++o) d[o] = value[o % 3];
  }
}

}  // namespace

Status ippiSet_8u_C3R(const uint8_t* value, uint8_t* dst, int32_t dst_step, Size roi) {
  if (const Status s = CheckTwo(value, dst, roi); s != ippStsNoErr) return s;
  uint8_t bytes[48];
  for (int i = 0; i < 48; ++i) bytes[i] = value[i % 3];
  const __m128i pat[3] = {_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)),
                          _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 16)),
                          _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 32))};
  const int64_t n = static_cast<int64_t>(roi.width) * 3;
  for (int32_t r = 0; r < roi.height; ++r) {
    FillRow(RowAt(dst, dst_step, r), n, pat, value);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::sse2

// Duplicate C1 to C3, SSSE3 level: classes 2 to 6. 16 source bytes become 48 destination bytes
// through three pshufb controls; the last width % 16 pixels of a row go byte by byte. Unaligned
// loads and stores; nothing outside a row's width (source) or 3 * width (destination) bytes is
// touched.
#include <tmmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/gray/gray.h"

namespace framekit::prim::ssse3 {
namespace {

struct Control16 {
  uint8_t b[16];
};

// Destination byte 16 * o + j repeats source byte (16 * o + j) / 3.
constexpr Control16 DupControl(int o) {
  Control16 m{};
  for (int j = 0; j < 16; ++j) m.b[j] = static_cast<uint8_t>((16 * o + j) / 3);
  return m;
}

alignas(16) constexpr Control16 kDup[3] = {DupControl(0), DupControl(1), DupControl(2)};

}  // namespace

Status ippiDup_8u_C1C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                        Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  __m128i control[3];
  for (int o = 0; o < 3; ++o) {
    control[o] = _mm_load_si128(reinterpret_cast<const __m128i*>(kDup[o].b));
  }
  const int32_t vector_pixels = roi.width / 16 * 16;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = src + int64_t{r} * src_step;
    uint8_t* d = dst + int64_t{r} * dst_step;
    for (int32_t x = 0; x < vector_pixels; x += 16) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + x));
      uint8_t* out = d + int64_t{x} * 3;
      for (int o = 0; o < 3; ++o) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 16 * o), _mm_shuffle_epi8(v, control[o]));
      }
    }
    for (int32_t x = vector_pixels; x < roi.width; ++x) {
      uint8_t* out = d + int64_t{x} * 3;
      out[0] = out[1] = out[2] = s[x];
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ssse3

// Noise kernels, SSSE3 level: classes 2-3 (noise_gen128.h; without pmulld, each
// lane product is two pmuludq on the even and odd lanes, put back together).
#include <tmmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/noise/noise.h"
#include "primitives/noise/noise_kernels.h"

namespace framekit::prim::ssse3 {
namespace {

__m128i MulLo32(__m128i a, __m128i b) {
  const __m128i even = _mm_mul_epu32(a, b);
  const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
  return _mm_unpacklo_epi32(_mm_shuffle_epi32(even, 0x08), _mm_shuffle_epi32(odd, 0x08));
}

#include "primitives/noise/noise_gen128.h"

}  // namespace

Status ColourNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  return ColourRows(p, step, roi, amount, lanes);
}
Status MonoNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  return MonoRows(p, step, roi, amount, lanes);
}

}  // namespace framekit::prim::ssse3

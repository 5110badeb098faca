// Noise kernels, SSE4.1 level: classes 4-5 (noise_gen128.h, multiplying with pmulld).
#include <smmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/noise/noise.h"
#include "primitives/noise/noise_kernels.h"

namespace framekit::prim::sse41 {
namespace {

__m128i MulLo32(__m128i a, __m128i b) { return _mm_mullo_epi32(a, b); }

#include "primitives/noise/noise_gen128.h"

}  // namespace

Status ColourNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  return ColourRows(p, step, roi, amount, lanes);
}
Status MonoNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  return MonoRows(p, step, roi, amount, lanes);
}

}  // namespace framekit::prim::sse41

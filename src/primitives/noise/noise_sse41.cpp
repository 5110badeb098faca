// Noise kernels, SSE4.1 level: classes 4-5 (noise_gen128.h, multiplying with pmulld).
#include <smmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/noise/noise.h"
#include "primitives/noise/noise_kernels.h"

namespace framekit::prim::sse41 {
namespace {

#include "primitives/noise/noise_gen128.h"
#include "primitives/noise/noise_interleave.h"

void ApplyMonoPair(uint8_t* px, __m128i first, __m128i second, __m128i half) {
  ApplyMono(px, first, half);
  ApplyMono(px + 48, second, half);
}

#include "primitives/noise/noise_blocks.h"

}  // namespace

Status ColourNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  return ColourRows(p, step, roi, amount, lanes);
}
Status MonoNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  return MonoRows(p, step, roi, amount, lanes);
}

}  // namespace framekit::prim::sse41

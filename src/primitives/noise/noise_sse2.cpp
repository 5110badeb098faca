// Noise kernels, SSE2 level: class 1. The generator of noise_gen128.h (products from pmuludq);
// without byte shuffles the noise planes are interleaved through a small buffer in scalar code,
// then added 16 bytes at a time.
#include <emmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/noise/noise.h"
#include "primitives/noise/noise_kernels.h"

namespace framekit::prim::sse2 {
namespace {

#include "primitives/noise/noise_gen128.h"

void AddTo(uint8_t* px, const uint8_t* noise) {
  for (int v = 0; v < 3; ++v) {
    __m128i* at = reinterpret_cast<__m128i*>(px + 16 * v);
    const __m128i n = _mm_loadu_si128(reinterpret_cast<const __m128i*>(noise + 16 * v));
    _mm_storeu_si128(at, _mm_adds_epu8(_mm_loadu_si128(at), n));
  }
}

void ApplyColour(uint8_t* px, __m128i b, __m128i g, __m128i r, __m128i half) {
  alignas(16) uint8_t planes[3][16];
  _mm_store_si128(reinterpret_cast<__m128i*>(planes[0]), _mm_subs_epu8(b, half));
  _mm_store_si128(reinterpret_cast<__m128i*>(planes[1]), _mm_subs_epu8(g, half));
  _mm_store_si128(reinterpret_cast<__m128i*>(planes[2]), _mm_subs_epu8(r, half));
  uint8_t noise[48];
  for (int k = 0; k < 48; ++k) noise[k] = planes[k % 3][k / 3];
  AddTo(px, noise);
}

void ApplyMono(uint8_t* px, __m128i n, __m128i half) {
  alignas(16) uint8_t plane[16];
  _mm_store_si128(reinterpret_cast<__m128i*>(plane), _mm_subs_epu8(n, half));
  uint8_t noise[48];
  for (int k = 0; k < 48; ++k) noise[k] = plane[k / 3];
  AddTo(px, noise);
}

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

}  // namespace framekit::prim::sse2

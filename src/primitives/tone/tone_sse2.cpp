// Fast-path tone kernels, SSE2 level: classes 1 to 5 for lightness, darkness and contrast.
// These three change each byte on its own, so a row's block bytes (48 per 16 pixels) are taken
// 16 at a time: widened to four float vectors, multiplied, converted with cvtps2dq (nearest
// even; INT32_MIN for NaN or overflow, as the model does) and packed back with saturation. The
// tail (width % 16 pixels) runs the model's truncating formula byte by byte. Unaligned loads;
// nothing outside a row's 3 * width bytes is touched.
#include <emmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/tone/tone.h"
#include "primitives/tone/tone_model.h"

namespace framekit::prim::sse2 {

#include "primitives/tone/tone_blocks.h"

Status LightnessBlocks(uint8_t* p, int32_t step, Size roi, int32_t level) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const __m128 scale = _mm_set1_ps(tone::LevelScale(level));
  const __m128i white = _mm_set1_epi32(255);
  Rows(
      p, step, roi,
      [&](__m128i x) {
        Quad q = Widen(x);
        for (__m128i& v : q.v) v = _mm_add_epi32(v, Scaled(_mm_sub_epi32(white, v), scale));
        return Narrow(q);
      },
      [&](uint8_t v) { return tone::LightnessTruncByte(v, level); });
  return ippStsNoErr;
}

Status DarknessBlocks(uint8_t* p, int32_t step, Size roi, int32_t level) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const __m128 scale = _mm_set1_ps(tone::LevelScale(level));
  Rows(
      p, step, roi,
      [&](__m128i x) {
        Quad q = Widen(x);
        for (__m128i& v : q.v) v = _mm_sub_epi32(v, Scaled(v, scale));
        return Narrow(q);
      },
      [&](uint8_t v) { return tone::DarknessTruncByte(v, level); });
  return ippStsNoErr;
}

Status ContrastBlocks(uint8_t* p, int32_t step, Size roi, int32_t k) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const float f = tone::ContrastFactorSingle(k);
  const __m128 factor = _mm_set1_ps(f);
  const __m128i mid32 = _mm_set1_epi32(128);
  const __m128i mid16 = _mm_set1_epi16(128);
  Rows(
      p, step, roi,
      [&](__m128i x) {
        Quad q = Widen(x);
        for (__m128i& v : q.v) v = Scaled(_mm_sub_epi32(v, mid32), factor);
        const __m128i lo = _mm_adds_epi16(_mm_packs_epi32(q.v[0], q.v[1]), mid16);
        const __m128i hi = _mm_adds_epi16(_mm_packs_epi32(q.v[2], q.v[3]), mid16);
        return _mm_packus_epi16(lo, hi);
      },
      [&](uint8_t v) { return tone::ContrastTailByte(v, f); });
  return ippStsNoErr;
}

}  // namespace framekit::prim::sse2

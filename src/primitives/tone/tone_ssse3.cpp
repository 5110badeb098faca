// Fast-path saturation, SSSE3 level: classes 2 to 5 (class 1 uses the reference). A block of
// 16 pixels is split into its three channels with pshufb, widened to 32-bit lanes, computed in
// single precision as the model does (rounded mean, rounded scaled difference, wrapping sum),
// packed with saturation and interleaved back. Saturations below 510 stay in 16-bit lanes
// instead: the mean and the scaled difference are one pmulhrsw each, with the multiplier fitted
// and checked per call (tone_model.h). The tail (width % 16 pixels) runs the model's truncating
// formula. Unaligned loads; nothing outside a row's 3 * width bytes is touched.
#include <tmmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/tone/tone.h"
#include "primitives/tone/tone_model.h"

namespace framekit::prim::ssse3 {

#include "primitives/tone/saturation_shuffles.h"
#include "primitives/tone/tone_blocks.h"

namespace {

void SaturateBlock(uint8_t* px, __m128 scale) {
  const __m128 third = _mm_set1_ps(0.33333334f);
  __m128i in[3], ch[3];
  for (int i = 0; i < 3; ++i) in[i] = _mm_loadu_si128(reinterpret_cast<__m128i*>(px + 16 * i));
  SplitChannels(in, ch);
  Quad q[3] = {Widen(ch[0]), Widen(ch[1]), Widen(ch[2])};
  for (int k = 0; k < 4; ++k) {
    const __m128i sum = _mm_add_epi32(_mm_add_epi32(q[0].v[k], q[1].v[k]), q[2].v[k]);
    const __m128i mean = Scaled(sum, third);
    for (Quad& c : q) c.v[k] = _mm_add_epi32(mean, Scaled(_mm_sub_epi32(c.v[k], mean), scale));
  }
  for (int c = 0; c < 3; ++c) ch[c] = Narrow(q[c]);
  JoinChannels(ch, in);
  for (int i = 0; i < 3; ++i) _mm_storeu_si128(reinterpret_cast<__m128i*>(px + 16 * i), in[i]);
}

// The fitted 16-bit steps on 16 pixels, eight at a time.
template <bool kAboveIdentity>
void SaturateBlockFitted(uint8_t* px, __m128i multiplier) {
  const __m128i zero = _mm_setzero_si128(), third = _mm_set1_epi16(10923);
  __m128i in[3], ch[3];
  for (int i = 0; i < 3; ++i) in[i] = _mm_loadu_si128(reinterpret_cast<__m128i*>(px + 16 * i));
  SplitChannels(in, ch);
  __m128i lo[3], hi[3];
  for (int c = 0; c < 3; ++c) {
    lo[c] = _mm_unpacklo_epi8(ch[c], zero);
    hi[c] = _mm_unpackhi_epi8(ch[c], zero);
  }
  __m128i* const halves[2] = {lo, hi};
  for (__m128i* w : halves) {
    const __m128i mean = _mm_mulhrs_epi16(_mm_add_epi16(_mm_add_epi16(w[0], w[1]), w[2]), third);
    for (int c = 0; c < 3; ++c) {
      const __m128i r = _mm_mulhrs_epi16(_mm_sub_epi16(w[c], mean), multiplier);
      w[c] = _mm_add_epi16(kAboveIdentity ? w[c] : mean, r);
    }
  }
  for (int c = 0; c < 3; ++c) ch[c] = _mm_packus_epi16(lo[c], hi[c]);
  JoinChannels(ch, in);
  for (int i = 0; i < 3; ++i) _mm_storeu_si128(reinterpret_cast<__m128i*>(px + 16 * i), in[i]);
}

}  // namespace

Status SaturationBlocks(uint8_t* p, int32_t step, Size roi, uint32_t s) {
  if (const Status st = CheckOne(p, roi); st != ippStsNoErr) return st;
  const __m128 scale = _mm_set1_ps(tone::SaturationScale(s));
  const int32_t blocks = roi.width / 16;
  tone::SaturationFit fit{};
  const bool fitted = tone::FitSaturation(s, &fit);
  const __m128i multiplier = _mm_set1_epi16(fit.multiplier);
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* row = RowAt(p, step, r);
    for (int32_t b = 0; b < blocks; ++b) {
      uint8_t* px = row + int64_t{b} * 48;
      if (!fitted) {
        SaturateBlock(px, scale);
      } else if (fit.above_identity) {
        SaturateBlockFitted<true>(px, multiplier);
      } else {
        SaturateBlockFitted<false>(px, multiplier);
      }
    }
    for (int32_t x = blocks * 16; x < roi.width; ++x) {
      tone::SaturationTruncPixel(row + int64_t{x} * 3, s);
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ssse3

// Fast-path tone kernels, AVX2 level: class 6. As the SSE2 and SSSE3 bodies, with 16 bytes (or
// one channel of 16 pixels) widened into two vectors of eight 32-bit lanes. packs works within
// 128-bit halves, so the 16-bit result is put back in order with one permute before the final
// unsigned pack. Saturation below 510 skips single precision: its mean and scaled difference
// are one pmulhrsw each with a multiplier fitted and checked per call (tone_model.h), two
// 16-pixel blocks at a time. Tails run the model's truncating formulas. Unaligned loads;
// nothing outside a row's 3 * width bytes is touched.
#include <immintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/tone/tone.h"
#include "primitives/tone/tone_model.h"

namespace framekit::prim::avx2 {

#include "primitives/tone/saturation_shuffles.h"
#include "primitives/tone/tone_blocks.h"

namespace {

struct Pair {
  __m256i v[2];  // 16 bytes as two vectors of eight 32-bit lanes, in byte order
};

inline Pair WidenPair(__m128i x) {
  return {{_mm256_cvtepu8_epi32(x), _mm256_cvtepu8_epi32(_mm_srli_si128(x, 8))}};
}

// 16 lanes to 16-bit with signed saturation, in order.
inline __m256i Pack16(const Pair& p) {
  return _mm256_permute4x64_epi64(_mm256_packs_epi32(p.v[0], p.v[1]), 0xD8);
}

inline __m128i PackBytes(__m256i words) {
  return _mm_packus_epi16(_mm256_castsi256_si128(words), _mm256_extracti128_si256(words, 1));
}

inline __m128i Narrow(const Pair& p) { return PackBytes(Pack16(p)); }

inline __m256i Scaled(__m256i lanes, __m256 scale) {
  return _mm256_cvtps_epi32(_mm256_mul_ps(_mm256_cvtepi32_ps(lanes), scale));
}

// Any saturation: the model's steps in 32-bit lanes.
void SaturateBlockWide(uint8_t* px, __m256 scale) {
  const __m256 third = _mm256_set1_ps(0.33333334f);
  __m128i in[3], ch[3];
  for (int i = 0; i < 3; ++i) in[i] = _mm_loadu_si128(reinterpret_cast<__m128i*>(px + 16 * i));
  SplitChannels(in, ch);
  Pair q[3] = {WidenPair(ch[0]), WidenPair(ch[1]), WidenPair(ch[2])};
  for (int k = 0; k < 2; ++k) {
    const __m256i sum = _mm256_add_epi32(_mm256_add_epi32(q[0].v[k], q[1].v[k]), q[2].v[k]);
    const __m256i mean = Scaled(sum, third);
    for (Pair& c : q) {
      c.v[k] = _mm256_add_epi32(mean, Scaled(_mm256_sub_epi32(c.v[k], mean), scale));
    }
  }
  for (int c = 0; c < 3; ++c) ch[c] = Narrow(q[c]);
  JoinChannels(ch, in);
  for (int i = 0; i < 3; ++i) _mm_storeu_si128(reinterpret_cast<__m128i*>(px + 16 * i), in[i]);
}

// Saturations up to 2^24, the same bytes with less work: the rounded mean of a sum of three
// bytes is (sum + 1) / 3 exactly (a third is never a half, and the product's rounding error is
// far below a third), taken in 16-bit lanes; only the scaled difference needs single precision.
// It stays far from the int32 limits here, so saturating the rounded value to 16 bits and adding
// the mean with saturation gives what the 32-bit wrapping sum and the packs give.
void SaturateBlockNarrow(uint8_t* px, __m256 scale) {
  const __m256i one = _mm256_set1_epi16(1), third = _mm256_set1_epi16(21846);
  __m128i in[3], ch[3];
  for (int i = 0; i < 3; ++i) in[i] = _mm_loadu_si128(reinterpret_cast<__m128i*>(px + 16 * i));
  SplitChannels(in, ch);
  __m256i w[3];
  for (int c = 0; c < 3; ++c) w[c] = _mm256_cvtepu8_epi16(ch[c]);
  const __m256i sum = _mm256_add_epi16(_mm256_add_epi16(w[0], w[1]), w[2]);
  const __m256i mean = _mm256_mulhi_epu16(_mm256_add_epi16(sum, one), third);
  for (__m256i& c : w) {
    const __m256i d = _mm256_sub_epi16(c, mean);
    // Lanes 0-3 and 8-11, then 4-7 and 12-15; packs puts them back in order.
    const __m256i lo = _mm256_srai_epi32(_mm256_unpacklo_epi16(d, d), 16);
    const __m256i hi = _mm256_srai_epi32(_mm256_unpackhi_epi16(d, d), 16);
    c = _mm256_adds_epi16(mean, _mm256_packs_epi32(Scaled(lo, scale), Scaled(hi, scale)));
  }
  const __m256i bg = _mm256_permute4x64_epi64(_mm256_packus_epi16(w[0], w[1]), 0xD8);
  const __m256i rr = _mm256_permute4x64_epi64(_mm256_packus_epi16(w[2], w[2]), 0xD8);
  ch[0] = _mm256_castsi256_si128(bg);
  ch[1] = _mm256_extracti128_si256(bg, 1);
  ch[2] = _mm256_castsi256_si128(rr);
  JoinChannels(ch, in);
  for (int i = 0; i < 3; ++i) _mm_storeu_si128(reinterpret_cast<__m128i*>(px + 16 * i), in[i]);
}

// The split and join controls in both halves of a 256-bit register.
struct WideControls {
  __m256i split[3][3];
  __m256i join[3][3];
};

WideControls MakeWideControls() {
  WideControls w;
  for (int a = 0; a < 3; ++a) {
    for (int b = 0; b < 3; ++b) {
      w.split[a][b] = _mm256_broadcastsi128_si256(Control(kSplit[a][b]));
      w.join[a][b] = _mm256_broadcastsi128_si256(Control(kJoin[a][b]));
    }
  }
  return w;
}

inline __m256i Gather3(const __m256i x[3], const __m256i control[3]) {
  return _mm256_or_si256(
      _mm256_or_si256(_mm256_shuffle_epi8(x[0], control[0]), _mm256_shuffle_epi8(x[1], control[1])),
      _mm256_shuffle_epi8(x[2], control[2]));
}

// Eight pixels' channel values (16-bit lanes, in each 128-bit half) after saturation.
inline void SaturateWords(__m256i w[3], __m256 scale) {
  const __m256i one = _mm256_set1_epi16(1), third = _mm256_set1_epi16(21846);
  const __m256i sum = _mm256_add_epi16(_mm256_add_epi16(w[0], w[1]), w[2]);
  const __m256i mean = _mm256_mulhi_epu16(_mm256_add_epi16(sum, one), third);
  for (int c = 0; c < 3; ++c) {
    const __m256i d = _mm256_sub_epi16(w[c], mean);
    const __m256i lo = _mm256_srai_epi32(_mm256_unpacklo_epi16(d, d), 16);
    const __m256i hi = _mm256_srai_epi32(_mm256_unpackhi_epi16(d, d), 16);
    w[c] = _mm256_adds_epi16(mean, _mm256_packs_epi32(Scaled(lo, scale), Scaled(hi, scale)));
  }
}

// 32 pixels (96 bytes), two 16-pixel blocks: the lanes are regrouped so that each 128-bit half
// holds one block, and every shuffle then works on both at once. `words` computes the channels
// in 16-bit lanes (SaturateWords or SaturateWordsFitted), eight pixels a half at a time.
template <typename WordsOp>
void SaturateBlockPair(uint8_t* px, const WideControls& k, WordsOp words) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i a = _mm256_loadu_si256(reinterpret_cast<__m256i*>(px));
  const __m256i b = _mm256_loadu_si256(reinterpret_cast<__m256i*>(px + 32));
  const __m256i c = _mm256_loadu_si256(reinterpret_cast<__m256i*>(px + 64));
  // Halves: bytes 0-15 | 48-63, 16-31 | 64-79, 32-47 | 80-95.
  const __m256i in[3] = {_mm256_permute2x128_si256(a, b, 0x30),
                         _mm256_permute2x128_si256(a, c, 0x21),
                         _mm256_permute2x128_si256(b, c, 0x30)};
  __m256i ch[3];
  for (int i = 0; i < 3; ++i) ch[i] = Gather3(in, k.split[i]);
  __m256i lo[3], hi[3];
  for (int i = 0; i < 3; ++i) {
    lo[i] = _mm256_unpacklo_epi8(ch[i], zero);
    hi[i] = _mm256_unpackhi_epi8(ch[i], zero);
  }
  words(lo);
  words(hi);
  for (int i = 0; i < 3; ++i) ch[i] = _mm256_packus_epi16(lo[i], hi[i]);
  __m256i out[3];
  for (int o = 0; o < 3; ++o) out[o] = Gather3(ch, k.join[o]);
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(px),
                      _mm256_permute2x128_si256(out[0], out[1], 0x20));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(px + 32),
                      _mm256_permute2x128_si256(out[2], out[0], 0x30));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(px + 64),
                      _mm256_permute2x128_si256(out[1], out[2], 0x31));
}

// Saturations 0..509 with a fitted multiplier (tone_model.h): the mean and the scaled difference
// are one pmulhrsw each, in 16-bit lanes; packus gives the final clamp.
template <bool kAboveIdentity>
inline void SaturateWordsFitted(__m256i w[3], __m256i multiplier) {
  const __m256i third = _mm256_set1_epi16(10923);
  const __m256i sum = _mm256_add_epi16(_mm256_add_epi16(w[0], w[1]), w[2]);
  const __m256i mean = _mm256_mulhrs_epi16(sum, third);
  for (int c = 0; c < 3; ++c) {
    const __m256i r = _mm256_mulhrs_epi16(_mm256_sub_epi16(w[c], mean), multiplier);
    w[c] = _mm256_add_epi16(kAboveIdentity ? w[c] : mean, r);
  }
}

// A row's blocks with the fitted multiplier: pairs, then a last odd block through the scalar
// form of the same integer steps (tone_model.h).
template <bool kAboveIdentity>
void SaturateRowFitted(uint8_t* row, int32_t blocks, const tone::SaturationFit& fit,
                       const WideControls& k) {
  const __m256i multiplier = _mm256_set1_epi16(fit.multiplier);
  int32_t b = 0;
  for (; b + 2 <= blocks; b += 2) {
    SaturateBlockPair(row + int64_t{b} * 48, k,
                      [&](__m256i w[3]) { SaturateWordsFitted<kAboveIdentity>(w, multiplier); });
  }
  if (b < blocks) {
    for (int x = 0; x < 16; ++x) tone::SaturationFitPixel(row + int64_t{b} * 48 + 3 * x, fit);
  }
}

}  // namespace

Status LightnessBlocks(uint8_t* p, int32_t step, Size roi, int32_t level) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const __m256 scale = _mm256_set1_ps(tone::LevelScale(level));
  const __m256i white = _mm256_set1_epi32(255);
  Rows(
      p, step, roi,
      [&](__m128i x) {
        Pair q = WidenPair(x);
        for (__m256i& v : q.v) {
          v = _mm256_add_epi32(v, Scaled(_mm256_sub_epi32(white, v), scale));
        }
        return Narrow(q);
      },
      [&](uint8_t v) { return tone::LightnessTruncByte(v, level); });
  return ippStsNoErr;
}

Status DarknessBlocks(uint8_t* p, int32_t step, Size roi, int32_t level) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const __m256 scale = _mm256_set1_ps(tone::LevelScale(level));
  Rows(
      p, step, roi,
      [&](__m128i x) {
        Pair q = WidenPair(x);
        for (__m256i& v : q.v) v = _mm256_sub_epi32(v, Scaled(v, scale));
        return Narrow(q);
      },
      [&](uint8_t v) { return tone::DarknessTruncByte(v, level); });
  return ippStsNoErr;
}

Status ContrastBlocks(uint8_t* p, int32_t step, Size roi, int32_t k) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const float f = tone::ContrastFactorSingle(k);
  const __m256 factor = _mm256_set1_ps(f);
  const __m256i mid32 = _mm256_set1_epi32(128);
  const __m256i mid16 = _mm256_set1_epi16(128);
  Rows(
      p, step, roi,
      [&](__m128i x) {
        Pair q = WidenPair(x);
        for (__m256i& v : q.v) v = Scaled(_mm256_sub_epi32(v, mid32), factor);
        return PackBytes(_mm256_adds_epi16(Pack16(q), mid16));
      },
      [&](uint8_t v) { return tone::ContrastTailByte(v, f); });
  return ippStsNoErr;
}

Status SaturationBlocks(uint8_t* p, int32_t step, Size roi, uint32_t s) {
  if (const Status st = CheckOne(p, roi); st != ippStsNoErr) return st;
  const __m256 scale = _mm256_set1_ps(tone::SaturationScale(s));
  const WideControls controls = MakeWideControls();
  const int32_t blocks = roi.width / 16;
  tone::SaturationFit fit{};
  const bool fitted = tone::FitSaturation(s, &fit);
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* row = RowAt(p, step, r);
    if (fitted) {
      if (fit.above_identity) {
        SaturateRowFitted<true>(row, blocks, fit, controls);
      } else {
        SaturateRowFitted<false>(row, blocks, fit, controls);
      }
    } else if (s <= (1u << 24)) {
      int32_t b = 0;
      for (; b + 2 <= blocks; b += 2) {
        SaturateBlockPair(row + int64_t{b} * 48, controls,
                          [&](__m256i w[3]) { SaturateWords(w, scale); });
      }
      if (b < blocks) SaturateBlockNarrow(row + int64_t{b} * 48, scale);
    } else {
      for (int32_t b = 0; b < blocks; ++b) SaturateBlockWide(row + int64_t{b} * 48, scale);
    }
    for (int32_t x = blocks * 16; x < roi.width; ++x) {
      tone::SaturationTruncPixel(row + int64_t{x} * 3, s);
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

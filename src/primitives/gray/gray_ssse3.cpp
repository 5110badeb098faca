// Grey primitives, SSSE3 level: classes 2 to 6.
//   Colour to grey: 16 pixels split into their channels with pshufb, widened to 16 bits and
//   weighted with pmaddwd in pairs (byte 0 with byte 1, byte 2 with the rounding constant);
//   exact 32-bit sums, shifted and cut to their low 8 bits as the reference does. Weights
//   outside the 16-bit range take the reference's scalar loop.
//   Duplicate: 16 source bytes become 48 destination bytes through three pshufb controls.
// The last width % 16 pixels of a row go pixel by pixel. Unaligned loads and stores; nothing
// outside a row's pixels is touched.
#include <tmmintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/core/wrap.h"
#include "primitives/gray/gray.h"

namespace framekit::prim::ssse3 {

#include "primitives/tone/saturation_shuffles.h"

namespace {

// Destination byte 16 * o + j repeats source byte (16 * o + j) / 3.
constexpr Control16 DupControl(int o) {
  Control16 m{};
  for (int j = 0; j < 16; ++j) m.b[j] = static_cast<uint8_t>((16 * o + j) / 3);
  return m;
}

alignas(16) constexpr Control16 kDup[3] = {DupControl(0), DupControl(1), DupControl(2)};

// Eight pixels' grey values as 16-bit lanes (each 0..255).
inline __m128i Grey8(__m128i b, __m128i g, __m128i r, __m128i bg_weights, __m128i r_weights) {
  const __m128i one = _mm_set1_epi16(1), low_byte = _mm_set1_epi32(0xFF);
  __m128i half[2];
  for (int h = 0; h < 2; ++h) {
    const __m128i bg = h == 0 ? _mm_unpacklo_epi16(b, g) : _mm_unpackhi_epi16(b, g);
    const __m128i r1 = h == 0 ? _mm_unpacklo_epi16(r, one) : _mm_unpackhi_epi16(r, one);
    const __m128i sum =
        _mm_add_epi32(_mm_madd_epi16(bg, bg_weights), _mm_madd_epi16(r1, r_weights));
    half[h] = _mm_and_si128(_mm_srli_epi32(sum, 15), low_byte);
  }
  return _mm_packs_epi32(half[0], half[1]);
}

void GreyRow16(const uint8_t* s, uint8_t* d, __m128i bg_weights, __m128i r_weights) {
  const __m128i zero = _mm_setzero_si128();
  __m128i in[3], ch[3];
  for (int i = 0; i < 3; ++i) in[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16 * i));
  SplitChannels(in, ch);
  const __m128i lo = Grey8(_mm_unpacklo_epi8(ch[0], zero), _mm_unpacklo_epi8(ch[1], zero),
                           _mm_unpacklo_epi8(ch[2], zero), bg_weights, r_weights);
  const __m128i hi = Grey8(_mm_unpackhi_epi8(ch[0], zero), _mm_unpackhi_epi8(ch[1], zero),
                           _mm_unpackhi_epi8(ch[2], zero), bg_weights, r_weights);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_packus_epi16(lo, hi));
}

bool FitsInt16(const int32_t w[3]) {
  for (int i = 0; i < 3; ++i) {
    if (w[i] < -32768 || w[i] > 32767) return false;
  }
  return true;
}

}  // namespace

Status ippiColorToGray_8u_C3C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi, const float* weights) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  int32_t w[3];
  GrayWeights(weights, w);
  const int32_t vector_pixels = FitsInt16(w) ? roi.width / 16 * 16 : 0;
  // (low, high) 16-bit weight pairs for pmaddwd; used only when every weight fits 16 bits.
  const auto pair = [](int32_t low, int32_t high) {
    return _mm_set1_epi32(PairWord(static_cast<int16_t>(low), static_cast<int16_t>(high)));
  };
  const __m128i bg_weights = pair(w[0], w[1]), r_weights = pair(w[2], 16384);
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t x = 0; x < vector_pixels; x += 16) {
      GreyRow16(s + int64_t{x} * 3, d + x, bg_weights, r_weights);
    }
    for (int32_t x = vector_pixels; x < roi.width; ++x) d[x] = GreyOf(s + int64_t{x} * 3, w);
  }
  return ippStsNoErr;
}

Status ippiDup_8u_C1C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                        Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const __m128i control[3] = {Control(kDup[0]), Control(kDup[1]), Control(kDup[2])};
  const int32_t vector_pixels = roi.width / 16 * 16;
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
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

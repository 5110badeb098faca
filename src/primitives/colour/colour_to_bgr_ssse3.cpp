// YUV to BGR conversions, SSSE3 level: classes 2 and 3, and 4 and 5, which have no body of
// their own. Eight pixels a step. Every sum is the reference's exact 32-bit value, computed with
// 16-bit multiply-adds of an exact split, before the same shifts; the unsigned pack clamps as the
// reference does. Each step writes exactly its 24 bytes. Tails: fewer than 8 pixels, and the odd
// last pixel or column, go through the scalar formulas of colour_kernels.h. Nothing outside a row's
// pixels is read or written.
#include <tmmintrin.h>

#include <cstdint>

#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"

namespace framekit::prim::ssse3 {
namespace {

inline __m128i Madd(__m128i pairs, int16_t a, int16_t b) {
  return _mm_madd_epi16(pairs, _mm_set1_epi32(PairWord(a, b)));
}
inline __m128i Add(__m128i a, int32_t k) { return _mm_add_epi32(a, _mm_set1_epi32(k)); }
inline __m128i Shift16(__m128i x, int32_t k) { return _mm_srai_epi32(Add(x, k), 16); }

// Eight pixels from three channels of eight int16 each, clamped to 0..255, as 24 BGR bytes.
inline void StoreBgr8(uint8_t* d, __m128i b, __m128i g, __m128i r) {
  const __m128i bg = _mm_packus_epi16(b, g);  // B0-7, G0-7
  const __m128i rr = _mm_packus_epi16(r, r);  // R0-7 twice
  const __m128i head = _mm_or_si128(
      _mm_shuffle_epi8(bg, _mm_setr_epi8(0, 8, -1, 1, 9, -1, 2, 10, -1, 3, 11, -1, 4, 12, -1, 5)),
      _mm_shuffle_epi8(rr,
                       _mm_setr_epi8(-1, -1, 0, -1, -1, 1, -1, -1, 2, -1, -1, 3, -1, -1, 4, -1)));
  const __m128i tail = _mm_or_si128(
      _mm_shuffle_epi8(bg,
                       _mm_setr_epi8(13, -1, 6, 14, -1, 7, 15, -1, -1, -1, -1, -1, -1, -1, -1, -1)),
      _mm_shuffle_epi8(rr,
                       _mm_setr_epi8(-1, 5, -1, -1, 6, -1, -1, 7, -1, -1, -1, -1, -1, -1, -1, -1)));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(d), head);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(d + 16), tail);
}

// The high 16 bits of each 32-bit value of `even` and of `odd`, interleaved: as signed 16-bit
// values these are the arithmetic shifts by 16.
inline __m128i HighWords(__m128i even, __m128i odd) {
  return _mm_or_si128(_mm_srli_epi32(even, 16),
                      _mm_and_si128(odd, _mm_set1_epi32(static_cast<int32_t>(0xFFFF0000u))));
}

// Eight 4:2:2 pixels (four groups Y0, U, Y1, V) as three channels of int16 in pixel order, by the
// split of Split422: the chroma terms are shared by each group's two pixels, the channels are the
// sums' high halves.
struct Bgr8 {
  __m128i b, g, r;
};
inline Bgr8 Convert422x8(__m128i in) {
  using K = Split422;
  const __m128i yy4 = _mm_maddubs_epi16(in, _mm_set1_epi32(K::kLumaBytes));
  const __m128i uv65 = _mm_maddubs_epi16(in, _mm_set1_epi32(K::kChromaBytes));
  const __m128i uv = _mm_srli_epi16(in, 8);
  const __m128i y0 = Madd(yy4, K::kLuma, 0);
  const __m128i y1 = Madd(yy4, 0, K::kLuma);
  const __m128i tb = Add(Madd(uv65, K::kBlue, 0), K::kBlueBias);
  const __m128i tg = Add(_mm_sub_epi32(Madd(uv, K::kGreenU, K::kGreenV), uv), K::kGreenBias);
  const __m128i tr = Add(Madd(uv65, 0, K::kRed), K::kRedBias);
  return {HighWords(_mm_add_epi32(y0, tb), _mm_add_epi32(y1, tb)),
          HighWords(_mm_add_epi32(y0, tg), _mm_add_epi32(y1, tg)),
          HighWords(_mm_add_epi32(y0, tr), _mm_add_epi32(y1, tr))};
}

void Row422(const uint8_t* s, uint8_t* d, int32_t width) {
  int32_t x = 0;
  for (; x + 8 <= width; x += 8) {
    const Bgr8 p = Convert422x8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 2 * x)));
    StoreBgr8(d + 3 * x, p.b, p.g, p.r);
  }
  Row422ToBgr(s, d, x, width);
}

// Four chroma terms, each shared by two neighbouring pixels: eight int16 in pixel order.
inline __m128i Doubled(__m128i terms) {
  const __m128i t = _mm_packs_epi32(terms, terms);
  return _mm_unpacklo_epi16(t, t);
}

// Two rows of 4:2:0 sharing one chroma row: each channel is Y + (chroma term >> 16), with
// (b, a) the 16-bit pair of third- and second-plane samples less 128:
//   byte 0: b + ((9175 b + 32768) >> 16); byte 1: -b + ((27460 b - 25821 a) >> 16);
//   byte 2: 2a + ((2097 a + 32768) >> 16).
void RowPair420(const uint8_t* y0, const uint8_t* y1, const uint8_t* p2, const uint8_t* p3,
                uint8_t* d0, uint8_t* d1, int32_t blocks) {
  const __m128i zero = _mm_setzero_si128();
  int32_t j = 0;
  for (; j + 4 <= blocks; j += 4) {
    int32_t a4, b4;
    __builtin_memcpy(&a4, p2 + j, 4);
    __builtin_memcpy(&b4, p3 + j, 4);
    const __m128i ba = _mm_sub_epi16(
        _mm_unpacklo_epi8(_mm_unpacklo_epi8(_mm_cvtsi32_si128(b4), _mm_cvtsi32_si128(a4)), zero),
        _mm_set1_epi16(128));
    const __m128i c0 = Doubled(_mm_add_epi32(Madd(ba, 1, 0), Shift16(Madd(ba, 9175, 0), 32768)));
    const __m128i c1 =
        Doubled(_mm_add_epi32(Madd(ba, -1, 0), _mm_srai_epi32(Madd(ba, 27460, -25821), 16)));
    const __m128i c2 = Doubled(_mm_add_epi32(Madd(ba, 0, 2), Shift16(Madd(ba, 0, 2097), 32768)));
    for (int k = 0; k < 2; ++k) {
      const __m128i luma = _mm_unpacklo_epi8(
          _mm_loadl_epi64(reinterpret_cast<const __m128i*>((k == 0 ? y0 : y1) + 2 * j)), zero);
      StoreBgr8((k == 0 ? d0 : d1) + 6 * j, _mm_add_epi16(luma, c0), _mm_add_epi16(luma, c1),
                _mm_add_epi16(luma, c2));
    }
  }
  Blocks420ToBgr(y0, y1, p2, p3, d0, d1, j, blocks);
}

}  // namespace

Status ippiYCbCr422ToBGR_8u_C2C3R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  return Convert422(src, src_step, dst, dst_step, roi, Row422);
}

Status ippiYUV420ToBGR_8u_P3C3R(const uint8_t* const src[3], const int32_t src_step[3],
                                uint8_t* dst, int32_t dst_step, Size roi) {
  return Convert420ToBgr(src, src_step, dst, dst_step, roi, RowPair420);
}

}  // namespace framekit::prim::ssse3

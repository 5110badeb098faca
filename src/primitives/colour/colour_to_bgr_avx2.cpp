// YUV to BGR conversions, AVX2 level: class 6.
// 4:2:2 rows go 32 pixels a step (then 16), 4:2:0 row pairs 16. Every sum is the reference's
// exact 32-bit value (4:2:2 as 16-bit multiply-adds of an exact split, 4:2:0 with vpmulld) before
// the same shifts; the channels are clamped by the unsigned pack, as the reference's clamp does.
// Each step writes exactly its 96 or 48 bytes. Tails: the pixels left after the last whole step
// (fewer than 16, and the odd last pixel or column) go through the scalar formulas of
// colour_kernels.h. Nothing outside a row's pixels is read or written.
#include <immintrin.h>

#include <cstdint>

#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"

namespace framekit::prim::avx2 {
namespace {

inline __m256i Mul(__m256i a, int32_t k) { return _mm256_mullo_epi32(a, _mm256_set1_epi32(k)); }
inline __m256i Add(__m256i a, int32_t k) { return _mm256_add_epi32(a, _mm256_set1_epi32(k)); }
inline void Store(uint8_t* p, __m256i v) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v); }

// Sixteen pixels from three channels of sixteen int16 each, clamped to 0..255, as 48 BGR bytes.
inline void StoreBgr16(uint8_t* d, __m256i b, __m256i g, __m256i r) {
  const __m256i bg = _mm256_packus_epi16(b, g);  // lane k: B[8k..8k+7], G[8k..8k+7]
  const __m256i rr = _mm256_packus_epi16(r, r);  // lane k: R[8k..8k+7] twice
  const __m256i head_bg = _mm256_setr_epi8(0, 8, -1, 1, 9, -1, 2, 10, -1, 3, 11, -1, 4, 12, -1, 5,
                                           0, 8, -1, 1, 9, -1, 2, 10, -1, 3, 11, -1, 4, 12, -1, 5);
  const __m256i head_r =
      _mm256_setr_epi8(-1, -1, 0, -1, -1, 1, -1, -1, 2, -1, -1, 3, -1, -1, 4, -1, -1, -1, 0, -1, -1,
                       1, -1, -1, 2, -1, -1, 3, -1, -1, 4, -1);
  const __m256i tail_bg =
      _mm256_setr_epi8(13, -1, 6, 14, -1, 7, 15, -1, -1, -1, -1, -1, -1, -1, -1, -1, 13, -1, 6, 14,
                       -1, 7, 15, -1, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m256i tail_r =
      _mm256_setr_epi8(-1, 5, -1, -1, 6, -1, -1, 7, -1, -1, -1, -1, -1, -1, -1, -1, -1, 5, -1, -1,
                       6, -1, -1, 7, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m256i head =
      _mm256_or_si256(_mm256_shuffle_epi8(bg, head_bg), _mm256_shuffle_epi8(rr, head_r));
  const __m256i tail =
      _mm256_or_si256(_mm256_shuffle_epi8(bg, tail_bg), _mm256_shuffle_epi8(rr, tail_r));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm256_castsi256_si128(head));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(d + 16), _mm256_castsi256_si128(tail));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 24), _mm256_extracti128_si256(head, 1));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(d + 40), _mm256_extracti128_si256(tail, 1));
}

// Eight chroma terms, each shared by two neighbouring pixels: sixteen int16 in pixel order.
inline __m256i Doubled(__m256i terms) {
  const __m128i t =
      _mm_packs_epi32(_mm256_castsi256_si128(terms), _mm256_extracti128_si256(terms, 1));
  return _mm256_set_m128i(_mm_unpackhi_epi16(t, t), _mm_unpacklo_epi16(t, t));
}

inline __m256i Madd(__m256i pairs, int16_t a, int16_t b) {
  return _mm256_madd_epi16(pairs, _mm256_set1_epi32(PairWord(a, b)));
}

// The high 16 bits of each 32-bit value of `even` and of `odd`, interleaved: as signed 16-bit
// values these are the arithmetic shifts by 16.
inline __m256i HighWords(__m256i even, __m256i odd) {
  return _mm256_blend_epi16(_mm256_srli_epi32(even, 16), odd, 0xAA);
}

// Thirty-two pixels from three channels of 32 bytes each (pixels 0-15 in the low lane, 16-31 in
// the high lane) as 96 BGR bytes: each channel rotated so that a lane's bytes fall where the
// three 16-byte thirds of its 48 output bytes want them, merged by two byte blends per third.
inline void StoreBgr32(uint8_t* d, __m256i b, __m256i g, __m256i r) {
  const __m256i sb = _mm256_setr_epi8(0, 11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15, 10, 5, 0, 11,
                                      6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15, 10, 5);
  const __m256i sg = _mm256_setr_epi8(5, 0, 11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15, 10, 5, 0,
                                      11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15, 10);
  const __m256i sr = _mm256_setr_epi8(10, 5, 0, 11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15, 10, 5,
                                      0, 11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15);
  const __m256i m1 = _mm256_setr_epi8(0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, 0, -1, 0,
                                      0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0);
  const __m256i m2 = _mm256_setr_epi8(0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, 0, -1,
                                      0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0);
  const __m256i b0 = _mm256_shuffle_epi8(b, sb);
  const __m256i g0 = _mm256_shuffle_epi8(g, sg);
  const __m256i r0 = _mm256_shuffle_epi8(r, sr);
  const __m256i p0 = _mm256_blendv_epi8(_mm256_blendv_epi8(b0, g0, m1), r0, m2);  // bytes 0-15
  const __m256i p1 = _mm256_blendv_epi8(_mm256_blendv_epi8(g0, r0, m1), b0, m2);  // 16-31
  const __m256i p2 = _mm256_blendv_epi8(_mm256_blendv_epi8(r0, b0, m1), g0, m2);  // 32-47
  Store(d, _mm256_permute2x128_si256(p0, p1, 0x20));
  Store(d + 32, _mm256_permute2x128_si256(p2, p0, 0x30));
  Store(d + 64, _mm256_permute2x128_si256(p1, p2, 0x31));
}

// Sixteen 4:2:2 pixels (eight groups Y0, U, Y1, V; groups 0-3 in the low lane, 4-7 in the high
// lane) as three channels of int16 in pixel order, by the split of Split422: the chroma terms are
// shared by each group's two pixels, the channels are the sums' high halves.
struct Bgr16 {
  __m256i b, g, r;
};
inline Bgr16 Convert422x16(__m256i in) {
  using K = Split422;
  const __m256i yy4 = _mm256_maddubs_epi16(in, _mm256_set1_epi32(K::kLumaBytes));
  const __m256i uv65 = _mm256_maddubs_epi16(in, _mm256_set1_epi32(K::kChromaBytes));
  const __m256i uv = _mm256_srli_epi16(in, 8);
  const __m256i y0 = Madd(yy4, K::kLuma, 0);
  const __m256i y1 = Madd(yy4, 0, K::kLuma);
  const __m256i tb = Add(Madd(uv65, K::kBlue, 0), K::kBlueBias);
  const __m256i tg = Add(_mm256_sub_epi32(Madd(uv, K::kGreenU, K::kGreenV), uv), K::kGreenBias);
  const __m256i tr = Add(Madd(uv65, 0, K::kRed), K::kRedBias);
  return {HighWords(_mm256_add_epi32(y0, tb), _mm256_add_epi32(y1, tb)),
          HighWords(_mm256_add_epi32(y0, tg), _mm256_add_epi32(y1, tg)),
          HighWords(_mm256_add_epi32(y0, tr), _mm256_add_epi32(y1, tr))};
}

inline __m256i LoadLanes(const uint8_t* lo, const uint8_t* hi) {
  return _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(lo))),
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(hi)), 1);
}

// One 4:2:2 row, thirty-two pixels a step: the two halves of a step are loaded lane-crossed
// (pixels 0-7 with 16-23, 8-15 with 24-31) so that the unsigned packs of their channels come out
// in pixel order, clamped to 0..255 as the reference's clamp does. Then sixteen pixels a step.
void Row422(const uint8_t* s, uint8_t* d, int32_t width) {
  int32_t x = 0;
  for (; x + 32 <= width; x += 32) {
    const uint8_t* in = s + 2 * x;
    const Bgr16 a = Convert422x16(LoadLanes(in, in + 32));
    const Bgr16 c = Convert422x16(LoadLanes(in + 16, in + 48));
    StoreBgr32(d + 3 * x, _mm256_packus_epi16(a.b, c.b), _mm256_packus_epi16(a.g, c.g),
               _mm256_packus_epi16(a.r, c.r));
  }
  for (; x + 16 <= width; x += 16) {
    const Bgr16 a = Convert422x16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + 2 * x)));
    StoreBgr16(d + 3 * x, a.b, a.g, a.r);
  }
  Row422ToBgr(s, d, x, width);
}

// Two rows of 4:2:0 sharing one chroma row. Luma is at full range, so each channel is
// Y + (chroma term >> 16) exactly: the terms are computed once, in 16 bits, for both rows.
void RowPair420(const uint8_t* y0, const uint8_t* y1, const uint8_t* p2, const uint8_t* p3,
                uint8_t* d0, uint8_t* d1, int32_t blocks) {
  int32_t j = 0;
  for (; j + 8 <= blocks; j += 8) {
    const __m256i a =
        Add(_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p2 + j))), -128);
    const __m256i b =
        Add(_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p3 + j))), -128);
    const __m256i c0 = Doubled(_mm256_srai_epi32(Add(Mul(b, 74711), 32768), 16));
    const __m256i c1 =
        Doubled(_mm256_srai_epi32(_mm256_add_epi32(Mul(b, -38076), Mul(a, -25821)), 16));
    const __m256i c2 = Doubled(_mm256_srai_epi32(Add(Mul(a, 133169), 32768), 16));
    for (int k = 0; k < 2; ++k) {
      const uint8_t* y = (k == 0 ? y0 : y1) + 2 * j;
      const __m256i luma =
          _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(y)));
      StoreBgr16((k == 0 ? d0 : d1) + 6 * j, _mm256_add_epi16(luma, c0), _mm256_add_epi16(luma, c1),
                 _mm256_add_epi16(luma, c2));
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

}  // namespace framekit::prim::avx2

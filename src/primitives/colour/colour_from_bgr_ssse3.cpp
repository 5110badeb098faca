// BGR to YUV conversions, SSSE3 level: classes 2 and 3, and 4 and 5, which have no body of
// their own. Eight pixels a step, four to a register, paired as 16-bit (byte 0, byte 1) and
// (byte 1, byte 2) so every weighted sum is two pmaddwd (33030 = 2 * 16515; the other weights fit
// 16 bits) giving the reference's exact 32-bit value before the same shifts. A step reads 28
// bytes of a BGR row, so it runs while 10 pixels (5 blocks of 4:2:0) remain; the rest of a row,
// and an odd last column, go through the scalar formulas of colour_kernels.h. Each step writes
// exactly its own output bytes.
#include <tmmintrin.h>

#include <cstdint>

#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"
#include "primitives/mirror/mirror.h"

namespace framekit::prim::ssse3 {
namespace {

constexpr int32_t kStepReach = 10;  // pixels of a 4:2:2 row a step needs (28 bytes read)
constexpr int32_t kBlockReach = 5;  // 2 x 2 blocks of a 4:2:0 row pair a step needs

struct Pixels4 {
  __m128i lo;  // (byte 0, byte 1) of each pixel
  __m128i hi;  // (byte 1, byte 2)
};

// Four pixels from 12 bytes (16 read).
inline Pixels4 Load4(const uint8_t* p) {
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  return {
      _mm_shuffle_epi8(v, _mm_setr_epi8(0, -1, 1, -1, 3, -1, 4, -1, 6, -1, 7, -1, 9, -1, 10, -1)),
      _mm_shuffle_epi8(v, _mm_setr_epi8(1, -1, 2, -1, 4, -1, 5, -1, 7, -1, 8, -1, 10, -1, 11, -1))};
}

struct Weights {
  __m128i lo, hi;
  Weights(int32_t lo_pair, int32_t hi_pair)
      : lo(_mm_set1_epi32(lo_pair)), hi(_mm_set1_epi32(hi_pair)) {}
};
inline __m128i Weigh(const Pixels4& p, const Weights& w) {
  return _mm_add_epi32(_mm_madd_epi16(p.lo, w.lo), _mm_madd_epi16(p.hi, w.hi));
}

// Eight luma sums, + 1081344 and >> 16, as eight bytes (low half).
inline __m128i Luma8(__m128i first, __m128i second) {
  const __m128i k = _mm_set1_epi32(1081344);
  const __m128i a = _mm_srai_epi32(_mm_add_epi32(first, k), 16);
  const __m128i b = _mm_srai_epi32(_mm_add_epi32(second, k), 16);
  return _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_setzero_si128());
}

// Final chroma of pairs 0-1 (first) and 2-3 (second), each [U, U, V, V], as U0-3, V0-3 bytes.
inline __m128i Chroma4(__m128i first, __m128i second) {
  const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(first, second), _mm_setzero_si128());
  return _mm_shuffle_epi8(bytes,
                          _mm_setr_epi8(0, 1, 4, 5, 2, 3, 6, 7, -1, -1, -1, -1, -1, -1, -1, -1));
}

inline __m128i PairChroma4(__m128i x) {
  const __m128i biased = _mm_sub_epi32(x, _mm_set1_epi32(16760832));
  return _mm_and_si128(_mm_srli_epi32(biased, 17), _mm_set1_epi32(255));
}

void Row422(const uint8_t* s, uint8_t* d, int32_t width) {
  using K = SplitBgr;
  const Weights luma{K::kLuma422Lo, K::kLuma422Hi};
  const Weights u_w{K::kU422Lo, K::kU422Hi};
  const Weights v_w{K::kV422Lo, K::kV422Hi};
  int32_t x = 0;
  for (; x + kStepReach <= width; x += 8) {
    const Pixels4 p0 = Load4(s + 3 * x), p1 = Load4(s + 3 * x + 12);
    const __m128i y = Luma8(Weigh(p0, luma), Weigh(p1, luma));
    const __m128i c = Chroma4(PairChroma4(_mm_hadd_epi32(Weigh(p0, u_w), Weigh(p0, v_w))),
                              PairChroma4(_mm_hadd_epi32(Weigh(p1, u_w), Weigh(p1, v_w))));
    const __m128i uv = _mm_unpacklo_epi8(c, _mm_srli_si128(c, 4));  // U0 V0 U1 V1 ...
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 2 * x), _mm_unpacklo_epi8(y, uv));
  }
  RowBgrTo422(s, d, x, width);
}

inline __m128i BlockChroma4(__m128i x) {
  return _mm_srai_epi32(_mm_add_epi32(x, _mm_set1_epi32((128 << 18) + (1 << 17))), 18);
}

void RowPair420(const uint8_t* s0, const uint8_t* s1, const Rows420& out, int32_t blocks) {
  using K = SplitBgr;
  const Weights luma{K::kLuma420Lo, K::kLuma420Hi};
  const Weights u_w{K::kU420Lo, K::kU420Hi};
  const Weights v_w{K::kV420Lo, K::kV420Hi};
  int32_t j = 0;
  for (; j + kBlockReach <= blocks; j += 4) {
    const Pixels4 a0 = Load4(s0 + 6 * j), a1 = Load4(s0 + 6 * j + 12);
    const Pixels4 b0 = Load4(s1 + 6 * j), b1 = Load4(s1 + 6 * j + 12);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out.y0 + 2 * j),
                     Luma8(Weigh(a0, luma), Weigh(a1, luma)));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out.y1 + 2 * j),
                     Luma8(Weigh(b0, luma), Weigh(b1, luma)));
    const Pixels4 c0{_mm_add_epi16(a0.lo, b0.lo), _mm_add_epi16(a0.hi, b0.hi)};
    const Pixels4 c1{_mm_add_epi16(a1.lo, b1.lo), _mm_add_epi16(a1.hi, b1.hi)};
    const __m128i uv = Chroma4(BlockChroma4(_mm_hadd_epi32(Weigh(c0, u_w), Weigh(c0, v_w))),
                               BlockChroma4(_mm_hadd_epi32(Weigh(c1, u_w), Weigh(c1, v_w))));
    const int32_t u4 = _mm_cvtsi128_si32(uv), v4 = _mm_cvtsi128_si32(_mm_srli_si128(uv, 4));
    __builtin_memcpy(out.p2 + j, &u4, 4);
    __builtin_memcpy(out.p3 + j, &v4, 4);
  }
  BgrBlocksTo420(s0, s1, out, j, blocks);
}

}  // namespace

Status ippiBGRToYCbCr422_8u_C3C2R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  return Convert422(src, src_step, dst, dst_step, roi, Row422);
}

Status ippiBGRToYUV420_8u_C3P3R(const uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                const int32_t dst_step[3], Size roi) {
  return ConvertBgrTo420(src, src_step, dst, dst_step, roi, RowPair420);
}

// The SSSE3 mirror, then the SSSE3 conversion.
Status MirrorBGRToYUV420(uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                         const int32_t dst_step[3], Size roi) {
  if (const Status s = Check420(dst, dst_step, src, roi); s != ippStsNoErr) return s;
  ssse3::ippiMirror_8u_C3IR(src, src_step, roi, kAxisHorizontal);  // one row: left as it is
  return ssse3::ippiBGRToYUV420_8u_C3P3R(src, src_step, dst, dst_step, roi);
}

}  // namespace framekit::prim::ssse3

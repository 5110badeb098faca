// BGR to YUV conversions, AVX2 level: class 6.
// Sixteen pixels a step. Pixels are spread four to a 128-bit lane and paired as 16-bit
// (byte 0, byte 1) and (byte 1, byte 2), so every weighted sum is two vpmaddwd: the weights
// split as 33030 = 2 * 16515 and otherwise fit 16 bits, and each sum is the reference's exact
// 32-bit value before the same shifts. A step reads 52 bytes of a BGR row, so it runs while 18
// pixels remain (3 * 18 >= 52); the rest of a row, and an odd last column, go through the scalar
// formulas of colour_kernels.h. Each step writes exactly its own output bytes.
#include <immintrin.h>

#include <cstdint>

#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"

namespace framekit::prim::avx2 {
namespace {

constexpr int32_t kStepReach = 18;  // pixels of a 4:2:2 row a step needs (52 bytes read)
constexpr int32_t kBlockReach = 9;  // 2 x 2 blocks of a 4:2:0 row pair a step needs (6 * 9 >= 52)

inline __m256i Pairs16(int16_t a, int16_t b) {
  return _mm256_set1_epi32(static_cast<int32_t>(static_cast<uint16_t>(a)) |
                           (static_cast<int32_t>(static_cast<uint16_t>(b)) << 16));
}

// Eight pixels from 24 bytes (28 read): lane k holds pixels 4k..4k+3 as 16-bit pairs.
struct Pixels8 {
  __m256i lo;  // (byte 0, byte 1) of each pixel
  __m256i hi;  // (byte 1, byte 2)
};

inline Pixels8 Load8(const uint8_t* p) {
  const __m256i spread = _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))),
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 12)), 1);
  const __m256i lo = _mm256_setr_epi8(0, -1, 1, -1, 3, -1, 4, -1, 6, -1, 7, -1, 9, -1, 10, -1, 0,
                                      -1, 1, -1, 3, -1, 4, -1, 6, -1, 7, -1, 9, -1, 10, -1);
  const __m256i hi = _mm256_setr_epi8(1, -1, 2, -1, 4, -1, 5, -1, 7, -1, 8, -1, 10, -1, 11, -1, 1,
                                      -1, 2, -1, 4, -1, 5, -1, 7, -1, 8, -1, 10, -1, 11, -1);
  return {_mm256_shuffle_epi8(spread, lo), _mm256_shuffle_epi8(spread, hi)};
}

// w_lo . (byte 0, byte 1) + w_hi . (byte 1, byte 2) for each of the eight pixels.
struct Weights {
  __m256i lo, hi;
};
inline __m256i Weigh(const Pixels8& p, const Weights& w) {
  return _mm256_add_epi32(_mm256_madd_epi16(p.lo, w.lo), _mm256_madd_epi16(p.hi, w.hi));
}

// Sixteen luma values (pixels 0-7 and 8-15), + 1081344 and >> 16, as sixteen bytes in order.
inline __m128i Luma16(__m256i sum_lo, __m256i sum_hi) {
  const __m256i k = _mm256_set1_epi32(1081344);
  const __m256i a = _mm256_srai_epi32(_mm256_add_epi32(sum_lo, k), 16);
  const __m256i b = _mm256_srai_epi32(_mm256_add_epi32(sum_hi, k), 16);
  const __m256i bytes = _mm256_packus_epi16(_mm256_packs_epi32(a, b), _mm256_setzero_si256());
  // Lane 0: pixels 0-3, 8-11; lane 1: 4-7, 12-15.
  return _mm256_castsi256_si128(
      _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)));
}

// The pairs of pixels 0-7 (x) and 8-15 (y) summed with their right-hand neighbours (16-bit;
// the weights are linear, so summing before weighing gives the same 32-bit sums). Lane k then
// holds the sums of pixel pairs 2k, 4 + 2k, 2k + 1, 5 + 2k of x and y in that order.
inline __m256i NeighbourSums(__m256i x, __m256i y) {
  const __m256i xs = _mm256_add_epi16(x, _mm256_srli_epi64(x, 32));  // even dwords
  const __m256i ys = _mm256_add_epi16(y, _mm256_slli_epi64(y, 32));  // odd dwords
  return _mm256_blend_epi32(xs, ys, 0xAA);
}
inline Pixels8 NeighbourSums(const Pixels8& x, const Pixels8& y) {
  return {NeighbourSums(x.lo, y.lo), NeighbourSums(x.hi, y.hi)};
}

// Eight final U and eight final V values (int32, in NeighbourSums order) as bytes U0..U7,
// V0..V7.
inline __m128i Chroma8(__m256i u, __m256i v) {
  const __m256i bytes = _mm256_packus_epi16(_mm256_packs_epi32(u, v), _mm256_setzero_si256());
  // Lane 0: U of pairs 0 4 1 5, V of the same; lane 1: pairs 2 6 3 7.
  const __m256i grouped = _mm256_shuffle_epi8(
      bytes, _mm256_setr_epi8(0, 2, 1, 3, 4, 6, 5, 7, -1, -1, -1, -1, -1, -1, -1, -1, 0, 2, 1, 3, 4,
                              6, 5, 7, -1, -1, -1, -1, -1, -1, -1, -1));
  return _mm_unpacklo_epi16(_mm256_castsi256_si128(grouped), _mm256_extracti128_si256(grouped, 1));
}

// 4:2:2: luma with red at byte 2; pair chroma cut to the low byte of the unsigned shift.
inline __m256i PairChroma8(__m256i x) {
  const __m256i biased = _mm256_sub_epi32(x, _mm256_set1_epi32(16760832));
  return _mm256_and_si256(_mm256_srli_epi32(biased, 17), _mm256_set1_epi32(255));
}

void Row422(const uint8_t* s, uint8_t* d, int32_t width) {
  const Weights luma{Pairs16(6423, 16515), Pairs16(16515, 16843)};
  const Weights u_w{Pairs16(28770, -19071), Pairs16(0, -9699)};
  const Weights v_w{Pairs16(-4653, -24117), Pairs16(0, 28770)};
  int32_t x = 0;
  for (; x + kStepReach <= width; x += 16) {
    const Pixels8 p0 = Load8(s + 3 * x), p1 = Load8(s + 3 * x + 24);
    const __m128i y = Luma16(Weigh(p0, luma), Weigh(p1, luma));
    const Pixels8 pairs = NeighbourSums(p0, p1);
    const __m128i uv8 = Chroma8(PairChroma8(Weigh(pairs, u_w)), PairChroma8(Weigh(pairs, v_w)));
    const __m128i uv = _mm_unpacklo_epi8(uv8, _mm_srli_si128(uv8, 8));  // U0 V0 U1 V1 ...
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 2 * x), _mm_unpacklo_epi8(y, uv));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 2 * x + 16), _mm_unpackhi_epi8(y, uv));
  }
  for (; x + 2 <= width; x += 2) {
    const uint8_t* p = s + 3 * x;
    const int32_t b = p[0] + p[3], g = p[1] + p[4], r = p[2] + p[5];
    d[2 * x] = Luma422(p);
    d[2 * x + 1] = PairU(b, g, r);
    d[2 * x + 2] = Luma422(p + 3);
    d[2 * x + 3] = PairV(b, g, r);
  }
  if (x < width) {
    const uint8_t* p = s + 3 * x;
    d[2 * x] = Luma422(p);
    d[2 * x + 1] = PairU(2 * p[0], 2 * p[1], 2 * p[2]);
  }
}

// 4:2:0: two rows; the chroma sums add the rows' pairs first (16-bit, at most 510).
inline __m256i BlockChroma8(__m256i x) {
  return _mm256_srai_epi32(_mm256_add_epi32(x, _mm256_set1_epi32((128 << 18) + (1 << 17))), 18);
}

void RowPair420(const uint8_t* s0, const uint8_t* s1, uint8_t* y0, uint8_t* y1, uint8_t* p2,
                uint8_t* p3, int32_t blocks) {
  const Weights luma{Pairs16(16843, 16515), Pairs16(16515, 6423)};
  const Weights u_w{Pairs16(-9699, -19071), Pairs16(0, 28770)};
  const Weights v_w{Pairs16(28770, -24117), Pairs16(0, -4653)};
  int32_t j = 0;
  for (; j + kBlockReach <= blocks; j += 8) {
    const Pixels8 a0 = Load8(s0 + 6 * j), a1 = Load8(s0 + 6 * j + 24);
    const Pixels8 b0 = Load8(s1 + 6 * j), b1 = Load8(s1 + 6 * j + 24);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(y0 + 2 * j),
                     Luma16(Weigh(a0, luma), Weigh(a1, luma)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(y1 + 2 * j),
                     Luma16(Weigh(b0, luma), Weigh(b1, luma)));
    const Pixels8 c0{_mm256_add_epi16(a0.lo, b0.lo), _mm256_add_epi16(a0.hi, b0.hi)};
    const Pixels8 c1{_mm256_add_epi16(a1.lo, b1.lo), _mm256_add_epi16(a1.hi, b1.hi)};
    const Pixels8 blocks4 = NeighbourSums(c0, c1);
    const __m128i uv =
        Chroma8(BlockChroma8(Weigh(blocks4, u_w)), BlockChroma8(Weigh(blocks4, v_w)));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p2 + j), uv);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p3 + j), _mm_srli_si128(uv, 8));
  }
  for (; j < blocks; ++j) {
    const uint8_t* a = s0 + 6 * j;
    const uint8_t* b = s1 + 6 * j;
    y0[2 * j] = Luma420(a);
    y0[2 * j + 1] = Luma420(a + 3);
    y1[2 * j] = Luma420(b);
    y1[2 * j + 1] = Luma420(b + 3);
    const int32_t c0 = a[0] + a[3] + b[0] + b[3];
    const int32_t c1 = a[1] + a[4] + b[1] + b[4];
    const int32_t c2 = a[2] + a[5] + b[2] + b[5];
    p2[j] = BlockU(c0, c1, c2);
    p3[j] = BlockV(c0, c1, c2);
  }
}

inline const uint8_t* RowOf(const uint8_t* p, int32_t step, int32_t r) {
  return p + static_cast<int64_t>(r) * step;
}
inline uint8_t* RowOf(uint8_t* p, int32_t step, int32_t r) {
  return p + static_cast<int64_t>(r) * step;
}

}  // namespace

Status ippiBGRToYCbCr422_8u_C3C2R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  if (const Status s = Check422(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    Row422(RowOf(src, src_step, r), RowOf(dst, dst_step, r), roi.width);
  }
  return ippStsNoErr;
}

Status ippiBGRToYUV420_8u_C3P3R(const uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                const int32_t dst_step[3], Size roi) {
  if (const Status s = Check420(dst, dst_step, src, roi); s != ippStsNoErr) return s;
  for (int32_t i = 0; i < roi.height / 2; ++i) {
    RowPair420(RowOf(src, src_step, 2 * i), RowOf(src, src_step, 2 * i + 1),
               RowOf(dst[0], dst_step[0], 2 * i), RowOf(dst[0], dst_step[0], 2 * i + 1),
               RowOf(dst[1], dst_step[1], i), RowOf(dst[2], dst_step[2], i), roi.width / 2);
  }
  return Status420(roi);
}

}  // namespace framekit::prim::avx2

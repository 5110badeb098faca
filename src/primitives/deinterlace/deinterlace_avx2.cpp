// Deinterlacers, AVX2 level: class 6. Triangle and blend: 32 samples a step (deinterlace_body.h),
// row tails through the per-sample formulas. CAVT: two block rows of 16 pixels a SAD register
// over padded planes, tails masked (deinterlace_cavt_body.h).
#include <immintrin.h>

#include "primitives/deinterlace/deinterlace.h"
#include "primitives/deinterlace/deinterlace_body.h"
#include "primitives/deinterlace/deinterlace_cavt_body.h"

namespace framekit::prim::avx2 {
namespace {

struct Lanes {
  using R = __m256i;
  static constexpr int64_t kBytes = 32;
  static R Load(const uint8_t* p) { return _mm256_loadu_si256(reinterpret_cast<const R*>(p)); }
  static void Store(uint8_t* p, R v) { _mm256_storeu_si256(reinterpret_cast<R*>(p), v); }
  static R Zero() { return _mm256_setzero_si256(); }
  static R Ones() { return _mm256_set1_epi32(-1); }
  static R Set16(int32_t v) { return _mm256_set1_epi16(static_cast<int16_t>(v)); }
  static R And(R a, R b) { return _mm256_and_si256(a, b); }
  static R Or(R a, R b) { return _mm256_or_si256(a, b); }
  static R Not(R a) { return _mm256_xor_si256(a, Ones()); }
  static R Select(R m, R a, R b) { return _mm256_blendv_epi8(b, a, m); }
  static R MinU8(R a, R b) { return _mm256_min_epu8(a, b); }
  static R MaxU8(R a, R b) { return _mm256_max_epu8(a, b); }
  static R SubsU8(R a, R b) { return _mm256_subs_epu8(a, b); }
  static R AddsU8(R a, R b) { return _mm256_adds_epu8(a, b); }
  static R AvgU8(R a, R b) { return _mm256_avg_epu8(a, b); }
  static R Low16(R a) { return _mm256_unpacklo_epi8(a, Zero()); }
  static R High16(R a) { return _mm256_unpackhi_epi8(a, Zero()); }
  static R PackU16(R lo, R hi) { return _mm256_packus_epi16(lo, hi); }
  static R Add16(R a, R b) { return _mm256_add_epi16(a, b); }
  static R Sub16(R a, R b) { return _mm256_sub_epi16(a, b); }
  static R SubsU16(R a, R b) { return _mm256_subs_epu16(a, b); }
  static R Mul16(R a, R b) { return _mm256_mullo_epi16(a, b); }
  static R MulHiU16(R a, R b) { return _mm256_mulhi_epu16(a, b); }
  static R MulHrs16(R a, R b) { return _mm256_mulhrs_epi16(a, b); }
  static R Min16(R a, R b) { return _mm256_min_epi16(a, b); }
  static R Max16(R a, R b) { return _mm256_max_epi16(a, b); }
  static R Gt16(R a, R b) { return _mm256_cmpgt_epi16(a, b); }
  static R Shl16x7(R a) { return _mm256_slli_epi16(a, 7); }
  static R Shl16x8(R a) { return _mm256_slli_epi16(a, 8); }
  static R Shr16x8(R a) { return _mm256_srli_epi16(a, 8); }
  static R Sra16x4(R a) { return _mm256_srai_epi16(a, 4); }
  static R LoadWide(const uint8_t* p) {
    return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  }
  static void StoreNarrow(uint8_t* p, R v) {
    const R packed = _mm256_permute4x64_epi64(_mm256_packus_epi16(v, v), 0x08);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(packed));
  }
  static R Sra16x6(R a) { return _mm256_srai_epi16(a, 6); }
  static R LoadRows(const uint8_t* const* rows) {
    return _mm256_loadu2_m128i(reinterpret_cast<const __m128i*>(rows[1]),
                               reinterpret_cast<const __m128i*>(rows[0]));
  }
  static R Sad(R a, R b) { return _mm256_sad_epu8(a, b); }
  static R Add64(R a, R b) { return _mm256_add_epi64(a, b); }
  static uint32_t SumSad(R a) {
    const __m128i s = _mm_add_epi32(_mm256_castsi256_si128(a), _mm256_extracti128_si256(a, 1));
    return static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_add_epi32(s, _mm_srli_si128(s, 8))));
  }
  static R SetPair(int32_t low, int32_t high) {
    return _mm256_set1_epi32(PairWord(static_cast<int16_t>(low), static_cast<int16_t>(high)));
  }
  static R Madd16(R a, R b) { return _mm256_madd_epi16(a, b); }
  static R Add32(R a, R b) { return _mm256_add_epi32(a, b); }
  static R Sra32x6(R a) { return _mm256_srai_epi32(a, 6); }
  static R PackS32(R lo, R hi) { return _mm256_packs_epi32(lo, hi); }
  static R Unpack16Lo(R a, R b) { return _mm256_unpacklo_epi16(a, b); }
  static R Unpack16Hi(R a, R b) { return _mm256_unpackhi_epi16(a, b); }
  static R Unpack8Lo(R a, R b) { return _mm256_unpacklo_epi8(a, b); }
  static R Unpack8Hi(R a, R b) { return _mm256_unpackhi_epi8(a, b); }
  static R MaddU8S8(R a, R b) { return _mm256_maddubs_epi16(a, b); }
};

}  // namespace

Status ippiDeinterlaceFilterCAVT_8u_C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                        int32_t dst_step, uint16_t threshold, Size roi) {
  return cavt::Cavt<Lanes>(src, src_step, dst, dst_step, threshold, roi);
}

Status ippiDeinterlaceFilterTriangle_8u_C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                            int32_t dst_step, Size roi, uint32_t centre_weight,
                                            uint32_t layout) {
  return deinterlace::Triangle<Lanes>(src, src_step, dst, dst_step, roi, centre_weight, layout);
}

Status ippiDeinterlaceBlend_8u_C1(const uint8_t* const sources[3], int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size size, int32_t top_first, int32_t top_field,
                                  int32_t copy_field, const DeinterlaceBlendState* state) {
  return deinterlace::Blend<Lanes>(sources, src_step, dst, dst_step, size, top_first, top_field,
                                   copy_field, state);
}

}  // namespace framekit::prim::avx2

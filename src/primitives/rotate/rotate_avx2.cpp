// Rotation, AVX2 level: the shared body of rotate_fast.h with linear samples two pixels a step,
// every channel at once: each pixel's two source pairs (8 bytes of each row) widened into
// (left, right) 16-bit pairs and multiplied and added against (256 - fx, fx), then the rows
// weighed by 256 - fy and fy in 32 bits: the plain form's integers exactly.
#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "primitives/rotate/rotate.h"
#include "primitives/rotate/rotate_fast.h"

namespace framekit::prim::avx2 {
namespace {

struct Kernels {
  static constexpr int64_t kLinearSlack = 2;  // three-byte pixels: 8 bytes read for 6

  template <int C>
  static void Linear(const uint8_t* src, int32_t step, uint64_t u, uint64_t v, uint64_t du,
                     uint64_t dv, uint8_t* out, int64_t from, int64_t to) {
    const __m256i pairs =
        C == 4 ? _mm256_setr_epi8(0, -1, 4, -1, 1, -1, 5, -1, 2, -1, 6, -1, 3, -1, 7, -1, 0, -1, 4,
                                  -1, 1, -1, 5, -1, 2, -1, 6, -1, 3, -1, 7, -1)
               : _mm256_setr_epi8(0, -1, 3, -1, 1, -1, 4, -1, 2, -1, 5, -1, -1, -1, -1, -1, 0, -1,
                                  3, -1, 1, -1, 4, -1, 2, -1, 5, -1, -1, -1, -1, -1);
    const __m256i half = _mm256_set1_epi32(32768);
    auto rows = [&](uint64_t at_u, uint64_t at_v) {
      return src + (static_cast<int64_t>(at_v) >> 32) * step +
             C * (static_cast<int64_t>(at_u) >> 32);
    };
    auto load2 = [](const uint8_t* a, const uint8_t* b) {
      return _mm256_inserti128_si256(
          _mm256_castsi128_si256(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(a))),
          _mm_loadl_epi64(reinterpret_cast<const __m128i*>(b)), 1);
    };
    auto fraction = [](uint64_t at) { return static_cast<int32_t>((at >> 24) & 255); };
    int64_t k = from;
    for (; k + 2 <= to; k += 2, u += 2 * du, v += 2 * dv) {
      const uint8_t* a = rows(u, v);
      const uint8_t* b = rows(u + du, v + dv);
      const int32_t fxa = fraction(u), fxb = fraction(u + du);
      const int32_t fya = fraction(v), fyb = fraction(v + dv);
      const __m256i wx = _mm256_setr_epi32((fxa << 16) | (256 - fxa), (fxa << 16) | (256 - fxa),
                                           (fxa << 16) | (256 - fxa), (fxa << 16) | (256 - fxa),
                                           (fxb << 16) | (256 - fxb), (fxb << 16) | (256 - fxb),
                                           (fxb << 16) | (256 - fxb), (fxb << 16) | (256 - fxb));
      const __m256i upper = _mm256_madd_epi16(_mm256_shuffle_epi8(load2(a, b), pairs), wx);
      const __m256i lower =
          _mm256_madd_epi16(_mm256_shuffle_epi8(load2(a + step, b + step), pairs), wx);
      const __m256i w0 = _mm256_setr_epi32(256 - fya, 256 - fya, 256 - fya, 256 - fya, 256 - fyb,
                                           256 - fyb, 256 - fyb, 256 - fyb);
      const __m256i w1 = _mm256_setr_epi32(fya, fya, fya, fya, fyb, fyb, fyb, fyb);
      const __m256i sum = _mm256_add_epi32(
          _mm256_add_epi32(_mm256_mullo_epi32(upper, w0), _mm256_mullo_epi32(lower, w1)), half);
      __m256i bytes = _mm256_packus_epi32(_mm256_srli_epi32(sum, 16), _mm256_setzero_si256());
      bytes = _mm256_packus_epi16(bytes, _mm256_setzero_si256());
      const auto first = static_cast<uint32_t>(_mm256_cvtsi256_si32(bytes));
      const auto second =
          static_cast<uint32_t>(_mm_cvtsi128_si32(_mm256_extracti128_si256(bytes, 1)));
      std::memcpy(out + C * k, &first, C);
      std::memcpy(out + C * (k + 1), &second, C);
    }
    rotate::LinearRun<C>(src, step, u, v, du, dv, out, k, to);
  }
};

}  // namespace

Status ippiRotate_8u_C3R(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                         uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle,
                         double x_shift, double y_shift, int32_t interpolation) {
  return rotate::Fast<Kernels, 3>(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, angle,
                                  x_shift, y_shift, interpolation);
}
Status ippiRotate_8u_C4R(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                         uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle,
                         double x_shift, double y_shift, int32_t interpolation) {
  return rotate::Fast<Kernels, 4>(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, angle,
                                  x_shift, y_shift, interpolation);
}

}  // namespace framekit::prim::avx2

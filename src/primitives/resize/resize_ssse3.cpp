// Resize, SSSE3 level: classes 2-4. Horizontal pass two destination pixels a step: per four taps
// one 16-byte load, shuffled into pairs of neighbouring pixels widened to 16 bits, multiplied and
// added against the column's weight pairs (pmaddwd). Vertical pass 16 bytes a step, two ring rows
// interleaved against one weight pair.
#include <tmmintrin.h>

#include <cstdint>

#include "primitives/resize/resize.h"
#include "primitives/resize/resize_body.h"

namespace framekit::prim::ssse3 {
namespace {

using resize::Columns;

// Pixels 0, 1 (and 2, 3) of a 16-byte load as (first, second) 16-bit pairs per channel.
template <int C>
__m128i PairMask(int second_pair) {
  const int o = 2 * C * second_pair;
  if constexpr (C == 4) {
    return _mm_setr_epi8(char(o), -1, char(o + 4), -1, char(o + 1), -1, char(o + 5), -1,
                         char(o + 2), -1, char(o + 6), -1, char(o + 3), -1, char(o + 7), -1);
  } else {
    return _mm_setr_epi8(char(o), -1, char(o + 3), -1, char(o + 1), -1, char(o + 4), -1,
                         char(o + 2), -1, char(o + 5), -1, -1, -1, -1, -1);
  }
}

__m128i Weights(const Columns& t, int64_t x, int64_t q) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(t.Spread(x, q)));
}

template <int C, int kPairs>
int64_t HorizontalPairs(const uint8_t* row, const Columns& t, int16_t* out) {
  const __m128i first_pair = PairMask<C>(0), second_pair = PairMask<C>(1);
  const __m128i round = _mm_set1_epi32(128);
  // Three int16 channels of two pixels, side by side (C = 3).
  const __m128i compact = _mm_setr_epi8(0, 1, 2, 3, 4, 5, 8, 9, 10, 11, 12, 13, -1, -1, -1, -1);
  const int64_t pairs = kPairs > 0 ? kPairs : t.pairs;
  int64_t x = t.first;
  for (; x + 2 <= t.last; x += 2) {
    __m128i acc[2];
    for (int i = 0; i < 2; ++i) {
      const uint8_t* in = row + C * int64_t{t.start[x + i]};
      __m128i a = _mm_setzero_si128();
      for (int64_t q = 0; q < pairs; q += 2) {
        const __m128i d = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 2 * C * q));
        a = _mm_add_epi32(a, _mm_madd_epi16(_mm_shuffle_epi8(d, first_pair), Weights(t, x + i, q)));
        if (q + 1 < pairs) {
          a = _mm_add_epi32(
              a, _mm_madd_epi16(_mm_shuffle_epi8(d, second_pair), Weights(t, x + i, q + 1)));
        }
      }
      acc[i] = _mm_srai_epi32(_mm_add_epi32(a, round), 8);
    }
    __m128i both = _mm_packs_epi32(acc[0], acc[1]);
    if constexpr (C == 3) both = _mm_shuffle_epi8(both, compact);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + C * x), both);
  }
  return x - t.first;
}

struct Kernels {
  static constexpr int kLevel = 2;
  static constexpr bool kTwoTap = false;

  template <int C>
  static int64_t Horizontal(const uint8_t* row, const Columns& t, int16_t* out) {
    switch (t.pairs) {
      case 1:
        return HorizontalPairs<C, 1>(row, t, out);
      case 2:
        return HorizontalPairs<C, 2>(row, t, out);
      case 3:
        return HorizontalPairs<C, 3>(row, t, out);
      default:
        return HorizontalPairs<C, 0>(row, t, out);
    }
  }

  template <int C>
  static int64_t Horizontal2(const uint8_t* row0, const uint8_t* row1, const Columns& t,
                             int16_t* out0, int16_t* out1) {
    Horizontal<C>(row0, t, out0);
    return Horizontal<C>(row1, t, out1);
  }

  static void Vertical2(uint8_t* out0, uint8_t* out1, const int16_t* const* rows,
                        const int32_t* pairs0, const int32_t* pairs1, int64_t pair_count,
                        int64_t length, bool nonneg) {
    Vertical(out0, rows, pairs0, pair_count, length, nonneg);
    Vertical(out1, rows, pairs1, pair_count, length, nonneg);
  }

  static void Vertical(uint8_t* out, const int16_t* const* rows, const int32_t* pairs,
                       int64_t pair_count, int64_t length, bool /*nonneg*/) {
    if (length < 16) {
      resize::SumRows(out, rows, pairs, pair_count, 0, length);
      return;
    }
    __m128i weights[resize::kRingRows];
    for (int64_t q = 0; q < pair_count; ++q) weights[q] = _mm_set1_epi32(pairs[q]);
    const __m128i round = _mm_set1_epi32(1 << 19);
    auto step = [&](int64_t i) {
      __m128i acc[4] = {_mm_setzero_si128(), _mm_setzero_si128(), _mm_setzero_si128(),
                        _mm_setzero_si128()};
      for (int64_t q = 0; q < pair_count; ++q) {
        for (int h = 0; h < 2; ++h) {
          const __m128i a =
              _mm_loadu_si128(reinterpret_cast<const __m128i*>(rows[2 * q] + i + 8 * h));
          const __m128i b =
              _mm_loadu_si128(reinterpret_cast<const __m128i*>(rows[2 * q + 1] + i + 8 * h));
          acc[2 * h] =
              _mm_add_epi32(acc[2 * h], _mm_madd_epi16(_mm_unpacklo_epi16(a, b), weights[q]));
          acc[2 * h + 1] =
              _mm_add_epi32(acc[2 * h + 1], _mm_madd_epi16(_mm_unpackhi_epi16(a, b), weights[q]));
        }
      }
      for (__m128i& v : acc) v = _mm_srai_epi32(_mm_add_epi32(v, round), 20);
      const __m128i bytes =
          _mm_packus_epi16(_mm_packs_epi32(acc[0], acc[1]), _mm_packs_epi32(acc[2], acc[3]));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), bytes);
    };
    int64_t i = 0;
    for (; i + 16 <= length; i += 16) step(i);
    if (i < length) step(length - 16);  // the last 16 bytes again, the same values
  }
};

}  // namespace

Status ippiResizeSqrPixel_8u_C3R(const uint8_t* src, Size src_size, int32_t src_step,
                                 const Rect* src_roi, uint8_t* dst, int32_t dst_step,
                                 const Rect* dst_roi, double xf, double yf, double xs, double ys,
                                 int32_t interpolation, uint8_t* buffer) {
  return resize::Body<Kernels, 3>(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, xf, yf,
                                  xs, ys, interpolation, buffer, ref::ippiResizeSqrPixel_8u_C3R);
}
Status ippiResizeSqrPixel_8u_C4R(const uint8_t* src, Size src_size, int32_t src_step,
                                 const Rect* src_roi, uint8_t* dst, int32_t dst_step,
                                 const Rect* dst_roi, double xf, double yf, double xs, double ys,
                                 int32_t interpolation, uint8_t* buffer) {
  return resize::Body<Kernels, 4>(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, xf, yf,
                                  xs, ys, interpolation, buffer, ref::ippiResizeSqrPixel_8u_C4R);
}

}  // namespace framekit::prim::ssse3

// Resize, AVX2 level: classes 6 and up. The SSSE3 scheme with two pixels in the two halves of
// each 256-bit register: destination pixels x and x + 2 in one accumulator, x + 1 and x + 3 in
// the other, so that packing the two puts four pixels in order. Vertical pass 32 bytes a step.
#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "primitives/resize/resize.h"
#include "primitives/resize/resize_body.h"

namespace framekit::prim::avx2 {
namespace {

using resize::Columns;

template <int C>
__m256i PairMask(int second_pair) {
  const int o = 2 * C * second_pair;
  if constexpr (C == 4) {
    return _mm256_setr_epi8(char(o), -1, char(o + 4), -1, char(o + 1), -1, char(o + 5), -1,
                            char(o + 2), -1, char(o + 6), -1, char(o + 3), -1, char(o + 7), -1,
                            char(o), -1, char(o + 4), -1, char(o + 1), -1, char(o + 5), -1,
                            char(o + 2), -1, char(o + 6), -1, char(o + 3), -1, char(o + 7), -1);
  } else {
    return _mm256_setr_epi8(char(o), -1, char(o + 3), -1, char(o + 1), -1, char(o + 4), -1,
                            char(o + 2), -1, char(o + 5), -1, -1, -1, -1, -1, char(o), -1,
                            char(o + 3), -1, char(o + 1), -1, char(o + 4), -1, char(o + 2), -1,
                            char(o + 5), -1, -1, -1, -1, -1);
  }
}

// 16 bytes from `low` and 16 from `high` in one register.
__m256i Load2(const void* low, const void* high) {
  return _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(low))),
      _mm_loadu_si128(static_cast<const __m128i*>(high)), 1);
}

// Pair q of columns x and x + 2 (x even within its four).
__m256i Weights(const Columns& t, int64_t x, int64_t q) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(t.Spread(x, q)));
}

template <int C, int kPairs>
int64_t HorizontalPairs(const uint8_t* row, const Columns& t, int16_t* out) {
  const __m256i first_pair = PairMask<C>(0), second_pair = PairMask<C>(1);
  const __m256i round = _mm256_set1_epi32(128);
  const __m256i compact = _mm256_setr_epi8(0, 1, 2, 3, 4, 5, 8, 9, 10, 11, 12, 13, -1, -1, -1, -1,
                                           0, 1, 2, 3, 4, 5, 8, 9, 10, 11, 12, 13, -1, -1, -1, -1);
  const int64_t pairs = kPairs > 0 ? kPairs : t.pairs;
  int64_t x = t.first;
  for (; x + 4 <= t.last; x += 4) {
    __m256i acc[2];
    for (int i = 0; i < 2; ++i) {
      const uint8_t* lo = row + C * int64_t{t.start[x + i]};
      const uint8_t* hi = row + C * int64_t{t.start[x + i + 2]};
      __m256i a = _mm256_setzero_si256();
      for (int64_t q = 0; q < pairs; q += 2) {
        const __m256i d = Load2(lo + 2 * C * q, hi + 2 * C * q);
        a = _mm256_add_epi32(
            a, _mm256_madd_epi16(_mm256_shuffle_epi8(d, first_pair), Weights(t, x + i, q)));
        if (q + 1 < pairs) {
          a = _mm256_add_epi32(
              a, _mm256_madd_epi16(_mm256_shuffle_epi8(d, second_pair), Weights(t, x + i, q + 1)));
        }
      }
      acc[i] = _mm256_srai_epi32(_mm256_add_epi32(a, round), 8);
    }
    // Low half: pixels x, x + 1; high half: x + 2, x + 3.
    __m256i four = _mm256_packs_epi32(acc[0], acc[1]);
    if constexpr (C == 4) {
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 4 * x), four);
    } else {
      four = _mm256_shuffle_epi8(four, compact);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 3 * x), _mm256_castsi256_si128(four));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 3 * (x + 2)),
                       _mm256_extracti128_si256(four, 1));
    }
  }
  return x - t.first;
}

// The two-tap layout (resize_body.h, TwoTapFours): four pixels a step in 16-bit lanes, of
// kRows source rows sharing the tables' loads. The shifts are multiplies, which run beside the
// shuffles rather than queueing with them.
template <int kRows>
int64_t HorizontalTwoTap(const uint8_t* const* rows, const Columns& t, int16_t* const* outs) {
  // p0 (bytes 0-3) and p1 (4-7) of the two pixel pairs in each half, widened.
  const __m256i first = _mm256_setr_epi8(0, -1, 1, -1, 2, -1, 3, -1, 8, -1, 9, -1, 10, -1, 11, -1,
                                         0, -1, 1, -1, 2, -1, 3, -1, 8, -1, 9, -1, 10, -1, 11, -1);
  const __m256i second =
      _mm256_setr_epi8(4, -1, 5, -1, 6, -1, 7, -1, 12, -1, 13, -1, 14, -1, 15, -1, 4, -1, 5, -1, 6,
                       -1, 7, -1, 12, -1, 13, -1, 14, -1, 15, -1);
  auto filter = [&](__m256i window, const uint8_t* four) {
    const __m256i spread = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(four));
    const __m256i weights = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(four + 32));
    const __m256i pixels = _mm256_permutevar8x32_epi32(window, spread);
    const __m256i p0 = _mm256_shuffle_epi8(pixels, first);
    const __m256i p1 = _mm256_shuffle_epi8(pixels, second);
    const __m256i rise = _mm256_mullo_epi16(_mm256_sub_epi16(p1, p0), _mm256_set1_epi16(128));
    return _mm256_add_epi16(_mm256_mullo_epi16(p0, _mm256_set1_epi16(64)),
                            _mm256_mulhrs_epi16(rise, weights));
  };
  auto window = [&](int r, const uint8_t* base) {
    int32_t from;
    std::memcpy(&from, base, 4);
    const uint8_t* at = rows[r] + 4 * int64_t{from};
    _mm_prefetch(reinterpret_cast<const char*>(at + 1536), _MM_HINT_T0);
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
  };
  const uint8_t* block = t.TwoTap(t.first);
  int64_t x = t.first;
  for (; x + 8 <= t.mid; x += 8, block += 256) {
    for (int r = 0; r < kRows; ++r) {
      const __m256i w = window(r, block + 128);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(outs[r] + 4 * x), filter(w, block));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(outs[r] + 4 * x + 16), filter(w, block + 64));
    }
  }
  for (; x + 4 <= t.last; x += 4, block += 128) {
    for (int r = 0; r < kRows; ++r) {
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(outs[r] + 4 * x),
                          filter(window(r, block + 64), block));
    }
  }
  return x - t.first;
}

// The same on three-byte pixels: two 16-byte windows a four, each holding two columns' p0 and
// p1, shuffled apart by the four's own masks.
template <int kRows>
int64_t HorizontalTwoTap3(const uint8_t* const* rows, const Columns& t, int16_t* const* outs) {
  const int64_t last = t.last;
  const uint8_t* four = t.TwoTap(t.first);
  int64_t x = t.first;
  for (; x + 4 <= last; x += 4, four += 128) {
    const __m256i take0 = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(four));
    const __m256i take1 = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(four + 32));
    const __m256i weights = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(four + 64));
    int32_t bases[2];
    std::memcpy(bases, four + 96, 8);
    const int64_t low = 3 * int64_t{bases[0]}, high = 3 * int64_t{bases[1]};
    for (int r = 0; r < kRows; ++r) {
      _mm_prefetch(reinterpret_cast<const char*>(rows[r] + high + 1536), _MM_HINT_T0);
      const __m256i windows = Load2(rows[r] + low, rows[r] + high);
      const __m256i p0 = _mm256_shuffle_epi8(windows, take0);
      const __m256i p1 = _mm256_shuffle_epi8(windows, take1);
      const __m256i rise = _mm256_mullo_epi16(_mm256_sub_epi16(p1, p0), _mm256_set1_epi16(128));
      const __m256i f = _mm256_add_epi16(_mm256_mullo_epi16(p0, _mm256_set1_epi16(64)),
                                         _mm256_mulhrs_epi16(rise, weights));
      // Columns x, x + 1 then x + 2, x + 3; each store's last two lanes are overwritten next.
      _mm_storeu_si128(reinterpret_cast<__m128i*>(outs[r] + 3 * x), _mm256_castsi256_si128(f));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(outs[r] + 3 * x + 6),
                       _mm256_extracti128_si256(f, 1));
    }
  }
  return x - t.first;
}

// Rows of one weight, 1 << 14: (v + 32) >> 6, saturated (a sum past 16 bits is past 255 too).
void OneRow(uint8_t* out, const int16_t* row, int64_t length) {
  const __m256i half = _mm256_set1_epi16(32);
  auto step = [&](int64_t i) {
    const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(row + i));
    const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(row + i + 16));
    const __m256i bytes = _mm256_packus_epi16(_mm256_srai_epi16(_mm256_adds_epi16(a, half), 6),
                                              _mm256_srai_epi16(_mm256_adds_epi16(b, half), 6));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_permute4x64_epi64(bytes, 0xD8));
  };
  int64_t i = 0;
  for (; i + 32 <= length; i += 32) step(i);
  if (i < length) step(length - 32);
}

// Two rows of values in 0 .. 255 * 64 with weights v0 + v1 = 1 << 14, both above 0:
// (v0 f0 + v1 f1 + (1 << 19)) >> 20 = (f0 + ((v1 (f1 - f0)) >> 14) + 32) >> 6, where
// f0 + ((v1 (f1 - f0)) >> 14) = f1 + ((v0 (f0 - f1)) >> 14). The inner shift is a high multiply
// by 4 v (taking the row of the larger weight as the base, so 4 v fits 16 bits; at
// v0 = v1 a halving), the outer one a rounding high multiply by 512.
struct Blend {
  bool from_second, even;
  __m256i weight;
  Blend(int16_t v0, int16_t v1)
      : from_second(v1 > v0),
        even(v0 == v1),
        weight(_mm256_set1_epi16(int16_t(4 * (v1 > v0 ? v0 : v1)))) {}
  // 16 values from the rows' a, b and b - a.
  __m256i operator()(__m256i a, __m256i b, __m256i rise) const {
    const __m256i base = from_second ? b : a;
    const __m256i part =
        even ? _mm256_srai_epi16(rise, 1)
             : _mm256_mulhi_epi16(from_second ? _mm256_sub_epi16(a, b) : rise, weight);
    return _mm256_mulhrs_epi16(_mm256_add_epi16(base, part), _mm256_set1_epi16(512));
  }
};

bool Blends(int32_t pair) {
  const int16_t v0 = LowWeight(pair), v1 = HighWeight(pair);
  return v0 > 0 && v1 > 0 && v0 + v1 == 16384;
}

// kOut destination rows (the second at out + step) of the same two rows.
template <int kOut>
void TwoRows(uint8_t* out, int32_t step, const int16_t* r0, const int16_t* r1, const int32_t* pairs,
             int64_t length) {
  const Blend first(LowWeight(pairs[0]), HighWeight(pairs[0]));
  const Blend second(LowWeight(pairs[kOut - 1]), HighWeight(pairs[kOut - 1]));
  const Blend* blends[2] = {&first, &second};
  auto go = [&](int64_t i) {
    __m256i half[2][kOut];
    for (int h = 0; h < 2; ++h) {
      const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(r0 + i + 16 * h));
      const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(r1 + i + 16 * h));
      const __m256i rise = _mm256_sub_epi16(b, a);
      for (int o = 0; o < kOut; ++o) half[h][o] = (*blends[o])(a, b, rise);
    }
    for (int o = 0; o < kOut; ++o) {
      const __m256i bytes = _mm256_packus_epi16(half[0][o], half[1][o]);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + int64_t{step} * o + i),
                          _mm256_permute4x64_epi64(bytes, 0xD8));
    }
  };
  int64_t i = 0;
  for (; i + 32 <= length; i += 32) go(i);
  if (i < length) go(length - 32);
}

struct Kernels {
  static constexpr int kLevel = 6;
  static constexpr bool kTwoTap = true;

  // Eight pixels a step: two fours, each permuted out of its window.
  static int64_t NearestFours(const uint8_t* row, const Columns& t, uint8_t* out) {
    auto four = [&](int64_t x) {
      const __m256i window = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(row + t.start[x]));
      return _mm256_permutevar8x32_epi32(
          window, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(t.Spread(x, 0))));
    };
    int64_t x = 0;
    for (; x + 8 <= t.last; x += 8) {
      const __m256i eight =
          _mm256_inserti128_si256(four(x), _mm256_castsi256_si128(four(x + 4)), 1);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 4 * x), eight);
    }
    for (; x + 4 <= t.last; x += 4) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 4 * x), _mm256_castsi256_si128(four(x)));
    }
    return x;
  }

  template <int C>
  static int64_t Horizontal(const uint8_t* row, const Columns& t, int16_t* out) {
    if (t.two_tap) {
      return C == 4 ? HorizontalTwoTap<1>(&row, t, &out) : HorizontalTwoTap3<1>(&row, t, &out);
    }
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
    if (t.two_tap) {
      const uint8_t* const rows[2] = {row0, row1};
      int16_t* const outs[2] = {out0, out1};
      return C == 4 ? HorizontalTwoTap<2>(rows, t, outs) : HorizontalTwoTap3<2>(rows, t, outs);
    }
    Horizontal<C>(row0, t, out0);
    return Horizontal<C>(row1, t, out1);
  }

  static void Vertical2(uint8_t* out0, uint8_t* out1, const int16_t* const* rows,
                        const int32_t* pairs0, const int32_t* pairs1, int64_t pair_count,
                        int64_t length, bool nonneg) {
    if (length >= 32 && pair_count == 1 && nonneg && Blends(pairs0[0]) && Blends(pairs1[0]) &&
        out1 - out0 == static_cast<int32_t>(out1 - out0)) {
      const int32_t both[2] = {pairs0[0], pairs1[0]};
      return TwoRows<2>(out0, static_cast<int32_t>(out1 - out0), rows[0], rows[1], both, length);
    }
    Vertical(out0, rows, pairs0, pair_count, length, nonneg);
    Vertical(out1, rows, pairs1, pair_count, length, nonneg);
  }

  static void Vertical(uint8_t* out, const int16_t* const* rows, const int32_t* pairs,
                       int64_t pair_count, int64_t length, bool nonneg) {
    if (length < 32) {
      resize::SumRows(out, rows, pairs, pair_count, 0, length);
      return;
    }
    if (pair_count == 1) {
      const int16_t v0 = LowWeight(pairs[0]), v1 = HighWeight(pairs[0]);
      if (v0 == 16384 && v1 == 0) return OneRow(out, rows[0], length);
      if (nonneg && Blends(pairs[0])) return TwoRows<1>(out, 0, rows[0], rows[1], pairs, length);
    }
    __m256i weights[resize::kRingRows];
    for (int64_t q = 0; q < pair_count; ++q) weights[q] = _mm256_set1_epi32(pairs[q]);
    const __m256i round = _mm256_set1_epi32(1 << 19);
    auto step = [&](int64_t i) {
      __m256i acc[4] = {_mm256_setzero_si256(), _mm256_setzero_si256(), _mm256_setzero_si256(),
                        _mm256_setzero_si256()};
      for (int64_t q = 0; q < pair_count; ++q) {
        for (int h = 0; h < 2; ++h) {
          const __m256i a =
              _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows[2 * q] + i + 16 * h));
          const __m256i b =
              _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows[2 * q + 1] + i + 16 * h));
          acc[2 * h] = _mm256_add_epi32(acc[2 * h],
                                        _mm256_madd_epi16(_mm256_unpacklo_epi16(a, b), weights[q]));
          acc[2 * h + 1] = _mm256_add_epi32(
              acc[2 * h + 1], _mm256_madd_epi16(_mm256_unpackhi_epi16(a, b), weights[q]));
        }
      }
      for (__m256i& v : acc) v = _mm256_srai_epi32(_mm256_add_epi32(v, round), 20);
      const __m256i bytes = _mm256_packus_epi16(_mm256_packs_epi32(acc[0], acc[1]),
                                                _mm256_packs_epi32(acc[2], acc[3]));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i),
                          _mm256_permute4x64_epi64(bytes, 0xD8));
    };
    int64_t i = 0;
    for (; i + 32 <= length; i += 32) step(i);
    if (i < length) step(length - 32);  // the last 32 bytes again, the same values
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

}  // namespace framekit::prim::avx2

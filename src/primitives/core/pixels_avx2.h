// Moving 3-byte pixels between their packed layout and 32-byte vectors whose two lanes each hold
// four whole pixels, for AVX2 files only (include it inside nothing: its functions have internal
// linkage and need the including file's AVX2 flags).
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace framekit::prim::avx2_pixels {

// Pixels 0-3 of p in bytes 0-11 of the low lane and pixels 4-7 in bytes 4-15 of the high lane:
// the high lane is loaded from p + 8, so nothing past the 24 bytes is read.
static inline __m256i LoadFours(const uint8_t* p) {
  return _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))),
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8)), 1);
}

// LoadFours' layout from one 32-byte load turned by dword moves (bytes 0-15 and 8-23): the same
// lanes for one instruction less, reading 8 bytes past the 24.
static inline __m256i LoadFoursOver(const uint8_t* p) {
  return _mm256_permutevar8x32_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)),
                                     _mm256_setr_epi32(0, 1, 2, 3, 2, 3, 4, 5));
}

// A byte shuffle of LoadFours' pixels: in each lane, out byte i takes pixel i / 4's byte
// `pick[i % 4]` (-1 for none). Lane 1's pixels start 4 bytes further.
static inline __m256i FourPixelShuffle(const int8_t pick[4]) {
  alignas(32) int8_t idx[32];
  for (int lane = 0; lane < 2; ++lane) {
    for (int i = 0; i < 16; ++i) {
      const int8_t byte = pick[i % 4];
      idx[16 * lane + i] =
          byte < 0 ? int8_t{-1} : static_cast<int8_t>(4 * lane + 3 * (i / 4) + byte);
    }
  }
  return _mm256_load_si256(reinterpret_cast<const __m256i*>(idx));
}

// The 96 packed bytes of 32 pixels from four vectors whose lanes each hold four pixels' 12
// bytes in bytes 0-11 (dwords 0-2 and 4-6), vector k holding pixels 8k to 8k + 7.
static inline void PackTwelves(const __m256i x[4], __m256i z[3]) {
  const auto idx = [](int a, int b, int c, int d, int e, int f, int g, int h) {
    return _mm256_setr_epi32(a, b, c, d, e, f, g, h);
  };
  z[0] = _mm256_blend_epi32(_mm256_permutevar8x32_epi32(x[0], idx(0, 1, 2, 4, 5, 6, 0, 0)),
                            _mm256_permutevar8x32_epi32(x[1], idx(0, 0, 0, 0, 0, 0, 0, 1)), 0xC0);
  z[1] = _mm256_blend_epi32(_mm256_permutevar8x32_epi32(x[1], idx(2, 4, 5, 6, 0, 0, 0, 0)),
                            _mm256_permutevar8x32_epi32(x[2], idx(0, 0, 0, 0, 0, 1, 2, 4)), 0xF0);
  z[2] = _mm256_blend_epi32(_mm256_permutevar8x32_epi32(x[2], idx(5, 6, 0, 0, 0, 0, 0, 0)),
                            _mm256_permutevar8x32_epi32(x[3], idx(0, 0, 0, 1, 2, 4, 5, 6)), 0xFC);
}

}  // namespace framekit::prim::avx2_pixels

// Channel primitives, AVX2 level: class 6.
// The 3<->4-byte copies go 32 pixels a step where that many remain: 96 bytes of the 3-byte side
// as three whole 32-byte accesses, spread to or gathered from four 32-byte accesses of the 4-byte
// side by byte shuffles and dword permutes. Then eight pixels a step: a 3-byte source of a 4-byte
// destination is read exactly (two 16-byte loads, bytes 0-15 and 8-23, shifted into place), so
// those loops run while 8 pixels remain. Where the 3-byte side alone is written it is one 32-byte
// access of which 24 bytes are the step's pixels: that loop runs while 11 pixels remain
// (3 * 11 >= 32), and the 8 bytes past the step's pixels are rewritten by the next step or the
// scalar tail. The swap reads and writes two 16-byte pieces at bytes 0 and 12 of a step, running
// while 10 pixels remain; the 4 bytes past the step's pixels are written back as loaded, so
// src == dst stays exact. Nothing outside a row's pixels is read or written.
#include <immintrin.h>

#include <cstdint>

#include "primitives/channel/channel.h"
#include "primitives/core/checks.h"
#include "primitives/core/rows.h"

namespace framekit::prim::avx2 {
namespace {

inline __m256i Load(const uint8_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
inline void Store(uint8_t* p, __m256i v) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v); }

// 24 bytes of eight 3-byte pixels: pixels 0-3 in bytes 0-11 of the low lane, 4-7 in bytes 0-11
// of the high lane.
inline __m256i LoadC3x8(const uint8_t* p) {
  const __m128i lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i hi = _mm_srli_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8)), 4);
  return _mm256_inserti128_si256(_mm256_castsi128_si256(lo), hi, 1);
}
// 32 three-byte pixels from three 32-byte loads, spread to four vectors of eight 4-byte pixels
// (byte 3 zero); `put(k, v)` receives pixels 8k to 8k+7. Each vector's 24 source bytes are
// gathered 12 to a lane by one dword permute (after a blend where they span two loads).
template <typename Put>
inline void SpreadC3x32(const uint8_t* p, __m256i place, Put&& put) {
  const __m256i x = Load(p);
  const __m256i y = Load(p + 32);
  const __m256i z = Load(p + 64);
  const auto spread = [&](__m256i v, __m256i idx) {
    return _mm256_shuffle_epi8(_mm256_permutevar8x32_epi32(v, idx), place);
  };
  put(0, spread(x, _mm256_setr_epi32(0, 1, 2, 0, 3, 4, 5, 0)));
  put(1, spread(_mm256_blend_epi32(y, x, 0xC0), _mm256_setr_epi32(6, 7, 0, 0, 1, 2, 3, 0)));
  put(2, spread(_mm256_blend_epi32(y, z, 0x03), _mm256_setr_epi32(4, 5, 6, 0, 7, 0, 1, 0)));
  put(3, spread(z, _mm256_setr_epi32(2, 3, 4, 0, 5, 6, 7, 0)));
}

// Bytes 0-11 of each lane joined into bytes 0-23; dwords 6 and 7 from `rest`.
inline __m256i JoinC3(__m256i v, __m256i rest) {
  const __m256i joined = _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
  return _mm256_blend_epi32(joined, rest, 0xC0);
}

// Pixels that must remain for one 32-byte access of a 3-byte row (3 * 11 >= 32).
constexpr int32_t kWide = 11;
// Pixels that must remain for the swap's two 16-byte accesses at bytes 0 and 12 (3 * 10 >= 28).
constexpr int32_t kSwapReach = 10;

}  // namespace

Status ippiCopy_8u_AC4C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const __m256i pick = _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1, 0,
                                        1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    int32_t x = 0;
    // 32 pixels: each load packed to 24 bytes in dwords 0-2 and 4-6, then placed by one dword
    // permute where its bytes fall among three 32-byte stores (a with b, b with c, c with e).
    for (; x + 32 <= roi.width; x += 32) {
      const __m256i a = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(Load(s + 4 * x), pick),
                                                    _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 0, 0));
      const __m256i b = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(Load(s + 4 * x + 32), pick),
                                                    _mm256_setr_epi32(2, 4, 5, 6, 0, 0, 0, 1));
      const __m256i c = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(Load(s + 4 * x + 64), pick),
                                                    _mm256_setr_epi32(5, 6, 0, 0, 0, 1, 2, 4));
      const __m256i e = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(Load(s + 4 * x + 96), pick),
                                                    _mm256_setr_epi32(0, 0, 0, 1, 2, 4, 5, 6));
      Store(d + 3 * x, _mm256_blend_epi32(a, b, 0xC0));
      Store(d + 3 * x + 32, _mm256_blend_epi32(b, c, 0xF0));
      Store(d + 3 * x + 64, _mm256_blend_epi32(c, e, 0xFC));
    }
    for (; x + kWide <= roi.width; x += 8) {
      const __m256i packed = _mm256_shuffle_epi8(Load(s + 4 * x), pick);
      Store(d + 3 * x, JoinC3(packed, packed));
    }
    CopyC4ToC3(s, d, x, roi.width);
  }
  return ippStsNoErr;
}

Status ippiCopy_8u_C3AC4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const __m256i place = _mm256_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1, 0, 1,
                                         2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
  const __m256i fourth = _mm256_set1_epi32(static_cast<int32_t>(0xFF000000u));
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    int32_t x = 0;
    for (; x + 32 <= roi.width; x += 32) {
      uint8_t* out = d + 4 * x;
      SpreadC3x32(s + 3 * x, place, [&](int k, __m256i colour) {
        Store(out + 32 * k, _mm256_or_si256(colour, _mm256_and_si256(Load(out + 32 * k), fourth)));
      });
    }
    for (; x + 8 <= roi.width; x += 8) {
      const __m256i colour = _mm256_shuffle_epi8(LoadC3x8(s + 3 * x), place);
      Store(d + 4 * x, _mm256_or_si256(colour, _mm256_and_si256(Load(d + 4 * x), fourth)));
    }
    CopyC3ToC4(s, d, x, roi.width);
  }
  return ippStsNoErr;
}

Status CopyC3AC4AddC(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi,
                     const uint8_t value[4]) {
  if (value == nullptr) return ippStsNullPtrErr;
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const __m256i place = _mm256_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1, 0, 1,
                                         2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
  const __m256i fourth = _mm256_set1_epi32(static_cast<int32_t>(0xFF000000u));
  int32_t pattern;
  __builtin_memcpy(&pattern, value, 4);
  const __m256i add = _mm256_set1_epi32(pattern);
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    int32_t x = 0;
    for (; x + 32 <= roi.width; x += 32) {
      uint8_t* out = d + 4 * x;
      SpreadC3x32(s + 3 * x, place, [&](int k, __m256i colour) {
        const __m256i kept = _mm256_and_si256(Load(out + 32 * k), fourth);
        Store(out + 32 * k, _mm256_adds_epu8(_mm256_or_si256(colour, kept), add));
      });
    }
    for (; x + 8 <= roi.width; x += 8) {
      const __m256i colour = _mm256_shuffle_epi8(LoadC3x8(s + 3 * x), place);
      const __m256i kept = _mm256_and_si256(Load(d + 4 * x), fourth);
      Store(d + 4 * x, _mm256_adds_epu8(_mm256_or_si256(colour, kept), add));
    }
    CopyAddPixels(s, d, value, x, roi.width);
  }
  return ippStsNoErr;
}

Status ippiAddC_8u_C4IRSfs(const uint8_t value[4], uint8_t* p, int32_t step, Size roi,
                           int32_t scale) {
  if (const Status s = CheckTwo(value, p, roi); s != ippStsNoErr) return s;
  if (scale != 0) return ref::ippiAddC_8u_C4IRSfs(value, p, step, roi, scale);
  int32_t pattern;
  __builtin_memcpy(&pattern, value, 4);
  const __m256i add = _mm256_set1_epi32(pattern);
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* d = RowAt(p, step, r);
    int32_t x = 0;
    for (; x + 8 <= roi.width; x += 8) Store(d + 4 * x, _mm256_adds_epu8(Load(d + 4 * x), add));
    AddCPixels(value, d, x, roi.width);
  }
  return ippStsNoErr;
}

Status ippiSwapChannels_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                               Size roi, const int32_t order[3]) {
  if (const Status s = CheckSwap(src, dst, roi, order); s != ippStsNoErr) return s;
  // Bytes 12-15 of each lane keep their place: written back as loaded.
  alignas(32) int8_t mask[32];
  for (int lane = 0; lane < 2; ++lane) {
    for (int i = 0; i < 16; ++i) {
      mask[16 * lane + i] = static_cast<int8_t>(i < 12 ? (i / 3) * 3 + order[i % 3] : i);
    }
  }
  const __m256i shuffle = _mm256_load_si256(reinterpret_cast<const __m256i*>(mask));
  for (int32_t r = 0; r < roi.height; ++r) {
    const uint8_t* s = RowAt(src, src_step, r);
    uint8_t* d = RowAt(dst, dst_step, r);
    int32_t x = 0;
    // Pixels 0-3 from bytes 0-15 and pixels 4-7 from bytes 12-27, each lane stored where it was
    // loaded: the second store overwrites the first's last 4 bytes with pixel 4, and its own last
    // 4 bytes (pixels 8 and 9 of the row's next step) are the loaded values.
    for (; x + kSwapReach <= roi.width; x += 8) {
      const __m256i in = _mm256_inserti128_si256(
          _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 3 * x))),
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 3 * x + 12)), 1);
      const __m256i out = _mm256_shuffle_epi8(in, shuffle);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 3 * x), _mm256_castsi256_si128(out));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 3 * x + 12),
                       _mm256_extracti128_si256(out, 1));
    }
    SwapPixels(s, d, order, x, roi.width);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::avx2

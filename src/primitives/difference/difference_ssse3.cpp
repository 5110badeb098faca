// Frame difference, SSSE3 level: 16 pixels a step. Each frame's four groups of four pixels are
// loaded so that a group starts a vector or fills its bytes 4-15 (nothing past the 48 bytes is
// read), shuffled to blue, green, red runs of four and transposed to three 16-pixel planes. The
// divisions by 3 of sums up to 765 are a 16-bit multiply-high by 21846 (exact below 98304 / 3).
#include <tmmintrin.h>

#include "primitives/core/rows.h"
#include "primitives/difference/difference.h"

namespace framekit::prim::ssse3 {
namespace {

inline __m128i Load(const uint8_t* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

struct Planes {
  __m128i blue, green, red;
};

// Pixels 0-15 of a 48-byte run as three planes of 16 bytes.
inline Planes Deinterleave(const uint8_t* p) {
  const __m128i at0 = _mm_setr_epi8(0, 3, 6, 9, 1, 4, 7, 10, 2, 5, 8, 11, -1, -1, -1, -1);
  const __m128i at4 = _mm_setr_epi8(4, 7, 10, 13, 5, 8, 11, 14, 6, 9, 12, 15, -1, -1, -1, -1);
  const __m128i g0 = _mm_shuffle_epi8(Load(p), at0), g1 = _mm_shuffle_epi8(Load(p + 8), at4);
  const __m128i g2 = _mm_shuffle_epi8(Load(p + 24), at0), g3 = _mm_shuffle_epi8(Load(p + 32), at4);
  const __m128i bg01 = _mm_unpacklo_epi32(g0, g1), bg23 = _mm_unpacklo_epi32(g2, g3);
  const __m128i r01 = _mm_unpackhi_epi32(g0, g1), r23 = _mm_unpackhi_epi32(g2, g3);
  return {_mm_unpacklo_epi64(bg01, bg23), _mm_unpackhi_epi64(bg01, bg23),
          _mm_unpacklo_epi64(r01, r23)};
}

// (b + g + r) / 3 of 16 pixels.
inline __m128i Grey(const Planes& p) {
  const __m128i zero = _mm_setzero_si128(), third = _mm_set1_epi16(21846);
  const __m128i lo = _mm_add_epi16(
      _mm_add_epi16(_mm_unpacklo_epi8(p.blue, zero), _mm_unpacklo_epi8(p.green, zero)),
      _mm_unpacklo_epi8(p.red, zero));
  const __m128i hi = _mm_add_epi16(
      _mm_add_epi16(_mm_unpackhi_epi8(p.blue, zero), _mm_unpackhi_epi8(p.green, zero)),
      _mm_unpackhi_epi8(p.red, zero));
  return _mm_packus_epi16(_mm_mulhi_epu16(lo, third), _mm_mulhi_epu16(hi, third));
}

// |sum of the chosen channels' differences| / 3 in 16-bit lanes; `low` picks the pixel half.
inline __m128i ChannelHalf(const Planes& a, const Planes& b, const __m128i use[3], bool low) {
  const __m128i zero = _mm_setzero_si128();
  auto widen = [&](__m128i v) {
    return low ? _mm_unpacklo_epi8(v, zero) : _mm_unpackhi_epi8(v, zero);
  };
  const __m128i d = _mm_add_epi16(
      _mm_add_epi16(_mm_and_si128(use[0], _mm_sub_epi16(widen(a.red), widen(b.red))),
                    _mm_and_si128(use[1], _mm_sub_epi16(widen(a.green), widen(b.green)))),
      _mm_and_si128(use[2], _mm_sub_epi16(widen(a.blue), widen(b.blue))));
  return _mm_mulhi_epu16(_mm_abs_epi16(d), _mm_set1_epi16(21846));
}

}  // namespace

Status MotionDiff_8u_C3C1R(const uint8_t* a, int32_t a_step, const uint8_t* b, int32_t b_step,
                           uint8_t* map, int32_t map_step, Size roi, int32_t channels,
                           uint64_t* sum) {
  if (const Status s = CheckMotionDiff(a, b, map, roi, channels, sum); s != ippStsNoErr) return s;
  const __m128i use[3] = {_mm_set1_epi16((channels & kDiffRed) ? -1 : 0),
                          _mm_set1_epi16((channels & kDiffGreen) ? -1 : 0),
                          _mm_set1_epi16((channels & kDiffBlue) ? -1 : 0)};
  const __m128i zero = _mm_setzero_si128();
  __m128i sums = zero;
  uint64_t total = 0;
  const int64_t width = roi.width;
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* pa = RowAt(a, a_step, y);
    const uint8_t* pb = RowAt(b, b_step, y);
    uint8_t* out = RowAt(map, map_step, y);
    int64_t x = 0;
    for (; x + 16 <= width; x += 16) {
      const Planes fa = Deinterleave(pa + 3 * x), fb = Deinterleave(pb + 3 * x);
      __m128i v;
      if (channels == kDiffLuminance) {
        const __m128i ga = Grey(fa), gb = Grey(fb);
        v = _mm_or_si128(_mm_subs_epu8(ga, gb), _mm_subs_epu8(gb, ga));
      } else {
        v = _mm_packus_epi16(ChannelHalf(fa, fb, use, true), ChannelHalf(fa, fb, use, false));
      }
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + x), v);
      sums = _mm_add_epi64(sums, _mm_sad_epu8(v, zero));
    }
    for (; x < width; ++x) {
      out[x] = MotionDiffPixel(pa + 3 * x, pb + 3 * x, channels);
      total += out[x];
    }
  }
  alignas(16) uint64_t lanes[2];
  _mm_store_si128(reinterpret_cast<__m128i*>(lanes), sums);
  *sum += total + lanes[0] + lanes[1];
  return ippStsNoErr;
}

}  // namespace framekit::prim::ssse3

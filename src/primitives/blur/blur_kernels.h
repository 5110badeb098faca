// The scalar pieces of the box-blur passes: the clipped window and its divisions. Internal
// linkage throughout (per-ISA files include this for their tails).
#pragma once

#include <cstdint>
#include <cstring>

#include "primitives/core/checks.h"
#include "primitives/core/lane_math.h"
#include "primitives/core/rows.h"

namespace framekit::prim::blur {

// Samples of the window around i in [0, n): [max(0, i - r), min(n - 1, i + r)].
static inline int64_t WindowCount(int64_t i, int64_t r, int64_t n) {
  const int64_t lo = i - r < 0 ? 0 : i - r;
  const int64_t hi = i + r > n - 1 ? n - 1 : i + r;
  return hi - lo + 1;
}

namespace {  // a class's members have external linkage otherwise

// Truncating division of a window sum by its count, exact for any sum <= 255 * n: by a
// reciprocal multiply while n is small enough for it to be exact, by division otherwise.
class Divider {
 public:
  explicit Divider(int64_t n) : n_(n), magic_(n <= kMaxMagic ? 0xFFFFFFFFull / n + 1 : 0) {}
  uint32_t operator()(uint64_t sum) const {
    return magic_ != 0 ? static_cast<uint32_t>((sum * magic_) >> 32)
                       : static_cast<uint32_t>(sum / static_cast<uint64_t>(n_));
  }

 private:
  // magic = ceil(2^32 / n) is off from 2^32 / n by e < n; sum * e < 2^32 keeps the quotient
  // exact, and sum <= 255 * n makes that hold for n up to 4104.
  static constexpr int64_t kMaxMagic = 4096;
  int64_t n_;
  uint64_t magic_;
};

}  // namespace

// The fast path's division: float(sum) * float(1 / n), rounded to nearest even, saturated as
// the vector packs do.
static inline float Reciprocal(int64_t n) { return 1.0f / static_cast<float>(n); }
static inline uint8_t RoundedMean(uint32_t sum, float reciprocal) {
  return ClampByte(
      ClampInt16(RoundEven(static_cast<float>(static_cast<int32_t>(sum)) * reciprocal)));
}

// Checks of both passes, in order.
static inline Status CheckPass(const void* p, const void* buffer, Size roi, int32_t radius) {
  if (const Status s = CheckTwo(p, buffer, roi); s != ippStsNoErr) return s;
  return radius < 0 ? ippStsSizeErr : ippStsNoErr;
}

// Rows first_row .. roi.height - 1 of the horizontal pass, scalar: row i's window moves right by
// one pixel, the pixel leaving it subtracted and the one entering added; the divisor is the same
// 2r + 1 between the edges. Each row is built in `row` and copied back.
static inline void ScalarRows(uint8_t* p, int32_t step, Size roi, int32_t radius, uint8_t* row,
                              int32_t first_row) {
  const int64_t w = roi.width, r = radius;
  const Divider inner(2 * r + 1 <= w ? 2 * r + 1 : w);
  for (int32_t y = first_row; y < roi.height; ++y) {
    uint8_t* px = RowAt(p, step, y);
    uint32_t s[3] = {};
    for (int64_t i = 0; i < w && i < r; ++i) {
      for (int c = 0; c < 3; ++c) s[c] += px[3 * i + c];
    }
    for (int64_t i = 0; i < w; ++i) {
      for (int c = 0; c < 3; ++c) {
        if (i + r < w) s[c] += px[3 * (i + r) + c];
        if (i - r - 1 >= 0) s[c] -= px[3 * (i - r - 1) + c];
      }
      const bool interior = i - r >= 0 && i + r < w;
      const Divider edge(interior ? 1 : WindowCount(i, r, w));
      const Divider& div = interior ? inner : edge;
      for (int c = 0; c < 3; ++c) row[3 * i + c] = static_cast<uint8_t>(div(s[c]));
    }
    std::memcpy(px, row, static_cast<size_t>(3 * w));
  }
}

// Truncating division of a 16-bit dividend (at most max_dividend) by d as a 16-bit multiply-high
// and a shift: floor(x * m / 2^(16 + shift)) with m = floor(2^(16 + shift) / d) + 1 is off from
// x / d by x * e / (d * 2^(16 + shift)), e <= d, which stays below 1 / d while
// max_dividend * d < 2^(16 + shift). m must also fit in 16 bits; false when no shift gives both.
struct Magic16 {
  uint16_t mul;
  int shift;
};
static inline bool FindMagic16(int64_t d, int64_t max_dividend, Magic16* magic) {
  for (int shift = 0; shift < 16; ++shift) {
    const int64_t scale = int64_t{1} << (16 + shift);
    const int64_t mul = scale / d + 1;
    if (max_dividend * d < scale && mul < 65536) {
      *magic = {static_cast<uint16_t>(mul), shift};
      return true;
    }
  }
  return false;
}

// The 16-bit divisions of every pixel position of a row of w pixels: false when a count has
// none. A window of one (shift -1) is the sum itself.
static inline bool RowMagics(int64_t w, int64_t r, Magic16* magic) {
  for (int64_t i = 0; i < w; ++i) {
    const int64_t n = WindowCount(i, r, w);
    if (n == 1) {
      magic[i] = {0, -1};
    } else if (!FindMagic16(n, 255 * n, &magic[i])) {
      return false;
    }
  }
  return true;
}

// The fast path's rounded mean for an odd count n: then sum / n is never a half, and
// round_even(float(sum) * float(1 / n)) equals floor((2 sum + n) / (2 n)) for every sum up to
// 255 n (an exhaustive test holds every count with a multiplier to that). The division by 2n is
// a Magic16 for dividends up to 511 n (16 bits for n up to 127); false when there is none.
static inline bool FindRoundedMagic16(int64_t n, Magic16* magic) {
  return n % 2 == 1 && n <= 127 && FindMagic16(2 * n, 511 * n, magic);
}

// How a vertical-pass body divides the sums of one row: the integer rounded mean when the row's
// count has one, else single precision (reciprocal), with the count itself.
struct RowDivision {
  bool integer;
  Magic16 magic;
  float reciprocal;
  int16_t count;
};

// One strip of `bytes` byte columns (at most 48) starting at byte column `x0`, down all rows:
// results into work (48 bytes a row), then copied back. `rounded`: the fast path's division.
static inline void ColumnStrip(uint8_t* p, int32_t step, Size roi, int32_t radius, int64_t x0,
                               int bytes, bool rounded, uint8_t* work) {
  uint32_t sum[48] = {};
  const int64_t h = roi.height, r = radius;
  for (int64_t y = 0; y < h && y < r; ++y) {
    const uint8_t* row = RowAt(p, step, y) + x0;
    for (int b = 0; b < bytes; ++b) sum[b] += row[b];
  }
  for (int64_t y = 0; y < h; ++y) {
    if (y + r < h) {
      const uint8_t* in = RowAt(p, step, y + r) + x0;
      for (int b = 0; b < bytes; ++b) sum[b] += in[b];
    }
    if (y - r - 1 >= 0) {
      const uint8_t* out = RowAt(p, step, y - r - 1) + x0;
      for (int b = 0; b < bytes; ++b) sum[b] -= out[b];
    }
    const int64_t n = WindowCount(y, r, h);
    uint8_t* dst = work + 48 * y;
    if (rounded) {
      const float rcp = Reciprocal(n);
      for (int b = 0; b < bytes; ++b) dst[b] = RoundedMean(sum[b], rcp);
    } else {
      const Divider div(n);
      for (int b = 0; b < bytes; ++b) dst[b] = static_cast<uint8_t>(div(sum[b]));
    }
  }
  for (int64_t y = 0; y < h; ++y) std::memcpy(RowAt(p, step, y) + x0, work + 48 * y, bytes);
}

// The first pixel column the rounded strips do not cover: rounded_width clipped to the image.
static inline int64_t RoundedEnd(Size roi, int32_t rounded_width) {
  const int64_t end = rounded_width < 0 ? 0 : rounded_width;
  return end > roi.width ? roi.width : end;
}

// Strips of 16 pixel columns from `from_pixel` on, scalar: a strip that straddles the end of
// the rounded columns is split there. The reference body, and every body's tail.
static inline void ScalarStrips(uint8_t* p, int32_t step, Size roi, int32_t radius,
                                int64_t from_pixel, int64_t rounded_end, uint8_t* work) {
  for (int64_t x = from_pixel; x < roi.width; x += 16) {
    const int64_t pixels = roi.width - x < 16 ? roi.width - x : 16;
    int64_t rounded = rounded_end - x;
    rounded = rounded < 0 ? 0 : (rounded > pixels ? pixels : rounded);
    if (rounded > 0) {
      ColumnStrip(p, step, roi, radius, 3 * x, static_cast<int>(3 * rounded), true, work);
    }
    if (rounded < pixels) {
      ColumnStrip(p, step, roi, radius, 3 * (x + rounded), static_cast<int>(3 * (pixels - rounded)),
                  false, work);
    }
  }
}

}  // namespace framekit::prim::blur

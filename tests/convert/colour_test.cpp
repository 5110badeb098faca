// Colour conversions through the exports, against references written here from the formulas in
// the public header (64-bit arithmetic, floor division), on random frames of awkward sizes, plus
// the worked values and the required odd behaviours.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "framekit/framekit.h"
#include "primitives/core/strides.h"
#include "support/random_frame.h"

namespace framekit {
namespace {

using test::Rng;
using Bytes = std::vector<uint8_t>;

constexpr int32_t kSizes[][2] = {{1, 1},  {1, 4},  {2, 1},  {2, 2},  {3, 3},   {4, 2},   {5, 3},
                                 {6, 5},  {7, 4},  {8, 6},  {13, 7}, {16, 2},  {17, 9},  {31, 4},
                                 {32, 8}, {33, 5}, {64, 3}, {65, 2}, {127, 6}, {130, 11}};

int64_t FloorDiv(int64_t a, int64_t b) { return a >= 0 ? a / b : -((-a + b - 1) / b); }
uint8_t Clamp(int64_t v) { return static_cast<uint8_t>(std::clamp<int64_t>(v, 0, 255)); }
int32_t A24(int32_t w) { return RowByteStrideRGB24(w); }

// The pixels of an RGB24 frame's rows in reverse order (stride A24); the padding stays.
Bytes RowsReversed(const Bytes& f, int32_t w, int32_t h) {
  Bytes out = f;
  const size_t s = static_cast<size_t>(A24(w));
  for (int32_t r = 0; r < h; ++r) std::memcpy(&out[r * s], &f[(h - 1 - r) * s], 3 * w);
  return out;
}

void Yuy2Pixel(int y, int u, int v, uint8_t* d) {
  const int64_t t = 76284 * int64_t{y - 16} + 32768;
  d[0] = Clamp(FloorDiv(t + 132186 * int64_t{u - 128}, 65536));
  d[1] = Clamp(FloorDiv(t - 25690 * int64_t{u - 128} - 53281 * int64_t{v - 128}, 65536));
  d[2] = Clamp(FloorDiv(t + 104595 * int64_t{v - 128}, 65536));
}

// YUY2 (top-down) into a bottom-up RGB24 frame, pixel by pixel.
void Yuy2Reference(const Bytes& src, Bytes& dst, int32_t w, int32_t h) {
  for (int32_t r = 0; r < h; ++r) {
    const uint8_t* s = &src[static_cast<size_t>(2 * w * r)];
    uint8_t* d = &dst[static_cast<size_t>(A24(w) * (h - 1 - r))];
    for (int32_t x = 0; x < w; ++x) {
      const int32_t g = 4 * (x / 2);
      const int v = (x == w - 1 && w % 2 == 1) ? s[g - 1] : s[g + 3];
      Yuy2Pixel(s[(x % 2 == 0) ? g : g + 2], s[g + 1], v, d + 3 * x);
    }
  }
}

int Chroma422(int64_t x) { return static_cast<int>((128 + FloorDiv(x + 16384, 131072)) & 255); }

// A top-down RGB24 frame (already turned over) into YUY2.
void RgbToYuy2Reference(const Bytes& src, Bytes& dst, int32_t w, int32_t h) {
  for (int32_t r = 0; r < h; ++r) {
    const uint8_t* s = &src[static_cast<size_t>(A24(w) * r)];
    uint8_t* d = &dst[static_cast<size_t>(2 * w * r)];
    for (int32_t x = 0; x < w; ++x) {
      const uint8_t* p = s + 3 * x;
      d[2 * x] = static_cast<uint8_t>((16843 * p[2] + 33030 * p[1] + 6423 * p[0] + 1081344) >> 16);
      const uint8_t* q = (x % 2 == 0 && x + 1 < w) ? p + 3 : (x % 2 == 0 ? p : p - 3);
      const int64_t b = p[0] + q[0], g = p[1] + q[1], rr = p[2] + q[2];
      const int64_t x_u = -9699 * rr - 19071 * g + 28770 * b;
      const int64_t x_v = 28770 * rr - 24117 * g - 4653 * b;
      d[2 * x + 1] = static_cast<uint8_t>(Chroma422(x % 2 == 0 ? x_u : x_v));
    }
  }
}

TEST(Yuy2ToRgb24, MatchesTheFormulaOnRandomFrames) {
  Rng rng("colour/yuy2-to-rgb24");
  for (const auto& [w, h] : kSizes) {
    const Bytes src = test::RandomFrame(rng, 2 * w, h);
    Bytes dst = test::RandomFrame(rng, A24(w), h), expected = dst;
    const int32_t status = YUY2ToRGB24(src.data(), dst.data(), w, h);
    if (w == 1) {
      // No conversion; the destination's rows are reversed all the same.
      EXPECT_EQ(status, h == 1 ? -6 : 0);
      if (h > 1) expected = RowsReversed(expected, w, h);
    } else {
      Yuy2Reference(src, expected, w, h);
      EXPECT_EQ(status, h == 1 ? -6 : 0) << w << "x" << h;
    }
    EXPECT_EQ(dst, expected) << w << "x" << h;
  }
}

TEST(Yuy2ToRgb24, WorkedValues) {
  const Bytes white = {235, 128, 235, 128}, black = {16, 128, 16, 128};
  Bytes dst(8 * 2, 7);
  EXPECT_EQ(YUY2ToRGB24(white.data(), dst.data(), 2, 1), -6);  // one row: not reversed
  EXPECT_EQ(Bytes(dst.begin(), dst.begin() + 6), Bytes(6, 255));
  YUY2ToRGB24(black.data(), dst.data(), 2, 1);
  EXPECT_EQ(Bytes(dst.begin(), dst.begin() + 6), Bytes(6, 0));
  EXPECT_EQ(dst[6], 7);                                  // row padding untouched
  EXPECT_EQ(YUY2ToRGB24(nullptr, dst.data(), 2, 2), 0);  // the reversal's status
  EXPECT_EQ(YUY2ToRGB24(white.data(), nullptr, 2, 2), -8);
}

TEST(Rgb24ToYuy2, LeavesTheSourceUpsideDownAndMatchesTheFormula) {
  Rng rng("colour/rgb24-to-yuy2");
  for (const auto& [w, h] : kSizes) {
    Bytes src = test::RandomFrame(rng, A24(w), h);
    const Bytes flipped = h > 1 ? RowsReversed(src, w, h) : src;
    Bytes dst = test::RandomFrame(rng, 2 * w, h), expected = dst;
    const int32_t status = RGB24ToYUY2(src.data(), dst.data(), w, h);
    EXPECT_EQ(src, flipped) << w << "x" << h;
    if (w >= 2) RgbToYuy2Reference(flipped, expected, w, h);
    EXPECT_EQ(status, w < 2 ? -6 : 0);
    EXPECT_EQ(dst, expected) << w << "x" << h;
  }
}

TEST(Rgb24ToYuy2, GreyAndASecondCall) {
  Bytes grey(8 * 2, 128), dst(8);
  EXPECT_EQ(RGB24ToYUY2(grey.data(), dst.data(), 2, 2), 0);
  EXPECT_EQ(dst, (Bytes{126, 128, 126, 128, 126, 128, 126, 128}));
  // Rows of different colours: the second call sees them the other way round.
  Bytes src = {0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 0, 0};
  Bytes first(8), second(8);
  RGB24ToYUY2(src.data(), first.data(), 2, 2);
  RGB24ToYUY2(src.data(), second.data(), 2, 2);
  EXPECT_EQ(first[0], 235);
  EXPECT_EQ(second[0], 16);
}

// YV12 planes of a w x h frame: offsets and steps.
struct Planes {
  size_t second, third;
  int32_t cstep;
};
Planes PlanesOf(int32_t w, int32_t h) {
  return {static_cast<size_t>(w * h), static_cast<size_t>(w * h + (w * h) / 4), w / 2};
}

TEST(Yv12ToRgb24, MatchesTheFormulaOnRandomFrames) {
  Rng rng("colour/yv12-to-rgb24");
  for (const auto& [w, h] : kSizes) {
    const Planes pl = PlanesOf(w, h);
    const Bytes src = test::RandomFrame(rng, 1, w * h + 2 * ((w * h) / 4));
    Bytes dst = test::RandomFrame(rng, A24(w), h), converted = dst;
    for (int32_t r = 0; r < h / 2 * 2; ++r) {
      for (int32_t x = 0; x < w / 2 * 2; ++x) {
        const int64_t y = src[static_cast<size_t>(r * w + x)];
        const size_t c = static_cast<size_t>((r / 2) * pl.cstep + x / 2);
        const int64_t a = src[pl.second + c] - 128, b = src[pl.third + c] - 128;
        uint8_t* d = &converted[static_cast<size_t>(r * A24(w) + 3 * x)];
        d[0] = Clamp(FloorDiv(65536 * y + 74711 * b + 32768, 65536));
        d[1] = Clamp(FloorDiv(65536 * y - 38076 * b - 25821 * a, 65536));
        d[2] = Clamp(FloorDiv(65536 * y + 133169 * a + 32768, 65536));
      }
    }
    // Converted in memory order, then the rows reversed (the unconverted ones too).
    const Bytes expected = h > 1 ? RowsReversed(converted, w, h) : converted;
    const int32_t status = YV12ToRGB24(src.data(), dst.data(), w, h);
    EXPECT_EQ(status, h == 1 ? -6 : 0) << w << "x" << h;  // never the conversion's 35
    EXPECT_EQ(dst, expected) << w << "x" << h;
  }
}

TEST(Rgb24ToYv12, MatchesTheFormulaOnRandomFrames) {
  Rng rng("colour/rgb24-to-yv12");
  for (const auto& [w, h] : kSizes) {
    const Planes pl = PlanesOf(w, h);
    Bytes src = test::RandomFrame(rng, A24(w), h);
    const Bytes flipped = h > 1 ? RowsReversed(src, w, h) : src;
    Bytes dst = test::RandomFrame(rng, 1, w * h + 2 * ((w * h) / 4)), expected = dst;
    for (int32_t r = 0; r < h / 2 * 2; ++r) {
      for (int32_t x = 0; x < w / 2 * 2; ++x) {
        const uint8_t* p = &flipped[static_cast<size_t>(r * A24(w) + 3 * x)];
        expected[static_cast<size_t>(r * w + x)] =
            static_cast<uint8_t>((16843 * p[0] + 33030 * p[1] + 6423 * p[2] + 1081344) >> 16);
      }
    }
    for (int32_t i = 0; i < h / 2; ++i) {
      for (int32_t j = 0; j < w / 2; ++j) {
        int64_t s[3] = {};
        for (int k = 0; k < 4; ++k) {
          const uint8_t* p =
              &flipped[static_cast<size_t>((2 * i + k / 2) * A24(w) + 3 * (2 * j + k % 2))];
          for (int c = 0; c < 3; ++c) s[c] += p[c];
        }
        const size_t c = static_cast<size_t>(i * pl.cstep + j);
        // 128 plus the mean of four weighted sums of 1/65536, rounded half up.
        expected[pl.second + c] = static_cast<uint8_t>(
            128 + FloorDiv(-9699 * s[0] - 19071 * s[1] + 28770 * s[2] + 131072, 262144));
        expected[pl.third + c] = static_cast<uint8_t>(
            128 + FloorDiv(28770 * s[0] - 24117 * s[1] - 4653 * s[2] + 131072, 262144));
      }
    }
    const int32_t status = RGB24ToYV12(src.data(), dst.data(), w, h);
    EXPECT_EQ(status, (w % 2 == 1 || h % 2 == 1) ? 35 : 0) << w << "x" << h;
    EXPECT_EQ(src, flipped) << w << "x" << h;
    EXPECT_EQ(dst, expected) << w << "x" << h;
  }
}

TEST(Rgb24ToYv12, GreyAndARoundTripKeepsTheHue) {
  Bytes grey(8 * 2, 128), yv12(6);
  EXPECT_EQ(RGB24ToYV12(grey.data(), yv12.data(), 2, 2), 0);
  EXPECT_EQ(yv12, (Bytes{126, 126, 126, 126, 128, 128}));
  // Pure red (byte 2) comes back reddest in byte 2, pure blue in byte 0.
  for (const int channel : {0, 2}) {
    Bytes src(8 * 2, 0), back(8 * 2);
    for (int p = 0; p < 4; ++p) src[(p / 2) * 8 + (p % 2) * 3 + channel] = 255;
    RGB24ToYV12(src.data(), yv12.data(), 2, 2);
    YV12ToRGB24(yv12.data(), back.data(), 2, 2);
    EXPECT_GT(back[channel], back[2 - channel] + 100) << channel;
  }
}

TEST(RgbToRgb, ChannelCopiesKeepTheFourthByteAndThePadding) {
  // 2 x 2: RGB24 rows of 6 bytes at the aligned stride of 8, RGB32 rows packed.
  const Bytes rgb24 = {1, 2, 3, 4, 5, 6, 77, 78, 7, 8, 9, 10, 11, 12, 79, 80};
  const Bytes rgb32 = {20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 250};
  Bytes to32 = rgb32, to24 = rgb24, rgba = rgb32;
  EXPECT_EQ(RGB24ToRGB32(rgb24.data(), to32.data(), 2, 2), 0);
  EXPECT_EQ(to32, (Bytes{1, 2, 3, 23, 4, 5, 6, 27, 7, 8, 9, 31, 10, 11, 12, 250}));
  EXPECT_EQ(RGB24ToRGBA(rgb24.data(), rgba.data(), 2, 2, 77), 0);
  EXPECT_EQ(rgba, (Bytes{1, 2, 3, 100, 4, 5, 6, 104, 7, 8, 9, 108, 10, 11, 12, 255}));
  EXPECT_EQ(RGB32ToRGB24(rgb32.data(), to24.data(), 2, 2), 0);
  EXPECT_EQ(to24, (Bytes{20, 21, 22, 24, 25, 26, 77, 78, 28, 29, 30, 32, 33, 34, 79, 80}));
  Bytes px(4);
  EXPECT_EQ(RGB24ToRGB32(nullptr, px.data(), 1, 1), -8);
  EXPECT_EQ(RGB32ToRGB24(px.data(), px.data(), 0, 1), -6);
}

TEST(Rgb24ToRgba, AddsAlphaToTheFourthByteWithSaturation) {
  const Bytes src = {1, 2, 3, 4, 5, 6, 0, 0};
  Bytes dst = {9, 9, 9, 100, 9, 9, 9, 0};
  EXPECT_EQ(RGB24ToRGBA(src.data(), dst.data(), 2, 1, 200), 0);
  EXPECT_EQ(dst, (Bytes{1, 2, 3, 255, 4, 5, 6, 200}));
  // The addition runs after a failed copy and reports its own status.
  dst = {9, 9, 9, 10, 9, 9, 9, 20};
  EXPECT_EQ(RGB24ToRGBA(nullptr, dst.data(), 2, 1, 5), 0);
  EXPECT_EQ(dst, (Bytes{9, 9, 9, 15, 9, 9, 9, 25}));
  EXPECT_EQ(RGB24ToRGBA(src.data(), nullptr, 2, 1, 5), -8);
}

TEST(Rgb24ToBgr24, ExchangesBytesZeroAndTwoWithTheCallersStep) {
  Bytes src = {1, 2, 3, 4, 5, 6, 77, 7, 8, 9, 10, 11, 12, 88};
  Bytes dst(14, 0);
  EXPECT_EQ(RGB24ToBGR24(src.data(), dst.data(), 2, 2, 7), 0);
  EXPECT_EQ(dst, (Bytes{3, 2, 1, 6, 5, 4, 0, 9, 8, 7, 12, 11, 10, 0}));
  EXPECT_EQ(RGB24ToBGR24(src.data(), src.data(), 2, 2, 7), 0);  // in place
  EXPECT_EQ(src, (Bytes{3, 2, 1, 6, 5, 4, 77, 9, 8, 7, 12, 11, 10, 88}));
  EXPECT_EQ(RGB24ToBGR24(src.data(), dst.data(), 2, -1, 7), -6);
}

}  // namespace
}  // namespace framekit

// Flip, crop, cut and fill through the exports: each export's stride rule, the worked examples,
// and a check against pixel-index arithmetic on random frames of awkward sizes.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <random>
#include <vector>

#include "framekit/framekit.h"
#include "primitives/core/strides.h"

namespace framekit {
namespace {

std::vector<uint8_t> Random(size_t n, uint32_t seed) {
  std::mt19937 rng(seed);
  std::vector<uint8_t> v(n);
  for (auto& b : v) b = static_cast<uint8_t>(rng());
  return v;
}

TEST(Strides, RulesAndTheirDisagreements) {
  EXPECT_EQ(BitmapStride(5, 24), 16);
  EXPECT_EQ(RowByteStrideRGB24(5), 16);
  EXPECT_EQ(PackedStride(5, 3), 15);
  EXPECT_EQ(BitmapStride(3, 16), 8);
  EXPECT_EQ(BitmapStride(0, 24), 0);
  EXPECT_EQ(RowByteStrideRGB24(0), 4);
  for (int32_t w = 1; w < 70; ++w) {
    EXPECT_EQ(BitmapStride(w, 24), RowByteStrideRGB24(w)) << w;
    EXPECT_EQ(BitmapStride(w, 32), RowByteStrideRGB32(w)) << w;
    EXPECT_EQ(BitmapStride(w, 24) % 4, 0);
    EXPECT_GE(BitmapStride(w, 24), 3 * w);
    EXPECT_LT(BitmapStride(w, 24), 3 * w + 4);
  }
  // Extreme widths wrap in 32 bits instead of being undefined.
  // INT32_MAX * 24 wraps to -24, and (-24 + 31) / 32 is 0.
  EXPECT_EQ(BitmapStride(INT32_MAX, 24), 0);
  // 3 * INT32_MIN wraps to INT32_MIN; minus 1 wraps to INT32_MAX, which rounds up to wrap again.
  EXPECT_EQ(RowByteStrideRGB24(INT32_MIN), INT32_MIN);
}

TEST(Flip, OneRowOrOneColumnIsASizeError) {
  std::vector<uint8_t> f = Random(64, 2), orig = f;
  EXPECT_EQ(FlipHorizontalRGB24(f.data(), 5, 1), -6);
  EXPECT_EQ(FlipVerticalRGB24(f.data(), 1, 5), -6);
  EXPECT_EQ(FlipHorizontalRGB32(f.data(), 4, 1), -6);
  EXPECT_EQ(FlipVerticalRGB32(f.data(), 1, 4), -6);
  EXPECT_EQ(FlipHorizontalYUY2(f.data(), 8, 1), -6);
  EXPECT_EQ(f, orig);
  // The other axis of the same frames is fine.
  EXPECT_EQ(FlipVerticalRGB24(f.data(), 5, 1), 0);
  EXPECT_EQ(FlipHorizontalRGB24(f.data(), 1, 5), 0);
}

TEST(Flip, ArgumentErrors) {
  uint8_t f[64] = {};
  uint8_t g[64] = {};
  EXPECT_EQ(FlipHorizontalRGB24(nullptr, 2, 2), -8);
  EXPECT_EQ(FlipVerticalRGB32Ex(f, nullptr, 2, 2), -8);
  EXPECT_EQ(FlipVerticalRGB32Ex(nullptr, g, 2, 2), -8);
  EXPECT_EQ(FlipHorizontalYUY2Ex(f, nullptr, 2, 2), -8);
  EXPECT_EQ(FlipHorizontalRGB24(f, 0, 2), -6);
  EXPECT_EQ(FlipVerticalRGB24(f, -4, 2), -6);
  EXPECT_EQ(FlipHorizontalRGB32Ex(f, g, 2, 0), -6);
  EXPECT_EQ(FlipHorizontalYUY2(f, 0, 2), -6);
}

// Expected result of a flip by index arithmetic: dst(r, c) = src(mr, mc).
std::vector<uint8_t> Mirrored(const std::vector<uint8_t>& src, int w, int h, int bpp, int stride,
                              bool rows, bool columns) {
  std::vector<uint8_t> out = src;
  for (int r = 0; r < h; ++r) {
    for (int c = 0; c < w; ++c) {
      const int sr = rows ? h - 1 - r : r, sc = columns ? w - 1 - c : c;
      std::memcpy(&out[r * stride + c * bpp], &src[sr * stride + sc * bpp], bpp);
    }
  }
  return out;
}

TEST(Flip, EveryExportAgainstIndexArithmetic) {
  for (int w : {1, 2, 3, 5, 7, 16, 33, 67}) {
    for (int h : {2, 3, 4, 9}) {
      const int s24 = BitmapStride(w, 24), s32 = 4 * w, s16 = BitmapStride(w, 16);
      const auto rgb24 = Random(static_cast<size_t>(s24 * h), w * 100u + h);
      const auto rgb32 = Random(static_cast<size_t>(s32 * h), w * 200u + h);
      const auto yuy2 = Random(static_cast<size_t>(s16 * h), w * 300u + h);
      auto f = rgb24;
      if (w > 1) {
        EXPECT_EQ(FlipVerticalRGB24(f.data(), w, h), 0);
        EXPECT_EQ(f, Mirrored(rgb24, w, h, 3, s24, false, true)) << w << "x" << h;
        f = rgb32;
        EXPECT_EQ(FlipVerticalRGB32(f.data(), w, h), 0);
        EXPECT_EQ(f, Mirrored(rgb32, w, h, 4, s32, false, true)) << w << "x" << h;
        std::vector<uint8_t> d(rgb32.size(), 0x5A);
        EXPECT_EQ(FlipVerticalRGB32Ex(rgb32.data(), d.data(), w, h), 0);
        EXPECT_EQ(d, Mirrored(rgb32, w, h, 4, s32, false, true));
      }
      f = rgb24;
      EXPECT_EQ(FlipHorizontalRGB24(f.data(), w, h), 0);
      EXPECT_EQ(f, Mirrored(rgb24, w, h, 3, s24, true, false)) << w << "x" << h;
      f = rgb32;
      EXPECT_EQ(FlipHorizontalRGB32(f.data(), w, h), 0);
      EXPECT_EQ(f, Mirrored(rgb32, w, h, 4, s32, true, false));
      std::vector<uint8_t> d(rgb32.size(), 0x5A);
      EXPECT_EQ(FlipHorizontalRGB32Ex(rgb32.data(), d.data(), w, h), 0);
      EXPECT_EQ(d, Mirrored(rgb32, w, h, 4, s32, true, false));
      // YUY2 rows are 2 * width bytes at the 16-bit bitmap stride; padding keeps its value.
      f = yuy2;
      EXPECT_EQ(FlipHorizontalYUY2(f.data(), w, h), 0);
      EXPECT_EQ(f, Mirrored(yuy2, 2 * w, h, 1, s16, true, false)) << w << "x" << h;
      std::vector<uint8_t> y(yuy2.size(), 0x5A),
          want = Mirrored(yuy2, 2 * w, h, 1, s16, true, false);
      for (int r = 0; r < h; ++r) std::memset(&want[r * s16 + 2 * w], 0x5A, s16 - 2 * w);
      EXPECT_EQ(FlipHorizontalYUY2Ex(yuy2.data(), y.data(), w, h), 0);
      EXPECT_EQ(y, want) << "Ex form leaves destination padding alone, " << w << "x" << h;
    }
  }
}

TEST(Crop, WorkedExampleFromAFivePixelFrame) {
  const auto src = Random(16 * 5, 4);
  std::vector<uint8_t> dst(12 * 2 + 8, 0xC3);
  const FrameKitRect rect{1, 2, 4, 4};
  ASSERT_EQ(Crop24(src.data(), 5, 5, dst.data(), &rect), 0);
  EXPECT_EQ(std::memcmp(&dst[0], &src[2 * 16 + 3], 9), 0);
  EXPECT_EQ(std::memcmp(&dst[12], &src[3 * 16 + 3], 9), 0);
  for (int i : {9, 10, 11, 21, 22, 23, 24, 31}) EXPECT_EQ(dst[i], 0xC3) << i;
}

TEST(Crop, Rgb32AndEmptyRectangles) {
  const auto src = Random(4 * 6 * 4, 5);
  std::vector<uint8_t> dst(4 * 3 * 2, 0);
  const FrameKitRect rect{2, 1, 5, 3};
  ASSERT_EQ(Crop32(src.data(), 6, 4, dst.data(), &rect), 0);
  EXPECT_EQ(std::memcmp(&dst[0], &src[1 * 24 + 8], 12), 0);
  EXPECT_EQ(std::memcmp(&dst[12], &src[2 * 24 + 8], 12), 0);
  const auto before = dst;
  for (const FrameKitRect bad :
       {FrameKitRect{2, 1, 2, 3}, FrameKitRect{2, 3, 5, 3}, FrameKitRect{4, 1, 2, 3}}) {
    EXPECT_EQ(Crop24(src.data(), 6, 4, dst.data(), &bad), -6);
    EXPECT_EQ(Crop32(src.data(), 6, 4, dst.data(), &bad), -6);
  }
  EXPECT_EQ(dst, before);
  // The null check sees the first pixel's address: only a rectangle at the origin keeps it null.
  const FrameKitRect origin{0, 0, 2, 2};
  EXPECT_EQ(Crop24(nullptr, 6, 4, dst.data(), &origin), -8);
  EXPECT_EQ(Crop32(src.data(), 6, 4, nullptr, &rect), -8);
}

TEST(Fill, WritesTheColourBytesInsideTheRectangleOnly) {
  std::vector<uint8_t> f(16 * 4, 0);
  const FrameKitRect rect{1, 1, 4, 3};
  ASSERT_EQ(FillColor(f.data(), 5, 4, &rect, 0xFF112233u), 0);
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 5; ++c) {
      const bool in = r >= 1 && r < 3 && c >= 1 && c < 4;
      const uint8_t* p = &f[r * 16 + c * 3];
      EXPECT_EQ(p[0], in ? 0x33 : 0);
      EXPECT_EQ(p[1], in ? 0x22 : 0);
      EXPECT_EQ(p[2], in ? 0x11 : 0);
    }
    EXPECT_EQ(f[r * 16 + 15], 0) << "padding";
  }
  const FrameKitRect empty{3, 1, 3, 3};
  EXPECT_EQ(FillColor(f.data(), 5, 4, &empty, 0), -6);
  const FrameKitRect origin{0, 0, 1, 1};
  EXPECT_EQ(FillColor(nullptr, 5, 4, &origin, 0), -8);
}

TEST(Cut, DropsLastColumnsAndRowsWithEachSideItsStride) {
  const auto src = Random(16 * 4, 6);  // 5 x 4 RGB24
  std::vector<uint8_t> dst(12 * 3, 0x77);
  ImageCutRGB24(src.data(), 5, 4, dst.data(), 2, 1);  // 3 x 3 at stride 12 (9 bytes a row)
  for (int r = 0; r < 3; ++r) {
    EXPECT_EQ(std::memcmp(&dst[r * 12], &src[r * 16], 9), 0) << r;
    EXPECT_EQ(dst[r * 12 + 9], 0x77) << "padding " << r;
  }
  const auto src32 = Random(4 * 3 * 3, 7);
  std::vector<uint8_t> dst32(4 * 2 * 2, 0);
  ImageCutRGB32(src32.data(), 3, 3, dst32.data(), 1, 1);
  EXPECT_EQ(std::memcmp(&dst32[0], &src32[0], 8), 0);
  EXPECT_EQ(std::memcmp(&dst32[8], &src32[12], 8), 0) << "all four bytes move";
}

TEST(Cut, NothingWhenNoRowOrColumnRemains) {
  const auto src = Random(16 * 4, 8);
  std::vector<uint8_t> dst(64, 0x77), orig = dst;
  ImageCutRGB24(src.data(), 5, 4, dst.data(), 0, 4);
  ImageCutRGB24(src.data(), 5, 4, dst.data(), 5, 0);
  ImageCutRGB32(src.data(), 4, 4, dst.data(), 0, 9);
  ImageCutRGB32(src.data(), 4, 4, dst.data(), 7, 1);
  EXPECT_EQ(dst, orig);
}

}  // namespace
}  // namespace framekit

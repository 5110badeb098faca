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

// Flipping rows needs two rows and flipping columns two columns; null frames and empty sizes
// fail too, and nothing is written.
TEST(Flip, RefusedFrames) {
  std::vector<uint8_t> f = Random(64, 2), g(64, 0);
  const std::vector<uint8_t> f0 = f, g0 = g;
  uint8_t *p = f.data(), *q = g.data();
  EXPECT_EQ(FlipHorizontalRGB24(p, 5, 1), -6);
  EXPECT_EQ(FlipVerticalRGB24(p, 1, 5), -6);
  EXPECT_EQ(FlipHorizontalRGB32(p, 4, 1), -6);
  EXPECT_EQ(FlipVerticalRGB32(p, 1, 4), -6);
  EXPECT_EQ(FlipHorizontalYUY2(p, 8, 1), -6);
  EXPECT_EQ(FlipHorizontalRGB24(p, 0, 2), -6);
  EXPECT_EQ(FlipVerticalRGB24(p, -4, 2), -6);
  EXPECT_EQ(FlipHorizontalRGB32Ex(p, q, 2, 0), -6);
  EXPECT_EQ(FlipHorizontalYUY2(p, 0, 2), -6);
  EXPECT_EQ(FlipHorizontalRGB24(nullptr, 2, 2), -8);
  EXPECT_EQ(FlipVerticalRGB32Ex(p, nullptr, 2, 2), -8);
  EXPECT_EQ(FlipVerticalRGB32Ex(nullptr, q, 2, 2), -8);
  EXPECT_EQ(FlipHorizontalYUY2Ex(p, nullptr, 2, 2), -8);
  EXPECT_EQ(f, f0);
  EXPECT_EQ(g, g0);
  // The other axis of the same frames is fine.
  EXPECT_EQ(FlipVerticalRGB24(p, 5, 1), 0);
  EXPECT_EQ(FlipHorizontalRGB24(p, 1, 5), 0);
}

// Expected result of a flip by index arithmetic: dst(r, c) = src(mr, mc).
std::vector<uint8_t> Mirrored(const std::vector<uint8_t>& src, int w, int h, int bpp, int stride,
                              bool rows) {
  std::vector<uint8_t> out = src;
  for (int r = 0; r < h; ++r) {
    for (int c = 0; c < w; ++c) {
      const int sr = rows ? h - 1 - r : r, sc = rows ? c : w - 1 - c;
      std::memcpy(&out[r * stride + c * bpp], &src[sr * stride + sc * bpp], bpp);
    }
  }
  return out;
}

// Every flip at its bitmap stride (YUY2 rows are 2 * width bytes at the 16-bit one), in place
// and, where there is one, through the copying form, which leaves the destination's padding.
TEST(Flip, EveryExportAgainstIndexArithmetic) {
  using InPlace = int32_t (*)(uint8_t*, int32_t, int32_t);
  using Copying = int32_t (*)(const uint8_t*, uint8_t*, int32_t, int32_t);
  const struct {
    const char* name;
    InPlace in_place;
    Copying copying;
    int bytes, bits;
    bool rows;
  } flips[] = {
      {"FlipVerticalRGB24", FlipVerticalRGB24, nullptr, 3, 24, false},
      {"FlipVerticalRGB32", FlipVerticalRGB32, FlipVerticalRGB32Ex, 4, 32, false},
      {"FlipHorizontalRGB24", FlipHorizontalRGB24, nullptr, 3, 24, true},
      {"FlipHorizontalRGB32", FlipHorizontalRGB32, FlipHorizontalRGB32Ex, 4, 32, true},
      {"FlipHorizontalYUY2", FlipHorizontalYUY2, FlipHorizontalYUY2Ex, 2, 16, true},
  };
  for (const auto& flip : flips) {
    for (int w : {1, 2, 3, 5, 7, 16, 33, 67}) {
      if (w == 1 && !flip.rows) continue;
      for (int h : {2, 3, 4, 9}) {
        const int stride = BitmapStride(w, flip.bits);
        const auto src = Random(static_cast<size_t>(stride * h), w * 100u + h * 7u + flip.bits);
        auto want = Mirrored(src, w, h, flip.bytes, stride, flip.rows), f = src;
        EXPECT_EQ(flip.in_place(f.data(), w, h), 0);
        EXPECT_EQ(f, want) << flip.name << " " << w << "x" << h;
        if (flip.copying == nullptr) continue;
        std::vector<uint8_t> d(src.size(), 0x5A);
        for (int r = 0; r < h; ++r) {
          std::memset(&want[r * stride + flip.bytes * w], 0x5A, stride - flip.bytes * w);
        }
        EXPECT_EQ(flip.copying(src.data(), d.data(), w, h), 0);
        EXPECT_EQ(d, want) << flip.name << "Ex " << w << "x" << h;
      }
    }
  }
}

// 5 x 5 RGB24 at stride 16 into rows of 12; 6 x 4 RGB32 packed. Empty rectangles fail without
// writing; the null check sees the first pixel's address, so only a rectangle at the origin
// keeps a null frame null.
TEST(Crop, WorkedExamplesAndRefusals) {
  const auto src = Random(16 * 5, 4);
  std::vector<uint8_t> dst(12 * 2 + 8, 0xC3);
  const FrameKitRect rect24{1, 2, 4, 4};
  ASSERT_EQ(Crop24(src.data(), 5, 5, dst.data(), &rect24), 0);
  EXPECT_EQ(std::memcmp(&dst[0], &src[2 * 16 + 3], 9), 0);
  EXPECT_EQ(std::memcmp(&dst[12], &src[3 * 16 + 3], 9), 0);
  for (int i : {9, 10, 11, 21, 22, 23, 24, 31}) EXPECT_EQ(dst[i], 0xC3) << i;

  const auto src32 = Random(4 * 6 * 4, 5);
  std::vector<uint8_t> dst32(4 * 3 * 2, 0);
  const FrameKitRect rect{2, 1, 5, 3};
  ASSERT_EQ(Crop32(src32.data(), 6, 4, dst32.data(), &rect), 0);
  EXPECT_EQ(std::memcmp(&dst32[0], &src32[1 * 24 + 8], 12), 0);
  EXPECT_EQ(std::memcmp(&dst32[12], &src32[2 * 24 + 8], 12), 0);
  const auto before = dst32;
  for (const FrameKitRect bad :
       {FrameKitRect{2, 1, 2, 3}, FrameKitRect{2, 3, 5, 3}, FrameKitRect{4, 1, 2, 3}}) {
    EXPECT_EQ(Crop24(src32.data(), 6, 4, dst32.data(), &bad), -6);
    EXPECT_EQ(Crop32(src32.data(), 6, 4, dst32.data(), &bad), -6);
  }
  EXPECT_EQ(dst32, before);
  const FrameKitRect origin{0, 0, 2, 2};
  EXPECT_EQ(Crop24(nullptr, 6, 4, dst32.data(), &origin), -8);
  EXPECT_EQ(Crop32(src32.data(), 6, 4, nullptr, &rect), -8);
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

// Each side keeps its own stride; nothing happens when no row or column remains.
TEST(Cut, DropsLastColumnsAndRows) {
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
  std::vector<uint8_t> untouched(64, 0x77);
  ImageCutRGB24(src.data(), 5, 4, untouched.data(), 0, 4);
  ImageCutRGB24(src.data(), 5, 4, untouched.data(), 5, 0);
  ImageCutRGB32(src.data(), 4, 4, untouched.data(), 0, 9);
  ImageCutRGB32(src.data(), 4, 4, untouched.data(), 7, 1);
  EXPECT_EQ(untouched, std::vector<uint8_t>(64, 0x77));
}

}  // namespace
}  // namespace framekit

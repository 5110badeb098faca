// Rotation exports: 0 and 360 untouched and 720 resampled, the quarter turns stretched back over
// the frame, the turn about the centre with its black bands and corners, the one-shot and kept
// work buffers, and the primitive's export passing everything through.
#include <gtest/gtest.h>

#include <vector>

#include "framekit/framekit.h"
#include "primitives/core/memory.h"
#include "primitives/core/strides.h"
#include "primitives/resize/resize.h"

namespace framekit {
namespace {

using Bytes = std::vector<uint8_t>;

// A frame whose pixels (all channels) are 10 + x * 200 / (w - 1): columns from 10 to 210.
Bytes Columns(int32_t w, int32_t h, int bpp) {
  const int32_t stride = BitmapStride(w, 8 * bpp);
  Bytes f(static_cast<size_t>(stride) * h, 0);
  for (int32_t y = 0; y < h; ++y) {
    for (int32_t x = 0; x < w; ++x) {
      for (int c = 0; c < bpp; ++c) f[y * stride + bpp * x + c] = uint8_t(10 + x * 200 / (w - 1));
    }
  }
  return f;
}

void Rotate(int bpp, Bytes& frame, int32_t w, int32_t h, Bytes& temp, double angle, int stretch,
            uint8_t* buffer, int32_t* size) {
  (bpp == 3 ? RotateIn : RotateIn32)(frame.data(), w, h, temp.data(), angle, stretch, buffer, size);
}

TEST(RotateIn, WholeTurns) {
  for (const int bpp : {3, 4}) {
    const Bytes original = Columns(33, 21, bpp);
    for (const double angle : {0.0, 360.0, 720.0, -360.0}) {
      Bytes frame = original, temp(original.size(), 0x77);
      int32_t size = 0;
      Rotate(bpp, frame, 33, 21, temp, angle, 1, nullptr, &size);
      EXPECT_EQ(frame, original) << angle;  // a whole turn resamples exactly
      // 0 and 360 do nothing at all; the others went through temp.
      EXPECT_EQ(temp, angle == 0.0 || angle == 360.0 ? Bytes(temp.size(), 0x77) : original)
          << angle;
    }
  }
}

// 90 and 270 with stretching: columns become rows (90 counter-clockwise: the right edge on top),
// stretched back over the frame, so every row is one value and the rows run monotonically.
TEST(RotateIn, QuarterTurnsStretched) {
  const int32_t w = 64, h = 48;
  for (const int bpp : {3, 4}) {
    for (const double angle : {90.0, 270.0}) {
      Bytes frame = Columns(w, h, bpp), temp(static_cast<size_t>(BitmapStride(h, 8 * bpp)) * w);
      int32_t size = 0;
      Rotate(bpp, frame, w, h, temp, angle, 1, nullptr, &size);  // a one-shot buffer
      EXPECT_GT(size, 0);
      const int32_t stride = BitmapStride(w, 8 * bpp);
      for (int32_t y = 0; y < h; ++y) {
        for (int32_t x = 0; x < w; ++x) ASSERT_EQ(frame[y * stride + bpp * x], frame[y * stride]);
      }
      // The outer rows blend a little of their neighbours (the stretch is linear).
      EXPECT_NEAR(frame[0], angle == 90.0 ? 210 : 10, 2) << angle;
      EXPECT_NEAR(frame[(h - 1) * stride], angle == 90.0 ? 10 : 210, 2) << angle;
      for (int32_t y = 1; y < h; ++y) {
        ASSERT_EQ(frame[y * stride] < frame[(y - 1) * stride], angle == 90.0) << angle << " " << y;
      }
    }
  }
}

// 90 without stretching turns about the centre: bands of black left and right, the top and
// bottom cut. 45 leaves the corners black.
TEST(RotateIn, TurnsAboutTheCentre) {
  const int32_t w = 64, h = 48;
  for (const int bpp : {3, 4}) {
    const int32_t stride = BitmapStride(w, 8 * bpp);
    Bytes frame = Columns(w, h, bpp), temp(frame.size());
    int32_t size = 0;
    Rotate(bpp, frame, w, h, temp, 90, 0, nullptr, &size);
    for (int32_t y = 0; y < h; ++y) {
      for (int32_t x = 0; x < w; ++x) {
        const bool band = x < (w - h) / 2 || x >= (w + h) / 2;
        ASSERT_EQ(frame[y * stride + bpp * x] == 0, band) << x << "," << y;
      }
    }
    EXPECT_EQ(size, 0);  // this path uses no work buffer
    frame = Columns(w, h, bpp);
    Rotate(bpp, frame, w, h, temp, 45, 0, nullptr, &size);
    for (const int32_t at :
         {0, bpp * (w - 1), (h - 1) * stride, (h - 1) * stride + bpp * (w - 1)}) {
      EXPECT_EQ(frame[at], 0) << at;
    }
    EXPECT_NE(frame[h / 2 * stride + bpp * w / 2], 0);
  }
}

// A buffer of the asked size is the caller's to keep; with size 0 the call's own is released
// (the leak checker of the sanitizer build holds that).
TEST(RotateIn, WorkBuffers) {
  const int32_t w = 40, h = 30;
  Bytes frame = Columns(w, h, 3), temp(static_cast<size_t>(BitmapStride(h, 24)) * w);
  const prim::Rect whole{0, 0, h, w}, target{0, 0, w, h};
  int32_t asked = 0;
  ASSERT_EQ(prim::ippiResizeGetBufSize(&whole, &target, 3, prim::kResizeLinear, &asked), 0);
  uint8_t* kept = prim::ippsMalloc_8u(asked);
  int32_t size = asked;
  RotateIn(frame.data(), w, h, temp.data(), 270, 1, kept, &size);
  EXPECT_EQ(size, asked);
  kept[asked - 1] = 1;  // still the caller's
  prim::ippiFree(kept);
  size = 0;
  RotateIn(frame.data(), w, h, temp.data(), 270, 1, nullptr, &size);
  EXPECT_EQ(size, asked);
}

TEST(RotateIn, PrimitiveExportPassesThrough) {
  const Bytes src(3 * 4 * 2, 50);
  Bytes dst(3 * 2 * 4, 0);
  const FrameKitRegion src_roi{0, 0, 4, 2}, dst_roi{0, 0, 2, 4};
  EXPECT_EQ(
      zqippiRotate_8u_C3R(src.data(), {4, 2}, 12, &src_roi, dst.data(), 6, &dst_roi, 90, 0, 4, 2),
      0);
  EXPECT_EQ(dst, Bytes(dst.size(), 50));
  EXPECT_EQ(
      zqippiRotate_8u_C3R(src.data(), {4, 2}, 12, nullptr, dst.data(), 6, &dst_roi, 90, 0, 4, 2),
      -8);
  EXPECT_EQ(
      zqippiRotate_8u_C3R(src.data(), {4, 2}, 12, &src_roi, dst.data(), 6, &dst_roi, 90, 0, 4, 5),
      -22);
}

}  // namespace
}  // namespace framekit

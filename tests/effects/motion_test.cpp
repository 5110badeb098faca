// Motion and transition effects through their exports: the zoom's worked example and its
// offset rule, the pan's crop, the shake's moves, both mirrors, and the fade's ends and amount.
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "framekit/framekit.h"
#include "geometry/resize_ops.h"
#include "primitives/core/memory.h"
#include "primitives/resize/resize.h"

namespace framekit {
namespace {

using Bytes = std::vector<uint8_t>;

// Packed RGB24: blue 2 * x, green 2 * y, red x + y (bytes wrap).
Bytes Ramps(int32_t w, int32_t h) {
  Bytes f(static_cast<size_t>(3 * w * h));
  for (int32_t y = 0; y < h; ++y) {
    for (int32_t x = 0; x < w; ++x) {
      uint8_t* p = &f[static_cast<size_t>(3 * (y * w + x))];
      p[0] = uint8_t(2 * x), p[1] = uint8_t(2 * y), p[2] = uint8_t(x + y);
    }
  }
  return f;
}

TEST(Zoom, FactorOneDoesNothing) {
  Bytes frame = Ramps(20, 10), scratch(frame.size(), 0x33);
  const Bytes before = frame;
  int32_t size = 0;
  EffectZoom(frame.data(), 20, 10, scratch.data(), 1.0, 1.0, 5, -3, nullptr, &size);
  EXPECT_EQ(frame, before);
  EXPECT_EQ(scratch, Bytes(scratch.size(), 0x33));
  EXPECT_EQ(size, 0);
}

// Zoom 2 on 100 x 100 with no offset: crop {100, 100, 50, 50} (25 * 2 * 2), which the resize
// turns into source 25 .. 75 enlarged twice: destination x samples source x / 2 + 24.75.
TEST(Zoom, TwiceShowsTheCentre) {
  for (const int32_t w : {100, 101}) {  // 101: rows of 303 bytes, resized as aligned rows
    Bytes frame = Ramps(w, 100), scratch(frame.size());
    int32_t size = 0;  // a one-shot buffer (the leak checker holds its release)
    EffectZoom(frame.data(), w, 100, scratch.data(), 2.0, 2.0, 0, 0, nullptr, &size);
    EXPECT_GT(size, 0);
    EXPECT_EQ(frame, scratch);
    if (w != 100) continue;
    for (const int32_t x : {0, 50, 99}) {
      EXPECT_NEAR(frame[3 * (50 * w + x)], 2 * (x / 2.0 + 24.75), 1.0) << x;
      EXPECT_NEAR(frame[3 * (x * w + 50) + 1], 2 * (x / 2.0 + 24.75), 1.0) << x;
    }
  }
  // An offset moves the picture by offset * zoom: 10 more to the right shows 10 / 2 further on.
  Bytes frame = Ramps(100, 100), scratch(frame.size());
  int32_t size = 0;
  EffectZoom(frame.data(), 100, 100, scratch.data(), 2.0, 2.0, 10, 0, nullptr, &size);
  EXPECT_NEAR(frame[3 * (50 * 100 + 0)], 2 * (0 / 2.0 + 24.75 + 10), 1.0);
}

TEST(Pan, CropMovesWithTime) {
  const Bytes original = Ramps(100, 100);
  // Start the whole frame, end its bottom-right quarter; half way the crop is {25, 25, 75, 75}.
  Bytes frame = original, scratch(frame.size()), expected(frame.size(), 0);
  int32_t size = 0;
  EffectPan(frame.data(), 100, 100, scratch.data(), &size, 0, 0, 100, 100, 50, 50, 50, 50, 10, 20,
            15, nullptr, &size);
  uint8_t* buffer = nullptr;
  int32_t held = 0;
  geometry::ResizeRGB24Region(original.data(), {100, 100}, {25, 25, 75, 75}, expected.data(),
                              {0, 0, 100, 100}, prim::kResizeCubic, {&buffer, &held});
  prim::ippiFree(buffer);
  EXPECT_EQ(frame, expected);
  // At the start: the whole frame resized onto itself, which changes nothing. (Size 0 again: a
  // non-zero size with no buffer would have the call allocate one the caller cannot free.)
  frame = original;
  size = 0;
  EffectPan(frame.data(), 100, 100, scratch.data(), nullptr, 0, 0, 100, 100, 50, 50, 50, 50, 10, 20,
            10, nullptr, &size);
  EXPECT_EQ(frame, original);
}

// Column values are the row index: even columns move up, odd ones down, vacated rows keep theirs.
TEST(Shake, MovesAndNoMoves) {
  const int32_t w = 3, h = 6;
  Bytes frame(static_cast<size_t>(3 * w * h));
  for (int32_t y = 0; y < h; ++y) {
    for (int32_t i = 0; i < 3 * w; ++i) frame[static_cast<size_t>(3 * w * y + i)] = uint8_t(y);
  }
  const Bytes original = frame;
  for (const int32_t divisor : {1, 7, 0, -2}) {
    Bytes same = original;
    EffectShakeDown(same.data(), w, h, divisor);
    EXPECT_EQ(same, original) << divisor;
  }
  EffectShakeDown(frame.data(), w, h, 3);  // shift 2
  const int even[] = {2, 3, 4, 5, 4, 5}, odd[] = {0, 1, 0, 1, 2, 3};
  for (int32_t y = 0; y < h; ++y) {
    EXPECT_EQ(frame[static_cast<size_t>(3 * w * y)], even[y]) << y;
    EXPECT_EQ(frame[static_cast<size_t>(3 * w * y + 3)], odd[y]) << y;
    EXPECT_EQ(frame[static_cast<size_t>(3 * w * y + 6)], even[y]) << y;
  }
}

TEST(Mirror, DownAndRight) {
  const struct {
    int32_t w, h;
    bool down;
    std::vector<int> rows_or_columns;  // the index each row (column) ends up showing
  } cases[] = {{2, 5, true, {0, 1, 2, 1, 0}},
               {2, 4, true, {0, 1, 1, 0}},
               {5, 2, false, {0, 1, 2, 1, 0}},
               {4, 2, false, {0, 1, 1, 0}},
               {1, 3, false, {0}}};
  for (const auto& c : cases) {
    Bytes frame(static_cast<size_t>(3 * c.w * c.h));
    for (int32_t y = 0; y < c.h; ++y) {
      for (int32_t x = 0; x < c.w; ++x) {
        for (int ch = 0; ch < 3; ++ch) frame[3 * (y * c.w + x) + ch] = uint8_t(c.down ? y : x);
      }
    }
    (c.down ? EffectMirrorDown : EffectMirrorRight)(frame.data(), c.w, c.h);
    for (int32_t y = 0; y < c.h; ++y) {
      for (int32_t x = 0; x < c.w; ++x) {
        ASSERT_EQ(frame[3 * (y * c.w + x) + 2], c.rows_or_columns[c.down ? y : x])
            << c.w << "x" << c.h << " at " << x << "," << y;
      }
    }
  }
}

// The ends of both fades, and half way the general darkness formula on every byte value even on
// a width that is a multiple of 4 (whose EffectDarkness would take the fast path).
TEST(Fade, EndsAndAmount) {
  const int32_t w = 4, h = 22;
  Bytes values(static_cast<size_t>(3 * w * h));
  for (size_t i = 0; i < values.size(); ++i) values[i] = uint8_t(i);
  const struct {
    int64_t now;
    int32_t fade_in;
    bool black;
  } ends[] = {{100, 0, false}, {200, 0, true}, {100, 1, true}, {200, 1, false}};
  for (const auto& e : ends) {
    Bytes frame = values;
    EffectFadeInOut(frame.data(), w, h, 100, 200, e.now, e.fade_in);
    EXPECT_EQ(frame, e.black ? Bytes(frame.size(), 0) : values) << e.now << " " << e.fade_in;
  }
  Bytes frame = values;
  EffectFadeInOut(frame.data(), w, h, 100, 200, 150, 0);  // amount trunc(0.5 * 255) = 127
  for (size_t i = 0; i < frame.size(); ++i) {
    ASSERT_EQ(frame[i], values[i] - values[i] * 127 / 255) << i;
  }
}

}  // namespace
}  // namespace framekit

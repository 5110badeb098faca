// The rotate primitive's reference: its checks in order, quarter and half turns moving whole
// pixels under every kernel, the coverage rule at the region's outermost half pixel, a linear
// worked example, pixels left untouched, and the rotation shift.
#include "primitives/rotate/rotate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/random_frame.h"

namespace framekit::prim {
namespace {

using Bytes = std::vector<uint8_t>;

constexpr uint8_t kUntouched = 0xA5;

struct Turn {
  Size src{6, 4};
  Size dst{6, 4};
  double angle = 0, xs = 0, ys = 0;
  int32_t interpolation = 2;
  Rect src_roi{0, 0, 6, 4};
};

// The C3 reference on `src` (packed rows) into a packed destination of t.dst filled with
// kUntouched; returns the status.
Status Turned(const Turn& t, const Bytes& src, Bytes* dst, bool null_src = false) {
  dst->assign(static_cast<size_t>(3 * t.dst.width * t.dst.height), kUntouched);
  const Rect dst_roi{0, 0, t.dst.width, t.dst.height};
  return ref::ippiRotate_8u_C3R(null_src ? nullptr : src.data(), t.src, 3 * t.src.width, &t.src_roi,
                                dst->data(), 3 * t.dst.width, &dst_roi, t.angle, t.xs, t.ys,
                                t.interpolation);
}

TEST(RotateRef, ChecksInOrder) {
  const Bytes src(3 * 6 * 4, 7);
  Bytes dst;
  auto with = [](auto change) {
    Turn t;
    change(t);
    return t;
  };
  const struct {
    const char* what;
    Turn turn;
    bool null_src;
    Status status;
  } cases[] = {
      {"null source, bad size too", with([](Turn& t) { t.src.width = 0; }), true, -8},
      {"source width 0, code 3 too", with([](Turn& t) { t.src.width = 0, t.interpolation = 3; }),
       false, -6},
      {"negative region corner", with([](Turn& t) { t.src_roi.x = -1; }), false, -6},
      {"code 3", with([](Turn& t) { t.interpolation = 3; }), false, -22},
      {"code 8", with([](Turn& t) { t.interpolation = 8; }), false, -22},
      {"region right of the image", with([](Turn& t) { t.src_roi.x = 6; }), false, 29},
      {"angle NaN", with([](Turn& t) { t.angle = std::nan(""); }), false, 1},
      {"shift infinite", with([](Turn& t) { t.ys = INFINITY; }), false, 1},
      {"far shift: nothing inside", with([](Turn& t) { t.xs = 1e300; }), false, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Turned(c.turn, src, &dst, c.null_src), c.status) << c.what;
    EXPECT_EQ(dst, Bytes(dst.size(), kUntouched)) << c.what;
  }
}

// A source point (x, y) lands at (x cos a + y sin a + xs, -x sin a + y cos a + ys): with the
// shifts that keep a w x h picture on the destination, quarter and half turns are exact moves of
// each pixel centre.
TEST(RotateRef, QuarterAndHalfTurnsMoveWholePixels) {
  const int32_t w = 7, h = 5;
  test::Rng rng("rotate/quarter");
  const Bytes src = test::RandomFrame(rng, 3 * w, h);
  const struct {
    double angle, xs, ys;
    bool swap;  // destination h x w
  } cases[] = {{90, 0, w, true},
               {-270, 0, w, true},
               {180, w, h, false},
               {270, h, 0, true},
               {720, 0, 0, false}};
  for (const auto& c : cases) {
    const double a = c.angle * 3.14159265358979323846 / 180, cos = std::cos(a), sin = std::sin(a);
    for (const int32_t code : {1, 2, 4}) {
      Turn t;
      t.src = {w, h}, t.src_roi = {0, 0, w, h};
      t.dst = c.swap ? Size{h, w} : Size{w, h};
      t.angle = c.angle, t.xs = c.xs, t.ys = c.ys, t.interpolation = code;
      Bytes dst;
      ASSERT_EQ(Turned(t, src, &dst), 0);
      for (int32_t j = 0; j < h; ++j) {
        for (int32_t i = 0; i < w; ++i) {
          const double cx = i + 0.5, cy = j + 0.5;
          const auto x = static_cast<int32_t>(std::floor(cx * cos + cy * sin + c.xs));
          const auto y = static_cast<int32_t>(std::floor(-cx * sin + cy * cos + c.ys));
          for (int ch = 0; ch < 3; ++ch) {
            ASSERT_EQ(dst[3 * (y * t.dst.width + x) + ch], src[3 * (j * w + i) + ch])
                << c.angle << " code " << code << " pixel " << i << "," << j;
          }
        }
      }
    }
  }
}

// Angle 0, shifted: destination pixel X samples source X - xs. The region's outermost half
// pixel counts (the edge repeated), beyond it nothing is written; linear averages halves.
TEST(RotateRef, CoverageAndLinearWorkedExample) {
  const Bytes src = {0, 0, 0, 100, 100, 100, 200, 200, 200, 255, 255, 255};  // 4 x 1
  const struct {
    double xs;
    int32_t code;
    std::vector<int> row;  // first channel of each destination pixel, -1 untouched
  } cases[] = {
      {-0.5, 2, {50, 150, 228, -1}},  // halves; pixel 3 samples 3.5: past the half pixel
      {0.4, 2, {0, 60, 160, 233}},    // pixel 0 samples -0.4: inside, the edge repeated
      {0.6, 2, {-1, 40, 140, 222}},   // -0.6: outside
      {0.6, 1, {-1, 0, 100, 200}},   {-0.5, 1, {100, 200, 255, -1}},  // nearest rounds half up
  };
  for (const auto& c : cases) {
    Turn t;
    t.src = {4, 1}, t.dst = {4, 1}, t.src_roi = {0, 0, 4, 1};
    t.xs = c.xs, t.interpolation = c.code;
    Bytes dst;
    ASSERT_EQ(Turned(t, src, &dst), 0);
    for (int x = 0; x < 4; ++x) {
      EXPECT_EQ(dst[3 * x], c.row[x] < 0 ? kUntouched : c.row[x])
          << "shift " << c.xs << " code " << c.code << " pixel " << x;
    }
  }
}

TEST(RotateRef, CornersOfATiltedPictureUntouched) {
  Turn t;
  t.src = t.dst = {40, 30}, t.src_roi = {0, 0, 40, 30}, t.angle = 45;
  ippiGetRotateShift(20, 15, 45, &t.xs, &t.ys);
  const Bytes src(3 * 40 * 30, 9);
  Bytes dst;
  ASSERT_EQ(Turned(t, src, &dst), 0);
  for (const int32_t at : {0, 39, 29 * 40, 29 * 40 + 39}) EXPECT_EQ(dst[3 * at], kUntouched) << at;
  EXPECT_EQ(dst[3 * (15 * 40 + 20)], 9);
}

TEST(RotateRef, RotationShift) {
  double xs = -1, ys = -1;
  ippiGetRotateShift(100, 50, 90, &xs, &ys);
  EXPECT_EQ(xs, 50);
  EXPECT_EQ(ys, 150);
  ippiGetRotateShift(100, 50, 180, &xs, &ys);
  EXPECT_EQ(xs, 200);
  EXPECT_EQ(ys, 100);
  const double a = 30 * 3.14159265358979323846 / 180;
  ippiGetRotateShift(100, 50, 30, &xs, &ys);
  EXPECT_NEAR(xs, 100 - (100 * std::cos(a) + 50 * std::sin(a)), 1e-12);
  EXPECT_NEAR(ys, 50 - (-100 * std::sin(a) + 50 * std::cos(a)), 1e-12);
  ippiGetRotateShift(1, 2, 3, nullptr, nullptr);  // null outputs skipped
}

}  // namespace
}  // namespace framekit::prim

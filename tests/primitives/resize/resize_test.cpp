// The resize primitive's reference: its checks in order, the small-source fallbacks, the extent
// and what stays untouched, kernels that must reproduce or average exactly, and every kernel
// against a double-precision model of the same weights. Then the weight tables the vector
// bodies keep in the work buffer from call to call.
#include "primitives/resize/resize.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <tuple>
#include <vector>

#include "primitives/resize/resize_kernels.h"
#include "support/random_frame.h"
#include "support/scoped_class.h"

namespace framekit::prim {
namespace {

using Bytes = std::vector<uint8_t>;

struct Call {
  Size src_size{8, 8};
  Rect src_roi{0, 0, 8, 8};
  Rect dst_roi{0, 0, 16, 16};
  double xf = 2, yf = 2, xs = 0, ys = 0;
  int32_t interpolation = kResizeLinear;
};

// Runs the C3 reference on `src` (packed rows) into a 32 x 32 destination (packed) that starts
// as 0x5A bytes; returns the status, the destination in `dst`.
Status Resize(const Call& c, const Bytes& src, Bytes* dst, bool null_buffer = false) {
  int32_t size = 0;
  const Rect whole{0, 0, c.src_size.width, c.src_size.height};
  Bytes buffer(1 << 20);
  if (ippiResizeGetBufSize(&whole, &c.dst_roi, 3, c.interpolation, &size) == 0) {
    buffer.resize(static_cast<size_t>(size));
  }
  dst->assign(32 * 32 * 3, 0x5A);
  return ref::ippiResizeSqrPixel_8u_C3R(src.data(), c.src_size, 3 * c.src_size.width, &c.src_roi,
                                        dst->data(), 32 * 3, &c.dst_roi, c.xf, c.yf, c.xs, c.ys,
                                        c.interpolation, null_buffer ? nullptr : buffer.data());
}

Bytes RandomSource(int32_t w, int32_t h, const char* name) {
  test::Rng rng(name);
  return test::RandomFrame(rng, 3 * w, h);
}

TEST(ResizeRef, ChecksInOrder) {
  const Bytes src = RandomSource(8, 8, "resize/checks");
  Bytes dst;
  auto with = [](auto change) {
    Call c;
    change(c);
    return c;
  };
  const int32_t aa = kResizeAntialias, smooth = kResizeSmoothEdge;
  const struct {
    const char* what;
    Call call;
    Status status;
  } cases[] = {
      {"size 0 and factor 0: size first", with([](Call& c) { c.src_size.width = 0, c.xf = 0; }),
       -6},
      {"negative region corner", with([](Call& c) { c.src_roi.x = -1; }), -6},
      {"empty destination region", with([](Call& c) { c.dst_roi.height = 0; }), -6},
      {"factor 0 and code 3: factor first", with([](Call& c) { c.xf = 0, c.interpolation = 3; }),
       -23},
      {"factor NaN", with([](Call& c) { c.yf = std::nan(""); }), -23},
      {"code 3", with([](Call& c) { c.interpolation = 3; }), -22},
      {"two flags", with([](Call& c) { c.interpolation = 2 | aa | smooth; }), -22},
      {"supersampling enlarging", with([](Call& c) { c.interpolation = 8; }), -23},
      {"region right of the image", with([](Call& c) { c.src_roi.x = 8; }), 29},
      {"extent shifted away", with([](Call& c) { c.xs = 100; }), 1},
      {"antialiasing on nearest", with([](Call& c) { c.interpolation = 1 | aa; }), 46},
      {"antialiasing on linear", with([](Call& c) { c.interpolation = 2 | aa; }), 0},
  };
  for (const auto& k : cases) {
    EXPECT_EQ(Resize(k.call, src, &dst), k.status) << k.what;
    const bool written = k.status == 0 || k.status == 46;
    EXPECT_EQ(dst[0] != 0x5A || dst[1] != 0x5A || dst[2] != 0x5A, written) << k.what;
  }
  EXPECT_EQ(Resize(Call{}, src, &dst, /*null_buffer=*/true), -8);
  Call bad;
  bad.src_size.width = 0;
  EXPECT_EQ(Resize(bad, src, &dst, true), -8) << "null pointers come before sizes";
}

TEST(ResizeRef, SmallSourcesFallBack) {
  for (const auto& [side, asked, used] : {std::tuple{5, 16, 4}, {3, 4, 2}, {3, 16, 2}, {5, 6, 6}}) {
    const Bytes src = RandomSource(side, side, "resize/fallback");
    Call c;
    c.src_size = {side, side};
    c.src_roi = {0, 0, side, side};
    c.dst_roi = {0, 0, 2 * side + 1, 2 * side};
    c.xf = (2.0 * side + 1) / side;
    c.interpolation = asked;
    Bytes a, b;
    ASSERT_EQ(Resize(c, src, &a), 0);
    c.interpolation = used;
    ASSERT_EQ(Resize(c, src, &b), 0);
    EXPECT_EQ(a, b) << side << ": " << asked << " as " << used;
  }
}

TEST(ResizeRef, ExtentAndUntouchedPixels) {
  const Bytes src = RandomSource(8, 8, "resize/extent");
  Bytes dst;
  Call c;  // 8 x 8 doubled, shifted by 3.3 right and -2 down, into the region {2, 1, 20, 12}
  c.xs = 3.3, c.ys = -2;
  c.dst_roi = {2, 1, 20, 12};
  ASSERT_EQ(Resize(c, src, &dst), 0);
  // X0 = max(3.3, 2) -> trunc(3.8) = 3; X1 = min(19.3, 22) -> trunc(19.8) = 19;
  // Y0 = max(-2, 1) = 1; Y1 = min(14, 13) = 13.
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      const bool inside = x >= 3 && x < 19 && y >= 1 && y < 13;
      const uint8_t* px = &dst[3 * (32 * y + x)];
      const bool untouched = px[0] == 0x5A && px[1] == 0x5A && px[2] == 0x5A;
      if (!inside) {
        ASSERT_TRUE(untouched) << x << "," << y;
      }
    }
  }
  // The edge flags round the extent inwards: X0 = ceil(3.3) = 4, and smooth the border, which
  // keeps a flat picture flat.
  const Bytes flat(8 * 8 * 3, 77);
  c.interpolation = kResizeCubic | kResizeSmoothEdge;
  ASSERT_EQ(Resize(c, flat, &dst), 0);
  EXPECT_EQ(dst[3 * (32 * 5 + 3)], 0x5A);
  EXPECT_EQ(dst[3 * (32 * 5 + 4)], 77);
  EXPECT_EQ(dst[3 * (32 * 5 + 18)], 77);
}

TEST(ResizeRef, KernelsThatMustReproduceOrAverage) {
  const Bytes src = RandomSource(12, 10, "resize/identity");
  for (const int32_t code : {1, 2, 4, 6, 8, 16}) {
    Call c;
    c.src_size = {12, 10}, c.src_roi = {0, 0, 12, 10}, c.dst_roi = {0, 0, 12, 10};
    c.xf = c.yf = 1, c.interpolation = code;
    Bytes dst;
    ASSERT_EQ(Resize(c, src, &dst), 0);
    for (int y = 0; y < 10; ++y) {
      ASSERT_EQ(0, std::memcmp(&dst[3 * 32 * y], &src[36 * y], 36)) << code << " row " << y;
    }
  }
  // Supersampling by 2: the mean of each 2 x 2 block, rounded half up.
  Call c;
  c.src_size = {12, 10}, c.src_roi = {0, 0, 12, 10}, c.dst_roi = {0, 0, 6, 5};
  c.xf = c.yf = 0.5, c.interpolation = kResizeSuper;
  Bytes dst;
  ASSERT_EQ(Resize(c, src, &dst), 0);
  for (int y = 0; y < 5; ++y) {
    for (int x = 0; x < 6; ++x) {
      for (int ch = 0; ch < 3; ++ch) {
        int sum = 0;
        for (int k = 0; k < 4; ++k) sum += src[3 * (12 * (2 * y + k / 2) + 2 * x + k % 2) + ch];
        ASSERT_EQ(dst[3 * (32 * y + x) + ch], (sum + 2) / 4) << x << "," << y;
      }
    }
  }
}

// The same kernels in double precision, unquantised: the fixed point stays within 1.
TEST(ResizeRef, EveryKernelWithinOneOfItsDoubleModel) {
  const int32_t w = 13, h = 11;
  const Bytes src = RandomSource(w, h, "resize/model");
  const struct { int32_t dw, dh; } sizes[] = {{31, 27}, {7, 5}, {20, 6}};
  for (const int32_t code : {2, 4, 5, 6, 7, 16, 2 | kResizeAntialias, 16 | kResizeAntialias, 8}) {
    for (const auto& s : sizes) {
      Call c;
      c.src_size = {w, h}, c.src_roi = {0, 0, w, h}, c.dst_roi = {0, 0, s.dw, s.dh};
      c.xf = static_cast<double>(s.dw) / w, c.yf = static_cast<double>(s.dh) / h;
      c.interpolation = code;
      if (code == 8 && (c.xf > 1 || c.yf > 1)) continue;
      Bytes dst;
      ASSERT_EQ(Resize(c, src, &dst), 0);
      // Weights of one axis as doubles, from the same table builder before rounding.
      auto weights = [&](double f, int32_t n, int32_t size, std::vector<std::vector<double>>* out,
                         std::vector<std::vector<int32_t>>* index) {
        const int64_t taps = resize::TapCount(resize::Code(code), code, f);
        std::vector<int32_t> idx(static_cast<size_t>(n * taps));
        std::vector<int16_t> wq(static_cast<size_t>(n * taps));
        resize::Axis axis{n, taps, idx.data(), wq.data()};
        resize::FillAxis(axis, resize::Code(code), code, f, 0, 0, 0, size);
        out->assign(static_cast<size_t>(n), {});
        index->assign(static_cast<size_t>(n), {});
        for (int32_t k = 0; k < n; ++k) {
          for (int64_t t = 0; t < taps; ++t) {
            (*out)[k].push_back(wq[k * taps + t] / 16384.0);
            (*index)[k].push_back(idx[k * taps + t]);
          }
        }
      };
      std::vector<std::vector<double>> wx, wy;
      std::vector<std::vector<int32_t>> ix, iy;
      weights(c.xf, s.dw, w, &wx, &ix);
      weights(c.yf, s.dh, h, &wy, &iy);
      for (int y = 0; y < s.dh; ++y) {
        for (int x = 0; x < s.dw; ++x) {
          for (int ch = 0; ch < 3; ++ch) {
            double v = 0;
            for (size_t a = 0; a < wy[y].size(); ++a) {
              for (size_t b = 0; b < wx[x].size(); ++b) {
                v += wy[y][a] * wx[x][b] * src[3 * (w * iy[y][a] + ix[x][b]) + ch];
              }
            }
            const double want = std::min(255.0, std::max(0.0, v));
            ASSERT_NEAR(dst[3 * (32 * y + x) + ch], want, 1.0)
                << "code " << code << " " << s.dw << "x" << s.dh << " at " << x << "," << y;
          }
        }
      }
    }
  }
}

TEST(ResizeRef, KernelValues) {
  const struct {
    int32_t code;
    double d, w;
  } values[] = {{2, 0.25, 0.75},
                {4, 0, 1},
                {4, 0.5, 0.5625},
                {4, 1.5, -0.0625},
                {5, 0, 2.0 / 3.0},
                {5, 1, 1.0 / 6.0},
                {6, 0.5, 0.5625},
                {6, 1.5, -0.0625},
                {7, 0, 0.8333333333333334},
                {7, 1.5, -0.0270833333333331},
                {16, 0.5, 0.6079271018540267},
                {16, 1, 0},
                {16, 2.5, 0.0243170840741611},
                {4, 2, 0},
                {16, 3, 0}};
  for (const auto& v : values) {
    EXPECT_NEAR(resize::Kernel(v.code, v.d), v.w, 1e-12) << v.code << " at " << v.d;
  }
}

TEST(ResizeRef, BufferSizeChecks) {
  const Rect src{0, 0, 640, 480}, dst{0, 0, 1280, 720}, empty{0, 0, 0, 5};
  int32_t size = -1;
  EXPECT_EQ(ippiResizeGetBufSize(&src, &dst, 3, kResizeLanczos, nullptr), -8);
  EXPECT_EQ(ippiResizeGetBufSize(&empty, &dst, 3, kResizeLanczos, &size), -6);
  EXPECT_EQ(ippiResizeGetBufSize(&src, &dst, 2, kResizeLanczos, &size), -6);
  EXPECT_EQ(ippiResizeGetBufSize(&src, &dst, 3, 3, &size), -22);
  EXPECT_EQ(size, -1);
  EXPECT_EQ(ippiResizeGetBufSize(&src, &dst, 4, kResizeLanczos, &size), 0);
  EXPECT_GT(size, 0);
}

// One work buffer through a run of calls on every class this machine has: the same call twice
// (the tables found ready), the tables' bytes changed by the caller, other kernels, regions and
// shifts, and other classes' tables left behind. Every result must be the reference's.
TEST(ResizeTables, KeptInTheBufferAndRebuiltWhenStale) {
  const Size src_size{200, 120};
  const Rect whole{0, 0, 200, 120}, dst_roi{0, 0, 133, 80};
  struct Step {
    int32_t interpolation;
    Rect src_roi;
    double xs;
    bool scribble;  // change a byte of the tables before the call
  };
  const Step steps[] = {{kResizeLinear, whole, 0, false},  {kResizeLinear, whole, 0, false},
                        {kResizeLinear, whole, 0, true},   {kResizeNearest, whole, 0, false},
                        {kResizeNearest, whole, 0, false}, {kResizeSuper, whole, 0, false},
                        {6, {3, 5, 150, 100}, 0.5, false}, {kResizeLinear, whole, 0.25, false},
                        {kResizeLinear, whole, 0, false}};
  for (const int channels : {3, 4}) {
    const auto fn = channels == 3 ? ippiResizeSqrPixel_8u_C3R : ippiResizeSqrPixel_8u_C4R;
    const auto reference =
        channels == 3 ? ref::ippiResizeSqrPixel_8u_C3R : ref::ippiResizeSqrPixel_8u_C4R;
    test::Rng rng("resize/tables");
    const Bytes src = test::RandomFrame(rng, channels * src_size.width, src_size.height);
    int32_t size = 0, largest = 0;
    for (const Step& k : steps) {
      ASSERT_EQ(ippiResizeGetBufSize(&whole, &dst_roi, channels, k.interpolation, &size), 0);
      largest = size > largest ? size : largest;
    }
    Bytes kept(static_cast<size_t>(largest), 0), scratch = kept;
    std::vector<int> classes;  // up and down again: each class finds the others' tables
    for (int cls = 0; cls <= DetectedClass(); ++cls) classes.push_back(cls);
    classes.insert(classes.end(), classes.rbegin(), classes.rend());
    for (const int cls : classes) {
      const test::ScopedClassIndex forced(cls);
      for (const Step& k : steps) {
        if (k.scribble) kept[512] ^= 1;
        auto run = [&](ResizeFn f, uint8_t* buffer) {
          Bytes dst(static_cast<size_t>(channels) * 133 * 80, 0x5A);
          const double xf = 133.0 / k.src_roi.width, yf = 80.0 / k.src_roi.height;
          EXPECT_EQ(f(src.data(), src_size, channels * 200, &k.src_roi, dst.data(), channels * 133,
                      &dst_roi, xf, yf, k.xs, 0, k.interpolation, buffer),
                    0);
          return dst;
        };
        ASSERT_EQ(run(fn, kept.data()), run(reference, scratch.data()))
            << "C" << channels << " class " << cls << " code " << k.interpolation;
      }
    }
  }
}

}  // namespace
}  // namespace framekit::prim

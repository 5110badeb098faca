// Resize exports and operations: the letterbox fit's worked examples, the mode mapping, the
// work-buffer cache, the letterbox's placement and clearing, and YUY2 nearest neighbour.
#include "geometry/resize_ops.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "framekit/framekit.h"
#include "primitives/core/memory.h"
#include "primitives/core/strides.h"
#include "primitives/resize/resize.h"
#include "support/random_frame.h"

namespace framekit::geometry {
namespace {

using Bytes = std::vector<uint8_t>;

TEST(Letterbox, FitWorkedExamples) {
  const struct {
    Size src, box;
    Rect fit;
  } cases[] = {
      {{640, 480}, {1280, 480}, {320, 0, 640, 480}},  {{640, 480}, {480, 481}, {0, 60, 480, 360}},
      {{640, 480}, {481, 1000}, {-1, 320, 482, 360}},  // odd side: one larger, one pixel early
      {{640, 480}, {640, 480}, {0, 0, 640, 480}},     {{640, 480}, {0, 480}, {0, 240, 0, 0}},
  };
  for (const auto& c : cases) {
    const Rect r = FitLetterboxRect(c.src, c.box);
    EXPECT_EQ(r.x, c.fit.x) << c.box.width << "x" << c.box.height;
    EXPECT_EQ(r.y, c.fit.y) << c.box.width << "x" << c.box.height;
    EXPECT_EQ(r.width, c.fit.width) << c.box.width << "x" << c.box.height;
    EXPECT_EQ(r.height, c.fit.height) << c.box.width << "x" << c.box.height;
  }
}

Bytes Source(int32_t w, int32_t h, int bpp, const char* name) {
  test::Rng rng(name);
  return test::RandomFrame(rng, RowByteStride(bpp * w), h);
}

TEST(ResizeRGB24, ModesMapToCodes) {
  const Bytes src = Source(9, 7, 3, "resize/modes");
  for (const auto& [mode, code] : {std::pair{1, 1}, {2, 2}, {3, 4}, {4, 16}, {0, 1}, {5, 1}}) {
    Bytes via_export(static_cast<size_t>(RowByteStride(3 * 20) * 15));
    Bytes direct = via_export;
    uint8_t* buffer = nullptr;
    int32_t size = 0;
    ASSERT_EQ(::ResizeRGB24(src.data(), 9, 7, via_export.data(), 20, 15, mode, &buffer, &size), 0);
    const prim::Rect whole{0, 0, 9, 7}, target{0, 0, 20, 15};
    ASSERT_EQ(prim::ref::ippiResizeSqrPixel_8u_C3R(src.data(), {9, 7}, RowByteStride(27), &whole,
                                                   direct.data(), RowByteStride(60), &target,
                                                   20.0 / 9, 15.0 / 7, 0, 0, code, buffer),
              0);
    EXPECT_EQ(via_export, direct) << "mode " << mode;
    zqippiFree(buffer);
  }
}

// Allocations counted through the primitive memory hooks.
int g_allocations = 0;
bool g_fail = false;
void* Allocate(size_t n) {
  ++g_allocations;
  return g_fail ? nullptr : std::malloc(n);
}

TEST(ResizeRGB24, CacheReusesAnEqualSizeAndReplacesAnother) {
  prim::SetAllocationHooks(&Allocate, &std::free);
  g_allocations = 0;
  const Bytes src = Source(16, 12, 3, "resize/cache");
  Bytes dst(static_cast<size_t>(RowByteStride(3 * 40) * 30));
  uint8_t* buffer = nullptr;
  int32_t size = 0;
  EXPECT_EQ(::ResizeRGB24(src.data(), 16, 12, dst.data(), 32, 24, 4, &buffer, &size), 0);
  uint8_t* const first = buffer;
  EXPECT_EQ(::ResizeRGB24(src.data(), 16, 12, dst.data(), 32, 24, 4, &buffer, &size), 0);
  EXPECT_EQ(g_allocations, 1) << "two equal calls allocate once";
  EXPECT_EQ(buffer, first);
  EXPECT_EQ(::ResizeRGB24(src.data(), 16, 12, dst.data(), 40, 30, 4, &buffer, &size), 0);
  EXPECT_EQ(g_allocations, 2) << "another size reallocates";
  int32_t asked = 0;
  const prim::Rect whole{0, 0, 16, 12}, target{0, 0, 40, 30};
  prim::ippiResizeGetBufSize(&whole, &target, 3, prim::kResizeLanczos, &asked);
  EXPECT_EQ(size, asked);
  zqippiFree(buffer);
  // A failed allocation is passed on: the primitive reports the null buffer.
  g_fail = true;
  buffer = nullptr;
  EXPECT_EQ(::ResizeRGB24(src.data(), 16, 12, dst.data(), 32, 24, 2, &buffer, &size), -8);
  EXPECT_EQ(buffer, nullptr);
  g_fail = false;
  EXPECT_EQ(::ResizeRGB24(src.data(), 16, 12, dst.data(), 32, 24, 2, nullptr, &size), -8);
  prim::SetAllocationHooks(nullptr, nullptr);
}

TEST(ResizeRGB32LB, PlacesThePictureClearsTheSourceAndKeepsTheBars) {
  const struct {
    FrameKitSize src, dst;
    Rect fit;
  } cases[] = {{{64, 48}, {128, 48}, {32, 0, 64, 48}},
               {{64, 48}, {48, 49}, {0, 6, 48, 36}},
               {{64, 48}, {49, 100}, {-1, 32, 50, 36}}};  // clipped on the left
  for (const auto& c : cases) {
    Bytes src = Source(c.src.width, c.src.height, 4, "resize/letterbox");
    const Bytes original = src;
    Bytes work(static_cast<size_t>(4 * c.dst.width * c.dst.height), 0x11);
    Bytes dst(work.size(), 0x99);
    const FrameKitRect crop{0, 0, c.src.width, c.src.height};
    ::ResizeRGB32LB(src.data(), c.src, &crop, dst.data(), work.data(), c.dst, 1, nullptr, 0);
    EXPECT_EQ(src, Bytes(src.size(), 0)) << "the source is cleared";
    EXPECT_EQ(dst, work) << "dst is work";
    // Inside the fit: the picture scaled (nearest), else work's own bytes.
    for (int32_t y = 0; y < c.dst.height; ++y) {
      for (int32_t x = 0; x < c.dst.width; ++x) {
        const uint8_t* px = &dst[static_cast<size_t>(4 * (c.dst.width * y + x))];
        const bool inside =
            x >= c.fit.x && x < c.fit.x + c.fit.width && y >= c.fit.y && y < c.fit.y + c.fit.height;
        if (!inside) {
          ASSERT_EQ(px[0], 0x11) << x << "," << y;
          continue;
        }
        const double xf = static_cast<double>(c.fit.width) / c.src.width;
        const double yf = static_cast<double>(c.fit.height) / c.src.height;
        const auto sx = static_cast<int32_t>((x - c.fit.x + 0.5) / xf);
        const auto sy = static_cast<int32_t>((y - c.fit.y + 0.5) / yf);
        ASSERT_EQ(px[1], original[static_cast<size_t>(4 * (c.src.width * sy + sx) + 1)])
            << x << "," << y;
      }
    }
  }
}

TEST(ResizeYUY2, NearestPixelsAndSharedPairChroma) {
  // 4 x 1 source: pixels Y 10, 20, 30, 40; pairs (U 1, V 2) and (U 3, V 4).
  const Bytes src = {10, 1, 20, 2, 30, 3, 40, 4};
  Bytes dst(16, 0);
  EXPECT_EQ(::ResizeYUY2(src.data(), dst.data(), 4, 1, 8, 1), 0);
  EXPECT_EQ(dst, (Bytes{10, 1, 10, 2, 20, 1, 20, 2, 30, 3, 30, 4, 40, 3, 40, 4}));
  // Odd source width: the last pair is cut short and lends its U for V.
  const Bytes odd = {10, 1, 20, 2, 30, 3, 0, 0};
  Bytes two(8, 0);
  EXPECT_EQ(::ResizeYUY2(odd.data(), two.data(), 3, 1, 2, 1), 0);
  EXPECT_EQ(two[0], 10);
  EXPECT_EQ(::ResizeYUY2(odd.data(), two.data(), 3, 1, 1, 1), 0);  // pixel 1.5 -> 1, pair 0
  EXPECT_EQ(two[0], 20);
  Bytes four(8, 0);
  EXPECT_EQ(::ResizeYUY2(odd.data(), four.data(), 3, 1, 4, 1), 0);
  EXPECT_EQ(four, (Bytes{10, 1, 20, 2, 20, 3, 30, 3}));  // the cut pair lends U for V
  EXPECT_EQ(::ResizeYUY2(src.data(), dst.data(), 0, 1, 8, 1), -6);
  EXPECT_EQ(::ResizeYUY2(nullptr, dst.data(), 4, 1, 8, 1), -8);
}

}  // namespace
}  // namespace framekit::geometry

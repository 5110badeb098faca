// The constant blend of every class on every (c, s) byte pair at every factor: its vector bodies
// find the ties of the nearest-even rounding from the bytes' difference, so every tie is tried.
#include <gtest/gtest.h>

#include <vector>

#include "primitives/blend/blend.h"

namespace framekit::prim {
namespace {

// c + (s - c) t / 256 rounded to nearest, ties to even, from the definition.
uint8_t Expected(int c, int s, int t) {
  const int p = (s - c) * t;
  const int q = p >= 0 ? p / 256 : -((-p + 255) / 256);  // floor
  const int r = p - 256 * q;
  return static_cast<uint8_t>(c + q + ((r > 128 || (r == 128 && (q & 1) != 0)) ? 1 : 0));
}

TEST(BlendConst, EveryClassEveryPairEveryFactor) {
  // One row of the 65536 pairs, 3 bytes a pixel: (c, s) at byte i is (i >> 8, i & 255).
  constexpr int32_t kPixels = 65536 / 3 + 1;
  std::vector<uint8_t> src(3 * kPixels), initial(3 * kPixels);
  for (size_t i = 0; i < src.size(); ++i) {
    initial[i] = static_cast<uint8_t>((i % 65536) >> 8);
    src[i] = static_cast<uint8_t>(i & 255);
  }
  for (int cls = 0; cls <= DetectedClass(); ++cls) {
    for (int32_t t = 0; t <= 256; ++t) {
      std::vector<uint8_t> dst = initial;
      ASSERT_EQ(BlendConst_8u_C3RTable[cls](src.data(), 0, dst.data(), 0, {kPixels, 1}, t), 0);
      for (size_t i = 0; i < dst.size(); ++i) {
        ASSERT_EQ(dst[i], Expected(initial[i], src[i], t))
            << "class " << cls << " t " << t << " c " << +initial[i] << " s " << +src[i];
      }
    }
  }
}

}  // namespace
}  // namespace framekit::prim

// The rounded blends of every class on every (c, s) byte pair at every factor or alpha: the vector
// bodies find the ties of the nearest-even rounding in their own ways, so every tie is tried.
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
    if (cls > 0 && BlendConst_8u_C3RTable[cls] == BlendConst_8u_C3RTable[cls - 1]) continue;
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

// The alpha blend likewise: every (c, s) pair under every alpha, unscaled and scaled.
TEST(BlendAlpha, EveryClassEveryPairEveryAlpha) {
  constexpr int32_t kPixels = 65536;  // pixel i: c = i >> 8, s = i & 255 in all three channels
  std::vector<uint8_t> src(4 * kPixels), initial(3 * kPixels);
  for (int32_t i = 0; i < kPixels; ++i) {
    for (int k = 0; k < 3; ++k) {
      initial[static_cast<size_t>(3 * i + k)] = static_cast<uint8_t>(i >> 8);
      src[static_cast<size_t>(4 * i + k)] = static_cast<uint8_t>(i & 255);
    }
  }
  for (int cls = 0; cls <= DetectedClass(); ++cls) {
    if (cls > 0 && BlendAlpha_8u_AC4C3RTable[cls] == BlendAlpha_8u_AC4C3RTable[cls - 1]) continue;
    for (const int32_t scale : {256, 100}) {
      for (int32_t alpha = 0; alpha < 256; alpha += scale == 256 ? 1 : 7) {
        for (int32_t i = 0; i < kPixels; ++i) src[static_cast<size_t>(4 * i + 3)] = uint8_t(alpha);
        std::vector<uint8_t> dst = initial;
        ASSERT_EQ(BlendAlpha_8u_AC4C3RTable[cls](src.data(), 0, dst.data(), 0, {kPixels, 1}, scale),
                  0);
        const int a = alpha * scale / 256;
        for (size_t i = 0; i < dst.size(); ++i) {
          ASSERT_EQ(dst[i], Expected(initial[i], src[i / 3 * 4], a))
              << "class " << cls << " scale " << scale << " alpha " << alpha << " byte " << i;
        }
      }
    }
  }
}

}  // namespace
}  // namespace framekit::prim

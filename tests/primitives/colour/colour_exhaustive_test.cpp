// The 4:2:2-to-BGR bodies of every class on every (Y, U, V) triple, against the per-pixel
// formula: the vector bodies regroup the fixed-point sums, and only the extremes of each input
// show a regrouping that loses a carry or a sign.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <vector>

#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"

namespace framekit::prim {
namespace {

TEST(YCbCr422ToBGR, EveryClassMatchesTheFormulaOnEveryTriple) {
  // One frame per U: row v holds V = v, and its 128 groups carry Y = 0..255 in order.
  constexpr int32_t kWidth = 256, kHeight = 256;
  std::vector<uint8_t> src(size_t{2} * kWidth * kHeight);
  std::vector<uint8_t> dst(size_t{3} * kWidth * kHeight);
  std::set<PackedConvertFn> seen;
  for (int cls = 0; cls <= DetectedClass(); ++cls) {
    const PackedConvertFn fn = kYCbCr422ToBGRTable[cls];
    if (!seen.insert(fn).second) continue;
    int mismatches = 0;
    for (int32_t u = 0; u < 256; ++u) {
      for (int32_t v = 0; v < kHeight; ++v) {
        uint8_t* row = &src[size_t{2} * kWidth * v];
        for (int32_t g = 0; g < kWidth / 2; ++g) {
          row[4 * g] = static_cast<uint8_t>(2 * g);
          row[4 * g + 1] = static_cast<uint8_t>(u);
          row[4 * g + 2] = static_cast<uint8_t>(2 * g + 1);
          row[4 * g + 3] = static_cast<uint8_t>(v);
        }
      }
      ASSERT_EQ(fn(src.data(), 2 * kWidth, dst.data(), 3 * kWidth, {kWidth, kHeight}), 0);
      for (int32_t v = 0; v < kHeight; ++v) {
        for (int32_t y = 0; y < kWidth; ++y) {
          uint8_t want[3];
          YuvToBgr422(y, u - 128, v - 128, want);
          const uint8_t* got = &dst[size_t{3} * (kWidth * v + y)];
          for (int c = 0; c < 3; ++c) {
            if (got[c] != want[c] && ++mismatches <= 5) {
              ADD_FAILURE() << "class " << cls << " Y " << y << " U " << u << " V " << v
                            << " byte " << c << ": " << int{got[c]} << " != " << int{want[c]};
            }
          }
        }
      }
    }
    EXPECT_EQ(mismatches, 0) << "class " << cls;
  }
}

}  // namespace
}  // namespace framekit::prim

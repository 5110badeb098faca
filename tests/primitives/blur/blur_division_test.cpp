// The blur's divisions over their whole domains: the 16-bit multiply-highs against exact
// division, and the integer form of the rounded mean against the single-precision one it
// replaces, for every window count it is used with and every sum that count allows.
#include <gtest/gtest.h>

#include "primitives/blur/blur_kernels.h"

namespace framekit::prim {
namespace {

TEST(BlurDivision, TruncatingMultipliersAreExactForEveryWindowSum) {
  int counts = 0;
  for (int64_t n = 2; n <= 257; ++n) {
    blur::Magic16 m;
    if (!blur::FindMagic16(n, 255 * n, &m)) continue;
    ++counts;
    for (int64_t sum = 0; sum <= 255 * n; ++sum) {
      const int64_t q = ((sum * m.mul) >> 16) >> m.shift;
      ASSERT_EQ(q, sum / n) << "n " << n << " sum " << sum;
    }
  }
  EXPECT_GE(counts, 100);  // every count up to 100 at least has one
}

TEST(BlurDivision, IntegerRoundedMeanEqualsTheFloatOneForOddCounts) {
  int64_t largest = -1;
  for (int64_t n = 1; n <= 127; n += 2) {
    blur::Magic16 m;
    if (!blur::FindRoundedMagic16(n, &m)) continue;
    EXPECT_EQ(largest, n - 2) << "a gap before " << n;  // the counts with one are 1, 3, ...
    largest = n;
    const float rcp = blur::Reciprocal(n);
    for (int64_t sum = 0; sum <= 255 * n; ++sum) {
      const int64_t t = 2 * sum + n;
      ASSERT_LT(t, 65536);
      const int64_t q = ((t * m.mul) >> 16) >> m.shift;
      ASSERT_EQ(q, blur::RoundedMean(static_cast<uint32_t>(sum), rcp))
          << "n " << n << " sum " << sum;
    }
  }
  EXPECT_GE(largest, 61);  // radii up to 30 take the integer form
  blur::Magic16 m;
  EXPECT_FALSE(blur::FindRoundedMagic16(12, &m));  // even counts keep the float form
  EXPECT_FALSE(blur::FindRoundedMagic16(129, &m));
}

}  // namespace
}  // namespace framekit::prim

// The scalar model's conversions behave as the vector instructions they stand for, and the
// integer shortcuts the vector bodies take agree with the model everywhere.
#include "primitives/tone/tone_model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace framekit::prim::tone {
namespace {

constexpr int32_t kIndefinite = std::numeric_limits<int32_t>::min();

TEST(ToneModel, RoundEvenIsTheVectorConversion) {
  EXPECT_EQ(RoundEven(0.5f), 0);
  EXPECT_EQ(RoundEven(1.5f), 2);
  EXPECT_EQ(RoundEven(2.5f), 2);
  EXPECT_EQ(RoundEven(-0.5f), 0);
  EXPECT_EQ(RoundEven(-1.5f), -2);
  EXPECT_EQ(RoundEven(127.49999f), 127);
  EXPECT_EQ(RoundEven(-2.7f), -3);
  EXPECT_EQ(RoundEven(2147483520.0f), 2147483520);  // the largest float below 2^31
  EXPECT_EQ(RoundEven(2147483648.0f), kIndefinite);
  EXPECT_EQ(RoundEven(-2147483648.0f), kIndefinite);  // in range, and INT32_MIN itself
  EXPECT_EQ(RoundEven(-3e9f), kIndefinite);
  EXPECT_EQ(RoundEven(std::numeric_limits<float>::infinity()), kIndefinite);
  EXPECT_EQ(RoundEven(std::nanf("")), kIndefinite);
}

TEST(ToneModel, TruncateIsTheScalarConversion) {
  EXPECT_EQ(Truncate(2.9), 2);
  EXPECT_EQ(Truncate(-2.9), -2);
  EXPECT_EQ(Truncate(2147483647.9), 2147483647);
  EXPECT_EQ(Truncate(2147483648.0), kIndefinite);
  EXPECT_EQ(Truncate(-2147483648.9), kIndefinite);  // in range: truncates to INT32_MIN
  EXPECT_EQ(Truncate(std::nan("")), kIndefinite);
  EXPECT_EQ(Truncate(-std::numeric_limits<double>::infinity()), kIndefinite);
}

// The AVX2 saturation body takes the rounded mean as (sum + 1) / 3 and as a 16-bit
// multiply-high by 21846; both must be the model's rounded single-precision product.
TEST(ToneModel, RoundedMeanOfThreeBytesIsExactInIntegers) {
  for (int32_t sum = 0; sum <= 765; ++sum) {
    const int32_t model = RoundEven(static_cast<float>(sum) * 0.33333334f);
    ASSERT_EQ(model, (sum + 1) / 3) << sum;
    ASSERT_EQ(model, static_cast<int32_t>((static_cast<uint32_t>(sum + 1) * 21846u) >> 16)) << sum;
  }
}

TEST(ToneModel, ContrastFactorIsUnguarded) {
  EXPECT_TRUE(std::isinf(ContrastFactorSingle(259)));
  EXPECT_TRUE(std::isinf(ContrastFactorDouble(259)));
  EXPECT_EQ(ContrastFactorSingle(-255), 0.0f);
  EXPECT_LT(ContrastFactorSingle(260), 0.0f);
  EXPECT_EQ(ContrastBlockByte(128, ContrastFactorSingle(259)), 0);  // 0 * inf is NaN
  EXPECT_EQ(ContrastTailByte(200, ContrastFactorSingle(259)), 0);
  EXPECT_EQ(ContrastGeneralByte(10, ContrastFactorDouble(259)), 0);
}

}  // namespace
}  // namespace framekit::prim::tone

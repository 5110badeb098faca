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
  // Against the C library's rounding in the default mode, halves and the 2^23 edge included.
  for (int32_t eighths = -560000; eighths <= 560000; ++eighths) {
    const float x = static_cast<float>(eighths) / 8.0f;
    ASSERT_EQ(RoundEven(x), static_cast<int32_t>(std::nearbyint(x))) << x;
  }
  for (int32_t halves = 16777190; halves <= 16777240; ++halves) {  // about 2^23
    const float x = static_cast<float>(halves) / 2.0f;
    ASSERT_EQ(RoundEven(x), static_cast<int32_t>(std::nearbyint(x))) << x;
    ASSERT_EQ(RoundEven(-x), static_cast<int32_t>(std::nearbyint(-x))) << x;
  }
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

// The vector saturation bodies take the rounded mean as (sum + 1) / 3, as a 16-bit multiply-high by
// 21846 and as pmulhrsw by 10923; all must be the model's rounded single-precision product.
TEST(ToneModel, RoundedMeanOfThreeBytesIsExactInIntegers) {
  for (int32_t sum = 0; sum <= 765; ++sum) {
    const int32_t model = RoundEven(static_cast<float>(sum) * 0.33333334f);
    ASSERT_EQ(model, (sum + 1) / 3) << sum;
    ASSERT_EQ(model, static_cast<int32_t>((static_cast<uint32_t>(sum + 1) * 21846u) >> 16)) << sum;
    ASSERT_EQ(model, SaturationMean(sum)) << sum;
  }
}

// Every saturation below 510 has a multiplier (so the vector bodies never leave their integer path
// there), the identity's is 0, and the rest are left to the single-precision bodies.
TEST(ToneModel, SaturationFitCoversEverySaturationBelow510) {
  for (uint32_t s = 0; s < 510; ++s) {
    SaturationFit fit{};
    ASSERT_TRUE(FitSaturation(s, &fit)) << s;
    EXPECT_EQ(fit.above_identity, s >= 255) << s;
  }
  SaturationFit identity{};
  ASSERT_TRUE(FitSaturation(255, &identity));
  EXPECT_EQ(identity.multiplier, 0);
  SaturationFit none{};
  for (const uint32_t s : {510u, 511u, 1000u, 0x80000000u, 0xFFFFFFFFu}) {
    EXPECT_FALSE(FitSaturation(s, &none)) << s;
  }
}

// The fitted integer steps give the model's bytes for whole pixels, not only per difference:
// channel values on a grid that includes 0, 1, 254 and 255.
TEST(ToneModel, SaturationFitPixelIsTheBlockPixel) {
  constexpr int kValues[] = {0,   1,   2,   3,   7,   31,  63,  64,  85,  86,  100, 127,
                             128, 129, 170, 171, 191, 200, 224, 240, 252, 253, 254, 255};
  for (const uint32_t s : {0u, 1u, 2u, 85u, 128u, 200u, 254u, 255u, 256u, 300u, 400u, 509u}) {
    SaturationFit fit{};
    ASSERT_TRUE(FitSaturation(s, &fit)) << s;
    const float scale = SaturationScale(s);
    for (const int b : kValues) {
      for (const int g : kValues) {
        for (const int r : kValues) {
          uint8_t want[3] = {static_cast<uint8_t>(b), static_cast<uint8_t>(g),
                             static_cast<uint8_t>(r)};
          uint8_t got[3] = {want[0], want[1], want[2]};
          SaturationBlockPixel(want, scale);
          SaturationFitPixel(got, fit);
          ASSERT_TRUE(want[0] == got[0] && want[1] == got[1] && want[2] == got[2])
              << "s " << s << " pixel " << b << " " << g << " " << r;
        }
      }
    }
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

// Channel, band, grey, invert, posterize, solarize and PerfTest, against formulas computed here.
#include <algorithm>
#include <vector>

#include "effects/effect_test_support.h"
#include "framekit/framekit.h"
#include "support/random_frame.h"

namespace framekit::test {
namespace {

TEST(KeepChannel, ZeroesTheOtherTwoOverWidthTimesHeightPixels) {
  Rng rng("effects/keep");
  using Fn = void (*)(uint8_t*, int32_t, int32_t) noexcept;
  const std::pair<Fn, int> effects[] = {{EffectBlue, 0}, {EffectGreen, 1}, {EffectRed, 2}};
  for (const auto& [fn, kept] : effects) {
    for (const int32_t w : {1, 3, 5, 8, 13}) {
      const std::vector<uint8_t> in = RandomFrame(rng, 3 * w + 3, 3);  // a guard pixel at the end
      std::vector<uint8_t> got = in, want = in;
      for (size_t i = 0; i < static_cast<size_t>(3 * w * 3); ++i) {
        if (static_cast<int>(i % 3) != kept) want[i] = 0;
      }
      // 3 rows of w pixels are 3 * w pixels: the count walks on past the row ends.
      fn(got.data(), w, 3);
      std::vector<uint8_t> packed_want(want.begin(), want.begin() + 9 * w);
      packed_want.insert(packed_want.end(), in.begin() + 9 * w, in.end());
      EXPECT_EQ(got, packed_want) << kept << " " << w;
    }
  }
  std::vector<uint8_t> f(12, 9);
  EffectRed(f.data(), -2, 3);   // negative count: nothing
  EffectRed(f.data(), -2, -2);  // 4 pixels
  EXPECT_EQ(f, (std::vector<uint8_t>{0, 0, 9, 0, 0, 9, 0, 0, 9, 0, 0, 9}));
}

TEST(BandThreshold, OpenBandAndItsEdges) {
  // Red 150, 100, 200, 101, 199 with low 100, high 200.
  std::vector<uint8_t> f = {7, 8, 150, 7, 8, 100, 7, 8, 200, 7, 8, 101, 7, 8, 199};
  EffectFilterRed(f.data(), 5, 1, 100, 200);
  EXPECT_EQ(f, (std::vector<uint8_t>{0, 0, 255, 0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 255}));
  std::vector<uint8_t> g = {50, 50, 50, 51, 51, 51};
  EffectFilterGreen(g.data(), 2, 1, 50, 52);
  EXPECT_EQ(g, (std::vector<uint8_t>{0, 0, 0, 0, 255, 0}));
  std::vector<uint8_t> b = {120, 1, 2, 130, 3, 4};
  EffectFilterBlue(b.data(), 1, 2, 120, 121);  // high = low + 1: nothing is inside
  EXPECT_EQ(b, std::vector<uint8_t>(6, 0));
  std::vector<uint8_t> untouched = {1, 2, 3};
  EffectFilterBlue(untouched.data(), 1, 0, 0, 255);
  EffectFilterBlue(untouched.data(), 0, 1, 0, 255);
  EXPECT_EQ(untouched, (std::vector<uint8_t>{1, 2, 3}));
}

// Rows at the aligned stride, whose padding must survive; greyscale by its fixed-point weights,
// and the inverted pixels also left packed in the scratch.
TEST(GreyscaleAndInvert, AlignedRowsAndFormulas) {
  Rng rng("effects/grey-invert");
  for (const bool grey : {true, false}) {
    for (const int32_t w : {5, 6, 8, 16, 31, 33}) {
      const int32_t stride = (3 * w + 3) / 4 * 4, h = 3;
      const std::vector<uint8_t> in = RandomFrame(rng, stride, h);
      std::vector<uint8_t> got = in, want = in, want_scratch;
      std::vector<uint8_t> scratch(static_cast<size_t>((grey ? 1 : 3) * w * h));
      for (int32_t y = 0; y < h; ++y) {
        for (int32_t x = 0; x < w; ++x) {
          const uint8_t* p = &in[static_cast<size_t>(y * stride + 3 * x)];
          const int32_t g = (3736 * p[0] + 19235 * p[1] + 9798 * p[2] + 16384) >> 15;
          for (int c = 0; c < 3; ++c) {
            const auto v = static_cast<uint8_t>(grey ? g : 255 - p[c]);
            want[static_cast<size_t>(y * stride + 3 * x + c)] = v;
            want_scratch.push_back(v);
          }
        }
      }
      EXPECT_EQ((grey ? EffectGreyscale : EffectInvert)(got.data(), w, h, scratch.data()), 0);
      EXPECT_EQ(got, want) << (grey ? "greyscale " : "invert ") << w << " " << SeedNote();
      if (!grey) {
        EXPECT_EQ(scratch, want_scratch) << w;
      }
    }
  }
  std::vector<uint8_t> white(12, 255), scratch(4);
  EffectGreyscale(white.data(), 4, 1, scratch.data());
  EXPECT_EQ(white, std::vector<uint8_t>(12, 255));
}

TEST(GreyscaleAndInvert, StatusOfTheLastPrimitive) {
  std::vector<uint8_t> frame(48, 77), scratch(48, 5);
  EXPECT_EQ(EffectGreyscale(frame.data(), 0, 3, scratch.data()), -6);
  EXPECT_EQ(EffectGreyscale(frame.data(), 4, -1, scratch.data()), -6);
  EXPECT_EQ(EffectGreyscale(nullptr, 4, 3, scratch.data()), -8);
  EXPECT_EQ(EffectGreyscale(frame.data(), 4, 3, nullptr), -8);
  EXPECT_EQ(EffectInvert(frame.data(), 4, 0, scratch.data()), -6);
  EXPECT_EQ(EffectInvert(frame.data(), 4, 3, nullptr), -8);
  EXPECT_EQ(frame, std::vector<uint8_t>(48, 77));
  // With a null frame the white fill of the scratch still happens; the later steps fail.
  EXPECT_EQ(EffectInvert(nullptr, 4, 3, scratch.data()), -8);
  std::vector<uint8_t> filled(48, 255);
  std::fill(filled.begin() + 36, filled.end(), 5);  // 4 x 3 pixels of 3 bytes
  EXPECT_EQ(scratch, filled);
}

TEST(Posterize, LevelsAndTheirOddCases) {
  std::vector<uint8_t> all(256 * 3);
  for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<uint8_t>(i / 3);
  auto posterized = [&](int32_t level) {
    std::vector<uint8_t> f = all;
    EffectPosterize(f.data(), 16, 16, level);
    return f;
  };
  const std::vector<uint8_t> p64 = posterized(64);
  for (size_t i = 0; i < all.size(); ++i) EXPECT_EQ(p64[i], all[i] / 64 * 64) << i;
  EXPECT_EQ(posterized(-64), p64);  // signed division and remainder: the same product
  EXPECT_EQ(posterized(1), all);
  EXPECT_EQ(posterized(0), all);
  EXPECT_EQ(posterized(300), std::vector<uint8_t>(all.size(), 0));
  const std::vector<uint8_t> p100 = posterized(100);
  EXPECT_EQ(p100[3 * 250], 200);
  // 257 % 256 = 1, quotient 0: black. 50 keeps 250 as 250 (5 * 50).
  EXPECT_EQ(posterized(257), std::vector<uint8_t>(all.size(), 0));
  EXPECT_EQ(posterized(50)[3 * 255], 250);
}

TEST(Solarize, ThresholdOnThePixelMean) {
  const std::vector<uint8_t> in = {255, 255, 255, 254, 255, 255, 0, 0, 3, 10, 20, 30};
  std::vector<uint8_t> f = in;
  EffectSolorize(f.data(), 4, 1, 0);
  EXPECT_EQ(f, in);
  EffectSolorize(f.data(), 2, 2, 254);  // only the mean of 255 is above 254
  EXPECT_EQ(f, (std::vector<uint8_t>{0, 0, 0, 254, 255, 255, 0, 0, 3, 10, 20, 30}));
  f = in;
  EffectSolorize(f.data(), 4, 1, -1);  // every mean is above -1
  for (size_t i = 0; i < in.size(); ++i) EXPECT_EQ(f[i], 255 - in[i]);
  f = in;
  EffectSolorize(f.data(), 4, 1, 19);  // mean 20 is inverted, mean 1 not
  EXPECT_EQ(f[9], 245);
  EXPECT_EQ(f[6], 0);
}

TEST(PerfTest, ReturnsNonzeroAndBrightensFiftyTimes) {
  Rng rng("effects/perftest");
  for (const int32_t w : {7, 8}) {  // the general pass whatever the width
    const std::vector<uint8_t> in = RandomFrame(rng, 3 * w, 2);
    std::vector<uint8_t> f = in, want = in;
    for (uint8_t& v : want) {
      for (int i = 0; i < 50; ++i) v = static_cast<uint8_t>(v + (255 - v) * 2 / 255);
    }
    EXPECT_NE(PerfTest(f.data(), w, 2, 2), 0);
    EXPECT_EQ(f, want);
  }
}

}  // namespace
}  // namespace framekit::test

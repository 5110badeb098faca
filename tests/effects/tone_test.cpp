// Lightness, darkness, contrast and saturation on both width paths, against formulas computed
// here, on random frames of many sizes and on every processor class.
#include <cstring>
#include <vector>

#include "effects/effect_test_support.h"
#include "framekit/framekit.h"
#include "support/random_frame.h"

namespace framekit::test {
namespace {

// Widths that are multiples of 4 take the fast path; the others the general one.
const int32_t kWidths[] = {1, 2, 3, 4, 5, 7, 8, 12, 16, 17, 20, 28, 31, 33, 36, 64, 100, 127};
const int32_t kHeights[] = {1, 2, 3, 5};

enum class Where { kBlock, kTail, kGeneral };
using ByteRule = std::function<uint8_t(uint8_t v, Where where)>;
using Effect = std::function<void(uint8_t*, int32_t, int32_t)>;

// Fast path for widths that are multiples of 4: blocks over the first 16 * (n / 16) pixels,
// then the tail; the general rule for every byte otherwise.
Where Place(int32_t width, size_t byte, size_t pixels) {
  if (width % 4 != 0) return Where::kGeneral;
  return byte < pixels / 16 * 48 ? Where::kBlock : Where::kTail;
}

void CheckBytewise(const std::string& what, const Effect& effect, const ByteRule& rule) {
  Rng rng("tone/" + what);
  for (const int32_t w : kWidths) {
    for (const int32_t h : kHeights) {
      const std::vector<uint8_t> in = RandomFrame(rng, 3 * w, h);
      std::vector<uint8_t> want = in, got = in;
      for (size_t i = 0; i < in.size(); ++i) want[i] = rule(in[i], Place(w, i, in.size() / 3));
      effect(got.data(), w, h);
      ASSERT_EQ(got, want) << what << " " << w << "x" << h << " " << SeedNote();
    }
  }
}

// Both scale the room a byte has (up to 255, down to 0) by the level.
TEST(LightnessAndDarkness, BothPathsOnRandomFrames) {
  for (const bool light : {true, false}) {
    for (const int32_t amount : {1, 64, 77, 128, 200, 254, 255, 300, 1000}) {
      const int32_t l = amount > 255 ? 255 : amount, sign = light ? 1 : -1;
      const float s = static_cast<float>(l) / 255.0f;
      CheckBytewise((light ? "lightness " : "darkness ") + std::to_string(amount),
                    [=](uint8_t* f, int32_t w, int32_t h) {
                      (light ? EffectLightness : EffectDarkness)(f, w, h, amount);
                    },
                    [=](uint8_t v, Where at) {
                      const int32_t room = light ? 255 - v : v;
                      if (at == Where::kBlock) {
                        return Saturate(v + sign * VectorRound(static_cast<float>(room) * s));
                      }
                      return static_cast<uint8_t>(v + sign * (room * l / 255));
                    });
    }
  }
}

TEST(Contrast, BothPathsOnRandomFrames) {
  for (const int32_t k : {-300, -255, -100, -1, 0, 1, 50, 128, 255, 258, 259, 260, 1000}) {
    const float fs =
        static_cast<float>(k + 255) * 259.0f / ((259.0f - static_cast<float>(k)) * 255.0f);
    const double fd = (k + 255) * 259.0 / ((259.0 - k) * 255.0);
    CheckBytewise(
        "contrast " + std::to_string(k),
        [=](uint8_t* f, int32_t w, int32_t h) { EffectContrast(f, w, h, k); },
        [=](uint8_t v, Where at) -> uint8_t {
          // K = 259: an infinite factor (or 0 * infinity) converts to INT32_MIN: black.
          if (k == 259) return 0;
          if (at == Where::kBlock) {
            int64_t r = VectorRound(static_cast<float>(v - 128) * fs);
            r = r < -32768 ? -32768 : (r > 32767 ? 32767 : r);
            return Saturate(r + 128);
          }
          if (at == Where::kTail) {
            return Saturate(
                static_cast<int64_t>(std::trunc(static_cast<float>(v - 128) * fs + 128.0f)));
          }
          return Saturate(static_cast<int64_t>(std::trunc((v - 128) * fd + 128.0)));
        });
  }
}

// Saturation mixes the bytes of a pixel, so it has its own loop.
void SaturationExpected(const uint8_t* in, uint8_t* out, uint32_t s, Where at) {
  const int32_t sum = in[0] + in[1] + in[2];
  if (at == Where::kBlock) {
    const int64_t m = VectorRound(static_cast<float>(sum) * 0.33333334f);
    const float scale = static_cast<float>(s) / 255.0f;
    for (int c = 0; c < 3; ++c) {
      out[c] = Saturate(m + VectorRound(static_cast<float>(in[c] - m) * scale));
    }
    return;
  }
  const int32_t m = sum / 3;
  for (int c = 0; c < 3; ++c) {
    const int64_t q = static_cast<int64_t>(in[c] - m) * s / 255;  // small s: no 32-bit wrap
    out[c] = static_cast<uint8_t>(m + q);
  }
}

TEST(Saturation, BothPathsOnRandomFrames) {
  Rng rng("tone/saturation");
  for (const uint32_t s : {0u, 1u, 100u, 254u, 255u, 256u, 400u, 1000u}) {
    for (const int32_t w : kWidths) {
      const int32_t h = rng.Pick(std::vector<int32_t>{1, 2, 3, 5});
      const std::vector<uint8_t> in = RandomFrame(rng, 3 * w, h);
      std::vector<uint8_t> want = in, got = in;
      const size_t pixels = in.size() / 3;
      for (size_t i = 0; i < pixels; ++i) {
        SaturationExpected(&in[3 * i], &want[3 * i], s, Place(w, 3 * i, pixels));
      }
      EffectSaturation(got.data(), w, h, s);
      ASSERT_EQ(got, want) << s << " " << w << "x" << h << " " << SeedNote();
    }
  }
}

// ---- Worked values and stated behaviours.

uint8_t LightenOne(uint8_t v, int32_t width, int32_t amount) {
  std::vector<uint8_t> frame(static_cast<size_t>(3 * width * 16), v);
  EffectLightness(frame.data(), width, 16, amount);  // 16 rows: whole blocks on the fast path
  return frame[0];
}

TEST(Lightness, Amount128WorkedValues) {
  EXPECT_EQ(LightenOne(0, 5, 128), 128);  // general: 255 * 128 / 255
  EXPECT_EQ(LightenOne(0, 4, 128), 128);
  EXPECT_EQ(LightenOne(1, 5, 128), 128);  // 1 + 254 * 128 / 255 = 1 + 127
  EXPECT_EQ(LightenOne(1, 4, 128), 128);  // 1 + round(127.498)
  EXPECT_EQ(LightenOne(2, 5, 128), 128);  // 2 + trunc(126.996)
  EXPECT_EQ(LightenOne(2, 4, 128), 129);  // 2 + round(126.996): the paths differ by one
}

TEST(Lightness, ExtremeAmounts) {
  Rng rng("tone/extremes");
  const std::vector<uint8_t> in = RandomFrame(rng, 3 * 8, 5);
  for (const int32_t w : {8, 5}) {  // 8 x 5 and 5 x 8 cover the same bytes
    const int32_t h = 40 / w;
    for (const int32_t amount : {255, 300}) {
      std::vector<uint8_t> f = in;
      EffectLightness(f.data(), w, h, amount);
      EXPECT_EQ(f, std::vector<uint8_t>(in.size(), 255)) << w << " " << amount;
    }
    for (const int32_t amount : {0, -1, INT32_MIN}) {
      std::vector<uint8_t> f = in;
      EffectLightness(f.data(), w, h, amount);
      EffectDarkness(f.data(), w, h, amount);
      EXPECT_EQ(f, in) << w << " " << amount;
    }
  }
}

TEST(Saturation, GeneralPathWrapsAboveFullStrength) {
  // Mean 90; blue: 90 + (0 - 90) * 1000 / 255 = 90 - 352 = -262, low 8 bits 250.
  uint8_t f[3] = {0, 90, 180};
  EffectSaturation(f, 1, 1, 1000);
  EXPECT_EQ(f[0], 250);
  EXPECT_EQ(f[1], 90);
  EXPECT_EQ(f[2], static_cast<uint8_t>(90 + 352));
}

// The width test is a signed remainder, and the pixel count a wrapped 32-bit product.
TEST(WidthPaths, NegativeWidthsAndWrappedCounts) {
  std::vector<uint8_t> f(36, 1), want(36, 1);
  EffectLightness(f.data(), -6, -2, 128);  // general path: height < 1, nothing
  EXPECT_EQ(f, want);
  EffectLightness(f.data(), -4, -3, 128);  // fast path: 12 pixels, all tail (truncating)
  EXPECT_EQ(f, std::vector<uint8_t>(36, 128));
  std::vector<uint8_t> g(36, 200);
  EffectContrast(g.data(), -6, -2, -255);  // general path, 12 pixels
  EXPECT_EQ(g, std::vector<uint8_t>(36, 128));
  // 65536 * 65537 wraps to 65536 pixels; 65536 * 32768 to a negative count.
  std::vector<uint8_t> big(3 * 65536 + 3, 7);
  EffectDarkness(big.data(), 65536, 65537, 255);
  EXPECT_EQ(big[3 * 65536 - 1], 0);
  EXPECT_EQ(big[3 * 65536], 7);
  EffectSaturation(big.data(), 65536, 32768, 0);
  EffectContrast(big.data(), 65536, 32768, 100);
  EXPECT_EQ(big[0], 0);
  EXPECT_EQ(big[3 * 65536], 7);
}

}  // namespace
}  // namespace framekit::test

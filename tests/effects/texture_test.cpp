// Marble, spray and mosaic against models written here from the description, the worked
// examples, and the library's sine and cosine against the platform's.
#include <cmath>
#include <cstring>
#include <vector>

#include "effects/effect_test_support.h"
#include "effects/random.h"
#include "framekit/framekit.h"
#include "primitives/core/trig.h"
#include "support/random_frame.h"

namespace framekit::test {
namespace {

using Bytes = std::vector<uint8_t>;

uint8_t* Px(Bytes& f, int64_t w, int64_t x, int64_t y) { return &f[3 * (y * w + x)]; }

// Exact to the last place at a few points (values rounded correctly, computed elsewhere), and
// within 2 units in the last place of glibc's sine and cosine, which are nearly correctly
// rounded. (Windows' are not a reference: their argument reduction loses digits for large
// arguments, which is why the marble does not use them.)
TEST(Trig, CorrectlyRoundedPointsAndThePlatformsSineAndCosine) {
  const struct {
    double x, sin, cos;
  } points[] = {{1.0, 0.8414709848078965, 0.5403023058681398},
                {0.5, 0.479425538604203, 0.8775825618903728},
                {3.0, 0.1411200080598672, -0.9899924966004454},
                {100.0, -0.5063656411097588, 0.8623188722876839},
                {-2.5, -0.5984721441039565, -0.8011436155469337},
                {100000.25, -0.21260836606769953, -0.9771374942545307}};
  for (const auto& p : points) {
    EXPECT_NEAR(prim::Sin(p.x), p.sin, std::fabs(p.sin) * 2.3e-16) << p.x;
    EXPECT_NEAR(prim::Cos(p.x), p.cos, std::fabs(p.cos) * 2.3e-16) << p.x;
  }
  EXPECT_EQ(prim::Sin(0.0), 0.0);
  EXPECT_EQ(prim::Cos(0.0), 1.0);
  EXPECT_TRUE(std::isnan(prim::Sin(INFINITY)) && std::isnan(prim::Cos(NAN)));
#ifndef _WIN32
  Rng rng("effects/trig");
  auto ulps2 = [](double v) { return 2 * (std::nextafter(std::fabs(v), 2.0) - std::fabs(v)); };
  for (int i = 0; i < 20000; ++i) {
    const double mag = std::ldexp(1.0, rng.Uniform(-30, 19));
    const double x = mag * (static_cast<double>(rng.Next() >> 11) / 9007199254740992.0) *
                     (rng.OneIn(2) ? 1 : -1);
    ASSERT_NEAR(prim::Sin(x), std::sin(x), ulps2(std::sin(x)) + 1e-300) << x;
    ASSERT_NEAR(prim::Cos(x), std::cos(x), ulps2(std::cos(x)) + 1e-300) << x;
  }
#endif
}

// The scatter, with the library's sine and cosine: pixel (x, y) to its rounded offsets.
Bytes MarbleModel(const Bytes& in, int32_t w, int32_t h, double s, int32_t t) {
  Bytes out(in.size(), 0);
  auto index = [](double v) {
    v = std::fabs(v);
    const double i = std::floor(v);
    return static_cast<int64_t>(v - i > 0.5 ? i + 1 : i);
  };
  for (int32_t y = 0; y < h; ++y) {
    const double cy = prim::Cos((y % t) / s) * s;
    for (int32_t x = 0; x < w; ++x) {
      const double sx = -(prim::Sin((x % t) / s) * s);
      const int64_t tx = index(x + sx + cy), ty = index(y + cy + sx);
      if (tx < w && ty < h) std::memcpy(&out[3 * (ty * w + tx)], &in[3 * (y * w + x)], 3);
    }
  }
  return out;
}

TEST(Marble, ScatterAndWorkedExample) {
  Rng rng("effects/marble");
  const struct {
    int32_t w, h;
    double s;
    int32_t t;
  } cases[] = {{9, 7, 1.0, 1},   {13, 11, 4.0, 10},   {32, 20, 2.5, 7},
               {17, 9, 0.5, -3}, {20, 20, 8.0, 1000}, {6, 6, -3.0, 4}};
  for (const auto& c : cases) {
    const Bytes in = RandomFrame(rng, 3 * c.w, c.h);
    Bytes f = in;
    EffectMarble(f.data(), c.w, c.h, c.s, c.t);
    EXPECT_EQ(f, MarbleModel(in, c.w, c.h, c.s, c.t)) << c.w << "x" << c.h << " " << c.s;
  }
  // Scale 1, period 1: every offset is cos 0 - sin 0 = 1, a shift right and down by one pixel;
  // the left column and top row, which nothing reaches, are black.
  const Bytes in = RandomFrame(rng, 3 * 5, 4);
  Bytes f = in;
  EffectMarble(f.data(), 5, 4, 1.0, 1);
  for (int32_t y = 0; y < 4; ++y) {
    for (int32_t x = 0; x < 5; ++x) {
      const Bytes want = (x == 0 || y == 0) ? Bytes(3, 0)
                                            : Bytes(&in[3 * ((y - 1) * 5 + x - 1)],
                                                    &in[3 * ((y - 1) * 5 + x - 1)] + 3);
      EXPECT_EQ(Bytes(Px(f, 5, x, y), Px(f, 5, x, y) + 3), want) << x << "," << y;
    }
  }
  // Period 0, no frame, and a temporary frame that cannot be allocated change nothing.
  f = in;
  EffectMarble(f.data(), 5, 4, 1.0, 0);
  EffectMarble(f.data(), 1 << 30, 1 << 30, 1.0, 3);
  EffectMarble(nullptr, 5, 4, 1.0, 3);
  EXPECT_EQ(f, in);
}

TEST(Spray, ColumnsOuterThreeDrawsInPlace) {
  Rng rng("effects/spray");
  for (const int32_t a : {1, 3, 40, 1000, -5}) {
    for (const auto& [w, h] : {std::pair{7, 5}, {16, 9}, {1, 4}, {5, 0}}) {
      Bytes f = RandomFrame(rng, 3 * w, h > 0 ? h : 1), want = f;
      const auto seed = static_cast<uint32_t>(rng.Next());
      uint32_t s = seed;
      auto rand = [&s] {
        s = s * 214013u + 2531011u;
        return static_cast<int64_t>((s >> 16) & 0x7FFF);
      };
      for (int64_t x = 0; x < w; ++x) {
        for (int64_t y = 0; y < h; ++y) {
          const int64_t r = rand() % (a + 1);
          const int64_t dx = r - rand() % (2 * r + 1), dy = r - rand() % (2 * r + 1);
          if (x + dx >= 0 && x + dx < w && y + dy >= 0 && y + dy < h) {
            std::memcpy(Px(want, w, x, y), Px(want, w, x + dx, y + dy), 3);
          }
        }
      }
      effects::Srand(seed);
      EffectSpray(f.data(), w, h, a);
      EXPECT_EQ(f, want) << a << " " << w << "x" << h;
    }
  }
  const Bytes in = RandomFrame(rng, 3 * 4, 4);
  Bytes f = in;
  EffectSpray(f.data(), 4, 4, 0);
  EffectSpray(f.data(), 4, 4, -1);
  EXPECT_EQ(f, in);
}

// The block loops as described: each tests its bound after its first pass; pixels outside the
// frame are skipped (the library neither reads nor writes them).
Bytes MosaicModel(Bytes f, int32_t w, int32_t h, int32_t b, FrameKitRect r) {
  if (b <= 1) return f;
  auto inside = [&](int64_t x, int64_t y) { return x >= 0 && x < w && y >= 0 && y < h; };
  int64_t yb = r.top;
  do {
    int64_t y = yb;
    do {
      int64_t xr = r.left;
      do {
        if (inside(xr, yb)) {
          const Bytes colour(Px(f, w, xr, yb), Px(f, w, xr, yb) + 3);
          int64_t x = xr;
          do {
            if (inside(x, y)) std::memcpy(Px(f, w, x, y), colour.data(), 3);
          } while (++x < xr + b && x < r.right);
        }
        xr += b;
      } while (xr < r.right);
    } while (++y < yb + b && y < r.bottom);
    yb += b;
  } while (yb < r.bottom);
  return f;
}

TEST(Mosaic, BlocksAndRectangles) {
  Rng rng("effects/mosaic");
  const struct {
    int32_t w, h, b;
    FrameKitRect r;
  } cases[] = {
      {4, 4, 4, {0, 0, 4, 4}},     {10, 7, 3, {0, 0, 10, 7}},   {9, 9, 2, {2, 2, 6, 6}},
      {16, 8, 5, {3, 1, 14, 8}},   {8, 8, 3, {5, 2, 5, 7}},     {8, 8, 3, {1, 4, 7, 4}},
      {8, 8, 3, {6, 6, 2, 2}},     {8, 6, 4, {-5, -3, 6, 9}},   {8, 6, 3, {4, 2, 40, 30}},
      {7, 5, 1, {0, 0, 7, 5}},     {7, 5, 0, {0, 0, 7, 5}},     {7, 5, 100, {0, 0, 7, 5}},
      {7, 5, 2, {-9, -9, -2, -2}}, {33, 17, 8, {0, 0, 33, 17}},
  };
  for (const auto& c : cases) {
    const Bytes in = RandomFrame(rng, 3 * c.w, c.h);
    Bytes f = in;
    EffectMosaicROI(f.data(), c.w, c.h, c.b, &c.r);
    EXPECT_EQ(f, MosaicModel(in, c.w, c.h, c.b, c.r))
        << c.w << "x" << c.h << " block " << c.b << " {" << c.r.left << "," << c.r.top << ","
        << c.r.right << "," << c.r.bottom << "}";
  }
  // The worked example: a 4 x 4 frame in blocks of 4 takes pixel (0, 0)'s colour. Without a
  // rectangle nothing happens.
  Bytes f = RandomFrame(rng, 3 * 4, 4);
  const Bytes corner(f.begin(), f.begin() + 3);
  EffectMosaic(f.data(), 4, 4, 4);
  for (size_t p = 0; p < f.size(); p += 3) EXPECT_EQ(Bytes(&f[p], &f[p] + 3), corner);
  const Bytes mosaic = f;
  EffectMosaicROI(f.data(), 4, 4, 2, nullptr);
  EXPECT_EQ(f, mosaic);
}

}  // namespace
}  // namespace framekit::test

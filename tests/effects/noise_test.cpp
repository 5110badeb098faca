// Colour and mono noise on both width paths against a model written here from the description
// (its own scalar and four-lane generators), the generators' first draws, and the stated stops.
#include <algorithm>
#include <thread>
#include <utility>
#include <vector>

#include "effects/effect_test_support.h"
#include "effects/random.h"
#include "framekit/framekit.h"
#include "primitives/core/dispatch.h"
#include "support/random_frame.h"
#include "support/scoped_class.h"

namespace framekit::test {
namespace {

using Bytes = std::vector<uint8_t>;

// Read before main: no noise call has run yet.
const prim::NoiseLanes kLanesAtLoad = effects::LoadNoiseLanes();

struct ScalarModel {
  uint32_t state;
  int64_t Next() {
    state = state * 214013u + 2531011u;
    return (state >> 16) & 0x7FFF;
  }
  // rand % (A + 1), the modulus a wrapped 32-bit sum.
  int64_t Draw(int32_t a) { return Next() % static_cast<int32_t>(static_cast<uint32_t>(a) + 1u); }
};

struct LaneModel {
  uint32_t lane[4];
  // Sixteen bytes: four steps, each lane scaled, rounded, saturated; order d2, d1, d4, d3.
  Bytes Batch(int32_t a) {
    static constexpr uint32_t kMul[4] = {214013, 17405, 214013, 69069};
    static constexpr uint32_t kInc[4] = {2531011, 10395331, 13737667, 1};
    uint32_t d[4][4];
    for (auto& step : d) {
      for (int i = 0; i < 4; ++i) step[i] = lane[i] = lane[i] * kMul[i] + kInc[i];
    }
    const float scale = static_cast<float>(a) / 32767.0f;
    Bytes out;
    for (const int k : {1, 0, 3, 2}) {
      for (const uint32_t v : d[k]) {
        int64_t r = VectorRound(static_cast<float>((v >> 16) & 0x7FFF) * scale);
        r = r < -32768 ? -32768 : (r > 32767 ? 32767 : r);
        out.push_back(Saturate(r));
      }
    }
    return out;
  }
};

uint8_t AddSat(uint8_t v, int64_t n) { return Saturate(v + n); }

// What a noise call does to `f`, from the model's generators (the scalar one as the thread has
// it, the fast path reseeding it first for colour).
void Model(Bytes& f, int32_t w, int32_t h, int32_t a, bool colour, ScalarModel& rand,
           LaneModel& lanes) {
  if (w % 4 == 0) {
    if (colour) rand.state = 0;
    if (a == 0 || a == -1) return;
    const int64_t n = int64_t{w} * h;
    const auto half = static_cast<uint8_t>(a / 2);
    for (int64_t g = 0; g < n / 16; ++g) {
      for (int c = 0; c < (colour ? 3 : 1); ++c) {
        const Bytes r = lanes.Batch(a);
        for (int k = 0; k < 16; ++k) {
          const int64_t add = r[k] > half ? r[k] - half : 0;
          for (int cc = colour ? c : 0; cc <= (colour ? c : 2); ++cc) {
            f[48 * g + 3 * k + cc] = AddSat(f[48 * g + 3 * k + cc], add);
          }
        }
      }
    }
    const auto tail = [&] { return std::clamp<int64_t>(rand.Draw(a) - half, 0, 255); };
    for (int64_t p = n / 16 * 16; p < n; ++p) {
      const int64_t mono = colour ? 0 : tail();
      for (int c = 0; c < 3; ++c) f[3 * p + c] = AddSat(f[3 * p + c], colour ? tail() : mono);
    }
    return;
  }
  if (a == 0 || a == -1 || h < 1) return;
  for (int64_t p = 0; p < int64_t{w} * h; ++p) {
    const auto wrapped = [&] { return static_cast<uint8_t>(rand.Draw(a) - a / 2); };
    if (colour) {
      for (int c = 2; c >= 0; --c) f[3 * p + c] = static_cast<uint8_t>(f[3 * p + c] + wrapped());
    } else {
      const uint8_t v = wrapped();
      for (int c = 0; c < 3; ++c) f[3 * p + c] = static_cast<uint8_t>(f[3 * p + c] + v);
    }
  }
}

using Effect = void (*)(uint8_t*, int32_t, int32_t, int32_t) noexcept;

TEST(Noise, BothPathsFollowTheModel) {
  const ScopedClassIndex best(prim::DetectedClass());
  Rng rng("effects/noise");
  const int32_t amounts[] = {1,     2,     50,     255,       256,       511, 1000,
                             32767, 65535, 100000, INT32_MAX, INT32_MIN, -2,  -1000};
  const std::pair<int32_t, int32_t> sizes[] = {{4, 1},   {8, 3},  {16, 1}, {20, 5}, {36, 7},
                                               {100, 2}, {1, 1},  {3, 4},  {5, 3},  {17, 2},
                                               {33, 5},  {-4, 3}, {6, 0}};
  for (const bool colour : {true, false}) {
    const Effect effect = colour ? &EffectColorNoise : &EffectMonoNoise;
    for (const int32_t a : amounts) {
      for (const auto& [w, h] : sizes) {
        const size_t bytes = w > 0 && h > 0 ? size_t{3} * w * h : 48;
        Bytes f = RandomFrame(rng, static_cast<int32_t>(bytes), 1), want = f;
        const auto seed = static_cast<uint32_t>(rng.Next());
        prim::NoiseLanes start;
        for (uint32_t& l : start.lane) l = static_cast<uint32_t>(rng.Next());
        effects::StoreNoiseLanes(start);
        effects::Srand(seed);
        ScalarModel rand{seed};
        LaneModel lanes{{start.lane[0], start.lane[1], start.lane[2], start.lane[3]}};
        // Two calls: the second starts where the first left both generators.
        for (int call = 0; call < 2; ++call) {
          Model(want, w, h, a, colour, rand, lanes);
          effect(f.data(), w, h, a);
          ASSERT_EQ(f, want) << (colour ? "colour " : "mono ") << a << " " << w << "x" << h
                             << " call " << call << " " << SeedNote();
        }
      }
    }
  }
}

// Independently computed: the C runtime's sequences for seeds 1 and 0, and the four-lane
// generator's first two batches from zero at amount 512 (half 0, scale 512 / 32767).
TEST(Noise, GeneratorsStartWhereTheRuntimeAndTheLanesDo) {
  EXPECT_EQ(
      kLanesAtLoad.lane[0] | kLanesAtLoad.lane[1] | kLanesAtLoad.lane[2] | kLanesAtLoad.lane[3],
      0u);
  std::thread([] {  // a fresh thread: state 1
    std::vector<int32_t> first;
    for (int i = 0; i < 5; ++i) first.push_back(effects::Rand());
    EXPECT_EQ(first, (std::vector<int32_t>{41, 18467, 6334, 26500, 19169}));
    effects::Srand(0);
    first.clear();
    for (int i = 0; i < 5; ++i) first.push_back(effects::Rand());
    EXPECT_EQ(first, (std::vector<int32_t>{38, 7719, 21238, 2437, 8855}));
  })
      .join();
  effects::StoreNoiseLanes({{0, 0, 0, 0}});
  Bytes f(96, 0);
  EffectMonoNoise(f.data(), 32, 1, 512);
  const Bytes first = {121, 132, 35, 0, 1, 2, 3, 0, 38, 71, 255, 255, 255, 255, 239, 113};
  const Bytes second = {184, 255, 255, 255, 138, 63, 13, 184, 255, 12, 27, 255, 131, 255, 40, 255};
  for (int k = 0; k < 16; ++k) {
    EXPECT_EQ(f[3 * k + 1], first[k]) << k;
    EXPECT_EQ(f[48 + 3 * k + 2], second[k]) << k;
  }
}

TEST(Noise, StatedBehaviours) {
  Rng rng("effects/noise-stated");
  const Bytes in = RandomFrame(rng, 3 * 20, 3);
  // Amount 0 (and -1) changes nothing on either path.
  for (const int32_t w : {20, 15}) {
    for (const int32_t a : {0, -1}) {
      Bytes f = in;
      EffectColorNoise(f.data(), w, 60 / w, a);
      EffectMonoNoise(f.data(), w, 60 / w, a);
      EXPECT_EQ(f, in) << w << " " << a;
    }
  }
  // Fast-path colour noise reseeds: equal frames give equal tails, and different groups.
  Bytes a = in, b = in;
  EffectColorNoise(a.data(), 20, 3, 300);
  EffectColorNoise(b.data(), 20, 3, 300);
  EXPECT_TRUE(std::equal(a.begin() + 144, a.end(), b.begin() + 144));
  EXPECT_NE(Bytes(a.begin(), a.begin() + 144), Bytes(b.begin(), b.begin() + 144));
  // The general path wraps: white plus a draw of 1 .. 128 becomes dark.
  effects::Srand(7);
  Bytes white(3 * 5, 255);
  EffectMonoNoise(white.data(), 5, 1, 255);
  EXPECT_LT(*std::min_element(white.begin(), white.end()), 128);
}

// Noise calls on several threads share the four-lane state without a lock: TSan must see only
// atomic accesses, and every thread's frame must still be noise of the right kind.
TEST(Noise, ThreadsShareTheGeneratorSafely) {
  std::vector<std::thread> threads;
  std::vector<Bytes> frames(4, Bytes(3 * 64 * 8, 0));
  for (size_t t = 0; t < frames.size(); ++t) {
    threads.emplace_back([&frames, t] {
      for (int i = 0; i < 20; ++i) EffectMonoNoise(frames[t].data(), 64, 8, 600);
    });
  }
  for (std::thread& t : threads) t.join();
  for (const Bytes& f : frames) {
    for (size_t p = 0; p < f.size(); p += 3) ASSERT_TRUE(f[p] == f[p + 1] && f[p] == f[p + 2]);
  }
}

}  // namespace
}  // namespace framekit::test

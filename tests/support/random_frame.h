// Seeded randomness for tests.
//
// One seed per test process: FRAMEKIT_TEST_SEED when it is set, otherwise drawn once at the first
// use. Every generator derives its stream from that seed and a name (the primitive, the test), so
// a failure replays with the same seed and the same test filter whatever else runs. A failing
// test that used the seed prints it after the failure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace framekit::test {

// The run's seed (see above).
uint64_t TestSeed();

// Whether anything has drawn on the seed yet.
bool SeedUsed();

// "seed 123 (FRAMEKIT_TEST_SEED=123 replays it)", for failure messages.
std::string SeedNote();

// A deterministic generator. Its output depends only on the seed and the stream name, also
// across platforms (no standard distributions, whose algorithms differ between libraries).
class Rng {
 public:
  explicit Rng(std::string_view stream) : Rng(TestSeed(), stream) {}
  Rng(uint64_t seed, std::string_view stream);

  uint64_t Next() { return engine_(); }
  // Uniform in [lo, hi], both included.
  int32_t Uniform(int32_t lo, int32_t hi);
  bool OneIn(int32_t n) { return Uniform(0, n - 1) == 0; }
  uint8_t Byte() { return static_cast<uint8_t>(engine_() >> 56); }
  // Full-range random bytes.
  void Fill(std::span<uint8_t> bytes);

  template <typename T>
  const T& Pick(const std::vector<T>& items) {
    return items[static_cast<size_t>(Uniform(0, static_cast<int32_t>(items.size()) - 1))];
  }

 private:
  std::mt19937_64 engine_;
};

// A packed frame of random bytes (row_bytes * height), for tests that need no guard pages.
std::vector<uint8_t> RandomFrame(Rng& rng, int32_t row_bytes, int32_t height);

}  // namespace framekit::test

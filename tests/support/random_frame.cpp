#include "support/random_frame.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace framekit::test {
namespace {

std::atomic<bool> g_seed_used{false};

uint64_t Fnv1a(std::string_view text, uint64_t h = 0xcbf29ce484222325ull) {
  for (const char c : text) {
    h ^= static_cast<uint8_t>(c);
    h *= 0x100000001b3ull;
  }
  return h;
}

// splitmix64 finaliser: spreads nearby seeds and names over the whole state.
uint64_t Mix(uint64_t x) {
  x += 0x9e3779b97f4a7c15ull;
  x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ull;
  x = (x ^ (x >> 27)) * 0x94d049bb133111ebull;
  return x ^ (x >> 31);
}

uint64_t ChooseSeed() {
  if (const char* env = std::getenv("FRAMEKIT_TEST_SEED"); env != nullptr && *env != '\0') {
    char* end = nullptr;
    const unsigned long long parsed = std::strtoull(env, &end, 0);
    // Any other text is a seed too: its hash.
    return *end == '\0' ? parsed : Fnv1a(env);
  }
  std::random_device device;
  const uint64_t clock =
      static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
  // Kept below 2^53 so it survives being pasted through tools that parse numbers as doubles.
  return Mix((uint64_t{device()} << 32) ^ device() ^ clock) >> 11;
}

}  // namespace

bool SeedUsed() { return g_seed_used.load(); }

uint64_t TestSeed() {
  static const uint64_t seed = ChooseSeed();
  g_seed_used.store(true);
  return seed;
}

std::string SeedNote() {
  const std::string seed = std::to_string(TestSeed());
  return "seed " + seed + " (FRAMEKIT_TEST_SEED=" + seed + " replays it)";
}

Rng::Rng(uint64_t seed, std::string_view stream) : engine_(Mix(seed ^ Mix(Fnv1a(stream)))) {}

int32_t Rng::Uniform(int32_t lo, int32_t hi) {
  const uint64_t range = static_cast<uint64_t>(int64_t{hi} - lo) + 1;
  // The modulo bias is below 2^-32 for the ranges tests use.
  return static_cast<int32_t>(lo + static_cast<int64_t>(engine_() % range));
}

void Rng::Fill(std::span<uint8_t> bytes) {
  size_t i = 0;
  for (; i + 8 <= bytes.size(); i += 8) {
    uint64_t v = engine_();
    for (size_t k = 0; k < 8; ++k, v >>= 8) bytes[i + k] = static_cast<uint8_t>(v);
  }
  for (; i < bytes.size(); ++i) bytes[i] = Byte();
}

std::vector<uint8_t> RandomFrame(Rng& rng, int32_t row_bytes, int32_t height) {
  std::vector<uint8_t> frame(static_cast<size_t>(row_bytes) * static_cast<size_t>(height));
  rng.Fill(frame);
  return frame;
}

}  // namespace framekit::test

#include "effects/random.h"

#include <atomic>

namespace framekit::effects {
namespace {

thread_local uint32_t t_rand_state = 1;
std::atomic<uint32_t> g_noise_lanes[4] = {0, 0, 0, 0};

}  // namespace

int32_t Rand() {
  t_rand_state = t_rand_state * 214013u + 2531011u;
  return static_cast<int32_t>((t_rand_state >> 16) & 0x7FFFu);
}

void Srand(uint32_t seed) { t_rand_state = seed; }

prim::NoiseLanes LoadNoiseLanes() {
  prim::NoiseLanes lanes;
  for (int i = 0; i < 4; ++i) lanes.lane[i] = g_noise_lanes[i].load(std::memory_order_relaxed);
  return lanes;
}

void StoreNoiseLanes(const prim::NoiseLanes& lanes) {
  for (int i = 0; i < 4; ++i) g_noise_lanes[i].store(lanes.lane[i], std::memory_order_relaxed);
}

}  // namespace framekit::effects

// The four-lane generator and the sixteen noise bytes as scalar code, with the jump-ahead
// constants the vector bodies use to compute many steps from one state at once.
//
// One step: lane_i = lane_i * kMul[i] + kInc[i] (mod 2^32). k steps are the affine map
// s -> Jump(k).mul * s + Jump(k).add, so every lane value a group needs comes from the group's
// starting state with one multiply and one add, and the generator's own chain is one multiply a
// group. A batch (sixteen bytes) is four steps d1..d4; each lane value v gives
// clamp8(clamp16(round_even(float((v >> 16) & 0x7FFF) * scale))), ordered d2, d1, d4, d3.
//
// Internal linkage throughout (per-ISA files include this).
#pragma once

#include <cstdint>

#include "primitives/core/lane_math.h"
#include "primitives/noise/noise.h"

namespace framekit::prim::noise {

static constexpr uint32_t kMul[4] = {214013u, 17405u, 214013u, 69069u};
static constexpr uint32_t kInc[4] = {2531011u, 10395331u, 13737667u, 1u};

// Steps per 16-pixel group.
static constexpr int kColourSteps = 12;
static constexpr int kMonoSteps = 4;

struct Affine {
  uint32_t mul, add;
};

// `first`, then `then`.
static constexpr Affine Compose(Affine first, Affine then) {
  return {then.mul * first.mul, then.mul * first.add + then.add};
}

// k steps of lane i.
static constexpr Affine Jump(int lane, uint64_t k) {
  Affine result{1, 0}, step{kMul[lane], kInc[lane]};
  for (; k != 0; k >>= 1, step = Compose(step, step)) {
    if (k & 1) result = Compose(result, step);
  }
  return result;
}

static constexpr NoiseLanes Advance(NoiseLanes s, uint64_t steps) {
  for (int i = 0; i < 4; ++i) {
    const Affine j = Jump(i, steps);
    s.lane[i] = j.mul * s.lane[i] + j.add;
  }
  return s;
}

// Steps the generator takes over `pixels` pixels of a fast path (whole groups only).
static constexpr uint64_t NoiseSteps(uint64_t pixels, int steps_per_group) {
  return pixels / 16 * static_cast<uint64_t>(steps_per_group);
}

// Jump tables for 1..kMaxJump steps, lane by lane: kJumpMul[k - 1][i].
static constexpr int kMaxJump = 12;
struct JumpTable {
  uint32_t mul[kMaxJump][4];
  uint32_t add[kMaxJump][4];
};
static constexpr JumpTable MakeJumpTable() {
  JumpTable t{};
  for (int k = 1; k <= kMaxJump; ++k) {
    for (int i = 0; i < 4; ++i) {
      t.mul[k - 1][i] = Jump(i, static_cast<uint64_t>(k)).mul;
      t.add[k - 1][i] = Jump(i, static_cast<uint64_t>(k)).add;
    }
  }
  return t;
}
static constexpr JumpTable kJumps = MakeJumpTable();
static_assert(kJumps.mul[0][3] == 69069u && kJumps.add[0][1] == 10395331u);
static_assert(kJumps.mul[1][0] == 214013u * 214013u &&
              kJumps.add[1][0] == 214013u * 2531011u + 2531011u);

static inline float NoiseScale(int32_t amount) { return static_cast<float>(amount) / 32767.0f; }
static inline uint8_t NoiseHalf(int32_t amount) { return static_cast<uint8_t>(amount / 2); }

static inline uint8_t NoiseByte(uint32_t lane, float scale) {
  const float v = static_cast<float>((lane >> 16) & 0x7FFFu);
  return ClampByte(ClampInt16(RoundEven(v * scale)));
}

// One batch: four steps of `s`, sixteen bytes in the order d2, d1, d4, d3.
static inline void NoiseBatch(NoiseLanes& s, float scale, uint8_t out[16]) {
  uint32_t d[4][4];
  for (int k = 0; k < 4; ++k) {
    for (int i = 0; i < 4; ++i) d[k][i] = s.lane[i] = s.lane[i] * kMul[i] + kInc[i];
  }
  constexpr int kOrder[4] = {1, 0, 3, 2};
  for (int j = 0; j < 4; ++j) {
    for (int i = 0; i < 4; ++i) out[4 * j + i] = NoiseByte(d[kOrder[j]][i], scale);
  }
}

// max(0, r - half) added with saturation.
static inline uint8_t AddNoise(uint8_t v, uint8_t r, uint8_t half) {
  const int32_t n = r > half ? r - half : 0;
  return static_cast<uint8_t>(v + n > 255 ? 255 : v + n);
}

}  // namespace framekit::prim::noise

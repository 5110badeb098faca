// The effects' random sources.
//
// Scalar: the C runtime's generator, our own so that Windows and Linux give the same numbers:
// per thread, state = state * 214013 + 2531011 (mod 2^32), each draw (state >> 16) & 0x7FFF
// (0..32767); the state is 1 until the thread seeds it, and seeding sets it to the seed.
//
// Four-lane: one process-wide state of four 32-bit lanes, zero at load and never reseeded (its
// step is in primitives/noise/noise_kernels.h). Threads load it and store it back without a lock:
// concurrent noise calls may interleave, as they may in any unsynchronised generator, but every
// access is atomic (relaxed), so nothing is undefined.
#pragma once

#include <cstdint>

#include "primitives/noise/noise.h"

namespace framekit::effects {

int32_t Rand();
void Srand(uint32_t seed);

prim::NoiseLanes LoadNoiseLanes();
void StoreNoiseLanes(const prim::NoiseLanes& lanes);

}  // namespace framekit::effects

// Colour and mono noise. Fast path (width % 4 == 0): the whole frame as one row of pixels, whole
// groups of 16 from the four-lane generator through the noise kernels, the last n % 16 pixels
// from scalar draws clamped to 0..255; noise only brightens. General path: scalar draws taken
// modulo 256 and added modulo 256, so pixels brighten, darken and wrap.
#include "primitives/noise/noise.h"

#include <cstddef>

#include "effects/effects.h"
#include "effects/frame_walk.h"
#include "effects/random.h"
#include "primitives/core/strides.h"
#include "primitives/core/wrap.h"
#include "primitives/noise/noise_kernels.h"

namespace framekit::effects {
namespace {

using prim::NoiseLanes;

// rand() mod (amount + 1); the modulus wraps in 32 bits and is never 0 here (amount != -1).
int32_t Draw(int32_t amount) { return Rand() % WrapAdd(amount, 1); }

// A fast-path tail draw: clamp(draw - half, 0, 255), half the 8-bit half amount.
int32_t TailDraw(int32_t amount, uint8_t half) {
  const int32_t v = Draw(amount) - half;
  return v < 0 ? 0 : (v > 255 ? 255 : v);
}
uint8_t AddClamped(uint8_t v, int32_t n) { return static_cast<uint8_t>(v + n > 255 ? 255 : v + n); }

// A general-path draw: (draw - amount / 2) mod 256.
uint8_t WrappedDraw(int32_t amount) {
  return static_cast<uint8_t>(WrapSub(Draw(amount), amount / 2));
}

// Runs the kernel over the frame's whole groups and moves the shared lanes on past them.
// Returns the number of pixels (0 when there are none).
size_t NoiseGroups(prim::NoiseBlocksSig& kernel, int steps_per_group, uint8_t* frame, int32_t width,
                   int32_t height, int32_t amount) {
  prim::Size row;
  if (!AsOneRow(width, height, &row)) return 0;
  const NoiseLanes lanes = LoadNoiseLanes();
  kernel(frame, PackedStride(row.width, 3), row, amount, lanes);
  const auto pixels = static_cast<size_t>(row.width);
  StoreNoiseLanes(prim::noise::Advance(lanes, prim::noise::NoiseSteps(pixels, steps_per_group)));
  return pixels;
}

}  // namespace

void ColourNoise(uint8_t* frame, int32_t width, int32_t height, int32_t amount) {
  if (FastPath(width)) {
    Srand(0);  // this path restarts the thread's scalar source at every call
    if (amount == 0 || amount == -1) return;
    const size_t n = NoiseGroups(prim::ColourNoiseBlocks, prim::noise::kColourSteps, frame, width,
                                 height, amount);
    const uint8_t half = prim::noise::NoiseHalf(amount);
    for (uint8_t* p = frame + 3 * (n / 16 * 16); p < frame + 3 * n; p += 3) {
      for (int c = 0; c < 3; ++c) p[c] = AddClamped(p[c], TailDraw(amount, half));
    }
    return;
  }
  if (amount == 0 || amount == -1 || height < 1) return;
  uint8_t* const end = frame + RowBytes(width, height);
  for (uint8_t* p = frame; p < end; p += 3) {
    for (int c = 2; c >= 0; --c) p[c] = static_cast<uint8_t>(p[c] + WrappedDraw(amount));
  }
}

void MonoNoise(uint8_t* frame, int32_t width, int32_t height, int32_t amount) {
  if (amount == 0 || amount == -1) return;
  if (FastPath(width)) {
    const size_t n =
        NoiseGroups(prim::MonoNoiseBlocks, prim::noise::kMonoSteps, frame, width, height, amount);
    const uint8_t half = prim::noise::NoiseHalf(amount);
    for (uint8_t* p = frame + 3 * (n / 16 * 16); p < frame + 3 * n; p += 3) {
      const int32_t v = TailDraw(amount, half);
      for (int c = 0; c < 3; ++c) p[c] = AddClamped(p[c], v);
    }
    return;
  }
  if (height < 1) return;
  uint8_t* const end = frame + RowBytes(width, height);
  for (uint8_t* p = frame; p < end; p += 3) {
    const uint8_t v = WrappedDraw(amount);
    for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(p[c] + v);
  }
}

}  // namespace framekit::effects

// Noise kernels, reference level: class 0. One batch of sixteen bytes at a time.
#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/noise/noise.h"
#include "primitives/noise/noise_kernels.h"

namespace framekit::prim::ref {

using noise::AddNoise;
using noise::NoiseBatch;

Status ColourNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const float scale = noise::NoiseScale(amount);
  const uint8_t half = noise::NoiseHalf(amount);
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* px = RowAt(p, step, r);
    for (int32_t g = 0; g < roi.width / 16; ++g, px += 48) {
      for (int c = 0; c < 3; ++c) {
        uint8_t bytes[16];
        NoiseBatch(lanes, scale, bytes);
        for (int k = 0; k < 16; ++k) px[3 * k + c] = AddNoise(px[3 * k + c], bytes[k], half);
      }
    }
  }
  return ippStsNoErr;
}

Status MonoNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  const float scale = noise::NoiseScale(amount);
  const uint8_t half = noise::NoiseHalf(amount);
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* px = RowAt(p, step, r);
    for (int32_t g = 0; g < roi.width / 16; ++g, px += 48) {
      uint8_t bytes[16];
      NoiseBatch(lanes, scale, bytes);
      for (int k = 0; k < 48; ++k) px[k] = AddNoise(px[k], bytes[k / 3], half);
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

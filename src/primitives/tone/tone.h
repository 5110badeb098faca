// Fast-path kernels of the tone effects (lightness, darkness, contrast, saturation).
//
// Each walks rows of roi.width three-byte pixels in place: the first 16 * (width / 16) pixels of
// a row in blocks of 16, rounded to nearest even in single precision, and the last width % 16
// pixels with the truncating tail formula (tone_model.h gives both, byte for byte). The effects
// call them with the whole frame as one row of width * height pixels, so the tail is the frame's
// last pixels. Checks: null pointer (-8), then width or height below 1 (-6).
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

// level: the clamped amount, 1..255 from the effects (any value is computed as described).
using LevelBlocksSig = Status(uint8_t* p, int32_t step, Size roi, int32_t level);
using LevelBlocksFn = LevelBlocksSig*;
// k: the contrast; the single-precision factor is computed from it, unguarded.
using ContrastBlocksSig = Status(uint8_t* p, int32_t step, Size roi, int32_t k);
using ContrastBlocksFn = ContrastBlocksSig*;
// s: the saturation; 255 is the identity.
using SaturationBlocksSig = Status(uint8_t* p, int32_t step, Size roi, uint32_t s);
using SaturationBlocksFn = SaturationBlocksSig*;

#define FK_DECLARE_TONE_VARIANTS(isa)   \
  namespace isa {                       \
  LevelBlocksSig LightnessBlocks;       \
  LevelBlocksSig DarknessBlocks;        \
  ContrastBlocksSig ContrastBlocks;     \
  SaturationBlocksSig SaturationBlocks; \
  }

FK_DECLARE_TONE_VARIANTS(ref)
FK_DECLARE_TONE_VARIANTS(sse2)
FK_DECLARE_TONE_VARIANTS(ssse3)
FK_DECLARE_TONE_VARIANTS(avx2)

LevelBlocksSig LightnessBlocks;
LevelBlocksSig DarknessBlocks;
ContrastBlocksSig ContrastBlocks;
SaturationBlocksSig SaturationBlocks;

extern const Table<LevelBlocksFn> kLightnessBlocksTable;
extern const Table<LevelBlocksFn> kDarknessBlocksTable;
extern const Table<ContrastBlocksFn> kContrastBlocksTable;
extern const Table<SaturationBlocksFn> kSaturationBlocksTable;

}  // namespace framekit::prim

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

// The levels with bodies: the reference and AVX2 for all four, SSE2 for the byte-wise three,
// SSSE3 for saturation (its channel split needs pshufb).
namespace ref {
LevelBlocksSig LightnessBlocks, DarknessBlocks;
ContrastBlocksSig ContrastBlocks;
SaturationBlocksSig SaturationBlocks;
}  // namespace ref
namespace sse2 {
LevelBlocksSig LightnessBlocks, DarknessBlocks;
ContrastBlocksSig ContrastBlocks;
}  // namespace sse2
namespace ssse3 {
SaturationBlocksSig SaturationBlocks;
}
namespace avx2 {
LevelBlocksSig LightnessBlocks, DarknessBlocks;
ContrastBlocksSig ContrastBlocks;
SaturationBlocksSig SaturationBlocks;
}  // namespace avx2

FK_PRIMITIVE(LightnessBlocks, LevelBlocksSig);
FK_PRIMITIVE(DarknessBlocks, LevelBlocksSig);
FK_PRIMITIVE(ContrastBlocks, ContrastBlocksSig);
FK_PRIMITIVE(SaturationBlocks, SaturationBlocksSig);

}  // namespace framekit::prim

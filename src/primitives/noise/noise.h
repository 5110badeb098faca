// Fast-path kernels of the noise effects: noise bytes from the four-lane generator added to the
// pixels of whole 16-pixel groups.
//
// Each walks rows of roi.width three-byte pixels in place, the first 16 * (width / 16) pixels of a
// row in groups of 16; the last width % 16 pixels are left alone (the effects give them scalar
// draws). The generator starts from `lanes` and runs on across groups and rows; the caller moves
// its own copy on by NoiseSteps(...) steps afterwards (noise_kernels.h), so a body needs no
// output besides the pixels.
//
//   colour: per group three batches of sixteen noise bytes, for blue, green and red of the group
//           (pixel k gets byte k of each);
//   mono:   per group one batch; pixel k gets byte k on all three channels.
// A noise byte r becomes max(0, r - half) with half = (amount / 2) mod 256 and is added with
// saturation at 255. Checks: null pointer (-8), then width or height below 1 (-6).
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

// The four lanes of the vector generator (lane 0 first).
struct NoiseLanes {
  uint32_t lane[4];
};

using NoiseBlocksSig = Status(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes);
using NoiseBlocksFn = NoiseBlocksSig*;

namespace ref {
NoiseBlocksSig ColourNoiseBlocks, MonoNoiseBlocks;
}
namespace sse2 {
NoiseBlocksSig ColourNoiseBlocks, MonoNoiseBlocks;
}
namespace ssse3 {
NoiseBlocksSig ColourNoiseBlocks, MonoNoiseBlocks;
}
namespace sse41 {
NoiseBlocksSig ColourNoiseBlocks, MonoNoiseBlocks;
}
namespace avx2 {
NoiseBlocksSig ColourNoiseBlocks, MonoNoiseBlocks;
}

FK_PRIMITIVE(ColourNoiseBlocks, NoiseBlocksSig);
FK_PRIMITIVE(MonoNoiseBlocks, NoiseBlocksSig);

}  // namespace framekit::prim

#include "primitives/noise/noise.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ColourNoiseBlocks, NoiseBlocksSig, .ref = ref::ColourNoiseBlocks,
                   .sse2 = FK_X86(sse2::ColourNoiseBlocks),
                   .ssse3 = FK_X86(ssse3::ColourNoiseBlocks),
                   .sse41 = FK_X86(sse41::ColourNoiseBlocks),
                   .avx2 = FK_X86(avx2::ColourNoiseBlocks));
FK_PRIMITIVE_TABLE(MonoNoiseBlocks, NoiseBlocksSig, .ref = ref::MonoNoiseBlocks,
                   .sse2 = FK_X86(sse2::MonoNoiseBlocks), .ssse3 = FK_X86(ssse3::MonoNoiseBlocks),
                   .sse41 = FK_X86(sse41::MonoNoiseBlocks), .avx2 = FK_X86(avx2::MonoNoiseBlocks));

}  // namespace framekit::prim

#include "primitives/tone/tone.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(LightnessBlocks, LevelBlocksSig, .ref = ref::LightnessBlocks,
                   .sse2 = FK_X86(sse2::LightnessBlocks), .avx2 = FK_X86(avx2::LightnessBlocks));
FK_PRIMITIVE_TABLE(DarknessBlocks, LevelBlocksSig, .ref = ref::DarknessBlocks,
                   .sse2 = FK_X86(sse2::DarknessBlocks), .avx2 = FK_X86(avx2::DarknessBlocks));
FK_PRIMITIVE_TABLE(ContrastBlocks, ContrastBlocksSig, .ref = ref::ContrastBlocks,
                   .sse2 = FK_X86(sse2::ContrastBlocks), .avx2 = FK_X86(avx2::ContrastBlocks));
FK_PRIMITIVE_TABLE(SaturationBlocks, SaturationBlocksSig, .ref = ref::SaturationBlocks,
                   .ssse3 = FK_X86(ssse3::SaturationBlocks),
                   .avx2 = FK_X86(avx2::SaturationBlocks));

}  // namespace framekit::prim

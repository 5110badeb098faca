#include "primitives/tone/tone.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kLightnessBlocksTable, LightnessBlocks, LevelBlocksFn,
                   .ref = ref::LightnessBlocks, .sse2 = FK_X86(sse2::LightnessBlocks),
                   .avx2 = FK_X86(avx2::LightnessBlocks));
FK_PRIMITIVE_TABLE(kDarknessBlocksTable, DarknessBlocks, LevelBlocksFn, .ref = ref::DarknessBlocks,
                   .sse2 = FK_X86(sse2::DarknessBlocks), .avx2 = FK_X86(avx2::DarknessBlocks));
FK_PRIMITIVE_TABLE(kContrastBlocksTable, ContrastBlocks, ContrastBlocksFn,
                   .ref = ref::ContrastBlocks, .sse2 = FK_X86(sse2::ContrastBlocks),
                   .avx2 = FK_X86(avx2::ContrastBlocks));
FK_PRIMITIVE_TABLE(kSaturationBlocksTable, SaturationBlocks, SaturationBlocksFn,
                   .ref = ref::SaturationBlocks, .ssse3 = FK_X86(ssse3::SaturationBlocks),
                   .avx2 = FK_X86(avx2::SaturationBlocks));

Status LightnessBlocks(uint8_t* p, int32_t step, Size roi, int32_t level) {
  return kLightnessBlocksTable[ClassIndex()](p, step, roi, level);
}
Status DarknessBlocks(uint8_t* p, int32_t step, Size roi, int32_t level) {
  return kDarknessBlocksTable[ClassIndex()](p, step, roi, level);
}
Status ContrastBlocks(uint8_t* p, int32_t step, Size roi, int32_t k) {
  return kContrastBlocksTable[ClassIndex()](p, step, roi, k);
}
Status SaturationBlocks(uint8_t* p, int32_t step, Size roi, uint32_t s) {
  return kSaturationBlocksTable[ClassIndex()](p, step, roi, s);
}

}  // namespace framekit::prim

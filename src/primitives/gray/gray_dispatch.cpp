#include "primitives/gray/gray.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kColorToGrayTable, ippiColorToGray_8u_C3C1R, ColorToGrayFn,
                   .ref = ref::ippiColorToGray_8u_C3C1R,
                   .ssse3 = FK_X86(ssse3::ippiColorToGray_8u_C3C1R));
FK_PRIMITIVE_TABLE(kDupC1C3Table, ippiDup_8u_C1C3R, DupFn, .ref = ref::ippiDup_8u_C1C3R,
                   .ssse3 = FK_X86(ssse3::ippiDup_8u_C1C3R));

Status ippiColorToGray_8u_C3C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi, const float* weights) {
  return kColorToGrayTable[ClassIndex()](src, src_step, dst, dst_step, roi, weights);
}
Status ippiDup_8u_C1C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                        Size roi) {
  return kDupC1C3Table[ClassIndex()](src, src_step, dst, dst_step, roi);
}

}  // namespace framekit::prim

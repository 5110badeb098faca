#include "primitives/copy/copy.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kCopyC3RTable, ippiCopy_8u_C3R, CopyFn, .ref = ref::ippiCopy_8u_C3R);
FK_PRIMITIVE_TABLE(kCopyC4RTable, ippiCopy_8u_C4R, CopyFn, .ref = ref::ippiCopy_8u_C4R);

Status ippiCopy_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                       Size roi) {
  return kCopyC3RTable[ClassIndex()](src, src_step, dst, dst_step, roi);
}
Status ippiCopy_8u_C4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                       Size roi) {
  return kCopyC4RTable[ClassIndex()](src, src_step, dst, dst_step, roi);
}

}  // namespace framekit::prim

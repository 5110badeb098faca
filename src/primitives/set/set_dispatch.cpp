#include "primitives/set/set.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kSetC3RTable, ippiSet_8u_C3R, SetC3Fn, .ref = ref::ippiSet_8u_C3R,
                   .sse2 = FK_X86(sse2::ippiSet_8u_C3R), .avx2 = FK_X86(avx2::ippiSet_8u_C3R));

Status ippiSet_8u_C3R(const uint8_t* value, uint8_t* dst, int32_t dst_step, Size roi) {
  return kSetC3RTable[ClassIndex()](value, dst, dst_step, roi);
}

}  // namespace framekit::prim

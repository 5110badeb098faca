#include "primitives/sub/sub.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kSubC3ISfsTable, ippiSub_8u_C3IRSfs, SubC3ISfsFn, .ref = ref::ippiSub_8u_C3IRSfs,
                   .sse2 = FK_X86(sse2::ippiSub_8u_C3IRSfs),
                   .avx2 = FK_X86(avx2::ippiSub_8u_C3IRSfs));

Status ippiSub_8u_C3IRSfs(const uint8_t* src, int32_t src_step, uint8_t* src_dst,
                          int32_t src_dst_step, Size roi, int32_t scale) {
  return kSubC3ISfsTable[ClassIndex()](src, src_step, src_dst, src_dst_step, roi, scale);
}

}  // namespace framekit::prim

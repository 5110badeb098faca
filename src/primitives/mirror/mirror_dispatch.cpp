#include "primitives/mirror/mirror.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kMirrorC1IRTable, ippiMirror_8u_C1IR, MirrorIRFn, .ref = ref::ippiMirror_8u_C1IR,
                   .sse2 = FK_X86(sse2::ippiMirror_8u_C1IR),
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C1IR),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C1IR));
FK_PRIMITIVE_TABLE(kMirrorC3IRTable, ippiMirror_8u_C3IR, MirrorIRFn, .ref = ref::ippiMirror_8u_C3IR,
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C3IR),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C3IR));
FK_PRIMITIVE_TABLE(kMirrorC4IRTable, ippiMirror_8u_C4IR, MirrorIRFn, .ref = ref::ippiMirror_8u_C4IR,
                   .sse2 = FK_X86(sse2::ippiMirror_8u_C4IR),
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C4IR),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C4IR));
FK_PRIMITIVE_TABLE(kMirrorC1RTable, ippiMirror_8u_C1R, MirrorRFn, .ref = ref::ippiMirror_8u_C1R,
                   .sse2 = FK_X86(sse2::ippiMirror_8u_C1R),
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C1R),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C1R));
FK_PRIMITIVE_TABLE(kMirrorC4RTable, ippiMirror_8u_C4R, MirrorRFn, .ref = ref::ippiMirror_8u_C4R,
                   .sse2 = FK_X86(sse2::ippiMirror_8u_C4R),
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C4R),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C4R));

Status ippiMirror_8u_C1IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return kMirrorC1IRTable[ClassIndex()](p, step, roi, axis);
}
Status ippiMirror_8u_C3IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return kMirrorC3IRTable[ClassIndex()](p, step, roi, axis);
}
Status ippiMirror_8u_C4IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return kMirrorC4IRTable[ClassIndex()](p, step, roi, axis);
}
Status ippiMirror_8u_C1R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t axis) {
  return kMirrorC1RTable[ClassIndex()](src, src_step, dst, dst_step, roi, axis);
}
Status ippiMirror_8u_C4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t axis) {
  return kMirrorC4RTable[ClassIndex()](src, src_step, dst, dst_step, roi, axis);
}

}  // namespace framekit::prim

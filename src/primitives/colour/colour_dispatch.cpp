#include "primitives/colour/colour.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kYCbCr422ToBGRTable, ippiYCbCr422ToBGR_8u_C2C3R, PackedConvertFn,
                   .ref = ref::ippiYCbCr422ToBGR_8u_C2C3R,
                   .ssse3 = FK_X86(ssse3::ippiYCbCr422ToBGR_8u_C2C3R),
                   .avx2 = FK_X86(avx2::ippiYCbCr422ToBGR_8u_C2C3R));
FK_PRIMITIVE_TABLE(kBGRToYCbCr422Table, ippiBGRToYCbCr422_8u_C3C2R, PackedConvertFn,
                   .ref = ref::ippiBGRToYCbCr422_8u_C3C2R,
                   .ssse3 = FK_X86(ssse3::ippiBGRToYCbCr422_8u_C3C2R),
                   .avx2 = FK_X86(avx2::ippiBGRToYCbCr422_8u_C3C2R));
FK_PRIMITIVE_TABLE(kYUV420ToBGRTable, ippiYUV420ToBGR_8u_P3C3R, PlanarToPackedFn,
                   .ref = ref::ippiYUV420ToBGR_8u_P3C3R,
                   .ssse3 = FK_X86(ssse3::ippiYUV420ToBGR_8u_P3C3R),
                   .avx2 = FK_X86(avx2::ippiYUV420ToBGR_8u_P3C3R));
FK_PRIMITIVE_TABLE(kBGRToYUV420Table, ippiBGRToYUV420_8u_C3P3R, PackedToPlanarFn,
                   .ref = ref::ippiBGRToYUV420_8u_C3P3R,
                   .ssse3 = FK_X86(ssse3::ippiBGRToYUV420_8u_C3P3R),
                   .avx2 = FK_X86(avx2::ippiBGRToYUV420_8u_C3P3R));
FK_PRIMITIVE_TABLE(kMirrorBGRToYUV420Table, MirrorBGRToYUV420, MirrorToPlanarFn,
                   .ref = ref::MirrorBGRToYUV420, .ssse3 = FK_X86(ssse3::MirrorBGRToYUV420),
                   .avx2 = FK_X86(avx2::MirrorBGRToYUV420));

Status ippiYCbCr422ToBGR_8u_C2C3R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  return kYCbCr422ToBGRTable[ClassIndex()](src, src_step, dst, dst_step, roi);
}
Status ippiBGRToYCbCr422_8u_C3C2R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  return kBGRToYCbCr422Table[ClassIndex()](src, src_step, dst, dst_step, roi);
}
Status ippiYUV420ToBGR_8u_P3C3R(const uint8_t* const src[3], const int32_t src_step[3],
                                uint8_t* dst, int32_t dst_step, Size roi) {
  return kYUV420ToBGRTable[ClassIndex()](src, src_step, dst, dst_step, roi);
}
Status ippiBGRToYUV420_8u_C3P3R(const uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                const int32_t dst_step[3], Size roi) {
  return kBGRToYUV420Table[ClassIndex()](src, src_step, dst, dst_step, roi);
}

Status MirrorBGRToYUV420(uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                         const int32_t dst_step[3], Size roi) {
  return kMirrorBGRToYUV420Table[ClassIndex()](src, src_step, dst, dst_step, roi);
}

}  // namespace framekit::prim

#include "primitives/channel/channel.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(kCopyAC4C3RTable, ippiCopy_8u_AC4C3R, ChannelCopyFn,
                   .ref = ref::ippiCopy_8u_AC4C3R, .ssse3 = FK_X86(ssse3::ippiCopy_8u_AC4C3R),
                   .avx2 = FK_X86(avx2::ippiCopy_8u_AC4C3R));
FK_PRIMITIVE_TABLE(kCopyC3AC4RTable, ippiCopy_8u_C3AC4R, ChannelCopyFn,
                   .ref = ref::ippiCopy_8u_C3AC4R, .ssse3 = FK_X86(ssse3::ippiCopy_8u_C3AC4R),
                   .avx2 = FK_X86(avx2::ippiCopy_8u_C3AC4R));
FK_PRIMITIVE_TABLE(kAddCC4IRSfsTable, ippiAddC_8u_C4IRSfs, AddCC4Fn,
                   .ref = ref::ippiAddC_8u_C4IRSfs, .ssse3 = FK_X86(ssse3::ippiAddC_8u_C4IRSfs),
                   .avx2 = FK_X86(avx2::ippiAddC_8u_C4IRSfs));
FK_PRIMITIVE_TABLE(kCopyC3AC4AddCTable, CopyC3AC4AddC, CopyAddFn, .ref = ref::CopyC3AC4AddC,
                   .ssse3 = FK_X86(ssse3::CopyC3AC4AddC), .avx2 = FK_X86(avx2::CopyC3AC4AddC));
FK_PRIMITIVE_TABLE(kSwapChannelsC3RTable, ippiSwapChannels_8u_C3R, SwapC3Fn,
                   .ref = ref::ippiSwapChannels_8u_C3R,
                   .ssse3 = FK_X86(ssse3::ippiSwapChannels_8u_C3R),
                   .avx2 = FK_X86(avx2::ippiSwapChannels_8u_C3R));
Status ippiCopy_8u_AC4C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  return kCopyAC4C3RTable[ClassIndex()](src, src_step, dst, dst_step, roi);
}
Status ippiCopy_8u_C3AC4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi) {
  return kCopyC3AC4RTable[ClassIndex()](src, src_step, dst, dst_step, roi);
}
Status ippiAddC_8u_C4IRSfs(const uint8_t value[4], uint8_t* p, int32_t step, Size roi,
                           int32_t scale) {
  return kAddCC4IRSfsTable[ClassIndex()](value, p, step, roi, scale);
}
Status CopyC3AC4AddC(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi,
                     const uint8_t value[4]) {
  return kCopyC3AC4AddCTable[ClassIndex()](src, src_step, dst, dst_step, roi, value);
}
Status ippiSwapChannels_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                               Size roi, const int32_t order[3]) {
  return kSwapChannelsC3RTable[ClassIndex()](src, src_step, dst, dst_step, roi, order);
}

}  // namespace framekit::prim

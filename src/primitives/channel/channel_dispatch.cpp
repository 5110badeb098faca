#include "primitives/channel/channel.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiCopy_8u_AC4C3R, ChannelCopySig, .ref = ref::ippiCopy_8u_AC4C3R,
                   .ssse3 = FK_X86(ssse3::ippiCopy_8u_AC4C3R),
                   .avx2 = FK_X86(avx2::ippiCopy_8u_AC4C3R));
FK_PRIMITIVE_TABLE(ippiCopy_8u_C3AC4R, ChannelCopySig, .ref = ref::ippiCopy_8u_C3AC4R,
                   .ssse3 = FK_X86(ssse3::ippiCopy_8u_C3AC4R),
                   .avx2 = FK_X86(avx2::ippiCopy_8u_C3AC4R));
FK_PRIMITIVE_TABLE(ippiAddC_8u_C4IRSfs, AddCC4Sig, .ref = ref::ippiAddC_8u_C4IRSfs,
                   .ssse3 = FK_X86(ssse3::ippiAddC_8u_C4IRSfs),
                   .avx2 = FK_X86(avx2::ippiAddC_8u_C4IRSfs));
FK_PRIMITIVE_TABLE(CopyC3AC4AddC, CopyAddSig, .ref = ref::CopyC3AC4AddC,
                   .ssse3 = FK_X86(ssse3::CopyC3AC4AddC), .avx2 = FK_X86(avx2::CopyC3AC4AddC));
FK_PRIMITIVE_TABLE(ippiSwapChannels_8u_C3R, SwapC3Sig, .ref = ref::ippiSwapChannels_8u_C3R,
                   .ssse3 = FK_X86(ssse3::ippiSwapChannels_8u_C3R),
                   .avx2 = FK_X86(avx2::ippiSwapChannels_8u_C3R));

}  // namespace framekit::prim

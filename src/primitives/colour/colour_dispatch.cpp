#include "primitives/colour/colour.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiYCbCr422ToBGR_8u_C2C3R, PackedConvertSig,
                   .ref = ref::ippiYCbCr422ToBGR_8u_C2C3R,
                   .ssse3 = FK_X86(ssse3::ippiYCbCr422ToBGR_8u_C2C3R),
                   .avx2 = FK_X86(avx2::ippiYCbCr422ToBGR_8u_C2C3R));
FK_PRIMITIVE_TABLE(ippiBGRToYCbCr422_8u_C3C2R, PackedConvertSig,
                   .ref = ref::ippiBGRToYCbCr422_8u_C3C2R,
                   .ssse3 = FK_X86(ssse3::ippiBGRToYCbCr422_8u_C3C2R),
                   .avx2 = FK_X86(avx2::ippiBGRToYCbCr422_8u_C3C2R));
FK_PRIMITIVE_TABLE(ippiYUV420ToBGR_8u_P3C3R, PlanarToPackedSig,
                   .ref = ref::ippiYUV420ToBGR_8u_P3C3R,
                   .ssse3 = FK_X86(ssse3::ippiYUV420ToBGR_8u_P3C3R),
                   .avx2 = FK_X86(avx2::ippiYUV420ToBGR_8u_P3C3R));
FK_PRIMITIVE_TABLE(ippiBGRToYUV420_8u_C3P3R, PackedToPlanarSig,
                   .ref = ref::ippiBGRToYUV420_8u_C3P3R,
                   .ssse3 = FK_X86(ssse3::ippiBGRToYUV420_8u_C3P3R),
                   .avx2 = FK_X86(avx2::ippiBGRToYUV420_8u_C3P3R));
FK_PRIMITIVE_TABLE(MirrorBGRToYUV420, MirrorToPlanarSig, .ref = ref::MirrorBGRToYUV420,
                   .ssse3 = FK_X86(ssse3::MirrorBGRToYUV420),
                   .avx2 = FK_X86(avx2::MirrorBGRToYUV420));

}  // namespace framekit::prim

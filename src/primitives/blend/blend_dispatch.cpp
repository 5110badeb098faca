#include "primitives/blend/blend.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(BlendAlpha_8u_AC4C3R, BlendSig, .ref = ref::BlendAlpha_8u_AC4C3R,
                   .ssse3 = FK_X86(ssse3::BlendAlpha_8u_AC4C3R),
                   .avx2 = FK_X86(avx2::BlendAlpha_8u_AC4C3R));
FK_PRIMITIVE_TABLE(BlendConst_8u_C3R, BlendSig, .ref = ref::BlendConst_8u_C3R,
                   .ssse3 = FK_X86(ssse3::BlendConst_8u_C3R),
                   .avx2 = FK_X86(avx2::BlendConst_8u_C3R));
FK_PRIMITIVE_TABLE(AlphaShift_8u_AC4IR, AlphaShiftSig, .ref = ref::AlphaShift_8u_AC4IR,
                   .ssse3 = FK_X86(ssse3::AlphaShift_8u_AC4IR),
                   .avx2 = FK_X86(avx2::AlphaShift_8u_AC4IR));
FK_PRIMITIVE_TABLE(ippiAlphaComp_8u_AC4R, AlphaCompSig, .ref = ref::ippiAlphaComp_8u_AC4R,
                   .ssse3 = FK_X86(ssse3::ippiAlphaComp_8u_AC4R),
                   .avx2 = FK_X86(avx2::ippiAlphaComp_8u_AC4R));

}  // namespace framekit::prim

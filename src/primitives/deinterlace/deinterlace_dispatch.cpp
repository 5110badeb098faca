#include "primitives/deinterlace/deinterlace.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiDeinterlaceFilterCAVT_8u_C1R, CavtSig,
                   .ref = ref::ippiDeinterlaceFilterCAVT_8u_C1R,
                   .ssse3 = FK_X86(ssse3::ippiDeinterlaceFilterCAVT_8u_C1R),
                   .avx2 = FK_X86(avx2::ippiDeinterlaceFilterCAVT_8u_C1R));
FK_PRIMITIVE_TABLE(ippiDeinterlaceFilterTriangle_8u_C1R, TriangleSig,
                   .ref = ref::ippiDeinterlaceFilterTriangle_8u_C1R,
                   .ssse3 = FK_X86(ssse3::ippiDeinterlaceFilterTriangle_8u_C1R),
                   .avx2 = FK_X86(avx2::ippiDeinterlaceFilterTriangle_8u_C1R));
FK_PRIMITIVE_TABLE(ippiDeinterlaceBlend_8u_C1, DeinterlaceBlendSig,
                   .ref = ref::ippiDeinterlaceBlend_8u_C1,
                   .ssse3 = FK_X86(ssse3::ippiDeinterlaceBlend_8u_C1),
                   .avx2 = FK_X86(avx2::ippiDeinterlaceBlend_8u_C1));

}  // namespace framekit::prim

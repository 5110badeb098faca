#include "primitives/mirror/mirror.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiMirror_8u_C1IR, MirrorIRSig, .ref = ref::ippiMirror_8u_C1IR,
                   .sse2 = FK_X86(sse2::ippiMirror_8u_C1IR),
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C1IR),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C1IR));
FK_PRIMITIVE_TABLE(ippiMirror_8u_C3IR, MirrorIRSig, .ref = ref::ippiMirror_8u_C3IR,
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C3IR),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C3IR));
FK_PRIMITIVE_TABLE(ippiMirror_8u_C4IR, MirrorIRSig, .ref = ref::ippiMirror_8u_C4IR,
                   .sse2 = FK_X86(sse2::ippiMirror_8u_C4IR),
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C4IR),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C4IR));
FK_PRIMITIVE_TABLE(ippiMirror_8u_C1R, MirrorRSig, .ref = ref::ippiMirror_8u_C1R,
                   .sse2 = FK_X86(sse2::ippiMirror_8u_C1R),
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C1R),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C1R));
FK_PRIMITIVE_TABLE(ippiMirror_8u_C4R, MirrorRSig, .ref = ref::ippiMirror_8u_C4R,
                   .sse2 = FK_X86(sse2::ippiMirror_8u_C4R),
                   .ssse3 = FK_X86(ssse3::ippiMirror_8u_C4R),
                   .avx2 = FK_X86(avx2::ippiMirror_8u_C4R));

}  // namespace framekit::prim

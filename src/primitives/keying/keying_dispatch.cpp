#include "primitives/keying/keying.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiCompColorKey_8u_C3R, ColorKeySig, .ref = ref::ippiCompColorKey_8u_C3R,
                   .ssse3 = FK_X86(ssse3::ippiCompColorKey_8u_C3R),
                   .avx2 = FK_X86(avx2::ippiCompColorKey_8u_C3R));
FK_PRIMITIVE_TABLE(ChromaKey_8u_C3IR, ChromaKeySig, .ref = ref::ChromaKey_8u_C3IR,
                   .avx2 = FK_X86(avx2::ChromaKey_8u_C3IR));

}  // namespace framekit::prim

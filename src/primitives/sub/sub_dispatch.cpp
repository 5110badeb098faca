#include "primitives/sub/sub.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiSub_8u_C3IRSfs, SubC3ISfsSig, .ref = ref::ippiSub_8u_C3IRSfs,
                   .sse2 = FK_X86(sse2::ippiSub_8u_C3IRSfs),
                   .avx2 = FK_X86(avx2::ippiSub_8u_C3IRSfs));

}  // namespace framekit::prim

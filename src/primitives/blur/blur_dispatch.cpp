#include "primitives/blur/blur.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(BlurRows, BlurRowsSig, .ref = ref::BlurRows, .sse2 = FK_X86(sse2::BlurRows),
                   .avx2 = FK_X86(avx2::BlurRows));
FK_PRIMITIVE_TABLE(BlurColumns, BlurColumnsSig, .ref = ref::BlurColumns,
                   .sse2 = FK_X86(sse2::BlurColumns), .avx2 = FK_X86(avx2::BlurColumns));

}  // namespace framekit::prim

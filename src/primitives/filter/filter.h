// 3 x 3 filters on three-byte pixels.
//
// ippiFilterSharpen_8u_C3R: every byte c of the region with its eight same-channel neighbours
// q1..q8 becomes clamp((v + 3 + ((v >> 3) & 1)) >> 3, 0, 255) with v = 17c - (c + q1 + ... + q8)
// (the kernel 2 at the centre and -1/8 around it, the division by 8 rounding half to even; a
// negative v gives 0). It reads one pixel and one row beyond every side of the region: the
// caller provides them. Source and destination must not overlap. Checks: null pointer (-8),
// width or height below 1 (-6), a step below 1 (-14). No memory is allocated, so the
// allocation failure status (-9) never occurs.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using FilterC3Sig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                           Size roi);
using FilterC3Fn = FilterC3Sig*;

namespace ref {
FilterC3Sig ippiFilterSharpen_8u_C3R;
}
namespace sse2 {
FilterC3Sig ippiFilterSharpen_8u_C3R;
}
namespace avx2 {
FilterC3Sig ippiFilterSharpen_8u_C3R;
}

FK_PRIMITIVE(ippiFilterSharpen_8u_C3R, FilterC3Sig);

}  // namespace framekit::prim

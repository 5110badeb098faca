// Set primitive: every pixel of a three-byte region receives the three value bytes in order.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using SetC3Sig = Status(const uint8_t* value, uint8_t* dst, int32_t dst_step, Size roi);
using SetC3Fn = SetC3Sig*;

namespace ref {
SetC3Sig ippiSet_8u_C3R;
}
namespace sse2 {
SetC3Sig ippiSet_8u_C3R;
}
namespace avx2 {
SetC3Sig ippiSet_8u_C3R;
}

FK_PRIMITIVE(ippiSet_8u_C3R, SetC3Sig);

}  // namespace framekit::prim

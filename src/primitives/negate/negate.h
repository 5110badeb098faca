// Negative of three-byte pixels into two places: every byte of the frame becomes 255 - value, and
// the same bytes are written to a second image. What the invert effect's fill, subtract and copy
// leave behind, in one pass. The two images must not overlap. Checks: null frame or copy (-8),
// then width or height below 1 (-6).
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/rows.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using NegateC3Sig = Status(uint8_t* frame, int32_t frame_step, uint8_t* copy, int32_t copy_step,
                           Size roi);
using NegateC3Fn = NegateC3Sig*;

namespace ref {
NegateC3Sig NegateC3IntoCopy;
}
namespace sse2 {
NegateC3Sig NegateC3IntoCopy;
}
namespace avx2 {
NegateC3Sig NegateC3IntoCopy;
}

FK_PRIMITIVE(NegateC3IntoCopy, NegateC3Sig);

}  // namespace framekit::prim

// Copy primitives: width * 3 (C3) or width * 4 (C4) bytes a row, each side stepping by its own
// step; the bytes of a row past the pixels are never touched.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using CopySig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                       Size roi);
using CopyFn = CopySig*;

// One body for every class (copy_ref.cpp says why).
namespace ref {
CopySig ippiCopy_8u_C3R, ippiCopy_8u_C4R;
}

FK_PRIMITIVE(ippiCopy_8u_C3R, CopySig);
FK_PRIMITIVE(ippiCopy_8u_C4R, CopySig);

}  // namespace framekit::prim

// Alternate-pixel row copy: in each of roi.height rows, the RGB24 pixels x of the row whose
// parity x % 2 is `parity` are copied from src to dst; the other pixels of dst are untouched.
// Rows go in order, each finished before the next, so a destination row may be a later row's
// source (the shake moves columns this way, with a negative step for downward moves). Checks:
// null pointer -8, a size below 1 -6, a parity other than 0 and 1 -21.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using CopyParitySig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                             Size roi, int32_t parity);
using CopyParityFn = CopyParitySig*;

static inline Status CheckCopyParity(const void* src, const void* dst, Size roi, int32_t parity) {
  if (src == nullptr || dst == nullptr) return ippStsNullPtrErr;
  if (roi.width <= 0 || roi.height <= 0) return ippStsSizeErr;
  if (parity != 0 && parity != 1) return ippStsMirrorFlipErr;
  return ippStsNoErr;
}

namespace ref {
CopyParitySig CopyParity_8u_C3R;
}  // namespace ref
namespace avx2 {
CopyParitySig CopyParity_8u_C3R;
}  // namespace avx2

FK_PRIMITIVE(CopyParity_8u_C3R, CopyParitySig);

}  // namespace framekit::prim

// Argument checks shared by every variant, in the documented order: null pointers, then the
// size, then the primitive's own checks. Variants call these first and differ only in pixel loops.
// Internal linkage: a copy compiled inside a per-ISA file must never be picked by the linker for
// baseline code.
#pragma once

#include "primitives/core/types.h"

namespace framekit::prim {

static inline Status CheckSize(Size roi) {
  return (roi.width <= 0 || roi.height <= 0) ? ippStsSizeErr : ippStsNoErr;
}

static inline Status CheckOne(const void* p, Size roi) {
  return p == nullptr ? ippStsNullPtrErr : CheckSize(roi);
}

static inline Status CheckTwo(const void* a, const void* b, Size roi) {
  return (a == nullptr || b == nullptr) ? ippStsNullPtrErr : CheckSize(roi);
}

}  // namespace framekit::prim

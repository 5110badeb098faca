// Set primitive: every pixel of a three-byte region receives the three value bytes in order.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using SetC3Sig = Status(const uint8_t* value, uint8_t* dst, int32_t dst_step, Size roi);
using SetC3Fn = SetC3Sig*;

#define FK_DECLARE_SET_VARIANTS(isa) \
  namespace isa {                    \
  SetC3Sig ippiSet_8u_C3R;           \
  }

FK_DECLARE_SET_VARIANTS(ref)
FK_DECLARE_SET_VARIANTS(sse2)
FK_DECLARE_SET_VARIANTS(avx2)

SetC3Sig ippiSet_8u_C3R;

extern const Table<SetC3Fn> kSetC3RTable;

}  // namespace framekit::prim

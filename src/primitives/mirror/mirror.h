// Mirror primitives: C1, C3 and C4 (1, 3 or 4 bytes a pixel, moved together), in place (IR) and
// from a source into a separate destination (R). Axis 0 reverses the row order, axis 1 the pixels
// within each row, axis 2 both.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/rows.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using MirrorIRSig = Status(uint8_t* p, int32_t step, Size roi, int32_t axis);
using MirrorRSig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi, int32_t axis);
using MirrorIRFn = MirrorIRSig*;
using MirrorRFn = MirrorRSig*;

// Checks in order: null pointer (-8), size (-6), axis (-21), then an axis along which the frame
// has a single row or column (-6: a one-row frame cannot be turned upside down).
// Internal linkage: the per-ISA files call it too, and a merged out-of-line copy compiled with
// their flags must never serve the reference.
static inline Status CheckMirror(const void* src, const void* dst, Size roi, int32_t axis) {
  if (src == nullptr || dst == nullptr) return ippStsNullPtrErr;
  if (roi.width <= 0 || roi.height <= 0) return ippStsSizeErr;
  if (axis < 0 || axis > 2) return ippStsMirrorFlipErr;
  if (axis != kAxisVertical && roi.height == 1) return ippStsSizeErr;
  if (axis != kAxisHorizontal && roi.width == 1) return ippStsSizeErr;
  return ippStsNoErr;
}

// Every level has all five, except SSE2, which has no C3 body (pshufb is what makes C3 pay).
namespace ref {
MirrorIRSig ippiMirror_8u_C1IR, ippiMirror_8u_C3IR, ippiMirror_8u_C4IR;
MirrorRSig ippiMirror_8u_C1R, ippiMirror_8u_C4R;
}  // namespace ref
namespace sse2 {
MirrorIRSig ippiMirror_8u_C1IR, ippiMirror_8u_C4IR;
MirrorRSig ippiMirror_8u_C1R, ippiMirror_8u_C4R;
}  // namespace sse2
namespace ssse3 {
MirrorIRSig ippiMirror_8u_C1IR, ippiMirror_8u_C3IR, ippiMirror_8u_C4IR;
MirrorRSig ippiMirror_8u_C1R, ippiMirror_8u_C4R;
}  // namespace ssse3
namespace avx2 {
MirrorIRSig ippiMirror_8u_C1IR, ippiMirror_8u_C3IR, ippiMirror_8u_C4IR;
MirrorRSig ippiMirror_8u_C1R, ippiMirror_8u_C4R;
}  // namespace avx2

FK_PRIMITIVE(ippiMirror_8u_C1IR, MirrorIRSig);
FK_PRIMITIVE(ippiMirror_8u_C3IR, MirrorIRSig);
FK_PRIMITIVE(ippiMirror_8u_C4IR, MirrorIRSig);
FK_PRIMITIVE(ippiMirror_8u_C1R, MirrorRSig);
FK_PRIMITIVE(ippiMirror_8u_C4R, MirrorRSig);

}  // namespace framekit::prim

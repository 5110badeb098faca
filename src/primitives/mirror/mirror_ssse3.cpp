// Mirror, SSSE3 level: classes 2 and 3, and 4 and 5, which have no body of their own.
// Pixels are reversed within 16-byte registers with pshufb (C1) or pshufd (C4); C3 rows go five
// pixels to a shuffle (mirror_blocks_ssse3.h). Rows are exchanged 16 bytes at a time.
// Tails: a row shorter than a block falls to the next smaller block (8-byte general-register
// blocks for C1 and C4) and finally to byte loops; a longer row ends with one block that overlaps
// bytes already done but holds values loaded before any store (mirror_kernels.h). Nothing outside
// a row's width * bytes-per-pixel is read or written.
#include <tmmintrin.h>

#include <cstdint>
#include <cstring>

#include "primitives/mirror/mirror.h"

namespace framekit::prim::ssse3 {

#include "primitives/mirror/mirror_blocks_ssse3.h"

namespace {
using ByteRows = Rows<1, Twice<Rev1x16>, Rev1x16, U64Block<1>>;
using Rows1 = Rows<1, Twice<Rev1x16>, Rev1x16, U64Block<1>>;
using Rows4 = Rows<4, Twice<Rev4x16>, Rev4x16, U64Block<4>>;
}  // namespace

Status ippiMirror_8u_C1IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return MirrorInPlace<1, ByteRows, Rows1>(p, step, roi, axis);
}
Status ippiMirror_8u_C3IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return MirrorInPlace<3, ByteRows, Rows3>(p, step, roi, axis);
}
Status ippiMirror_8u_C4IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return MirrorInPlace<4, ByteRows, Rows4>(p, step, roi, axis);
}
Status ippiMirror_8u_C1R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t axis) {
  return MirrorCopy<1, Rows1>(src, src_step, dst, dst_step, roi, axis);
}
Status ippiMirror_8u_C4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t axis) {
  return MirrorCopy<4, Rows4>(src, src_step, dst, dst_step, roi, axis);
}

}  // namespace framekit::prim::ssse3

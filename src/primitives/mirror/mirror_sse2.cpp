// Mirror, SSE2 level: class 1 (the x86-64 baseline). C1 and C4 only; C3 keeps the reference,
// whose row exchange the compiler already vectorises and whose reversal needs pshufb to gain.
// C4 pixels are reversed within 16-byte registers with pshufd. C1 bytes are reversed with bswap
// on 8-byte general registers, which measured faster than the SSE2 shuffle-and-shift sequence.
// Rows are exchanged 32 bytes a step.
// Tails: a row shorter than a block falls to the next smaller block (16, then 8 bytes) and
// finally to byte loops; a longer row ends with one block that overlaps bytes already done but
// holds values loaded before any store (mirror_kernels.h). Nothing outside a row's
// width * bytes-per-pixel is read or written.
#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "primitives/mirror/mirror.h"

namespace framekit::prim::sse2 {

#include "primitives/mirror/mirror_kernels.h"

namespace {

struct Vec16 {
  static constexpr int64_t kBytes = 16;
  using T = __m128i;
  static T Load(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
  static void Store(uint8_t* p, T v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
};

struct Rev4x16 : Vec16 {
  static T Reverse(T v) { return _mm_shuffle_epi32(v, 0x1B); }
};

using ByteRows = Rows<1, Twice<Vec16>, Vec16, U64Block<1>>;
using Rows1 = Rows<1, Twice<Twice<U64Block<1>>>, U64Block<1>>;
using Rows4 = Rows<4, Twice<Rev4x16>, Rev4x16, U64Block<4>>;

}  // namespace

Status ippiMirror_8u_C1IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return MirrorInPlace<1, ByteRows, Rows1>(p, step, roi, axis);
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

}  // namespace framekit::prim::sse2

// Mirror, AVX2 level: class 6.
// Pixels are reversed within 32-byte registers with vpshufb and a lane exchange (C1) or vpermd
// (C4), two registers a step; C3 uses the 16-byte five-pixel units of the SSSE3 level
// (mirror_blocks_ssse3.h), since vpshufb does not cross lanes and those units already run at
// memory speed. Rows are exchanged 64 bytes a step.
// Tails: a row shorter than a block falls to the next smaller block (32, 16, then 8-byte
// general-register blocks for C1 and C4) and finally to byte loops; a longer row ends with one
// block that overlaps bytes already done but holds values loaded before any store
// (mirror_kernels.h). Nothing outside a row's width * bytes-per-pixel is read or written.
#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "primitives/mirror/mirror.h"

namespace framekit::prim::avx2 {

#include "primitives/mirror/mirror_blocks_ssse3.h"

namespace {

struct Vec32 {
  static constexpr int64_t kBytes = 32;
  using T = __m256i;
  static T Load(const uint8_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  }
  static void Store(uint8_t* p, T v) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v); }
};

struct Rev1x32 : Vec32 {
  static T Reverse(T v) {
    const __m256i in_lane =
        _mm256_shuffle_epi8(v, _mm256_broadcastsi128_si256(LoadMask(kReverse16)));
    return _mm256_permute4x64_epi64(in_lane, 0x4E);
  }
};

struct Rev4x32 : Vec32 {
  static T Reverse(T v) {
    return _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(7, 6, 5, 4, 3, 2, 1, 0));
  }
};

using ByteRows = Rows<1, Twice<Rev1x32>, Rev1x32, Rev1x16, U64Block<1>>;
using Rows1 = Rows<1, Twice<Rev1x32>, Rev1x32, Rev1x16, U64Block<1>>;
using Rows4 = Rows<4, Twice<Rev4x32>, Rev4x32, Rev4x16, U64Block<4>>;

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

}  // namespace framekit::prim::avx2

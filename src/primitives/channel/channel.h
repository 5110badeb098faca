// Channel primitives between 3- and 4-byte pixels, and per-channel arithmetic:
//
//   ippiCopy_8u_AC4C3R      bytes 0-2 of each 4-byte source pixel to a 3-byte destination pixel.
//   ippiCopy_8u_C3AC4R      a 3-byte source pixel to bytes 0-2 of a 4-byte destination pixel;
//                           byte 3 of the destination is never written.
//   ippiAddC_8u_C4IRSfs     in place: byte c of every 4-byte pixel becomes (byte + value[c])
//                           scaled by 2^-scale, rounded half to even, clamped to 0..255.
//                           Scale 0 is a saturating add; a negative scale multiplies by 2^-scale.
//   ippiSwapChannels_8u_C3R destination byte c = source byte order[c]; order values 0..2, else
//                           ippStsChannelOrderErr. src may equal dst (same step): in place.
//   CopyC3AC4AddC           ippiCopy_8u_C3AC4R then ippiAddC_8u_C4IRSfs(value, scale 0) on the
//                           destination, in one pass: byte c < 3 = min(src[c] + value[c], 255),
//                           byte 3 = min(byte 3 + value[3], 255). Checks: null src, dst or value
//                           (-8), size (-6).
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using ChannelCopySig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                              Size roi);
using AddCC4Sig = Status(const uint8_t value[4], uint8_t* p, int32_t step, Size roi, int32_t scale);
using SwapC3Sig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, const int32_t order[3]);
using CopyAddSig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          Size roi, const uint8_t value[4]);
using ChannelCopyFn = ChannelCopySig*;
using CopyAddFn = CopyAddSig*;
using AddCC4Fn = AddCC4Sig*;
using SwapC3Fn = SwapC3Sig*;

// Swap checks: null pointers (source, destination, order: -8), size (-6), then any order value
// outside 0..2 (-60).
static inline Status CheckSwap(const void* src, const void* dst, Size roi, const int32_t* order) {
  if (src == nullptr || dst == nullptr || order == nullptr) return ippStsNullPtrErr;
  if (roi.width <= 0 || roi.height <= 0) return ippStsSizeErr;
  for (int c = 0; c < 3; ++c) {
    if (order[c] < 0 || order[c] > 2) return ippStsChannelOrderErr;
  }
  return ippStsNoErr;
}

// The scaled sum of AddC for scale != 0 (sum 0..510): divide by 2^scale rounding half to even,
// or multiply by 2^-scale; clamp at 255. Only for scale != 0.
static inline uint8_t ScaledSum(int32_t sum, int32_t scale) {
  if (scale < 0) {
    if (sum == 0) return 0;
    if (scale < -8) return 255;
    const int32_t v = sum << -scale;
    return static_cast<uint8_t>(v > 255 ? 255 : v);
  }
  if (scale > 9) return 0;  // 510 / 2^10 rounds to 0
  const int32_t half = 1 << (scale - 1);
  const int32_t q = sum >> scale, rem = sum & ((1 << scale) - 1);
  const int32_t rounded = q + ((rem > half || (rem == half && (q & 1) != 0)) ? 1 : 0);
  return static_cast<uint8_t>(rounded > 255 ? 255 : rounded);
}

// ---- Pixels [from, to) of a row, one at a time: the reference bodies, and the vector
// bodies' tails.
static inline void CopyC4ToC3(const uint8_t* s, uint8_t* d, int32_t from, int32_t to) {
  for (int32_t x = from; x < to; ++x) {
    for (int c = 0; c < 3; ++c) d[3 * x + c] = s[4 * x + c];
  }
}
static inline void CopyC3ToC4(const uint8_t* s, uint8_t* d, int32_t from, int32_t to) {
  for (int32_t x = from; x < to; ++x) {
    for (int c = 0; c < 3; ++c) d[4 * x + c] = s[3 * x + c];
  }
}
static inline uint8_t AddSaturated(int32_t a, int32_t b) {
  return static_cast<uint8_t>(a + b > 255 ? 255 : a + b);
}
// AddC with scale 0.
static inline void AddCPixels(const uint8_t value[4], uint8_t* d, int32_t from, int32_t to) {
  for (int32_t i = 4 * from; i < 4 * to; ++i) d[i] = AddSaturated(d[i], value[i & 3]);
}
static inline void CopyAddPixels(const uint8_t* s, uint8_t* d, const uint8_t value[4], int32_t from,
                                 int32_t to) {
  for (int32_t x = from; x < to; ++x) {
    for (int c = 0; c < 3; ++c) d[4 * x + c] = AddSaturated(s[3 * x + c], value[c]);
    d[4 * x + 3] = AddSaturated(d[4 * x + 3], value[3]);
  }
}
// Each pixel is read whole before it is written: src may be dst.
static inline void SwapPixels(const uint8_t* s, uint8_t* d, const int32_t order[3], int32_t from,
                              int32_t to) {
  for (int32_t x = from; x < to; ++x) {
    const uint8_t px[3] = {s[3 * x], s[3 * x + 1], s[3 * x + 2]};
    for (int c = 0; c < 3; ++c) d[3 * x + c] = px[order[c]];
  }
}

// The reference, SSSE3 and AVX2 levels have all five.
#define FK_CHANNEL_VARIANTS                              \
  ChannelCopySig ippiCopy_8u_AC4C3R, ippiCopy_8u_C3AC4R; \
  AddCC4Sig ippiAddC_8u_C4IRSfs;                         \
  CopyAddSig CopyC3AC4AddC;                              \
  SwapC3Sig ippiSwapChannels_8u_C3R
namespace ref {
FK_CHANNEL_VARIANTS;
}
namespace ssse3 {
FK_CHANNEL_VARIANTS;
}
namespace avx2 {
FK_CHANNEL_VARIANTS;
}
#undef FK_CHANNEL_VARIANTS

FK_PRIMITIVE(ippiCopy_8u_AC4C3R, ChannelCopySig);
FK_PRIMITIVE(ippiCopy_8u_C3AC4R, ChannelCopySig);
FK_PRIMITIVE(ippiAddC_8u_C4IRSfs, AddCC4Sig);
FK_PRIMITIVE(CopyC3AC4AddC, CopyAddSig);
FK_PRIMITIVE(ippiSwapChannels_8u_C3R, SwapC3Sig);

}  // namespace framekit::prim

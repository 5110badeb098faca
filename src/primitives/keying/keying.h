// Keying of 3-byte pixels (bytes blue, green, red).
//
//   ippiCompColorKey_8u_C3R  dst pixel = the src2 pixel where the src1 pixel equals key[0..2] in
//                            all three bytes, else the src1 pixel. dst may be src1 or src2 (same
//                            step): each pixel is read before it is written. Checks: a null
//                            src1, src2, dst or key (-8), sizes below 1 (-6), a step below 1 (-14).
//   ChromaKey_8u_C3IR        in place: for each frame pixel whose key channel K is strictly above
//                            both others O1, O2, f = map[2K + 2 - O1 - O2] (index 4..512) and every
//                            byte becomes the low 8 bits of trunc(bg (1 - f) + frame f) in double
//                            precision (NaN and values outside the 32-bit range truncate to
//                            INT32_MIN, as the processor's conversion does). Key channel: 1 green,
//                            2 blue, anything else red. Checks: a null frame, bg or map (-8), sizes
//                            below 1 (-6).
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/lane_math.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using ColorKeySig = Status(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                           int32_t src2_step, uint8_t* dst, int32_t dst_step, Size roi,
                           const uint8_t key[3]);
using ChromaKeySig = Status(uint8_t* frame, int32_t frame_step, const uint8_t* bg, int32_t bg_step,
                            Size roi, const double* map, int32_t key_channel);
using ColorKeyFn = ColorKeySig*;
using ChromaKeyFn = ChromaKeySig*;

static inline Status CheckColorKey(const void* src1, int32_t src1_step, const void* src2,
                                   int32_t src2_step, const void* dst, int32_t dst_step, Size roi,
                                   const void* key) {
  if (src1 == nullptr || src2 == nullptr || dst == nullptr || key == nullptr) {
    return ippStsNullPtrErr;
  }
  if (roi.width <= 0 || roi.height <= 0) return ippStsSizeErr;
  if (src1_step <= 0 || src2_step <= 0 || dst_step <= 0) return ippStsStepErr;
  return ippStsNoErr;
}

static inline Status CheckChromaKey(const void* frame, const void* bg, Size roi, const void* map) {
  if (frame == nullptr || bg == nullptr || map == nullptr) return ippStsNullPtrErr;
  return (roi.width <= 0 || roi.height <= 0) ? ippStsSizeErr : ippStsNoErr;
}

// The byte index of the key channel within a pixel.
static inline int ChromaKeyByte(int32_t key_channel) {
  return key_channel == 1 ? 1 : (key_channel == 2 ? 0 : 2);
}

static inline void ChromaKeyPixel(uint8_t* px, const uint8_t* bg, const double* map, int key) {
  const int k = px[key], o1 = px[(key + 1) % 3], o2 = px[(key + 2) % 3];
  if (k <= o1 || k <= o2) return;
  const double f = map[2 * k + 2 - o1 - o2];
  for (int c = 0; c < 3; ++c) {
    const double mixed = bg[c] * (1.0 - f) + px[c] * f;
    px[c] = static_cast<uint8_t>(static_cast<uint32_t>(Truncate(mixed)) & 0xFF);
  }
}

static inline void ColorKeyPixel(const uint8_t* a, const uint8_t* b, uint8_t* out,
                                 const uint8_t* key) {
  const uint8_t* from = (a[0] == key[0] && a[1] == key[1] && a[2] == key[2]) ? b : a;
  const uint8_t p0 = from[0], p1 = from[1], p2 = from[2];
  out[0] = p0;
  out[1] = p1;
  out[2] = p2;
}

namespace ref {
ColorKeySig ippiCompColorKey_8u_C3R;
ChromaKeySig ChromaKey_8u_C3IR;
}  // namespace ref
namespace ssse3 {
ColorKeySig ippiCompColorKey_8u_C3R;
}  // namespace ssse3
namespace avx2 {
ColorKeySig ippiCompColorKey_8u_C3R;
ChromaKeySig ChromaKey_8u_C3IR;
}  // namespace avx2

FK_PRIMITIVE(ippiCompColorKey_8u_C3R, ColorKeySig);
FK_PRIMITIVE(ChromaKey_8u_C3IR, ChromaKeySig);

}  // namespace framekit::prim

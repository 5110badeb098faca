// Colour-conversion primitives between BGR (3 bytes a pixel: blue, green, red) and YUV.
//
//   ippiYCbCr422ToBGR_8u_C2C3R  packed 4:2:2 (Y0, U, Y1, V) to BGR, studio range in.
//   ippiBGRToYCbCr422_8u_C3C2R  BGR to packed 4:2:2, studio range out.
//   ippiYUV420ToBGR_8u_P3C3R    three planes (Y, then two quarter-size chroma planes) to BGR.
//   ippiBGRToYUV420_8u_C3P3R    BGR to three planes.
//   MirrorBGRToYUV420           the BGR source turned upside down in place (ippiMirror_8u_C3IR,
//                               axis 0), then ippiBGRToYUV420_8u_C3P3R from it, as one pass
//                               where it can be; when the conversion's checks fail, nothing
//                               is done and their status is returned (the caller decides
//                               whether the mirror still runs). Otherwise the conversion's
//                               status.
//
// The fixed-point constants are part of each primitive's result; colour_kernels.h holds the
// per-pixel formulas that every variant matches bit for bit.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using PackedConvertSig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi);
using PlanarToPackedSig = Status(const uint8_t* const src[3], const int32_t src_step[3],
                                 uint8_t* dst, int32_t dst_step, Size roi);
using PackedToPlanarSig = Status(const uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                 const int32_t dst_step[3], Size roi);
using PackedConvertFn = PackedConvertSig*;
using PlanarToPackedFn = PlanarToPackedSig*;
using PackedToPlanarFn = PackedToPlanarSig*;
using MirrorToPlanarSig = Status(uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                 const int32_t dst_step[3], Size roi);
using MirrorToPlanarFn = MirrorToPlanarSig*;

// 4:2:2 checks: null pointers (-8), then a width under 2 or a height under 1 (-6).
static inline Status Check422(const void* src, const void* dst, Size roi) {
  if (src == nullptr || dst == nullptr) return ippStsNullPtrErr;
  if (roi.width < 2 || roi.height <= 0) return ippStsSizeErr;
  return ippStsNoErr;
}

// 4:2:0 checks: the plane array and its entries in order, the step array and the packed side
// (-8), then the size (-6). An odd width or height is a warning the caller gets after the even
// part is converted (ippStsDoubleSize).
static inline Status Check420(const uint8_t* const planes[3], const int32_t steps[3],
                              const void* packed, Size roi) {
  if (planes == nullptr || steps == nullptr) return ippStsNullPtrErr;
  for (int i = 0; i < 3; ++i) {
    if (planes[i] == nullptr) return ippStsNullPtrErr;
  }
  if (packed == nullptr) return ippStsNullPtrErr;
  if (roi.width <= 0 || roi.height <= 0) return ippStsSizeErr;
  return ippStsNoErr;
}

static inline Status Status420(Size roi) {
  return ((roi.width | roi.height) & 1) != 0 ? ippStsDoubleSize : ippStsNoErr;
}

// The reference, SSSE3 and AVX2 levels have all five.
#define FK_COLOUR_VARIANTS                                                           \
  PackedConvertSig ippiYCbCr422ToBGR_8u_C2C3R, ippiBGRToYCbCr422_8u_C3C2R;           \
  PlanarToPackedSig ippiYUV420ToBGR_8u_P3C3R;                                        \
  PackedToPlanarSig ippiBGRToYUV420_8u_C3P3R;                                        \
  MirrorToPlanarSig MirrorBGRToYUV420
namespace ref {
FK_COLOUR_VARIANTS;
}
namespace ssse3 {
FK_COLOUR_VARIANTS;
}
namespace avx2 {
FK_COLOUR_VARIANTS;
}
#undef FK_COLOUR_VARIANTS

FK_PRIMITIVE(ippiYCbCr422ToBGR_8u_C2C3R, PackedConvertSig);
FK_PRIMITIVE(ippiBGRToYCbCr422_8u_C3C2R, PackedConvertSig);
FK_PRIMITIVE(ippiYUV420ToBGR_8u_P3C3R, PlanarToPackedSig);
FK_PRIMITIVE(ippiBGRToYUV420_8u_C3P3R, PackedToPlanarSig);
FK_PRIMITIVE(MirrorBGRToYUV420, MirrorToPlanarSig);

}  // namespace framekit::prim

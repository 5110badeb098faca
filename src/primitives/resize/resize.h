// Resize: a source region mapped into a destination region by separate horizontal and vertical
// factors and shifts (destination = source * factor + shift).
//
// ippiResizeSqrPixel_8u_C3R / _C4R, checks in order: null pointer (src, dst, work buffer or a
// region) -8; a source size, region corner or region size out of range -6; a factor not above 0
// -23; an interpolation outside {1 nearest, 2 linear, 4, 5, 6, 7 cubic, 8 supersampling,
// 16 Lanczos} or two of the flags 31, 30, 29 -22; supersampling that enlarges -23. Sources
// smaller than 6 x 6 fall back (cubic kinds below 4 pixels to linear, Lanczos to cubic). A source
// region outside the image gives 29 and an empty destination extent 1, nothing written; flag 29
// with nearest or supersampling is ignored and 46 returned after the work.
//
// The design, where the interface leaves it open:
//   position      destination pixel x stands for the square [x, x + 1): its centre maps to
//                 source position (x + 0.5 - shift) / factor - 0.5, so pictures stay centred;
//   borders       samples beyond the (clipped) source region repeat its edge sample;
//   kernels       linear: the tent; cubic: the four codes' polynomials; Lanczos: three lobes;
//                 supersampling: the area of each source pixel under the destination pixel's
//                 footprint; flag 29 (antialiasing) widens linear, cubic and Lanczos by
//                 1 / factor on an axis that reduces;
//   arithmetic    each destination coordinate's weights are normalised and rounded to 14-bit
//                 fixed point summing to exactly 1 << 14; rows are filtered first, each result
//                 kept as (sum + 128) >> 8, then columns, (sum + (1 << 19)) >> 20 saturated to
//                 0..255. Integer throughout, so every class and platform gives the same bytes;
//   edge flags    flags 31 and 30 round the extent inwards (ceil and floor) and then replace
//                 each pixel on the extent's border by the rounded mean of itself and its inward
//                 neighbour (columns first, then rows).
// The work buffer holds the weight tables and the rows being filtered; ippiResizeGetBufSize sizes
// it for a source of srcRect's size and a destination region dstRect, which covers every factor
// down to dstRect / srcRect. A call whose factors need more taps than that (a source region wider
// than the whole source it was sized for) returns -23. The vector bodies keep their tables in it
// from call to call, under what they were built for and a hash of their bytes: a caller that
// keeps its buffer has them built once; changed bytes or another call's tables are built afresh.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

inline constexpr Status ippStsResizeNothingWritten = 1;  // empty destination extent
inline constexpr Status ippStsResizeOutsideSource = 29;  // source region outside the image
inline constexpr Status ippStsResizeFlagIgnored = 46;    // antialiasing asked of 1 or 8

inline constexpr int32_t kResizeNearest = 1;
inline constexpr int32_t kResizeLinear = 2;
inline constexpr int32_t kResizeCubic = 4;  // 5, 6, 7: the two-parameter cubics
inline constexpr int32_t kResizeSuper = 8;
inline constexpr int32_t kResizeLanczos = 16;
inline constexpr int32_t kResizeSmoothEdge = int32_t(1u << 31);
inline constexpr int32_t kResizeSubpixelEdge = 1 << 30;
inline constexpr int32_t kResizeAntialias = 1 << 29;

using ResizeSig = Status(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                         uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double x_factor,
                         double y_factor, double x_shift, double y_shift, int32_t interpolation,
                         uint8_t* buffer);
using ResizeFn = ResizeSig*;

// ippiResizeYUV422_8u_C2R: YUY2 (Y0 U Y1 V a pixel pair) from src_roi (clipped to the image) into
// the dst_size region at the destination's origin, nearest neighbour only (interpolation 1;
// other codes -22). Destination pixel x takes the luma of source pixel
// roi.x + min(w - 1, floor((x + 0.5) / xf)); the chroma byte it carries (U on even pixels, V on
// odd ones) comes from the source pair holding the source pixel of its own pair's centre
// (2p + 1) / xf, clamped alike, so both pixels of a destination pair share one source pair. A
// source pair cut short by an odd width lends its U for V. Rows alike with yf. Checks: null
// pointer -8, sizes -6, factors not above 0 -23, then the code; a region outside the image 29.
using ResizeYuv422Sig = Status(const uint8_t* src, Size src_size, int32_t src_step,
                               const Rect* src_roi, uint8_t* dst, int32_t dst_step, Size dst_size,
                               double x_factor, double y_factor, int32_t interpolation);
using ResizeYuv422Fn = ResizeYuv422Sig*;

namespace ref {
ResizeSig ippiResizeSqrPixel_8u_C3R, ippiResizeSqrPixel_8u_C4R;
ResizeYuv422Sig ippiResizeYUV422_8u_C2R;
}  // namespace ref
namespace ssse3 {
ResizeSig ippiResizeSqrPixel_8u_C3R, ippiResizeSqrPixel_8u_C4R;
}  // namespace ssse3
namespace avx2 {
ResizeSig ippiResizeSqrPixel_8u_C3R, ippiResizeSqrPixel_8u_C4R;
}  // namespace avx2

FK_PRIMITIVE(ippiResizeSqrPixel_8u_C3R, ResizeSig);
FK_PRIMITIVE(ippiResizeSqrPixel_8u_C4R, ResizeSig);
FK_PRIMITIVE(ippiResizeYUV422_8u_C2R, ResizeYuv422Sig);

// Work-buffer bytes for the resize of a source of src_rect's size into dst_rect with `channels`
// (3 or 4) and `interpolation`. -8 for a null pointer, -6 for an empty rectangle or a channel
// count other than 3 and 4, -22 for an unknown interpolation; the size is written only on 0.
Status ippiResizeGetBufSize(const Rect* src_rect, const Rect* dst_rect, int32_t channels,
                            int32_t interpolation, int32_t* size);

}  // namespace framekit::prim

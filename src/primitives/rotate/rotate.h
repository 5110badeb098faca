// Rotation: a source region turned by an angle into a destination region. A source point (x, y)
// goes to (x cos a + y sin a + x_shift, -x sin a + y cos a + y_shift), a the angle in radians
// (degrees on the interface); with rows running down, a positive angle turns the picture
// counter-clockwise on screen.
//
// ippiRotate_8u_C3R / _C4R, checks in order: a null pointer (src, dst or a region) -8; a source
// size, region corner or region size out of range -6; an interpolation other than 1 (nearest),
// 2 (linear) or 4 (cubic, the resize's code-4 polynomial) -22. The source region is clipped to
// the image (nothing left: 29, nothing written); an angle or shift that is not finite writes
// nothing and gives 1.
//
// The design, where the interface leaves it open:
//   position   destination pixel (X, Y) stands for the square [X, X + 1) x [Y, Y + 1); its centre
//              is mapped back to the source, so quarter and half turns move whole pixels;
//   coverage   a destination pixel of the destination region is written when that source point
//              lies inside the source region's squares: the outermost half pixel of the region
//              counts, and there the samples beyond the edge repeat the edge pixel. Others are
//              left untouched;
//   arithmetic the angle's sine and cosine are exact at multiples of 90 degrees and the library's
//              own elsewhere; each row's first position is rounded to 32.32 fixed point and
//              stepped in integers, so every class and platform samples the same points.
//              Linear: 8-bit fractions, ((p00 (256 - fx) + p01 fx) (256 - fy) + (p10 (256 - fx)
//              + p11 fx) fy + 32768) >> 16. Cubic: 14-bit weights of the 8-bit fraction, rows
//              first ((sum + 128) >> 8), then columns ((sum + (1 << 19)) >> 20, saturated).
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

using RotateSig = Status(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                         uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle,
                         double x_shift, double y_shift, int32_t interpolation);
using RotateFn = RotateSig*;

namespace ref {
RotateSig ippiRotate_8u_C3R, ippiRotate_8u_C4R;
}  // namespace ref
namespace sse2 {
RotateSig ippiRotate_8u_C3R, ippiRotate_8u_C4R;
}  // namespace sse2
namespace avx2 {
RotateSig ippiRotate_8u_C3R, ippiRotate_8u_C4R;
}  // namespace avx2

FK_PRIMITIVE(ippiRotate_8u_C3R, RotateSig);
FK_PRIMITIVE(ippiRotate_8u_C4R, RotateSig);

// The shifts that turn the rotation by `angle` degrees about (x_center, y_center):
// x_shift = xc - (xc cos a + yc sin a), y_shift = yc - (-xc sin a + yc cos a). Null outputs are
// skipped.
void ippiGetRotateShift(double x_center, double y_center, double angle, double* x_shift,
                        double* y_shift);

// cos a and sin a of an angle in degrees: exact at whole multiples of 90 degrees.
void RotationCosSin(double angle, double* cos_a, double* sin_a);

}  // namespace framekit::prim

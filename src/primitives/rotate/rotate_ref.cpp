// Rotation, reference level: every class for now. Each destination pixel of the region maps its
// centre back to the source (rotate_kernels.h) and is written when that point is inside.
#include <cstdint>

#include "primitives/core/rows.h"
#include "primitives/core/trig.h"
#include "primitives/rotate/rotate.h"
#include "primitives/rotate/rotate_kernels.h"

namespace framekit::prim {
namespace ref {
namespace {

using rotate::Plan;

template <int C>
Status Rotate(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
              uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle, double xs,
              double ys, int32_t interpolation) {
  const Plan p =
      rotate::PlanRotate(src, src_size, src_roi, dst, dst_roi, angle, xs, ys, interpolation);
  if (!p.write) return p.status;
  if (rotate::TurnWholePixels<C>(src, src_step, dst, dst_step, p)) return p.status;
  rotate::CubicTable cubic;
  if (p.code == 4) rotate::FillCubic(&cubic);
  for (int64_t y = p.dst.y; y < int64_t{p.dst.y} + p.dst.height; ++y) {
    int64_t u0 = 0, v0 = 0;
    p.RowStart(y, &u0, &v0);
    uint8_t* out = RowAt(dst, dst_step, y) + C * int64_t{p.dst.x};
    for (int64_t k = 0; k < p.dst.width; ++k) {
      const int64_t u = rotate::Step(u0, p.cf, k), v = rotate::Step(v0, p.sf, k);
      if (p.Inside(u, v)) rotate::Sample<C>(src, src_step, p, cubic, u, v, out + C * k);
    }
  }
  return p.status;
}

}  // namespace

Status ippiRotate_8u_C3R(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                         uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle,
                         double x_shift, double y_shift, int32_t interpolation) {
  return Rotate<3>(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, angle, x_shift,
                   y_shift, interpolation);
}
Status ippiRotate_8u_C4R(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                         uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double angle,
                         double x_shift, double y_shift, int32_t interpolation) {
  return Rotate<4>(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, angle, x_shift,
                   y_shift, interpolation);
}

}  // namespace ref

void RotationCosSin(double angle, double* cos_a, double* sin_a) {
  const double quarters = angle / 90.0;
  if (quarters == resize::Floor(quarters) && resize::Abs(quarters) < 4503599627370496.0) {
    const auto q = static_cast<int64_t>(quarters) & 3;  // two's complement: -1 & 3 = 3
    constexpr double kCos[4] = {1, 0, -1, 0}, kSin[4] = {0, 1, 0, -1};
    *cos_a = kCos[q], *sin_a = kSin[q];
    return;
  }
  constexpr double kRadians = 3.14159265358979323846 / 180.0;
  *cos_a = Cos(angle * kRadians);
  *sin_a = Sin(angle * kRadians);
}

void ippiGetRotateShift(double x_center, double y_center, double angle, double* x_shift,
                        double* y_shift) {
  double c = 1, s = 0;
  RotationCosSin(angle, &c, &s);
  if (x_shift != nullptr) *x_shift = x_center - (x_center * c + y_center * s);
  if (y_shift != nullptr) *y_shift = y_center - (-x_center * s + y_center * c);
}

}  // namespace framekit::prim

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
  const int64_t left = p.src.x, right = left + p.src.width - 1;
  const int64_t top = p.src.y, bottom = top + p.src.height - 1;
  auto at = [&](int64_t i, int64_t j) {
    return RowAt(src, src_step, resize::Clamp(j, top, bottom)) + C * resize::Clamp(i, left, right);
  };
  for (int64_t y = p.dst.y; y < int64_t{p.dst.y} + p.dst.height; ++y) {
    int64_t u0 = 0, v0 = 0;
    p.RowStart(y, &u0, &v0);
    uint8_t* out = RowAt(dst, dst_step, y) + C * int64_t{p.dst.x};
    for (int64_t k = 0; k < p.dst.width; ++k) {
      const int64_t u = rotate::Step(u0, p.cf, k), v = rotate::Step(v0, p.sf, k);
      if (!p.Inside(u, v)) continue;
      uint8_t* px = out + C * k;
      const int64_t i = u >> 32, j = v >> 32;
      const auto fx = static_cast<int32_t>((u >> 24) & 255),
                 fy = static_cast<int32_t>((v >> 24) & 255);
      if (p.code == 1) {
        const uint8_t* s = at((u + (int64_t{1} << 31)) >> 32, (v + (int64_t{1} << 31)) >> 32);
        for (int c = 0; c < C; ++c) px[c] = s[c];
      } else if (p.code == 2) {
        const uint8_t *p00 = at(i, j), *p01 = at(i + 1, j), *p10 = at(i, j + 1),
                      *p11 = at(i + 1, j + 1);
        for (int c = 0; c < C; ++c) {
          const int32_t top_row = p00[c] * (256 - fx) + p01[c] * fx;
          const int32_t bottom_row = p10[c] * (256 - fx) + p11[c] * fx;
          px[c] = static_cast<uint8_t>((top_row * (256 - fy) + bottom_row * fy + 32768) >> 16);
        }
      } else {
        for (int c = 0; c < C; ++c) {
          int32_t sum = 0;
          for (int b = 0; b < 4; ++b) {
            int32_t h = 0;
            for (int a = 0; a < 4; ++a) h += cubic.w[fx][a] * at(i - 1 + a, j - 1 + b)[c];
            sum += cubic.w[fy][b] * ((h + 128) >> 8);
          }
          const int32_t value = (sum + (1 << 19)) >> 20;
          px[c] = static_cast<uint8_t>(value < 0 ? 0 : (value > 255 ? 255 : value));
        }
      }
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

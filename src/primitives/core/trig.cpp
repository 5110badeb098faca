#include "primitives/core/trig.h"

#include <cstdint>
#include <limits>

namespace framekit::prim {
namespace {

// pi/2 in three parts of 33, 33 and 53 bits: k * part is exact for |k| < 2^20.
constexpr double kPio2Hi = 1.57079632673412561417e+00;
constexpr double kPio2Mid = 6.07710050630396597660e-11;
constexpr double kPio2Lo = 2.02226624871116645580e-21;
constexpr double kTwoOverPi = 6.36619772367581382433e-01;

// sin and cos on [-pi/4, pi/4].
double SinKernel(double r) {
  const double z = r * r;
  const double p =
      -1.66666666666666324348e-01 +
      z * (8.33333333332248946124e-03 +
           z * (-1.98412698298579493134e-04 +
                z * (2.75573137070700676789e-06 +
                     z * (-2.50507602534068634195e-08 + z * 1.58969099521155010221e-10))));
  return r + r * z * p;
}

double CosKernel(double r) {
  const double z = r * r;
  const double p =
      4.16666666666666019037e-02 +
      z * (-1.38888888888741095749e-03 +
           z * (2.48015872894767294178e-05 +
                z * (-2.75573143513906633035e-07 +
                     z * (2.08757232129817482790e-09 + z * -1.13596475577881948265e-11))));
  const double hz = 0.5 * z, w = 1.0 - hz;
  return w + (((1.0 - w) - hz) + z * z * p);
}

// x = k * pi/2 + r with |r| <= about pi/4; false for NaN, infinities and |x| beyond 2^62.
bool Reduce(double x, int64_t* k, double* r) {
  const double t = x * kTwoOverPi;
  if (!(t > -4.6e18 && t < 4.6e18)) return false;
  *k = static_cast<int64_t>(t < 0 ? t - 0.5 : t + 0.5);
  const auto kd = static_cast<double>(*k);
  *r = ((x - kd * kPio2Hi) - kd * kPio2Mid) - kd * kPio2Lo;
  return true;
}

}  // namespace

double Sin(double x) {
  int64_t k = 0;
  double r = 0;
  if (!Reduce(x, &k, &r)) return std::numeric_limits<double>::quiet_NaN();
  switch (k & 3) {
    case 0:
      return SinKernel(r);
    case 1:
      return CosKernel(r);
    case 2:
      return -SinKernel(r);
    default:
      return -CosKernel(r);
  }
}

double Cos(double x) {
  int64_t k = 0;
  double r = 0;
  if (!Reduce(x, &k, &r)) return std::numeric_limits<double>::quiet_NaN();
  switch (k & 3) {
    case 0:
      return CosKernel(r);
    case 1:
      return -SinKernel(r);
    case 2:
      return -CosKernel(r);
    default:
      return SinKernel(r);
  }
}

}  // namespace framekit::prim

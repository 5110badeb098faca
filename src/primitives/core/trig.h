// Sine and cosine in double precision, computed here rather than by the platform's maths
// library so that what depends on them (the marble effect, rotation) is the same bytes on
// every platform. Within about 1 ulp of the exact value for |x| < 2^20 (Cody-Waite reduction by
// pi/2 in three parts, minimax polynomials on [-pi/4, pi/4]); larger arguments lose accuracy
// but stay deterministic; NaN and infinities give NaN.
#pragma once

namespace framekit::prim {

double Sin(double x);
double Cos(double x);

}  // namespace framekit::prim

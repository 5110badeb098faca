// Gallery steps of the rotation exports: turns about the centre (30, 45 and 90 degrees), the
// quarter turns stretched back over the frame (90 and 270), and RGB32.
#include <cmath>
#include <string>
#include <utility>

#include "demo_step.h"

namespace framekit::tool {
namespace {

StepResult Turned(const Image& p, double angle, int32_t stretch, bool rgb32) {
  Image frame = rgb32 ? RGB24ToRGB32(p) : p;
  // temp holds either layout: width x height, or height x width for the quarter turn.
  const int32_t side = p.width > p.height ? p.width : p.height;
  Image temp = MakeImage(frame.format, side, side);
  int32_t size = 0;  // a one-shot work buffer
  (rgb32 ? RotateIn32 : RotateIn)(frame.data(), p.width, p.height, temp.data(), angle, stretch,
                                  nullptr, &size);
  return {rgb32 ? RGB32ToRGB24(frame) : std::move(frame), "nothing (no result)"};
}

}  // namespace

std::vector<DemoStep> RotateSteps(const Image& original) {
  std::vector<DemoStep> steps;
  const std::string size = SizeText(original);
  const struct {
    double angle;
    int32_t stretch;
    bool rgb32;
    const char* note;
  } turns[] = {
      {30, 0, false, "Turned 30 degrees counter-clockwise about the centre; corners black."},
      {45, 0, false, "Turned 45 degrees: the four corners black, the picture's corners cut."},
      {90, 0, false,
       "A quarter turn about the centre: black bands left and right, top and "
       "bottom cut."},
      {90, 1, false,
       "A quarter turn stretched back over the whole frame (the distortion is "
       "intended)."},
      {270, 1, false, "Three quarters, stretched back over the frame."},
      {-30, 0, true,
       "RotateIn32 on an RGB32 copy, turned 30 degrees clockwise; shown converted "
       "back to RGB24."},
  };
  for (const auto& t : turns) {
    const std::string angle = std::to_string(static_cast<int>(t.angle));
    steps.push_back({std::string(t.rgb32 ? "RotateIn32" : "RotateIn") + " (" + angle +
                         (t.stretch != 0 ? ", stretched)" : ")"),
                     "frame, " + size + ", temp, " + angle + ", " + std::to_string(t.stretch) +
                         ", null, &size (0)",
                     t.note,
                     [t](const Image& p) { return Turned(p, t.angle, t.stretch, t.rgb32); }});
  }
  steps.push_back(
      {"zqippiRotate_8u_C3R",
       "src, " + size + ", stride, {0, 0, " + size + "}, dst, stride, {0, 0, " + size +
           "}, 20, xShift, yShift, 4",
       "The primitive itself: 20 degrees about the centre (the demo works out the shifts) with "
       "cubic interpolation, into a black frame.",
       [](const Image& p) {
         Image dst = MakeImage(PixelFormat::kRGB24, p.width, p.height);
         const double a = 20 * 3.14159265358979323846 / 180, xc = p.width * 0.5,
                      yc = p.height * 0.5;
         const double xs = xc - (xc * std::cos(a) + yc * std::sin(a));
         const double ys = yc - (-xc * std::sin(a) + yc * std::cos(a));
         const FrameKitRegion whole{0, 0, p.width, p.height};
         const int32_t status = zqippiRotate_8u_C3R(p.data(), {p.width, p.height}, p.stride, &whole,
                                                    dst.data(), dst.stride, &whole, 20, xs, ys, 4);
         return StepResult{std::move(dst), StatusText(status)};
       }});
  return steps;
}

}  // namespace framekit::tool

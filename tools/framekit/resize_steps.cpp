// Gallery steps of the resize exports: each ResizeRGB24 mode enlarging a detail of the picture
// (cut out by the demo) four times and reducing the whole picture to a third, the RGB32 letterbox
// and YUY2 nearest neighbour.
#include <cstring>
#include <string>
#include <utility>

#include "demo_step.h"

namespace framekit::tool {
namespace {

// The demo's own copy of a rectangle of an RGB24 picture.
Image Detail(const Image& p, int32_t x, int32_t y, int32_t w, int32_t h) {
  Image out = MakeImage(PixelFormat::kRGB24, w, h);
  for (int32_t r = 0; r < h; ++r) std::memcpy(out.Row(r), p.Row(y + r) + 3 * x, size_t{3} * w);
  return out;
}

StepResult Resized(const Image& src, int32_t width, int32_t height, int32_t mode) {
  Image dst = MakeImage(PixelFormat::kRGB24, width, height);
  uint8_t* buffer = nullptr;
  int32_t size = 0;
  const int32_t status = ResizeRGB24(src.data(), src.width, src.height, dst.data(), width, height,
                                     mode, &buffer, &size);
  zqippiFree(buffer);
  return {std::move(dst), StatusText(status)};
}

const char* kModeNames[] = {"", "nearest", "linear", "cubic", "Lanczos"};

}  // namespace

std::vector<DemoStep> ResizeSteps(const Image& original) {
  std::vector<DemoStep> steps;
  // The detail: 80 x 45 pixels of the lettering.
  const int32_t dx = 385, dy = 240, dw = 80, dh = 45;
  for (int32_t mode = 1; mode <= 4; ++mode) {
    const std::string name = kModeNames[mode];
    steps.push_back(
        {"ResizeRGB24 (" + name + ", enlarging)",
         "detail 80, 45, dst, 320, 180, " + std::to_string(mode) + ", &buffer, &size",
         "A detail of the picture cut out by the demo, enlarged four times.",
         [=](const Image& p) { return Resized(Detail(p, dx, dy, dw, dh), 4 * dw, 4 * dh, mode); }});
    steps.push_back(
        {"ResizeRGB24 (" + name + ", reducing)",
         "frame, " + SizeText(original) + ", dst, " + std::to_string(original.width / 3) + ", " +
             std::to_string(original.height / 3) + ", " + std::to_string(mode) + ", &buffer, &size",
         "The whole picture reduced to a third.",
         [mode](const Image& p) { return Resized(p, p.width / 3, p.height / 3, mode); }});
  }
  steps.push_back(
      {"ResizeRGB32LB", "src, {640, 360}, {0, 0, 640, 360}, dst, work, {480, 480}, 2, null, 0",
       "Letterboxed into a square box with linear interpolation; work is a black frame made by "
       "the demo. Shown converted back to RGB24.",
       [](const Image& p) {
         Image src = RGB24ToRGB32(p);
         Image dst = MakeImage(PixelFormat::kRGB32, 480, 480);
         Image work = MakeImage(PixelFormat::kRGB32, 480, 480);
         const FrameKitRect crop{0, 0, p.width, p.height};
         ResizeRGB32LB(src.data(), {p.width, p.height}, &crop, dst.data(), work.data(), {480, 480},
                       2, nullptr, 0);
         return StepResult{RGB32ToRGB24(dst), "nothing (no result)"};
       }});
  steps.push_back({"ResizeYUY2", "src, dst, " + SizeText(original) + ", 320, 360",
                   "On a YUY2 frame made by the demo, halved across by nearest neighbour; shown "
                   "converted back to RGB24.",
                   [](const Image& p) {
                     const Image src = RGB24ToYUY2(p);
                     Image dst = MakeImage(PixelFormat::kYUY2, p.width / 2, p.height);
                     const int32_t status = ResizeYUY2(src.data(), dst.data(), p.width, p.height,
                                                       p.width / 2, p.height);
                     return StepResult{YUY2ToRGB24(dst), StatusText(status)};
                   }});
  return steps;
}

}  // namespace framekit::tool

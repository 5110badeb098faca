// Gallery steps of the motion and transition effects: zoom, pan half way, shake, both mirrors and
// the fades. The picture is 640 pixels wide, so its rows are packed as these effects expect.
#include <string>
#include <utility>
#include <vector>

#include "demo_step.h"

namespace framekit::tool {
namespace {

// A copy of the picture, the call on it, the copy shown.
DemoStep On(std::string name, std::string arguments, std::string note,
            std::function<void(Image&)> call) {
  return {std::move(name), std::move(arguments), std::move(note), [call](const Image& p) {
            Image frame = p;
            call(frame);
            return StepResult{std::move(frame), "nothing (no result)"};
          }};
}

}  // namespace

std::vector<DemoStep> MotionSteps(const Image& original) {
  const std::string size = SizeText(original);
  std::vector<DemoStep> steps;
  steps.push_back(
      On("EffectZoom", "frame, " + size + ", scratch, 2.0, 2.0, 0, 0, null, &size (0)",
         "Twice about the centre (cubic); scratch is a frame made by the demo.", [](Image& f) {
           std::vector<uint8_t> scratch(f.bytes.size());
           int32_t held = 0;
           EffectZoom(f.data(), f.width, f.height, scratch.data(), 2.0, 2.0, 0, 0, nullptr, &held);
         }));
  steps.push_back(On(
      "EffectPan (half way)",
      "frame, " + size + ", scratch, null, 0, 0, " + size +
          ", 320, 180, 320, 180, 0, 100, 50, null, &size (0)",
      "From the whole frame to its bottom-right quarter, half way there.", [](Image& f) {
        std::vector<uint8_t> scratch(f.bytes.size());
        int32_t held = 0;
        EffectPan(f.data(), f.width, f.height, scratch.data(), nullptr, 0, 0, f.width, f.height,
                  f.width / 2, f.height / 2, f.width / 2, f.height / 2, 0, 100, 50, nullptr, &held);
      }));
  steps.push_back(On("EffectShakeDown", "frame, " + size + ", 12",
                     "Even columns up and odd columns down by height / 12 rows.",
                     [](Image& f) { EffectShakeDown(f.data(), f.width, f.height, 12); }));
  steps.push_back(On("EffectMirrorDown", "frame, " + size, "The top half reflected downward.",
                     [](Image& f) { EffectMirrorDown(f.data(), f.width, f.height); }));
  steps.push_back(On("EffectMirrorRight", "frame, " + size, "The left half reflected rightward.",
                     [](Image& f) { EffectMirrorRight(f.data(), f.width, f.height); }));
  steps.push_back(On("EffectFadeInOut (out, a quarter)", "frame, " + size + ", 0, 100, 25, 0",
                     "A quarter of the way to black.", [](Image& f) {
                       EffectFadeInOut(f.data(), f.width, f.height, 0, 100, 25, 0);
                     }));
  steps.push_back(On("EffectFadeInOut (in, a quarter)", "frame, " + size + ", 0, 100, 25, 1",
                     "A quarter of the way from black.", [](Image& f) {
                       EffectFadeInOut(f.data(), f.width, f.height, 0, 100, 25, 1);
                     }));
  return steps;
}

}  // namespace framekit::tool

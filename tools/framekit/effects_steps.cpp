// Gallery steps of the channel and tone effects and of PerfTest. The picture is 640 pixels wide,
// a multiple of 4, so its rows are packed and aligned at once and the effects take their fast
// paths where they have one.
#include <utility>

#include "demo_step.h"

namespace framekit::tool {
namespace {

using Plain = void (*)(uint8_t*, int32_t, int32_t) noexcept;
using WithAmount = void (*)(uint8_t*, int32_t, int32_t, int32_t) noexcept;
using WithBand = void (*)(uint8_t*, int32_t, int32_t, uint8_t, uint8_t) noexcept;
using WithScratch = int32_t (*)(uint8_t*, int32_t, int32_t, uint8_t*) noexcept;

StepResult Done(Image image) { return {std::move(image), "nothing (no result)"}; }

DemoStep PlainStep(const char* name, Plain fn, const std::string& size, const char* note) {
  return {name, "frame, " + size, note, [fn](const Image& p) {
            Image image = p;
            fn(image.data(), image.width, image.height);
            return Done(std::move(image));
          }};
}

DemoStep AmountStep(const char* name, WithAmount fn, const std::string& size, int32_t amount,
                    const char* note) {
  return {name, "frame, " + size + ", " + std::to_string(amount), note,
          [fn, amount](const Image& p) {
            Image image = p;
            fn(image.data(), image.width, image.height, amount);
            return Done(std::move(image));
          }};
}

DemoStep BandStep(const char* name, WithBand fn, const std::string& size, uint8_t low,
                  uint8_t high) {
  return {name, "frame, " + size + ", " + std::to_string(low) + ", " + std::to_string(high),
          "White where the channel lies strictly between the two values, black elsewhere.",
          [fn, low, high](const Image& p) {
            Image image = p;
            fn(image.data(), image.width, image.height, low, high);
            return Done(std::move(image));
          }};
}

DemoStep ScratchStep(const char* name, WithScratch fn, const std::string& size,
                     size_t scratch_bytes_per_pixel, const char* note) {
  return {name, "frame, " + size + ", scratch", note,
          [fn, scratch_bytes_per_pixel](const Image& p) {
            Image image = p;
            std::vector<uint8_t> scratch(scratch_bytes_per_pixel * static_cast<size_t>(p.width) *
                                         static_cast<size_t>(p.height));
            const int32_t status = fn(image.data(), image.width, image.height, scratch.data());
            return StepResult{std::move(image), StatusText(status)};
          }};
}

}  // namespace

std::vector<DemoStep> EffectSteps(const Image& original) {
  const std::string size = SizeText(original);
  return {
      PlainStep("EffectRed", EffectRed, size, "Red channel only."),
      PlainStep("EffectGreen", EffectGreen, size, "Green channel only."),
      PlainStep("EffectBlue", EffectBlue, size, "Blue channel only."),
      BandStep("EffectFilterRed", EffectFilterRed, size, 100, 200),
      BandStep("EffectFilterGreen", EffectFilterGreen, size, 60, 180),
      BandStep("EffectFilterBlue", EffectFilterBlue, size, 30, 220),
      ScratchStep("EffectGreyscale", EffectGreyscale, size, 1,
                  "Scratch of width * height bytes made by the demo."),
      ScratchStep("EffectInvert", EffectInvert, size, 3,
                  "Scratch of 3 * width * height bytes made by the demo."),
      AmountStep("EffectLightness", EffectLightness, size, 96, "Toward white."),
      AmountStep("EffectDarkness", EffectDarkness, size, 96, "Toward black."),
      AmountStep("EffectContrast", EffectContrast, size, 80, "More contrast about mid-grey."),
      {"EffectSaturation", "frame, " + size + ", 400", "Stronger colour (255 is unchanged).",
       [](const Image& p) {
         Image image = p;
         EffectSaturation(image.data(), image.width, image.height, 400);
         return Done(std::move(image));
       }},
      AmountStep("EffectPosterize", EffectPosterize, size, 64, "Four levels a channel."),
      AmountStep("EffectSolorize", EffectSolorize, size, 128,
                 "Pixels brighter than the threshold inverted."),
      {"PerfTest", "frame, " + size + ", 4",
       "Brightens the frame 50 times by the general lightness pass; the result is the success of "
       "the last counter reading.",
       [](const Image& p) {
         Image image = p;
         const int32_t result = PerfTest(image.data(), image.width, image.height, 4);
         return StepResult{std::move(image), std::to_string(result)};
       }},
  };
}

}  // namespace framekit::tool

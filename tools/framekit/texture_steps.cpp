// Gallery steps of the noise, texture, blur and sharpen effects. Those effects walk packed rows
// (3 * width bytes); the picture is 640 pixels wide, so its rows are packed and aligned at once
// and the effects take their fast paths. The general paths are shown on a copy 638 pixels wide,
// packed for the call and aligned again for saving.
#include <cstring>
#include <utility>

#include "demo_step.h"

namespace framekit::tool {
namespace {

using Packed = std::vector<uint8_t>;

// The first `width` columns of an RGB24 image as packed rows, and back.
Packed PackColumns(const Image& image, int32_t width) {
  Packed out(size_t{3} * static_cast<size_t>(width) * static_cast<size_t>(image.height));
  for (int32_t y = 0; y < image.height; ++y) {
    std::memcpy(&out[size_t{3} * width * y], image.Row(y), size_t{3} * width);
  }
  return out;
}
Image Unpack(const Packed& packed, int32_t width, int32_t height) {
  Image image = MakeImage(PixelFormat::kRGB24, width, height);
  for (int32_t y = 0; y < height; ++y) {
    std::memcpy(image.Row(y), &packed[size_t{3} * width * y], size_t{3} * width);
  }
  return image;
}

constexpr int32_t kGeneralWidth = 638;  // not a multiple of 4: the general paths

// A step on packed rows of the picture (or of its 638-pixel copy).
DemoStep PackedStep(const char* name, std::string arguments, const char* note, bool general,
                    std::function<void(uint8_t*, int32_t, int32_t)> call) {
  return {name, std::move(arguments), note, [general, call](const Image& p) {
            const int32_t width = general ? kGeneralWidth : p.width;
            Packed frame = PackColumns(p, width);
            call(frame.data(), width, p.height);
            return StepResult{Unpack(frame, width, p.height), "nothing (no result)"};
          }};
}

std::string Args(const Image& p, bool general, const std::string& rest) {
  return "frame, " + std::to_string(general ? kGeneralWidth : p.width) + ", " +
         std::to_string(p.height) + rest;
}

}  // namespace

std::vector<DemoStep> TextureSteps(const Image& original) {
  const Image& p = original;
  static const FrameKitRect kFace{200, 80, 440, 280};
  return {
      PackedStep("EffectColorNoise", Args(p, false, ", 120"),
                 "Fast path: noise from the four-lane generator, only brightening.", false,
                 [](uint8_t* f, int32_t w, int32_t h) { EffectColorNoise(f, w, h, 120); }),
      PackedStep("EffectColorNoise (general path)", Args(p, true, ", 60"),
                 "Width 638: scalar draws that brighten, darken and wrap around.", true,
                 [](uint8_t* f, int32_t w, int32_t h) { EffectColorNoise(f, w, h, 60); }),
      PackedStep("EffectMonoNoise", Args(p, false, ", 120"), "One grey value a pixel.", false,
                 [](uint8_t* f, int32_t w, int32_t h) { EffectMonoNoise(f, w, h, 120); }),
      PackedStep("EffectMarble", Args(p, false, ", 6.0, 40"),
                 "Pixels scattered by sine and cosine offsets; unreached pixels are black.", false,
                 [](uint8_t* f, int32_t w, int32_t h) { EffectMarble(f, w, h, 6.0, 40); }),
      PackedStep("EffectSpray", Args(p, false, ", 4"), "Pixels replaced by random neighbours.",
                 false, [](uint8_t* f, int32_t w, int32_t h) { EffectSpray(f, w, h, 4); }),
      PackedStep("EffectMosaic", Args(p, false, ", 16"), "Blocks of 16 x 16 pixels.", false,
                 [](uint8_t* f, int32_t w, int32_t h) { EffectMosaic(f, w, h, 16); }),
      PackedStep("EffectMosaicROI", Args(p, false, ", 12, " + RectText(kFace)),
                 "Blocks of 12 x 12 inside the rectangle only.", false,
                 [](uint8_t* f, int32_t w, int32_t h) { EffectMosaicROI(f, w, h, 12, &kFace); }),
      PackedStep("EffectBlur", Args(p, false, ", scratch, 3 * 640"),
                 "Fast path: a 13 x 13 box (the vertical pass rounds).", false,
                 [](uint8_t* f, int32_t w, int32_t h) {
                   Packed scratch(size_t{3} * static_cast<size_t>(w > h ? w : h));
                   EffectBlur(f, w, h, scratch.data(), static_cast<int32_t>(scratch.size()));
                 }),
      PackedStep("EffectBlur (general path)", Args(p, true, ", scratch, 3 * 638"),
                 "Width 638: a 5 x 5 box, truncating.", true,
                 [](uint8_t* f, int32_t w, int32_t h) {
                   Packed scratch(size_t{3} * static_cast<size_t>(w > h ? w : h));
                   EffectBlur(f, w, h, scratch.data(), static_cast<int32_t>(scratch.size()));
                 }),
      PackedStep("EffectBlurEx", Args(p, false, ", 24, 1, 0, scratch, 3 * 640"),
                 "Fast path, kernel 24, flag A only: a vertical blur of 25 rows.", false,
                 [](uint8_t* f, int32_t w, int32_t h) {
                   Packed scratch(size_t{3} * static_cast<size_t>(w > h ? w : h));
                   EffectBlurEx(f, w, h, 24, 1, 0, scratch.data(),
                                static_cast<int32_t>(scratch.size()));
                 }),
      {"EffectSharpen", "frame, " + SizeText(p) + ", scratch",
       "Aligned rows. Scratch made by the demo as a copy of the picture, so the first row and "
       "column the effect copies from it look unchanged; the last three rows are unchanged.",
       [](const Image& original_picture) {
         Image image = original_picture;
         Image scratch = original_picture;
         EffectSharpen(image.data(), image.width, image.height, scratch.data());
         return StepResult{std::move(image), "nothing (no result)"};
       }},
  };
}

}  // namespace framekit::tool

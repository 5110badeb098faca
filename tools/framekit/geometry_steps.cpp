// Gallery steps of the flip, crop, cut and fill exports.
#include <utility>

#include "demo_step.h"

namespace framekit::tool {
namespace {

using InPlaceFlip = int32_t (*)(uint8_t*, int32_t, int32_t) noexcept;
using CopyingFlip = int32_t (*)(const uint8_t*, uint8_t*, int32_t, int32_t) noexcept;

StepResult FlipInPlace(Image image, InPlaceFlip flip) {
  const int32_t status = flip(image.data(), image.width, image.height);
  return {std::move(image), StatusText(status)};
}

StepResult FlipIntoCopy(const Image& src, CopyingFlip flip) {
  Image dst = MakeImage(src.format, src.width, src.height);
  const int32_t status = flip(src.data(), dst.data(), src.width, src.height);
  return {std::move(dst), StatusText(status)};
}

// Shows a result in another format by converting it with one of the demo's own conversions.
StepResult Shown(StepResult result, Image (*convert)(const Image&)) {
  result.image = convert(result.image);
  return result;
}

// A rectangle given in twentieths of the picture's width and height.
FrameKitRect Twentieths(const Image& p, int32_t left, int32_t top, int32_t right, int32_t bottom) {
  return {p.width * left / 20, p.height * top / 20, p.width * right / 20, p.height * bottom / 20};
}

}  // namespace

std::vector<DemoStep> FlipSteps(const Image& original) {
  const std::string in_place = "frame, " + SizeText(original);
  const std::string copying = "src, dst, " + SizeText(original);
  const std::string on_rgb32 = "On an RGB32 copy of the picture made by the demo.";
  const std::string rgb32_back =
      "From an RGB32 copy made by the demo into a second frame, shown converted back to RGB24.";
  const std::string yuy2 =
      "On a YUY2 frame made by the demo (BT.601 studio range), shown converted back to RGB24.";
  return {
      {"FlipHorizontalRGB24", in_place, "Upside down: the name follows the axis of the flip.",
       [](const Image& p) { return FlipInPlace(p, FlipHorizontalRGB24); }},
      {"FlipVerticalRGB24", in_place, "Mirrored left to right.",
       [](const Image& p) { return FlipInPlace(p, FlipVerticalRGB24); }},
      {"FlipHorizontalRGB32", in_place, on_rgb32,
       [](const Image& p) { return FlipInPlace(RGB24ToRGB32(p), FlipHorizontalRGB32); }},
      {"FlipVerticalRGB32", in_place, on_rgb32,
       [](const Image& p) { return FlipInPlace(RGB24ToRGB32(p), FlipVerticalRGB32); }},
      {"FlipHorizontalRGB32Ex", copying, rgb32_back,
       [](const Image& p) {
         return Shown(FlipIntoCopy(RGB24ToRGB32(p), FlipHorizontalRGB32Ex), RGB32ToRGB24);
       }},
      {"FlipVerticalRGB32Ex", copying, rgb32_back,
       [](const Image& p) {
         return Shown(FlipIntoCopy(RGB24ToRGB32(p), FlipVerticalRGB32Ex), RGB32ToRGB24);
       }},
      {"FlipHorizontalYUY2", in_place, yuy2,
       [](const Image& p) {
         return Shown(FlipInPlace(RGB24ToYUY2(p), FlipHorizontalYUY2), YUY2ToRGB24);
       }},
      {"FlipHorizontalYUY2Ex", copying, yuy2,
       [](const Image& p) {
         return Shown(FlipIntoCopy(RGB24ToYUY2(p), FlipHorizontalYUY2Ex), YUY2ToRGB24);
       }},
  };
}

std::vector<DemoStep> CropCutSteps(const Image& original) {
  const std::string size = SizeText(original);
  const FrameKitRect crop24 = Twentieths(original, 5, 3, 15, 17);
  const FrameKitRect crop32 = Twentieths(original, 10, 10, 20, 20);
  const int32_t cut24_w = original.width / 4, cut24_h = original.height / 4;
  const int32_t cut32_w = original.width / 2, cut32_h = original.height / 3;
  return {
      {"Crop24", "src, " + size + ", dst, " + RectText(crop24), "The middle of the picture.",
       [crop24](const Image& p) {
         Image dst =
             MakeImage(PixelFormat::kRGB24, crop24.right - crop24.left, crop24.bottom - crop24.top);
         const int32_t status = Crop24(p.data(), p.width, p.height, dst.data(), &crop24);
         return StepResult{std::move(dst), StatusText(status)};
       }},
      {"Crop32", "src, " + size + ", dst, " + RectText(crop32),
       "From an RGB32 copy made by the demo: the bottom right quarter (rows count in memory "
       "order, and the first row in memory is the top).",
       [crop32](const Image& p) {
         const Image src = RGB24ToRGB32(p);
         Image dst =
             MakeImage(PixelFormat::kRGB32, crop32.right - crop32.left, crop32.bottom - crop32.top);
         const int32_t status = Crop32(src.data(), src.width, src.height, dst.data(), &crop32);
         return StepResult{std::move(dst), StatusText(status)};
       }},
      {"ImageCutRGB24",
       "src, " + size + ", dst, " + std::to_string(cut24_w) + ", " + std::to_string(cut24_h),
       "Drops the last columns and the last rows in memory (right and bottom).",
       [cut24_w, cut24_h](const Image& p) {
         Image dst = MakeImage(PixelFormat::kRGB24, p.width - cut24_w, p.height - cut24_h);
         ImageCutRGB24(p.data(), p.width, p.height, dst.data(), cut24_w, cut24_h);
         return StepResult{std::move(dst), "nothing (no result)"};
       }},
      {"ImageCutRGB32",
       "src, " + size + ", dst, " + std::to_string(cut32_w) + ", " + std::to_string(cut32_h),
       "From an RGB32 copy made by the demo, shown converted back to RGB24.",
       [cut32_w, cut32_h](const Image& p) {
         const Image src = RGB24ToRGB32(p);
         Image dst = MakeImage(PixelFormat::kRGB32, p.width - cut32_w, p.height - cut32_h);
         ImageCutRGB32(src.data(), src.width, src.height, dst.data(), cut32_w, cut32_h);
         return StepResult{RGB32ToRGB24(dst), "nothing (no result)"};
       }},
  };
}

std::vector<DemoStep> FillSteps(const Image& original) {
  struct Fill {
    FrameKitRect rect;
    uint32_t colour;
  };
  // Each colour over parts of the picture it differs from, so every edge shows.
  const std::vector<Fill> fills = {{Twentieths(original, 1, 3, 4, 8), 0x00FF0000},
                                   {Twentieths(original, 11, 3, 14, 8), 0x0000FF00},
                                   {Twentieths(original, 8, 9, 12, 12), 0x00FFFF00},
                                   {Twentieths(original, 1, 14, 5, 18), 0x000000FF}};
  std::string args;
  for (const Fill& fill : fills) {
    args += (args.empty() ? "" : "; ") + std::string("frame, ") + SizeText(original) + ", " +
            RectText(fill.rect) + ", " + ColourText(fill.colour);
  }
  return {
      {"FillColor", args, "Four calls on a copy: red, green, yellow and blue rectangles.",
       [fills](const Image& p) {
         StepResult out{p, ""};
         for (const Fill& fill : fills) {
           const int32_t status =
               FillColor(out.image.data(), p.width, p.height, &fill.rect, fill.colour);
           out.result += (out.result.empty() ? "" : ", ") + StatusText(status);
         }
         return out;
       }},
  };
}

}  // namespace framekit::tool

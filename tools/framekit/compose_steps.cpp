// Gallery steps of overlay drawing, keying and motion detection. The overlays are made here: an
// RGB32 badge whose fourth byte ramps from 0 (left) to 255 (right), an RGB24 badge, and a second
// picture (the first mirrored, its colours rotated) for the keys and the motion map.
#include <string>
#include <utility>
#include <vector>

#include "demo_step.h"

namespace framekit::tool {
namespace {

constexpr int32_t kBadgeWidth = 256, kBadgeHeight = 160, kX = 40, kY = 30;

// Concentric colour rings; in RGB32 the fourth byte ramps across.
Image Badge(PixelFormat format) {
  Image badge = MakeImage(format, kBadgeWidth, kBadgeHeight);
  const int bpp = format == PixelFormat::kRGB32 ? 4 : 3;
  for (int32_t y = 0; y < kBadgeHeight; ++y) {
    uint8_t* row = badge.Row(y);
    for (int32_t x = 0; x < kBadgeWidth; ++x) {
      const int dx = x - kBadgeWidth / 2, dy = y - kBadgeHeight / 2;
      const int ring = (dx * dx + dy * dy) / 300;
      row[bpp * x + 0] = static_cast<uint8_t>(ring % 3 == 0 ? 230 : 40);
      row[bpp * x + 1] = static_cast<uint8_t>(ring % 3 == 1 ? 220 : 30);
      row[bpp * x + 2] = static_cast<uint8_t>(ring % 3 == 2 ? 240 : 50);
      if (bpp == 4) row[4 * x + 3] = static_cast<uint8_t>(x * 255 / (kBadgeWidth - 1));
    }
  }
  return badge;
}

// The picture mirrored left to right with its channels rotated.
Image SecondPicture(const Image& p) {
  Image second = p;
  for (int32_t y = 0; y < p.height; ++y) {
    for (int32_t x = 0; x < p.width; ++x) {
      const uint8_t* from = p.Row(y) + 3 * (p.width - 1 - x);
      uint8_t* to = second.Row(y) + 3 * x;
      to[0] = from[1];
      to[1] = from[2];
      to[2] = from[0];
    }
  }
  return second;
}

// The picture with a disc painted in `colour` (blue, green, red) around its centre.
Image WithDisc(const Image& p, const uint8_t colour[3], bool shaded) {
  Image frame = p;
  for (int32_t y = 0; y < p.height; ++y) {
    for (int32_t x = 0; x < p.width; ++x) {
      const int dx = x - p.width / 2, dy = y - p.height / 2;
      if (dx * dx + dy * dy > 130 * 130) continue;
      uint8_t* px = frame.Row(y) + 3 * x;
      // A shaded screen: darker towards the bottom, as studio light falls off.
      const int shade = shaded ? 255 - (y * 90 / p.height) : 255;
      for (int k = 0; k < 3; ++k) px[k] = static_cast<uint8_t>(colour[k] * shade / 255);
    }
  }
  return frame;
}

StepResult Shown(Image frame) { return {std::move(frame), "nothing (no result)"}; }

}  // namespace

std::vector<DemoStep> ComposeSteps(const Image& original) {
  const std::string size = SizeText(original);
  const std::string at = std::to_string(kX) + ", " + std::to_string(kY);
  const std::string badge = "badge, " + std::to_string(kBadgeWidth) + ", " +
                            std::to_string(kBadgeHeight) + ", frame, " + size + ", " + at;
  std::vector<DemoStep> steps;
  steps.push_back({"Draw_RGB24OnRGB24", badge, "An RGB24 badge copied opaque.", [](const Image& p) {
                     Image frame = p;
                     const Image b = Badge(PixelFormat::kRGB24);
                     const int32_t s = Draw_RGB24OnRGB24(b.data(), b.width, b.height, frame.data(),
                                                         p.width, p.height, kX, kY);
                     return StepResult{std::move(frame), StatusText(s)};
                   }});
  steps.push_back(
      {"Draw_RGB24OnRGB24S", "badge, 256, 160, 768, frame, " + size + ", 1920, 300, 150",
       "The same copy with the strides passed, further down and right.", [](const Image& p) {
         Image frame = p;
         const Image b = Badge(PixelFormat::kRGB24);
         const int32_t s = Draw_RGB24OnRGB24S(b.data(), b.width, b.height, b.stride, frame.data(),
                                              p.width, p.height, frame.stride, 300, 150);
         return StepResult{std::move(frame), StatusText(s)};
       }});
  steps.push_back(
      {"Draw_RGB32OnRGB24", badge, "An RGB32 badge whose alpha ramps from 0 (left) to 255 (right).",
       [](const Image& p) {
         Image frame = p;
         const Image b = Badge(PixelFormat::kRGB32);
         Draw_RGB32OnRGB24(b.data(), b.width, b.height, frame.data(), p.width, p.height, kX, kY);
         return Shown(std::move(frame));
       }});
  steps.push_back({"Draw_RGB32OnRGB24S", "badge, 252, 160, 1024, frame, " + size + ", 1920, " + at,
                   "The ramped badge with the strides passed; a width of 252 (a multiple of 4).",
                   [](const Image& p) {
                     Image frame = p;
                     const Image b = Badge(PixelFormat::kRGB32);
                     Draw_RGB32OnRGB24S(b.data(), 252, b.height, b.stride, frame.data(), p.width,
                                        p.height, frame.stride, kX, kY);
                     return Shown(std::move(frame));
                   }});
  steps.push_back({"Draw_RGB24OnRGB32", badge,
                   "Into an RGB32 copy of the picture; the covered fourth bytes become 255.",
                   [](const Image& p) {
                     Image frame = RGB24ToRGB32(p);
                     const Image b = Badge(PixelFormat::kRGB24);
                     Draw_RGB24OnRGB32(b.data(), b.width, b.height, frame.data(), p.width, p.height,
                                       kX, kY);
                     return Shown(RGB32ToRGB24(frame));
                   }});
  steps.push_back({"Draw_RGB24OnRGB24_Transp", badge + ", 128",
                   "The RGB24 badge at constant transparency 128 (half).", [](const Image& p) {
                     Image frame = p;
                     const Image b = Badge(PixelFormat::kRGB24);
                     Draw_RGB24OnRGB24_Transp(b.data(), b.width, b.height, frame.data(), p.width,
                                              p.height, kX, kY, 128);
                     return Shown(std::move(frame));
                   }});
  steps.push_back({"Draw_RGB32OnRGB24_Transp", badge + ", 128",
                   "The ramped badge with its alpha halved.", [](const Image& p) {
                     Image frame = p;
                     const Image b = Badge(PixelFormat::kRGB32);
                     Draw_RGB32OnRGB24_Transp(b.data(), b.width, b.height, frame.data(), p.width,
                                              p.height, kX, kY, 128);
                     return Shown(std::move(frame));
                   }});
  steps.push_back(
      {"Draw_RGB32OnRGB32", badge + ", work (a copy of the frame), " + size,
       "The over composite into the work frame (background: the picture's own top-left corner, "
       "result placed at 40, 30), then the work frame copied back whole.",
       [](const Image& p) {
         Image frame = RGB24ToRGB32(p);
         Image work = frame;  // so the picture shows around the composite
         const Image b = Badge(PixelFormat::kRGB32);
         Draw_RGB32OnRGB32(b.data(), b.width, b.height, frame.data(), p.width, p.height, kX, kY,
                           work.data(), work.width, work.height);
         return Shown(RGB32ToRGB24(frame));
       }});
  steps.push_back({"Draw_RGB24_TraspChange + Draw_RGB32OnRGB24",
                   "badge, 256, 160, 60; then as Draw_RGB32OnRGB24",
                   "The ramped badge's alpha lowered by 60 (saturating at 0: its left quarter "
                   "vanishes), then drawn.",
                   [](const Image& p) {
                     Image frame = p;
                     Image b = Badge(PixelFormat::kRGB32);
                     Draw_RGB24_TraspChange(b.data(), b.width, b.height, 60);
                     Draw_RGB32OnRGB24(b.data(), b.width, b.height, frame.data(), p.width, p.height,
                                       kX, kY);
                     return Shown(std::move(frame));
                   }});
  steps.push_back(
      {"ColorKeyRGB24",
       "picture with a key-green disc, 1920, second picture, 1920, "
       "out, 1920, " +
           size,
       "The disc of exactly (33, 151, 54) shows the second picture.", [](const Image& p) {
         static constexpr uint8_t kKey[3] = {33, 151, 54};
         const Image front = WithDisc(p, kKey, false), back = SecondPicture(p);
         Image out = MakeImage(PixelFormat::kRGB24, p.width, p.height);
         const int32_t s = ColorKeyRGB24(front.data(), front.stride, back.data(), back.stride,
                                         out.data(), out.stride, p.width, p.height);
         return StepResult{std::move(out), StatusText(s)};
       }});
  steps.push_back(
      {"ChromaKeyLoadAlphaMap + ChromaKey",
       "map, 60, 180; frame with a shaded green disc, " + size + ", second picture, map, 0, 0, 1",
       "A soft green key: the shaded disc (and the picture's own green-dominant "
       "pixels, as far as the map says) show the second picture.",
       [](const Image& p) {
         static constexpr uint8_t kGreen[3] = {40, 220, 60};
         Image frame = WithDisc(p, kGreen, true);
         const Image back = SecondPicture(p);
         std::vector<double> map(513, 0.0);
         ChromaKeyLoadAlphaMap(map.data(), 60, 180);
         ChromaKey(frame.data(), p.width, p.height, back.data(), map.data(), 0, 0, 1);
         return Shown(std::move(frame));
       }});
  steps.push_back(
      {"MotionDetectionCompareImages + MotionDetectionBuildMatrix + MotionDetectionHighlight",
       "picture, picture moved 6 pixels right, map, 1, 0, 0, 0, " + size +
           "; then 640, 360, 40, "
           "24, matrix, map; then frame, cell levels, count, 0, 20",
       "The luminance difference of the picture and a copy moved right; each 16 x 15 cell's mean "
       "above 20 tints the cell's pixels red.",
       [](const Image& p) {
         Image moved = p;
         for (int32_t y = 0; y < p.height; ++y) {
           for (int32_t x = p.width - 1; x >= 6; --x) {
             for (int k = 0; k < 3; ++k) moved.Row(y)[3 * x + k] = p.Row(y)[3 * (x - 6) + k];
           }
         }
         const int32_t count = p.width * p.height, columns = 40, rows = 24;
         std::vector<uint8_t> map(static_cast<size_t>(count)), matrix(columns * rows);
         const uint64_t mean =
             MotionDetectionCompareImages(p.data(), moved.data(), map.data(), 1, 0, 0, 0, count);
         MotionDetectionBuildMatrix(p.width, p.height, columns, rows, matrix.data(), map.data());
         // Each pixel's level: its cell's mean.
         std::vector<uint8_t> levels(map.size());
         const int32_t cw = p.width / columns, ch = p.height / rows;
         for (int32_t y = 0; y < p.height; ++y) {
           for (int32_t x = 0; x < p.width; ++x) {
             levels[static_cast<size_t>(y) * p.width + x] =
                 matrix[static_cast<size_t>(y / ch) * columns + x / cw];
           }
         }
         Image frame = p;
         const int64_t visited =
             MotionDetectionHighlight(frame.data(), levels.data(), count, 0, 20);
         return StepResult{std::move(frame), "mean difference " + std::to_string(mean) +
                                                 "; highlight visited " + std::to_string(visited)};
       }});
  return steps;
}

}  // namespace framekit::tool

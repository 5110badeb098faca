// Gallery steps of deinterlacing. The interlaced pictures are made here from shifted copies of
// the test picture: the even rows (the top field) from one copy, the odd rows from another moved
// 6 pixels right and 2 down, as a camera pan between two fields would.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "demo_step.h"

namespace framekit::tool {
namespace {

constexpr int32_t kPanX = 6, kPanY = 2;

// The picture moved by (dx, dy) pixels, its edge pixels repeated into the uncovered border.
Image Shifted(const Image& p, int32_t dx, int32_t dy) {
  Image moved = p;
  for (int32_t y = 0; y < p.height; ++y) {
    const int32_t from_y = std::clamp(y - dy, 0, p.height - 1);
    for (int32_t x = 0; x < p.width; ++x) {
      const int32_t from_x = std::clamp(x - dx, 0, p.width - 1);
      std::copy_n(p.Row(from_y) + 3 * from_x, 3, moved.Row(y) + 3 * x);
    }
  }
  return moved;
}

// The top field from the picture moved by `step` pans, the bottom field from the next pan.
Image Interlaced(const Image& p, int32_t step) {
  Image frame = Shifted(p, step * kPanX, step * kPanY);
  const Image later = Shifted(p, (step + 1) * kPanX, (step + 1) * kPanY);
  for (int32_t y = 1; y < p.height; y += 2) std::copy_n(later.Row(y), 3 * p.width, frame.Row(y));
  return frame;
}

StepResult Shown(Image frame) { return {std::move(frame), "nothing (no result)"}; }

}  // namespace

std::vector<DemoStep> RestoreSteps(const Image& original) {
  const std::string size = SizeText(original);
  std::vector<DemoStep> steps;
  // Rows of 3 * width bytes: the test picture's width keeps them packed.
  // The in-place filters on the interlaced picture, with a temp of the frame's size.
  using InPlace = void (*)(uint8_t*, int32_t, int32_t, uint8_t*, uint32_t);
  const auto on_interlaced = [&](const char* function, InPlace filter, uint32_t value,
                                 const char* note) {
    steps.push_back({function, "frame, " + size + ", temp, " + std::to_string(value), note,
                     [filter, value](const Image& p) {
                       Image frame = Interlaced(p, 0);
                       std::vector<uint8_t> temp(frame.bytes.size());
                       filter(frame.data(), p.width, p.height, temp.data(), value);
                       return Shown(std::move(frame));
                     }});
  };
  const InPlace triangle = [](uint8_t* f, int32_t w, int32_t h, uint8_t* t, uint32_t v) {
    EffectDeinterlaceTriangle(f, w, h, t, v);
  };
  const InPlace cavt = [](uint8_t* f, int32_t w, int32_t h, uint8_t* t, uint32_t v) {
    EffectDeinterlaceCAVT(f, w, h, t, static_cast<uint16_t>(v));
  };
  on_interlaced("EffectDeinterlaceTriangle", triangle, 256,
                "The interlaced input: the odd rows a field later, the picture panned 6 pixels "
                "right and 2 down. A centre weight of 256 leaves it as it is.");
  on_interlaced("EffectDeinterlaceTriangle", triangle, 128,
                "[1 2 1] / 4 on the comb teeth of the bottom rows.");
  on_interlaced("EffectDeinterlaceTriangle", triangle, 0,
                "Teeth removed: each bottom sample clamped between the kept samples above and "
                "below (their median).");
  on_interlaced("EffectDeinterlaceCAVT", cavt, 16,
                "The bottom field moved back by each block's pan vector and blended with the "
                "kept rows, at most 16 levels outside the kept samples above and below.");
  steps.push_back(
      {"EffectDeinterlaceBlend",
       "frame1, frame2, frame3, dst, " + size + ", " + std::to_string(original.stride) + ", " +
           std::to_string(original.stride) + ", {10, 30, 0.5, 0.5}",
       "Three interlaced frames of the pan; dst is the middle one with its bottom rows rebuilt "
       "(the pan moves everything, so the motion test takes the interpolation).",
       [](const Image& p) {
         const Image f1 = Interlaced(p, -1), f2 = Interlaced(p, 0), f3 = Interlaced(p, 1);
         Image dst = f2;
         const FrameKitDeinterlaceBlendParams params{{10, 30}, {0.5, 0.5}};
         EffectDeinterlaceBlend(f1.data(), f2.data(), f3.data(), dst.data(), p.width, p.height,
                                f2.stride, dst.stride, &params);
         return Shown(std::move(dst));
       }});
  return steps;
}

}  // namespace framekit::tool

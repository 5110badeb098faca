// Gallery step of the primitive memory exports.
#include <utility>

#include "demo_step.h"

namespace framekit::tool {

std::vector<DemoStep> MemorySteps(const Image& original) {
  const std::string size = SizeText(original);
  return {
      {"zqippiMalloc_8u_C3 + zqippiCopy_8u_C3R + zqippiFree",
       size + ", &step; src, " + std::to_string(original.stride) + ", image, step, " + size +
           "; image, step, dst, " + std::to_string(original.stride) + ", " + size + "; image",
       "Copies the picture into an image from zqippiMalloc_8u_C3 and back into a new frame.",
       [](const Image& p) {
         int32_t step = 0;
         uint8_t* image = zqippiMalloc_8u_C3(p.width, p.height, &step);
         if (image == nullptr) return StepResult{Image{}, "null from zqippiMalloc_8u_C3"};
         Image back = MakeImage(PixelFormat::kRGB24, p.width, p.height);
         const int32_t in = zqippiCopy_8u_C3R(p.data(), p.stride, image, step, p.width, p.height);
         const int32_t out =
             zqippiCopy_8u_C3R(image, step, back.data(), back.stride, p.width, p.height);
         zqippiFree(image);
         const bool same = SamePixels(p, back);
         std::string result =
             "step " + std::to_string(step) + "; copies " + StatusText(in) + ", " +
             StatusText(out) +
             (same ? "; identical to the original" : "; DIFFERS from the original");
         return StepResult{std::move(back), std::move(result)};
       }},
  };
}

}  // namespace framekit::tool

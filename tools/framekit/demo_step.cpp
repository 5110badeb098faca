#include "demo_step.h"

#include <cctype>
#include <cstdio>

namespace framekit::tool {

std::vector<DemoStep> AllDemoSteps(const Image& original) {
  std::vector<DemoStep> steps;
  for (auto family :
       {FlipSteps, CropCutSteps, FillSteps, ConvertSteps, EffectSteps, TextureSteps, ResizeSteps,
        RotateSteps, MotionSteps, ComposeSteps, RestoreSteps, MemorySteps}) {
    std::vector<DemoStep> more = family(original);
    steps.insert(steps.end(), more.begin(), more.end());
  }
  return steps;
}

std::string StatusText(int32_t status) {
  std::string text = std::to_string(status);
  switch (status) {
    case 20:
      return text + " (processor of another vendor)";
    case 35:
      return text + " (odd size: the even part converted)";
    case 36:
      return text + " (processor not identified)";
    case -6:
      return text + " (size error)";
    case -8:
      return text + " (null pointer)";
    case -21:
      return text + " (invalid flip axis)";
    default:
      return text;
  }
}

std::string SizeText(const Image& image) {
  return std::to_string(image.width) + ", " + std::to_string(image.height);
}

std::string RectText(const FrameKitRect& rect) {
  return "{left " + std::to_string(rect.left) + ", top " + std::to_string(rect.top) + ", right " +
         std::to_string(rect.right) + ", bottom " + std::to_string(rect.bottom) + "}";
}

std::string ColourText(uint32_t colour) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(colour));
  return text;
}

std::string FileStem(const std::string& function) {
  std::string stem;
  for (char c : function) {
    if (std::isalnum(static_cast<unsigned char>(c)) || c == '_') {
      stem += c;
    } else if (!stem.empty() && stem.back() != '_') {
      stem += '_';
    }
  }
  while (!stem.empty() && stem.back() == '_') stem.pop_back();
  return stem.empty() ? "step" : stem;
}

}  // namespace framekit::tool

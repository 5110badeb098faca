// The gallery's table. Each exported function the demo shows is one DemoStep: its name, its
// arguments as the gallery prints them, a note, and a function that runs it on the original
// picture. A family's steps live in <family>_steps.cpp; AllDemoSteps lists the families.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "framekit/framekit.h"
#include "image.h"

namespace framekit::tool {

// What a step made: the picture to show (RGB24 is saved with SaveImageRGB24, RGB32 with
// SaveImageRGB32; empty for none) and what the library returned, as text.
struct StepResult {
  Image image;
  std::string result;
};

struct DemoStep {
  std::string function;   // the export, or exports joined by " + "
  std::string arguments;  // the call's arguments as the gallery shows them
  std::string note;       // how the input is prepared or the result shown; may be empty
  std::function<StepResult(const Image& original)> run;  // must not modify the original
};

// Family tables, each given the original so argument text can quote its size.
std::vector<DemoStep> ConvertSteps(const Image& original);
std::vector<DemoStep> FlipSteps(const Image& original);
std::vector<DemoStep> CropCutSteps(const Image& original);
std::vector<DemoStep> FillSteps(const Image& original);
std::vector<DemoStep> MemorySteps(const Image& original);
std::vector<DemoStep> EffectSteps(const Image& original);
std::vector<DemoStep> TextureSteps(const Image& original);
std::vector<DemoStep> ResizeSteps(const Image& original);
std::vector<DemoStep> RotateSteps(const Image& original);
std::vector<DemoStep> MotionSteps(const Image& original);
std::vector<DemoStep> ComposeSteps(const Image& original);
std::vector<DemoStep> RestoreSteps(const Image& original);

// Every step in gallery order.
std::vector<DemoStep> AllDemoSteps(const Image& original);

// Argument and result text shared by the tables.
std::string StatusText(int32_t status);          // "0", "-6 (size error)", ...
std::string SizeText(const Image& image);        // "640, 360"
std::string RectText(const FrameKitRect& rect);  // "{left 1, top 2, right 3, bottom 4}"
std::string ColourText(uint32_t colour);         // "0x00FF8000"

// A file-name stem from a step's function text: letters, digits and '_', other runs as one '_'.
std::string FileStem(const std::string& function);

}  // namespace framekit::tool

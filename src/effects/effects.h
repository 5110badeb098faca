// Channel and tone effects on RGB24 frames (bytes blue, green, red), in place.
//
// Three ways of walking a frame, each kept on purpose:
//   pixel-count walkers  width * height consecutive pixels, the count a wrapped 32-bit product
//                        (nothing happens when it is 0 or less);
//   row walkers          height rows of 3 * width bytes one after another (packed rows);
//   primitive users      greyscale and invert, at the aligned row stride.
// Lightness, darkness, contrast and saturation take a fast path when width % 4 == 0 (signed, so
// a negative multiple of 4 takes it too) and a general path otherwise; the two round differently.
#pragma once

#include <cstdint>

#include "primitives/core/types.h"

namespace framekit::effects {

using prim::Status;

enum class Channel : int { kBlue = 0, kGreen = 1, kRed = 2 };

void KeepChannel(uint8_t* frame, int32_t width, int32_t height, Channel keep);
void BandThreshold(uint8_t* frame, int32_t width, int32_t height, Channel channel, uint8_t low,
                   uint8_t high);

Status Greyscale(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch);
Status Invert(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch);

void Lightness(uint8_t* frame, int32_t width, int32_t height, int32_t amount);
void Darkness(uint8_t* frame, int32_t width, int32_t height, int32_t amount);
void Contrast(uint8_t* frame, int32_t width, int32_t height, int32_t k);
void Saturation(uint8_t* frame, int32_t width, int32_t height, uint32_t s);
void Posterize(uint8_t* frame, int32_t width, int32_t height, int32_t level);
void Solarize(uint8_t* frame, int32_t width, int32_t height, int32_t threshold);

// Noise (noise.cpp): colour noise draws per channel, mono noise one draw per pixel. An amount of
// -1 would take draws modulo 0: it changes nothing (the colour fast path still reseeds).
void ColourNoise(uint8_t* frame, int32_t width, int32_t height, int32_t amount);
void MonoNoise(uint8_t* frame, int32_t width, int32_t height, int32_t amount);

// Texture (texture.cpp), packed rows.
struct MosaicRect {
  int32_t left, top, right, bottom;  // right and bottom exclusive
};
void Marble(uint8_t* frame, int32_t width, int32_t height, double scale, int32_t period);
void Spray(uint8_t* frame, int32_t width, int32_t height, int32_t amount);
void Mosaic(uint8_t* frame, int32_t width, int32_t height, int32_t block, const MosaicRect& rect);

// Blur (packed rows) and sharpen (aligned row stride), blur.cpp.
void Blur(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch, int32_t scratch_size);
void BlurEx(uint8_t* frame, int32_t width, int32_t height, int32_t kernel, int32_t flag_a,
            int32_t flag_b, uint8_t* scratch, int32_t scratch_size);
void Sharpen(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch);

// The general (row-by-row) lightness and darkness passes, whatever the width: what PerfTest
// repeats, and what the fade applies.
void LightnessRows(uint8_t* frame, int32_t width, int32_t height, int32_t amount);
void DarknessRows(uint8_t* frame, int32_t width, int32_t height, int32_t amount);

// Motion and transition effects (motion.cpp), packed rows of 3 * width bytes. Zoom and pan
// resize a crop of the frame onto the whole scratch frame (cubic, through the caller's
// work-buffer cache: `buffer` by value, *size read once on entry; a buffer held at the end
// while that size was 0 is released) and copy the scratch back over the frame.
void Zoom(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch, double zoom_x,
          double zoom_y, int32_t centre_x, int32_t centre_y, uint8_t* buffer, int32_t* size);
struct PanRect {
  int32_t x, y, width, height;
};
void Pan(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch, const PanRect& from,
         const PanRect& to, int64_t start, int64_t end, int64_t now, uint8_t* buffer,
         int32_t* size);
void ShakeDown(uint8_t* frame, int32_t width, int32_t height, int32_t divisor);
void MirrorDown(uint8_t* frame, int32_t width, int32_t height);
void MirrorRight(uint8_t* frame, int32_t width, int32_t height);
void FadeInOut(uint8_t* frame, int32_t width, int32_t height, int64_t start, int64_t end,
               int64_t now, int32_t fade_in);

// Runs the general lightness pass 50 times between two readings of the platform's counter and
// returns the last reading (nonzero). Nothing of the measurement is kept.
int32_t PerfTest(uint8_t* frame, int32_t width, int32_t height, int32_t level);

}  // namespace framekit::effects

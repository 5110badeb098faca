// Effect exports and PerfTest: argument forwarding only.
#include "effects/effects.h"
#include "framekit/framekit.h"

namespace fx = framekit::effects;

extern "C" {

void EffectRed(uint8_t* frame, int32_t width, int32_t height) noexcept {
  fx::KeepChannel(frame, width, height, fx::Channel::kRed);
}
void EffectGreen(uint8_t* frame, int32_t width, int32_t height) noexcept {
  fx::KeepChannel(frame, width, height, fx::Channel::kGreen);
}
void EffectBlue(uint8_t* frame, int32_t width, int32_t height) noexcept {
  fx::KeepChannel(frame, width, height, fx::Channel::kBlue);
}

void EffectFilterRed(uint8_t* frame, int32_t width, int32_t height, uint8_t low,
                     uint8_t high) noexcept {
  fx::BandThreshold(frame, width, height, fx::Channel::kRed, low, high);
}
void EffectFilterGreen(uint8_t* frame, int32_t width, int32_t height, uint8_t low,
                       uint8_t high) noexcept {
  fx::BandThreshold(frame, width, height, fx::Channel::kGreen, low, high);
}
void EffectFilterBlue(uint8_t* frame, int32_t width, int32_t height, uint8_t low,
                      uint8_t high) noexcept {
  fx::BandThreshold(frame, width, height, fx::Channel::kBlue, low, high);
}

int32_t EffectGreyscale(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch) noexcept {
  return fx::Greyscale(frame, width, height, scratch);
}
int32_t EffectInvert(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch) noexcept {
  return fx::Invert(frame, width, height, scratch);
}

void EffectLightness(uint8_t* frame, int32_t width, int32_t height, int32_t amount) noexcept {
  fx::Lightness(frame, width, height, amount);
}
void EffectDarkness(uint8_t* frame, int32_t width, int32_t height, int32_t amount) noexcept {
  fx::Darkness(frame, width, height, amount);
}
void EffectContrast(uint8_t* frame, int32_t width, int32_t height, int32_t contrast) noexcept {
  fx::Contrast(frame, width, height, contrast);
}
void EffectSaturation(uint8_t* frame, int32_t width, int32_t height, uint32_t saturation) noexcept {
  fx::Saturation(frame, width, height, saturation);
}
void EffectPosterize(uint8_t* frame, int32_t width, int32_t height, int32_t level) noexcept {
  fx::Posterize(frame, width, height, level);
}
void EffectSolorize(uint8_t* frame, int32_t width, int32_t height, int32_t threshold) noexcept {
  fx::Solarize(frame, width, height, threshold);
}

void EffectColorNoise(uint8_t* frame, int32_t width, int32_t height, int32_t amount) noexcept {
  fx::ColourNoise(frame, width, height, amount);
}
void EffectMonoNoise(uint8_t* frame, int32_t width, int32_t height, int32_t amount) noexcept {
  fx::MonoNoise(frame, width, height, amount);
}
void EffectMarble(uint8_t* frame, int32_t width, int32_t height, double scale,
                  int32_t period) noexcept {
  fx::Marble(frame, width, height, scale, period);
}
void EffectSpray(uint8_t* frame, int32_t width, int32_t height, int32_t amount) noexcept {
  fx::Spray(frame, width, height, amount);
}
void EffectMosaic(uint8_t* frame, int32_t width, int32_t height, int32_t block) noexcept {
  fx::Mosaic(frame, width, height, block, {0, 0, width, height});
}
void EffectMosaicROI(uint8_t* frame, int32_t width, int32_t height, int32_t block,
                     const FrameKitRect* rect) noexcept {
  if (rect == nullptr) return;
  const fx::MosaicRect copy{rect->left, rect->top, rect->right, rect->bottom};
  fx::Mosaic(frame, width, height, block, copy);
}

void EffectBlur(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch,
                int32_t scratch_size) noexcept {
  fx::Blur(frame, width, height, scratch, scratch_size);
}
void EffectBlurEx(uint8_t* frame, int32_t width, int32_t height, int32_t kernel, int32_t flag_a,
                  int32_t flag_b, uint8_t* scratch, int32_t scratch_size) noexcept {
  fx::BlurEx(frame, width, height, kernel, flag_a, flag_b, scratch, scratch_size);
}
void EffectSharpen(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch) noexcept {
  fx::Sharpen(frame, width, height, scratch);
}

void EffectZoom(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch, double zoom_x,
                double zoom_y, int32_t centre_x, int32_t centre_y, uint8_t* buffer,
                int32_t* buffer_size) noexcept {
  fx::Zoom(frame, width, height, scratch, zoom_x, zoom_y, centre_x, centre_y, buffer, buffer_size);
}
void EffectPan(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch, void* /*unused*/,
               int32_t start_x, int32_t start_y, int32_t start_width, int32_t start_height,
               int32_t end_x, int32_t end_y, int32_t end_width, int32_t end_height,
               int64_t start_time, int64_t end_time, int64_t current_time, uint8_t* buffer,
               int32_t* buffer_size) noexcept {
  fx::Pan(frame, width, height, scratch, {start_x, start_y, start_width, start_height},
          {end_x, end_y, end_width, end_height}, start_time, end_time, current_time, buffer,
          buffer_size);
}
void EffectShakeDown(uint8_t* frame, int32_t width, int32_t height, int32_t divisor) noexcept {
  fx::ShakeDown(frame, width, height, divisor);
}
void EffectMirrorDown(uint8_t* frame, int32_t width, int32_t height) noexcept {
  fx::MirrorDown(frame, width, height);
}
void EffectMirrorRight(uint8_t* frame, int32_t width, int32_t height) noexcept {
  fx::MirrorRight(frame, width, height);
}
void EffectFadeInOut(uint8_t* frame, int32_t width, int32_t height, int64_t start_time,
                     int64_t end_time, int64_t current_time, int32_t fade_in) noexcept {
  fx::FadeInOut(frame, width, height, start_time, end_time, current_time, fade_in);
}

int32_t PerfTest(uint8_t* frame, int32_t width, int32_t height, int32_t level) noexcept {
  return fx::PerfTest(frame, width, height, level);
}

}  // extern "C"

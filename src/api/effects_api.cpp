// Channel and tone effect exports and PerfTest: argument forwarding only.
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

int32_t PerfTest(uint8_t* frame, int32_t width, int32_t height, int32_t level) noexcept {
  return fx::PerfTest(frame, width, height, level);
}

}  // extern "C"

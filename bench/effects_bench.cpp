// The channel and tone effects through their public names at the class Init chose, the fast-path
// tone kernels per class, and OpenCV's convertScaleAbs on the same frame as the peer of the tone
// effects. Effects run in place on a random frame; their cost does not depend on the pixel
// values (vector arithmetic or table look-ups), so the frame is not refreshed between runs.
#include <functional>
#include <memory>
#include <opencv2/core.hpp>
#include <string>

#include "bench_frames.h"
#include "framekit/framekit.h"
#include "primitives/core/dispatch.h"

namespace framekit::bench {
namespace {

size_t FrameBytes(FrameSize fs) {
  return static_cast<size_t>(Stride4(fs.width * 3)) * static_cast<size_t>(fs.height);
}

// One in-place call on a frame of the given size; scratch of 3 bytes a pixel when asked.
using Call = std::function<void(uint8_t* frame, int32_t w, int32_t h, uint8_t* scratch)>;

void RegisterEffect(const std::string& name, Call call) {
  for (const FrameSize fs : kExportSizes) {
    const std::string bench_name = Join("effect/", name, "/", SizeName(fs));
    benchmark::RegisterBenchmark(bench_name.c_str(), [=](benchmark::State& state) {
      const Buffer frame(FrameBytes(fs));
      const Buffer scratch(FrameBytes(fs));
      for (auto _ : state) {
        call(frame.get(), fs.width, fs.height, scratch.get());
        benchmark::ClobberMemory();
      }
      SetFrameCounters(state, fs, 3);
    });
  }
}

// The peer: alpha * v + beta, rounded and saturated, over a CV_8UC3 frame in place.
void RegisterOpenCv() {
  cv::setNumThreads(1);
  for (const FrameSize fs : kExportSizes) {
    const std::string bench_name = Join("peer/cv_convertScaleAbs/", SizeName(fs));
    benchmark::RegisterBenchmark(bench_name.c_str(), [=](benchmark::State& state) {
      const Buffer frame(FrameBytes(fs));
      cv::Mat mat(fs.height, fs.width, CV_8UC3, frame.get(),
                  static_cast<size_t>(Stride4(fs.width * 3)));
      for (auto _ : state) {
        cv::convertScaleAbs(mat, mat, 1.2, -20.0);
        benchmark::ClobberMemory();
      }
      SetFrameCounters(state, fs, 3);
    });
  }
}

}  // namespace

void RegisterEffectBenchmarks() {
  RegisterEffect("EffectRed",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectRed(f, w, h); });
  RegisterEffect("EffectGreen",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectGreen(f, w, h); });
  RegisterEffect("EffectBlue",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectBlue(f, w, h); });
  RegisterEffect("EffectFilterRed", [](uint8_t* f, int32_t w, int32_t h, uint8_t*) {
    EffectFilterRed(f, w, h, 100, 200);
  });
  RegisterEffect("EffectFilterGreen", [](uint8_t* f, int32_t w, int32_t h, uint8_t*) {
    EffectFilterGreen(f, w, h, 100, 200);
  });
  RegisterEffect("EffectFilterBlue", [](uint8_t* f, int32_t w, int32_t h, uint8_t*) {
    EffectFilterBlue(f, w, h, 100, 200);
  });
  RegisterEffect("EffectGreyscale", [](uint8_t* f, int32_t w, int32_t h, uint8_t* s) {
    benchmark::DoNotOptimize(EffectGreyscale(f, w, h, s));
  });
  RegisterEffect("EffectInvert", [](uint8_t* f, int32_t w, int32_t h, uint8_t* s) {
    benchmark::DoNotOptimize(EffectInvert(f, w, h, s));
  });
  RegisterEffect("EffectLightness",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectLightness(f, w, h, 16); });
  RegisterEffect("EffectDarkness",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectDarkness(f, w, h, 16); });
  RegisterEffect("EffectContrast",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectContrast(f, w, h, 20); });
  RegisterEffect("EffectSaturation", [](uint8_t* f, int32_t w, int32_t h, uint8_t*) {
    EffectSaturation(f, w, h, 300);
  });
  RegisterEffect("EffectPosterize",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectPosterize(f, w, h, 64); });
  RegisterEffect("EffectSolorize",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectSolorize(f, w, h, 128); });
  RegisterOpenCv();
}

}  // namespace framekit::bench

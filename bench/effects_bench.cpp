// The effects through their public names at the class Init chose, and OpenCV on the same frame
// as their peers. Effects run in place on a random frame; their cost does not depend on the
// pixel values, so the frame is not refreshed between runs.
#include <functional>
#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
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
// The blur's scratch size: what its passes need, 3 * max(width, height) bytes (a larger scratch
// adds its clearing to every pass).
int32_t ScratchBytes(int32_t w, int32_t h) { return 3 * (w > h ? w : h); }

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

// A peer on a CV_8UC3 view of the frame (destination separate: OpenCV's best case).
void RegisterPeer(const std::string& name,
                  std::function<void(const cv::Mat& src, cv::Mat& dst)> run) {
  for (const FrameSize fs : kExportSizes) {
    const std::string bench_name = Join("peer/", name, "/", SizeName(fs));
    benchmark::RegisterBenchmark(bench_name.c_str(), [=](benchmark::State& state) {
      const Buffer frame(FrameBytes(fs)), out(FrameBytes(fs));
      const auto step = static_cast<size_t>(Stride4(fs.width * 3));
      const cv::Mat src(fs.height, fs.width, CV_8UC3, frame.get(), step);
      cv::Mat dst(fs.height, fs.width, CV_8UC3, out.get(), step);
      for (auto _ : state) {
        run(src, dst);
        benchmark::ClobberMemory();
      }
      SetFrameCounters(state, fs, 3);
    });
  }
}

// Single-threaded, like the effects: convertScaleAbs for the tone effects (alpha * v + beta,
// rounded and saturated), box filters of 13 and 5 for the blurs, the sharpen kernel for the
// sharpen (2 at the centre, -1/8 around).
void RegisterOpenCv() {
  cv::setNumThreads(1);
  RegisterPeer("cv_convertScaleAbs",
               [](const cv::Mat& src, cv::Mat& dst) { cv::convertScaleAbs(src, dst, 1.2, -20.0); });
  RegisterPeer("cv_blur13",
               [](const cv::Mat& src, cv::Mat& dst) { cv::blur(src, dst, cv::Size(13, 13)); });
  RegisterPeer("cv_blur5",
               [](const cv::Mat& src, cv::Mat& dst) { cv::blur(src, dst, cv::Size(5, 5)); });
  RegisterPeer("cv_filter2D", [](const cv::Mat& src, cv::Mat& dst) {
    static const cv::Mat kernel = (cv::Mat_<float>(3, 3) << -0.125f, -0.125f, -0.125f, -0.125f,
                                   2.0f, -0.125f, -0.125f, -0.125f, -0.125f);
    cv::filter2D(src, dst, -1, kernel);
  });
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
  // The fade applies the general darkness pass whatever the width: its yardstick is that pass
  // (EffectDarkness on a width that is not a multiple of 4, two pixels narrower).
  RegisterEffect("EffectDarknessGeneral", [](uint8_t* f, int32_t w, int32_t h, uint8_t*) {
    EffectDarkness(f, w - 2, h, 64);
  });
  RegisterEffect("EffectFadeInOut", [](uint8_t* f, int32_t w, int32_t h, uint8_t*) {
    EffectFadeInOut(f, w - 2, h, 0, 4, 1, 0);  // amount trunc(0.25 * 255) = 63
  });
  RegisterEffect("EffectShakeDown",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectShakeDown(f, w, h, 12); });
  RegisterEffect("EffectMirrorDown",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectMirrorDown(f, w, h); });
  RegisterEffect("EffectMirrorRight",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectMirrorRight(f, w, h); });
  RegisterEffect("EffectContrast",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectContrast(f, w, h, 20); });
  RegisterEffect("EffectSaturation", [](uint8_t* f, int32_t w, int32_t h, uint8_t*) {
    EffectSaturation(f, w, h, 300);
  });
  RegisterEffect("EffectPosterize",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectPosterize(f, w, h, 64); });
  RegisterEffect("EffectSolorize",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectSolorize(f, w, h, 128); });
  RegisterEffect("EffectColorNoise",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectColorNoise(f, w, h, 64); });
  RegisterEffect("EffectMonoNoise",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectMonoNoise(f, w, h, 64); });
  RegisterEffect("EffectMosaic",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectMosaic(f, w, h, 16); });
  RegisterEffect("EffectMosaic4",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectMosaic(f, w, h, 4); });
  RegisterEffect("EffectMarble", [](uint8_t* f, int32_t w, int32_t h, uint8_t*) {
    EffectMarble(f, w, h, 6.0, 40);
  });
  RegisterEffect("EffectSpray",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t*) { EffectSpray(f, w, h, 4); });
  RegisterEffect("EffectBlur", [](uint8_t* f, int32_t w, int32_t h, uint8_t* s) {
    EffectBlur(f, w, h, s, ScratchBytes(w, h));
  });
  RegisterEffect("EffectBlurEx5", [](uint8_t* f, int32_t w, int32_t h, uint8_t* s) {
    EffectBlurEx(f, w, h, 5, 1, 1, s, ScratchBytes(w, h));
  });
  RegisterEffect("EffectSharpen",
                 [](uint8_t* f, int32_t w, int32_t h, uint8_t* s) { EffectSharpen(f, w, h, s); });
  RegisterOpenCv();
}

}  // namespace framekit::bench

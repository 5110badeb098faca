// Overlay, keying and motion detection on 1920x1080 frames beside their yardsticks:
//   alpha_RGB32onRGB24  Draw_RGB32OnRGB24 (a whole-frame overlay, widths multiples of 4) against
//                       the same formula as a plain loop built with -O3 -march=native, libyuv
//                       (RGB24ToARGB, ARGBBlend, ARGBToRGB24: it blends onto 4-byte frames only;
//                       alpha_RGB32onRGB32_only times its blend alone) and OpenCV's blendLinear
//                       (float weights).
//   transp_RGB24_t<t>   Draw_RGB24OnRGB24_Transp against libyuv's InterpolatePlane over the same
//                       bytes with the same fraction (t 100, 77, 201 and 128, where libyuv
//                       averages).
//   compare, colorkey   MotionDetectionCompareImages (luminance) and ColorKeyRGB24 against
//                       memcpy of the RGB24 frame.
//   chromakey           ChromaKey on a frame whose left half is keyed green against the scalar
//                       reference body.
// Names compose/<what>/1920x1080/<implementation>; items are pixels (bench/peer_ratio.py run.json
// compose).
#include <libyuv.h>

#include <cstring>
#include <functional>
#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>
#include <vector>

#include "bench_frames.h"
#include "framekit/framekit.h"
#include "primitives/keying/keying.h"

namespace framekit::bench {

void PlainAlphaBlend(const uint8_t* src, uint8_t* dst, int64_t pixels);

namespace {

constexpr FrameSize kFrame{1920, 1080};
constexpr int64_t kPixels = int64_t{kFrame.width} * kFrame.height;

struct Frames {
  Buffer rgb32{static_cast<size_t>(4 * kPixels)}, rgb32b{static_cast<size_t>(4 * kPixels) + 64};
  Buffer rgb24{static_cast<size_t>(3 * kPixels)}, rgb24b{static_cast<size_t>(3 * kPixels) + 64};
  Buffer out{static_cast<size_t>(4 * kPixels)};
};

using Call = std::function<void(Frames&)>;

void Register(const char* what, const char* impl, Call call, Call prepare = nullptr) {
  const std::string name = Join("compose/", what, "/", SizeName(kFrame), "/", impl);
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    cv::setNumThreads(1);
    auto f = std::make_shared<Frames>();
    if (prepare) prepare(*f);
    for (auto _ : state) {
      call(*f);
      benchmark::ClobberMemory();
    }
    SetCounters(state, kPixels * 3, kPixels);
  });
}

// The left half of every row a green screen (keyed on green), the rest as it was.
void GreenScreen(Frames& f) {
  for (int64_t y = 0; y < kFrame.height; ++y) {
    uint8_t* row = f.rgb24.get() + y * 3 * kFrame.width;
    for (int64_t x = 0; x < kFrame.width / 2; ++x) {
      row[3 * x] = static_cast<uint8_t>(row[3 * x] % 60);
      row[3 * x + 1] = static_cast<uint8_t>(150 + row[3 * x + 1] % 100);
      row[3 * x + 2] = static_cast<uint8_t>(row[3 * x + 2] % 60);
    }
  }
}

std::vector<double> Map() {
  std::vector<double> map(513, 0.0);
  ChromaKeyLoadAlphaMap(map.data(), 60, 180);
  return map;
}

}  // namespace

void RegisterComposeBenchmarks() {
  const int32_t w = kFrame.width, h = kFrame.height;
  Register("alpha_RGB32onRGB24", "framekit",
           [=](Frames& f) { Draw_RGB32OnRGB24(f.rgb32.get(), w, h, f.rgb24.get(), w, h, 0, 0); });
  Register("alpha_RGB32onRGB24", "plain_native",
           [](Frames& f) { PlainAlphaBlend(f.rgb32.get(), f.rgb24.get(), kPixels); });
  // libyuv blends onto 4-byte frames only: on these frames that is the destination widened,
  // blended and narrowed again. Its blend alone onto a 4-byte frame is listed beside, for scale.
  Register("alpha_RGB32onRGB24", "libyuv", [=](Frames& f) {
    libyuv::RGB24ToARGB(f.rgb24.get(), 3 * w, f.out.get(), 4 * w, w, h);
    libyuv::ARGBBlend(f.rgb32.get(), 4 * w, f.out.get(), 4 * w, f.out.get(), 4 * w, w, h);
    libyuv::ARGBToRGB24(f.out.get(), 4 * w, f.rgb24.get(), 3 * w, w, h);
  });
  Register("alpha_RGB32onRGB32_only", "libyuv_ARGBBlend", [=](Frames& f) {
    libyuv::ARGBBlend(f.rgb32.get(), 4 * w, f.rgb32b.get(), 4 * w, f.rgb32b.get(), 4 * w, w, h);
  });
  Register("alpha_RGB32onRGB24", "opencv", [=](Frames& f) {
    // Weights as an OpenCV user keeps them: the overlay's alpha / 255 and its complement.
    static const cv::Mat weights = [] {
      cv::Mat m(kFrame.height, kFrame.width, CV_32F);
      cv::randu(m, 0.0, 1.0);
      return m;
    }();
    static const cv::Mat rest = 1.0 - weights;
    const cv::Mat over(h, w, CV_8UC3, f.rgb24b.get()), back(h, w, CV_8UC3, f.rgb24.get());
    cv::Mat result(h, w, CV_8UC3, f.rgb24.get());
    cv::blendLinear(over, back, weights, rest, result);
  });

  for (const int t : {100, 77, 201, 128}) {
    const std::string what = Join("transp_RGB24_t", std::to_string(t));
    Register(what.c_str(), "framekit", [=](Frames& f) {
      Draw_RGB24OnRGB24_Transp(f.rgb24b.get(), w, h, f.rgb24.get(), w, h, 0, 0,
                               static_cast<uint8_t>(t));
    });
    Register(what.c_str(), "libyuv", [=](Frames& f) {
      libyuv::InterpolatePlane(f.rgb24.get(), 3 * w, f.rgb24b.get(), 3 * w, f.rgb24.get(), 3 * w,
                               3 * w, h, t);
    });
  }

  Register("compare", "framekit", [=](Frames& f) {
    benchmark::DoNotOptimize(MotionDetectionCompareImages(f.rgb24.get(), f.rgb24b.get(),
                                                          f.out.get(), 1, 0, 0, 0, w * h));
  });
  Register("colorkey", "framekit", [=](Frames& f) {
    ColorKeyRGB24(f.rgb24.get(), 3 * w, f.rgb24b.get(), 3 * w, f.out.get(), 3 * w, w, h);
  });
  for (const char* what : {"compare", "colorkey"}) {
    Register(what, "memcpy", [](Frames& f) {
      std::memcpy(f.out.get(), f.rgb24.get(), static_cast<size_t>(3 * kPixels));
    });
  }

  // ChromaKey keys the frame in place: each run starts from the same green screen.
  Register(
      "chromakey", "framekit",
      [=](Frames& f) {
        static const std::vector<double> map = Map();
        std::memcpy(f.out.get(), f.rgb24.get(), static_cast<size_t>(3 * kPixels));
        ChromaKey(f.out.get(), w, h, f.rgb24b.get(), map.data(), 0, 0, 1);
      },
      GreenScreen);
  Register(
      "chromakey", "scalar",
      [=](Frames& f) {
        static const std::vector<double> map = Map();
        std::memcpy(f.out.get(), f.rgb24.get(), static_cast<size_t>(3 * kPixels));
        prim::ref::ChromaKey_8u_C3IR(f.out.get(), 3 * w, f.rgb24b.get(), 3 * w, {w, h}, map.data(),
                                     1);
      },
      GreenScreen);
}

}  // namespace framekit::bench

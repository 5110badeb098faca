// Rotation beside its peers on a 1920x1080 frame, RGB24 and RGB32: RotateIn / RotateIn32 by 30
// degrees against OpenCV's cv::warpAffine (bilinear, black border, one thread), and the
// stretched quarter turn against cv::rotate + cv::resize (bilinear) and libyuv's ARGBRotate +
// ARGBScale. Names rotate/<what>_<format>/1920x1080/<implementation>; items are pixels
// (bench/peer_ratio.py run.json rotate).
#include <libyuv.h>

#include <functional>
#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

#include "bench_frames.h"
#include "framekit/framekit.h"
#include "primitives/core/memory.h"
#include "primitives/core/strides.h"
#include "primitives/resize/resize.h"

namespace framekit::bench {
namespace {

constexpr FrameSize kFrame{1920, 1080};

struct Frames {
  explicit Frames(int bytes_per_pixel)
      : bpp(bytes_per_pixel),
        stride(BitmapStride(kFrame.width, 8 * bytes_per_pixel)),
        turned_stride(BitmapStride(kFrame.height, 8 * bytes_per_pixel)),
        frame(static_cast<size_t>(stride) * kFrame.height),
        temp(static_cast<size_t>(stride > turned_stride ? stride : turned_stride) * kFrame.width),
        out(static_cast<size_t>(stride) * kFrame.height) {}
  int bpp;
  int32_t stride, turned_stride;
  Buffer frame, temp, out;
  int Type() const { return bpp == 3 ? CV_8UC3 : CV_8UC4; }
};

using Call = std::function<void(Frames&)>;

void Register(const char* what, int bpp, const char* impl, Call call) {
  const std::string name =
      Join("rotate/", what, bpp == 3 ? "_RGB24/" : "_RGB32/", SizeName(kFrame), "/", impl);
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    cv::setNumThreads(1);
    auto f = std::make_shared<Frames>(bpp);
    for (auto _ : state) {
      call(*f);
      benchmark::ClobberMemory();
    }
    SetCounters(state, int64_t{kFrame.width} * kFrame.height * bpp,
                int64_t{kFrame.width} * kFrame.height);
  });
}

void Ours(Frames& f, double angle, int32_t stretch, uint8_t** buffer, int32_t* size) {
  (f.bpp == 3 ? RotateIn : RotateIn32)(f.frame.get(), kFrame.width, kFrame.height, f.temp.get(),
                                       angle, stretch, *buffer, size);
}

}  // namespace

void RegisterRotateBenchmarks() {
  for (const int bpp : {3, 4}) {
    Register("turn30", bpp, "framekit", [](Frames& f) {
      uint8_t* none = nullptr;
      int32_t size = 0;
      Ours(f, 30, 0, &none, &size);
    });
    Register("turn30", bpp, "opencv", [](Frames& f) {
      const cv::Mat src(kFrame.height, kFrame.width, f.Type(), f.frame.get(), f.stride);
      cv::Mat dst(kFrame.height, kFrame.width, f.Type(), f.out.get(), f.stride);
      const cv::Mat m =
          cv::getRotationMatrix2D({kFrame.width * 0.5f - 0.5f, kFrame.height * 0.5f - 0.5f}, 30, 1);
      cv::warpAffine(src, dst, m, dst.size(), cv::INTER_LINEAR, cv::BORDER_CONSTANT);
    });
    // The stretched quarter turn keeps its work buffer between calls, as a host would.
    auto buffer = std::make_shared<uint8_t*>(nullptr);
    auto size = std::make_shared<int32_t>(0);
    Register("quarter_stretched", bpp, "framekit", [buffer, size](Frames& f) {
      if (*size == 0) {
        const prim::Rect turned{0, 0, kFrame.height, kFrame.width};
        const prim::Rect whole{0, 0, kFrame.width, kFrame.height};
        prim::ippiResizeGetBufSize(&turned, &whole, f.bpp, prim::kResizeLinear, size.get());
        *buffer = prim::ippsMalloc_8u(*size);  // kept for the run (the process ends it)
      }
      Ours(f, 90, 1, buffer.get(), size.get());
    });
    Register("quarter_stretched", bpp, "opencv", [](Frames& f) {
      const cv::Mat src(kFrame.height, kFrame.width, f.Type(), f.frame.get(), f.stride);
      cv::Mat turned(kFrame.width, kFrame.height, f.Type(), f.temp.get(), f.turned_stride);
      cv::Mat dst(kFrame.height, kFrame.width, f.Type(), f.out.get(), f.stride);
      cv::rotate(src, turned, cv::ROTATE_90_COUNTERCLOCKWISE);
      cv::resize(turned, dst, dst.size(), 0, 0, cv::INTER_LINEAR);
    });
    if (bpp == 4) {
      Register("quarter_stretched", bpp, "libyuv", [](Frames& f) {
        libyuv::ARGBRotate(f.frame.get(), f.stride, f.temp.get(), f.turned_stride, kFrame.width,
                           kFrame.height, libyuv::kRotate270);
        libyuv::ARGBScale(f.temp.get(), f.turned_stride, kFrame.height, kFrame.width, f.out.get(),
                          f.stride, kFrame.width, kFrame.height, libyuv::kFilterBilinear);
      });
    }
  }
}

}  // namespace framekit::bench

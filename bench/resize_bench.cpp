// The resize primitive at the class Init chose against OpenCV's cv::resize (one thread), libyuv's
// ARGBScale / RGBScale and swscale doing the same kernel on the same frames: 1920x1080 to
// 1280x720 and back, RGB24 and RGB32. framekit's work buffer is allocated once, as a caller
// that keeps it would; swscale keeps its cached context. Names are
// resize/<kernel>_<format>/<from>to<to>/<implementation>, items are destination pixels
// (bench/peer_ratio.py run.json resize compares them).
#include <libyuv.h>
#include <libyuv/scale_rgb.h>

#include <functional>
#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>
#include <vector>

extern "C" {
#include <libswscale/swscale.h>
}

#include "bench_frames.h"
#include "primitives/resize/resize.h"

namespace framekit::bench {
namespace {

struct Job {
  FrameSize from, to;
  int channels;
  int32_t SrcStride() const { return from.width * channels; }
  int32_t DstStride() const { return to.width * channels; }
};

struct Frames {
  explicit Frames(const Job& j)
      : src(static_cast<size_t>(j.SrcStride()) * j.from.height),
        dst(static_cast<size_t>(j.DstStride()) * j.to.height) {}
  Buffer src, dst;
};

using Call = std::function<void(const Job&, Frames&)>;

void Register(const std::string& kernel, const Job& j, const char* impl, Call call) {
  const std::string name = Join("resize/", kernel, j.channels == 3 ? "_RGB24/" : "_RGB32/",
                                SizeName(j.from), "to", SizeName(j.to), "/", impl);
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    cv::setNumThreads(1);
    auto frames = std::make_shared<Frames>(j);
    for (auto _ : state) {
      call(j, *frames);
      benchmark::ClobberMemory();
    }
    const int64_t pixels = int64_t{j.to.width} * j.to.height;
    SetCounters(state, pixels * j.channels, pixels);
  });
}

Call Framekit(int32_t interpolation) {
  auto buffer = std::make_shared<std::vector<uint8_t>>();
  return [=](const Job& j, Frames& f) {
    const prim::Rect src_roi{0, 0, j.from.width, j.from.height};
    const prim::Rect dst_roi{0, 0, j.to.width, j.to.height};
    if (buffer->empty()) {
      int32_t size = 0;
      prim::ippiResizeGetBufSize(&src_roi, &dst_roi, j.channels, interpolation, &size);
      buffer->resize(static_cast<size_t>(size));
    }
    const double xf = static_cast<double>(j.to.width) / j.from.width;
    const double yf = static_cast<double>(j.to.height) / j.from.height;
    const prim::Size size{j.from.width, j.from.height};
    const auto fn =
        j.channels == 3 ? prim::ippiResizeSqrPixel_8u_C3R : prim::ippiResizeSqrPixel_8u_C4R;
    fn(f.src.get(), size, j.SrcStride(), &src_roi, f.dst.get(), j.DstStride(), &dst_roi, xf, yf, 0,
       0, interpolation, buffer->data());
  };
}

Call OpenCv(int interpolation) {
  return [=](const Job& j, Frames& f) {
    const int type = j.channels == 3 ? CV_8UC3 : CV_8UC4;
    const cv::Mat src(j.from.height, j.from.width, type, f.src.get(), j.SrcStride());
    cv::Mat dst(j.to.height, j.to.width, type, f.dst.get(), j.DstStride());
    cv::resize(src, dst, dst.size(), 0, 0, interpolation);
  };
}

Call LibYuv(libyuv::FilterMode mode) {
  return [=](const Job& j, Frames& f) {
    if (j.channels == 4) {
      libyuv::ARGBScale(f.src.get(), j.SrcStride(), j.from.width, j.from.height, f.dst.get(),
                        j.DstStride(), j.to.width, j.to.height, mode);
    } else {
      libyuv::RGBScale(f.src.get(), j.SrcStride(), j.from.width, j.from.height, f.dst.get(),
                       j.DstStride(), j.to.width, j.to.height, mode);
    }
  };
}

Call Swscale(int flags) {
  auto ctx = std::make_shared<SwsContext*>(nullptr);
  return [=](const Job& j, Frames& f) {
    const AVPixelFormat format = j.channels == 3 ? AV_PIX_FMT_BGR24 : AV_PIX_FMT_BGRA;
    *ctx = sws_getCachedContext(*ctx, j.from.width, j.from.height, format, j.to.width, j.to.height,
                                format, flags, nullptr, nullptr, nullptr);
    const uint8_t* s[4] = {f.src.get()};
    uint8_t* d[4] = {f.dst.get()};
    const int ss[4] = {j.SrcStride()}, ds[4] = {j.DstStride()};
    sws_scale(*ctx, s, ss, 0, j.from.height, d, ds);
  };
}

}  // namespace

void RegisterResizeBenchmarks() {
  constexpr FrameSize kLarge{1920, 1080}, kSmall{1280, 720};
  for (const int channels : {3, 4}) {
    for (const bool down : {true, false}) {
      const Job j{down ? kLarge : kSmall, down ? kSmall : kLarge, channels};
      Register("nearest", j, "framekit", Framekit(prim::kResizeNearest));
      Register("nearest", j, "opencv", OpenCv(cv::INTER_NEAREST));
      Register("nearest", j, "libyuv", LibYuv(libyuv::kFilterNone));
      Register("linear", j, "framekit", Framekit(prim::kResizeLinear));
      Register("linear", j, "opencv", OpenCv(cv::INTER_LINEAR));
      Register("linear", j, "libyuv", LibYuv(libyuv::kFilterBilinear));
      for (const int32_t code : {4, 5, 6, 7}) {
        const std::string cubic = Join("cubic", std::to_string(code));
        Register(cubic, j, "framekit", Framekit(code));
        Register(cubic, j, "opencv", OpenCv(cv::INTER_CUBIC));
      }
      Register("lanczos", j, "framekit", Framekit(prim::kResizeLanczos));
      Register("lanczos", j, "swscale", Swscale(SWS_LANCZOS));
      if (down) {
        Register("super", j, "framekit", Framekit(prim::kResizeSuper));
        Register("super", j, "opencv", OpenCv(cv::INTER_AREA));
        Register("super", j, "libyuv", LibYuv(libyuv::kFilterBox));
      }
    }
  }
}

}  // namespace framekit::bench

// The colour conversions against libyuv, OpenCV and swscale doing the same conversion, the row
// reversal included where ours reverses (the peers read or write bottom-up through a negative
// height or stride, or flip in a second pass where they cannot). Names:
// convert/<export>/<size>/<framekit|libyuv|opencv|swscale>; bench/peer_ratio.py compares them.
// The peers run single-threaded, like the library.
#include <benchmark/benchmark.h>
#include <libyuv.h>

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
#include "framekit/framekit.h"

namespace framekit::bench {
namespace {

// Bytes of a frame in each format, at the strides the exports use.
struct Frames {
  explicit Frames(FrameSize fs)
      : w(fs.width),
        h(fs.height),
        rgb24_stride(Stride4(3 * w)),
        rgb24(static_cast<size_t>(rgb24_stride) * h),
        rgb24_out(static_cast<size_t>(rgb24_stride) * h),
        rgb32(static_cast<size_t>(4 * w) * h),
        rgb32_out(static_cast<size_t>(4 * w) * h),
        yuy2(static_cast<size_t>(2 * w) * h),
        yv12(static_cast<size_t>(w) * h * 3 / 2),
        scratch(static_cast<size_t>(4 * w) * h) {}
  int32_t w, h, rgb24_stride;
  Buffer rgb24, rgb24_out, rgb32, rgb32_out, yuy2, yv12, scratch;
  uint8_t* Y() const { return yv12.get(); }
  uint8_t* V() const { return yv12.get() + w * h; }  // YV12: V first
  uint8_t* U() const { return yv12.get() + w * h + w * h / 4; }
  uint8_t* LastRow(const Buffer& b, int32_t stride) const {
    return b.get() + static_cast<size_t>(stride) * (h - 1);
  }
};

using Call = std::function<void(Frames&)>;

void Register(const char* conversion, const char* impl, Call call) {
  for (const FrameSize fs : kExportSizes) {
    const std::string name = Join("convert/", conversion, "/", SizeName(fs), "/", impl);
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
      cv::setNumThreads(1);
      auto frames = std::make_shared<Frames>(fs);
      for (auto _ : state) {
        call(*frames);
        benchmark::ClobberMemory();
      }
      SetCounters(state, int64_t{fs.width} * fs.height, int64_t{fs.width} * fs.height);
    });
  }
}

// One swscale conversion between two formats of the same size, without scaling.
void Sws(Frames& f, AVPixelFormat from, AVPixelFormat to, const uint8_t* const src[],
         const int src_stride[], uint8_t* const dst[], const int dst_stride[]) {
  static thread_local SwsContext* ctx = nullptr;
  ctx = sws_getCachedContext(ctx, f.w, f.h, from, f.w, f.h, to, SWS_POINT, nullptr, nullptr,
                             nullptr);
  sws_scale(ctx, src, src_stride, 0, f.h, dst, dst_stride);
}

// swscale with the packed side bottom-up: its first row pointer at the last row, stride negative.
void SwsPacked(Frames& f, AVPixelFormat from, uint8_t* src, int src_stride, AVPixelFormat to,
               uint8_t* dst, int dst_stride) {
  const uint8_t* s[4] = {src};
  uint8_t* d[4] = {dst};
  const int ss[4] = {src_stride}, ds[4] = {dst_stride};
  Sws(f, from, to, s, ss, d, ds);
}

cv::Mat Mat(const Frames& f, const Buffer& b, int type, int32_t stride) {
  return cv::Mat(f.h, f.w, type, b.get(), static_cast<size_t>(stride));
}

void RegisterYuy2() {
  Register("YUY2ToRGB24", "framekit",
           [](Frames& f) { YUY2ToRGB24(f.yuy2.get(), f.rgb24_out.get(), f.w, f.h); });
  Register("YUY2ToRGB24", "libyuv", [](Frames& f) {
    libyuv::YUY2ToARGB(f.yuy2.get(), 2 * f.w, f.scratch.get(), 4 * f.w, f.w, f.h);
    libyuv::ARGBToRGB24(f.scratch.get(), 4 * f.w, f.rgb24_out.get(), f.rgb24_stride, f.w, -f.h);
  });
  Register("YUY2ToRGB24", "opencv", [](Frames& f) {
    cv::Mat out = Mat(f, f.rgb24_out, CV_8UC3, f.rgb24_stride);
    cv::Mat tmp = Mat(f, f.scratch, CV_8UC3, f.rgb24_stride);
    cv::cvtColor(Mat(f, f.yuy2, CV_8UC2, 2 * f.w), tmp, cv::COLOR_YUV2BGR_YUY2);
    cv::flip(tmp, out, 0);
  });
  Register("YUY2ToRGB24", "swscale", [](Frames& f) {
    SwsPacked(f, AV_PIX_FMT_YUYV422, f.yuy2.get(), 2 * f.w, AV_PIX_FMT_BGR24,
              f.LastRow(f.rgb24_out, f.rgb24_stride), -f.rgb24_stride);
  });

  Register("RGB24ToYUY2", "framekit",
           [](Frames& f) { RGB24ToYUY2(f.rgb24.get(), f.yuy2.get(), f.w, f.h); });
  Register("RGB24ToYUY2", "libyuv", [](Frames& f) {
    libyuv::RGB24ToARGB(f.rgb24.get(), f.rgb24_stride, f.scratch.get(), 4 * f.w, f.w, -f.h);
    libyuv::ARGBToYUY2(f.scratch.get(), 4 * f.w, f.yuy2.get(), 2 * f.w, f.w, f.h);
  });
  // OpenCV has no conversion into YUY2.
  Register("RGB24ToYUY2", "swscale", [](Frames& f) {
    SwsPacked(f, AV_PIX_FMT_BGR24, f.LastRow(f.rgb24, f.rgb24_stride), -f.rgb24_stride,
              AV_PIX_FMT_YUYV422, f.yuy2.get(), 2 * f.w);
  });
}

void RegisterYv12() {
  Register("YV12ToRGB24", "framekit",
           [](Frames& f) { YV12ToRGB24(f.yv12.get(), f.rgb24_out.get(), f.w, f.h); });
  Register("YV12ToRGB24", "libyuv", [](Frames& f) {
    libyuv::I420ToRGB24(f.Y(), f.w, f.U(), f.w / 2, f.V(), f.w / 2, f.rgb24_out.get(),
                        f.rgb24_stride, f.w, -f.h);
  });
  Register("YV12ToRGB24", "opencv", [](Frames& f) {
    cv::Mat out = Mat(f, f.rgb24_out, CV_8UC3, f.rgb24_stride);
    cv::Mat tmp = Mat(f, f.scratch, CV_8UC3, f.rgb24_stride);
    cv::cvtColor(cv::Mat(f.h * 3 / 2, f.w, CV_8UC1, f.yv12.get()), tmp, cv::COLOR_YUV2BGR_YV12);
    cv::flip(tmp, out, 0);
  });
  Register("YV12ToRGB24", "swscale", [](Frames& f) {
    const uint8_t* s[4] = {f.Y(), f.U(), f.V()};
    const int ss[4] = {f.w, f.w / 2, f.w / 2};
    uint8_t* d[4] = {f.LastRow(f.rgb24_out, f.rgb24_stride)};
    const int ds[4] = {-f.rgb24_stride};
    Sws(f, AV_PIX_FMT_YUV420P, AV_PIX_FMT_BGR24, s, ss, d, ds);
  });

  Register("RGB24ToYV12", "framekit",
           [](Frames& f) { RGB24ToYV12(f.rgb24.get(), f.yv12.get(), f.w, f.h); });
  Register("RGB24ToYV12", "libyuv", [](Frames& f) {
    libyuv::RGB24ToI420(f.rgb24.get(), f.rgb24_stride, f.Y(), f.w, f.U(), f.w / 2, f.V(),
                        f.w / 2, f.w, -f.h);
  });
  Register("RGB24ToYV12", "opencv", [](Frames& f) {
    cv::Mat tmp = Mat(f, f.scratch, CV_8UC3, f.rgb24_stride);
    cv::flip(Mat(f, f.rgb24, CV_8UC3, f.rgb24_stride), tmp, 0);
    cv::Mat out(f.h * 3 / 2, f.w, CV_8UC1, f.yv12.get());
    cv::cvtColor(tmp, out, cv::COLOR_BGR2YUV_YV12);
  });
  Register("RGB24ToYV12", "swscale", [](Frames& f) {
    const uint8_t* s[4] = {f.LastRow(f.rgb24, f.rgb24_stride)};
    const int ss[4] = {-f.rgb24_stride};
    uint8_t* d[4] = {f.Y(), f.U(), f.V()};
    const int ds[4] = {f.w, f.w / 2, f.w / 2};
    Sws(f, AV_PIX_FMT_BGR24, AV_PIX_FMT_YUV420P, s, ss, d, ds);
  });
}

// The RGB-to-RGB conversions keep the row order: the peers convert plainly.
void RegisterRgb(const char* name, Call ours, Call yuv, int cv_code, bool from32, bool to32,
                 AVPixelFormat sws_from, AVPixelFormat sws_to) {
  Register(name, "framekit", std::move(ours));
  Register(name, "libyuv", std::move(yuv));
  Register(name, "opencv", [=](Frames& f) {
    const cv::Mat in = from32 ? Mat(f, f.rgb32, CV_8UC4, 4 * f.w)
                              : Mat(f, f.rgb24, CV_8UC3, f.rgb24_stride);
    cv::Mat out = to32 ? Mat(f, f.rgb32_out, CV_8UC4, 4 * f.w)
                       : Mat(f, f.rgb24_out, CV_8UC3, f.rgb24_stride);
    cv::cvtColor(in, out, cv_code);
  });
  Register(name, "swscale", [=](Frames& f) {
    uint8_t* in = from32 ? f.rgb32.get() : f.rgb24.get();
    uint8_t* out = to32 ? f.rgb32_out.get() : f.rgb24_out.get();
    SwsPacked(f, sws_from, in, from32 ? 4 * f.w : f.rgb24_stride, sws_to, out,
              to32 ? 4 * f.w : f.rgb24_stride);
  });
}

void RegisterRgbs() {
  RegisterRgb(
      "RGB32ToRGB24",
      [](Frames& f) { RGB32ToRGB24(f.rgb32.get(), f.rgb24_out.get(), f.w, f.h); },
      [](Frames& f) {
        libyuv::ARGBToRGB24(f.rgb32.get(), 4 * f.w, f.rgb24_out.get(), f.rgb24_stride, f.w, f.h);
      },
      cv::COLOR_BGRA2BGR, true, false, AV_PIX_FMT_BGRA, AV_PIX_FMT_BGR24);
  RegisterRgb(
      "RGB24ToRGB32",
      [](Frames& f) { RGB24ToRGB32(f.rgb24.get(), f.rgb32_out.get(), f.w, f.h); },
      [](Frames& f) {
        libyuv::RGB24ToARGB(f.rgb24.get(), f.rgb24_stride, f.rgb32_out.get(), 4 * f.w, f.w, f.h);
      },
      cv::COLOR_BGR2BGRA, false, true, AV_PIX_FMT_BGR24, AV_PIX_FMT_BGRA);
  RegisterRgb(
      "RGB24ToRGBA",
      [](Frames& f) { RGB24ToRGBA(f.rgb24.get(), f.rgb32_out.get(), f.w, f.h, 1); },
      [](Frames& f) {
        libyuv::RGB24ToARGB(f.rgb24.get(), f.rgb24_stride, f.rgb32_out.get(), 4 * f.w, f.w, f.h);
      },
      cv::COLOR_BGR2BGRA, false, true, AV_PIX_FMT_BGR24, AV_PIX_FMT_BGRA);
  RegisterRgb(
      "RGB24ToBGR24",
      [](Frames& f) {
        RGB24ToBGR24(f.rgb24.get(), f.rgb24_out.get(), f.w, f.h, f.rgb24_stride);
      },
      [](Frames& f) {
        libyuv::RAWToRGB24(f.rgb24.get(), f.rgb24_stride, f.rgb24_out.get(), f.rgb24_stride, f.w,
                           f.h);
      },
      cv::COLOR_BGR2RGB, false, false, AV_PIX_FMT_BGR24, AV_PIX_FMT_RGB24);
}

}  // namespace

void RegisterConvertBenchmarks() {
  RegisterYuy2();
  RegisterYv12();
  RegisterRgbs();
}

}  // namespace framekit::bench

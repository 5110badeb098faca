// The flip, crop, cut and fill exports through their public names, at the class Init chose.
#include <functional>
#include <memory>
#include <string>

#include "bench_frames.h"
#include "framekit/framekit.h"

namespace framekit::bench {
namespace {

// The aligned stride (rows rounded up to 4 bytes) that every export here uses.
int32_t Aligned(int32_t width, int32_t bpp) { return Stride4(width * bpp); }

size_t FrameBytes(FrameSize fs, int32_t bpp) {
  return static_cast<size_t>(Aligned(fs.width, bpp)) * static_cast<size_t>(fs.height);
}

// One call of an export over buffers that the returned function owns.
using Setup = std::function<std::function<void()>(FrameSize)>;

// `bpp` and the region (width and height less `inset` on each side) give the bytes counted.
void RegisterExport(const char* name, int32_t bpp, int32_t inset, Setup setup) {
  for (const FrameSize fs : kExportSizes) {
    const std::string bench_name = Join("export/", name, "/", SizeName(fs));
    benchmark::RegisterBenchmark(bench_name.c_str(), [=](benchmark::State& state) {
      const std::function<void()> call = setup(fs);
      for (auto _ : state) {
        call();
        benchmark::ClobberMemory();
      }
      SetFrameCounters(state, fs, bpp, inset);
    });
  }
}

template <typename Fn>
void InPlace(const char* name, int32_t bpp, Fn fn) {
  RegisterExport(name, bpp, 0, [=](FrameSize fs) {
    auto frame = std::make_shared<Buffer>(FrameBytes(fs, bpp));
    return [=] { benchmark::DoNotOptimize(fn(frame->get(), fs.width, fs.height)); };
  });
}

template <typename Fn>
void TwoBuffer(const char* name, int32_t bpp, Fn fn) {
  RegisterExport(name, bpp, 0, [=](FrameSize fs) {
    auto src = std::make_shared<Buffer>(FrameBytes(fs, bpp));
    auto dst = std::make_shared<Buffer>(FrameBytes(fs, bpp));
    return [=] { benchmark::DoNotOptimize(fn(src->get(), dst->get(), fs.width, fs.height)); };
  });
}

// A crop of all but a 2-pixel border.
template <typename Fn>
void Crop(const char* name, int32_t bpp, Fn fn) {
  RegisterExport(name, bpp, 2, [=](FrameSize fs) {
    auto src = std::make_shared<Buffer>(FrameBytes(fs, bpp));
    auto dst = std::make_shared<Buffer>(FrameBytes(fs, bpp));
    const FrameKitRect rect{2, 2, fs.width - 2, fs.height - 2};
    return
        [=] { benchmark::DoNotOptimize(fn(src->get(), fs.width, fs.height, dst->get(), &rect)); };
  });
}

// Cuts 4 columns and 4 rows, which leaves as many bytes as the crops.
template <typename Fn>
void Cut(const char* name, int32_t bpp, Fn fn) {
  RegisterExport(name, bpp, 2, [=](FrameSize fs) {
    auto src = std::make_shared<Buffer>(FrameBytes(fs, bpp));
    auto dst = std::make_shared<Buffer>(FrameBytes(fs, bpp));
    return [=] { fn(src->get(), fs.width, fs.height, dst->get(), 4, 4); };
  });
}

}  // namespace

void RegisterExportBenchmarks() {
  for (const FrameSize fs : kExportSizes) {
    const int64_t pixels = int64_t{fs.width} * fs.height;
    RegisterMemcpy(MemcpyName(fs, 2), pixels * 2, pixels);
  }
  InPlace("FlipHorizontalRGB24", 3, FlipHorizontalRGB24);
  InPlace("FlipVerticalRGB24", 3, FlipVerticalRGB24);
  InPlace("FlipHorizontalRGB32", 4, FlipHorizontalRGB32);
  InPlace("FlipVerticalRGB32", 4, FlipVerticalRGB32);
  TwoBuffer("FlipHorizontalRGB32Ex", 4, FlipHorizontalRGB32Ex);
  TwoBuffer("FlipVerticalRGB32Ex", 4, FlipVerticalRGB32Ex);
  InPlace("FlipHorizontalYUY2", 2, FlipHorizontalYUY2);
  TwoBuffer("FlipHorizontalYUY2Ex", 2, FlipHorizontalYUY2Ex);
  Crop("Crop24", 3, Crop24);
  Crop("Crop32", 4, Crop32);
  Cut("ImageCutRGB24", 3, ImageCutRGB24);
  Cut("ImageCutRGB32", 4, ImageCutRGB32);
  RegisterExport("FillColor", 3, 0, [](FrameSize fs) {
    auto frame = std::make_shared<Buffer>(FrameBytes(fs, 3));
    const FrameKitRect rect{0, 0, fs.width, fs.height};
    return [=] {
      benchmark::DoNotOptimize(FillColor(frame->get(), fs.width, fs.height, &rect, 0x112233));
    };
  });
  RegisterExport("zqippiCopy_8u_C3R", 3, 0, [](FrameSize fs) {
    auto src = std::make_shared<Buffer>(FrameBytes(fs, 3));
    auto dst = std::make_shared<Buffer>(FrameBytes(fs, 3));
    const int32_t step = Aligned(fs.width, 3);
    return [=] {
      benchmark::DoNotOptimize(
          zqippiCopy_8u_C3R(src->get(), step, dst->get(), step, fs.width, fs.height));
    };
  });
}

}  // namespace framekit::bench

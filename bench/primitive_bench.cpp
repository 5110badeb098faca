// Each primitive table, entry by entry for the classes this machine runs. Classes that share a
// body are timed once and named by their range ("cls2-5").
#include <string>

#include "bench_frames.h"
#include "primitives/colour/colour.h"
#include "primitives/copy/copy.h"
#include "primitives/core/dispatch.h"
#include "primitives/mirror/mirror.h"
#include "primitives/set/set.h"

namespace framekit::bench {
namespace {

using prim::Size;

// Calls f(entry, "clsA" or "clsA-B") once per distinct body among the runnable classes.
template <typename Fn, typename F>
void ForEachBody(const prim::Table<Fn>& table, F f) {
  const int top = prim::DetectedClass();
  for (int c = 0; c <= top;) {
    int last = c;
    while (last + 1 <= top && table[last + 1] == table[c]) ++last;
    std::string label = Join("cls", std::to_string(c));
    if (last != c) label = Join(label, "-", std::to_string(last));
    f(table[c], label);
    c = last + 1;
  }
}

void RegisterMirrorIR(const char* name, const prim::Table<prim::MirrorIRFn>& table, int bpp) {
  for (int32_t axis = 0; axis <= 2; ++axis) {
    ForEachBody(table, [&](prim::MirrorIRFn fn, const std::string& cls) {
      for (const FrameSize fs : kPrimitiveSizes) {
        const std::string bench_name =
            Join("prim/", name, "/axis", std::to_string(axis), "/", cls, "/", SizeName(fs));
        benchmark::RegisterBenchmark(bench_name.c_str(), [=](benchmark::State& state) {
          const int32_t step = Stride4(fs.width * bpp);
          const Buffer frame(static_cast<size_t>(step) * static_cast<size_t>(fs.height));
          for (auto _ : state) {
            benchmark::DoNotOptimize(fn(frame.get(), step, {fs.width, fs.height}, axis));
            benchmark::ClobberMemory();
          }
          SetFrameCounters(state, fs, bpp);
        });
      }
    });
  }
}

// Two-buffer primitives sharing the copy signature plus the mirror axis.
template <typename Fn, typename Call>
void RegisterTwoBuffer(const std::string& name, const prim::Table<Fn>& table, int bpp, Call call) {
  ForEachBody(table, [&](Fn fn, const std::string& cls) {
    for (const FrameSize fs : kPrimitiveSizes) {
      const std::string bench_name = Join("prim/", name, "/", cls, "/", SizeName(fs));
      benchmark::RegisterBenchmark(bench_name.c_str(), [=](benchmark::State& state) {
        const int32_t step = Stride4(fs.width * bpp);
        const size_t bytes = static_cast<size_t>(step) * static_cast<size_t>(fs.height);
        const Buffer src(bytes);
        const Buffer dst(bytes);
        for (auto _ : state) {
          benchmark::DoNotOptimize(call(fn, src.get(), dst.get(), step, Size{fs.width, fs.height}));
          benchmark::ClobberMemory();
        }
        SetFrameCounters(state, fs, bpp);
      });
    }
  });
}

void RegisterMirrorR(const char* name, const prim::Table<prim::MirrorRFn>& table, int bpp) {
  for (int32_t axis = 0; axis <= 2; ++axis) {
    RegisterTwoBuffer(Join(name, "/axis", std::to_string(axis)), table, bpp,
                      [axis](prim::MirrorRFn fn, const uint8_t* s, uint8_t* d, int32_t step,
                             Size roi) { return fn(s, step, d, step, roi, axis); });
  }
}

void RegisterCopy(const char* name, const prim::Table<prim::CopyFn>& table, int bpp) {
  RegisterTwoBuffer(name, table, bpp,
                    [](prim::CopyFn fn, const uint8_t* s, uint8_t* d, int32_t step, Size roi) {
                      return fn(s, step, d, step, roi);
                    });
}

void RegisterSet() {
  ForEachBody(prim::ippiSet_8u_C3RTable, [&](prim::SetC3Fn fn, const std::string& cls) {
    for (const FrameSize fs : kPrimitiveSizes) {
      const std::string bench_name = Join("prim/set_C3R/", cls, "/", SizeName(fs));
      benchmark::RegisterBenchmark(bench_name.c_str(), [=](benchmark::State& state) {
        const int32_t step = Stride4(fs.width * 3);
        const Buffer frame(static_cast<size_t>(step) * static_cast<size_t>(fs.height));
        const uint8_t value[3] = {0x33, 0x22, 0x11};
        for (auto _ : state) {
          benchmark::DoNotOptimize(fn(value, frame.get(), step, {fs.width, fs.height}));
          benchmark::ClobberMemory();
        }
        SetFrameCounters(state, fs, 3);
      });
    }
  });
}

// The colour conversions on buffers of three bytes a pixel (room for every format).
void RegisterColour() {
  RegisterTwoBuffer("bgr_to_422", prim::ippiBGRToYCbCr422_8u_C3C2RTable, 3,
                    [](prim::PackedConvertFn fn, const uint8_t* s, uint8_t* d, int32_t step,
                       Size roi) { return fn(s, step, d, 2 * roi.width, roi); });
  RegisterTwoBuffer("422_to_bgr", prim::ippiYCbCr422ToBGR_8u_C2C3RTable, 3,
                    [](prim::PackedConvertFn fn, const uint8_t* s, uint8_t* d, int32_t step,
                       Size roi) { return fn(s, 2 * roi.width, d, step, roi); });
  RegisterTwoBuffer("bgr_to_420", prim::ippiBGRToYUV420_8u_C3P3RTable, 3,
                    [](prim::PackedToPlanarFn fn, const uint8_t* s, uint8_t* d, int32_t step,
                       Size roi) {
                      const int32_t luma = roi.width * roi.height;
                      uint8_t* const planes[3] = {d, d + luma, d + luma + luma / 4};
                      const int32_t steps[3] = {roi.width, roi.width / 2, roi.width / 2};
                      return fn(s, step, planes, steps, roi);
                    });
}

}  // namespace

void RegisterPrimitiveBenchmarks() {
  for (const int bpp : {1, 3, 4}) {
    for (const FrameSize fs : kPrimitiveSizes) {
      const int64_t pixels = int64_t{fs.width} * fs.height;
      RegisterMemcpy(MemcpyName(fs, bpp), pixels * bpp, pixels);
    }
  }
  RegisterMirrorIR("mirror_C1IR", prim::ippiMirror_8u_C1IRTable, 1);
  RegisterMirrorIR("mirror_C3IR", prim::ippiMirror_8u_C3IRTable, 3);
  RegisterMirrorIR("mirror_C4IR", prim::ippiMirror_8u_C4IRTable, 4);
  RegisterMirrorR("mirror_C1R", prim::ippiMirror_8u_C1RTable, 1);
  RegisterMirrorR("mirror_C4R", prim::ippiMirror_8u_C4RTable, 4);
  RegisterCopy("copy_C3R", prim::ippiCopy_8u_C3RTable, 3);
  RegisterCopy("copy_C4R", prim::ippiCopy_8u_C4RTable, 4);
  RegisterSet();
  RegisterColour();
}

}  // namespace framekit::bench

// Every primitive table, body by body for the classes this machine runs, from the variant
// harness's own subjects: the calls timed are the calls the harness tests (same drivers, same
// argument mapping), on frames laid out as a host passes them. Classes that share a body are
// timed once and named by their range ("cls2-5"). In-place work gets its input back every few
// calls, outside the timing, so no run times a frame that has converged to one colour.
#include <string>
#include <vector>

#include "bench_frames.h"
#include "primitives/core/dispatch.h"
#include "primitives/variants/harness.h"

namespace framekit::bench {
namespace {

constexpr int kRefreshEvery = 8;

bool InPlace(const test::PrimitiveShape& shape) {
  for (const test::ImageArg& image : shape.images) {
    if (image.access == test::Access::kReadWrite) return true;
  }
  return !shape.in_place.empty();
}

void RegisterSubject(const test::VariantSubject& s) {
  const int top = prim::DetectedClass();
  const std::vector<int> classes = test::DistinctClasses(s, top);
  const bool in_place = InPlace(s.shape);
  const int bpp = s.shape.images.front().bytes_per_pixel;
  for (const int32_t axis : test::BenchAxes(s.shape)) {
    const std::string axis_part =
        s.shape.axes.empty() ? "" : Join("axis", std::to_string(axis), "/");
    for (size_t k = 0; k < classes.size(); ++k) {
      const int cls = classes[k];
      const int last = k + 1 < classes.size() ? classes[k + 1] - 1 : top;
      std::string label = Join("cls", std::to_string(cls));
      if (last != cls) label = Join(label, "-", std::to_string(last));
      for (const FrameSize fs : kPrimitiveSizes) {
        const std::string name = Join("prim/", s.name, "/", axis_part, label, "/", SizeName(fs));
        benchmark::RegisterBenchmark(name.c_str(),
                                     [&s, cls, fs, axis, in_place, bpp](benchmark::State& state) {
                                       test::BenchCall call(s, {fs.width, fs.height}, axis);
                                       int calls = 0;
                                       for (auto _ : state) {
                                         if (in_place && ++calls % kRefreshEvery == 0) {
                                           state.PauseTiming();
                                           call.Refresh();
                                           state.ResumeTiming();
                                         }
                                         benchmark::DoNotOptimize(s.call_class(cls, call.args()));
                                         benchmark::ClobberMemory();
                                       }
                                       SetFrameCounters(state, fs, bpp);
                                     });
      }
    }
  }
}

}  // namespace

void RegisterPrimitiveBenchmarks() {
  for (const int bpp : {1, 2, 3, 4}) {
    for (const FrameSize fs : kPrimitiveSizes) {
      const int64_t pixels = int64_t{fs.width} * fs.height;
      RegisterMemcpy(MemcpyName(fs, bpp), pixels * bpp, pixels);
    }
  }
  for (const test::VariantSubject* s : test::VariantSubjects()) RegisterSubject(*s);
}

}  // namespace framekit::bench

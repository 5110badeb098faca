// framekit_bench: Init, then every benchmark registered for the classes this machine runs.
#include <benchmark/benchmark.h>

#include <cstdio>

#include "bench_frames.h"
#include "framekit/framekit.h"
#include "primitives/core/dispatch.h"

namespace framekit::bench {

void RegisterMemcpy(const std::string& name, int64_t bytes, int64_t pixels) {
  benchmark::RegisterBenchmark(name.c_str(), [bytes, pixels](benchmark::State& state) {
    const Buffer src(static_cast<size_t>(bytes));
    const Buffer dst(static_cast<size_t>(bytes));
    for (auto _ : state) {
      std::memcpy(dst.get(), src.get(), static_cast<size_t>(bytes));
      benchmark::ClobberMemory();
    }
    SetCounters(state, bytes, pixels);
  });
}

}  // namespace framekit::bench

int main(int argc, char** argv) {
  const int32_t init_status = Init();
  std::printf("Init: %d, processor class %d\n", init_status, framekit::prim::ClassIndex());
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  framekit::bench::RegisterPrimitiveBenchmarks();
  framekit::bench::RegisterExportBenchmarks();
  framekit::bench::RegisterEffectBenchmarks();
  framekit::bench::RegisterConvertBenchmarks();
  framekit::bench::RegisterResizeBenchmarks();
  framekit::bench::RegisterRotateBenchmarks();
  framekit::bench::RegisterComposeBenchmarks();
  framekit::bench::RegisterRestoreBenchmarks();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

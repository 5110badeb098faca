// Frame buffers and naming shared by the benchmarks.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <random>
#include <string>

namespace framekit::bench {

struct FrameSize {
  int32_t width;
  int32_t height;
};

// Primitives run at these sizes; 1918 leaves a tail on every vector width.
inline constexpr FrameSize kPrimitiveSizes[] = {
    {640, 480}, {1280, 720}, {1920, 1080}, {1918, 1080}};
inline constexpr FrameSize kExportSizes[] = {{640, 480}, {1920, 1080}};

// Appends the parts in order. (Building names with operator+ on temporaries trips a false
// -Wrestrict in GCC 12 at -O3.)
template <typename... Parts>
std::string Join(const Parts&... parts) {
  std::string s;
  (s.append(parts), ...);
  return s;
}

inline std::string SizeName(FrameSize s) {
  return Join(std::to_string(s.width), "x", std::to_string(s.height));
}

// A 64-byte aligned buffer of random bytes (filled once: in-place benchmarks keep permuting the
// same random frame, so no run ever times a uniform one).
class Buffer {
 public:
  explicit Buffer(size_t bytes)
      : data_(static_cast<uint8_t*>(::operator new[](bytes, std::align_val_t{64}))) {
    std::mt19937 rng(static_cast<uint32_t>(bytes));
    for (size_t i = 0; i < bytes; ++i) data_.get()[i] = static_cast<uint8_t>(rng());
  }
  uint8_t* get() const { return data_.get(); }

 private:
  struct Free {
    void operator()(uint8_t* p) const { ::operator delete[](p, std::align_val_t{64}); }
  };
  std::unique_ptr<uint8_t, Free> data_;
};

// Rows rounded up to 4 bytes, the way frames arrive from the host.
inline int32_t Stride4(int32_t row_bytes) { return (row_bytes + 3) / 4 * 4; }

// Counts `bytes` (the frame's pixel bytes, once, also for in-place work) and the pixels.
inline void SetCounters(benchmark::State& state, int64_t bytes, int64_t pixels) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes);
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * pixels);
}

// The name of the memcpy benchmark that copies a frame of this size and pixel width.
inline std::string MemcpyName(FrameSize fs, int bpp) {
  return Join("memcpy/", SizeName(fs), "x", std::to_string(bpp));
}

// Counters for a frame of `fs` less `inset` pixels on each side; the label names the memcpy run
// to compare bytes/s with (bench/memcpy_ratio.py divides the two).
inline void SetFrameCounters(benchmark::State& state, FrameSize fs, int bpp, int inset = 0) {
  const int64_t pixels = int64_t{fs.width - 2 * inset} * (fs.height - 2 * inset);
  SetCounters(state, pixels * bpp, pixels);
  state.SetLabel(Join("vs ", MemcpyName(fs, bpp)));
}

// memcpy of `bytes` contiguous bytes between two buffers: the yardstick for a frame of that size.
void RegisterMemcpy(const std::string& name, int64_t bytes, int64_t pixels);

void RegisterPrimitiveBenchmarks();
void RegisterExportBenchmarks();
void RegisterEffectBenchmarks();
void RegisterConvertBenchmarks();
void RegisterResizeBenchmarks();
void RegisterRotateBenchmarks();
void RegisterComposeBenchmarks();
void RegisterRestoreBenchmarks();

}  // namespace framekit::bench

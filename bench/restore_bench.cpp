// Deinterlacers at 480x360 and 1920x1080 beside memcpy of the same RGB24 frame (each filter reads
// the frame, or three, and writes one): the filters alone, and the exports (<filter>_export;
// CAVT's and the triangle's copy their result back into the frame). The in-place exports run on
// their frame again every time: the vector bodies take the same time whatever the pictures. Names
// restore/<filter>/<size>/<implementation>; items are pixels (bench/peer_ratio.py run.json
// restore gives the ratios to memcpy).
#include <cstring>
#include <functional>
#include <memory>
#include <string>

#include "bench_frames.h"
#include "framekit/framekit.h"
#include "primitives/deinterlace/deinterlace.h"

namespace framekit::bench {
namespace {

constexpr FrameSize kSizes[] = {{480, 360}, {1920, 1080}};

struct Frames {
  explicit Frames(FrameSize fs) : bytes(size_t{3} * static_cast<size_t>(fs.width) * fs.height) {}
  size_t bytes;
  Buffer a{bytes}, b{bytes + 64}, c{bytes + 128}, out{bytes};
};

using Call = std::function<void(Frames&, FrameSize)>;

void Register(const char* what, const char* impl, FrameSize fs, Call call) {
  const std::string name = Join("restore/", what, "/", SizeName(fs), "/", impl);
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    auto f = std::make_shared<Frames>(fs);
    for (auto _ : state) {
      call(*f, fs);
      benchmark::ClobberMemory();
    }
    const int64_t pixels = int64_t{fs.width} * fs.height;
    SetCounters(state, 3 * pixels, pixels);
  });
}

}  // namespace

void RegisterRestoreBenchmarks() {
  namespace prim = framekit::prim;
  for (const FrameSize fs : kSizes) {
    // The filters alone (the dispatched primitives on the sample image) ...
    Register("cavt", "framekit", fs, [](Frames& f, FrameSize s) {
      prim::ippiDeinterlaceFilterCAVT_8u_C1R(f.a.get(), 3 * s.width, f.out.get(), 3 * s.width, 16,
                                             {3 * s.width, s.height});
    });
    Register("triangle", "framekit", fs, [](Frames& f, FrameSize s) {
      prim::ippiDeinterlaceFilterTriangle_8u_C1R(f.a.get(), 3 * s.width, f.out.get(), 3 * s.width,
                                                 {3 * s.width, s.height}, 128, prim::kLayoutAll);
    });
    Register("blend", "framekit", fs, [](Frames& f, FrameSize s) {
      static const int32_t thresholds[2] = {10, 30};
      static const double constants[2] = {0.5, 0.5};
      prim::DeinterlaceBlendState* state = nullptr;
      prim::ippiDeinterlaceBlendInitAlloc_8u_C1({3 * s.width, s.height}, thresholds, constants,
                                                &state);
      const uint8_t* const sources[3] = {f.c.get(), f.b.get(), f.a.get()};
      prim::ippiDeinterlaceBlend_8u_C1(sources, 3 * s.width, f.out.get(), 3 * s.width,
                                       {3 * s.width, s.height}, 1, 0, 1, state);
      prim::ippiDeinterlaceBlendFree_8u_C1(state);
    });
    // ... and the exports (CAVT and triangle copy the result back into the frame).
    Register("cavt_export", "framekit", fs, [](Frames& f, FrameSize s) {
      EffectDeinterlaceCAVT(f.a.get(), s.width, s.height, f.out.get(), 16);
    });
    Register("triangle_export", "framekit", fs, [](Frames& f, FrameSize s) {
      EffectDeinterlaceTriangle(f.a.get(), s.width, s.height, f.out.get(), 128);
    });
    Register("blend_export", "framekit", fs, [](Frames& f, FrameSize s) {
      const FrameKitDeinterlaceBlendParams params{{10, 30}, {0.5, 0.5}};
      EffectDeinterlaceBlend(f.a.get(), f.b.get(), f.c.get(), f.out.get(), s.width, s.height,
                             3 * s.width, 3 * s.width, &params);
    });
    for (const char* what :
         {"cavt", "triangle", "blend", "cavt_export", "triangle_export", "blend_export"}) {
      Register(what, "memcpy", fs,
               [](Frames& f, FrameSize) { std::memcpy(f.out.get(), f.a.get(), f.bytes); });
    }
  }
}

}  // namespace framekit::bench

// Deinterlacers. Modes: CAVT thresholds; triangle centre weights with layouts (weight * 32 +
// layout; the empty and foreign layouts must fail alike); blend parameter sets with every flag
// combination (set * 8 + flags).
#include "primitives/deinterlace/deinterlace.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct CavtDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 1, Access::kRead}, {"dst", 1, Access::kWrite}},
            .modes = {16, 0, 1, 8, 64, 255, 300}};
  }
  prim::Status Call(prim::CavtFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], static_cast<uint16_t>(a.axis), a.roi);
  }
};

struct TriangleDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 1, Access::kRead}, {"dst", 1, Access::kReadWrite}},
            .modes = {128 * 32 + 21, 0 * 32 + 21, 86 * 32 + 21, 255 * 32 + 21, 256 * 32 + 21,
                      999 * 32 + 21, 100 * 32 + 1, 170 * 32 + 4, 43 * 32 + 16, 7 * 32 + 17,
                      128 * 32 + 0, 128 * 32 + 2, 128 * 32 + 23}};
  }
  prim::Status Call(prim::TriangleFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi,
              static_cast<uint32_t>(a.axis / 32), static_cast<uint32_t>(a.axis % 32));
  }
};

struct BlendParams {
  int32_t thresholds[2];
  double constants[2];
};
// Samples of 0..63 put the motion measure mostly in 30..63: each set meets all three regimes.
constexpr BlendParams kBlendSets[] = {
    {{40, 55}, {0.5, 0.5}}, {{5, 60}, {0.25, 1.0}}, {{0, 0}, {1.0, 0.0}}, {{62, 45}, {0.0, 0.7}}};

struct BlendDriver {
  PrimitiveShape Shape() const {
    const auto source = [](const char* name, int step_of) {
      return ImageArg{.name = name, .bytes_per_pixel = 1, .access = Access::kRead, .levels = 64,
                      .step_of = step_of};
    };
    PrimitiveShape shape{.images = {source("latest", -1), source("current", 0),
                                    source("earliest", 0), {"dst", 1, Access::kReadWrite}}};
    // First the exports' set and flags (top first, top kept, copied): what benchmarks time.
    shape.modes.push_back(5);
    for (int mode = 0; mode < 32; ++mode) {
      if (mode != 5) shape.modes.push_back(mode);
    }
    return shape;
  }
  prim::Status Call(prim::DeinterlaceBlendFn fn, const CallArgs& a) const {
    const BlendParams& p = kBlendSets[a.axis / 8];
    // A state of a valid size, so that the filter itself judges the size it is told.
    const prim::Size state_size = a.roi.width > 0 && a.roi.height > 0 ? a.roi : prim::Size{1, 1};
    prim::DeinterlaceBlendState* state = nullptr;
    if (prim::ippiDeinterlaceBlendInitAlloc_8u_C1(state_size, p.thresholds, p.constants, &state) !=
        prim::ippStsNoErr) {
      return -1000;
    }
    const uint8_t* const sources[3] = {a.image[0], a.image[1], a.image[2]};
    const prim::Status s = fn(sources, a.step[0], a.image[3], a.step[3], a.roi, a.axis & 1,
                              (a.axis >> 1) & 1, (a.axis >> 2) & 1, state);
    prim::ippiDeinterlaceBlendFree_8u_C1(state);
    return s;
  }
};

FK_VARIANT_SUBJECT(ippiDeinterlaceFilterCAVT_8u_C1R, CavtDriver{});
FK_VARIANT_SUBJECT(ippiDeinterlaceFilterTriangle_8u_C1R, TriangleDriver{});
FK_VARIANT_SUBJECT(ippiDeinterlaceBlend_8u_C1, BlendDriver{});

}  // namespace
}  // namespace framekit::test

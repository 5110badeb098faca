// Grey, duplicate and subtract primitives: drivers for the variant harness.
#include "primitives/gray/gray.h"
#include "primitives/sub/sub.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

// The weights the greyscale effect passes in half the cases; otherwise the default set, odd
// 16-bit weights, or a weight beyond 16 bits.
struct ColorToGrayDriver {
  PrimitiveShape Shape() const {
    // Benchmarks: the greyscale effect's weights.
    return {.images = {{"src", 3, Access::kRead}, {"dst", 1, Access::kWrite}},
            .scalar = true,
            .bench_scalar = 3};
  }
  prim::Status Call(prim::ColorToGrayFn fn, const CallArgs& a) const {
    static constexpr float kOdd[3][3] = {
        {0.9f, -0.7f, 0.95f},  // 16-bit weights whose sums leave the byte range both ways
        {1.5f, -0.7f, 0.2f},   // a weight beyond 16 bits
        {0.114f, 0.587f, 0.299f}};
    const uint64_t pick = a.scalar & 3;
    const float* weights = pick == 0 ? nullptr : kOdd[pick - 1];
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, weights);
  }
};

struct DupDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 1, Access::kRead}, {"dst", 3, Access::kWrite}}};
  }
  prim::Status Call(prim::DupFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi);
  }
};

// Scale 0 (what the invert effect passes) in most cases, otherwise -9..9.
struct SubDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 3, Access::kRead}, {"src_dst", 3, Access::kReadWrite}},
            .scalar = true,
            .bench_scalar = 1};  // scale 0, as the invert effect
  }
  prim::Status Call(prim::SubC3ISfsFn fn, const CallArgs& a) const {
    const int32_t scale = (a.scalar & 3) == 0 ? static_cast<int32_t>((a.scalar >> 8) % 19) - 9 : 0;
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, scale);
  }
};

FK_VARIANT_SUBJECT(ippiColorToGray_8u_C3C1R, ColorToGrayDriver{});
FK_VARIANT_SUBJECT(ippiDup_8u_C1C3R, DupDriver{});
FK_VARIANT_SUBJECT(ippiSub_8u_C3IRSfs, SubDriver{});

}  // namespace
}  // namespace framekit::test

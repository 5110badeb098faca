// Band-threshold and negate primitives: drivers for the variant harness. Channel and band come
// from the case's random bits (an invalid channel now and then, which must fail without writing).
#include "primitives/band/band.h"
#include "primitives/negate/negate.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct BandDriver {
  PrimitiveShape Shape() const {
    // Benchmarks: channel 2, band (100, 200).
    return {.images = {{"frame", 3, Access::kReadWrite}}, .scalar = true, .bench_scalar = 13132802};
  }
  prim::Status Call(prim::BandC3Fn fn, const CallArgs& a) const {
    const auto channel = static_cast<int32_t>(a.scalar % 13 == 0 ? 3 : a.scalar % 3);
    const auto low = static_cast<uint8_t>(a.scalar >> 8),
               high = static_cast<uint8_t>(a.scalar >> 16);
    return fn(a.image[0], a.step[0], a.roi, channel, low, high);
  }
};

struct NegateDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"frame", 3, Access::kReadWrite}, {"copy", 3, Access::kWrite}}};
  }
  prim::Status Call(prim::NegateC3Fn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi);
  }
};

FK_VARIANT_SUBJECT(BandThresholdC3, BandDriver{});
FK_VARIANT_SUBJECT(NegateC3IntoCopy, NegateDriver{});

}  // namespace
}  // namespace framekit::test

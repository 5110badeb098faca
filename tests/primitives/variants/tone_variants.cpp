// Fast-path tone kernels: drivers for the variant harness (the reference is the scalar model).
// A row's first 16 * (width / 16) pixels are blocks and the rest the tail, so the harness's
// widths give every tail length 0-15. Amounts come from the case's random bits: mostly the
// useful range, sometimes anything at all (the kernels must agree on NaN and overflow too).
#include "primitives/tone/tone.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

// bench: the scalar bits of the amount benchmarks use.
PrimitiveShape InPlaceFrame(uint64_t bench) {
  return {.images = {{"frame", 3, Access::kReadWrite}}, .scalar = true, .bench_scalar = bench};
}

int32_t Level(uint64_t bits) {
  if ((bits & 7) == 0) return static_cast<int32_t>(static_cast<uint32_t>(bits >> 32));
  return 1 + static_cast<int32_t>((bits >> 8) % 255);
}

int32_t ContrastK(uint64_t bits) {
  switch (bits & 7) {
    case 0:
      return 259;  // infinite factor
    case 1:
      return static_cast<int32_t>(static_cast<uint32_t>(bits >> 32));
    default:
      return static_cast<int32_t>((bits >> 8) % 601) - 300;
  }
}

// Below 510 the SSSE3 and AVX2 bodies run fitted 16-bit steps, from 510 single precision: the
// edges of that split and of the identity come up often.
uint32_t SaturationS(uint64_t bits) {
  if ((bits & 7) == 0) return static_cast<uint32_t>(bits >> 32);
  if ((bits & 7) == 1) {
    constexpr uint32_t kEdges[] = {0, 1, 254, 255, 256, 508, 509, 510, 511, 1u << 24};
    return kEdges[(bits >> 8) % 10];
  }
  return static_cast<uint32_t>((bits >> 8) % 1001);
}

struct LevelDriver {
  PrimitiveShape Shape() const { return InPlaceFrame((15 << 8) | 1); }  // level 16
  prim::Status Call(prim::LevelBlocksFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, Level(a.scalar));
  }
};

struct ContrastDriver {
  PrimitiveShape Shape() const { return InPlaceFrame((320 << 8) | 2); }  // k = 20
  prim::Status Call(prim::ContrastBlocksFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, ContrastK(a.scalar));
  }
};

struct SaturationDriver {
  PrimitiveShape Shape() const { return InPlaceFrame((300 << 8) | 2); }  // S = 300
  prim::Status Call(prim::SaturationBlocksFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, SaturationS(a.scalar));
  }
};

FK_VARIANT_SUBJECT(LightnessBlocks, LevelDriver{});
FK_VARIANT_SUBJECT(DarknessBlocks, LevelDriver{});
FK_VARIANT_SUBJECT(ContrastBlocks, ContrastDriver{});
FK_VARIANT_SUBJECT(SaturationBlocks, SaturationDriver{});

}  // namespace
}  // namespace framekit::test

// Noise, box-blur and sharpen primitives: drivers for the variant harness. Amounts, radii and
// generator states come from the case's random bits: mostly the useful range, sometimes anything.
#include "primitives/blur/blur.h"
#include "primitives/filter/filter.h"
#include "primitives/noise/noise.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

uint32_t Bits(uint64_t bits, int shift) { return static_cast<uint32_t>(bits >> shift); }

// Amounts 1..1000 mostly (half = amount / 2 then covers every byte), else any int32.
int32_t NoiseAmount(uint64_t bits) {
  if ((bits & 7) == 0) return static_cast<int32_t>(Bits(bits, 32));
  return 1 + static_cast<int32_t>(Bits(bits, 8) % 1000);
}

struct NoiseDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"frame", 3, Access::kReadWrite}},
            .scalar = true,
            .bench_scalar = (199 << 8) | 1};  // amount 200
  }
  prim::Status Call(prim::NoiseBlocksFn fn, const CallArgs& a) const {
    const uint64_t s = a.scalar * 0x9E3779B97F4A7C15ull;  // the lanes: other bits of the case
    const prim::NoiseLanes lanes{{Bits(s, 0), Bits(s, 32), Bits(s, 16), Bits(a.scalar, 20)}};
    return fn(a.image[0], a.step[0], a.roi, NoiseAmount(a.scalar), lanes);
  }
};

// Radii 0..12 mostly, now and then up to 300 or anything (negative ones must fail).
int32_t Radius(uint64_t bits) {
  switch (bits & 15) {
    case 0:
      return static_cast<int32_t>(Bits(bits, 32));
    case 1:
      return static_cast<int32_t>(Bits(bits, 8) % 301);
    default:
      return static_cast<int32_t>(Bits(bits, 8) % 13);
  }
}

struct BlurRowsDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"frame", 3, Access::kReadWrite}, {"row", 3, Access::kScratch}},
            .scalar = true,
            .bench_scalar = (6 << 8) | 2};  // radius 6
  }
  prim::Status Call(prim::BlurRowsFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, Radius(a.scalar), a.image[1]);
  }
};

// The rounded columns: the fast path's whole strips mostly, else none, all or any count.
int32_t RoundedWidth(uint64_t bits, int32_t width) {
  switch (Bits(bits, 40) & 7) {
    case 0:
      return 0;
    case 1:
      return width;
    case 2:
      return static_cast<int32_t>(Bits(bits, 44) % 200) - 20;
    default:
      return width / 16 * 16;
  }
}

struct BlurColumnsDriver {
  PrimitiveShape Shape() const {
    return {
        .images = {{"frame", 3, Access::kReadWrite}},
        .scalar = true,
        .bench_scalar = (6 << 8) | 2 | (uint64_t{3} << 40),  // radius 6, whole strips
        .work_bytes = [](const CallArgs& a) { return a.roi.height > 0 ? 48 * a.roi.height : 0; }};
  }
  prim::Status Call(prim::BlurColumnsFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, Radius(a.scalar), RoundedWidth(a.scalar, a.roi.width),
              a.work);
  }
};

struct SharpenDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 3, Access::kRead, 1, 0, /*border=*/1}, {"dst", 3, Access::kWrite}}};
  }
  prim::Status Call(prim::FilterC3Fn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi);
  }
};

FK_VARIANT_SUBJECT(ColourNoiseBlocks, NoiseDriver{});
FK_VARIANT_SUBJECT(MonoNoiseBlocks, NoiseDriver{});
FK_VARIANT_SUBJECT(BlurRows, BlurRowsDriver{});
FK_VARIANT_SUBJECT(BlurColumns, BlurColumnsDriver{});
FK_VARIANT_SUBJECT(ippiFilterSharpen_8u_C3R, SharpenDriver{});

}  // namespace
}  // namespace framekit::test

// Keying: the colour key on two-level frames (so a key of 0s and 1s matches one pixel in eight),
// in place over either source; the chroma key with maps built from the case's bits.
#include <array>
#include <cmath>
#include <limits>

#include "primitives/keying/keying.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct ColorKeyDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src1", 3, Access::kRead, 1, 0, 0, /*levels=*/2},
                       {"src2", 3, Access::kRead},
                       {"dst", 3, Access::kWrite}},
            .value_bytes = 3,
            .in_place = {{0, 2}, {1, 2}}};
  }
  prim::Status Call(prim::ColorKeyFn fn, const CallArgs& a) const {
    uint8_t key[3] = {};
    if (a.value != nullptr) {
      for (int i = 0; i < 3; ++i) key[i] = a.value[i] & 1;
    }
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.image[2], a.step[2], a.roi,
              a.value != nullptr ? key : nullptr);
  }
};

// A map as the loader builds it from two thresholds, with elements 511 and 512 (never written
// by the loader) and, in one case in four, a few weights outside 0..1 (bytes stored as their low
// 8 bits, huge values and NaN as the conversion's INT32_MIN).
struct ChromaKeyDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"frame", 3, Access::kReadWrite}, {"bg", 3, Access::kRead}},
            .scalar = true,
            .bench_scalar = (uint64_t{60} << 8) | 160,
            .modes = {1, 2, 0}};
  }
  prim::Status Call(prim::ChromaKeyFn fn, const CallArgs& a) const {
    std::array<double, 513> map{};
    const auto low = static_cast<int32_t>((a.scalar >> 8) % 512);
    const auto high = static_cast<int32_t>(a.scalar % 512);
    for (int i = 2; i <= 510; ++i) {
      map[static_cast<size_t>(i)] =
          i <= low ? 1.0 : (i < high ? static_cast<double>(high - i) / (high - low) : 0.0);
    }
    map[511] = static_cast<double>((a.scalar >> 20) % 1000) / 999.0;
    map[512] = static_cast<double>((a.scalar >> 30) % 1000) / 999.0;
    if ((a.scalar >> 40) % 4 == 0) {
      const double odd[] = {1.75,  -2.5,    1e12, -1e12, std::numeric_limits<double>::quiet_NaN(),
                            3.0e9, 0.999999};
      for (size_t j = 0; j < std::size(odd); ++j) map[4 + 73 * j] = odd[j];
    }
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, map.data(), a.axis);
  }
};

FK_VARIANT_SUBJECT(ippiCompColorKey_8u_C3R, ColorKeyDriver{});
FK_VARIANT_SUBJECT(ChromaKey_8u_C3IR, ChromaKeyDriver{});

}  // namespace
}  // namespace framekit::test

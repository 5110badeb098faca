// The plain loops a user would write for the overlay blends, compiled by themselves with
// -O3 -march=native (bench/CMakeLists.txt): the compiler's own vectorisation as a yardstick.
#include <cmath>
#include <cstdint>

namespace framekit::bench {

// c + round((s - c) * A / 256) over packed RGB32 onto packed RGB24, single precision.
void PlainAlphaBlend(const uint8_t* src, uint8_t* dst, int64_t pixels) {
  for (int64_t i = 0; i < pixels; ++i) {
    const float f = static_cast<float>(src[4 * i + 3]) * 0.00390625f;
    for (int k = 0; k < 3; ++k) {
      const int c = dst[3 * i + k];
      const float v = static_cast<float>(src[4 * i + k] - c) * f;
      dst[3 * i + k] = static_cast<uint8_t>(c + static_cast<int>(std::nearbyint(v)));
    }
  }
}

}  // namespace framekit::bench

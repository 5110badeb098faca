// Shared pieces of the effect tests: independent formulas of the fast path's arithmetic (written
// from the description, not from the library).
#pragma once

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>

namespace framekit::test {

// The vector conversion: nearest-even, and INT32_MIN for NaN or anything out of range.
inline int64_t VectorRound(float x) {
  if (std::isnan(x) || std::fabs(x) >= 2147483648.0f) return std::numeric_limits<int32_t>::min();
  return static_cast<int64_t>(std::nearbyint(x));  // default rounding mode: nearest-even
}

inline uint8_t Saturate(int64_t v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }

}  // namespace framekit::test

// Shared pieces of the effect tests: every processor class this machine runs, and independent
// formulas of the fast path's arithmetic (written from the description, not from the library).
#pragma once

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>

#include "primitives/core/dispatch.h"

namespace framekit::test {

// Runs body once per class this machine can run, the class forced; restores the index.
inline void ForEachClass(const std::function<void(int cls)>& body) {
  const int32_t before = prim::ClassIndex();
  for (int cls = 0; cls <= prim::DetectedClass(); ++cls) {
    SCOPED_TRACE("class " + std::to_string(cls));
    prim::SetClassIndexForTesting(cls);
    body(cls);
  }
  prim::SetClassIndexForTesting(before);
}

// The vector conversion: nearest-even, and INT32_MIN for NaN or anything out of range.
inline int64_t VectorRound(float x) {
  if (std::isnan(x) || std::fabs(x) >= 2147483648.0f) return std::numeric_limits<int32_t>::min();
  return static_cast<int64_t>(std::nearbyint(x));  // default rounding mode: nearest-even
}

inline uint8_t Saturate(int64_t v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }

}  // namespace framekit::test

// Helpers every body shares, reference and vector alike: the address of a row, and two 16-bit
// weights as the 32-bit operand of a multiply-add (pmaddwd). Internal linkage: per-ISA files use
// them too, and no copy compiled with their flags may serve baseline code.
#pragma once

#include <cstdint>

namespace framekit::prim {

// Row r of an image whose rows start `step` bytes apart (negative: bottom-up).
template <typename T>
static inline T* RowAt(T* p, int32_t step, int64_t r) {
  return p + r * step;
}

// Weights `low` and `high` for the two 16-bit halves of a 32-bit lane.
static constexpr int32_t PairWord(int16_t low, int16_t high) {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint16_t>(low)) |
                              (static_cast<uint32_t>(static_cast<uint16_t>(high)) << 16));
}
static constexpr int16_t LowWeight(int32_t pair) { return static_cast<int16_t>(pair & 0xFFFF); }
static constexpr int16_t HighWeight(int32_t pair) {
  return static_cast<int16_t>(static_cast<uint32_t>(pair) >> 16);
}

}  // namespace framekit::prim

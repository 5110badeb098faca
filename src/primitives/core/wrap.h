// 32-bit wrapping arithmetic without undefined behaviour. The interface defines several
// products (strides, offsets, pixel counts) as 32-bit signed values that may wrap; these helpers
// compute them in unsigned arithmetic and convert back, which is exact two's complement.
// Internal linkage throughout: per-ISA files use them too, and an out-of-line copy compiled with
// their flags must never be the one the linker keeps for baseline code.
#pragma once

#include <cstddef>
#include <cstdint>

namespace framekit {

static constexpr int32_t WrapMul(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}
static constexpr int32_t WrapAdd(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}
static constexpr int32_t WrapSub(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
// Signed division truncating toward zero; INT32_MIN / -1 wraps to INT32_MIN instead of trapping.
static constexpr int32_t WrapDiv(int32_t a, int32_t b) { return (b == -1) ? WrapSub(0, a) : a / b; }

// Moves a pointer by a signed byte offset (row step times row index and the like).
template <typename T>
static constexpr T* Offset(T* p, int64_t bytes) {
  return p + bytes;
}

// Moves a frame pointer by a signed byte offset in address arithmetic. Rectangle offsets are
// applied before any check, so a null frame with a nonzero offset reaches the primitive as a
// non-null address, and an offset may point outside the frame; neither is undefined this way.
template <typename T>
static T* OffsetAddress(T* p, int32_t bytes) {
  const uintptr_t address =
      reinterpret_cast<uintptr_t>(p) + static_cast<uintptr_t>(static_cast<intptr_t>(bytes));
  return reinterpret_cast<T*>(address);
}

}  // namespace framekit

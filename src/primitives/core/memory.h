// Primitive memory: 64-byte-aligned three-byte-per-pixel images with 64-byte-multiple row steps,
// through replaceable allocation hooks.
#pragma once

#include <cstddef>
#include <cstdint>

namespace framekit::prim {

using AllocateFn = void* (*)(size_t size);
using ReleaseFn = void (*)(void* block);

// Installs allocation hooks (tests count and fail allocations this way); null restores the
// runtime heap. Not synchronised: set them before concurrent use.
void SetAllocationHooks(AllocateFn allocate, ReleaseFn release);

// The row step of a three-byte image: 3 * width rounded up to a multiple of 64, in 64 bits,
// kept as its low 32 bits.
int32_t MallocStepC3(int32_t width);

uint8_t* ippiMalloc_8u_C3(int32_t width, int32_t height, int32_t* step);
// `size` bytes in the same kind of block (null for a size below 1 or a failed allocation).
uint8_t* ippsMalloc_8u(int32_t size);
// Releases a block of either allocator (null: nothing).
void ippiFree(void* p);

}  // namespace framekit::prim

#include "primitives/core/memory.h"

#include <cstdlib>
#include <cstring>

#include "primitives/core/wrap.h"

namespace framekit::prim {
namespace {

AllocateFn g_allocate = &std::malloc;
ReleaseFn g_release = &std::free;

// The returned pointer is 64-byte aligned and at least 8 bytes into the block; those 8 bytes
// hold the block's address for ippiFree.
constexpr size_t kAlign = 64;
constexpr size_t kSlack = 72;

}  // namespace

void SetAllocationHooks(AllocateFn allocate, ReleaseFn release) {
  g_allocate = allocate ? allocate : &std::malloc;
  g_release = release ? release : &std::free;
}

int32_t MallocStepC3(int32_t width) {
  const int64_t step = (3 * static_cast<int64_t>(width) + 63) & ~int64_t{63};
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(step)));
}

namespace {

// size bytes from the allocate hook, 64-byte aligned, the block's address just before them.
uint8_t* AlignedBlock(int32_t size) {
  void* block = g_allocate(static_cast<size_t>(size) + kSlack);
  if (block == nullptr) return nullptr;
  const uintptr_t base = reinterpret_cast<uintptr_t>(block);
  const uintptr_t aligned = (base + kSlack - 1) & ~uintptr_t{kAlign - 1};
  uint8_t* p = static_cast<uint8_t*>(block) + (aligned - base);
  std::memcpy(p - sizeof(void*), &block, sizeof(void*));
  return p;
}

}  // namespace

uint8_t* ippiMalloc_8u_C3(int32_t width, int32_t height, int32_t* step) {
  if (step == nullptr) return nullptr;
  if (width <= 0 || height <= 0) {
    *step = 0;
    return nullptr;
  }
  *step = MallocStepC3(width);
  const int32_t size = WrapMul(*step, height);
  if (size < 1) return nullptr;
  return AlignedBlock(size);
}

uint8_t* ippsMalloc_8u(int32_t size) { return size < 1 ? nullptr : AlignedBlock(size); }

void ippiFree(void* p) {
  if (p == nullptr) return;
  void* block = nullptr;
  std::memcpy(&block, static_cast<uint8_t*>(p) - sizeof(void*), sizeof(void*));
  g_release(block);
}

}  // namespace framekit::prim

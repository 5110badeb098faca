// Initialisation and primitive memory exports.
#include "framekit/framekit.h"
#include "primitives/copy/copy.h"
#include "primitives/core/dispatch.h"
#include "primitives/core/memory.h"

extern "C" {

int32_t Init(void) noexcept { return framekit::prim::InitDispatch(); }

int32_t KXDInit(void) noexcept { return Init(); }

uint8_t* zqippiMalloc_8u_C3(int32_t width, int32_t height, int32_t* step) noexcept {
  return framekit::prim::ippiMalloc_8u_C3(width, height, step);
}

void zqippiFree(void* p) noexcept { framekit::prim::ippiFree(p); }

int32_t zqippiCopy_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                          int32_t width, int32_t height) noexcept {
  return framekit::prim::ippiCopy_8u_C3R(src, src_step, dst, dst_step, {width, height});
}

}  // extern "C"

#include "restore/deinterlace.h"

#include "primitives/copy/copy.h"
#include "primitives/deinterlace/deinterlace.h"

namespace framekit::restore {
namespace {

// The sample image: three samples a pixel, rows packed. The product wraps like the host's
// 32-bit arithmetic; no width it could wrap for is a usable frame.
prim::Size Samples(int32_t width, int32_t height) {
  return {static_cast<int32_t>(3u * static_cast<uint32_t>(width)), height};
}

}  // namespace

void DeinterlaceCAVT(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp,
                     uint16_t threshold) {
  const prim::Size size = Samples(width, height);
  prim::ippiDeinterlaceFilterCAVT_8u_C1R(frame, size.width, temp, size.width, threshold, size);
  prim::ippiCopy_8u_C3R(temp, size.width, frame, size.width, {width, height});
}

void DeinterlaceTriangle(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp,
                         uint32_t centre_weight) {
  const prim::Size size = Samples(width, height);
  prim::ippiDeinterlaceFilterTriangle_8u_C1R(frame, size.width, temp, size.width, size,
                                             centre_weight, prim::kLayoutAll);
  prim::ippiCopy_8u_C3R(temp, size.width, frame, size.width, {width, height});
}

void DeinterlaceBlend(const uint8_t* frame1, const uint8_t* frame2, const uint8_t* frame3,
                      uint8_t* dst, int32_t width, int32_t height, int32_t src_step,
                      int32_t dst_step, const int32_t thresholds[2], const double constants[2]) {
  const prim::Size size = Samples(width, height);
  prim::DeinterlaceBlendState* state = nullptr;
  prim::ippiDeinterlaceBlendInitAlloc_8u_C1(size, thresholds, constants, &state);
  const uint8_t* const sources[3] = {frame3, frame2, frame1};  // the latest first
  prim::ippiDeinterlaceBlend_8u_C1(sources, src_step, dst, dst_step, size, /*top_first=*/1,
                                   /*top_field=*/0, /*copy_field=*/1, state);
  prim::ippiDeinterlaceBlendFree_8u_C1(state);
}

}  // namespace framekit::restore

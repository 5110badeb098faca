// Greyscale and invert: the two effects that go through primitives, at the aligned row stride
// (rows rounded up to 4 bytes), unlike the packed rows of the other effects. For widths that are
// not multiples of 4 the two families therefore see different layouts; that is deliberate.
#include "effects/effects.h"
#include "primitives/copy/copy.h"
#include "primitives/core/strides.h"
#include "primitives/gray/gray.h"
#include "primitives/negate/negate.h"
#include "primitives/set/set.h"
#include "primitives/sub/sub.h"

namespace framekit::effects {
namespace {

// Blue-first weights for bytes 0, 1, 2 (fixed point 3736, 19235, 9798).
constexpr float kGreyWeights[3] = {0.114f, 0.587f, 0.299f};

}  // namespace

// Grey into the scratch frame (width bytes a row), then back into all three channels. The
// statuses are not looked at; the last one is the result.
Status Greyscale(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch) {
  const int32_t step = RowByteStrideRGB24(width);
  const prim::Size roi{width, height};
  prim::ippiColorToGray_8u_C3C1R(frame, step, scratch, width, roi, kGreyWeights);
  return prim::ippiDup_8u_C1C3R(scratch, width, frame, step, roi);
}

// Scratch (3 * width bytes a row) filled with white, the frame subtracted from it, the result
// copied back: every byte becomes 255 - value, in the frame and in the scratch frame. When every
// argument is valid the three passes are done as one: each frame byte is read once and its
// negative written to both places (the same bytes, a third of the memory traffic). Otherwise the
// primitives run in turn, for their statuses and what each writes before the first failure.
Status Invert(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch) {
  static constexpr uint8_t kWhite[3] = {255, 255, 255};
  const int32_t step = RowByteStrideRGB24(width);
  const int32_t scratch_step = PackedStride(width, 3);
  const prim::Size roi{width, height};
  if (frame == nullptr || scratch == nullptr || width < 1 || height < 1) {
    prim::ippiSet_8u_C3R(kWhite, scratch, scratch_step, roi);
    prim::ippiSub_8u_C3IRSfs(frame, step, scratch, scratch_step, roi, 0);
    return prim::ippiCopy_8u_C3R(scratch, scratch_step, frame, step, roi);
  }
  return prim::NegateC3IntoCopy(frame, step, scratch, scratch_step, roi);
}

}  // namespace framekit::effects

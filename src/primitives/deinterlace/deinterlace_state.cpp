#include <cmath>
#include <new>

#include "primitives/core/memory.h"
#include "primitives/deinterlace/deinterlace.h"

namespace framekit::prim {
namespace {

int32_t LevelOf(int32_t t) { return t < 0 ? 0 : (t > 255 ? 255 : t); }

// A constant in 0..1 as 1/256 steps times `scale` (NaN: the middle).
int32_t Fraction(double c, int32_t scale) {
  if (std::isnan(c)) c = 0.5;
  c = c < 0 ? 0 : (c > 1 ? 1 : c);
  return static_cast<int32_t>(std::lround(c * 256 * scale));
}

}  // namespace

Status ippiDeinterlaceBlendInitAlloc_8u_C1(Size size, const int32_t blend_thresholds[2],
                                           const double blend_constants[2],
                                           DeinterlaceBlendState** state) {
  if (blend_thresholds == nullptr || blend_constants == nullptr || state == nullptr) {
    return ippStsNullPtrErr;
  }
  *state = nullptr;
  if (const Status s = CheckSize(size); s != ippStsNoErr) return s;
  void* block = ippsMalloc_8u(static_cast<int32_t>(sizeof(DeinterlaceBlendState)));
  if (block == nullptr) return ippStsNoMemErr;
  const int32_t a = LevelOf(blend_thresholds[0]), b = LevelOf(blend_thresholds[1]);
  const int32_t still = a < b ? a : b;
  const int32_t moving = (a > b ? a : b) > still ? (a > b ? a : b) : still + 1;
  *state = new (block) DeinterlaceBlendState{
      size,
      still,
      moving,
      Fraction(blend_constants[0], 1),
      Fraction(blend_constants[1], 2),
      static_cast<uint16_t>(65536 / (moving - still) > 65535 ? 65535 : 65536 / (moving - still))};
  return ippStsNoErr;
}

Status ippiDeinterlaceBlendFree_8u_C1(DeinterlaceBlendState* state) {
  ippiFree(state);
  return ippStsNoErr;
}

}  // namespace framekit::prim

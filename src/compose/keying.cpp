#include "primitives/keying/keying.h"

#include "compose/compose.h"
#include "primitives/core/wrap.h"

namespace framekit::compose {

int32_t ColorKeyRGB24(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                      int32_t src2_step, uint8_t* dst, int32_t dst_step, int32_t width,
                      int32_t height) {
  static constexpr uint8_t kKey[3] = {33, 151, 54};  // the key green, blue byte first
  return prim::ippiCompColorKey_8u_C3R(src1, src1_step, src2, src2_step, dst, dst_step,
                                       {width, height}, kKey);
}

void LoadAlphaMap(double* map, int32_t low, int32_t high) {
  if (map == nullptr) return;
  map[0] = low;
  map[1] = high;
  for (int32_t i = 2; i <= 510; ++i) {
    if (i <= low) {
      map[i] = 1.0;
    } else if (i < high) {
      map[i] = static_cast<double>(WrapSub(high, i)) / static_cast<double>(WrapSub(high, low));
    } else {
      map[i] = 0.0;
    }
  }
}

void ChromaKey(uint8_t* frame, int32_t width, int32_t height, const uint8_t* background,
               const double* map, int32_t key_channel) {
  if (width == 0 || height == 0 || background == nullptr) return;
  const int32_t bytes = WrapMul(WrapMul(width, height), 3);
  if (bytes <= 0) return;
  // Offsets 0, 3, 6, ... below `bytes`: one run of pixels, padding included.
  const auto pixels = static_cast<int32_t>((int64_t{bytes} + 2) / 3);
  prim::ChromaKey_8u_C3IR(frame, bytes, background, bytes, {pixels, 1}, map, key_channel);
}

}  // namespace framekit::compose

#include "primitives/core/rows.h"
#include "primitives/keying/keying.h"

namespace framekit::prim::ref {

Status ippiCompColorKey_8u_C3R(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                               int32_t src2_step, uint8_t* dst, int32_t dst_step, Size roi,
                               const uint8_t key[3]) {
  if (const Status s = CheckColorKey(src1, src1_step, src2, src2_step, dst, dst_step, roi, key);
      s != ippStsNoErr) {
    return s;
  }
  for (int64_t y = 0; y < roi.height; ++y) {
    const uint8_t* a = RowAt(src1, src1_step, y);
    const uint8_t* b = RowAt(src2, src2_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    for (int64_t x = 0; x < roi.width; ++x) ColorKeyPixel(a + 3 * x, b + 3 * x, out + 3 * x, key);
  }
  return ippStsNoErr;
}

Status ChromaKey_8u_C3IR(uint8_t* frame, int32_t frame_step, const uint8_t* bg, int32_t bg_step,
                         Size roi, const double* map, int32_t key_channel) {
  if (const Status s = CheckChromaKey(frame, bg, roi, map); s != ippStsNoErr) return s;
  const int key = ChromaKeyByte(key_channel);
  for (int64_t y = 0; y < roi.height; ++y) {
    uint8_t* row = RowAt(frame, frame_step, y);
    const uint8_t* back = RowAt(bg, bg_step, y);
    for (int64_t x = 0; x < roi.width; ++x) ChromaKeyPixel(row + 3 * x, back + 3 * x, map, key);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

// Box-blur passes, reference level: classes 0 (columns) and 0-6 (rows).
#include <cstdint>
#include <cstring>

#include "primitives/blur/blur.h"
#include "primitives/blur/blur_kernels.h"

namespace framekit::prim::ref {

// Row i's window moves right by one pixel: the pixel leaving it is subtracted, the one entering
// added. The divisor is the same 2r + 1 between the edges.
Status BlurRows(uint8_t* p, int32_t step, Size roi, int32_t radius, uint8_t* row) {
  if (const Status s = blur::CheckPass(p, row, roi, radius); s != ippStsNoErr) return s;
  const int64_t w = roi.width, r = radius;
  const blur::Divider inner(2 * r + 1 <= w ? 2 * r + 1 : w);
  for (int32_t y = 0; y < roi.height; ++y) {
    uint8_t* px = RowAt(p, step, y);
    uint32_t s0 = 0, s1 = 0, s2 = 0;
    for (int64_t i = 0; i < w && i < r; ++i) {
      s0 += px[3 * i];
      s1 += px[3 * i + 1];
      s2 += px[3 * i + 2];
    }
    for (int64_t i = 0; i < w; ++i) {
      if (i + r < w) {
        const uint8_t* in = px + 3 * (i + r);
        s0 += in[0];
        s1 += in[1];
        s2 += in[2];
      }
      if (i - r - 1 >= 0) {
        const uint8_t* out = px + 3 * (i - r - 1);
        s0 -= out[0];
        s1 -= out[1];
        s2 -= out[2];
      }
      uint8_t* o = row + 3 * i;
      if (i - r >= 0 && i + r < w) {
        o[0] = static_cast<uint8_t>(inner(s0));
        o[1] = static_cast<uint8_t>(inner(s1));
        o[2] = static_cast<uint8_t>(inner(s2));
      } else {
        const blur::Divider edge(blur::WindowCount(i, r, w));
        o[0] = static_cast<uint8_t>(edge(s0));
        o[1] = static_cast<uint8_t>(edge(s1));
        o[2] = static_cast<uint8_t>(edge(s2));
      }
    }
    std::memcpy(px, row, static_cast<size_t>(3 * w));
  }
  return ippStsNoErr;
}

Status BlurColumns(uint8_t* p, int32_t step, Size roi, int32_t radius, int32_t rounded_width,
                   uint8_t* work) {
  if (const Status s = blur::CheckPass(p, work, roi, radius); s != ippStsNoErr) return s;
  blur::ScalarStrips(p, step, roi, radius, 0, blur::RoundedEnd(roi, rounded_width), work);
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

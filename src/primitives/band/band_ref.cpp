// Band threshold, reference: pixel by pixel, the definition every vector body is tested against.
#include "primitives/band/band.h"
#include "primitives/core/rows.h"

namespace framekit::prim::ref {

Status BandThresholdC3(uint8_t* p, int32_t step, Size roi, int32_t channel, uint8_t low,
                       uint8_t high) {
  if (const Status s = CheckBand(p, roi, channel); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* px = RowAt(p, step, r);
    for (int32_t x = 0; x < roi.width; ++x, px += 3) {
      const uint8_t v = px[channel];
      px[0] = px[1] = px[2] = 0;
      px[channel] = (v > low && v < high) ? 255 : 0;
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

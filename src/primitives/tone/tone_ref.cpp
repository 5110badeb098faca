// Reference fast-path kernels. Lightness, darkness and contrast change each byte on its own, so
// a row is two table look-ups: one table built from the block formula, one from the tail formula.
// Saturation mixes the three bytes of a pixel: its model's two single-precision steps, the
// rounded mean of a sum 0..765 and the rounded scaled difference -255..255, are tabled per call.
#include <cstddef>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/tone/tone.h"
#include "primitives/tone/tone_model.h"

namespace framekit::prim::ref {
namespace {

struct Tables {
  uint8_t block[256];
  uint8_t tail[256];
};

Status ApplyTables(uint8_t* p, int32_t step, Size roi, const Tables& t) {
  const int64_t block_bytes = int64_t{roi.width / 16} * 48;
  const int64_t row_bytes = int64_t{roi.width} * 3;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* row = RowAt(p, step, r);
    for (int64_t i = 0; i < block_bytes; ++i) row[i] = t.block[row[i]];
    for (int64_t i = block_bytes; i < row_bytes; ++i) row[i] = t.tail[row[i]];
  }
  return ippStsNoErr;
}

}  // namespace

Status LightnessBlocks(uint8_t* p, int32_t step, Size roi, int32_t level) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  Tables t;
  const float scale = tone::LevelScale(level);
  for (int v = 0; v < 256; ++v) {
    t.block[v] = tone::LightnessBlockByte(static_cast<uint8_t>(v), scale);
    t.tail[v] = tone::LightnessTruncByte(static_cast<uint8_t>(v), level);
  }
  return ApplyTables(p, step, roi, t);
}

Status DarknessBlocks(uint8_t* p, int32_t step, Size roi, int32_t level) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  Tables t;
  const float scale = tone::LevelScale(level);
  for (int v = 0; v < 256; ++v) {
    t.block[v] = tone::DarknessBlockByte(static_cast<uint8_t>(v), scale);
    t.tail[v] = tone::DarknessTruncByte(static_cast<uint8_t>(v), level);
  }
  return ApplyTables(p, step, roi, t);
}

Status ContrastBlocks(uint8_t* p, int32_t step, Size roi, int32_t k) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  Tables t;
  const float factor = tone::ContrastFactorSingle(k);
  for (int v = 0; v < 256; ++v) {
    t.block[v] = tone::ContrastBlockByte(static_cast<uint8_t>(v), factor);
    t.tail[v] = tone::ContrastTailByte(static_cast<uint8_t>(v), factor);
  }
  return ApplyTables(p, step, roi, t);
}

Status SaturationBlocks(uint8_t* p, int32_t step, Size roi, uint32_t s) {
  if (const Status st = CheckOne(p, roi); st != ippStsNoErr) return st;
  const float scale = tone::SaturationScale(s);
  int32_t mean[766];
  int32_t scaled[511];  // difference + 255
  for (int32_t sum = 0; sum < 766; ++sum) {
    mean[sum] = tone::RoundEven(static_cast<float>(sum) * 0.33333334f);
  }
  for (int32_t d = -255; d <= 255; ++d) {
    scaled[d + 255] = tone::RoundEven(static_cast<float>(d) * scale);
  }
  const int32_t blocks = roi.width / 16 * 16;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* row = RowAt(p, step, r);
    for (int32_t x = 0; x < blocks; ++x) {
      uint8_t* px = row + int64_t{x} * 3;
      const int32_t m = mean[px[0] + px[1] + px[2]];  // 0..255
      for (int c = 0; c < 3; ++c) px[c] = tone::ClampByte(WrapAdd(m, scaled[px[c] - m + 255]));
    }
    for (int32_t x = blocks; x < roi.width; ++x) {
      tone::SaturationTruncPixel(row + int64_t{x} * 3, s);
    }
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

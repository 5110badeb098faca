// Lightness, darkness, contrast and saturation: a fast path for widths that are multiples of 4
// (16-pixel blocks rounded to nearest even in single precision, then a truncating tail) and a
// general path for the others. The paths differ by design and are never made to agree.
#include "primitives/tone/tone.h"

#include <cstddef>

#include "effects/effects.h"
#include "effects/frame_walk.h"
#include "primitives/core/strides.h"
#include "primitives/core/wrap.h"
#include "primitives/tone/tone_model.h"

namespace framekit::effects {
namespace {

namespace tone = prim::tone;

void ApplyTable(uint8_t* p, size_t bytes, const uint8_t table[256]) {
  for (size_t i = 0; i < bytes; ++i) p[i] = table[p[i]];
}

int32_t ClampLevel(int32_t amount) { return amount > 255 ? 255 : amount; }

}  // namespace

void LightnessRows(uint8_t* frame, int32_t width, int32_t height, int32_t amount) {
  if (amount <= 0 || height < 1) return;
  const int32_t level = ClampLevel(amount);
  uint8_t table[256];
  for (int v = 0; v < 256; ++v) table[v] = tone::LightnessTruncByte(static_cast<uint8_t>(v), level);
  ApplyTable(frame, RowBytes(width, height), table);
}

void Lightness(uint8_t* frame, int32_t width, int32_t height, int32_t amount) {
  if (amount <= 0) return;
  if (!FastPath(width)) return LightnessRows(frame, width, height, amount);
  prim::Size row;
  if (AsOneRow(width, height, &row)) {
    prim::LightnessBlocks(frame, PackedStride(row.width, 3), row, ClampLevel(amount));
  }
}

void DarknessRows(uint8_t* frame, int32_t width, int32_t height, int32_t amount) {
  if (amount <= 0 || height < 1) return;
  const int32_t level = ClampLevel(amount);
  uint8_t table[256];
  for (int v = 0; v < 256; ++v) table[v] = tone::DarknessTruncByte(static_cast<uint8_t>(v), level);
  ApplyTable(frame, RowBytes(width, height), table);
}

void Darkness(uint8_t* frame, int32_t width, int32_t height, int32_t amount) {
  if (amount <= 0) return;
  if (!FastPath(width)) return DarknessRows(frame, width, height, amount);
  prim::Size row;
  if (AsOneRow(width, height, &row)) {
    prim::DarknessBlocks(frame, PackedStride(row.width, 3), row, ClampLevel(amount));
  }
}

// Both paths are pixel-count walkers here.
void Contrast(uint8_t* frame, int32_t width, int32_t height, int32_t k) {
  if (k == 0) return;
  prim::Size row;
  if (!AsOneRow(width, height, &row)) return;
  if (FastPath(width)) {
    prim::ContrastBlocks(frame, PackedStride(row.width, 3), row, k);
    return;
  }
  const double factor = tone::ContrastFactorDouble(k);
  uint8_t table[256];
  for (int v = 0; v < 256; ++v) {
    table[v] = tone::ContrastGeneralByte(static_cast<uint8_t>(v), factor);
  }
  ApplyTable(frame, size_t{3} * static_cast<size_t>(row.width), table);
}

void Saturation(uint8_t* frame, int32_t width, int32_t height, uint32_t s) {
  if (s == 255) return;
  if (FastPath(width)) {
    prim::Size row;
    if (AsOneRow(width, height, &row)) {
      prim::SaturationBlocks(frame, PackedStride(row.width, 3), row, s);
    }
    return;
  }
  if (height < 1 || width < 1) return;
  // The scaled difference for every difference -255..255 (a channel minus the pixel's mean).
  int32_t scaled[511];
  for (int32_t d = -255; d <= 255; ++d) scaled[d + 255] = WrapMul(d, static_cast<int32_t>(s)) / 255;
  const size_t pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
  uint8_t* p = frame;
  for (size_t i = 0; i < pixels; ++i, p += 3) {
    const int32_t m = (p[0] + p[1] + p[2]) / 3;
    for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(WrapAdd(m, scaled[p[c] - m + 255]));
  }
}

// The frame is changed in place through a table of the 256 results: each byte's result depends
// on that byte only, so the temporary copy that a byte-by-byte rewrite would need is not made
// (no allocation, same bytes). Signed division, product kept as its low 8 bits.
void Posterize(uint8_t* frame, int32_t width, int32_t height, int32_t level) {
  if (level == 0) return;
  uint8_t table[256];
  for (int32_t v = 0; v < 256; ++v) {
    table[v] = static_cast<uint8_t>(WrapMul(WrapDiv(v, level), level % 256));
  }
  ApplyTable(frame, RowBytes(width, height), table);
}

// A zero threshold is a no-op, not "invert everything"; a negative one inverts every pixel.
void Solarize(uint8_t* frame, int32_t width, int32_t height, int32_t threshold) {
  if (threshold == 0 || height < 1 || width < 1) return;
  const size_t pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
  uint8_t* p = frame;
  for (size_t i = 0; i < pixels; ++i, p += 3) {
    if ((p[0] + p[1] + p[2]) / 3 > threshold) {
      p[0] = static_cast<uint8_t>(255 - p[0]);
      p[1] = static_cast<uint8_t>(255 - p[1]);
      p[2] = static_cast<uint8_t>(255 - p[2]);
    }
  }
}

}  // namespace framekit::effects

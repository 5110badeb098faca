// Box blur and sharpen.
//
// The blur's passes are primitives: BlurRows (the horizontal pass both paths share, built in the
// caller's scratch), BlurColumns (the vertical pass, in strips of 16 pixel columns). The paths
// differ on purpose: the fast one (width % 4 == 0) uses radius 6 and rounds its vertical pass
// through a float reciprocal except in the last width % 16 columns; the general one uses radius
// 2 and truncates. Each pass that uses the scratch clears it (its given size) first.
#include "primitives/blur/blur.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "effects/effects.h"
#include "effects/frame_walk.h"
#include "primitives/core/strides.h"
#include "primitives/filter/filter.h"

namespace framekit::effects {
namespace {

struct Scratch {
  uint8_t* bytes;
  int32_t size;
  void Clear() const {
    if (bytes != nullptr && size > 0) std::memset(bytes, 0, static_cast<size_t>(size));
  }
  bool Holds(int64_t needed) const { return bytes != nullptr && size >= needed; }
};

bool Blurrable(const uint8_t* frame, int32_t width, int32_t height, int32_t radius) {
  return frame != nullptr && width >= 1 && height >= 1 && radius >= 0;
}

void Horizontal(uint8_t* frame, int32_t width, int32_t height, int32_t radius,
                const Scratch& scratch) {
  scratch.Clear();
  if (!Blurrable(frame, width, height, radius) || !scratch.Holds(int64_t{3} * width)) return;
  prim::BlurRows(frame, PackedStride(width, 3), {width, height}, radius, scratch.bytes);
}

// Its own zeroed buffer, max(width, height) * 48 bytes; without it the pass is skipped.
void Vertical(uint8_t* frame, int32_t width, int32_t height, int32_t radius,
              int32_t rounded_width) {
  if (!Blurrable(frame, width, height, radius)) return;
  void* work = std::calloc(static_cast<size_t>(std::max(width, height)), 48);
  if (work == nullptr) return;
  prim::BlurColumns(frame, PackedStride(width, 3), {width, height}, radius, rounded_width,
                    static_cast<uint8_t*>(work));
  std::free(work);
}

void FastVertical(uint8_t* frame, int32_t width, int32_t height, int32_t radius) {
  Vertical(frame, width, height, radius, width / 16 * 16);
}

// The general vertical pass walks each column through the scratch: it needs 3 * height bytes and
// ends up holding the last column's results.
void GeneralVertical(uint8_t* frame, int32_t width, int32_t height, int32_t radius,
                     const Scratch& scratch) {
  scratch.Clear();
  if (!Blurrable(frame, width, height, radius) || !scratch.Holds(int64_t{3} * height)) return;
  Vertical(frame, width, height, radius, 0);
  const size_t stride = size_t{3} * static_cast<size_t>(width);
  const uint8_t* last = frame + stride - 3;
  for (int32_t y = 0; y < height; ++y) std::memcpy(scratch.bytes + 3 * y, last + y * stride, 3);
}

}  // namespace

void Blur(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch, int32_t scratch_size) {
  const Scratch s{scratch, scratch_size};
  if (FastPath(width)) {
    Horizontal(frame, width, height, 6, s);
    FastVertical(frame, width, height, 6);
    return;
  }
  Horizontal(frame, width, height, 2, s);
  GeneralVertical(frame, width, height, 2, s);
}

// The flags swap meaning between the paths; the horizontal pass always runs first.
void BlurEx(uint8_t* frame, int32_t width, int32_t height, int32_t kernel, int32_t flag_a,
            int32_t flag_b, uint8_t* scratch, int32_t scratch_size) {
  const Scratch s{scratch, scratch_size};
  const int32_t radius = kernel / 2;
  if (FastPath(width)) {
    if (flag_b != 0) Horizontal(frame, width, height, radius, s);
    if (flag_a != 0) FastVertical(frame, width, height, radius);
    return;
  }
  if (flag_a != 0) Horizontal(frame, width, height, radius, s);
  if (flag_b != 0) GeneralVertical(frame, width, height, radius, s);
}

// The filter reads frame rows 0 .. height - 2 and pixel columns 0 .. width + 1 of them. Only for
// width 1 does the last of those bytes lie past the frame (one byte); that row of the filter is
// then fed a copy of its rows whose byte past the frame repeats the frame's last byte. Its
// result lands in scratch row height - 3, which is not copied back.
void Sharpen(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch) {
  if (frame == nullptr || scratch == nullptr || width < 1 || height < 4) return;
  const int32_t step = RowByteStrideRGB24(width);
  const int32_t rows = height - 3;
  const int64_t frame_bytes = int64_t{step} * height;
  const int64_t last_read = int64_t{step} * (height - 2) + 3 * (int64_t{width} + 1) + 2;
  const int32_t direct = last_read < frame_bytes ? rows : rows - 1;
  if (direct > 0) {
    prim::ippiFilterSharpen_8u_C3R(frame + step + 3, step, scratch + step + 3, step,
                                   {width, direct});
  }
  if (direct < rows) {
    // Rows height - 4 .. height - 2, pixels 0 .. width + 1, at a step of their own.
    constexpr int32_t kStep = 16;
    uint8_t copy[3 * kStep] = {};
    uint8_t out[kStep] = {};
    const int64_t first = int64_t{step} * (height - 4);
    const int32_t row_bytes = 3 * (width + 2);  // width is 1 here: 9 bytes
    for (int32_t r = 0; r < 3; ++r) {
      for (int32_t i = 0; i < row_bytes; ++i) {
        const int64_t at = std::min(first + int64_t{step} * r + i, frame_bytes - 1);
        copy[r * kStep + i] = frame[at];
      }
    }
    prim::ippiFilterSharpen_8u_C3R(copy + kStep + 3, kStep, out + 3, kStep, {width, 1});
    std::memcpy(scratch + int64_t{step} * (height - 3) + 3, out + 3,
                static_cast<size_t>(3 * width));
  }
  std::memmove(frame, scratch, static_cast<size_t>(int64_t{step} * rows));
}

}  // namespace framekit::effects

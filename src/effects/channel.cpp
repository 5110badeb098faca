// Single-channel and band-threshold effects. Both are byte-wise once the channel pattern is
// known: byte i of a frame keeps (or thresholds) its value when i % 3 is the channel and becomes
// 0 otherwise. Keeping a channel takes the frame 48 bytes (16 pixels) at a time through three
// 16-byte masks, with compiler vector types that every target lowers to its own instructions
// (SSE2 on x86-64), and the last pixels one by one; the band test is a primitive.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/effects.h"
#include "primitives/band/band.h"
#include "primitives/core/wrap.h"

namespace framekit::effects {
namespace {

using Bytes16 = uint8_t __attribute__((vector_size(16)));

struct Pattern {
  Bytes16 mask[3];  // 0xFF on the channel's bytes of 48
};

Pattern ChannelPattern(Channel channel) {
  uint8_t bytes[48];
  for (int i = 0; i < 48; ++i) bytes[i] = (i % 3 == static_cast<int>(channel)) ? 0xFF : 0x00;
  Pattern p;
  std::memcpy(p.mask, bytes, sizeof(bytes));
  return p;
}

// Runs op on each 16-byte third of every 16-pixel group, then tail on each remaining pixel.
template <typename VectorOp, typename PixelOp>
void Walk(uint8_t* frame, size_t pixels, const Pattern& pattern, VectorOp op, PixelOp tail) {
  const size_t groups = pixels / 16;
  uint8_t* p = frame;
  for (size_t g = 0; g < groups; ++g, p += 48) {
    for (int k = 0; k < 3; ++k) {
      Bytes16 v;
      std::memcpy(&v, p + 16 * k, 16);
      v = op(v, pattern.mask[k]);
      std::memcpy(p + 16 * k, &v, 16);
    }
  }
  for (size_t i = groups * 16; i < pixels; ++i, p += 3) tail(p);
}

}  // namespace

// A pixel-count walker: the frame is width * height pixels (wrapped 32-bit count), no padding.
void KeepChannel(uint8_t* frame, int32_t width, int32_t height, Channel keep) {
  const int32_t count = WrapMul(width, height);
  if (count <= 0) return;
  const int k = static_cast<int>(keep);
  Walk(
      frame, static_cast<size_t>(count), ChannelPattern(keep),
      [](Bytes16 v, Bytes16 mask) { return v & mask; },
      [k](uint8_t* p) {
        for (int c = 0; c < 3; ++c) {
          if (c != k) p[c] = 0;
        }
      });
}

// A row walker over height rows of 3 * width bytes: the open band low < v < high gives 255 on
// the channel, everything else 0. Rows too long for a 32-bit step go one at a time.
void BandThreshold(uint8_t* frame, int32_t width, int32_t height, Channel channel, uint8_t low,
                   uint8_t high) {
  if (height < 1 || width < 1) return;
  const int32_t k = static_cast<int32_t>(channel);
  if (width <= INT32_MAX / 3) {
    prim::BandThresholdC3(frame, 3 * width, {width, height}, k, low, high);
    return;
  }
  const size_t row_bytes = size_t{3} * static_cast<size_t>(width);
  for (int32_t r = 0; r < height; ++r) {
    prim::BandThresholdC3(frame + row_bytes * static_cast<size_t>(r), 0, {width, 1}, k, low, high);
  }
}

}  // namespace framekit::effects

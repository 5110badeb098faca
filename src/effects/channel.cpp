// Single-channel and band-threshold effects.
#include <cstddef>
#include <cstring>

#include "effects/effects.h"
#include "primitives/core/wrap.h"

namespace framekit::effects {
namespace {

// The byte masks of 8 pixels (24 bytes) as three little-endian words: 0xFF on the kept channel.
void ChannelWords(Channel keep, uint64_t words[3]) {
  uint8_t bytes[24];
  for (int i = 0; i < 24; ++i) bytes[i] = (i % 3 == static_cast<int>(keep)) ? 0xFF : 0x00;
  std::memcpy(words, bytes, sizeof(bytes));
}

}  // namespace

// A pixel-count walker: the frame is width * height pixels, no row padding.
void KeepChannel(uint8_t* frame, int32_t width, int32_t height, Channel keep) {
  const int32_t count = WrapMul(width, height);
  if (count <= 0) return;
  uint64_t mask[3];
  ChannelWords(keep, mask);
  const size_t groups = static_cast<size_t>(count) / 8;
  uint8_t* p = frame;
  for (size_t g = 0; g < groups; ++g, p += 24) {
    uint64_t w[3];
    std::memcpy(w, p, 24);
    w[0] &= mask[0];
    w[1] &= mask[1];
    w[2] &= mask[2];
    std::memcpy(p, w, 24);
  }
  const int k = static_cast<int>(keep);
  for (size_t i = groups * 8; i < static_cast<size_t>(count); ++i, p += 3) {
    for (int c = 0; c < 3; ++c) {
      if (c != k) p[c] = 0;
    }
  }
}

// A row walker: the open band low < v < high gives 255 on the channel, the rest 0.
void BandThreshold(uint8_t* frame, int32_t width, int32_t height, Channel channel, uint8_t low,
                   uint8_t high) {
  if (height < 1 || width < 1) return;
  uint8_t table[256];
  for (int v = 0; v < 256; ++v) table[v] = (v > low && v < high) ? 255 : 0;
  const int k = static_cast<int>(channel);
  const size_t pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
  uint8_t* p = frame;
  for (size_t i = 0; i < pixels; ++i, p += 3) {
    const uint8_t out = table[p[k]];
    p[0] = p[1] = p[2] = 0;
    p[k] = out;
  }
}

}  // namespace framekit::effects

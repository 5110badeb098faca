// Per-pixel formulas of the colour-conversion primitives, shared by every variant (the vector
// bodies use them for their tails). Internal linkage: a copy compiled inside a per-ISA file must
// never be picked by the linker for baseline code.
//
// All arithmetic is 32-bit signed with arithmetic right shifts; no intermediate exceeds 2^26 in
// magnitude, so nothing overflows.
#pragma once

#include <cstdint>

namespace framekit::prim {

static inline uint8_t Clamp255(int32_t v) {
  return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v));
}

// 4:2:2 to BGR, studio range: t = 76284 * (Y - 16) + 32768; every channel rounds.
static inline void YuvToBgr422(int32_t y, int32_t u, int32_t v, uint8_t* bgr) {
  const int32_t t = 76284 * y - 1187776;
  bgr[0] = Clamp255((t + 132186 * u) >> 16);
  bgr[1] = Clamp255((t - 25690 * u - 53281 * v) >> 16);
  bgr[2] = Clamp255((t + 104595 * v) >> 16);
}

// The same sums for the vector bodies, as 16-bit weights of terms that byte multiply-adds make
// from each Y0 U Y1 V group: (4 Y0, 4 Y1), (6 U, 5 V) and (U, V), U and V as stored (0..255).
//   76284 Y = 19071 (4 Y)
//   blue  = 76284 Y + 22031 (6 U) - 18107584
//   green = 76284 Y - 25689 U + 12255 V - (U + 65536 V) + 8920512, (U, V) read as one 32-bit value
//   red   = 76284 Y + 20919 (5 V) - 14575936
// Each sum is the reference's exactly; the channels are its high 16 bits.
struct Split422 {
  static constexpr int32_t kLumaBytes = 0x00040004;    // byte weights 4, 0, 4, 0
  static constexpr int32_t kChromaBytes = 0x05000600;  // byte weights 0, 6, 0, 5
  static constexpr int16_t kLuma = 19071;
  static constexpr int16_t kBlue = 22031, kRed = 20919;
  static constexpr int16_t kGreenU = -25689, kGreenV = 12255;
  static constexpr int32_t kBlueBias = -18107584, kGreenBias = 8920512, kRedBias = -14575936;
};
static_assert(4 * Split422::kLuma == 76284 && 6 * Split422::kBlue == 132186 &&
              5 * Split422::kRed == 104595 && Split422::kGreenU - 1 == -25690 &&
              Split422::kGreenV - 65536 == -53281);
static_assert(Split422::kBlueBias == -1187776 - 132186 * 128 &&
              Split422::kGreenBias == -1187776 + (25690 + 53281) * 128 &&
              Split422::kRedBias == -1187776 - 104595 * 128);

// BGR to studio-range luma with red at byte 2: offset 16 and rounding in 1081344 (16.5 * 65536).
// The largest result is 235, so there is no clamp.
static inline uint8_t Luma422(const uint8_t* bgr) {
  return static_cast<uint8_t>((16843 * bgr[2] + 33030 * bgr[1] + 6423 * bgr[0] + 1081344) >> 16);
}

// Chroma of a pixel pair from the channel sums (each 0..510). The sum, less 16760832 (128 * 2^17
// minus a rounding bias of 2^14), is taken as an unsigned 32-bit value, shifted by 17 and cut to
// its low byte: 128 plus the pair's mean chroma, rounded with a bias of one eighth.
static inline uint8_t PairChroma(int32_t x) {
  const uint32_t biased = static_cast<uint32_t>(x) - 16760832u;
  return static_cast<uint8_t>(biased >> 17);
}
static inline uint8_t PairU(int32_t b, int32_t g, int32_t r) {
  return PairChroma(-9699 * r - 19071 * g + 28770 * b);
}
static inline uint8_t PairV(int32_t b, int32_t g, int32_t r) {
  return PairChroma(28770 * r - 24117 * g - 4653 * b);
}
// One pixel pair (6 BGR bytes) to Y0, U, Y1, V.
static inline void BgrPairTo422(const uint8_t* s, uint8_t* d) {
  const int32_t b = s[0] + s[3], g = s[1] + s[4], r = s[2] + s[5];
  d[0] = Luma422(s);
  d[1] = PairU(b, g, r);
  d[2] = Luma422(s + 3);
  d[3] = PairV(b, g, r);
}
// An odd last pixel fills the two bytes left in its row: its Y, and the U of the pixel paired with
// itself (the V slot belongs to no row byte; readers take the previous pair's V).
static inline void BgrLastTo422(const uint8_t* s, uint8_t* d) {
  d[0] = Luma422(s);
  d[1] = PairU(2 * s[0], 2 * s[1], 2 * s[2]);
}

// 4:2:0 to BGR, luma at full range. a comes from the second plane, b from the third. Bytes 0 and
// 2 round, byte 1 truncates; the weights 1.140 (b, byte 0) and 2.032 (a, byte 2) are kept as
// they are.
static inline void YuvToBgr420(int32_t y, int32_t a, int32_t b, uint8_t* bgr) {
  const int32_t t = y << 16;
  bgr[0] = Clamp255((t + 74711 * b + 32768) >> 16);
  bgr[1] = Clamp255((t - 38076 * b - 25821 * a) >> 16);
  bgr[2] = Clamp255((t + 133169 * a + 32768) >> 16);
}

// BGR to 4:2:0 luma: weight 0.257 on byte 0 and 0.098 on byte 2.
static inline uint8_t Luma420(const uint8_t* p) {
  return static_cast<uint8_t>((16843 * p[0] + 33030 * p[1] + 6423 * p[2] + 1081344) >> 16);
}

// 4:2:0 chroma from the channel sums of a 2 x 2 block (each 0..1020): 128 plus the rounded mean
// of the four pixels' weighted sums. The result lies in 16..240, so there is no clamp.
static inline uint8_t BlockChroma(int32_t x) {
  return static_cast<uint8_t>((x + (128 << 18) + (1 << 17)) >> 18);
}
// The U weights on bytes 0, 1, 2 (red difference: byte 2 carries the 0.439).
static inline uint8_t BlockU(int32_t s0, int32_t s1, int32_t s2) {
  return BlockChroma(-9699 * s0 - 19071 * s1 + 28770 * s2);
}
// The V weights on bytes 0, 1, 2 (blue difference: byte 0 carries the 0.439).
static inline uint8_t BlockV(int32_t s0, int32_t s1, int32_t s2) {
  return BlockChroma(28770 * s0 - 24117 * s1 - 4653 * s2);
}

}  // namespace framekit::prim

// Per-pixel formulas of the colour-conversion primitives, shared by every variant (the vector
// bodies use them for their tails). Internal linkage: a copy compiled inside a per-ISA file must
// never be picked by the linker for baseline code.
//
// All arithmetic is 32-bit signed with arithmetic right shifts; no intermediate exceeds 2^26 in
// magnitude, so nothing overflows.
#pragma once

#include <cstdint>

#include "primitives/colour/colour.h"
#include "primitives/core/rows.h"

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

// BGR to YUV weights in 16.16 fixed point, by channel: luma 0.257 red, 0.504 green, 0.098 blue
// with 16.5 (offset 16 and rounding) in kLumaBias; U and V the red and blue differences. The
// 4:2:2 formulas put red at byte 2; the 4:2:0 ones put these red weights on byte 0.
struct BgrToYuv {
  static constexpr int32_t kLumaR = 16843, kLumaG = 33030, kLumaB = 6423, kLumaBias = 1081344;
  static constexpr int32_t kUR = -9699, kUG = -19071, kUB = 28770;
  static constexpr int32_t kVR = 28770, kVG = -24117, kVB = -4653;
  static constexpr int32_t kPairOffset = 16760832;  // 128 * 2^17 less a rounding bias of 2^14
};

// BGR to studio-range luma with red at byte 2. The largest result is 235, so there is no clamp.
static inline uint8_t Luma422(const uint8_t* bgr) {
  using K = BgrToYuv;
  return static_cast<uint8_t>(
      (K::kLumaR * bgr[2] + K::kLumaG * bgr[1] + K::kLumaB * bgr[0] + K::kLumaBias) >> 16);
}

// Chroma of a pixel pair from the channel sums (each 0..510). The sum less kPairOffset is taken
// as an unsigned 32-bit value, shifted by 17 and cut to its low byte: 128 plus the pair's mean
// chroma, rounded with a bias of one eighth.
static inline uint8_t PairChroma(int32_t x) {
  const uint32_t biased = static_cast<uint32_t>(x) - static_cast<uint32_t>(BgrToYuv::kPairOffset);
  return static_cast<uint8_t>(biased >> 17);
}
static inline uint8_t PairU(int32_t b, int32_t g, int32_t r) {
  return PairChroma(BgrToYuv::kUR * r + BgrToYuv::kUG * g + BgrToYuv::kUB * b);
}
static inline uint8_t PairV(int32_t b, int32_t g, int32_t r) {
  return PairChroma(BgrToYuv::kVR * r + BgrToYuv::kVG * g + BgrToYuv::kVB * b);
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
  using K = BgrToYuv;
  return static_cast<uint8_t>(
      (K::kLumaR * p[0] + K::kLumaG * p[1] + K::kLumaB * p[2] + K::kLumaBias) >> 16);
}

// 4:2:0 chroma from the channel sums of a 2 x 2 block (each 0..1020): 128 plus the rounded mean
// of the four pixels' weighted sums. The result lies in 16..240, so there is no clamp.
static inline uint8_t BlockChroma(int32_t x) {
  return static_cast<uint8_t>((x + (128 << 18) + (1 << 17)) >> 18);
}
// The U weights on bytes 0, 1, 2 (red difference: byte 2 carries the 0.439).
static inline uint8_t BlockU(int32_t s0, int32_t s1, int32_t s2) {
  return BlockChroma(BgrToYuv::kUR * s0 + BgrToYuv::kUG * s1 + BgrToYuv::kUB * s2);
}
// The V weights on bytes 0, 1, 2 (blue difference: byte 0 carries the 0.439).
static inline uint8_t BlockV(int32_t s0, int32_t s1, int32_t s2) {
  return BlockChroma(BgrToYuv::kVR * s0 + BgrToYuv::kVG * s1 + BgrToYuv::kVB * s2);
}

// The same sums for the vector bodies: each pixel as 16-bit words (byte 0, byte 1) and
// (byte 1, byte 2), weighted with one multiply-add each (Lo and Hi); green, whose 33030 does not
// fit 16 bits, is split over both. The 4:2:0 chroma pairs carry the block bias in the byte-1 word
// of Hi, which the vector bodies replace by kBlockBiasWord; the 4:2:2 bodies add kPairBias, whose
// bits 17-24 after the sum are the scalar unsigned shift's low byte (it is kPairOffset less 2^25).
struct SplitBgr {
  static constexpr int32_t kLuma422Lo = PairWord(6423, 16515), kLuma422Hi = PairWord(16515, 16843);
  static constexpr int32_t kU422Lo = PairWord(28770, -19071), kU422Hi = PairWord(0, -9699);
  static constexpr int32_t kV422Lo = PairWord(-4653, -24117), kV422Hi = PairWord(0, 28770);
  static constexpr int32_t kLuma420Lo = PairWord(16843, 16515), kLuma420Hi = PairWord(16515, 6423);
  static constexpr int32_t kU420Lo = PairWord(-9699, -19071), kU420Hi = PairWord(0, 28770);
  static constexpr int32_t kV420Lo = PairWord(28770, -24117), kV420Hi = PairWord(0, -4653);
  static constexpr int16_t kBlockBiasWord = 2056;  // times the 16384 in Hi's byte-1 weight
  static constexpr int32_t kU420HiBiased = PairWord(16384, 28770);
  static constexpr int32_t kV420HiBiased = PairWord(16384, -4653);
  static constexpr int32_t kPairBias = 16793600;
};
// (byte 0, byte 1, byte 2) weights of a Lo/Hi pair.
static constexpr bool SplitIs(int32_t lo, int32_t hi, int32_t w0, int32_t w1, int32_t w2) {
  return LowWeight(lo) == w0 && HighWeight(lo) + LowWeight(hi) == w1 && HighWeight(hi) == w2;
}
static_assert(SplitIs(SplitBgr::kLuma422Lo, SplitBgr::kLuma422Hi, BgrToYuv::kLumaB,
                      BgrToYuv::kLumaG, BgrToYuv::kLumaR) &&
              SplitIs(SplitBgr::kU422Lo, SplitBgr::kU422Hi, BgrToYuv::kUB, BgrToYuv::kUG,
                      BgrToYuv::kUR) &&
              SplitIs(SplitBgr::kV422Lo, SplitBgr::kV422Hi, BgrToYuv::kVB, BgrToYuv::kVG,
                      BgrToYuv::kVR));
static_assert(SplitIs(SplitBgr::kLuma420Lo, SplitBgr::kLuma420Hi, BgrToYuv::kLumaR,
                      BgrToYuv::kLumaG, BgrToYuv::kLumaB) &&
              SplitIs(SplitBgr::kU420Lo, SplitBgr::kU420Hi, BgrToYuv::kUR, BgrToYuv::kUG,
                      BgrToYuv::kUB) &&
              SplitIs(SplitBgr::kV420Lo, SplitBgr::kV420Hi, BgrToYuv::kVR, BgrToYuv::kVG,
                      BgrToYuv::kVB));
static_assert(HighWeight(SplitBgr::kU420HiBiased) == HighWeight(SplitBgr::kU420Hi) &&
              HighWeight(SplitBgr::kV420HiBiased) == HighWeight(SplitBgr::kV420Hi) &&
              SplitBgr::kBlockBiasWord * LowWeight(SplitBgr::kU420HiBiased) ==
                  (128 << 18) + (1 << 17) &&
              LowWeight(SplitBgr::kU420HiBiased) == LowWeight(SplitBgr::kV420HiBiased));
static_assert(SplitBgr::kPairBias + BgrToYuv::kPairOffset == (1 << 25));

// ---- Scalar rows: the reference bodies, and the vector bodies' tails from `from` on.

// 4:2:2 to BGR, pixels [from, width) of a row, from even; an odd last pixel takes Y and U from
// the two bytes after the last group and V from that group.
static inline void Row422ToBgr(const uint8_t* s, uint8_t* d, int32_t from, int32_t width) {
  s += 2 * from;
  d += 3 * from;
  int32_t x = from;
  for (; x + 2 <= width; x += 2, s += 4, d += 6) {
    const int32_t u = s[1] - 128, v = s[3] - 128;
    YuvToBgr422(s[0], u, v, d);
    YuvToBgr422(s[2], u, v, d + 3);
  }
  if (x < width) YuvToBgr422(s[0], s[1] - 128, s[-1] - 128, d);
}

// BGR to 4:2:2, pixels [from, width) of a row, from even.
static inline void RowBgrTo422(const uint8_t* s, uint8_t* d, int32_t from, int32_t width) {
  s += 3 * from;
  d += 2 * from;
  int32_t x = from;
  for (; x + 2 <= width; x += 2, s += 6, d += 4) BgrPairTo422(s, d);
  if (x < width) BgrLastTo422(s, d);
}

// One output row pair of a 4:2:0 frame: two luma rows and one row of each chroma plane.
struct Rows420 {
  uint8_t* y0;
  uint8_t* y1;
  uint8_t* p2;
  uint8_t* p3;
};

// 4:2:0 to BGR, 2 x 2 blocks [from, to) of a row pair.
static inline void Blocks420ToBgr(const uint8_t* y0, const uint8_t* y1, const uint8_t* p2,
                                  const uint8_t* p3, uint8_t* d0, uint8_t* d1, int32_t from,
                                  int32_t to) {
  for (int32_t j = from; j < to; ++j) {
    const int32_t a = p2[j] - 128, b = p3[j] - 128;
    for (int32_t x = 2 * j; x < 2 * j + 2; ++x) {
      YuvToBgr420(y0[x], a, b, d0 + 3 * x);
      YuvToBgr420(y1[x], a, b, d1 + 3 * x);
    }
  }
}

// BGR to 4:2:0, 2 x 2 blocks [from, to) of the source rows s0 (upper) and s1.
static inline void BgrBlocksTo420(const uint8_t* s0, const uint8_t* s1, const Rows420& out,
                                  int32_t from, int32_t to) {
  for (int32_t j = from; j < to; ++j) {
    const uint8_t* a = s0 + 6 * j;
    const uint8_t* b = s1 + 6 * j;
    out.y0[2 * j] = Luma420(a);
    out.y0[2 * j + 1] = Luma420(a + 3);
    out.y1[2 * j] = Luma420(b);
    out.y1[2 * j + 1] = Luma420(b + 3);
    const int32_t c0 = a[0] + a[3] + b[0] + b[3];
    const int32_t c1 = a[1] + a[4] + b[1] + b[4];
    const int32_t c2 = a[2] + a[5] + b[2] + b[5];
    out.p2[j] = BlockU(c0, c1, c2);
    out.p3[j] = BlockV(c0, c1, c2);
  }
}

// ---- Whole frames: the checks, then a row function over every row (4:2:2) or row pair
// (4:2:0; an odd last row or column is left, and reported as ippStsDoubleSize).

template <typename RowFn>
static inline Status Convert422(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi, RowFn row) {
  if (const Status s = Check422(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    row(RowAt(src, src_step, r), RowAt(dst, dst_step, r), roi.width);
  }
  return ippStsNoErr;
}

// pair(y0, y1, p2, p3, d0, d1, blocks)
template <typename PairFn>
static inline Status Convert420ToBgr(const uint8_t* const src[3], const int32_t src_step[3],
                                     uint8_t* dst, int32_t dst_step, Size roi, PairFn pair) {
  if (const Status s = Check420(src, src_step, dst, roi); s != ippStsNoErr) return s;
  for (int32_t i = 0; i < roi.height / 2; ++i) {
    pair(RowAt(src[0], src_step[0], 2 * i), RowAt(src[0], src_step[0], 2 * i + 1),
         RowAt(src[1], src_step[1], i), RowAt(src[2], src_step[2], i),
         RowAt(dst, dst_step, 2 * i), RowAt(dst, dst_step, 2 * i + 1), roi.width / 2);
  }
  return Status420(roi);
}

// Output row pair k of dst as Rows420.
static inline Rows420 RowPairOf(uint8_t* const dst[3], const int32_t dst_step[3], int32_t k) {
  return {RowAt(dst[0], dst_step[0], 2 * k), RowAt(dst[0], dst_step[0], 2 * k + 1),
          RowAt(dst[1], dst_step[1], k), RowAt(dst[2], dst_step[2], k)};
}

// pair(s0, s1, rows, blocks)
template <typename PairFn>
static inline Status ConvertBgrTo420(const uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                     const int32_t dst_step[3], Size roi, PairFn pair) {
  if (const Status s = Check420(dst, dst_step, src, roi); s != ippStsNoErr) return s;
  for (int32_t i = 0; i < roi.height / 2; ++i) {
    pair(RowAt(src, src_step, 2 * i), RowAt(src, src_step, 2 * i + 1), RowPairOf(dst, dst_step, i),
         roi.width / 2);
  }
  return Status420(roi);
}

}  // namespace framekit::prim

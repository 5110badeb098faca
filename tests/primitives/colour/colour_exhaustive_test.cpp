// The colour bodies of every class against the per-pixel formulas where the vector bodies could
// go wrong: 4:2:2 to BGR on every (Y, U, V) triple (the vector bodies regroup the fixed-point
// sums, and only the extremes of each input show a regrouping that loses a carry or a sign), and
// BGR to 4:2:0 and 4:2:2 on every luma triple and at the chroma extremes.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <vector>

#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"

namespace framekit::prim {
namespace {

TEST(YCbCr422ToBGR, EveryClassMatchesTheFormulaOnEveryTriple) {
  // One frame per U: row v holds V = v, and its 128 groups carry Y = 0..255 in order.
  constexpr int32_t kWidth = 256, kHeight = 256;
  std::vector<uint8_t> src(size_t{2} * kWidth * kHeight);
  std::vector<uint8_t> dst(size_t{3} * kWidth * kHeight);
  std::set<PackedConvertFn> seen;
  for (int cls = 0; cls <= DetectedClass(); ++cls) {
    const PackedConvertFn fn = ippiYCbCr422ToBGR_8u_C2C3RTable[cls];
    if (!seen.insert(fn).second) continue;
    int mismatches = 0;
    for (int32_t u = 0; u < 256; ++u) {
      for (int32_t v = 0; v < kHeight; ++v) {
        uint8_t* row = &src[size_t{2} * kWidth * v];
        for (int32_t g = 0; g < kWidth / 2; ++g) {
          row[4 * g] = static_cast<uint8_t>(2 * g);
          row[4 * g + 1] = static_cast<uint8_t>(u);
          row[4 * g + 2] = static_cast<uint8_t>(2 * g + 1);
          row[4 * g + 3] = static_cast<uint8_t>(v);
        }
      }
      ASSERT_EQ(fn(src.data(), 2 * kWidth, dst.data(), 3 * kWidth, {kWidth, kHeight}), 0);
      for (int32_t v = 0; v < kHeight; ++v) {
        for (int32_t y = 0; y < kWidth; ++y) {
          uint8_t want[3];
          YuvToBgr422(y, u - 128, v - 128, want);
          const uint8_t* got = &dst[size_t{3} * (kWidth * v + y)];
          for (int c = 0; c < 3; ++c) {
            if (got[c] != want[c] && ++mismatches <= 5) {
              ADD_FAILURE() << "class " << cls << " Y " << y << " U " << u << " V " << v
                            << " byte " << c << ": " << int{got[c]} << " != " << int{want[c]};
            }
          }
        }
      }
    }
    EXPECT_EQ(mismatches, 0) << "class " << cls;
  }
}

// The BGR-to-YUV bodies take luma and chroma from fixed bit positions of the biased sums, which
// is exact only while every sum stays in its range. Every class against the per-pixel formulas:
// luma of every (byte 0, byte 1, byte 2) triple, with the chroma of the blocks and pairs those
// frames make, and chroma where its sums reach their extremes (pixels at 0 or 255 in every
// combination over a 2 x 2 block or a pair).

// BGR pixels holding the triples first, first + 1, ... (byte 0 the low bits).
std::vector<uint8_t> TripleFrame(int32_t first, int32_t pixels) {
  std::vector<uint8_t> bgr(size_t{3} * static_cast<size_t>(pixels));
  for (int32_t i = 0; i < pixels; ++i) {
    const int32_t t = first + i;
    bgr[size_t{3} * i] = static_cast<uint8_t>(t);
    bgr[size_t{3} * i + 1] = static_cast<uint8_t>(t >> 8);
    bgr[size_t{3} * i + 2] = static_cast<uint8_t>(t >> 16);
  }
  return bgr;
}

// One row of pixel pairs, or two rows of 2 x 2 blocks (`rows`), `groups` of them side by side:
// byte c of pixel p of group g (pixels numbered along the rows) is 255 when bit 3p + c of g is
// set and 0 otherwise, so the groups take every corner of the byte range.
std::vector<uint8_t> CornerFrame(int32_t groups, int32_t rows) {
  const int32_t width = 2 * groups;
  std::vector<uint8_t> bgr(size_t{3} * static_cast<size_t>(width * rows));
  for (int32_t g = 0; g < groups; ++g) {
    for (int32_t p = 0; p < 2 * rows; ++p) {
      const size_t at = size_t{3} * static_cast<size_t>((p / 2) * width + 2 * g + p % 2);
      for (int c = 0; c < 3; ++c) bgr[at + c] = ((g >> (3 * p + c)) & 1) ? 255 : 0;
    }
  }
  return bgr;
}

// Converts a BGR frame with fn and counts the bytes that differ from the formulas.
int Mismatches420(PackedToPlanarFn fn, const std::vector<uint8_t>& bgr, int32_t width) {
  const int32_t blocks = width / 2;
  std::vector<uint8_t> out(size_t{2} * width + size_t{2} * blocks);
  uint8_t* const planes[3] = {out.data(), out.data() + 2 * width, out.data() + 2 * width + blocks};
  const int32_t steps[3] = {width, blocks, blocks};
  if (fn(bgr.data(), 3 * width, planes, steps, {width, 2}) != 0) return 1;
  int bad = 0;
  for (int32_t i = 0; i < 2 * width; ++i) bad += out[i] != Luma420(&bgr[size_t{3} * i]);
  for (int32_t j = 0; j < blocks; ++j) {
    int32_t s[3] = {};
    for (const int32_t px : {2 * j, 2 * j + 1, width + 2 * j, width + 2 * j + 1}) {
      for (int c = 0; c < 3; ++c) s[c] += bgr[size_t{3} * px + c];
    }
    bad += planes[1][j] != BlockU(s[0], s[1], s[2]);
    bad += planes[2][j] != BlockV(s[0], s[1], s[2]);
  }
  return bad;
}

int Mismatches422(PackedConvertFn fn, const std::vector<uint8_t>& bgr, int32_t width) {
  std::vector<uint8_t> out(size_t{2} * width);
  if (fn(bgr.data(), 3 * width, out.data(), 2 * width, {width, 1}) != 0) return 1;
  int bad = 0;
  for (int32_t x = 0; x < width; x += 2) {
    const uint8_t* p = &bgr[size_t{3} * x];
    const int32_t b = p[0] + p[3], g = p[1] + p[4], r = p[2] + p[5];
    bad += out[2 * x] != Luma422(p);
    bad += out[2 * x + 1] != PairU(b, g, r);
    bad += out[2 * x + 2] != Luma422(p + 3);
    bad += out[2 * x + 3] != PairV(b, g, r);
  }
  return bad;
}

TEST(BGRToYUV, EveryClassMatchesTheFormulasOnEveryLumaTripleAndTheChromaExtremes) {
  constexpr int32_t kRun = 4096;  // pixels a row
  std::set<PackedToPlanarFn> seen420;
  std::set<PackedConvertFn> seen422;
  for (int cls = 0; cls <= DetectedClass(); ++cls) {
    const PackedToPlanarFn to420 = ippiBGRToYUV420_8u_C3P3RTable[cls];
    const PackedConvertFn to422 = ippiBGRToYCbCr422_8u_C3C2RTable[cls];
    if (seen420.insert(to420).second) {
      int bad = 0;
      for (int32_t first = 0; first < (1 << 24); first += 2 * kRun) {
        bad += Mismatches420(to420, TripleFrame(first, 2 * kRun), kRun);
      }
      bad += Mismatches420(to420, CornerFrame(1 << 12, 2), 2 << 12);
      EXPECT_EQ(bad, 0) << "4:2:0, class " << cls;
    }
    if (seen422.insert(to422).second) {
      int bad = 0;
      for (int32_t first = 0; first < (1 << 24); first += kRun) {
        bad += Mismatches422(to422, TripleFrame(first, kRun), kRun);
      }
      bad += Mismatches422(to422, CornerFrame(1 << 6, 1), 2 << 6);
      EXPECT_EQ(bad, 0) << "4:2:2, class " << cls;
    }
  }
}

}  // namespace
}  // namespace framekit::prim

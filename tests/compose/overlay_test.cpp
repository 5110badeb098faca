// Overlay drawing through its exports: the two roundings on worked pixels, placement and
// strides, the opaque copies, the alpha shift's two paths, and the composite with its checks.
#include <gtest/gtest.h>

#include <vector>

#include "framekit/framekit.h"
#include "primitives/blend/blend.h"

namespace framekit {
namespace {

using Bytes = std::vector<uint8_t>;

// One blend of a uniform overlay (colour s, fourth byte a) onto a uniform destination c, at a
// width of 4 (rounded to nearest even) or 5 (arithmetic shift); returns the first channel.
enum class Kind { kAlpha, kConstant, kScaled };
uint8_t BlendOnce(Kind kind, uint8_t s, uint8_t c, uint8_t a, uint8_t t, int32_t width) {
  const int bpp = kind == Kind::kConstant ? 3 : 4;
  Bytes src(static_cast<size_t>(bpp * 8 * 2), s), dst(static_cast<size_t>(3 * 8 * 2), c);
  if (bpp == 4) {
    for (size_t i = 3; i < src.size(); i += 4) src[i] = a;
  }
  switch (kind) {
    case Kind::kAlpha:
      Draw_RGB32OnRGB24(src.data(), width, 2, dst.data(), width, 2, 0, 0);
      break;
    case Kind::kConstant:
      Draw_RGB24OnRGB24_Transp(src.data(), width, 2, dst.data(), width, 2, 0, 0, t);
      break;
    case Kind::kScaled:
      Draw_RGB32OnRGB24_Transp(src.data(), width, 2, dst.data(), width, 2, 0, 0, t);
      break;
  }
  // Every covered byte of the second row holds the same value as the first one.
  EXPECT_EQ(dst[static_cast<size_t>(3 * width + 3 * width - 1 + (width % 4 ? 1 : 0))], dst[0]);
  return dst[0];
}

TEST(Overlay, RoundingOfBothPaths) {
  const struct {
    Kind kind;
    uint8_t s, c, a, t;
    uint8_t rounded, shifted;  // widths multiples of 4, other widths
  } cases[] = {
      {Kind::kAlpha, 255, 0, 255, 0, 254, 254},  // 254.004 either way: never a full cover
      {Kind::kAlpha, 1, 0, 128, 0, 0, 0},        // 0.5: the tie goes to even
      {Kind::kAlpha, 3, 0, 128, 0, 2, 1},        // 1.5: to even (2); the shift floors
      {Kind::kAlpha, 0, 255, 255, 0, 1, 0},      // -254.004: nearest, floor -255
      {Kind::kAlpha, 200, 90, 0, 0, 90, 90},     // alpha 0 leaves the pixel
      {Kind::kConstant, 3, 0, 0, 128, 2, 1},     // the constant in place of alpha
      {Kind::kConstant, 17, 99, 0, 0, 99, 99},   // t 0 leaves the pixel
      {Kind::kConstant, 255, 0, 0, 255, 254, 254},
      {Kind::kScaled, 255, 0, 255, 255, 253, 253},  // alpha 254 (255 * 255 / 256 truncated)
      {Kind::kScaled, 40, 8, 200, 0, 8, 8},         // t 0: alpha 0
      {Kind::kScaled, 5, 0, 128, 192, 2, 1},        // alpha 96: 1.875 and 1
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(testing::Message() << "kind " << static_cast<int>(k.kind) << " s " << +k.s << " c "
                                    << +k.c << " a " << +k.a << " t " << +k.t);
    EXPECT_EQ(BlendOnce(k.kind, k.s, k.c, k.a, k.t, 4), k.rounded);
    EXPECT_EQ(BlendOnce(k.kind, k.s, k.c, k.a, k.t, 5), k.shifted);
  }
}

// A 2 x 2 overlay at (x, y) of a 5-pixel-wide RGB24 destination (stride 16): bytes land at
// y * 16 + 3 * x, nothing is clipped (x = 4 runs into the next row), the rest is untouched.
TEST(Overlay, PlacementWithoutClipping) {
  const Bytes src = {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0};  // stride 8
  for (const auto& [x, y] : {std::pair{0, 0}, std::pair{2, 1}, std::pair{4, 0}}) {
    Bytes dst(16 * 4, 0xEE), expected = dst;
    for (int r = 0; r < 2; ++r) {
      for (int i = 0; i < 6; ++i)
        expected[static_cast<size_t>((y + r) * 16 + 3 * x + i)] = src[8 * r + i];
    }
    EXPECT_EQ(Draw_RGB24OnRGB24(src.data(), 2, 2, dst.data(), 5, 0, x, y), 0);
    EXPECT_EQ(dst, expected) << x << ", " << y;
    Bytes dst_s(16 * 4, 0xEE);
    EXPECT_EQ(Draw_RGB24OnRGB24S(src.data(), 2, 2, 8, dst_s.data(), 0, 0, 16, x, y), 0);
    EXPECT_EQ(dst_s, expected);
  }
  Bytes dst(64);
  EXPECT_EQ(Draw_RGB24OnRGB24(nullptr, 2, 2, dst.data(), 5, 0, 0, 0), -8);
  EXPECT_EQ(Draw_RGB24OnRGB24(src.data(), 0, 2, dst.data(), 5, 0, 0, 0), -6);
}

// The S variant's path follows the widths, not the strides.
TEST(Overlay, StridedBlendChoosesByWidths) {
  for (const int32_t width : {4, 5}) {
    Bytes src(64 * 2, 3), dst(48 * 2, 0);
    for (size_t i = 3; i < src.size(); i += 4) src[i] = 128;
    Draw_RGB32OnRGB24S(src.data(), width, 2, 64, dst.data(), width, 0, 48, 0, 0);
    EXPECT_EQ(dst[48], width == 4 ? 2 : 1);  // 1.5: even rounding or the shift's floor
    EXPECT_EQ(dst[47], 0);                   // beyond the pixels of a row
  }
}

TEST(Overlay, RGB24IntoRGB32SetsAlpha) {
  const Bytes src = {10, 20, 30, 40, 50, 60, 0, 0};  // 2 x 1, stride 8
  for (const int32_t dst_width : {3, 4}) {
    Bytes dst(static_cast<size_t>(4 * dst_width * 2), 7), expected = dst;
    const size_t at = static_cast<size_t>(4 * dst_width + 4);  // (1, 1)
    const uint8_t px[8] = {10, 20, 30, 255, 40, 50, 60, 255};
    std::copy(px, px + 8, expected.begin() + static_cast<ptrdiff_t>(at));
    Draw_RGB24OnRGB32(src.data(), 2, 1, dst.data(), dst_width, 2, 1, 1);
    EXPECT_EQ(dst, expected);
  }
}

// Fourth bytes after Draw_RGB24_TraspChange: widths that are not multiples of 4 clamp; others
// lose delta's low byte with saturation over each row's 16-pixel blocks and clamp the rest.
TEST(Overlay, AlphaShiftPaths) {
  const struct {
    int32_t width, delta;
    uint8_t before, block, rest;  // in the 16-pixel blocks, after them
  } cases[] = {
      {3, 300, 200, 0, 0},  {3, -10, 250, 255, 255},  {3, -10, 100, 110, 110},
      {16, -10, 250, 4, 4}, {16, 300, 200, 156, 156}, {20, -10, 250, 4, 255},
      {20, 40, 30, 0, 0},   {36, -300, 5, 0, 255},    {7, 0, 77, 77, 77},
  };
  for (const auto& k : cases) {
    Bytes frame(static_cast<size_t>(4 * k.width * 3), k.before);
    Draw_RGB24_TraspChange(frame.data(), k.width, 3, k.delta);
    for (int32_t i = 0; i < k.width * 3; ++i) {
      const bool in_block = i % k.width < k.width / 16 * 16 && k.width % 4 == 0;
      ASSERT_EQ(frame[static_cast<size_t>(4 * i + 3)], in_block ? k.block : k.rest)
          << "width " << k.width << " delta " << k.delta << " pixel " << i;
      ASSERT_EQ(frame[static_cast<size_t>(4 * i)], k.before);
    }
  }
  Bytes frame(64, 9);
  Draw_RGB24_TraspChange(frame.data(), 0, 4, 50);
  Draw_RGB24_TraspChange(frame.data(), 4, -1, 50);
  EXPECT_EQ(frame, Bytes(64, 9));
}

// A 1 x 1 overlay over the destination's first pixel, written at (x, y) of the work frame, which
// then replaces the destination whole.
TEST(Overlay, CompositeWorkedExamples) {
  const struct {
    uint8_t over[4], back[4], result[4];
  } cases[] = {
      {{9, 8, 7, 255}, {1, 2, 3, 40}, {9, 8, 7, 255}},             // opaque: its own colour
      {{9, 8, 7, 0}, {100, 100, 100, 255}, {100, 100, 100, 255}},  // transparent: the background
      {{200, 100, 50, 128}, {10, 20, 30, 200}, {103, 57, 36, 227}},
  };
  for (const auto& k : cases) {
    Bytes dst(4 * 3 * 2, 0x55), work(4 * 3 * 2, 0x66);
    std::copy(k.back, k.back + 4, dst.begin());
    Draw_RGB32OnRGB32(k.over, 1, 1, dst.data(), 3, 2, 2, 1, work.data(), 3, 2);
    Bytes expected(24, 0x66);
    std::copy(k.result, k.result + 4, expected.begin() + 4 * (3 + 2));
    EXPECT_EQ(dst, expected);
    EXPECT_EQ(work, expected);
  }
}

TEST(Overlay, CompositeChecks) {
  uint8_t a[4] = {}, b[4] = {}, out[4] = {};
  const struct {
    const uint8_t *a, *b;
    uint8_t* out;
    int32_t width, type;
    prim::Status status;
  } cases[] = {
      {a, b, out, 1, 0, prim::ippStsNoErr},
      {nullptr, b, out, 1, 0, prim::ippStsNullPtrErr},
      {a, nullptr, out, 0, 0, prim::ippStsNullPtrErr},
      {a, b, nullptr, 1, 99, prim::ippStsNullPtrErr},
      {a, b, out, 0, 99, prim::ippStsSizeErr},
      {a, b, out, 1, 12, prim::ippStsAlphaTypeErr},
      {a, b, out, 1, -1, prim::ippStsAlphaTypeErr},
      {a, b, out, 1, 1, prim::ippStsNotSupportedModeErr},
      {a, b, out, 1, 11, prim::ippStsNotSupportedModeErr},
  };
  for (const auto& k : cases) {
    EXPECT_EQ(prim::ippiAlphaComp_8u_AC4R(k.a, 4, k.b, 4, k.out, 4, {k.width, 1}, k.type), k.status)
        << "type " << k.type;
  }
}

}  // namespace
}  // namespace framekit

// Keying through its exports: the colour key's fixed key and status order, the alpha map, and the
// chroma key's dominance test, key channels, blend and packed walk.
#include <gtest/gtest.h>

#include <vector>

#include "framekit/framekit.h"

namespace framekit {
namespace {

using Bytes = std::vector<uint8_t>;

TEST(ColorKey, FixedKeyAndStatuses) {
  const Bytes front = {33, 151, 54, 33, 151, 55, 0, 0};  // the key, then one byte off
  const Bytes back = {1, 2, 3, 4, 5, 6, 0, 0};
  Bytes out(8, 0xEE);
  EXPECT_EQ(ColorKeyRGB24(front.data(), 8, back.data(), 8, out.data(), 8, 2, 1), 0);
  EXPECT_EQ(out, (Bytes{1, 2, 3, 33, 151, 55, 0xEE, 0xEE}));
  const uint8_t* f = front.data();
  const uint8_t* b = back.data();
  uint8_t* o = out.data();
  const struct {
    const uint8_t *f, *b;
    uint8_t* o;
    int32_t width, step;
    int32_t status;
  } cases[] = {{nullptr, b, o, 0, 0, -8}, {f, nullptr, o, 1, 8, -8}, {f, b, nullptr, 1, 8, -8},
               {f, b, o, 0, 0, -6},       {f, b, o, 1, 0, -14},      {f, b, o, 1, -8, -14}};
  for (const auto& k : cases) {
    EXPECT_EQ(ColorKeyRGB24(k.f, k.step, k.b, 8, k.o, 8, k.width, 1), k.status);
  }
}

TEST(ChromaKey, AlphaMap) {
  std::vector<double> map(513, 7.0);
  ChromaKeyLoadAlphaMap(map.data(), 100, 200);
  EXPECT_EQ(map[0], 100.0);
  EXPECT_EQ(map[1], 200.0);
  EXPECT_EQ(map[2], 1.0);
  EXPECT_EQ(map[100], 1.0);
  EXPECT_EQ(map[101], 0.99);
  EXPECT_EQ(map[150], 0.5);
  EXPECT_EQ(map[200], 0.0);
  EXPECT_EQ(map[510], 0.0);
  EXPECT_EQ(map[511], 7.0);  // never written
  EXPECT_EQ(map[512], 7.0);
  ChromaKeyLoadAlphaMap(map.data(), 300, 100);  // low >= high: 1 up to low, then 0
  EXPECT_EQ(map[300], 1.0);
  EXPECT_EQ(map[301], 0.0);
  ChromaKeyLoadAlphaMap(nullptr, 1, 2);
}

// One pixel keyed against a background of (100, 60, 20) with map[index] = f and 0.5 elsewhere,
// so a result shows which element was read.
Bytes KeyOne(Bytes pixel, int32_t channel, int index, double f) {
  std::vector<double> map(513, 0.5);
  map[static_cast<size_t>(index)] = f;
  const Bytes back = {100, 60, 20};
  ChromaKey(pixel.data(), 1, 1, back.data(), map.data(), 0, 0, channel);
  return pixel;
}

TEST(ChromaKey, Pixels) {
  const struct {
    Bytes pixel;
    int32_t channel;
    int index;  // 2K + 2 - O1 - O2 for a keyed pixel
    double f;
    Bytes result;
  } cases[] = {
      {{0, 255, 0}, 1, 512, 0.25, {75, 108, 15}},     // pure green: element 512; 45 + 63.75
      {{0, 255, 0}, 0, 0, 0.25, {0, 255, 0}},         // keyed on red: red is not dominant
      {{200, 10, 10}, 2, 382, 0.0, {100, 60, 20}},    // blue dominant: full background
      {{10, 10, 200}, 7, 382, 1.0, {10, 10, 200}},    // red (any other channel): full foreground
      {{50, 90, 90}, 1, 0, 0.0, {50, 90, 90}},        // green only ties red: not keyed
      {{90, 90, 90}, 0, 0, 0.0, {90, 90, 90}},        // grey
      {{10, 200, 30}, 1, 362, 2.0, {176, 84, 40}},    // 2 fg - bg: 400 - 60 = 340 -> 84
      {{10, 200, 30}, 1, 362, -1.0, {190, 176, 10}},  // 2 bg - fg: 120 - 200 = -80 -> 176
  };
  for (const auto& k : cases) {
    EXPECT_EQ(KeyOne(k.pixel, k.channel, k.index, k.f), k.result)
        << +k.pixel[0] << "," << +k.pixel[1] << "," << +k.pixel[2] << " channel " << k.channel;
  }
}

// The walk covers width * height packed pixels: on a 5 x 2 frame laid out with aligned rows (16
// bytes), byte 15 (row 0's padding) is keyed as part of a pixel and bytes 30-31 are never reached.
TEST(ChromaKey, PackedWalkAndEarlyReturns) {
  std::vector<double> map(513, 0.0);
  const Bytes back(32, 5);
  Bytes frame(32);
  for (size_t i = 0; i < 32; i += 3) frame[i + 1 < 32 ? i + 1 : i] = 200;  // green pixels
  Bytes expected(32, 5);
  expected[30] = frame[30], expected[31] = frame[31];
  Bytes walked = frame;
  ChromaKey(walked.data(), 5, 2, back.data(), map.data(), 0, 0, 1);
  EXPECT_EQ(walked, expected);
  for (const auto& [w, h] : {std::pair{0, 2}, std::pair{5, 0}, std::pair{-5, 2}}) {
    Bytes same = frame;
    ChromaKey(same.data(), w, h, back.data(), map.data(), 0, 0, 1);
    EXPECT_EQ(same, frame);
  }
  Bytes same = frame;
  ChromaKey(same.data(), 5, 2, nullptr, map.data(), 0, 0, 1);
  EXPECT_EQ(same, frame);
}

}  // namespace
}  // namespace framekit

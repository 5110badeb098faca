// Motion detection through its exports: the three comparison paths with their scaling, the
// matrix's biased cell mean and layout, the highlight's tints, and the division guards.
#include <gtest/gtest.h>

#include <vector>

#include "framekit/framekit.h"

namespace framekit {
namespace {

using Bytes = std::vector<uint8_t>;

TEST(MotionDetection, ComparePaths) {
  const struct {
    Bytes a, b;
    uint8_t luminance, red, green, blue;
    Bytes map;
    uint64_t mean;
  } cases[] = {
      {{9, 8, 7}, {9, 8, 7}, 1, 0, 0, 0, {0}, 0},                           // identical
      {{0, 0, 255, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, 0, 1, 0, 0, {85, 0}, 42},  // red only: / 3
      {{0, 0, 0}, {0, 0, 255}, 0, 1, 0, 0, {85}, 85},                       // |d|
      {{10, 10, 11}, {10, 10, 10}, 0, 1, 1, 1, {0}, 0},    // all three: luminance, 10 and 10
      {{10, 10, 13}, {10, 10, 10}, 0, 1, 1, 1, {1}, 1},    // 11 and 10
      {{30, 0, 0}, {0, 0, 30}, 0, 1, 0, 1, {0}, 0},        // blue + red: +30 - 30
      {{30, 0, 0}, {0, 0, 30}, 1, 0, 0, 0, {0}, 0},        // luminance: 10 and 10
      {{200, 100, 0}, {0, 0, 0}, 0, 0, 1, 1, {100}, 100},  // green + blue: 300 / 3
      {{200, 100, 0}, {0, 0, 0}, 0, 0, 0, 0, {0}, 0},      // none: zeros
  };
  for (const auto& k : cases) {
    Bytes map(k.map.size(), 0xEE);
    const int32_t n = static_cast<int32_t>(k.map.size());
    EXPECT_EQ(MotionDetectionCompareImages(k.a.data(), k.b.data(), map.data(), k.luminance, k.red,
                                           k.green, k.blue, n),
              k.mean);
    EXPECT_EQ(map, k.map);
  }
  Bytes map(2, 0xEE);
  const Bytes a(6, 1), b(6, 200);
  for (const int32_t n : {0, -1}) {
    EXPECT_EQ(MotionDetectionCompareImages(a.data(), b.data(), map.data(), 1, 0, 0, 0, n), 0u);
    EXPECT_EQ(MotionDetectionCompareImages(a.data(), b.data(), map.data(), 0, 0, 0, 0, n), 0u);
  }
  EXPECT_EQ(map, Bytes(2, 0xEE));
}

TEST(MotionDetection, MatrixCells) {
  // 64 x 48 in 4 x 3 cells of 16 x 16: cell (c, r) holds 16 * c + r, mean v * 256 / 272.
  Bytes map(64 * 48), matrix(12, 0xEE);
  for (int y = 0; y < 48; ++y) {
    for (int x = 0; x < 64; ++x)
      map[static_cast<size_t>(y * 64 + x)] = uint8_t(16 * (x / 16) + y / 16);
  }
  MotionDetectionBuildMatrix(64, 48, 4, 3, matrix.data(), map.data());
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 4; ++c) {
      EXPECT_EQ(matrix[static_cast<size_t>(r * 4 + c)], (16 * c + r) * 256 / 272) << c << ", " << r;
    }
  }
  MotionDetectionBuildMatrix(64, 48, 4, 3, matrix.data(), Bytes(64 * 48, 255).data());
  EXPECT_EQ(matrix, Bytes(12, 240));
  // 65 wide in 4 columns: the last pixel column belongs to no cell.
  Bytes edge(65 * 48, 0);
  for (int y = 0; y < 48; ++y) edge[static_cast<size_t>(y * 65 + 64)] = 255;
  MotionDetectionBuildMatrix(65, 48, 4, 3, matrix.data(), edge.data());
  EXPECT_EQ(matrix, Bytes(12, 0));
  // Guards: nothing written where a divisor would be 0.
  for (const auto& [columns, rows] : {std::pair{0, 3}, std::pair{4, 0}, std::pair{65, 1}}) {
    Bytes untouched(100, 0xEE);
    MotionDetectionBuildMatrix(64, 48, columns, rows, untouched.data(), map.data());
    EXPECT_EQ(untouched, Bytes(100, 0xEE)) << columns << " x " << rows;
  }
}

TEST(MotionDetection, Highlight) {
  const Bytes levels = {0, 10, 11, 255};
  const struct {
    int32_t mode, threshold;
    Bytes result;
  } cases[] = {
      {0, 10, {1, 2, 3, 1, 2, 3, 0, 0, 3, 0, 0, 3}},  // keep red
      {1, 10, {1, 2, 3, 1, 2, 3, 0, 2, 0, 0, 2, 0}},  // keep green
      {5, 10, {1, 2, 3, 1, 2, 3, 1, 0, 0, 1, 0, 0}},  // keep blue
      {0, 255, {1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3}}, {2, -1, {1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0}},
  };
  for (const auto& k : cases) {
    Bytes frame = {1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3};
    EXPECT_EQ(MotionDetectionHighlight(frame.data(), levels.data(), 4, k.mode, k.threshold), 4);
    EXPECT_EQ(frame, k.result) << k.mode << ", " << k.threshold;
  }
  Bytes frame(12, 1);
  EXPECT_EQ(MotionDetectionHighlight(frame.data(), levels.data(), 0, 0, -1), 0);
  EXPECT_EQ(frame, Bytes(12, 1));
}

}  // namespace
}  // namespace framekit

#include "motion/motion_detect.h"

#include <algorithm>
#include <cstring>

#include "primitives/difference/difference.h"

namespace framekit::motion {

uint64_t CompareImages(const uint8_t* a, const uint8_t* b, uint8_t* map, bool luminance, bool red,
                       bool green, bool blue, int32_t count) {
  if (count < 1) return 0;
  int32_t channels = prim::kDiffLuminance;
  if (!luminance && !(red && green && blue)) {
    channels =
        (red ? prim::kDiffRed : 0) | (green ? prim::kDiffGreen : 0) | (blue ? prim::kDiffBlue : 0);
    if (channels == 0) {
      std::memset(map, 0, static_cast<size_t>(count));
      return 0;
    }
  }
  uint64_t sum = 0;
  prim::MotionDiff_8u_C3C1R(a, 3 * count, b, 3 * count, map, count, {count, 1}, channels, &sum);
  return sum / static_cast<uint64_t>(count);
}

void BuildMatrix(int32_t width, int32_t height, int32_t columns, int32_t rows, uint8_t* matrix,
                 const uint8_t* map) {
  if (columns < 1 || rows < 1) return;
  const int32_t cell_width = width / columns, cell_height = height / rows;
  if (cell_width < 1) return;  // a cell with no columns
  for (int32_t c = 0; c < columns; ++c) {
    const int32_t x0 = c * cell_width, x1 = std::min(x0 + cell_width, width);
    for (int32_t r = 0; r < rows; ++r) {
      const int32_t y0 = r * cell_height, y1 = std::min(y0 + cell_height, height);
      int64_t sum = 0;
      for (int32_t y = y0; y < y1; ++y) {
        const uint8_t* line = map + int64_t{y} * width;
        for (int32_t x = x0; x < x1; ++x) sum += line[x];
      }
      const int64_t cell_rows = std::max(y1 - y0, 0);
      const int64_t count = (x1 - x0) * (cell_rows + 1);  // every column adds one
      matrix[int64_t{r} * columns + c] = static_cast<uint8_t>(sum / count);
    }
  }
}

int64_t Highlight(uint8_t* frame, const uint8_t* levels, int32_t count, int32_t colour_mode,
                  int32_t threshold) {
  if (count < 1) return 0;
  // The two bytes cleared: blue and green (red stays), blue and red, or green and red.
  const int first = (colour_mode == 0 || colour_mode == 1) ? 0 : 1;
  const int second = colour_mode == 0 ? 1 : 2;
  for (int64_t i = 0; i < count; ++i) {
    if (levels[i] > threshold) {
      frame[3 * i + first] = 0;
      frame[3 * i + second] = 0;
    }
  }
  return count;
}

}  // namespace framekit::motion

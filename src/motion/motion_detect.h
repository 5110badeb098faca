// Motion detection between RGB24 frames read as packed pixels (pixel i at byte 3 i): a
// difference map of one byte a pixel, its mean over a grid of cells, and a tint of the pixels
// whose level exceeds a threshold. No state; the caller owns every buffer.
#pragma once

#include <cstdint>

namespace framekit::motion {

// Difference map of `count` pixels and its mean (sum / count). With `luminance`, or all three
// channel flags, |mean(a) - mean(b)| of the truncated channel means; with one or two flags,
// |sum of the chosen channels' differences| / 3; with none, a map of zeros and 0. A count below
// 1 returns 0 and writes nothing (0 would divide by zero).
uint64_t CompareImages(const uint8_t* a, const uint8_t* b, uint8_t* map, bool luminance, bool red,
                       bool green, bool blue, int32_t count);

// matrix[r * columns + c] = low byte of (sum of the cell) / (its pixels + its columns), cells of
// (width / columns) x (height / rows) pixels, columns outer. Writes nothing when columns or rows
// is below 1 or a cell would have no columns (columns > width, or width below 1): each would
// divide by zero.
void BuildMatrix(int32_t width, int32_t height, int32_t columns, int32_t rows, uint8_t* matrix,
                 const uint8_t* map);

// Tints pixel i where levels[i] > threshold: colour_mode 0 keeps red, 1 green, any other blue
// (the two other bytes set to 0). Returns the pixels visited: count, or 0 when below 1.
int64_t Highlight(uint8_t* frame, const uint8_t* levels, int32_t count, int32_t colour_mode,
                  int32_t threshold);

}  // namespace framekit::motion

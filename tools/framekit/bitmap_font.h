// A tiny 5x7 bitmap font for the labels of the test picture. Glyphs sit in 6x8 cells (one
// column and one row of spacing), so text is 6 * scale pixels a character wide.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace framekit::tool {

constexpr int32_t kGlyphWidth = 5;
constexpr int32_t kGlyphHeight = 7;
constexpr int32_t kCellWidth = 6;

// Seven rows, top first; bit 4 of each row is the leftmost column. Upper case, digits, a few
// lower-case letters and punctuation; other lower-case letters fall back to upper case and
// anything else to a hollow box, so a missing glyph is visible rather than silently blank.
using Glyph = std::array<uint8_t, kGlyphHeight>;
const Glyph& GlyphFor(char c);

// Width in pixels of text drawn at a scale, without the trailing spacing column.
int32_t TextWidth(std::string_view text, int32_t scale);

}  // namespace framekit::tool

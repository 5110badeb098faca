#include "test_picture.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "bitmap_font.h"

namespace framekit::tool {
namespace {

struct Rgb {
  uint8_t r, g, b;
};

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kGreen{0, 255, 0};
constexpr Rgb kBlue{0, 0, 255};

void SetPixel(Image& image, int32_t x, int32_t y, Rgb c) {
  if (x < 0 || y < 0 || x >= image.width || y >= image.height) return;
  uint8_t* p = image.Row(y) + 3 * x;
  p[0] = c.b;
  p[1] = c.g;
  p[2] = c.r;
}

// Fills [x0, x1) x [y0, y1), clipped to the image.
void FillRect(Image& image, int32_t x0, int32_t y0, int32_t x1, int32_t y1, Rgb c) {
  for (int32_t y = std::max(y0, 0); y < std::min(y1, image.height); ++y) {
    for (int32_t x = std::max(x0, 0); x < std::min(x1, image.width); ++x) SetPixel(image, x, y, c);
  }
}

void DrawText(Image& image, int32_t x, int32_t y, int32_t scale, std::string_view text, Rgb c) {
  for (char ch : text) {
    const Glyph& glyph = GlyphFor(ch);
    for (int32_t row = 0; row < kGlyphHeight; ++row) {
      for (int32_t col = 0; col < kGlyphWidth; ++col) {
        if ((glyph[row] >> (kGlyphWidth - 1 - col)) & 1) {
          FillRect(image, x + col * scale, y + row * scale, x + (col + 1) * scale,
                   y + (row + 1) * scale, c);
        }
      }
    }
    x += kCellWidth * scale;
  }
}

// The largest text scale whose glyphs fit a strip of this height with a pixel to spare.
int32_t ScaleForStrip(int32_t strip_height) {
  return std::max(1, (strip_height - 2) / (kGlyphHeight + 1));
}

// Top offset that centres text of a scale in a strip.
int32_t CentredTop(int32_t y0, int32_t y1, int32_t scale) {
  return y0 + (y1 - y0 - kGlyphHeight * scale) / 2;
}

uint8_t Ramp(int32_t x, int32_t width) {
  return static_cast<uint8_t>(width > 1 ? x * 255 / (width - 1) : 0);
}

void DrawTopStrip(Image& image, int32_t y0, int32_t y1) {
  FillRect(image, 0, y0, image.width, y1, kBlack);
  const int32_t scale = ScaleForStrip(y1 - y0);
  DrawText(image, 2 * scale, CentredTop(y0, y1, scale), scale, "TOP LEFT", kWhite);
}

// Bars in the usual order, each labelled with its initial (K for black) in a contrasting colour.
void DrawColourBars(Image& image, int32_t y0, int32_t y1) {
  struct Bar {
    Rgb colour;
    char label;
    bool dark;
  };
  constexpr Bar kBars[] = {
      {{255, 255, 255}, 'W', false}, {{255, 255, 0}, 'Y', false}, {{0, 255, 255}, 'C', false},
      {{0, 255, 0}, 'G', false},     {{255, 0, 255}, 'M', true},  {{255, 0, 0}, 'R', true},
      {{0, 0, 255}, 'B', true},      {{0, 0, 0}, 'K', true},
  };
  constexpr int32_t kCount = 8;
  const int32_t scale = std::max(1, (y1 - y0) / 40);
  for (int32_t i = 0; i < kCount; ++i) {
    const int32_t x0 = image.width * i / kCount, x1 = image.width * (i + 1) / kCount;
    FillRect(image, x0, y0, x1, y1, kBars[i].colour);
    const int32_t text_x = x0 + (x1 - x0 - kGlyphWidth * scale) / 2;
    const int32_t text_y = y1 - (kGlyphHeight + 2) * scale;
    DrawText(image, text_x, text_y, scale, std::string(1, kBars[i].label),
             kBars[i].dark ? kWhite : kBlack);
  }
}

void DrawGreyRamp(Image& image, int32_t y0, int32_t y1) {
  for (int32_t x = 0; x < image.width; ++x) {
    const uint8_t v = Ramp(x, image.width);
    FillRect(image, x, y0, x + 1, y1, {v, v, v});
  }
}

// Three equal bands, red, green and blue rising from black at the left, labelled at the dark end.
void DrawChannelRamps(Image& image, int32_t y0, int32_t y1) {
  constexpr char kLabels[] = {'R', 'G', 'B'};
  for (int32_t band = 0; band < 3; ++band) {
    const int32_t top = y0 + (y1 - y0) * band / 3, bottom = y0 + (y1 - y0) * (band + 1) / 3;
    for (int32_t x = 0; x < image.width; ++x) {
      const uint8_t v = Ramp(x, image.width);
      const Rgb c{band == 0 ? v : uint8_t{0}, band == 1 ? v : uint8_t{0},
                  band == 2 ? v : uint8_t{0}};
      FillRect(image, x, top, x + 1, bottom, c);
    }
    const int32_t scale = ScaleForStrip(bottom - top);
    DrawText(image, 2 * scale, CentredTop(top, bottom, scale), scale, std::string(1, kLabels[band]),
             kWhite);
  }
}

// Left half: 1-pixel vertical lines, horizontal lines and a checker, crossed by a red diagonal
// from top left to bottom right. Right half: the name and R G B written in their own colours.
void DrawDetail(Image& image, int32_t y0, int32_t y1) {
  const int32_t w = image.width, half = w / 2;
  for (int32_t y = y0; y < y1; ++y) {
    for (int32_t x = 0; x < half; ++x) {
      const int32_t bit = x < w / 6 ? x % 2 : (x < w / 3 ? y % 2 : (x + y) % 2);
      SetPixel(image, x, y, bit ? kBlack : kWhite);
    }
  }
  for (int32_t x = 0; x < half; ++x) {
    SetPixel(image, x, y0 + x * (y1 - y0 - 1) / std::max(1, half - 1), kRed);
  }
  FillRect(image, half, y0, w, y1, {48, 48, 48});
  const int32_t scale = std::max(1, std::min((y1 - y0) / 24, (w - half) / 60));
  const int32_t line = (kGlyphHeight + 3) * scale;
  const int32_t top = y0 + (y1 - y0 - 2 * line) / 2;
  DrawText(image, half + (w - half - TextWidth("framekit", scale)) / 2, top, scale, "framekit",
           kWhite);
  const int32_t rgb_x = half + (w - half - TextWidth("R G B", scale)) / 2;
  DrawText(image, rgb_x, top + line, scale, "R", kRed);
  DrawText(image, rgb_x + 2 * kCellWidth * scale, top + line, scale, "G", kGreen);
  DrawText(image, rgb_x + 4 * kCellWidth * scale, top + line, scale, "B", kBlue);
}

void DrawBottomStrip(Image& image, int32_t y0, int32_t y1) {
  FillRect(image, 0, y0, image.width, y1, kBlack);
  const int32_t scale = ScaleForStrip(y1 - y0);
  const int32_t text_y = CentredTop(y0, y1, scale);
  const std::string size = std::to_string(image.width) + "x" + std::to_string(image.height);
  DrawText(image, 2 * scale, text_y, scale, size, kWhite);
  const std::string_view corner = "BOTTOM RIGHT";
  DrawText(image, image.width - TextWidth(corner, scale) - 2 * scale, text_y, scale, corner,
           kWhite);
}

}  // namespace

Image DrawTestPicture(int32_t width, int32_t height) {
  Image image = MakeImage(PixelFormat::kRGB24, width, height);
  if (image.empty()) return image;
  // Band edges in eighteenths of the height: 1 top strip, 6 bars, 2 grey ramp, 3 channel ramps,
  // 5 detail, 1 bottom strip (20-pixel units at a height of 360).
  const auto edge = [height](int32_t eighteenths) { return height * eighteenths / 18; };
  DrawTopStrip(image, 0, edge(1));
  DrawColourBars(image, edge(1), edge(7));
  DrawGreyRamp(image, edge(7), edge(9));
  DrawChannelRamps(image, edge(9), edge(12));
  DrawDetail(image, edge(12), edge(17));
  DrawBottomStrip(image, edge(17), height);
  return image;
}

}  // namespace framekit::tool

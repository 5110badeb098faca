// Helpers of the BMP save tests: test frames with sentinel padding, file names in the test's
// temporary directory, reading files back without the library's name conversion, and a small
// decoder for the BI_RGB files the savers write.
#pragma once

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// gdiplus.h needs windows.h first.
#include <gdiplus.h>
#endif

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace framekit::imageio::bmp_test {

inline constexpr uint8_t kSentinel = 0xEE;

// A frame of distinct-looking bytes, its row padding filled with the sentinel. With
// trim_last_padding the buffer ends at the last pixel byte, so reading the last row's padding
// is an overflow that AddressSanitizer reports.
inline std::vector<uint8_t> MakeFrame(int32_t width, int32_t height, int32_t bytes_per_pixel,
                                      int32_t stride, bool trim_last_padding = false) {
  std::vector<uint8_t> frame(static_cast<size_t>(stride) * height, kSentinel);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width * bytes_per_pixel; ++x) {
      frame[static_cast<size_t>(y * stride + x)] = static_cast<uint8_t>(x * 7 + y * 31 + 1);
    }
  }
  if (trim_last_padding) frame.resize(frame.size() - (stride - width * bytes_per_pixel));
  return frame;
}

// The frame's colour bytes (blue, green, red) packed, first row in memory first.
inline std::vector<uint8_t> FrameColours(const std::vector<uint8_t>& frame, int32_t width,
                                         int32_t height, int32_t bytes_per_pixel, int32_t stride) {
  std::vector<uint8_t> out;
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const auto* p = &frame[static_cast<size_t>(y * stride + x * bytes_per_pixel)];
      out.insert(out.end(), p, p + 3);
    }
  }
  return out;
}

inline uint32_t Le(const std::vector<uint8_t>& b, size_t at, int bytes = 4) {
  uint32_t v = 0;
  for (int i = bytes - 1; i >= 0; --i) v = (v << 8) | b.at(at + static_cast<size_t>(i));
  return v;
}

struct DecodedBmp {
  int32_t width = 0;
  int32_t height = 0;
  int32_t bits = 0;
  std::vector<uint8_t> colours;  // blue, green, red per pixel, top row first
};

// Decodes an uncompressed 24- or 32-bit BMP; nullopt for anything else or a short file.
inline std::optional<DecodedBmp> DecodeBmp(const std::vector<uint8_t>& file) {
  if (file.size() < 54 || file[0] != 'B' || file[1] != 'M' || Le(file, 30) != 0) {
    return std::nullopt;
  }
  DecodedBmp bmp;
  bmp.width = static_cast<int32_t>(Le(file, 18));
  bmp.height = static_cast<int32_t>(Le(file, 22));
  bmp.bits = static_cast<int32_t>(Le(file, 28, 2));
  const bool bottom_up = bmp.height > 0;
  if (!bottom_up) bmp.height = -bmp.height;
  if ((bmp.bits != 24 && bmp.bits != 32) || bmp.width < 1 || bmp.height < 1) return std::nullopt;
  const size_t bpp = static_cast<size_t>(bmp.bits / 8);
  const size_t stride = (bpp * static_cast<size_t>(bmp.width) + 3) / 4 * 4;
  const size_t offset = Le(file, 10);
  if (file.size() < offset + stride * static_cast<size_t>(bmp.height)) return std::nullopt;
  for (int32_t y = 0; y < bmp.height; ++y) {
    const size_t file_row = static_cast<size_t>(bottom_up ? bmp.height - 1 - y : y);
    for (int32_t x = 0; x < bmp.width; ++x) {
      const auto* p = &file[offset + file_row * stride + static_cast<size_t>(x) * bpp];
      bmp.colours.insert(bmp.colours.end(), p, p + 3);
    }
  }
  return bmp;
}

// A file in the directory ctest gives the tests (FRAMEKIT_TEST_TMP). The library gets
// path.u16string(); the test reads the file back through std::filesystem, whose name conversion
// is independent of the library's.
inline std::filesystem::path TestPath(std::u16string_view leaf) {
  const char* env = std::getenv("FRAMEKIT_TEST_TMP");
  std::string dir = (env != nullptr && *env != '\0')
                        ? std::string(env)
                        : std::filesystem::temp_directory_path().string();
#ifdef _WIN32
  if (dir[0] == '/') dir = "Z:" + dir;  // a Unix path seen from Wine
#endif
  return std::filesystem::path(dir) / std::filesystem::path(std::u16string(leaf));
}

// A name made of the running test's name and suffix; no file of that name is left over.
inline std::filesystem::path TestPathFor(std::string_view suffix) {
  std::string leaf = ::testing::UnitTest::GetInstance()->current_test_info()->name();
  leaf += suffix;
  auto path = TestPath(std::u16string(leaf.begin(), leaf.end()));
  std::error_code ignored;
  std::filesystem::remove(path, ignored);
  return path;
}

inline std::optional<std::vector<uint8_t>> ReadBack(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

// What the host does before saving: on Windows, start GDI+ (once for the process).
inline void StartImageHost() {
#ifdef _WIN32
  static const bool started = [] {
    Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
  }();
  ASSERT_TRUE(started);
#endif
}

}  // namespace framekit::imageio::bmp_test

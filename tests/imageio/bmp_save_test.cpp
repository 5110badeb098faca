#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "framekit/framekit.h"
#include "imageio/bmp_test_support.h"
#include "imageio/bmp_writer.h"
#include "imageio/file_name.h"

namespace framekit::imageio {
namespace {

using namespace bmp_test;  // NOLINT(build/namespaces)

TEST(BmpEncode, Rgb24FileMatchesGdiplusBytes) {
  // A 3x2 frame (stride 12) with sentinels in the row padding, and the file GDI+ writes for it
  // under Wine: 54-byte header, 96 dpi, bottom row first, padding zeroed.
  std::vector<uint8_t> frame(24, kSentinel);
  for (int y = 0; y < 2; ++y) {
    for (int i = 0; i < 9; ++i) {
      frame[static_cast<size_t>(y * 12 + i)] =
          static_cast<uint8_t>(0x10 * (y + 1) + i / 3 * 4 + i % 3);
    }
  }
  // clang-format off
  const std::vector<uint8_t> expected = {
      0x42, 0x4d, 0x4e, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x36, 0x00, 0x00, 0x00,
      0x28, 0x00, 0x00, 0x00, 0x03, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x01, 0x00,
      0x18, 0x00, 0x00, 0x00, 0x00, 0x00, 0x18, 0x00, 0x00, 0x00, 0xc4, 0x0e, 0x00, 0x00,
      0xc4, 0x0e, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
      0x20, 0x21, 0x22, 0x24, 0x25, 0x26, 0x28, 0x29, 0x2a, 0x00, 0x00, 0x00,
      0x10, 0x11, 0x12, 0x14, 0x15, 0x16, 0x18, 0x19, 0x1a, 0x00, 0x00, 0x00};
  // clang-format on
  EXPECT_EQ(EncodeBmp(frame.data(), 3, 2, SaveFormat::kRGB24), expected);
}

// Buffers end at the last pixel byte, so reading any padding (3x1 has 3 bytes of it) is caught
// by AddressSanitizer.
TEST(BmpEncode, EveryRowResidueReadsOnlyPixelBytes) {
  for (int32_t width = 1; width <= 5; ++width) {
    for (int32_t height : {1, 3}) {
      SCOPED_TRACE(::testing::Message() << width << "x" << height);
      const int32_t stride = (3 * width + 3) / 4 * 4;
      const auto frame = MakeFrame(width, height, 3, stride, /*trim_last_padding=*/true);
      const auto file = EncodeBmp(frame.data(), width, height, SaveFormat::kRGB24);
      ASSERT_EQ(file.size(), static_cast<size_t>(54 + stride * height));
      EXPECT_EQ(Le(file, 34), static_cast<uint32_t>(stride * height));
      const auto bmp = DecodeBmp(file);
      ASSERT_TRUE(bmp);
      EXPECT_EQ(bmp->colours, FrameColours(frame, width, height, 3, stride));
    }
  }
}

TEST(BmpEncode, RefusesSizesThatMakeNoFile) {
  const uint8_t pixel[4] = {};
  for (const auto& [w, h] : {std::pair{0, 1}, {1, 0}, {-3, 2}, {2, INT_MIN}}) {
    EXPECT_FALSE(PlanBmp(w, h, SaveFormat::kRGB24)) << w << "x" << h;
    EXPECT_TRUE(EncodeBmp(pixel, w, h, SaveFormat::kRGB32).empty()) << w << "x" << h;
  }
  EXPECT_FALSE(PlanBmp(715827882, 1, SaveFormat::kRGB24));  // row of 2^31 bytes
  EXPECT_TRUE(PlanBmp(715827881, 1, SaveFormat::kRGB24));
  EXPECT_FALSE(PlanBmp(32768, 32768, SaveFormat::kRGB32));  // 4 GiB of pixels
}

TEST(Utf16ToUtf8, EncodesEveryLengthAndRefusesLoneSurrogates) {
  EXPECT_EQ(Utf16ToUtf8(u"a/\u007f"), "a/\x7f");
  EXPECT_EQ(Utf16ToUtf8(u"\u0080\u00e9\u07ff"), "\xc2\x80\xc3\xa9\xdf\xbf");
  EXPECT_EQ(Utf16ToUtf8(u"\u0800\u20ac\uffff"), "\xe0\xa0\x80\xe2\x82\xac\xef\xbf\xbf");
  EXPECT_EQ(Utf16ToUtf8(u"\U00010000\U0001F600\U0010FFFF"),
            "\xf0\x90\x80\x80\xf0\x9f\x98\x80\xf4\x8f\xbf\xbf");
  const char16_t lone_high_last[] = {u'a', 0xD83D, 0};
  const char16_t lone_high_mid[] = {0xD83D, u'a', 0};
  const char16_t lone_low[] = {u'a', 0xDE00, u'b', 0};
  const char16_t swapped_pair[] = {0xDE00, 0xD83D, 0};
  for (const char16_t* bad : {lone_high_last, lone_high_mid, lone_low, swapped_pair}) {
    EXPECT_FALSE(Utf16ToUtf8(bad));
  }
}

// Through the exports: GDI+ on Windows, the native writer elsewhere.
class SaveImage : public ::testing::Test {
 protected:
  void SetUp() override { StartImageHost(); }
};

TEST_F(SaveImage, PngNameGivesBmpWithFirstRowOnTop) {
  const auto file = TestPathFor(".png");
  for (const int32_t bpp : {3, 4}) {
    const int32_t w = bpp == 3 ? 5 : 3, h = bpp == 3 ? 3 : 4, stride = bpp == 3 ? 16 : 12;
    const auto frame = MakeFrame(w, h, bpp, stride);
    (bpp == 3 ? SaveImageRGB24 : SaveImageRGB32)(frame.data(), w, h, file.u16string().c_str());
    const auto bytes = ReadBack(file).value_or(std::vector<uint8_t>{});
    const auto bmp = DecodeBmp(bytes);
    ASSERT_TRUE(bmp) << bpp;
    EXPECT_EQ(bmp->width, w);
    EXPECT_EQ(bmp->height, h);
    EXPECT_EQ(bmp->colours, FrameColours(frame, w, h, bpp, stride));
#ifdef _WIN32
    if (bpp == 4) continue;  // GDI+ picks the depth (Wine drops the fourth byte)
#endif
    EXPECT_EQ(bmp->bits, 8 * bpp);
    if (bpp == 3) continue;
    // Natively nothing is lost: bottom-up rows, fourth bytes included.
    ASSERT_EQ(bytes.size(), 54u + 48u);
    for (int y = 0; y < 4; ++y) {
      EXPECT_TRUE(std::equal(frame.begin() + y * 12, frame.begin() + y * 12 + 12,
                             bytes.begin() + 54 + (3 - y) * 12));
    }
  }
}

TEST_F(SaveImage, NonAsciiNameAndExistingFileReplaced) {
  const auto file = TestPath(u"caf\u00e9_\U0001F600.bmp");
  std::ofstream(file) << std::string(500, 'x');
  const auto frame = MakeFrame(1, 1, 3, 4);
  SaveImageRGB24(frame.data(), 1, 1, file.u16string().c_str());
  EXPECT_EQ(ReadBack(file), EncodeBmp(frame.data(), 1, 1, SaveFormat::kRGB24));
#ifndef _WIN32
  EXPECT_EQ(file.filename().string(), "caf\xc3\xa9_\xf0\x9f\x98\x80.bmp");
#endif
  std::filesystem::remove(file);
}

TEST_F(SaveImage, InvalidArgumentsWriteNothing) {
  const auto file = TestPathFor(".bmp");
  const auto frame = MakeFrame(2, 2, 4, 8);
  SaveImageRGB24(nullptr, 2, 2, file.u16string().c_str());
  SaveImageRGB32(nullptr, 2, 2, file.u16string().c_str());
  SaveImageRGB24(frame.data(), 2, 2, nullptr);
  SaveImageRGB32(frame.data(), 2, 2, nullptr);
  for (const auto& [w, h] : {std::pair{0, 2}, {2, 0}, {-2, 2}, {2, -1}}) {
    SaveImageRGB24(frame.data(), w, h, file.u16string().c_str());
    SaveImageRGB32(frame.data(), w, h, file.u16string().c_str());
  }
  EXPECT_FALSE(std::filesystem::exists(file));
}

}  // namespace
}  // namespace framekit::imageio

// GDI+ saves against the native writer, and read back through GDI+.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "framekit/framekit.h"
#include "imageio/bmp_test_support.h"
#include "imageio/bmp_writer.h"
#include "imageio/gdiplus_encoder_win.h"

namespace framekit::imageio {
namespace {

using namespace bmp_test;  // NOLINT(build/namespaces)
namespace flat = Gdiplus::DllExports;

struct Size {
  int32_t width;
  int32_t height;
};
constexpr Size kSizes[] = {{1, 1}, {2, 2}, {3, 1}, {4, 3}, {5, 2}, {17, 9}, {64, 1}, {1, 7}};

class GdiplusSave : public ::testing::Test {
 protected:
  void SetUp() override { StartImageHost(); }

  // Saves the frame through the export and returns the file's bytes.
  static std::vector<uint8_t> Save(const std::vector<uint8_t>& frame, Size size, SaveFormat format,
                                   const std::filesystem::path& file) {
    std::filesystem::remove(file);
    if (format == SaveFormat::kRGB24) {
      SaveImageRGB24(frame.data(), size.width, size.height, file.u16string().c_str());
    } else {
      SaveImageRGB32(frame.data(), size.width, size.height, file.u16string().c_str());
    }
    return ReadBack(file).value_or(std::vector<uint8_t>{});
  }

  // The colour bytes of a BMP file as GDI+ loads it, top row first.
  static std::vector<uint8_t> LoadColours(const std::filesystem::path& file, Size size) {
    std::vector<uint8_t> colours;
    Gdiplus::GpBitmap* bitmap = nullptr;
    const std::wstring name = file.wstring();
    if (flat::GdipCreateBitmapFromFile(name.c_str(), &bitmap) != Gdiplus::Ok) return colours;
    Gdiplus::GpRect rect(0, 0, size.width, size.height);
    Gdiplus::BitmapData data{};
    if (flat::GdipBitmapLockBits(bitmap, &rect, Gdiplus::ImageLockModeRead, PixelFormat24bppRGB,
                                 &data) == Gdiplus::Ok) {
      for (int32_t y = 0; y < size.height; ++y) {
        const auto* row = static_cast<const uint8_t*>(data.Scan0) + y * data.Stride;
        colours.insert(colours.end(), row, row + 3 * size.width);
      }
      flat::GdipBitmapUnlockBits(bitmap, &data);
    }
    flat::GdipDisposeImage(bitmap);
    return colours;
  }
};

// RGB24 files are byte for byte the native writer's. For RGB32 GDI+ picks the depth (Windows
// keeps 32 bits, Wine writes 24): the picture both must keep is compared. GDI+ loads it back.
TEST_F(GdiplusSave, FilesHoldTheNativeWritersPicture) {
  const auto file = TestPathFor(".bmp");
  for (const SaveFormat format : {SaveFormat::kRGB24, SaveFormat::kRGB32}) {
    const int32_t bpp = format == SaveFormat::kRGB24 ? 3 : 4;
    for (const Size size : kSizes) {
      SCOPED_TRACE(::testing::Message() << bpp << " bytes, " << size.width << "x" << size.height);
      const int32_t stride = (bpp * size.width + 3) / 4 * 4;
      const auto frame = MakeFrame(size.width, size.height, bpp, stride, true);
      const auto saved = Save(frame, size, format, file);
      const auto native = EncodeBmp(frame.data(), size.width, size.height, format);
      if (format == SaveFormat::kRGB24) {
        EXPECT_EQ(saved, native);
      }
      const auto got = DecodeBmp(saved), want = DecodeBmp(native);
      ASSERT_TRUE(got && want);
      EXPECT_EQ(got->width, want->width);
      EXPECT_EQ(got->height, want->height);
      EXPECT_EQ(got->colours, want->colours);
      EXPECT_EQ(LoadColours(file, size), FrameColours(frame, size.width, size.height, bpp, stride));
    }
  }
}

TEST_F(GdiplusSave, EncoderLookUpWantsTheExactMimeType) {
  // The BMP encoder's class identifier, {557CF400-1A04-11D3-9A73-0000F81EF32E}.
  const CLSID bmp = {0x557cf400, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
  CLSID found{};
  EXPECT_GE(FindImageEncoder(L"image/bmp", &found), 0);
  EXPECT_TRUE(IsEqualCLSID(found, bmp));
  for (const wchar_t* other : {L"image/BMP", L"image/bm", L"image/bmp ", L"image/x-none"}) {
    CLSID untouched{};
    EXPECT_EQ(FindImageEncoder(other, &untouched), -1) << other;
    EXPECT_TRUE(IsEqualCLSID(untouched, CLSID{}));
  }
}

}  // namespace
}  // namespace framekit::imageio

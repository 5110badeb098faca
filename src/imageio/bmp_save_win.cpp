// BMP saving through the GDI+ flat interface. The host starts GDI+; we never do.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// windows.h first: gdiplus.h relies on its types.
#include <gdiplus.h>

#include <cstdlib>
#include <cwchar>

#include "imageio/bmp_save.h"
#include "imageio/gdiplus_encoder_win.h"
#include "primitives/core/strides.h"
#include "primitives/core/wrap.h"

static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows file names are 16-bit units");

namespace framekit::imageio {
namespace {

namespace gp = Gdiplus;
namespace flat = Gdiplus::DllExports;

// A GDI+ bitmap together with the last failing status of any call made on it, as the platform's
// wrapper class keeps it. The savers report nothing, so the status is only kept, never returned.
class GdipBitmap {
 public:
  GdipBitmap(int32_t width, int32_t height, gp::PixelFormat format) {
    Keep(flat::GdipCreateBitmapFromScan0(width, height, 0, format, nullptr, &native_));
  }
  ~GdipBitmap() {
    if (native_ != nullptr) flat::GdipDisposeImage(native_);
  }
  GdipBitmap(const GdipBitmap&) = delete;
  GdipBitmap& operator=(const GdipBitmap&) = delete;

  gp::GpBitmap* native() const { return native_; }
  gp::GpStatus Keep(gp::GpStatus status) {
    if (status != gp::Ok) last_status_ = status;
    return status;
  }

 private:
  gp::GpBitmap* native_ = nullptr;
  gp::GpStatus last_status_ = gp::Ok;
};

}  // namespace

int32_t FindImageEncoder(const wchar_t* mime_type, CLSID* clsid) {
  UINT count = 0;
  UINT bytes = 0;
  flat::GdipGetImageEncodersSize(&count, &bytes);
  if (bytes == 0) return -1;
  // One block: the codec records followed by the strings they point into.
  auto* codecs = static_cast<gp::ImageCodecInfo*>(std::malloc(bytes));
  if (codecs == nullptr) return -1;
  int32_t found = -1;
  if (flat::GdipGetImageEncoders(count, bytes, codecs) == gp::Ok) {
    for (UINT i = 0; i < count; ++i) {
      if (codecs[i].MimeType != nullptr && std::wcscmp(codecs[i].MimeType, mime_type) == 0) {
        *clsid = codecs[i].Clsid;
        found = static_cast<int32_t>(i);
        break;
      }
    }
  }
  std::free(codecs);
  return found;
}

void SaveImage(const uint8_t* pixels, int32_t width, int32_t height, SaveFormat format,
               const char16_t* file_name) {
  if (pixels == nullptr || file_name == nullptr) return;
  const bool rgb32 = format == SaveFormat::kRGB32;
  const gp::PixelFormat pixel_format = rgb32 ? PixelFormat32bppARGB : PixelFormat24bppRGB;
  const int32_t bytes_per_pixel = rgb32 ? 4 : 3;
  const int64_t src_stride = rgb32 ? int64_t{4} * width : RowByteStrideRGB24(width);

  // A size below 1 (or too large for memory) fails here, and nothing is written.
  GdipBitmap bitmap(width, height, pixel_format);
  if (bitmap.native() == nullptr) return;

  // Without the lock the bitmap holds no picture; saving it would write a wrong file.
  gp::GpRect rect(0, 0, width, height);
  gp::BitmapData locked{};
  if (bitmap.Keep(flat::GdipBitmapLockBits(bitmap.native(), &rect, gp::ImageLockModeWrite,
                                           pixel_format, &locked)) != gp::Ok) {
    return;
  }
  // Column by column, rows inside: the saver's long-standing order (the file does not depend
  // on it). RGB32's fourth byte becomes alpha. Only pixel bytes are read, never row padding.
  auto* dst = static_cast<uint8_t*>(locked.Scan0);
  for (int32_t x = 0; x < width; ++x) {
    const int64_t column = int64_t{x} * bytes_per_pixel;
    for (int32_t y = 0; y < height; ++y) {
      const uint8_t* from = Offset(pixels, src_stride * y + column);
      uint8_t* to = Offset(dst, int64_t{locked.Stride} * y + column);
      for (int32_t c = 0; c < bytes_per_pixel; ++c) to[c] = from[c];
    }
  }
  bitmap.Keep(flat::GdipBitmapUnlockBits(bitmap.native(), &locked));

  // BMP whatever the name's extension says. With no BMP encoder the class identifier stays
  // unset and GDI+ refuses the save.
  CLSID bmp_encoder{};
  FindImageEncoder(L"image/bmp", &bmp_encoder);
  bitmap.Keep(flat::GdipSaveImageToFile(bitmap.native(), reinterpret_cast<const WCHAR*>(file_name),
                                        &bmp_encoder, nullptr));
}

}  // namespace framekit::imageio

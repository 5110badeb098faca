// Native BMP writer. It produces, for an RGB24 frame, the same bytes as the GDI+ BMP encoder:
// BITMAPFILEHEADER + BITMAPINFOHEADER (54 bytes), 24 bits, BI_RGB, positive height (rows stored
// bottom-up, so the first row in memory is the top of the picture), rows zero-padded to a
// multiple of 4, 3780 pixels per metre (96 dpi) both ways. An RGB32 frame is written the way
// Windows GDI+ writes 32bpp ARGB: 32 bits, BI_RGB, the fourth byte kept. Plain C++, built on
// every platform: Linux saves through it, and the Windows tests compare GDI+ files with it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace framekit::imageio {

enum class SaveFormat : int32_t { kRGB24 = 3, kRGB32 = 4 };  // value: bytes per pixel

inline constexpr int32_t kBmpHeaderBytes = 54;
inline constexpr int32_t kBmpPixelsPerMetre = 3780;

// Row and file sizes of a frame saved as BMP, all in bytes.
struct BmpPlan {
  int32_t width;
  int32_t height;
  SaveFormat format;
  int64_t source_stride;  // RGB24: aligned row stride; RGB32: 4 * width
  int64_t pixel_bytes;    // pixel bytes of a row, the only ones read from the frame
  int64_t file_stride;    // pixel_bytes rounded up to a multiple of 4
  int64_t image_bytes;    // file_stride * height (biSizeImage)
  int64_t file_bytes;     // image_bytes + header (bfSize)
};

// Empty when width or height is below 1, or when the file would not fit the format: a row
// stride over INT32_MAX or a file over 4 GiB (its 32-bit size fields).
std::optional<BmpPlan> PlanBmp(int32_t width, int32_t height, SaveFormat format);

// Where the file's bytes go, in file order.
class ByteSink {
 public:
  virtual bool Write(const uint8_t* data, size_t size) = 0;

 protected:
  ~ByteSink() = default;
};

// The 54 header bytes of the planned file.
std::array<uint8_t, kBmpHeaderBytes> BmpHeader(const BmpPlan& plan);

// Writes header and rows. Reads exactly plan.pixel_bytes of every frame row, never the row
// padding. Returns false as soon as the sink fails. Does not allocate.
bool WriteBmp(const uint8_t* pixels, const BmpPlan& plan, ByteSink& sink);

// The whole file in memory; empty when PlanBmp refuses the size.
std::vector<uint8_t> EncodeBmp(const uint8_t* pixels, int32_t width, int32_t height,
                               SaveFormat format);

}  // namespace framekit::imageio

// Image saving exports. Nothing may cross the C boundary: an allocation failure inside a save
// ends the save, silently, like every other failure of these functions.
#include "framekit/framekit.h"
#include "imageio/bmp_save.h"

namespace {

using framekit::imageio::SaveFormat;

void SaveQuietly(const uint8_t* pixels, int32_t width, int32_t height, SaveFormat format,
                 const char16_t* file_name) noexcept {
  try {
    framekit::imageio::SaveImage(pixels, width, height, format, file_name);
  } catch (...) {
  }
}

}  // namespace

extern "C" {

void SaveImageRGB24(const uint8_t* pixels, int32_t width, int32_t height,
                    const char16_t* file_name) noexcept {
  SaveQuietly(pixels, width, height, SaveFormat::kRGB24, file_name);
}

void SaveImageRGB32(const uint8_t* pixels, int32_t width, int32_t height,
                    const char16_t* file_name) noexcept {
  SaveQuietly(pixels, width, height, SaveFormat::kRGB32, file_name);
}

}  // extern "C"

// Saving a frame as a BMP file. Windows goes through GDI+ (the host has started it); other
// platforms use the native writer of bmp_writer.h, which gives the same file for RGB24.
#pragma once

#include <cstdint>

#include "imageio/bmp_writer.h"

namespace framekit::imageio {

// Writes width x height pixels (RGB24 rows at the aligned row stride, RGB32 rows of 4 * width
// bytes; the first row in memory becomes the top row) to file_name, a zero-terminated UTF-16
// name, as BMP whatever its extension. Writes nothing for a null pointer or a width or height
// below 1. Reports nothing: a failure leaves no file (or, with GDI+, whatever GDI+ leaves).
void SaveImage(const uint8_t* pixels, int32_t width, int32_t height, SaveFormat format,
               const char16_t* file_name);

}  // namespace framekit::imageio

// The demo's test picture: colour bars, grey and channel ramps, 1-pixel lines and a checker, and
// labels in a built-in font, laid out so that a picture shown upside down, mirrored or with red
// and blue exchanged is obvious at a glance.
#pragma once

#include <cstdint>

#include "image.h"

namespace framekit::tool {

// Draws the picture as RGB24, memory row 0 at the top (the row the image savers put at the top).
// Works at any size; parts that do not fit are clipped. Empty for a width or height below 1.
Image DrawTestPicture(int32_t width, int32_t height);

}  // namespace framekit::tool

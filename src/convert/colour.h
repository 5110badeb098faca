// Whole-frame colour conversions. RGB frames are bottom-up with aligned rows, YUY2 and YV12
// frames top-down with packed rows; the YUV conversions turn the RGB24 side upside down to
// bridge the two. Each function hands back the status of the primitive the frame's contract
// names (see the public header); nothing else is checked here.
#pragma once

#include <cstdint>

#include "primitives/core/types.h"

namespace framekit::convert {

using prim::Status;

Status Yuy2ToRgb24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height);
Status Rgb24ToYuy2(uint8_t* src, uint8_t* dst, int32_t width, int32_t height);
Status Yv12ToRgb24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height);
Status Rgb24ToYv12(uint8_t* src, uint8_t* dst, int32_t width, int32_t height);
Status Rgb32ToRgb24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height);
Status Rgb24ToRgb32(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height);
Status Rgb24ToRgba(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height, uint8_t alpha);
Status Rgb24ToBgr24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height, int32_t step);

}  // namespace framekit::convert

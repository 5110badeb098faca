// Motion detection, overlay drawing and keying exports: argument forwarding only.
#include "compose/compose.h"
#include "framekit/framekit.h"
#include "motion/motion_detect.h"
#include "primitives/core/strides.h"

namespace cp = framekit::compose;
using framekit::RowByteStrideRGB24;
using framekit::RowByteStrideRGB32;

namespace {

// Both widths multiples of 4 (signed remainder): the rounded blends.
bool Fast(int32_t src_width, int32_t dst_width) { return src_width % 4 == 0 && dst_width % 4 == 0; }

}  // namespace

extern "C" {

uint64_t MotionDetectionCompareImages(const uint8_t* frame_a, const uint8_t* frame_b,
                                      uint8_t* diff_map, uint8_t luminance_mode, uint8_t use_red,
                                      uint8_t use_green, uint8_t use_blue,
                                      int32_t pixel_count) noexcept {
  return framekit::motion::CompareImages(frame_a, frame_b, diff_map, luminance_mode != 0,
                                         use_red != 0, use_green != 0, use_blue != 0, pixel_count);
}
void MotionDetectionBuildMatrix(int32_t width, int32_t height, int32_t columns, int32_t rows,
                                uint8_t* matrix, const uint8_t* diff_map) noexcept {
  framekit::motion::BuildMatrix(width, height, columns, rows, matrix, diff_map);
}
int64_t MotionDetectionHighlight(uint8_t* frame, const uint8_t* levels, int32_t pixel_count,
                                 int32_t colour_mode, int32_t threshold) noexcept {
  return framekit::motion::Highlight(frame, levels, pixel_count, colour_mode, threshold);
}

int32_t Draw_RGB24OnRGB24(const uint8_t* src, int32_t src_width, int32_t src_height, uint8_t* dst,
                          int32_t dst_width, int32_t, int32_t x, int32_t y) noexcept {
  return cp::CopyRGB24({src, src_width, src_height, RowByteStrideRGB24(src_width), dst,
                        RowByteStrideRGB24(dst_width), x, y});
}
int32_t Draw_RGB24OnRGB24S(const uint8_t* src, int32_t src_width, int32_t src_height,
                           int32_t src_stride, uint8_t* dst, int32_t, int32_t, int32_t dst_stride,
                           int32_t x, int32_t y) noexcept {
  return cp::CopyRGB24({src, src_width, src_height, src_stride, dst, dst_stride, x, y});
}
void Draw_RGB32OnRGB24(const uint8_t* src, int32_t src_width, int32_t src_height, uint8_t* dst,
                       int32_t dst_width, int32_t, int32_t x, int32_t y) noexcept {
  cp::BlendRGB32OnRGB24({src, src_width, src_height, RowByteStrideRGB32(src_width), dst,
                         RowByteStrideRGB24(dst_width), x, y},
                        256, Fast(src_width, dst_width));
}
void Draw_RGB32OnRGB24S(const uint8_t* src, int32_t src_width, int32_t src_height,
                        int32_t src_stride, uint8_t* dst, int32_t dst_width, int32_t,
                        int32_t dst_stride, int32_t x, int32_t y) noexcept {
  cp::BlendRGB32OnRGB24({src, src_width, src_height, src_stride, dst, dst_stride, x, y}, 256,
                        Fast(src_width, dst_width));
}
void Draw_RGB24OnRGB32(const uint8_t* src, int32_t src_width, int32_t src_height, uint8_t* dst,
                       int32_t dst_width, int32_t, int32_t x, int32_t y) noexcept {
  cp::CopyRGB24IntoRGB32({src, src_width, src_height, RowByteStrideRGB24(src_width), dst,
                          RowByteStrideRGB32(dst_width), x, y});
}
void Draw_RGB24OnRGB24_Transp(const uint8_t* src, int32_t src_width, int32_t src_height,
                              uint8_t* dst, int32_t dst_width, int32_t, int32_t x, int32_t y,
                              uint8_t transparency) noexcept {
  cp::BlendRGB24({src, src_width, src_height, RowByteStrideRGB24(src_width), dst,
                  RowByteStrideRGB24(dst_width), x, y},
                 transparency, Fast(src_width, dst_width));
}
void Draw_RGB32OnRGB24_Transp(const uint8_t* src, int32_t src_width, int32_t src_height,
                              uint8_t* dst, int32_t dst_width, int32_t, int32_t x, int32_t y,
                              uint8_t transparency) noexcept {
  cp::BlendRGB32OnRGB24({src, src_width, src_height, RowByteStrideRGB32(src_width), dst,
                         RowByteStrideRGB24(dst_width), x, y},
                        transparency, Fast(src_width, dst_width));
}
void Draw_RGB32OnRGB32(const uint8_t* src, int32_t src_width, int32_t src_height, uint8_t* dst,
                       int32_t dst_width, int32_t, int32_t x, int32_t y, uint8_t* work,
                       int32_t work_width, int32_t work_height) noexcept {
  cp::CompositeRGB32({src, src_width, src_height, RowByteStrideRGB32(src_width), dst,
                      RowByteStrideRGB32(dst_width), x, y},
                     work, RowByteStrideRGB32(work_width), work_height);
}
void Draw_RGB24_TraspChange(uint8_t* frame, int32_t width, int32_t height, int32_t delta) noexcept {
  cp::ShiftAlpha(frame, width, height, delta);
}

int32_t ColorKeyRGB24(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                      int32_t src2_step, uint8_t* dst, int32_t dst_step, int32_t width,
                      int32_t height) noexcept {
  return cp::ColorKeyRGB24(src1, src1_step, src2, src2_step, dst, dst_step, width, height);
}
void ChromaKey(uint8_t* frame, int32_t width, int32_t height, const uint8_t* background,
               const double* alpha_map, int32_t, int32_t, int32_t key_channel) noexcept {
  cp::ChromaKey(frame, width, height, background, alpha_map, key_channel);
}
void ChromaKeyLoadAlphaMap(double* alpha_map, int32_t low, int32_t high) noexcept {
  cp::LoadAlphaMap(alpha_map, low, high);
}

}  // extern "C"

#include "convert/geometry.h"

#include <cstring>

#include "primitives/copy/copy.h"
#include "primitives/core/strides.h"
#include "primitives/mirror/mirror.h"
#include "primitives/set/set.h"

namespace framekit::convert {

Status FlipRGB24(uint8_t* frame, int32_t width, int32_t height, int32_t axis) {
  return prim::ippiMirror_8u_C3IR(frame, BitmapStride(width, 24), {width, height}, axis);
}

Status FlipRGB32(uint8_t* frame, int32_t width, int32_t height, int32_t axis) {
  return prim::ippiMirror_8u_C4IR(frame, BitmapStride(width, 32), {width, height}, axis);
}

Status FlipRGB32Into(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height,
                     int32_t axis) {
  const int32_t stride = BitmapStride(width, 32);
  return prim::ippiMirror_8u_C4R(src, stride, dst, stride, {width, height}, axis);
}

// A YUY2 row is handled as 2 * width single bytes: exact for reversing the row order, which is
// the only YUY2 flip there is.
Status FlipYUY2Rows(uint8_t* frame, int32_t width, int32_t height) {
  return prim::ippiMirror_8u_C1IR(frame, BitmapStride(width, 16), {WrapMul(2, width), height},
                                  prim::kAxisHorizontal);
}

Status FlipYUY2RowsInto(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) {
  const int32_t stride = BitmapStride(width, 16);
  return prim::ippiMirror_8u_C1R(src, stride, dst, stride, {WrapMul(2, width), height},
                                 prim::kAxisHorizontal);
}

Status Crop(PixelBytes bpp, const uint8_t* src, int32_t width, uint8_t* dst, const HostRect& rect) {
  const int32_t b = static_cast<int32_t>(bpp);
  const prim::Size region{WrapSub(rect.right, rect.left), WrapSub(rect.bottom, rect.top)};
  const int32_t src_stride = RowByteStride(WrapMul(b, width));
  const int32_t dst_stride = RowByteStride(WrapMul(b, region.width));
  // The offset is a 32-bit signed product, as the host computes it.
  const int32_t offset = WrapAdd(WrapMul(rect.top, src_stride), WrapMul(rect.left, b));
  const uint8_t* first = OffsetAddress(src, offset);
  if (bpp == PixelBytes::kRGB24) {
    return prim::ippiCopy_8u_C3R(first, src_stride, dst, dst_stride, region);
  }
  return prim::ippiCopy_8u_C4R(first, src_stride, dst, dst_stride, region);
}

void Cut(PixelBytes bpp, const uint8_t* src, int32_t width, int32_t height, uint8_t* dst,
         int32_t cut_width, int32_t cut_height) {
  const int32_t b = static_cast<int32_t>(bpp);
  const int32_t rows = WrapSub(height, cut_height);
  const int32_t columns = WrapSub(width, cut_width);
  if (rows < 1 || columns < 1) return;
  const int32_t src_stride = RowByteStride(WrapMul(b, width));
  const int32_t dst_stride = RowByteStride(WrapMul(b, columns));
  const size_t row_bytes = static_cast<size_t>(columns) * static_cast<size_t>(b);
  for (int32_t r = 0; r < rows; ++r) {
    std::memcpy(dst + static_cast<int64_t>(r) * dst_stride,
                src + static_cast<int64_t>(r) * src_stride, row_bytes);
  }
}

Status Fill(uint8_t* frame, int32_t width, const HostRect& rect, uint32_t colour) {
  const uint8_t value[3] = {static_cast<uint8_t>(colour), static_cast<uint8_t>(colour >> 8),
                            static_cast<uint8_t>(colour >> 16)};
  const int32_t stride = RowByteStrideRGB24(width);
  const int32_t offset = WrapAdd(WrapMul(rect.top, stride), WrapMul(rect.left, 3));
  return prim::ippiSet_8u_C3R(value, OffsetAddress(frame, offset), stride,
                              {WrapSub(rect.right, rect.left), WrapSub(rect.bottom, rect.top)});
}

}  // namespace framekit::convert

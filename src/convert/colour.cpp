#include "convert/colour.h"

#include "primitives/channel/channel.h"
#include "primitives/colour/colour.h"
#include "primitives/core/strides.h"
#include "primitives/mirror/mirror.h"

namespace framekit::convert {
namespace {

using prim::Size;

// The three planes of a YV12 frame: Y (step width), then two planes of step width / 2 starting
// at width * height and width * height + (width * height) / 4 (32-bit products).
template <typename Byte>
struct Yv12Planes {
  Byte* plane[3];
  int32_t step[3];
};

template <typename Byte>
Yv12Planes<Byte> PlanesOf(Byte* frame, int32_t width, int32_t height) {
  const int32_t luma = WrapMul(width, height);
  const int32_t chroma_step = width / 2;
  return {{frame, OffsetAddress(frame, luma), OffsetAddress(frame, WrapAdd(luma, luma / 4))},
          {width, chroma_step, chroma_step}};
}

// Row `row` of a frame, as an address (the frame may be null or the row outside it).
template <typename Byte>
Byte* RowAt(Byte* frame, int32_t stride, int32_t row) {
  return OffsetAddress(frame, WrapMul(row, stride));
}

}  // namespace

// Converting into the mirrored rows directly gives the bytes of convert-then-mirror whenever the
// conversion succeeds, and then the mirror's status is 0, or -6 for a single row (which the
// mirror would have left alone). A conversion that fails writes nothing; the mirror then runs
// on the destination as it stands.
Status Yuy2ToRgb24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) {
  const int32_t stride = RowByteStrideRGB24(width);
  const Size roi{width, height};
  if (dst != nullptr && height > 0) {
    const Status s = prim::ippiYCbCr422ToBGR_8u_C2C3R(
        src, WrapMul(2, width), RowAt(dst, stride, height - 1), WrapSub(0, stride), roi);
    if (s == prim::ippStsNoErr) return height == 1 ? prim::ippStsSizeErr : prim::ippStsNoErr;
  }
  return prim::ippiMirror_8u_C3IR(dst, stride, roi, prim::kAxisHorizontal);
}

// The source is left upside down. When the conversion will succeed, rows are taken in pairs from
// both ends: each is converted into the other's destination row, then the two source rows change
// places, so the source is read while it is in cache. Otherwise the mirror and the conversion run
// one after the other, the mirror's status unused.
Status Rgb24ToYuy2(uint8_t* src, uint8_t* dst, int32_t width, int32_t height) {
  const int32_t stride = RowByteStrideRGB24(width);
  const int32_t dst_step = WrapMul(2, width);
  if (src == nullptr || dst == nullptr || width < 2 || height < 1) {
    prim::ippiMirror_8u_C3IR(src, stride, {width, height}, prim::kAxisHorizontal);
    return prim::ippiBGRToYCbCr422_8u_C3C2R(src, stride, dst, dst_step, {width, height});
  }
  const Size row{width, 1};
  for (int32_t lo = 0, hi = height - 1; lo <= hi; ++lo, --hi) {
    uint8_t* src_lo = RowAt(src, stride, lo);
    uint8_t* src_hi = RowAt(src, stride, hi);
    prim::ippiBGRToYCbCr422_8u_C3C2R(src_hi, stride, RowAt(dst, dst_step, lo), dst_step, row);
    if (lo == hi) break;
    prim::ippiBGRToYCbCr422_8u_C3C2R(src_lo, stride, RowAt(dst, dst_step, hi), dst_step, row);
    prim::ippiMirror_8u_C3IR(src_lo, WrapMul(hi - lo, stride), {width, 2}, prim::kAxisHorizontal);
  }
  return prim::ippStsNoErr;
}

// Merged like Yuy2ToRgb24 for even sizes only: with an odd size the conversion leaves a column or
// a row unwritten, and the mirror moves those old bytes, which a merged pass would not.
Status Yv12ToRgb24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) {
  const int32_t stride = RowByteStrideRGB24(width);
  const Size roi{width, height};
  const auto planes = PlanesOf(src, width, height);
  if (((width | height) & 1) == 0 && dst != nullptr && height > 0) {
    const Status s = prim::ippiYUV420ToBGR_8u_P3C3R(
        planes.plane, planes.step, RowAt(dst, stride, height - 1), WrapSub(0, stride), roi);
    if (s == prim::ippStsNoErr) return prim::ippStsNoErr;  // even height: at least 2 rows
  }
  // Odd sizes, or a conversion that fails (and then fails again here without writing).
  prim::ippiYUV420ToBGR_8u_P3C3R(planes.plane, planes.step, dst, stride, roi);
  return prim::ippiMirror_8u_C3IR(dst, stride, roi, prim::kAxisHorizontal);
}

// The source is left upside down: turned over and converted in one pass by the primitive
// layer. When the conversion's checks fail that primitive does nothing; the mirror still runs,
// its status unused, and the conversion's status is returned.
Status Rgb24ToYv12(uint8_t* src, uint8_t* dst, int32_t width, int32_t height) {
  const int32_t stride = RowByteStrideRGB24(width);
  const Size roi{width, height};
  const auto planes = PlanesOf(dst, width, height);
  const Status s = prim::MirrorBGRToYUV420(src, stride, planes.plane, planes.step, roi);
  if (s < 0) prim::ippiMirror_8u_C3IR(src, stride, roi, prim::kAxisHorizontal);
  return s;
}

Status Rgb32ToRgb24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) {
  return prim::ippiCopy_8u_AC4C3R(src, RowByteStrideRGB32(width), dst, RowByteStrideRGB24(width),
                                  {width, height});
}

Status Rgb24ToRgb32(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height) {
  return prim::ippiCopy_8u_C3AC4R(src, RowByteStrideRGB24(width), dst, RowByteStrideRGB32(width),
                                  {width, height});
}

// Byte 3 gets alpha added to what the destination held (saturating), not set to alpha. When the
// copy will succeed, copy and addition are one pass (the same bytes); otherwise the addition runs
// after the failed copy on the whole destination.
Status Rgb24ToRgba(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height, uint8_t alpha) {
  const uint8_t value[4] = {0, 0, 0, alpha};
  const int32_t dst_step = WrapMul(4, width);
  if (src == nullptr || dst == nullptr || width <= 0 || height <= 0) {
    Rgb24ToRgb32(src, dst, width, height);
    return prim::ippiAddC_8u_C4IRSfs(value, dst, dst_step, {width, height}, 0);
  }
  return prim::CopyC3AC4AddC(src, RowByteStrideRGB24(width), dst, dst_step, {width, height}, value);
}

Status Rgb24ToBgr24(const uint8_t* src, uint8_t* dst, int32_t width, int32_t height, int32_t step) {
  static constexpr int32_t kReversed[3] = {2, 1, 0};
  return prim::ippiSwapChannels_8u_C3R(src, step, dst, step, {width, height}, kReversed);
}

}  // namespace framekit::convert

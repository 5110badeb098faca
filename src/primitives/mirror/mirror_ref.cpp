// Reference mirror: byte by byte, the definition every vector variant is tested against.
#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/mirror/mirror.h"

namespace framekit::prim::ref {
namespace {

template <int B>
void SwapPixel(uint8_t* a, uint8_t* b) {
  for (int k = 0; k < B; ++k) {
    const uint8_t t = a[k];
    a[k] = b[k];
    b[k] = t;
  }
}

template <int B>
void ReverseRow(uint8_t* row, int32_t width) {
  for (int32_t c = 0; c < width / 2; ++c) SwapPixel<B>(row + c * B, row + (width - 1 - c) * B);
}

template <int B>
Status MirrorInPlace(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  if (const Status s = CheckMirror(p, p, roi, axis); s != ippStsNoErr) return s;
  const int32_t w = roi.width, h = roi.height;
  auto row = [&](int32_t r) { return RowAt(p, step, r); };
  if (axis == kAxisVertical) {
    for (int32_t r = 0; r < h; ++r) ReverseRow<B>(row(r), w);
    return ippStsNoErr;
  }
  for (int32_t r = 0; r < h / 2; ++r) {
    uint8_t* top = row(r);
    uint8_t* bottom = row(h - 1 - r);
    for (int32_t c = 0; c < w; ++c) {
      const int32_t mc = axis == kAxisBoth ? w - 1 - c : c;
      SwapPixel<B>(top + c * B, bottom + mc * B);
    }
  }
  if (axis == kAxisBoth && h % 2 == 1) ReverseRow<B>(row(h / 2), w);
  return ippStsNoErr;
}

template <int B>
Status MirrorCopy(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi,
                  int32_t axis) {
  if (const Status s = CheckMirror(src, dst, roi, axis); s != ippStsNoErr) return s;
  const int32_t w = roi.width, h = roi.height;
  for (int32_t r = 0; r < h; ++r) {
    const int32_t sr = axis == kAxisVertical ? r : h - 1 - r;
    const uint8_t* s = RowAt(src, src_step, sr);
    uint8_t* d = RowAt(dst, dst_step, r);
    for (int32_t c = 0; c < w; ++c) {
      const int32_t sc = axis == kAxisHorizontal ? c : w - 1 - c;
      for (int k = 0; k < B; ++k) d[c * B + k] = s[sc * B + k];
    }
  }
  return ippStsNoErr;
}

}  // namespace

Status ippiMirror_8u_C1IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return MirrorInPlace<1>(p, step, roi, axis);
}
Status ippiMirror_8u_C3IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return MirrorInPlace<3>(p, step, roi, axis);
}
Status ippiMirror_8u_C4IR(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  return MirrorInPlace<4>(p, step, roi, axis);
}
Status ippiMirror_8u_C1R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t axis) {
  return MirrorCopy<1>(src, src_step, dst, dst_step, roi, axis);
}
Status ippiMirror_8u_C4R(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi, int32_t axis) {
  return MirrorCopy<4>(src, src_step, dst, dst_step, roi, axis);
}

}  // namespace framekit::prim::ref

// Colour conversions, reference bodies: the formulas of colour_kernels.h pixel by pixel. They
// serve the classes without a vector body of their own.
#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"
#include "primitives/mirror/mirror.h"

namespace framekit::prim::ref {
namespace {

inline const uint8_t* RowOf(const uint8_t* p, int32_t step, int32_t r) {
  return p + static_cast<int64_t>(r) * step;
}
inline uint8_t* RowOf(uint8_t* p, int32_t step, int32_t r) {
  return p + static_cast<int64_t>(r) * step;
}

void Row422ToBgr(const uint8_t* s, uint8_t* d, int32_t width) {
  const int32_t pairs = width / 2;
  for (int32_t i = 0; i < pairs; ++i, s += 4, d += 6) {
    const int32_t u = s[1] - 128, v = s[3] - 128;
    YuvToBgr422(s[0], u, v, d);
    YuvToBgr422(s[2], u, v, d + 3);
  }
  // An odd last pixel: Y and U from the two bytes after the last group, V from that group.
  if (width & 1) YuvToBgr422(s[0], s[1] - 128, s[-1] - 128, d);
}

void RowBgrTo422(const uint8_t* s, uint8_t* d, int32_t width) {
  const int32_t pairs = width / 2;
  for (int32_t i = 0; i < pairs; ++i, s += 6, d += 4) BgrPairTo422(s, d);
  if (width & 1) BgrLastTo422(s, d);
}

}  // namespace

Status ippiYCbCr422ToBGR_8u_C2C3R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  if (const Status s = Check422(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    Row422ToBgr(RowOf(src, src_step, r), RowOf(dst, dst_step, r), roi.width);
  }
  return ippStsNoErr;
}

Status ippiBGRToYCbCr422_8u_C3C2R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  if (const Status s = Check422(src, dst, roi); s != ippStsNoErr) return s;
  for (int32_t r = 0; r < roi.height; ++r) {
    RowBgrTo422(RowOf(src, src_step, r), RowOf(dst, dst_step, r), roi.width);
  }
  return ippStsNoErr;
}

Status ippiYUV420ToBGR_8u_P3C3R(const uint8_t* const src[3], const int32_t src_step[3],
                                uint8_t* dst, int32_t dst_step, Size roi) {
  if (const Status s = Check420(src, src_step, dst, roi); s != ippStsNoErr) return s;
  for (int32_t i = 0; i < roi.height / 2; ++i) {
    const uint8_t* p2 = RowOf(src[1], src_step[1], i);
    const uint8_t* p3 = RowOf(src[2], src_step[2], i);
    for (int32_t dy = 0; dy < 2; ++dy) {
      const uint8_t* y = RowOf(src[0], src_step[0], 2 * i + dy);
      uint8_t* d = RowOf(dst, dst_step, 2 * i + dy);
      for (int32_t x = 0; x < roi.width / 2 * 2; ++x) {
        YuvToBgr420(y[x], p2[x / 2] - 128, p3[x / 2] - 128, d + 3 * x);
      }
    }
  }
  return Status420(roi);
}

Status ippiBGRToYUV420_8u_C3P3R(const uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                const int32_t dst_step[3], Size roi) {
  if (const Status s = Check420(dst, dst_step, src, roi); s != ippStsNoErr) return s;
  for (int32_t i = 0; i < roi.height / 2; ++i) {
    const uint8_t* s0 = RowOf(src, src_step, 2 * i);
    const uint8_t* s1 = RowOf(src, src_step, 2 * i + 1);
    uint8_t* y0 = RowOf(dst[0], dst_step[0], 2 * i);
    uint8_t* y1 = RowOf(dst[0], dst_step[0], 2 * i + 1);
    uint8_t* p2 = RowOf(dst[1], dst_step[1], i);
    uint8_t* p3 = RowOf(dst[2], dst_step[2], i);
    for (int32_t j = 0; j < roi.width / 2; ++j) {
      const uint8_t* a = s0 + 6 * j;
      const uint8_t* b = s1 + 6 * j;
      y0[2 * j] = Luma420(a);
      y0[2 * j + 1] = Luma420(a + 3);
      y1[2 * j] = Luma420(b);
      y1[2 * j + 1] = Luma420(b + 3);
      const int32_t c0 = a[0] + a[3] + b[0] + b[3];
      const int32_t c1 = a[1] + a[4] + b[1] + b[4];
      const int32_t c2 = a[2] + a[5] + b[2] + b[5];
      p2[j] = BlockU(c0, c1, c2);
      p3[j] = BlockV(c0, c1, c2);
    }
  }
  return Status420(roi);
}

// The definition: the conversion's checks, then the two primitives one after the other.
Status MirrorBGRToYUV420(uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                         const int32_t dst_step[3], Size roi) {
  if (const Status s = Check420(dst, dst_step, src, roi); s != ippStsNoErr) return s;
  ref::ippiMirror_8u_C3IR(src, src_step, roi, kAxisHorizontal);  // one row: left as it is
  return ref::ippiBGRToYUV420_8u_C3P3R(src, src_step, dst, dst_step, roi);
}

}  // namespace framekit::prim::ref

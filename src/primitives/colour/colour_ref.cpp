// Colour conversions, reference bodies: the formulas of colour_kernels.h pixel by pixel. They
// serve the classes without a vector body of their own.
#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"
#include "primitives/mirror/mirror.h"

namespace framekit::prim::ref {

Status ippiYCbCr422ToBGR_8u_C2C3R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  return Convert422(src, src_step, dst, dst_step, roi,
                    [](const uint8_t* s, uint8_t* d, int32_t w) { Row422ToBgr(s, d, 0, w); });
}

Status ippiBGRToYCbCr422_8u_C3C2R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  return Convert422(src, src_step, dst, dst_step, roi,
                    [](const uint8_t* s, uint8_t* d, int32_t w) { RowBgrTo422(s, d, 0, w); });
}

Status ippiYUV420ToBGR_8u_P3C3R(const uint8_t* const src[3], const int32_t src_step[3],
                                uint8_t* dst, int32_t dst_step, Size roi) {
  return Convert420ToBgr(src, src_step, dst, dst_step, roi,
                         [](const uint8_t* y0, const uint8_t* y1, const uint8_t* p2,
                            const uint8_t* p3, uint8_t* d0, uint8_t* d1, int32_t blocks) {
                           Blocks420ToBgr(y0, y1, p2, p3, d0, d1, 0, blocks);
                         });
}

Status ippiBGRToYUV420_8u_C3P3R(const uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                const int32_t dst_step[3], Size roi) {
  return ConvertBgrTo420(
      src, src_step, dst, dst_step, roi,
      [](const uint8_t* s0, const uint8_t* s1, const Rows420& out, int32_t blocks) {
        BgrBlocksTo420(s0, s1, out, 0, blocks);
      });
}

// The definition: the conversion's checks, then the two primitives one after the other.
Status MirrorBGRToYUV420(uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                         const int32_t dst_step[3], Size roi) {
  if (const Status s = Check420(dst, dst_step, src, roi); s != ippStsNoErr) return s;
  ref::ippiMirror_8u_C3IR(src, src_step, roi, kAxisHorizontal);  // one row: left as it is
  return ref::ippiBGRToYUV420_8u_C3P3R(src, src_step, dst, dst_step, roi);
}

}  // namespace framekit::prim::ref

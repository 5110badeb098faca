#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/deinterlace/deinterlace.h"

namespace framekit::prim::ref {

Status ippiDeinterlaceFilterCAVT_8u_C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                        int32_t dst_step, uint16_t threshold, Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  const int64_t w = roi.width, h = roi.height;
  const int32_t t = threshold < 255 ? threshold : 255;
  for (int64_t y = 0; y < h; ++y) {
    const uint8_t* o = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    if (y % 2 == 0) {
      std::memcpy(out, o, static_cast<size_t>(w));
      continue;
    }
    const BottomRows r = BottomRowsAt(src, src_step, y, h);
    for (int64_t i = 0; i < w; ++i) out[i] = CavtSample(o[i], r.c[i], r.e[i], r.u[i], r.d[i], t);
  }
  return ippStsNoErr;
}

Status ippiDeinterlaceFilterTriangle_8u_C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                            int32_t dst_step, Size roi, uint32_t centre_weight,
                                            uint32_t layout) {
  if (const Status s = CheckTriangle(src, dst, roi, layout); s != ippStsNoErr) return s;
  const int32_t k = centre_weight >= 256 ? 0 : 256 - static_cast<int32_t>(centre_weight);
  const int64_t w = roi.width, h = roi.height;
  for (int64_t y = 0; y < h; ++y) {
    const uint8_t* x = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    if (y % 2 == 0 || !TriangleFilters(layout, y, h)) {
      std::memcpy(out, x, static_cast<size_t>(w));
      continue;
    }
    const BottomRows r = BottomRowsAt(src, src_step, y, h);
    for (int64_t i = 0; i < w; ++i) out[i] = TriangleSample(x[i], r.c[i], r.e[i], k);
  }
  return ippStsNoErr;
}

Status ippiDeinterlaceBlend_8u_C1(const uint8_t* const sources[3], int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size size, int32_t top_first, int32_t top_field,
                                  int32_t copy_field, const DeinterlaceBlendState* state) {
  if (const Status s = CheckDeinterlaceBlend(sources, dst, size, state); s != ippStsNoErr) {
    return s;
  }
  const BlendFrames f = ArrangeBlendFrames(sources, top_first, top_field);
  const int64_t w = size.width, h = size.height;
  for (int64_t y = 0; y < h; ++y) {
    uint8_t* out = RowAt(dst, dst_step, y);
    if ((y & 1) == f.kept_parity) {
      if (copy_field != 0) std::memcpy(out, RowAt(f.current, src_step, y), static_cast<size_t>(w));
      continue;
    }
    const BlendRows r = BlendRowsAt(f, src_step, y, h);
    for (int64_t i = 0; i < w; ++i) out[i] = BlendSample(BlendTapsAt(r, i), *state);
  }
  return ippStsNoErr;
}

}  // namespace framekit::prim::ref

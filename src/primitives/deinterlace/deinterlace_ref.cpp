#include <algorithm>
#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/deinterlace/deinterlace.h"
#include "primitives/deinterlace/deinterlace_motion.h"

namespace framekit::prim::ref {

namespace {

// A block's SAD between the other field moved by (u, v) and the kept field at the matching
// phase, over the block's pixels inside the plane.
uint32_t BlockCost(const cavt::Plane& p, int64_t by, int64_t bx, int32_t u, int32_t v) {
  const cavt::Split sv = cavt::SplitV(v);
  const int64_t i_end = std::min(p.other, (by + 1) * cavt::kBlockH);
  const int64_t x_end = std::min(p.width, (bx + 1) * cavt::kBlockW);
  uint32_t sum = 0;
  for (int64_t i = by * cavt::kBlockH; i < i_end; ++i) {
    const uint8_t* o = p.Other(i - sv.m);
    for (int64_t x = bx * cavt::kBlockW; x < x_end; ++x) {
      sum +=
          static_cast<uint32_t>(AbsDiff(cavt::HShift(p, o, x, u), cavt::KeptAt(p, i, x, sv.f + 4)));
    }
  }
  return sum;
}

// Whether the block's other-field rows equal the kept rows above, or those below.
bool CopiesKeptRows(const cavt::Plane& p, int64_t by, int64_t bx) {
  const int64_t i_end = std::min(p.other, (by + 1) * cavt::kBlockH);
  const int64_t x_end = std::min(p.width, (bx + 1) * cavt::kBlockW);
  bool above = true, below = true;
  for (int64_t i = by * cavt::kBlockH; i < i_end; ++i) {
    const uint8_t *o = p.Other(i), *c = p.Kept(i), *e = p.Kept(i + 1);
    for (int64_t x = bx * cavt::kBlockW; x < x_end; ++x) {
      above = above && o[3 * x] == c[3 * x];
      below = below && o[3 * x] == e[3 * x];
    }
  }
  return above || below;
}

void SearchPlane(const cavt::Plane& p, cavt::BlockField& f) {
  for (int64_t by = 0; by < f.rows; ++by) {
    for (int64_t bx = 0; bx < f.cols; ++bx) {
      const auto cost = [&](int32_t u, int32_t v) { return BlockCost(p, by, bx, u, v); };
      uint32_t costs[cavt::kIntegerCandidates];
      for (int32_t v = -cavt::kRangeV; v <= cavt::kRangeV; ++v) {
        for (int32_t u = -cavt::kRangeU; u <= cavt::kRangeU; ++u) {
          costs[(v + cavt::kRangeV) * 9 + u + cavt::kRangeU] = cost(4 * u, 4 * v);
        }
      }
      const cavt::Vector best = cavt::Refine(cavt::PickInteger(costs), cost);
      const int64_t b = f.Index(by, bx);
      f.u[b] = static_cast<int8_t>(best.u);
      f.v[b] = static_cast<int8_t>(best.v);
      f.same[b] = CopiesKeptRows(p, by, bx) ? 1 : 0;
    }
  }
}

}  // namespace

// Each plane: a vector per block from the search, smoothed by the blocks' median, then every
// missing sample rebuilt with its block's vector.
Status ippiDeinterlaceFilterCAVT_8u_C1R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                        int32_t dst_step, uint16_t threshold, Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  cavt::CopyKeptRows(src, src_step, dst, dst_step, roi);
  if (roi.height < 2) return ippStsNoErr;
  cavt::MotionFields fields(roi);
  if (!fields.Ready()) {
    cavt::RebuildWithoutMotion(src, src_step, dst, dst_step, threshold, roi);
    return ippStsNoErr;
  }
  for (int64_t c = 0; c < fields.Planes(); ++c) {
    const cavt::Plane p = cavt::PlaneOf(src, src_step, roi, c);
    cavt::BlockField& f = fields[c];
    SearchPlane(p, f);
    cavt::SmoothField(f);
    for (int64_t i = 0; i < p.other; ++i) {
      const uint8_t* o = p.Other(i);
      uint8_t* out = RowAt(dst, dst_step, 2 * i + 1) + c;
      for (int64_t x = 0; x < p.width; ++x) {
        const int64_t b = f.Index(i / cavt::kBlockH, x / cavt::kBlockW);
        out[3 * x] =
            f.same[b] != 0 ? o[3 * x] : cavt::RebuildSample(p, i, x, f.u[b], f.v[b], threshold);
      }
    }
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

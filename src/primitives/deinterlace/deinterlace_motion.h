// The motion-compensated CAVT's pieces that every body shares: the filters, the planes of the
// interleaved sample image, the block vectors' storage, the search's visiting order and
// refinement, the vectors' median and the per-sample rebuild (the reference's loop and the
// vector bodies' edges). Internal linkage throughout: per-ISA files include this too.
//
// The image holds three interleaved planes (sample i belongs to plane i % 3, as an RGB24 row
// arrives); each plane is searched and rebuilt on its own, its columns clamped within itself.
// Vectors are in quarter pixels (u) and quarter frame rows (v); v splits into whole field rows
// m = (v + 4) >> 3 and a phase f = v - 8 m in -4..3.
#pragma once

#include <cstdint>
#include <cstring>

#include "primitives/core/memory.h"
#include "primitives/core/rows.h"
#include "primitives/deinterlace/deinterlace.h"

namespace framekit::prim::cavt {
namespace {

constexpr int64_t kBlockW = 16, kBlockH = 8;  // pixels and field rows (16 x 16 frame pixels)
constexpr int32_t kRangeU = 4, kRangeV = 3;   // the integer search: +-4 pixels, +-3 frame rows
constexpr int32_t kIntegerCandidates = (2 * kRangeU + 1) * (2 * kRangeV + 1);

// Horizontal quarter-pixel Catmull-Rom over 64, taps at x - 1 .. x + 2 (by phase q).
constexpr int32_t kHq[4][4] = {{0, 64, 0, 0}, {-4, 55, 15, -2}, {-4, 36, 36, -4}, {-2, 15, 55, -4}};
// The kept field at frame row 2 i + p / 4 (p = 0..7), taps at kept rows i - 1 .. i + 2: what
// the other field is compared with in the search.
constexpr int32_t kVe[8][4] = {{0, 64, 0, 0},    {-3, 62, 6, -1},  {-4, 56, 14, -2},
                               {-5, 47, 25, -3}, {-4, 36, 36, -4}, {-3, 25, 47, -5},
                               {-2, 14, 56, -4}, {-1, 6, 62, -3}};
// The rebuild's weights over 64 by phase f + 4: kept rows i - 1 .. i + 2, then the shifted other
// field at i - 1, i, i + 1. Least-squares fits on photographs unrelated to any test material;
// negative phases mirror the positive ones; at f = -4 the other field lies on the kept rows.
constexpr int32_t kRw[8][7] = {{-2, 25, 23, -4, -1, 10, 13},  {-16, -84, 67, 1, 21, 120, -45},
                               {-9, -44, 28, 1, 14, 87, -13}, {-2, -16, 13, 1, 5, 68, -5},
                               {0, 0, 0, 0, 0, 64, 0},        {1, 13, -16, -2, -5, 68, 5},
                               {1, 28, -44, -9, -13, 87, 14}, {1, 67, -84, -16, -45, 120, 21}};

static inline int64_t Clamp64(int64_t v, int64_t lo, int64_t hi) {
  return v < lo ? lo : (v > hi ? hi : v);
}

struct Split {
  int32_t m, f;  // whole field rows, phase in quarter frame rows (-4..3)
};
static inline Split SplitV(int32_t v) {
  const int32_t m = (v + 4) >> 3;
  return {m, v - 8 * m};
}

// One plane of the sample image: pixel x of a row is its sample channel + 3 x.
struct Plane {
  const uint8_t* src;
  int32_t step;
  int64_t channel, width;  // width in pixels
  int64_t kept, other;     // rows of the kept (even) and the other (odd) field

  const uint8_t* Kept(int64_t j) const {
    return RowAt(src, step, 2 * Clamp64(j, 0, kept - 1)) + channel;
  }
  const uint8_t* Other(int64_t j) const {
    return RowAt(src, step, 2 * Clamp64(j, 0, other - 1) + 1) + channel;
  }
  int32_t At(const uint8_t* row, int64_t x) const { return row[3 * Clamp64(x, 0, width - 1)]; }
};

static inline Plane PlaneOf(const uint8_t* src, int32_t step, Size roi, int64_t channel) {
  return {src, step, channel, (roi.width - channel + 2) / 3, (roi.height + 1) / 2, roi.height / 2};
}

// The row at x - u / 4 (u in quarter pixels): an offset sample, or the 4-tap filter rounded and
// clipped to 0..255.
static inline int32_t HShift(const Plane& p, const uint8_t* row, int64_t x, int32_t u) {
  const int32_t s = -u, q = s & 3;
  const int64_t x0 = x + (s >> 2);
  if (q == 0) return p.At(row, x0);
  int32_t acc = 32;
  for (int k = 0; k < 4; ++k) acc += kHq[q][k] * p.At(row, x0 - 1 + k);
  return Clamp(acc >> 6, 0, 255);
}

// The kept field at frame row 2 i + ph / 4.
static inline int32_t KeptAt(const Plane& p, int64_t i, int64_t x, int32_t ph) {
  if (ph == 0) return p.At(p.Kept(i), x);
  int32_t acc = 32;
  for (int k = 0; k < 4; ++k) acc += kVe[ph][k] * p.At(p.Kept(i - 1 + k), x);
  return Clamp(acc >> 6, 0, 255);
}

// The rebuilt sample of missing row i (frame row 2 i + 1) at x with vector (u, v), before the
// line-doubling guard.
static inline uint8_t RebuildSample(const Plane& p, int64_t i, int64_t x, int32_t u, int32_t v,
                                    int32_t t) {
  const Split sv = SplitV(v);
  const int32_t* w = kRw[sv.f + 4];
  int32_t acc = 32;
  for (int k = 0; k < 4; ++k) acc += w[k] * p.At(p.Kept(i - 1 + k), x);
  for (int k = 0; k < 3; ++k) {
    const int64_t j = Clamp64(i - 1 + k, 0, p.other - 1) - sv.m;
    acc += w[4 + k] * HShift(p, p.Other(j), x, u);
  }
  const int32_t c = p.At(p.Kept(i), x), e = p.At(p.Kept(i + 1), x);
  const int32_t lo = (c < e ? c : e) - t, hi = (c > e ? c : e) + t;
  return static_cast<uint8_t>(Clamp(Clamp(acc >> 6, lo, hi), 0, 255));
}

struct Vector {
  int32_t u, v;
  uint32_t cost;
};

// Stage 1's choice among the integer candidates, costs[(v + 3) * 9 + u + 4] for u in -4..4
// pixels and v in -3..3 rows: visited by (|v|, |u|, v, u), a later one taking over only when
// strictly better, so ties go to the shortest vector.
static inline Vector PickInteger(const uint32_t* costs) {
  Vector best{0, 0, costs[kRangeV * 9 + kRangeU]};
  for (int32_t av = 0; av <= kRangeV; ++av) {
    for (int32_t au = 0; au <= kRangeU; ++au) {
      for (int32_t v = -av; v <= av; v += (av == 0 ? 1 : 2 * av)) {
        for (int32_t u = -au; u <= au; u += (au == 0 ? 1 : 2 * au)) {
          const uint32_t c = costs[(v + kRangeV) * 9 + u + kRangeU];
          if (c < best.cost) best = {4 * u, 4 * v, c};
        }
      }
    }
  }
  return best;
}

// Stages 2 and 3: the eight neighbours at half, then quarter steps around the stage's start, in
// a fixed order, the strictly better taking over. cost(u, v) is a block's SAD.
template <class Cost>
Vector Refine(Vector best, Cost& cost) {
  for (int32_t step = 2; step >= 1; --step) {
    const Vector start = best;
    for (int32_t du = -step; du <= step; du += step) {
      for (int32_t dv = -step; dv <= step; dv += step) {
        if (du == 0 && dv == 0) continue;
        const uint32_t c = cost(start.u + du, start.v + dv);
        if (c < best.cost) best = {start.u + du, start.v + dv, c};
      }
    }
  }
  return best;
}

// The vectors of one plane's blocks, and whether a block's other field copies a kept row.
struct BlockField {
  int8_t *u, *v, *scratch;
  uint8_t* same;
  int64_t rows, cols;
  int64_t Index(int64_t by, int64_t bx) const { return by * cols + bx; }
};

// Storage for up to three planes' fields in one block, with `extra` bytes after them for a body's
// own work; empty when the allocation fails.
class MotionFields {
 public:
  explicit MotionFields(Size roi, int64_t extra = 0) : planes_(roi.width < 3 ? roi.width : 3) {
    int64_t total = 0;
    for (int64_t c = 0; c < planes_; ++c) {
      const Plane p = PlaneOf(nullptr, 0, roi, c);
      field_[c].rows = (p.other + kBlockH - 1) / kBlockH;
      field_[c].cols = (p.width + kBlockW - 1) / kBlockW;
      total += 4 * field_[c].rows * field_[c].cols;
    }
    extra_ = (total + 63) / 64 * 64;
    total = extra_ + extra;
    if (total <= 0 || total > INT32_MAX) return;
    block_ = ippsMalloc_8u(static_cast<int32_t>(total));
    uint8_t* at = block_;
    for (int64_t c = 0; at != nullptr && c < planes_; ++c) {
      const int64_t n = field_[c].rows * field_[c].cols;
      field_[c].u = reinterpret_cast<int8_t*>(at);
      field_[c].v = reinterpret_cast<int8_t*>(at + n);
      field_[c].scratch = reinterpret_cast<int8_t*>(at + 2 * n);
      field_[c].same = at + 3 * n;
      at += 4 * n;
    }
  }
  ~MotionFields() { ippiFree(block_); }
  MotionFields(const MotionFields&) = delete;
  MotionFields& operator=(const MotionFields&) = delete;

  bool Ready() const { return block_ != nullptr; }
  int64_t Planes() const { return planes_; }
  BlockField& operator[](int64_t c) { return field_[c]; }
  uint8_t* Extra() const { return block_ + extra_; }

 private:
  int64_t planes_, extra_ = 0;
  BlockField field_[3] = {};
  uint8_t* block_ = nullptr;
};

// Each block's value becomes the median (13th smallest) of its 5 x 5 neighbourhood, edge
// blocks repeated beyond the grid. Vectors stay within +-19 quarter steps, so a count of each
// value finds the median.
static inline void MedianOfBlocks(int8_t* values, int8_t* scratch, int64_t rows, int64_t cols) {
  for (int64_t by = 0; by < rows; ++by) {
    for (int64_t bx = 0; bx < cols; ++bx) {
      uint8_t count[64] = {};
      for (int64_t dy = -2; dy <= 2; ++dy) {
        const int8_t* row = values + Clamp64(by + dy, 0, rows - 1) * cols;
        for (int64_t dx = -2; dx <= 2; ++dx) ++count[row[Clamp64(bx + dx, 0, cols - 1)] + 32];
      }
      int32_t k = 0;
      for (int32_t seen = count[0]; seen < 13; seen += count[++k]) {
      }
      scratch[by * cols + bx] = static_cast<int8_t>(k - 32);
    }
  }
  std::memcpy(values, scratch, static_cast<size_t>(rows * cols));
}

static inline void SmoothField(BlockField& f) {
  MedianOfBlocks(f.u, f.scratch, f.rows, f.cols);
  MedianOfBlocks(f.v, f.scratch, f.rows, f.cols);
}

// Without vector storage: the vertical-temporal rebuild of deinterlace.h, sample by sample.
static inline void RebuildWithoutMotion(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                        int32_t dst_step, uint16_t threshold, Size roi) {
  const int32_t t = threshold < 255 ? threshold : 255;
  for (int64_t y = 1; y < roi.height; y += 2) {
    const uint8_t* o = RowAt(src, src_step, y);
    uint8_t* out = RowAt(dst, dst_step, y);
    const BottomRows r = BottomRowsAt(src, src_step, y, roi.height);
    for (int64_t i = 0; i < roi.width; ++i) {
      out[i] = CavtSample(o[i], r.c[i], r.e[i], r.u[i], r.d[i], t);
    }
  }
}

static inline void CopyKeptRows(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                int32_t dst_step, Size roi) {
  for (int64_t y = 0; y < roi.height; y += 2) {
    std::memcpy(RowAt(dst, dst_step, y), RowAt(src, src_step, y), static_cast<size_t>(roi.width));
  }
}

}  // namespace
}  // namespace framekit::prim::cavt

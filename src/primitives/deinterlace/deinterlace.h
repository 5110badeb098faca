// Deinterlacing filters on one-channel 8-bit images.
//
// Every horizontal tap of these filters is three samples from the next (kTap): an RGB24 row
// handed over as a one-channel row three times as wide is filtered as three independent planes,
// so a colour never borrows from another. (A true one-channel image gets directions three
// pixels apart.) Rows are referred to by field: the top field is the even rows 0, 2, 4, ...,
// the bottom field the odd rows.
//
//   ippiDeinterlaceFilterCAVT_8u_C1R  one frame; keeps the top field and rebuilds each bottom
//       row. For a sample o of a bottom row, with c and e the samples above and below (e = c on a
//       last row) and s the edge-directed mean of the two rows (below), o is detail of the
//       other field when it lies within [min(c, e, s) - threshold, max(c, e, s) + threshold];
//       beyond that it is combing and the sample becomes s. The threshold, in sample levels, is
//       how much vertical detail the other field may add to the kept field's rows: 0 keeps o
//       only when it lies between its neighbours, 8 to 24 keeps the fine detail of still
//       pictures while removing the teeth of moving edges; 4 to 64 gives good pictures.
//   ippiDeinterlaceFilterTriangle_8u_C1R  every row: a row sample x with the samples a, b of
//       the rows above and below is a comb tooth by e = x - clamp(x, min(a, b), max(a, b)), and
//       becomes x - round(e (256 - centreWeight) / 256) (halves away from zero, so a negated
//       picture gives the negated result). Where a = b this is the
//       three-tap triangle [w, centreWeight, w] / 256 with w = (256 - centreWeight) / 2; a row
//       that lies between its neighbours (any picture without combing, a picture whose two
//       fields are equal) is kept. The centre weight is out of 256 (above 256 acts as 256:
//       no change); 86 to 170 gives good pictures, 128 being [1 2 1] / 4. The layout names
//       the rows filtered: 1 the first row (its one neighbour taken on both sides), 4 the rows
//       between, 16 the last row (likewise); rows left out are copied. A one-row image is copied.
//   ippiDeinterlaceBlend_8u_C1  three frames, sources[0] the latest, sources[1] the frame to
//       deinterlace, sources[2] the earliest (a capture ring's order). topField picks the kept
//       field (0 top, 1 bottom), topFirst says the top field is the earlier of a frame (1) or the
//       later (0), copyField whether the kept rows are copied to dst (1) or left as they are
//       (0). Each missing sample has a temporal estimate t: the other field's samples of the two
//       frames around the kept field's time, weighted constant0 : 1 - constant0 (the earlier one
//       first; 0.5 the mean), and a motion measure m: the largest of their difference and of
//       the kept field's mean changes above and below towards the two frames. Where m is at most
//       threshold0 the sample is t (still areas take the other field from the neighbouring
//       frames); where it is threshold1 or more the sample is the edge-directed mean s moved
//       at most 2 * constant1 * m towards t (moving areas are interpolated within the frame);
//       between the two, a linear mix. Thresholds of 5 to 60 sample levels with constants of
//       0.5 give good pictures.
//
// The edge-directed mean of two rows c (above) and e (below) at sample i: the mean, rounded up,
// of c[i + kTap d] and e[i - kTap d] for the direction d in -2..2 whose three-tap window
// sum |c[i + kTap (d + j)] - e[i - kTap (d - j)]| (j = -1, 0, 1), saturated at 255, is least
// (one byte a sum keeps the vector bodies' search in byte lanes), searched outwards
// from d = 0 on one side then the other while the sum keeps falling below the best so far;
// directions whose window leaves the row are not tried.
//
// Checks, in order: null pointers (-8), sizes below 1 (-6), then the primitive's own: a triangle
// layout other than a non-empty set of 1, 4 and 16 (ippStsOutOfRangeErr); a blend size other
// than its state's (-6). Steps are not checked. Sources and destinations are separate images.
#pragma once

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::prim {

inline constexpr int32_t kTap = 3;
inline constexpr int32_t kMaxDirection = 2;
// Samples at either end of a row where not every direction fits (the vector bodies' edges).
inline constexpr int32_t kDirectionEdge = kTap * (kMaxDirection + 1);
inline constexpr uint32_t kLayoutUpper = 1, kLayoutCentre = 4, kLayoutLower = 16;
inline constexpr uint32_t kLayoutAll = kLayoutUpper | kLayoutCentre | kLayoutLower;

// The blend's state: its size and the parameters in the integers the bodies use.
struct DeinterlaceBlendState {
  Size size;
  int32_t still, moving;   // threshold0, threshold1 (moving >= still + 1)
  int32_t earlier_weight;  // constant0 in 1/256 (0..256)
  int32_t reach;           // 2 * constant1 in 1/256: how far s may move towards t, per m
  uint16_t ramp;           // (m - still) * ramp >> 8 is the motion fraction in 1/256
};

using CavtSig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                       uint16_t threshold, Size roi);
using TriangleSig = Status(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                           Size roi, uint32_t centre_weight, uint32_t layout);
using DeinterlaceBlendSig = Status(const uint8_t* const sources[3], int32_t src_step, uint8_t* dst,
                                   int32_t dst_step, Size size, int32_t top_first,
                                   int32_t top_field, int32_t copy_field,
                                   const DeinterlaceBlendState* state);
using CavtFn = CavtSig*;
using TriangleFn = TriangleSig*;
using DeinterlaceBlendFn = DeinterlaceBlendSig*;

// The state's life (not per class: nothing here touches pixels). InitAlloc: null pointers (-8),
// a size below 1 (-6); thresholds are ordered and clamped to 0..255, constants to 0..1 (a NaN
// reads as 0.5); a failed allocation is ippStsNoMemErr with *state null.
Status ippiDeinterlaceBlendInitAlloc_8u_C1(Size size, const int32_t blend_thresholds[2],
                                           const double blend_constants[2],
                                           DeinterlaceBlendState** state);
Status ippiDeinterlaceBlendFree_8u_C1(DeinterlaceBlendState* state);

static inline Status CheckTriangle(const void* src, const void* dst, Size roi, uint32_t layout) {
  if (const Status s = CheckTwo(src, dst, roi); s != ippStsNoErr) return s;
  return (layout == 0 || (layout & ~kLayoutAll) != 0) ? ippStsOutOfRangeErr : ippStsNoErr;
}

static inline Status CheckDeinterlaceBlend(const uint8_t* const sources[3], const void* dst,
                                           Size size, const DeinterlaceBlendState* state) {
  if (sources == nullptr || dst == nullptr || state == nullptr) return ippStsNullPtrErr;
  if (sources[0] == nullptr || sources[1] == nullptr || sources[2] == nullptr) {
    return ippStsNullPtrErr;
  }
  if (const Status s = CheckSize(size); s != ippStsNoErr) return s;
  return (size.width != state->size.width || size.height != state->size.height) ? ippStsSizeErr
                                                                                : ippStsNoErr;
}

// ---- Per-sample formulas: the references' bodies and the vector bodies' edges --------------

static inline int32_t AbsDiff(int32_t a, int32_t b) { return a > b ? a - b : b - a; }
static inline int32_t Min3(int32_t a, int32_t b, int32_t c) {
  const int32_t m = a < b ? a : b;
  return m < c ? m : c;
}
static inline int32_t Max3(int32_t a, int32_t b, int32_t c) {
  const int32_t m = a > b ? a : b;
  return m > c ? m : c;
}
static inline int32_t Clamp(int32_t v, int32_t lo, int32_t hi) {
  return v < lo ? lo : (v > hi ? hi : v);
}

// The window sum of direction d at sample i, saturated at 255 (the caller checked that the
// window fits the row).
static inline int32_t DirectionCost(const uint8_t* c, const uint8_t* e, int64_t i, int32_t d) {
  int32_t sum = 0;
  for (int32_t j = -1; j <= 1; ++j) sum += AbsDiff(c[i + kTap * (d + j)], e[i - kTap * (d - j)]);
  return sum < 255 ? sum : 255;
}

// The edge-directed mean of rows c and e at sample i of rows of w samples.
static inline int32_t DirectedMean(const uint8_t* c, const uint8_t* e, int64_t i, int64_t w) {
  int32_t best_d = 0;
  const int64_t room = (i < w - 1 - i ? i : w - 1 - i) / kTap - 1;  // largest |d| that fits
  if (room >= 1) {
    int32_t best = DirectionCost(c, e, i, 0);
    for (int32_t side = -1; side <= 1; side += 2) {
      for (int32_t d = side; d * side <= kMaxDirection && d * side <= room; d += side) {
        const int32_t cost = DirectionCost(c, e, i, d);
        if (cost >= best) break;
        best = cost;
        best_d = d;
      }
    }
  }
  return (c[i + kTap * best_d] + e[i - kTap * best_d] + 1) >> 1;
}

// CAVT: the bottom-row sample o between c above and e below.
static inline uint8_t CavtSample(int32_t o, int32_t c, int32_t e, int32_t s, int32_t threshold) {
  const int32_t lo = Min3(c, e, s) - threshold, hi = Max3(c, e, s) + threshold;
  return static_cast<uint8_t>(o < lo || o > hi ? s : o);
}

// Triangle: x between a above and b below; k = 256 - centre weight (0..256). The correction
// rounds halves away from zero, so a negated picture gives the negated result.
static inline uint8_t TriangleSample(int32_t x, int32_t a, int32_t b, int32_t k) {
  const int32_t up = x > Max3(a, b, 0) ? x - Max3(a, b, 0) : 0;
  const int32_t down = x < (a < b ? a : b) ? (a < b ? a : b) - x : 0;
  return static_cast<uint8_t>(x - ((up * k + 128) >> 8) + ((down * k + 128) >> 8));
}

// Blend: one missing sample. early/late: the other field's samples of the frames around the
// kept field's time; c and e: the kept field's samples above and below in the current frame,
// with the same in the earlier (ce, ee) and later (cl, el) frames; s the edge-directed mean.
struct BlendTaps {
  int32_t early, late, c, e, ce, ee, cl, el, s;
};
static inline uint8_t BlendSample(const BlendTaps& p, const DeinterlaceBlendState& st) {
  const int32_t t = (p.early * st.earlier_weight + p.late * (256 - st.earlier_weight) + 128) >> 8;
  const int32_t m =
      Max3(AbsDiff(p.early, p.late), (AbsDiff(p.c, p.ce) + AbsDiff(p.e, p.ee) + 1) >> 1,
           (AbsDiff(p.c, p.cl) + AbsDiff(p.e, p.el) + 1) >> 1);
  if (m <= st.still) return static_cast<uint8_t>(t);
  const int32_t r = (m * st.reach + 128) >> 8;
  const int32_t moving = Clamp(p.s, t - r, t + r);
  if (m >= st.moving) return static_cast<uint8_t>(moving);
  const int32_t f = ((m - st.still) * st.ramp) >> 8;  // 0..255 inside the band
  return static_cast<uint8_t>(t + (((moving - t) * f + 128) >> 8));
}

// The blend's frames by role: the current frame, the earlier and later frames whose other field
// surrounds the kept field's time, and the previous and next frames for the kept field's change.
struct BlendFrames {
  const uint8_t *current, *early, *late, *previous, *next;
  int64_t kept_parity;  // 0: the kept rows are the even ones
};
static inline BlendFrames ArrangeBlendFrames(const uint8_t* const sources[3], int32_t top_first,
                                             int32_t top_field) {
  const bool kept_first = (top_field == 0) == (top_first != 0);
  return {sources[1],
          kept_first ? sources[2] : sources[1],
          kept_first ? sources[1] : sources[0],
          sources[2],
          sources[0],
          top_field != 0 ? 1 : 0};
}

// The rows a missing row y draws on: the kept rows above and below (one standing in for the
// other at the picture's edges) in the three frames, the other field's row y in two.
struct BlendRows {
  const uint8_t *c, *e, *ce, *ee, *cl, *el, *early, *late;
};
static inline BlendRows BlendRowsAt(const BlendFrames& f, int32_t step, int64_t y, int64_t h) {
  const int64_t above = y > 0 ? y - 1 : y + 1;
  const int64_t below = y + 1 < h ? y + 1 : above;
  const auto row = [step](const uint8_t* p, int64_t r) { return p + r * step; };
  if (y == 0 && h == 1) {  // no kept row at all: the current frame's own row stands in
    return {row(f.current, 0), row(f.current, 0), row(f.previous, 0), row(f.previous, 0),
            row(f.next, 0),    row(f.next, 0),    row(f.early, 0),    row(f.late, 0)};
  }
  return {row(f.current, above),  row(f.current, below), row(f.previous, above),
          row(f.previous, below), row(f.next, above),    row(f.next, below),
          row(f.early, y),        row(f.late, y)};
}
static inline BlendTaps BlendTapsAt(const BlendRows& r, int64_t i, int64_t w) {
  return {r.early[i], r.late[i], r.c[i],
          r.e[i],     r.ce[i],   r.ee[i],
          r.cl[i],    r.el[i],   DirectedMean(r.c, r.e, i, w)};
}

#define FK_DEINTERLACE_BODIES                       \
  CavtSig ippiDeinterlaceFilterCAVT_8u_C1R;         \
  TriangleSig ippiDeinterlaceFilterTriangle_8u_C1R; \
  DeinterlaceBlendSig ippiDeinterlaceBlend_8u_C1;

namespace ref {
FK_DEINTERLACE_BODIES
}  // namespace ref
namespace ssse3 {
FK_DEINTERLACE_BODIES
}  // namespace ssse3
namespace avx2 {
FK_DEINTERLACE_BODIES
}  // namespace avx2
#undef FK_DEINTERLACE_BODIES

FK_PRIMITIVE(ippiDeinterlaceFilterCAVT_8u_C1R, CavtSig);
FK_PRIMITIVE(ippiDeinterlaceFilterTriangle_8u_C1R, TriangleSig);
FK_PRIMITIVE(ippiDeinterlaceBlend_8u_C1, DeinterlaceBlendSig);

}  // namespace framekit::prim

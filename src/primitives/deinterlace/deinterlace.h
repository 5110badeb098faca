// Deinterlacing filters on one-channel 8-bit images. The top field is the even rows 0, 2, 4,
// ..., the bottom field the odd rows. The triangle and the blend have only vertical taps, so an
// RGB24 row handed over as a one-channel row three times as wide is filtered as three
// independent planes; CAVT reads the image as those three interleaved planes (sample i in plane
// i % 3, whatever the width) and searches each on its own.
//
//   ippiDeinterlaceFilterCAVT_8u_C1R  one frame; keeps the top field and rebuilds each bottom
//       row from both fields after motion compensation (deinterlace_motion.h). Each plane is cut
//       into blocks of 16 x 8 bottom samples; each block gets the vector, in quarter pixels and
//       quarter rows, that best maps the bottom field onto the top field (the least sum of
//       absolute differences: whole pixels and rows within +-4 and +-3, then half and quarter
//       steps around the best), and the vectors are smoothed by the median of the 5 x 5 blocks
//       around. A missing sample is then a 7-tap blend of the four nearest kept rows and the
//       moved bottom field, its weights chosen by the vector's vertical phase, brought within
//       threshold of the range of the kept samples c above and e below (e = c on a last row) and
//       clamped to 0..255. The threshold is that margin in sample levels: 0 keeps every rebuilt
//       sample between c and e, 65535 trusts the moved field whole; 8 to 16 is best on moving
//       pictures, 4 to 64 good. A block whose bottom rows copy the kept rows above (or below)
//       keeps them, so a line-doubled picture comes back unchanged. A single row is copied.
//       Should its storage fail (one allocation a call: the block vectors, and for the vector
//       bodies every filtered phase of one plane, about twice the image's bytes), the bottom
//       rows are rebuilt vertically instead (CavtSample): the call still succeeds with a full
//       picture.
//   ippiDeinterlaceFilterTriangle_8u_C1R  keeps the top field; a bottom sample x with the kept
//       samples a, b above and below (b = a on a last row) is a comb tooth by e = x - clamp(x,
//       min(a, b), max(a, b)), and becomes x - round(e (256 - centreWeight) / 256) (halves
//       away from zero, so a negated picture gives the negated result). Where a = b this is
//       the three-tap triangle [w, centreWeight, w] / 256 with w = (256 - centreWeight) / 2; a
//       sample between its neighbours (any picture without combing, a picture whose two fields
//       are equal) is kept. The centre weight is out of 256 (above 256 acts as 256: no change);
//       0 to 170 gives good pictures, 128 being [1 2 1] / 4 on the teeth, lower weights remove
//       more. The layout names the bottom rows filtered: 1 the first (row 1, below the picture's
//       top row), 16 the last (whose lower neighbour may be missing), 4 those between; a row
//       both first and last is filtered with either bit. Rows left out are copied.
//   ippiDeinterlaceBlend_8u_C1  three frames, sources[0] the latest, sources[1] the frame to
//       deinterlace, sources[2] the earliest (a capture ring's order). topField picks the kept
//       field (0 top, 1 bottom), topFirst says the top field is the earlier of a frame (1) or the
//       later (0), copyField whether the kept rows are copied to dst (1) or left as they are
//       (0). Each missing sample has a temporal estimate t, the other field's samples of the two
//       frames around the kept field's time weighted constant0 : 1 - constant0 (the earlier one
//       first; 0.5 the mean), and a motion measure m, the largest of their difference and of
//       the kept field's mean changes above and below towards the two frames. Where m is at most
//       threshold0 the sample is t: still areas take the other field from the neighbouring
//       frames. Where m is threshold1 or more it is interpolated within the frame: the kept
//       samples' mean (c + e + 1) >> 1 plus 3/16 of the vertical detail of the temporal
//       estimates (2 t - t(two rows up) - t(two rows down)), rounded, brought within
//       2 * constant1 * m of t (as yadif bounds its spatial prediction), clamped to 0..255.
//       Between the two, a linear mix. Thresholds of 5 to 60 sample levels with constants of
//       0.5 give good pictures; 10 and 30 the best on moving pictures.
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

// The rows around bottom row y (odd, so a kept row lies above): the kept rows above and below
// (above for both on a last row), the bottom rows two up and down (the row itself where there is
// none).
struct BottomRows {
  const uint8_t *c, *e, *u, *d;
};
static inline BottomRows BottomRowsAt(const uint8_t* src, int32_t step, int64_t y, int64_t h) {
  const auto row = [src, step](int64_t r) { return src + r * step; };
  return {row(y - 1), row(y + 1 < h ? y + 1 : y - 1), row(y >= 3 ? y - 2 : y),
          row(y + 2 < h ? y + 2 : y)};
}

// CAVT without motion: a bottom sample o between kept samples c and e, with u and d the bottom
// samples two rows up and down, stays where it equals c or e and is otherwise the kept samples'
// mean plus the detail (2 o - u - d + 4) >> 3 within +-t (0..255 suffices: the detail never
// exceeds 64).
static inline uint8_t CavtSample(int32_t o, int32_t c, int32_t e, int32_t u, int32_t d, int32_t t) {
  if (o == c || o == e) return static_cast<uint8_t>(o);
  const int32_t detail = Clamp((2 * o - u - d + 4) >> 3, -t, t);
  return static_cast<uint8_t>(Clamp(((c + e + 1) >> 1) + detail, 0, 255));
}

// Triangle: x between a above and b below; k = 256 - centre weight (0..256). The correction
// rounds halves away from zero, so a negated picture gives the negated result.
static inline uint8_t TriangleSample(int32_t x, int32_t a, int32_t b, int32_t k) {
  const int32_t up = x > Max3(a, b, 0) ? x - Max3(a, b, 0) : 0;
  const int32_t down = x < Min3(a, b, 255) ? Min3(a, b, 255) - x : 0;
  return static_cast<uint8_t>(x - ((up * k + 128) >> 8) + ((down * k + 128) >> 8));
}

// Whether the layout filters bottom row y of an image of h rows.
static inline bool TriangleFilters(uint32_t layout, int64_t y, int64_t h) {
  const int64_t last = (h - 1) % 2 == 1 ? h - 1 : h - 2;
  uint32_t part = 0;
  if (y == 1) part |= kLayoutUpper;
  if (y == last) part |= kLayoutLower;
  if (part == 0) part = kLayoutCentre;
  return (layout & part) != 0;
}

// Blend: the temporal estimate of two other-field samples.
static inline int32_t BlendEstimate(int32_t early, int32_t late, const DeinterlaceBlendState& st) {
  return (early * st.earlier_weight + late * (256 - st.earlier_weight) + 128) >> 8;
}

// The taps of one missing sample: the other field's samples of the earlier and later frames at
// this row and two rows up and down; the kept samples c above and e below in the current frame,
// with the same in the previous (cp, ep) and next (cn, en) frames.
struct BlendTaps {
  int32_t early, late, early_up, late_up, early_down, late_down, c, e, cp, ep, cn, en;
};
static inline uint8_t BlendSample(const BlendTaps& p, const DeinterlaceBlendState& st) {
  const int32_t t = BlendEstimate(p.early, p.late, st);
  const int32_t m =
      Max3(AbsDiff(p.early, p.late), (AbsDiff(p.c, p.cp) + AbsDiff(p.e, p.ep) + 1) >> 1,
           (AbsDiff(p.c, p.cn) + AbsDiff(p.e, p.en) + 1) >> 1);
  if (m <= st.still) return static_cast<uint8_t>(t);
  const int32_t detail = 2 * t - BlendEstimate(p.early_up, p.late_up, st) -
                         BlendEstimate(p.early_down, p.late_down, st);
  const int32_t within = ((p.c + p.e + 1) >> 1) + ((3 * detail + 8) >> 4);
  const int32_t r = (m * st.reach + 128) >> 8;
  const int32_t moving = Clamp(Clamp(within, t - r, t + r), 0, 255);
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

// The rows a missing row y draws on. Kept rows above and below: one stands in for the other at
// the picture's edges, and with no kept row at all (one row) the row itself serves. Other-field
// rows two up and down: the row itself where there is none.
struct BlendRows {
  const uint8_t *early, *late, *early_up, *late_up, *early_down, *late_down;
  const uint8_t *c, *e, *cp, *ep, *cn, *en;
};
static inline BlendRows BlendRowsAt(const BlendFrames& f, int32_t step, int64_t y, int64_t h) {
  const int64_t above = y > 0 ? y - 1 : (h > 1 ? y + 1 : y);
  const int64_t below = y + 1 < h ? y + 1 : above;
  const int64_t up = y >= 2 ? y - 2 : y, down = y + 2 < h ? y + 2 : y;
  const auto row = [step](const uint8_t* p, int64_t r) { return p + r * step; };
  return {row(f.early, y),        row(f.late, y),        row(f.early, up),
          row(f.late, up),        row(f.early, down),    row(f.late, down),
          row(f.current, above),  row(f.current, below), row(f.previous, above),
          row(f.previous, below), row(f.next, above),    row(f.next, below)};
}
static inline BlendTaps BlendTapsAt(const BlendRows& r, int64_t i) {
  return {r.early[i], r.late[i], r.early_up[i], r.late_up[i], r.early_down[i], r.late_down[i],
          r.c[i],     r.e[i],    r.cp[i],       r.ep[i],      r.cn[i],         r.en[i]};
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

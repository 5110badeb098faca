// The vector bodies' resize, one template for every level: the checks, extent and weights of
// resize_kernels.h, then each source row the destination needs filtered across once into a ring
// of 16-bit rows, and each destination row summed down from the ring. A level supplies K:
//
//   K::Horizontal<C>(row, columns, out) -> pixels done
//       filters destination columns columns.first, first + 1, ... (as many as its step allows
//       before columns.last) of one source row into `out` (C int16 a pixel); it may write junk
//       into the pixels after the last one it reports, never past the ring row's slack;
//   K::Vertical(out, rows, pairs, pair_count, length)
//       length bytes: out[i] = clamp((sum of pairs' weights * rows[..][i] + (1 << 19)) >> 20),
//       rows taken two at a time with their weights as one PairWord.
//
// The arithmetic is the reference's: the same 14-bit weights, (sum + 128) >> 8 kept after the
// horizontal pass, (sum + (1 << 19)) >> 20 saturated after the vertical one, and skipping a row
// of weight 0 or summing in another order changes nothing in integers. Filtered values are kept
// in 16 bits, which holds them while the weights of a column sum to less than 32896 in absolute
// value (every kernel here stays far below); tables beyond that, and destination rows needing
// more than kRingRows source rows, are left to the reference body.
#pragma once

#include <cstdint>
#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/resize/resize.h"
#include "primitives/resize/resize_kernels.h"

namespace framekit::prim::resize {

// Destination columns of one call.
struct Columns {
  int64_t count = 0, taps = 0, pairs = 0;
  int32_t lo = 0, size = 0;   // the source region's columns
  int32_t* start = nullptr;   // a column's first source column, unclamped
  int16_t* weight = nullptr;  // `taps` weights a column
  int32_t* spread = nullptr;  // a column's weight pairs, each as 4 copies (16 bytes)
  // Columns whose every load lies inside the region: [first, last). Their 16-byte loads start
  // at C * (start + 4 g) for g < ceil(taps / 4).
  int64_t first = 0, last = 0;
};

// One destination column of one source row, as the reference does it.
template <int C>
static inline void FilterColumn(const uint8_t* row, const Columns& t, int64_t x, int16_t* out) {
  const int64_t s = t.start[x], hi = int64_t{t.lo} + t.size - 1;
  const int16_t* w = t.weight + x * t.taps;
  for (int c = 0; c < C; ++c) {
    int32_t h = 0;
    for (int64_t k = 0; k < t.taps; ++k) h += w[k] * row[C * Clamp(s + k, t.lo, hi) + c];
    out[C * x + c] = static_cast<int16_t>((h + 128) >> 8);
  }
}

// Bytes from..to-1 of a destination row, as the reference does it.
static inline void SumRows(uint8_t* out, const int16_t* const* rows, const int32_t* pairs,
                           int64_t pair_count, int64_t from, int64_t to) {
  for (int64_t i = from; i < to; ++i) {
    int32_t sum = 0;
    for (int64_t p = 0; p < pair_count; ++p) {
      sum += LowWeight(pairs[p]) * rows[2 * p][i] + HighWeight(pairs[p]) * rows[2 * p + 1][i];
    }
    const int32_t v = (sum + (1 << 19)) >> 20;
    out[i] = static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v));
  }
}

// Nearest neighbour needs no filtering: each destination pixel is its source pixel, and a row
// whose source row is the previous row's is a copy of that row.
template <int C>
static void NearestRows(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                        const Plan& p, const Columns& t, const int32_t* row_start) {
  const int64_t count = t.count, bottom = int64_t{p.src.y} + p.src.height - 1;
  int64_t previous = -1;
  for (int64_t k = 0; k < p.y1 - p.y0; ++k) {
    const int64_t r = Clamp(row_start[k], p.src.y, bottom);
    uint8_t* out = RowAt(dst, dst_step, p.y0 + k) + C * p.x0;
    if (r == previous) {
      std::memcpy(out, out - dst_step, static_cast<size_t>(C * count));
      continue;
    }
    previous = r;
    const uint8_t* in = RowAt(src, src_step, r);
    const int64_t hi = int64_t{t.lo} + t.size - 1;
    for (int64_t x = 0; x < count; ++x) {
      std::memcpy(out + C * x, in + C * Clamp(t.start[x], t.lo, hi), C);
    }
  }
}

template <class K, int C>
static Status Body(const uint8_t* src, Size src_size, int32_t src_step, const Rect* src_roi,
                   uint8_t* dst, int32_t dst_step, const Rect* dst_roi, double xf, double yf,
                   double xs, double ys, int32_t interpolation, uint8_t* buffer,
                   ResizeSig* reference) {
  const Plan p =
      PlanResize(src, src_size, src_roi, dst, dst_roi, xf, yf, xs, ys, interpolation, buffer);
  if (!p.write) return p.status;
  const Layout bound = BufferLayout(src_size, {dst_roi->width, dst_roi->height}, C, interpolation);
  const Layout l{p.x1 - p.x0, TapCount(p.code, interpolation, xf), p.y1 - p.y0,
                 TapCount(p.code, interpolation, yf), C};
  if (l.x_taps > bound.x_taps || l.y_taps > bound.y_taps) return ippStsResizeFactorErr;
  auto fallback = [&] {
    return reference(src, src_size, src_step, src_roi, dst, dst_step, dst_roi, xf, yf, xs, ys,
                     interpolation, buffer);
  };
  if (l.y_taps > kRingRows) return fallback();

  // The buffer's pieces, in VectorBytes' order.
  auto* at =
      reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(buffer) + 63) & ~uintptr_t{63});
  auto take = [&at](int64_t bytes) {
    uint8_t* piece = at;
    at += Round64(bytes);
    return piece;
  };
  Columns t;
  t.count = l.x_count, t.taps = l.x_taps, t.pairs = l.XPairs();
  t.lo = p.src.x, t.size = p.src.width;
  t.start = reinterpret_cast<int32_t*>(take(4 * t.count));
  t.weight = reinterpret_cast<int16_t*>(take(2 * t.count * t.taps));
  t.spread = reinterpret_cast<int32_t*>(take(16 * t.count * t.pairs));
  auto* row_start = reinterpret_cast<int32_t*>(take(4 * l.y_count));
  auto* row_weight = reinterpret_cast<int16_t*>(take(2 * l.y_count * l.y_taps));
  auto* slot_row = reinterpret_cast<int32_t*>(take(4 * l.RingRows()));
  auto* ring = reinterpret_cast<int16_t*>(at);
  const int64_t stride = l.RingStride();

  // Columns: weights, trimmed to the span every column's nonzero weights fit in (a tap of
  // weight 0 changes no sum), their spread pairs, the 16-bit bound and the vector range.
  int64_t widest = 0, span = 1;
  for (int64_t x = 0; x < t.count; ++x) {
    int16_t* w = t.weight + x * t.taps;
    int64_t s = CoordinateWeights(p.code, interpolation, xf, xs, p.x0 + x, t.taps, w);
    int64_t lead = 0, end = t.taps, total = 0;
    while (w[lead] == 0) ++lead;  // the weights sum to 1 << 14: one is nonzero
    while (w[end - 1] == 0) --end;
    for (int64_t k = lead; k < end; ++k) total += w[k] < 0 ? -w[k] : w[k];
    widest = total > widest ? total : widest;
    span = end - lead > span ? end - lead : span;
    t.start[x] = static_cast<int32_t>(s + lead);
    for (int64_t k = lead; k < end; ++k) w[k - lead] = w[k];  // moved to the front
    for (int64_t k = end - lead; k < t.taps; ++k) w[k] = 0;
  }
  if (255 * widest + 128 >= 32768 * 256) return fallback();
  // Repacked at `span` taps a column (forwards: no column overtakes its source).
  for (int64_t x = 1; x < t.count; ++x) {
    for (int64_t k = 0; k < span; ++k) t.weight[x * span + k] = t.weight[x * t.taps + k];
  }
  t.taps = span, t.pairs = (span + 1) / 2;
  const int64_t groups = (t.taps + 3) / 4, right = int64_t{t.lo} + t.size;
  t.first = t.last = t.count;
  for (int64_t x = 0; x < t.count; ++x) {
    const int16_t* w = t.weight + x * t.taps;
    for (int64_t q = 0; q < t.pairs; ++q) {
      const int16_t second = 2 * q + 1 < t.taps ? w[2 * q + 1] : int16_t{0};
      for (int j = 0; j < 4; ++j) t.spread[(x * t.pairs + q) * 4 + j] = PairWord(w[2 * q], second);
    }
    // The first run of columns whose loads stay inside the region.
    const int64_t s = t.start[x];
    const bool inside =
        s >= t.lo && s + t.taps <= right && C * (s + 4 * (groups - 1)) + 16 <= C * right;
    if (inside && t.first == t.count) t.first = x;
    if (!inside && t.first < t.count && t.last == t.count) t.last = x;
  }

  int64_t tallest = 0;
  for (int64_t k = 0; k < l.y_count; ++k) {
    int16_t* w = row_weight + k * l.y_taps;
    row_start[k] = static_cast<int32_t>(
        CoordinateWeights(p.code, interpolation, yf, ys, p.y0 + k, l.y_taps, w));
    int64_t total = 0;
    for (int64_t v = 0; v < l.y_taps; ++v) total += w[v] < 0 ? -w[v] : w[v];
    tallest = total > tallest ? total : tallest;
  }
  if (tallest >= 65536) return fallback();

  if (p.code == kResizeNearest) {
    NearestRows<C>(src, src_step, dst, dst_step, p, t, row_start);
  } else {
    const int64_t slots = l.RingRows(), top = p.src.y, bottom = top + p.src.height - 1;
    for (int64_t s = 0; s < slots; ++s) slot_row[s] = -1;
    const int16_t* rows[2 * kRingRows];
    int32_t pairs[kRingRows];
    for (int64_t k = 0; k < l.y_count; ++k) {
      const int16_t* w = row_weight + k * l.y_taps;
      int64_t n = 0;
      int16_t kept[kRingRows];
      for (int64_t v = 0; v < l.y_taps; ++v) {
        if (w[v] == 0) continue;
        const int64_t r = Clamp(row_start[k] + v, top, bottom), s = r % slots;
        int16_t* slot = ring + s * stride;
        if (slot_row[s] != r) {
          const uint8_t* in = RowAt(src, src_step, r);
          for (int64_t x = 0; x < t.first; ++x) FilterColumn<C>(in, t, x, slot);
          int64_t x = t.first;
          if (t.first < t.last) x += K::template Horizontal<C>(in, t, slot);
          for (; x < t.count; ++x) FilterColumn<C>(in, t, x, slot);
          slot_row[s] = static_cast<int32_t>(r);
        }
        rows[n] = slot;
        kept[n++] = w[v];
      }
      if (n % 2 != 0) {
        rows[n] = rows[n - 1];
        kept[n++] = 0;
      }
      for (int64_t q = 0; q < n / 2; ++q) pairs[q] = PairWord(kept[2 * q], kept[2 * q + 1]);
      K::Vertical(RowAt(dst, dst_step, p.y0 + k) + C * p.x0, rows, pairs, n / 2, C * t.count);
    }
  }
  if (EdgeFlag(interpolation)) SmoothEdges<C>(dst, dst_step, p);
  return p.status;
}

}  // namespace framekit::prim::resize

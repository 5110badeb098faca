// The vector bodies' resize, one template for every level: the checks, extent and weights of
// resize_kernels.h, then each source row the destination needs filtered across once into a ring
// of 16-bit rows, and each destination row summed down from the ring. A level supplies K:
//
//   K::Horizontal<C>(row, columns, out) -> pixels done
//       filters destination columns columns.first, first + 1, ... (as many as its step allows
//       before columns.last) of one source row into `out` (C int16 a pixel); it may write junk
//       into the pixels after the last one it reports, never past the ring row's slack;
//   K::Horizontal2<C>(row0, row1, columns, out0, out1) -> pixels done
//       the same for two source rows at once (as many pixels of each);
//   K::Vertical(out, rows, pairs, pair_count, length, nonneg)
//       length bytes: out[i] = clamp((sum of pairs' weights * rows[..][i] + (1 << 19)) >> 20),
//       rows taken two at a time with their weights as one PairWord; nonneg: the rows hold
//       values in 0 .. 255 * 64 only;
//   K::Vertical2(out0, out1, rows, pairs0, pairs1, pair_count, length, nonneg)
//       two destination rows (out1 = out0 + dst_step) over the same rows;
//   K::kLevel, K::kTwoTap
//       the body's class (tables built by one body are not another's) and whether it has the
//       fours layouts below (two taps, and nearest, on four-byte pixels), with
//   K::NearestFours(row, columns, out) -> pixels done from column 0.
//
// The arithmetic is the reference's: the same 14-bit weights, (sum + 128) >> 8 kept after the
// horizontal pass, (sum + (1 << 19)) >> 20 saturated after the vertical one, and skipping a row
// of weight 0 or summing in another order changes nothing in integers. Filtered values are kept
// in 16 bits, which holds them while the weights of a column sum to less than 32896 in absolute
// value (every kernel here stays far below); tables beyond that, and destination rows needing
// more than kRingRows source rows, are left to the reference body.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "primitives/core/rows.h"
#include "primitives/resize/resize.h"
#include "primitives/resize/resize_kernels.h"

namespace framekit::prim::resize {

namespace {
// Destination columns of one call.
struct Columns {
  int64_t count = 0, taps = 0, pairs = 0;
  int32_t lo = 0, size = 0;   // the source region's columns
  int32_t* start = nullptr;   // a column's first source column, unclamped
  int16_t* weight = nullptr;  // `taps` weights a column
  int32_t* spread = nullptr;  // the weight pairs, each as 4 copies (16 bytes): see Spread

  // Columns whose every load lies inside the region: [first, last). Their 16-byte loads start
  // at C * (start + 4 g) for g < ceil(taps / 4).
  int64_t first = 0, last = 0;  // first a multiple of 4, but for the two-tap layouts
  int64_t mid = 0;              // the two-tap layouts: eights of four-byte pixels up to here
  bool nonneg = false;          // no weight below 0: filtered values in 0 .. 255 * 64
  bool two_tap = false;         // the fours of [first, last) laid out for K::kTwoTap (see below)

  // Pair q of column x. Columns go in fours, each pair of a four as x, x + 2, x + 1, x + 3:
  // the AVX2 body's halves side by side.
  const int32_t* Spread(int64_t x, int64_t q) const {
    return spread + 4 * (((x >> 2) * pairs + q) * 4 + (((x & 1) << 1) | ((x >> 1) & 1)));
  }
  // The two-tap layouts' 128 bytes of the four starting at x (see TwoTapFours).
  uint8_t* TwoTap(int64_t x) const { return reinterpret_cast<uint8_t*>(spread) + 32 * x; }
};
}  // namespace

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

// Nearest neighbour needs no filtering: each destination pixel is its source pixel (the table
// holds the byte offsets, clamped), and a row whose source row is the previous row's is a copy
// of that row. Three-byte pixels move as four bytes while the load stays inside the region
// (columns.last of them) and the next pixel overwrites the spare byte; four-byte pixels in the
// fours layout go to K::NearestFours.
template <class K, int C>
static void NearestRows(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                        const Plan& p, const Columns& t, const int32_t* row_start) {
  const int64_t count = t.count, bottom = int64_t{p.src.y} + p.src.height - 1;
  const int64_t wide = C == 4 ? count : (t.last < count - 1 ? t.last : count - 1);
  const int32_t* offset = t.start;
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
    int64_t x = 0;
    if constexpr (K::kTwoTap && C == 4) {
      if (t.two_tap) x = K::NearestFours(in, t, out);
    }
    for (; x < wide; ++x) {
      uint32_t v;
      std::memcpy(&v, in + offset[x], 4);
      std::memcpy(out + C * x, &v, 4);
    }
    for (; x < count; ++x) std::memcpy(out + C * x, in + offset[x], C);
  }
}

// Two taps with w0 + w1 = 1 << 14, both at least 0 (linear, and supersampling or nearest once
// trimmed): the filtered value is 64 p0 + ((w1 (p1 - p0) + 128) >> 8), which 16-bit lanes give
// exactly as a rounding high multiply of (p1 - p0) << 7 by w1. Fours of columns from the first
// whose taps lie inside the region keep their own layout (TwoTap(x), 128 bytes a four):
//   four-byte pixels   a permute of eight dwords taking the four's p0, p1 from one 32-byte
//                      window, then each column's w1 four times, then the window's first pixel;
//                      where one window serves eight columns (enlarging), the two fours' permutes
//                      and weights and then the window's first pixel (256 bytes an eight), for
//                      the eights of [first, mid);
//   three-byte pixels  two byte shuffles taking p0, and p1, of columns x, x + 1 from one 16-byte
//                      window and of x + 2, x + 3 from another, widened to 16 bits (six lanes of
//                      eight), then each column's w1 three times, then the two windows' first
//                      pixels.
// A window starts at its first column's start, or earlier where it would reach past the region
// (so only columns whose taps leave the region are left over). The run ends at a four with a
// tap outside the region or too wide for its windows; when no four is left the plain pairs stay.
template <int C>
static inline bool TwoTapFours(Columns& t, int64_t first, int64_t right) {
  constexpr int64_t kWindow = C == 4 ? 8 : 5;  // whole pixels a window holds
  if (right - t.lo < kWindow + (C == 3)) return false;
  for (int64_t x = first; x < t.count; ++x) {
    if (t.weight[2 * x] + t.weight[2 * x + 1] != 16384) return false;
  }
  auto base = [&](int64_t s) {
    return s < right - kWindow - (C == 3) ? s : right - kWindow - (C == 3);
  };
  auto fits = [&](int64_t x) {
    const int32_t* s = t.start + x;
    for (int j = 0; j < 4; ++j) {
      const int64_t from = base(s[C == 4 ? 0 : j / 2 * 2]);
      if (s[j] < t.lo || s[j] + 2 > right || s[j] < from || s[j] + 1 - from > (C == 4 ? 7 : 4)) {
        return false;
      }
    }
    return true;
  };
  int64_t end = first;
  while (end + 4 <= t.count && fits(end)) end += 4;
  if (end == first) return false;
  int64_t mid = first;  // four-byte pixels: eights that one window serves
  if constexpr (C == 4) {
    auto fits8 = [&](int64_t x) {
      const int32_t* s = t.start + x;
      for (int j = 0; j < 8; ++j) {
        if (s[j] < base(s[0]) || s[j] + 2 > right || s[j] + 1 - base(s[0]) > 7) return false;
      }
      return true;
    };
    while (mid + 8 <= end && fits8(mid)) mid += 8;
  }
  // Four-byte pixels: a four's permute and w1 at `at`, against the window at `from`.
  auto four_bytes = [&](int64_t x, int64_t from, uint8_t* at) {
    auto* permute = reinterpret_cast<int32_t*>(at);
    auto* w1 = reinterpret_cast<int16_t*>(at + 32);
    for (int j = 0; j < 4; ++j) {
      permute[2 * j] = static_cast<int32_t>(t.start[x + j] - from);
      permute[2 * j + 1] = permute[2 * j] + 1;
      for (int c = 0; c < 4; ++c) w1[4 * j + c] = t.weight[2 * (x + j) + 1];
    }
  };
  for (int64_t x = first; x < mid; x += 8) {
    uint8_t* eight = t.TwoTap(x);
    const int32_t from = static_cast<int32_t>(base(t.start[x]));
    four_bytes(x, from, eight);
    four_bytes(x + 4, from, eight + 64);
    std::memcpy(eight + 128, &from, 4);
  }
  for (int64_t x = mid; x < end; x += 4) {
    uint8_t* four = t.TwoTap(x);
    if constexpr (C == 4) {
      const int32_t from = static_cast<int32_t>(base(t.start[x]));
      four_bytes(x, from, four);
      std::memcpy(four + 64, &from, 4);
      continue;
    }
    auto* w1 = reinterpret_cast<int16_t*>(four + 64);
    auto* bases = reinterpret_cast<int32_t*>(four + 96);
    for (int j = 0; j < 4; ++j) {
      // Half h = j / 2 of each shuffle, lanes 3 (j % 2) .. + 2; lanes 6, 7 stay 0.
      const int16_t w = t.weight[2 * (x + j) + 1];
      const int half = j / 2, lane = 3 * (j % 2);
      bases[half] = static_cast<int32_t>(base(t.start[x + 2 * half]));
      const int32_t at = 3 * (t.start[x + j] - bases[half]);
      for (int tap = 0; tap < 2; ++tap) {
        uint8_t* mask = four + 32 * tap + 16 * half;
        if (j % 2 == 0) std::memset(mask, 0x80, 16);
        for (int c = 0; c < 3; ++c) {
          mask[2 * (lane + c)] = static_cast<uint8_t>(at + 3 * tap + c);
        }
      }
      for (int c = 0; c < 3; ++c) w1[8 * half + lane + c] = w;
      if (j % 2 == 0) w1[8 * half + 6] = w1[8 * half + 7] = 0;
    }
  }
  t.first = first, t.mid = mid, t.last = end;
  t.two_tap = true;
  return true;
}

// Nearest on four-byte pixels: each four of columns keeps, in its 64 bytes of `spread`, a
// permute of eight dwords taking its pixels from one 32-byte window at its first offset, into
// the low half. The run of such fours is [first, last), starting at column 0.
static inline void NearestFours(Columns& t, int64_t right) {
  int64_t end = 0;
  while (end + 4 <= t.count && (t.start[end + 3] - t.start[end]) / 4 <= 7 &&
         t.start[end] + 32 <= 4 * right) {
    end += 4;
  }
  for (int64_t x = 0; x < end; x += 4) {
    auto* four = const_cast<int32_t*>(t.Spread(x, 0));
    for (int j = 0; j < 8; ++j) four[j] = j < 4 ? (t.start[x + j] - t.start[x]) / 4 : 0;
  }
  t.first = 0, t.last = end;
  t.two_tap = end > 0;
}

// The weight tables of one call; false when they need more than 16 bits (the reference's
// turn).
template <class K, int C>
static bool BuildTables(const Plan& p, int32_t interpolation, double xf, double yf, double xs,
                        double ys, const Layout& l, Columns& t, int32_t* row_start,
                        int16_t* row_weight) {
  // Columns: weights, trimmed to the span every column's nonzero weights fit in (a tap of
  // weight 0 changes no sum), their spread pairs, the 16-bit bound and the vector range.
  int64_t widest = 0, span = 1;
  t.nonneg = true;
  for (int64_t x = 0; x < t.count; ++x) {
    int16_t* w = t.weight + x * t.taps;
    int64_t s = CoordinateWeights(p.code, interpolation, xf, xs, p.x0 + x, t.taps, w);
    int64_t lead = 0, end = t.taps, total = 0;
    while (w[lead] == 0) ++lead;  // the weights sum to 1 << 14: one is nonzero
    while (w[end - 1] == 0) --end;
    for (int64_t k = lead; k < end; ++k) {
      total += w[k] < 0 ? -w[k] : w[k];
      t.nonneg = t.nonneg && w[k] >= 0;
    }
    widest = total > widest ? total : widest;
    span = end - lead > span ? end - lead : span;
    t.start[x] = static_cast<int32_t>(s + lead);
    for (int64_t k = lead; k < end; ++k) w[k - lead] = w[k];  // moved to the front
    for (int64_t k = end - lead; k < t.taps; ++k) w[k] = 0;
  }
  if (255 * widest + 128 >= 32768 * 256) return false;
  const int64_t right = int64_t{t.lo} + t.size;
  if (p.code == kResizeNearest) {
    t.first = 0, t.last = 0;
    for (int64_t x = 0; x < t.count; ++x) {
      t.start[x] = static_cast<int32_t>(C * Clamp(t.start[x], t.lo, right - 1));
      if (t.start[x] + 4 <= C * right) t.last = x + 1;
    }
    t.two_tap = false;
    if constexpr (K::kTwoTap && C == 4) NearestFours(t, right);
  } else {
    // Repacked at `span` taps a column (forwards: no column overtakes its source).
    for (int64_t x = 1; x < t.count; ++x) {
      for (int64_t k = 0; k < span; ++k) t.weight[x * span + k] = t.weight[x * t.taps + k];
    }
    t.taps = span, t.pairs = (span + 1) / 2;
    const int64_t groups = (t.taps + 3) / 4;
    t.first = t.last = t.count;
    int64_t leftmost = t.count;  // the first column starting inside the region
    for (int64_t x = 0; x < t.count; ++x) {
      const int16_t* w = t.weight + x * t.taps;
      for (int64_t q = 0; q < t.pairs; ++q) {
        const int16_t second = 2 * q + 1 < t.taps ? w[2 * q + 1] : int16_t{0};
        auto* to = const_cast<int32_t*>(t.Spread(x, q));
        for (int j = 0; j < 4; ++j) to[j] = PairWord(w[2 * q], second);
      }
      // The first run of columns whose loads stay inside the region.
      const int64_t s = t.start[x];
      const bool inside =
          s >= t.lo && s + t.taps <= right && C * (s + 4 * (groups - 1)) + 16 <= C * right;
      if (inside && t.first == t.count) t.first = x;
      if (!inside && t.first < t.count && t.last == t.count) t.last = x;
      if (s >= t.lo && leftmost == t.count) leftmost = x;
    }
    t.first = (t.first + 3) & ~int64_t{3};
    if (t.first > t.last) t.first = t.last;
    t.two_tap = false;
    if constexpr (K::kTwoTap) {
      if (t.taps == 2 && t.nonneg) TwoTapFours<C>(t, leftmost, right);
    }
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
  if (tallest >= 65536) return false;

  return true;
}

// What the tables were built for and what the build found, kept at the buffer's start with a
// hash of it and of the tables: a caller that keeps its buffer finds them ready next time, and
// a buffer whose bytes changed in between (or held anything else) is built afresh.
struct TableKey {
  double xf, yf, xs, ys;
  int64_t interpolation, code, x0, y0, x_count, y_count, x_taps, y_taps, lo, size, channels;
  int64_t level;                                           // the body's
  int64_t taps, pairs, first, mid, last, two_tap, nonneg;  // found by the build
  uint64_t hash;
};
static_assert(sizeof(TableKey) <= kTableKeyBytes);

static inline uint64_t Hash(const TableKey& key, const uint8_t* from, const uint8_t* to) {
  uint64_t lane[4] = {0x9E3779B97F4A7C15u, 0xC2B2AE3D27D4EB4Fu, 0x165667B19E3779F9u, 1};
  auto mix = [](uint64_t h, uint64_t w) { return (h ^ w) * 0x100000001B3u + (h >> 29); };
  const auto* k = reinterpret_cast<const uint8_t*>(&key);
  for (size_t i = 0; i < offsetof(TableKey, hash); i += 8) {
    uint64_t w;
    std::memcpy(&w, k + i, 8);
    lane[0] = mix(lane[0], w);
  }
  const uint8_t* at = from;
  for (; at + 32 <= to; at += 32) {
    for (int j = 0; j < 4; ++j) {
      uint64_t w;
      std::memcpy(&w, at + 8 * j, 8);
      lane[j] = mix(lane[j], w);
    }
  }
  for (; at < to; ++at) lane[3] = mix(lane[3], *at);
  return mix(mix(mix(lane[0], lane[1]), lane[2]), lane[3]);
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
  uint8_t* key_bytes = take(kTableKeyBytes);
  const uint8_t* tables = at;
  Columns t;
  t.count = l.x_count, t.taps = l.x_taps, t.pairs = l.XPairs();
  t.lo = p.src.x, t.size = p.src.width;
  t.start = reinterpret_cast<int32_t*>(take(4 * t.count));
  t.weight = reinterpret_cast<int16_t*>(take(2 * t.count * t.taps));
  t.spread = reinterpret_cast<int32_t*>(take(32 * ((t.count + 3) & ~int64_t{3}) * t.pairs));
  auto* row_start = reinterpret_cast<int32_t*>(take(4 * l.y_count));
  auto* row_weight = reinterpret_cast<int16_t*>(take(2 * l.y_count * l.y_taps));
  auto* slot_row = reinterpret_cast<int32_t*>(take(4 * l.RingRows()));
  auto* ring = reinterpret_cast<int16_t*>(at);
  const int64_t stride = l.RingStride();

  const auto* tables_end = reinterpret_cast<const uint8_t*>(slot_row);
  TableKey stored;
  std::memcpy(&stored, key_bytes, sizeof(stored));
  TableKey fresh = stored;
  fresh.xf = xf, fresh.yf = yf, fresh.xs = xs, fresh.ys = ys, fresh.interpolation = interpolation;
  fresh.code = p.code, fresh.x0 = p.x0, fresh.y0 = p.y0, fresh.x_count = l.x_count;
  fresh.y_count = l.y_count, fresh.x_taps = l.x_taps, fresh.y_taps = l.y_taps, fresh.lo = t.lo;
  fresh.size = t.size, fresh.channels = C, fresh.level = K::kLevel;
  if (std::memcmp(&fresh, &stored, offsetof(TableKey, hash)) == 0 &&
      Hash(fresh, tables, tables_end) == stored.hash) {
    t.taps = stored.taps, t.pairs = stored.pairs, t.first = stored.first, t.last = stored.last;
    t.mid = stored.mid;
    t.two_tap = stored.two_tap != 0, t.nonneg = stored.nonneg != 0;
  } else {
    if (!BuildTables<K, C>(p, interpolation, xf, yf, xs, ys, l, t, row_start, row_weight)) {
      return fallback();
    }
    fresh.taps = t.taps, fresh.pairs = t.pairs, fresh.first = t.first, fresh.last = t.last;
    fresh.mid = t.mid;
    fresh.two_tap = t.two_tap, fresh.nonneg = t.nonneg;
    fresh.hash = Hash(fresh, tables, tables_end);
    std::memcpy(key_bytes, &fresh, sizeof(fresh));
  }

  if (p.code == kResizeNearest) {
    NearestRows<K, C>(src, src_step, dst, dst_step, p, t, row_start);
  } else {
    const int64_t slots = l.RingRows(), top = p.src.y, bottom = top + p.src.height - 1;
    for (int64_t s = 0; s < slots; ++s) slot_row[s] = -1;
    const int16_t* rows[2 * kRingRows];
    int32_t pairs[kRingRows];
    const uint8_t* todo[kRingRows];  // source rows to filter for this destination row
    int16_t* into[kRingRows];
    for (int64_t k = 0; k < l.y_count; ++k) {
      const int16_t* w = row_weight + k * l.y_taps;
      int64_t n = 0, m = 0;
      int16_t kept[kRingRows];
      int32_t used[kRingRows];  // the source rows, in order
      for (int64_t v = 0; v < l.y_taps; ++v) {
        if (w[v] == 0) continue;
        const int64_t r = Clamp(row_start[k] + v, top, bottom), s = r % slots;
        used[n] = static_cast<int32_t>(r);
        int16_t* slot = ring + s * stride;
        if (slot_row[s] != r) {
          todo[m] = RowAt(src, src_step, r), into[m++] = slot;
          slot_row[s] = static_cast<int32_t>(r);
        }
        rows[n] = slot;
        kept[n++] = w[v];
      }
      // Two rows at a time share the tables' loads.
      for (int64_t i = 0; i < m; i += 2) {
        const int64_t j = i + 1 < m ? i + 1 : i;
        for (int64_t x = 0; x < t.first; ++x) {
          FilterColumn<C>(todo[i], t, x, into[i]);
          FilterColumn<C>(todo[j], t, x, into[j]);
        }
        int64_t x = t.first;
        if (t.first < t.last) {
          x += j != i ? K::template Horizontal2<C>(todo[i], todo[j], t, into[i], into[j])
                      : K::template Horizontal<C>(todo[i], t, into[i]);
        }
        for (; x < t.count; ++x) {
          FilterColumn<C>(todo[i], t, x, into[i]);
          FilterColumn<C>(todo[j], t, x, into[j]);
        }
      }
      // The next destination row over the same source rows (enlarging) is summed with this one.
      int16_t next[kRingRows];
      int64_t same = k + 1 < l.y_count ? 0 : -1;
      for (int64_t v = 0; v < l.y_taps && same >= 0; ++v) {
        const int16_t weight = row_weight[(k + 1) * l.y_taps + v];
        if (weight == 0) continue;
        if (same == n || Clamp(row_start[k + 1] + v, top, bottom) != used[same]) same = -1;
        if (same >= 0) next[same++] = weight;
      }
      const bool twice = same == n;
      if (n % 2 != 0) {
        rows[n] = rows[n - 1];
        next[n] = 0;
        kept[n++] = 0;
      }
      uint8_t* out = RowAt(dst, dst_step, p.y0 + k) + C * p.x0;
      for (int64_t q = 0; q < n / 2; ++q) pairs[q] = PairWord(kept[2 * q], kept[2 * q + 1]);
      if (twice) {
        int32_t next_pairs[kRingRows];
        for (int64_t q = 0; q < n / 2; ++q) next_pairs[q] = PairWord(next[2 * q], next[2 * q + 1]);
        K::Vertical2(out, out + dst_step, rows, pairs, next_pairs, n / 2, C * t.count, t.nonneg);
        ++k;
      } else {
        K::Vertical(out, rows, pairs, n / 2, C * t.count, t.nonneg);
      }
    }
  }
  if (EdgeFlag(interpolation)) SmoothEdges<C>(dst, dst_step, p);
  return p.status;
}

}  // namespace framekit::prim::resize

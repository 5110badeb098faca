// The horizontal pass on bands of 16 rows turned on their side. NOLINT(build/header_guard)
//
// Included inside the anonymous namespace of each per-ISA file that has a banded row body. The
// file defines, for its vector width:
//   Lanes        the 16 rows of one byte column as 16-bit lanes, with Lanes::Zero(),
//                Lanes::Add(a, b) and Lanes::Sub(a, b);
//   VectorMagic  built from a blur::Magic16, Quotient(Lanes) the truncated means;
//   RowBand      kBlock (byte columns a transpose moves), Reset(rows, bytes), Need(col) (makes
//                sure the columns up to col are in its ring), Column(col) -> Lanes, and
//                Store(at, const Lanes out[kBlock]) (result columns back into the rows);
//   kRingColumns the ring's size (a power of two).
// The three channels' running sums move along the ring; blocks whose columns all have a column
// entering and one leaving their windows, and the middle's divisor, take the short loop.

// Radii whose windows stay within the ring: a block is loaded ahead of the sums, and the column
// leaving a window is 3r + 3 behind the one entering it.
constexpr int64_t kMaxRowRadius = (kRingColumns - 2 * RowBand::kBlock - 3) / 6;

// The running sums, rotated after every column so that `now` is the current column's channel.
struct Sums {
  Lanes now, next, after;
  void Rotate() {
    const Lanes t = now;
    now = next;
    next = after;
    after = t;
  }
};

void Band(int64_t w, int64_t r, const blur::Magic16* magic, RowBand& band) {
  const int64_t n = 3 * w, reach = 3 * r;
  Lanes pre[3] = {Lanes::Zero(), Lanes::Zero(), Lanes::Zero()};
  const int64_t lead = w < r ? w : r;
  if (lead > 0) band.Need(3 * lead - 1);
  for (int64_t i = 0; i < lead; ++i) {
    for (int c = 0; c < 3; ++c) pre[c] = Lanes::Add(pre[c], band.Column(3 * i + c));
  }
  Sums s{pre[0], pre[1], pre[2]};
  const VectorMagic inner(magic[w / 2]);
  constexpr int64_t kBlock = RowBand::kBlock;
  Lanes out[kBlock];
  for (int64_t at = 0; at < n; at += kBlock) {
    band.Need(at + kBlock - 1 + reach);
    if (at - reach - 3 >= 0 && at + kBlock - 1 + reach < n) {
      for (int k = 0; k < kBlock; ++k) {
        const int64_t j = at + k;
        s.now = Lanes::Sub(Lanes::Add(s.now, band.Column(j + reach)), band.Column(j - reach - 3));
        out[k] = inner.Quotient(s.now);
        s.Rotate();
      }
    } else {
      for (int k = 0; k < kBlock && at + k < n; ++k) {
        const int64_t j = at + k, i = j / 3;
        if (i + r < w) s.now = Lanes::Add(s.now, band.Column(j + reach));
        if (i - r - 1 >= 0) s.now = Lanes::Sub(s.now, band.Column(j - reach - 3));
        out[k] = VectorMagic(magic[i]).Quotient(s.now);
        s.Rotate();
      }
    }
    band.Store(at, out);
  }
}

// Whole bands of 16 rows, then the scalar rows; `row` ends up holding the last row's results.
// Radii beyond the ring, window counts without a 16-bit multiplier and failed allocations leave
// every row to the scalar pass.
Status BandedRows(uint8_t* p, int32_t step, Size roi, int32_t radius, uint8_t* row) {
  if (const Status s = blur::CheckPass(p, row, roi, radius); s != ippStsNoErr) return s;
  const int64_t w = roi.width, r = radius;
  int32_t y = 0;
  auto* magic =
      r <= kMaxRowRadius && roi.height >= 16
          ? static_cast<blur::Magic16*>(std::malloc(sizeof(blur::Magic16) * static_cast<size_t>(w)))
          : nullptr;
  // The band holds vectors of up to 32 bytes: its block is aligned by hand.
  void* block = magic != nullptr ? std::malloc(sizeof(RowBand) + 32) : nullptr;
  auto* band =
      reinterpret_cast<RowBand*>((reinterpret_cast<uintptr_t>(block) + 31) & ~uintptr_t{31});
  if (block != nullptr && blur::RowMagics(w, r, magic)) {
    for (; y + 16 <= roi.height; y += 16) {
      uint8_t* rows[16];
      for (int k = 0; k < 16; ++k) rows[k] = RowAt(p, step, y + k);
      band->Reset(rows, 3 * w);
      Band(w, r, magic, *band);
    }
  }
  std::free(block);
  std::free(magic);
  blur::ScalarRows(p, step, roi, radius, row, y);
  if (y == roi.height) std::memcpy(row, RowAt(p, step, y - 1), static_cast<size_t>(3 * w));
  return ippStsNoErr;
}

// Box-blur passes, SSE2 level: classes 1-5.
//
// Rows: bands of 16 rows turned on their side a 16 x 16 byte block at a time (blur_rows.h), a
// byte column of the band as two vectors of 16-bit lanes (rows 0-7 and 8-15).
//
// Columns: while every window sum fits 16 bits, strips of up to 64 byte columns keep their sums
// in 16-bit lanes and write results back in place r + 1 rows later; a row with an odd count
// takes the integer rounded mean, the others single precision. Larger sums take strips of 48
// byte columns with 32-bit sums built in the work buffer. Strips past the rounded columns are
// the scalar ones of blur_kernels.h.
#include <emmintrin.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "primitives/blur/blur.h"
#include "primitives/blur/blur_kernels.h"

namespace framekit::prim::sse2 {
namespace {

// sum[4k .. 4k + 3] += (or -=) the 16 bytes at row + 16k, widened.
template <bool kAdd>
void Accumulate(__m128i* sum, const uint8_t* row) {
  const __m128i zero = _mm_setzero_si128();
  for (int k = 0; k < 3; ++k) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + 16 * k));
    const __m128i lo = _mm_unpacklo_epi8(v, zero), hi = _mm_unpackhi_epi8(v, zero);
    const __m128i parts[4] = {_mm_unpacklo_epi16(lo, zero), _mm_unpackhi_epi16(lo, zero),
                              _mm_unpacklo_epi16(hi, zero), _mm_unpackhi_epi16(hi, zero)};
    for (int j = 0; j < 4; ++j) {
      __m128i& s = sum[4 * k + j];
      s = kAdd ? _mm_add_epi32(s, parts[j]) : _mm_sub_epi32(s, parts[j]);
    }
  }
}

void RoundedStrip(uint8_t* p, int32_t step, Size roi, int32_t radius, int64_t x0, uint8_t* work) {
  __m128i sum[12];
  for (__m128i& s : sum) s = _mm_setzero_si128();
  const int64_t h = roi.height, r = radius;
  for (int64_t y = 0; y < h && y < r; ++y) Accumulate<true>(sum, RowAt(p, step, y) + x0);
  for (int64_t y = 0; y < h; ++y) {
    if (y + r < h) Accumulate<true>(sum, RowAt(p, step, y + r) + x0);
    if (y - r - 1 >= 0) Accumulate<false>(sum, RowAt(p, step, y - r - 1) + x0);
    const __m128 rcp = _mm_set1_ps(blur::Reciprocal(blur::WindowCount(y, r, h)));
    uint8_t* dst = work + 48 * y;
    for (int k = 0; k < 3; ++k) {
      __m128i q[4];
      for (int j = 0; j < 4; ++j) {
        q[j] = _mm_cvtps_epi32(_mm_mul_ps(_mm_cvtepi32_ps(sum[4 * k + j]), rcp));
      }
      const __m128i bytes =
          _mm_packus_epi16(_mm_packs_epi32(q[0], q[1]), _mm_packs_epi32(q[2], q[3]));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + 16 * k), bytes);
    }
  }
  for (int64_t y = 0; y < h; ++y) std::memcpy(RowAt(p, step, y) + x0, work + 48 * y, 48);
}

// ---- Rows

constexpr int64_t kRingColumns = 256;  // a power of two

// A byte column of 16 rows: rows 0-7 and 8-15.
struct Lanes {
  __m128i lo, hi;
  static Lanes Zero() { return {_mm_setzero_si128(), _mm_setzero_si128()}; }
  static Lanes Add(Lanes a, Lanes b) {
    return {_mm_add_epi16(a.lo, b.lo), _mm_add_epi16(a.hi, b.hi)};
  }
  static Lanes Sub(Lanes a, Lanes b) {
    return {_mm_sub_epi16(a.lo, b.lo), _mm_sub_epi16(a.hi, b.hi)};
  }
};

// A 16-bit division by multiply-high and shift (Magic16); shift -1: a window of one.
struct VectorMagic {
  __m128i mul, shift;
  bool identity, unshifted;
  explicit VectorMagic(const blur::Magic16& m)
      : mul(_mm_set1_epi16(static_cast<short>(m.mul))),
        shift(_mm_cvtsi32_si128(m.shift < 0 ? 0 : m.shift)),
        identity(m.shift < 0),
        unshifted(m.shift == 0) {}
  __m128i Quotient(__m128i sum) const {
    const __m128i q = _mm_mulhi_epu16(sum, mul);
    return unshifted ? q : _mm_srl_epi16(q, shift);
  }
  Lanes Quotient(Lanes sum) const {
    if (identity) return sum;
    return {Quotient(sum.lo), Quotient(sum.hi)};
  }
};

// The 16 x 16 byte transpose: four rounds of interleaving each row with the one eight below.
void Transpose16(__m128i v[16]) {
  for (int round = 0; round < 4; ++round) {
    __m128i out[16];
    for (int k = 0; k < 8; ++k) {
      out[2 * k] = _mm_unpacklo_epi8(v[k], v[k + 8]);
      out[2 * k + 1] = _mm_unpackhi_epi8(v[k], v[k + 8]);
    }
    for (int k = 0; k < 16; ++k) v[k] = out[k];
  }
}

// The bytes of 16 rows, turned on their side a 16 x 16 block at a time.
class RowBand {
 public:
  static constexpr int64_t kBlock = 16;

  void Reset(uint8_t* const rows[16], int64_t bytes) {
    for (int k = 0; k < 16; ++k) rows_[k] = rows[k];
    bytes_ = bytes;
    loaded_ = 0;
  }
  void Need(int64_t col) {
    while (loaded_ <= col && loaded_ < bytes_) Load(loaded_), loaded_ += kBlock;
  }
  Lanes Column(int64_t col) const { return ring_[col & (kRingColumns - 1)]; }

  void Store(int64_t at, const Lanes out[kBlock]) {
    __m128i v[16];
    for (int k = 0; k < 16; ++k) v[k] = _mm_packus_epi16(out[k].lo, out[k].hi);
    Transpose16(v);
    const int64_t n = bytes_ - at < kBlock ? bytes_ - at : kBlock;
    for (int k = 0; k < 16; ++k) {
      if (n == kBlock) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(rows_[k] + at), v[k]);
      } else {
        alignas(16) uint8_t part[kBlock];
        _mm_store_si128(reinterpret_cast<__m128i*>(part), v[k]);
        std::memcpy(rows_[k] + at, part, static_cast<size_t>(n));
      }
    }
  }

 private:
  void Load(int64_t at) {
    __m128i v[16];
    const int64_t n = bytes_ - at < kBlock ? bytes_ - at : kBlock;
    for (int k = 0; k < 16; ++k) {
      if (n == kBlock) {
        v[k] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rows_[k] + at));
      } else {
        alignas(16) uint8_t part[kBlock] = {};
        std::memcpy(part, rows_[k] + at, static_cast<size_t>(n));
        v[k] = _mm_load_si128(reinterpret_cast<const __m128i*>(part));
      }
    }
    Transpose16(v);
    const __m128i zero = _mm_setzero_si128();
    for (int k = 0; k < 16; ++k) {
      ring_[(at + k) & (kRingColumns - 1)] = {_mm_unpacklo_epi8(v[k], zero),
                                              _mm_unpackhi_epi8(v[k], zero)};
    }
  }

  uint8_t* rows_[16];
  int64_t bytes_;
  int64_t loaded_;
  Lanes ring_[kRingColumns];
};

#include "primitives/blur/blur_rows.h"

// ---- Columns in 16-bit lanes

__m128i RoundedWords(__m128i sum, const blur::RowDivision& d) {
  if (d.integer) {
    const __m128i t = _mm_add_epi16(_mm_add_epi16(sum, sum), _mm_set1_epi16(d.count));
    return _mm_srl_epi16(_mm_mulhi_epu16(t, _mm_set1_epi16(static_cast<short>(d.magic.mul))),
                         _mm_cvtsi32_si128(d.magic.shift));
  }
  const __m128 rcp = _mm_set1_ps(d.reciprocal);
  const __m128i zero = _mm_setzero_si128();
  const __m128i lo =
      _mm_cvtps_epi32(_mm_mul_ps(_mm_cvtepi32_ps(_mm_unpacklo_epi16(sum, zero)), rcp));
  const __m128i hi =
      _mm_cvtps_epi32(_mm_mul_ps(_mm_cvtepi32_ps(_mm_unpackhi_epi16(sum, zero)), rcp));
  return _mm_packs_epi32(lo, hi);
}

constexpr int64_t kMaxRing = 130;  // r + 1 for every radius the 16-bit sums allow

// A strip of 16 * kGroups byte columns; results go back in place r + 1 rows later.
template <int kGroups>
void RoundedStrip16(uint8_t* p, int32_t step, Size roi, int32_t radius, int64_t x0,
                    const blur::RowDivision* division) {
  alignas(16) uint8_t ring[kMaxRing][16 * kGroups];
  __m128i lo[kGroups], hi[kGroups];
  for (int k = 0; k < kGroups; ++k) lo[k] = hi[k] = _mm_setzero_si128();
  const __m128i zero = _mm_setzero_si128();
  const int64_t h = roi.height, r = radius, slots = r + 1;
  auto add = [&](const uint8_t* row, bool plus) {
    for (int k = 0; k < kGroups; ++k) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + 16 * k));
      const __m128i a = _mm_unpacklo_epi8(v, zero), b = _mm_unpackhi_epi8(v, zero);
      lo[k] = plus ? _mm_add_epi16(lo[k], a) : _mm_sub_epi16(lo[k], a);
      hi[k] = plus ? _mm_add_epi16(hi[k], b) : _mm_sub_epi16(hi[k], b);
    }
  };
  auto write_back = [&](int64_t y) {
    std::memcpy(RowAt(p, step, y) + x0, ring[y % slots], 16 * kGroups);
  };
  for (int64_t y = 0; y < h && y < r; ++y) add(RowAt(p, step, y) + x0, true);
  for (int64_t y = 0; y < h; ++y) {
    if (y + r < h) add(RowAt(p, step, y + r) + x0, true);
    if (y - r - 1 >= 0) {
      add(RowAt(p, step, y - r - 1) + x0, false);
      write_back(y - r - 1);
    }
    const blur::RowDivision& d = division[y];
    for (int k = 0; k < kGroups; ++k) {
      _mm_store_si128(reinterpret_cast<__m128i*>(ring[y % slots] + 16 * k),
                      _mm_packus_epi16(RoundedWords(lo[k], d), RoundedWords(hi[k], d)));
    }
  }
  for (int64_t y = h - slots < 0 ? 0 : h - slots; y < h; ++y) write_back(y);
}

#include "primitives/blur/blur_columns.h"

}  // namespace

Status BlurRows(uint8_t* p, int32_t step, Size roi, int32_t radius, uint8_t* row) {
  return BandedRows(p, step, roi, radius, row);
}

Status BlurColumns(uint8_t* p, int32_t step, Size roi, int32_t radius, int32_t rounded_width,
                   uint8_t* work) {
  return StripColumns(p, step, roi, radius, rounded_width, work);
}

}  // namespace framekit::prim::sse2

// Box-blur passes, AVX2 level: class 6.
//
// Rows (blur_rows.h): sixteen rows at a time, turned on their side. Blocks of 32 byte columns of
// the band (two 16 x 16 byte transposes side by side) go into a ring of byte columns (a column
// holds one byte position of the 16 rows), the running sums of the three channels move along
// the ring as vectors of 16-bit lanes (one lane a row), and the divisions are 16-bit
// multiply-highs exact for the window sums (Magic16). The results are transposed back a block at
// a time, behind the sums, so the pass stays in place. Rows past the last whole band, radii
// beyond the ring and window counts without a 16-bit multiplier are the scalar rows of
// blur_kernels.h.
//
// Columns (blur_columns.h): strips of up to 64 byte columns as 16-bit sums, 16 a vector, written
// back in place r + 1 rows later; a row with an odd count takes the integer rounded mean, the
// others single precision. Where sums can pass 16 bits, strips of 48 byte columns: six vectors
// of eight 32-bit sums widened straight from memory, packed back through one dword permutation.
#include <immintrin.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "primitives/blur/blur.h"
#include "primitives/blur/blur_kernels.h"

namespace framekit::prim::avx2 {
namespace {

__m256i Widen(const uint8_t* at) {
  return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(at)));
}

void RoundedStrip(uint8_t* p, int32_t step, Size roi, int32_t radius, int64_t x0, uint8_t* work) {
  __m256i sum[6];
  for (__m256i& s : sum) s = _mm256_setzero_si256();
  const int64_t h = roi.height, r = radius;
  for (int64_t y = 0; y < h && y < r; ++y) {
    const uint8_t* row = RowAt(p, step, y) + x0;
    for (int j = 0; j < 6; ++j) sum[j] = _mm256_add_epi32(sum[j], Widen(row + 8 * j));
  }
  const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
  for (int64_t y = 0; y < h; ++y) {
    if (y + r < h) {
      const uint8_t* in = RowAt(p, step, y + r) + x0;
      for (int j = 0; j < 6; ++j) sum[j] = _mm256_add_epi32(sum[j], Widen(in + 8 * j));
    }
    if (y - r - 1 >= 0) {
      const uint8_t* out = RowAt(p, step, y - r - 1) + x0;
      for (int j = 0; j < 6; ++j) sum[j] = _mm256_sub_epi32(sum[j], Widen(out + 8 * j));
    }
    const __m256 rcp = _mm256_set1_ps(blur::Reciprocal(blur::WindowCount(y, r, h)));
    __m256i q[6];
    for (int j = 0; j < 6; ++j) {
      q[j] = _mm256_cvtps_epi32(_mm256_mul_ps(_mm256_cvtepi32_ps(sum[j]), rcp));
    }
    const __m256i first = _mm256_permutevar8x32_epi32(
        _mm256_packus_epi16(_mm256_packs_epi32(q[0], q[1]), _mm256_packs_epi32(q[2], q[3])), order);
    const __m256i last = _mm256_packs_epi32(q[4], q[5]);
    const __m256i second = _mm256_permutevar8x32_epi32(_mm256_packus_epi16(last, last), order);
    uint8_t* dst = work + 48 * y;
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst), first);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + 32), _mm256_castsi256_si128(second));
  }
  for (int64_t y = 0; y < h; ++y) std::memcpy(RowAt(p, step, y) + x0, work + 48 * y, 48);
}

// ---- Rows

constexpr int64_t kRingColumns = 256;  // a power of two

// A byte column of 16 rows.
struct Lanes {
  __m256i v;
  static Lanes Zero() { return {_mm256_setzero_si256()}; }
  static Lanes Add(Lanes a, Lanes b) { return {_mm256_add_epi16(a.v, b.v)}; }
  static Lanes Sub(Lanes a, Lanes b) { return {_mm256_sub_epi16(a.v, b.v)}; }
};

// Two 16 x 16 byte transposes, one in each 128-bit half: four rounds of interleaving each row
// with the one eight below.
void Transpose16(__m256i v[16]) {
  for (int round = 0; round < 4; ++round) {
    __m256i out[16];
    for (int k = 0; k < 8; ++k) {
      out[2 * k] = _mm256_unpacklo_epi8(v[k], v[k + 8]);
      out[2 * k + 1] = _mm256_unpackhi_epi8(v[k], v[k + 8]);
    }
    for (int k = 0; k < 16; ++k) v[k] = out[k];
  }
}

// The bytes of 16 rows, turned on their side a block of 32 byte columns at a time (two 16 x 16
// transposes side by side): Load transposes a block into the ring (one 16-bit lane a row),
// Store transposes 32 result columns back into the rows.
class RowBand {
 public:
  static constexpr int64_t kBlock = 32;

  void Reset(uint8_t* const rows[16], int64_t bytes) {
    for (int k = 0; k < 16; ++k) rows_[k] = rows[k];
    bytes_ = bytes;
    loaded_ = 0;
  }
  // Makes sure byte columns up to `col` are in the ring.
  void Need(int64_t col) {
    while (loaded_ <= col && loaded_ < bytes_) Load(loaded_), loaded_ += kBlock;
  }
  Lanes Column(int64_t col) const { return {ring_[col & (kRingColumns - 1)]}; }

  // Result columns at .. at + 31 (16-bit lanes, at most 255) back into the rows.
  void Store(int64_t at, const Lanes out[kBlock]) {
    // Columns k and k + 16 in one pack: [k rows 0-7, k + 16 rows 0-7 | k rows 8-15, k + 16 rows
    // 8-15], put in order by one permutation: [k | k + 16], each half a column of 16 rows.
    __m256i v[16];
    for (int k = 0; k < 16; ++k) {
      v[k] = _mm256_permute4x64_epi64(_mm256_packus_epi16(out[k].v, out[k + 16].v), 0xD8);
    }
    Transpose16(v);
    const int64_t n = bytes_ - at < kBlock ? bytes_ - at : kBlock;
    for (int k = 0; k < 16; ++k) {
      if (n == kBlock) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(rows_[k] + at), v[k]);
      } else {
        alignas(32) uint8_t part[kBlock];
        _mm256_store_si256(reinterpret_cast<__m256i*>(part), v[k]);
        std::memcpy(rows_[k] + at, part, static_cast<size_t>(n));
      }
    }
  }

 private:
  void Load(int64_t at) {
    __m256i v[16];
    const int64_t n = bytes_ - at < kBlock ? bytes_ - at : kBlock;
    for (int k = 0; k < 16; ++k) {
      if (n == kBlock) {
        v[k] = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows_[k] + at));
      } else {
        alignas(32) uint8_t part[kBlock] = {};
        std::memcpy(part, rows_[k] + at, static_cast<size_t>(n));
        v[k] = _mm256_load_si256(reinterpret_cast<const __m256i*>(part));
      }
    }
    Transpose16(v);  // v[k]: [column at + k | column at + 16 + k]
    for (int k = 0; k < 16; ++k) {
      ring_[(at + k) & (kRingColumns - 1)] = _mm256_cvtepu8_epi16(_mm256_castsi256_si128(v[k]));
      ring_[(at + 16 + k) & (kRingColumns - 1)] =
          _mm256_cvtepu8_epi16(_mm256_extracti128_si256(v[k], 1));
    }
  }

  uint8_t* rows_[16];
  int64_t bytes_;
  int64_t loaded_;
  __m256i ring_[kRingColumns];
};

// A 16-bit division by multiply-high and shift (Magic16); shift -1: a window of one.
struct VectorMagic {
  __m256i mul;
  __m128i shift;
  bool identity, unshifted;
  explicit VectorMagic(const blur::Magic16& m)
      : mul(_mm256_set1_epi16(static_cast<short>(m.mul))),
        shift(_mm_cvtsi32_si128(m.shift < 0 ? 0 : m.shift)),
        identity(m.shift < 0),
        unshifted(m.shift == 0) {}
  Lanes Quotient(Lanes sum) const {
    if (identity) return sum;
    const __m256i q = _mm256_mulhi_epu16(sum.v, mul);
    return {unshifted ? q : _mm256_srl_epi16(q, shift)};
  }
};

#include "primitives/blur/blur_rows.h"

}  // namespace

Status BlurRows(uint8_t* p, int32_t step, Size roi, int32_t radius, uint8_t* row) {
  return BandedRows(p, step, roi, radius, row);
}

namespace {

// ---- Columns in 16-bit lanes: while every window sum fits (255 * n <= 65535), a strip's 48
// byte columns are three vectors of 16-bit sums. A row whose count is odd takes the integer
// form of the rounded mean (FindRoundedMagic16); the others widen to 32 bits for the float
// form.

__m256i Widen16(const uint8_t* at) {
  return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)));
}

// Rounded means of 16 sums: by 2n with a multiply-high, or in single precision.
__m256i RoundedWords(__m256i sum, const blur::RowDivision& d) {
  if (d.integer) {
    const __m256i t = _mm256_add_epi16(_mm256_add_epi16(sum, sum), _mm256_set1_epi16(d.count));
    return _mm256_srl_epi16(
        _mm256_mulhi_epu16(t, _mm256_set1_epi16(static_cast<short>(d.magic.mul))),
        _mm_cvtsi32_si128(d.magic.shift));
  }
  const __m256 rcp = _mm256_set1_ps(d.reciprocal);
  const __m256i lo = _mm256_cvtps_epi32(
      _mm256_mul_ps(_mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(_mm256_castsi256_si128(sum))), rcp));
  const __m256i hi = _mm256_cvtps_epi32(_mm256_mul_ps(
      _mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(_mm256_extracti128_si256(sum, 1))), rcp));
  return _mm256_permute4x64_epi64(_mm256_packs_epi32(lo, hi), 0xD8);
}

// A strip of 16 * kVectors byte columns. Results are written back in place as soon as the
// row they replace has left every window (r + 1 rows later), from a ring of r + 1 result rows.
constexpr int64_t kMaxRing = 130;  // r + 1 for every radius the 16-bit sums allow

template <int kVectors>
void RoundedStrip16(uint8_t* p, int32_t step, Size roi, int32_t radius, int64_t x0,
                    const blur::RowDivision* division) {
  alignas(32) uint8_t ring[kMaxRing][16 * kVectors];
  __m256i s[kVectors];
  for (__m256i& v : s) v = _mm256_setzero_si256();
  const int64_t h = roi.height, r = radius, slots = r + 1;
  for (int64_t y = 0; y < h && y < r; ++y) {
    const uint8_t* row = RowAt(p, step, y) + x0;
    for (int k = 0; k < kVectors; ++k) s[k] = _mm256_add_epi16(s[k], Widen16(row + 16 * k));
  }
  auto write_back = [&](int64_t y) {
    std::memcpy(RowAt(p, step, y) + x0, ring[y % slots], 16 * kVectors);
  };
  for (int64_t y = 0; y < h; ++y) {
    if (y + r < h) {
      const uint8_t* in = RowAt(p, step, y + r) + x0;
      for (int k = 0; k < kVectors; ++k) s[k] = _mm256_add_epi16(s[k], Widen16(in + 16 * k));
    }
    if (y - r - 1 >= 0) {
      const uint8_t* out = RowAt(p, step, y - r - 1) + x0;
      for (int k = 0; k < kVectors; ++k) s[k] = _mm256_sub_epi16(s[k], Widen16(out + 16 * k));
      write_back(y - r - 1);
    }
    const blur::RowDivision& d = division[y];
    uint8_t* dst = ring[y % slots];
    for (int k = 0; k + 1 < kVectors; k += 2) {
      const __m256i q = _mm256_permute4x64_epi64(
          _mm256_packus_epi16(RoundedWords(s[k], d), RoundedWords(s[k + 1], d)), 0xD8);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + 16 * k), q);
    }
    if (kVectors % 2 == 1) {
      const __m256i q = RoundedWords(s[kVectors - 1], d);
      _mm_storeu_si128(
          reinterpret_cast<__m128i*>(dst + 16 * (kVectors - 1)),
          _mm256_castsi256_si128(_mm256_permute4x64_epi64(_mm256_packus_epi16(q, q), 0xD8)));
    }
  }
  for (int64_t y = h - slots < 0 ? 0 : h - slots; y < h; ++y) write_back(y);
}

#include "primitives/blur/blur_columns.h"

}  // namespace

Status BlurColumns(uint8_t* p, int32_t step, Size roi, int32_t radius, int32_t rounded_width,
                   uint8_t* work) {
  return StripColumns(p, step, roi, radius, rounded_width, work);
}

}  // namespace framekit::prim::avx2

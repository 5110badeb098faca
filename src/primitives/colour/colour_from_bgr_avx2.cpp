// BGR to YUV conversions, AVX2 level: class 6.
// Sixteen pixels of a row a step (two rows for 4:2:0), eight to a register, four to a 128-bit
// lane, paired as 16-bit (byte 0, byte 1) and (byte 1, byte 2) so every weighted sum is two
// vpmaddwd (33030 = 2 * 16515; the other weights fit 16 bits): the reference's exact 32-bit
// value. Results are taken from fixed bit positions of the biased sums rather than shifted and
// packed one by one: luma is bits 16-23, 4:2:0 chroma bits 18-25, 4:2:2 chroma bits 17-24 (the
// ranges in colour_kernels.h keep every biased sum positive and below the next bit).
//
// Reads and tails: a step inside a row loads each eight pixels as one 32-byte read from 4 bytes
// before them (4 bytes either side of its 48); the first step of a row, and a last step that
// would run past the row, read exactly their bytes as 16-byte halves. The last step ends at the
// row's last pixel pair and may overlap the one before, rewriting those outputs with the same
// values. Rows shorter than one step, and an odd last column, go through the scalar formulas.
// Nothing outside a row's pixels is read or written.
#include <immintrin.h>

#include <cstdint>

#include "primitives/colour/colour.h"
#include "primitives/colour/colour_kernels.h"
#include "primitives/mirror/mirror.h"

namespace framekit::prim::avx2 {
namespace {

constexpr int32_t kStep = 16;  // pixels of a row in one step

struct alignas(32) ByteTable {
  int8_t b[32];
};
inline __m256i Load(const ByteTable& t) {
  return _mm256_load_si256(reinterpret_cast<const __m256i*>(t.b));
}

// The dword of a lane that holds its pixel 0, 1, 2, 3: the two pixels of a pair sit in the two
// 64-bit halves, so pairs add as halves (unpack, not shuffle).
constexpr int kLaneSlot[4] = {0, 2, 1, 3};

// Words (byte a, byte b) of the four pixels of each lane; lane 0's pixels start at byte o0,
// lane 1's at byte o1.
constexpr ByteTable PairSelect(int o0, int o1, int a, int b) {
  ByteTable t{};
  for (int lane = 0; lane < 2; ++lane) {
    const int o = lane == 0 ? o0 : o1;
    for (int i = 0; i < 4; ++i) {
      int8_t* w = t.b + 16 * lane + 4 * kLaneSlot[i];
      w[0] = static_cast<int8_t>(o + 3 * i + a);
      w[1] = -1;
      w[2] = static_cast<int8_t>(o + 3 * i + b);
      w[3] = -1;
    }
  }
  return t;
}

// How eight pixels (24 bytes) reach their lanes: inside a row one 32-byte read from 4 bytes
// before them (lane 0 from byte 4, lane 1 from byte 0); at a row's ends 16 bytes from the first
// pixel and 16 from byte 8 (lane 0 from byte 0, lane 1 from byte 4).
enum class Reach { kInside, kEdge };

template <Reach R>
struct Layout;
template <>
struct Layout<Reach::kInside> {
  static constexpr ByteTable kLo = PairSelect(4, 0, 0, 1);
  static constexpr ByteTable kHi = PairSelect(4, 0, 1, 2);
  static __m256i Raw(const uint8_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p - 4));
  }
};
template <>
struct Layout<Reach::kEdge> {
  static constexpr ByteTable kLo = PairSelect(0, 4, 0, 1);
  static constexpr ByteTable kHi = PairSelect(0, 4, 1, 2);
  static __m256i Raw(const uint8_t* p) {
    return _mm256_inserti128_si256(
        _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))),
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8)), 1);
  }
};

// Eight pixels as 16-bit pairs: lane k holds pixels 4k..4k+3 in the order of kLaneSlot.
struct Pixels8 {
  __m256i lo;  // (byte 0, byte 1) of each pixel
  __m256i hi;  // (byte 1, byte 2)
};

template <Reach R>
inline Pixels8 Load8(const uint8_t* p) {
  const __m256i raw = Layout<R>::Raw(p);
  return {_mm256_shuffle_epi8(raw, Load(Layout<R>::kLo)),
          _mm256_shuffle_epi8(raw, Load(Layout<R>::kHi))};
}

struct Weights {
  __m256i lo, hi;
  Weights(int32_t lo_pair, int32_t hi_pair)
      : lo(_mm256_set1_epi32(lo_pair)), hi(_mm256_set1_epi32(hi_pair)) {}
};
inline __m256i Weigh(const Pixels8& p, const Weights& w) {
  return _mm256_add_epi32(_mm256_madd_epi16(p.lo, w.lo), _mm256_madd_epi16(p.hi, w.hi));
}

// The 16-bit pair sums of x and y, one dword each: lane k holds x's pairs, then y's.
inline __m256i PairSums(__m256i x, __m256i y) {
  return _mm256_add_epi16(_mm256_unpacklo_epi64(x, y), _mm256_unpackhi_epi64(x, y));
}

// Two registers of biased luma sums as 16-bit words a0 b0 a1 b1 ... (dword order): a's bits
// 16-23 moved down, b's taken in place (bits 24-31 of both are zero).
inline __m256i Interleave16(__m256i a, __m256i b) {
  return _mm256_blend_epi16(_mm256_srli_epi32(a, 16), b, 0xAA);
}

constexpr int32_t kLumaBias = BgrToYuv::kLumaBias;

// ---- 4:2:0 ----

// Luma bytes of one lane (words of pixels 0 8 2 10 1 9 3 11 of two runs) grouped by four.
constexpr ByteTable kRunOrder = {{0, 4, 2, 6, 1, 5, 3, 7, 8, 12, 10, 14, 9, 13, 11, 15,
                                  0, 4, 2, 6, 1, 5, 3, 7, 8, 12, 10, 14, 9, 13, 11, 15}};

// The chroma bias rides on the byte-1 word of the (byte 1, byte 2) block sums, which both
// weights leave out: that word is replaced by kBlockBiasWord (SplitBgr).
struct Coeffs420 {
  Weights luma{SplitBgr::kLuma420Lo, SplitBgr::kLuma420Hi};
  Weights u{SplitBgr::kU420Lo, SplitBgr::kU420HiBiased};
  Weights v{SplitBgr::kV420Lo, SplitBgr::kV420HiBiased};
};
constexpr int16_t kBlockBiasWord = SplitBgr::kBlockBiasWord;

// Sixteen pixels of two rows, converted but not stored: each row's luma as 16-bit words (lane 0:
// pixels 0 8 2 10 1 9 3 11, lane 1 the same from pixels 4 and 12), and the 8 blocks' chroma as
// U | V << 16 (lane 0: blocks 0 1 4 5, lane 1: blocks 2 3 6 7).
struct Run420 {
  __m256i row0, row1, uv;
};

template <Reach R>
inline Run420 Convert16(const uint8_t* s0, const uint8_t* s1, const Coeffs420& c) {
  const __m256i k = _mm256_set1_epi32(kLumaBias);
  // Pixels 0-7 of both rows, then 8-15; each row's luma sums become words as soon as both
  // halves are there, which keeps the registers in use few.
  const Pixels8 a0 = Load8<R>(s0), a1 = Load8<R>(s1);
  const Pixels8 col_a{_mm256_add_epi16(a0.lo, a1.lo), _mm256_add_epi16(a0.hi, a1.hi)};
  const __m256i la0 = _mm256_add_epi32(Weigh(a0, c.luma), k);
  const __m256i la1 = _mm256_add_epi32(Weigh(a1, c.luma), k);
  const Pixels8 b0 = Load8<R>(s0 + 24);
  const __m256i row0 = Interleave16(la0, _mm256_add_epi32(Weigh(b0, c.luma), k));
  const Pixels8 b1 = Load8<R>(s1 + 24);
  const __m256i row1 = Interleave16(la1, _mm256_add_epi32(Weigh(b1, c.luma), k));
  const Pixels8 col_b{_mm256_add_epi16(b0.lo, b1.lo), _mm256_add_epi16(b0.hi, b1.hi)};
  // Column sums of the two rows, then of each pixel pair: at most 1020, 16-bit.
  const Pixels8 blocks{
      PairSums(col_a.lo, col_b.lo),
      _mm256_blend_epi16(PairSums(col_a.hi, col_b.hi), _mm256_set1_epi32(kBlockBiasWord), 0x55)};
  const __m256i u = Weigh(blocks, c.u);  // 0 < u, v < 2^26
  const __m256i v = Weigh(blocks, c.v);
  return {row0, row1, _mm256_blend_epi16(_mm256_srli_epi32(u, 18), _mm256_srli_epi32(v, 2), 0xAA)};
}

// Luma words of x (to lane 0) and y (to lane 1) as bytes in pixel order.
inline __m256i LumaBytes(__m256i x, __m256i y) {
  return _mm256_permutevar8x32_epi32(
      _mm256_shuffle_epi8(_mm256_packus_epi16(x, y), Load(kRunOrder)),
      _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}

// Chroma bytes U0 V0 U1 V1 U4 V4 U5 V5 U2 V2 U3 V3 U6 V6 U7 V7 to U0-U7, then V0-V7.
inline __m128i PlanarOrder() {
  return _mm_setr_epi8(0, 2, 8, 10, 4, 6, 12, 14, 1, 3, 9, 11, 5, 7, 13, 15);
}

// Sixteen pixels of two rows: 16 luma bytes a row and 8 of each chroma plane.
template <Reach R>
inline void Step16(const uint8_t* s0, const uint8_t* s1, uint8_t* y0, uint8_t* y1, uint8_t* p2,
                   uint8_t* p3, const Coeffs420& c) {
  const Run420 run = Convert16<R>(s0, s1, c);
  const __m256i luma = LumaBytes(run.row0, run.row1);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(y0), _mm256_castsi256_si128(luma));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(y1), _mm256_extracti128_si256(luma, 1));
  const __m256i bytes = _mm256_packus_epi16(run.uv, run.uv);
  const __m128i planar = _mm_shuffle_epi8(
      _mm256_castsi256_si128(_mm256_permute4x64_epi64(bytes, 0x08)), PlanarOrder());
  _mm_storel_epi64(reinterpret_cast<__m128i*>(p2), planar);
  _mm_storeh_pi(reinterpret_cast<__m64*>(p3), _mm_castsi128_ps(planar));
}

// Thirty-two pixels of two rows inside the rows, with half the stores of two 16-pixel steps.
inline void Step32(const uint8_t* s0, const uint8_t* s1, uint8_t* y0, uint8_t* y1, uint8_t* p2,
                   uint8_t* p3, const Coeffs420& c) {
  const Run420 a = Convert16<Reach::kInside>(s0, s1, c);
  const Run420 b = Convert16<Reach::kInside>(s0 + 48, s1 + 48, c);
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(y0), LumaBytes(a.row0, b.row0));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(y1), LumaBytes(a.row1, b.row1));
  // Blocks 0-7 to lane 0 and 8-15 to lane 1, each sorted to U then V, then U and V gathered.
  const __m256i bytes = _mm256_permute4x64_epi64(_mm256_packus_epi16(a.uv, b.uv), 0xD8);
  const __m256i planar = _mm256_permute4x64_epi64(
      _mm256_shuffle_epi8(bytes, _mm256_broadcastsi128_si256(PlanarOrder())), 0xD8);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p2), _mm256_castsi256_si128(planar));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p3), _mm256_extracti128_si256(planar, 1));
}

// One output row pair: its source rows (upper output row first) and where it goes.
struct PairJob {
  const uint8_t* s0;
  const uint8_t* s1;
  Rows420 out;
};

template <Reach R>
inline void Step16At(const PairJob& j, int32_t x, const Coeffs420& c) {
  const Rows420& o = j.out;
  Step16<R>(j.s0 + 3 * x, j.s1 + 3 * x, o.y0 + x, o.y1 + x, o.p2 + x / 2, o.p3 + x / 2, c);
}

void RowPair420(const uint8_t* s0, const uint8_t* s1, const Rows420& out, int32_t blocks) {
  const PairJob j{s0, s1, out};
  const int32_t n = 2 * blocks;  // pixels converted; an odd last column is not
  if (n < kStep) return BgrBlocksTo420(s0, s1, out, 0, blocks);
  const Coeffs420 c;
  Step16At<Reach::kEdge>(j, 0, c);
  int32_t x = kStep;
  // An inside step reads 4 bytes past its pixels, which the next pixel pair holds.
  for (; x + 2 * kStep + 2 <= n; x += 2 * kStep) {
    Step32(s0 + 3 * x, s1 + 3 * x, out.y0 + x, out.y1 + x, out.p2 + x / 2, out.p3 + x / 2, c);
  }
  if (x + kStep + 2 <= n) {
    Step16At<Reach::kInside>(j, x, c);
    x += kStep;
  }
  if (x < n) Step16At<Reach::kEdge>(j, n - kStep, c);
}

// ---- 4:2:0 from a source turned over in place ----

// Exchanges bytes [from, to) of rows a and b: 32 at a time (the cost here is the number of
// stores), the last 32 overlapping the ones before but loaded before any store; shorter spans
// 16 at a time the same way, and under 16 bytes byte by byte.
void ExchangeSpan(uint8_t* a, uint8_t* b, int64_t from, int64_t to) {
  a += from;
  b += from;
  const int64_t n = to - from;
  if (n >= 32) {
    const __m256i tail_a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + n - 32));
    const __m256i tail_b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + n - 32));
    int64_t o = 0;
    for (; o + 32 <= n; o += 32) {
      const __m256i x = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + o));
      const __m256i y = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + o));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(a + o), y);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(b + o), x);
    }
    if (o == n) return;
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(a + n - 32), tail_b);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(b + n - 32), tail_a);
  } else if (n >= 16) {
    const __m128i head_a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a));
    const __m128i head_b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
    const __m128i tail_a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + n - 16));
    const __m128i tail_b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + n - 16));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(a), head_b);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(b), head_a);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(a + n - 16), tail_b);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(b + n - 16), tail_a);
  } else {
    for (int64_t i = 0; i < n; ++i) {
      const uint8_t t = a[i];
      a[i] = b[i];
      b[i] = t;
    }
  }
}

// 96 bytes of rows a and b exchanged: three 32-byte loads and stores each.
inline void Exchange96(uint8_t* a, uint8_t* b) {
  __m256i x[3], y[3];
  for (int i = 0; i < 3; ++i) {
    x[i] = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + 32 * i));
    y[i] = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + 32 * i));
  }
  for (int i = 0; i < 3; ++i) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(a + 32 * i), y[i]);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(b + 32 * i), x[i]);
  }
}

// Converts kPairs row pairs step by step and exchanges the rows of each `swap` pair (width * 3
// bytes) behind the steps: the bytes exchanged always end where the current step's reads
// begin, and no later step reads them, so every conversion sees the rows as they were. The
// exchange goes 96 bytes at a time (every other step) for few, wide stores. Sixteen-pixel
// steps here: with two pairs in flight the wider step costs more than its saved stores.
template <int kPairs>
void ConvertAndExchange(const PairJob (&jobs)[kPairs], uint8_t* const (&swap)[kPairs][2],
                        int32_t width) {
  const int32_t n = width & ~1;
  const int64_t row_bytes = int64_t{3} * width;
  int64_t exchanged = 0;
  if (n >= kStep) {
    const Coeffs420 c;
    for (const PairJob& j : jobs) Step16At<Reach::kEdge>(j, 0, c);
    int32_t x = kStep;
    for (; x + kStep + 2 <= n; x += kStep) {
      for (const PairJob& j : jobs) Step16At<Reach::kInside>(j, x, c);
      for (const int64_t behind = int64_t{3} * x - 4; behind - exchanged >= 96; exchanged += 96) {
        for (const auto& rows : swap) Exchange96(rows[0] + exchanged, rows[1] + exchanged);
      }
    }
    if (x < n) {
      for (const PairJob& j : jobs) Step16At<Reach::kEdge>(j, n - kStep, c);
    }
  } else {
    for (const PairJob& j : jobs) BgrBlocksTo420(j.s0, j.s1, j.out, 0, n / 2);
  }
  for (const auto& rows : swap) ExchangeSpan(rows[0], rows[1], exchanged, row_bytes);
}

// ---- 4:2:2 ----

// Chroma of a pair: bits 17-24 of its weighted sum plus kPairBias (128 * 2^17 and a bias of
// 2^14), which is the reference's low byte of the unsigned shift for every sum of two pixels.
constexpr int32_t kPairBias = SplitBgr::kPairBias;

// Per lane: the luma bytes (pixels 0 8 2 10 1 9 3 11) and the chroma bytes (U0 V0 U1 V1 U4 V4
// U5 V5) to Y0 U0 Y1 V0 Y2 U1 Y3 V1 Y8 U4 ... Y11 V5.
constexpr ByteTable kYuyvOrder = {{0, 8, 4, 9, 2, 10, 6, 11, 1, 12, 5, 13, 3, 14, 7, 15,
                                   0, 8, 4, 9, 2, 10, 6, 11, 1, 12, 5, 13, 3, 14, 7, 15}};

struct Coeffs422 {
  Weights luma{SplitBgr::kLuma422Lo, SplitBgr::kLuma422Hi};
  Weights u{SplitBgr::kU422Lo, SplitBgr::kU422Hi};
  Weights v{SplitBgr::kV422Lo, SplitBgr::kV422Hi};
};

template <Reach R>
inline void Step422(const uint8_t* s, uint8_t* d, const Coeffs422& c) {
  const Pixels8 a = Load8<R>(s), b = Load8<R>(s + 24);
  const __m256i k = _mm256_set1_epi32(kLumaBias);
  const __m256i y =
      Interleave16(_mm256_add_epi32(Weigh(a, c.luma), k), _mm256_add_epi32(Weigh(b, c.luma), k));
  // Pair sums: lane 0 holds pairs 0 1 4 5, lane 1 pairs 2 3 6 7.
  const Pixels8 pairs{PairSums(a.lo, b.lo), PairSums(a.hi, b.hi)};
  const __m256i kp = _mm256_set1_epi32(kPairBias);
  const __m256i u = _mm256_add_epi32(Weigh(pairs, c.u), kp);  // 0 < u, v < 2^25
  const __m256i v = _mm256_add_epi32(Weigh(pairs, c.v), kp);
  const __m256i uv = _mm256_blend_epi16(_mm256_srli_epi32(u, 17), _mm256_srli_epi32(v, 1), 0xAA);
  // Each lane interleaved into Y U Y V order, then its two four-pixel groups put in order.
  const __m256i yuyv = _mm256_permute4x64_epi64(
      _mm256_shuffle_epi8(_mm256_packus_epi16(y, uv), Load(kYuyvOrder)), 0xD8);
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(d), yuyv);
}

void Row422(const uint8_t* s, uint8_t* d, int32_t width) {
  const int32_t n = width & ~1;  // pixels in pairs
  if (n < kStep) return RowBgrTo422(s, d, 0, width);
  const Coeffs422 c;
  Step422<Reach::kEdge>(s, d, c);
  int32_t x = kStep;
  for (; x + kStep + 2 <= n; x += kStep) Step422<Reach::kInside>(s + 3 * x, d + 2 * x, c);
  if (x < n) Step422<Reach::kEdge>(s + 3 * (n - kStep), d + 2 * (n - kStep), c);
  RowBgrTo422(s, d, n, width);  // an odd last pixel
}

}  // namespace

Status ippiBGRToYCbCr422_8u_C3C2R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                  int32_t dst_step, Size roi) {
  return Convert422(src, src_step, dst, dst_step, roi, Row422);
}

Status ippiBGRToYUV420_8u_C3P3R(const uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                                const int32_t dst_step[3], Size roi) {
  return ConvertBgrTo420(src, src_step, dst, dst_step, roi, RowPair420);
}

// Even heights with rows that do not overlap: each output row pair is converted together with
// the pair at the other end of the frame, whose source rows are its own rows' partners in the
// turn-over, and the four rows are exchanged behind the conversion. Otherwise the mirror, then
// the conversion.
Status MirrorBGRToYUV420(uint8_t* src, int32_t src_step, uint8_t* const dst[3],
                         const int32_t dst_step[3], Size roi) {
  if (const Status s = Check420(dst, dst_step, src, roi); s != ippStsNoErr) return s;
  if ((roi.height & 1) != 0 || int64_t{src_step} < int64_t{3} * roi.width) {
    avx2::ippiMirror_8u_C3IR(src, src_step, roi, kAxisHorizontal);  // one row: left as it is
    return avx2::ippiBGRToYUV420_8u_C3P3R(src, src_step, dst, dst_step, roi);
  }
  // Output pair k reads source rows height - 1 - 2k (its upper row) and height - 2 - 2k.
  const int32_t pairs = roi.height / 2;
  auto row = [&](int32_t r) { return RowAt(src, src_step, r); };
  auto job = [&](int32_t k) {
    const int32_t upper = roi.height - 1 - 2 * k;
    return PairJob{row(upper), row(upper - 1), RowPairOf(dst, dst_step, k)};
  };
  for (int32_t k = 0; k < pairs - 1 - k; ++k) {
    const PairJob jobs[2] = {job(k), job(pairs - 1 - k)};
    uint8_t* const swap[2][2] = {{row(2 * k), row(roi.height - 1 - 2 * k)},
                                 {row(2 * k + 1), row(roi.height - 2 - 2 * k)}};
    ConvertAndExchange(jobs, swap, roi.width);
  }
  if (pairs % 2 == 1) {  // the middle pair, whose two rows change places
    const int32_t k = pairs / 2;
    const PairJob jobs[1] = {job(k)};
    uint8_t* const swap[1][2] = {{row(2 * k), row(2 * k + 1)}};
    ConvertAndExchange(jobs, swap, roi.width);
  }
  return Status420(roi);
}

}  // namespace framekit::prim::avx2

// 16-byte mirror blocks for levels with SSSE3 (pshufb). NOLINT(build/header_guard)
//
// Included inside the namespace of each per-ISA file at SSSE3 or above, for the same reason as
// mirror_kernels.h, which it brings in: every instantiation stays inside its level. The includer
// provides <tmmintrin.h> or <immintrin.h>, <cstdint>, <cstring> and the mirror declarations.

#include "primitives/mirror/mirror_kernels.h"

namespace {

struct Mask16 {
  uint8_t b[16];
};

constexpr Mask16 Reverse16Mask() {
  Mask16 m{};
  for (int j = 0; j < 16; ++j) m.b[j] = static_cast<uint8_t>(15 - j);
  return m;
}

// Controls for reversing 16 three-byte pixels held in registers in0..in2: output byte j of
// register o comes from byte 3 * (15 - pixel) + channel of the 48; the control for input i
// picks the bytes that lie in in_i and zeroes the rest (0x80).
constexpr Mask16 Rev48Mask(int o, int i) {
  Mask16 m{};
  for (int j = 0; j < 16; ++j) {
    const int out = 16 * o + j;
    const int src = 3 * (15 - out / 3) + out % 3;
    m.b[j] = static_cast<uint8_t>(src / 16 == i ? src % 16 : 0x80);
  }
  return m;
}

// Controls for five three-byte pixels in one register. Left: bytes 1..15 of the input (a load
// ending at a unit's end) reversed into bytes 0..14. Right: bytes 0..14 (a load starting at a
// unit's start) reversed into bytes 1..15. The 16th byte of each is filler.
constexpr Mask16 Rev15Mask(bool to_left) {
  Mask16 m{};
  for (int j = 0; j < 15; ++j) {
    const int src = 3 * (4 - j / 3) + j % 3;
    m.b[to_left ? j : j + 1] = static_cast<uint8_t>(to_left ? src + 1 : src);
  }
  m.b[to_left ? 15 : 0] = 0x80;
  return m;
}

constexpr bool Zeroes(const Mask16& m) {
  for (uint8_t v : m.b) {
    if (v != 0x80) return false;
  }
  return true;
}
// Output 0 draws on inputs 1 and 2, output 1 on all three, output 2 on inputs 0 and 1.
static_assert(Zeroes(Rev48Mask(0, 0)) && Zeroes(Rev48Mask(2, 2)));

alignas(16) constexpr Mask16 kReverse16 = Reverse16Mask();
alignas(16) constexpr Mask16 kRev48[7] = {Rev48Mask(0, 1), Rev48Mask(0, 2), Rev48Mask(1, 0),
                                          Rev48Mask(1, 1), Rev48Mask(1, 2), Rev48Mask(2, 0),
                                          Rev48Mask(2, 1)};
alignas(16) constexpr Mask16 kRev15Left = Rev15Mask(true);
alignas(16) constexpr Mask16 kRev15Right = Rev15Mask(false);

inline __m128i LoadMask(const Mask16& m) {
  return _mm_load_si128(reinterpret_cast<const __m128i*>(m.b));
}

struct Vec16 {
  static constexpr int64_t kBytes = 16;
  using T = __m128i;
  static T Load(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
  static void Store(uint8_t* p, T v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
};

struct Rev1x16 : Vec16 {
  static T Reverse(T v) { return _mm_shuffle_epi8(v, LoadMask(kReverse16)); }
};

struct Rev4x16 : Vec16 {
  static T Reverse(T v) { return _mm_shuffle_epi32(v, 0x1B); }
};

// 16 three-byte pixels across three registers: seven shuffles. Used for row tails and for rows
// too short for Rows3 below.
struct Rev3x48 {
  static constexpr int64_t kBytes = 48;
  struct T {
    __m128i v0, v1, v2;
  };
  static T Load(const uint8_t* p) {
    return {Vec16::Load(p), Vec16::Load(p + 16), Vec16::Load(p + 32)};
  }
  static void Store(uint8_t* p, T x) {
    Vec16::Store(p, x.v0);
    Vec16::Store(p + 16, x.v1);
    Vec16::Store(p + 32, x.v2);
  }
  static __m128i Pick(__m128i v, int k) { return _mm_shuffle_epi8(v, LoadMask(kRev48[k])); }
  static T Reverse(T x) {
    const __m128i o0 = _mm_or_si128(Pick(x.v1, 0), Pick(x.v2, 1));
    const __m128i o1 = _mm_or_si128(_mm_or_si128(Pick(x.v0, 2), Pick(x.v1, 3)), Pick(x.v2, 4));
    const __m128i o2 = _mm_or_si128(Pick(x.v0, 5), Pick(x.v1, 6));
    return {o0, o1, o2};
  }
};

// C3 rows in units of five pixels, one shuffle each: a unit's 15 bytes plus one filler byte are
// stored as 16, and the filler lands on the first byte of the next unit towards the middle.
// That byte is loaded (with the next unit) before the store, and overwritten by the next unit's
// store or, after the loop, restored or covered by a tail block holding original values. The
// 48-byte blocks finish what is left.
struct Rows3 {
  using Tail = Rows<3, Rev3x48>;
  static __m128i ToLeft(__m128i v) { return _mm_shuffle_epi8(v, LoadMask(kRev15Left)); }
  static __m128i ToRight(__m128i v) { return _mm_shuffle_epi8(v, LoadMask(kRev15Right)); }

  // U units from each end of [l, r) of p. On entry x[0] and y[0] hold the first unit of each
  // end (loaded as original); on return they hold the next pair, loaded before any store that
  // touches them. Needs r - l >= 30 * U + 30, so both ends' units and the next pair are disjoint.
  template <int U>
  static void ReverseStep(uint8_t* p, int64_t l, int64_t r, __m128i* x, __m128i* y) {
    for (int k = 1; k <= U; ++k) {
      x[k] = Vec16::Load(p + l + 15 * k);
      y[k] = Vec16::Load(p + r - 16 - 15 * k);
    }
    for (int k = 0; k < U; ++k) {
      Vec16::Store(p + l + 15 * k, ToLeft(y[k]));
      Vec16::Store(p + r - 16 - 15 * k, ToRight(x[k]));
    }
    x[0] = x[U];
    y[0] = y[U];
  }

  static void Reverse(uint8_t* p, int64_t n) {
    int64_t l = 0, r = n;
    if (n >= 60) {
      // x[0]: original [l, l + 16), y[0]: original [r - 16, r); bytes l and r - 1 may hold
      // filler until restored below.
      __m128i x[5] = {Vec16::Load(p)};
      __m128i y[5] = {Vec16::Load(p + n - 16)};
      for (; r - l >= 150; l += 60, r -= 60) ReverseStep<4>(p, l, r, x, y);
      for (; r - l >= 60; l += 15, r -= 15) ReverseStep<1>(p, l, r, x, y);
      p[l] = static_cast<uint8_t>(_mm_cvtsi128_si32(x[0]));
      p[r - 1] = static_cast<uint8_t>(_mm_cvtsi128_si32(_mm_srli_si128(y[0], 15)));
    }
    Tail::Reverse(p + l, r - l);
  }

  // Unit o of a takes the mirrored unit of b and the other way round; needs o + 15 * U + 16 <= n.
  template <int U>
  static void SwapStep(uint8_t* a, uint8_t* b, int64_t n, int64_t o, __m128i* x, __m128i* y) {
    for (int k = 1; k <= U; ++k) {
      x[k] = Vec16::Load(a + o + 15 * k);
      y[k] = Vec16::Load(b + n - o - 16 - 15 * k);
    }
    for (int k = 0; k < U; ++k) {
      Vec16::Store(a + o + 15 * k, ToLeft(y[k]));
      Vec16::Store(b + n - o - 16 - 15 * k, ToRight(x[k]));
    }
    x[0] = x[U];
    y[0] = y[U];
  }

  static void SwapReversed(uint8_t* a, uint8_t* b, int64_t n) {
    if (n < 48) return Tail::SwapReversed(a, b, n);
    // The last 48 bytes of a and the first 48 of b, stored last over the filler bytes.
    const Rev3x48::T tail_a = Rev3x48::Load(a + n - 48);
    const Rev3x48::T head_b = Rev3x48::Load(b);
    __m128i x[5] = {Vec16::Load(a)};
    __m128i y[5] = {Vec16::Load(b + n - 16)};
    int64_t o = 0;
    for (; o + 76 <= n; o += 60) SwapStep<4>(a, b, n, o, x, y);
    for (; o + 31 <= n; o += 15) SwapStep<1>(a, b, n, o, x, y);
    Rev3x48::Store(a + n - 48, Rev3x48::Reverse(head_b));
    Rev3x48::Store(b, Rev3x48::Reverse(tail_a));
  }
};

}  // namespace

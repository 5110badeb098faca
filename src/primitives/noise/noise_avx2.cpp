// Noise kernels, AVX2 level: class 6. Eight lanes a vector, so one vector holds two generator
// steps: [d2 | d1] and [d4 | d3] of a batch (upper half second), whose packs give two batches'
// bytes in d2, d4 / d1, d3 halves that one dword permutation puts in order. All steps of a group
// (two groups for mono) come from the group's first state through the jump tables, which leaves
// one multiply on the generator's chain per group. Pixels are updated 16 bytes at a time.
#include <immintrin.h>

#include <cstdint>

#include "primitives/core/checks.h"
#include "primitives/core/rows.h"
#include "primitives/noise/noise.h"
#include "primitives/noise/noise_kernels.h"

namespace framekit::prim::avx2 {
namespace {

using noise::kJumps;

__m128i Load(const uint32_t (&v)[4]) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(v));
}

// Steps `low` + 1 in the lower half and `high` + 1 in the upper half, as one multiply-add.
struct StepPair {
  __m256i mul, add;
};
StepPair Pair(int low, int high) {
  return {_mm256_inserti128_si256(_mm256_castsi128_si256(Load(kJumps.mul[low])),
                                  Load(kJumps.mul[high]), 1),
          _mm256_inserti128_si256(_mm256_castsi128_si256(Load(kJumps.add[low])),
                                  Load(kJumps.add[high]), 1)};
}

class Generator {
 public:
  Generator(NoiseLanes start, float scale)
      : s_(_mm256_broadcastsi128_si256(Load(start.lane))), scale_(_mm256_set1_ps(scale)) {
    for (int b = 0; b < 3; ++b) {
      pairs_[2 * b] = Pair(4 * b + 1, 4 * b);          // [d2 | d1]
      pairs_[2 * b + 1] = Pair(4 * b + 3, 4 * b + 2);  // [d4 | d3]
    }
  }

  void Colour(__m128i* b, __m128i* g, __m128i* r) {
    const __m256i d43_last = Step(5);  // [step 12 | step 11]
    const __m256i bg = Batches(Packed(0, Step(1)), Packed(2, Step(3)));
    const __m256i rr = Batches(Packed(4, d43_last), Packed(4, d43_last));
    *b = _mm256_castsi256_si128(bg);
    *g = _mm256_extracti128_si256(bg, 1);
    *r = _mm256_castsi256_si128(rr);
    s_ = LowToBoth(d43_last);
  }
  void Mono2(__m128i* first, __m128i* second) {
    const __m256i d43_second = Step(3);  // [step 8 | step 7]
    const __m256i n = Batches(Packed(0, Step(1)), Packed(2, d43_second));
    *first = _mm256_castsi256_si128(n);
    *second = _mm256_extracti128_si256(n, 1);
    s_ = LowToBoth(d43_second);
  }
  void Mono1(__m128i* n) {
    const __m256i d43 = Step(1);  // [step 4 | step 3]
    const __m256i packed = Packed(0, d43);
    *n = _mm256_castsi256_si128(Batches(packed, packed));
    s_ = LowToBoth(d43);
  }

 private:
  __m256i Step(int pair) const {
    return _mm256_add_epi32(_mm256_mullo_epi32(s_, pairs_[pair].mul), pairs_[pair].add);
  }
  __m256i Words(__m256i lanes) const {
    const __m256i v = _mm256_and_si256(_mm256_srli_epi32(lanes, 16), _mm256_set1_epi32(0x7FFF));
    return _mm256_cvtps_epi32(_mm256_mul_ps(_mm256_cvtepi32_ps(v), scale_));
  }
  // A batch as 16-bit words: lower half d2, d4, upper half d1, d3. d43 is the batch's second pair.
  __m256i Packed(int d21_pair, __m256i d43) const {
    return _mm256_packs_epi32(Words(Step(d21_pair)), Words(d43));
  }
  // Two batches' bytes: the first in the lower half, the second in the upper, each d2, d1, d4, d3.
  static __m256i Batches(__m256i first, __m256i second) {
    return _mm256_permutevar8x32_epi32(_mm256_packus_epi16(first, second),
                                       _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
  }
  static __m256i LowToBoth(__m256i v) { return _mm256_permute2x128_si256(v, v, 0x00); }

  __m256i s_;
  __m256 scale_;
  StepPair pairs_[6];
};

#include "primitives/noise/noise_interleave.h"

// Two groups' mono noise over 96 bytes in three 32-byte steps. Bytes 0-31 take pixels 0-10 and
// bytes 64-95 pixels 21-31, each from one group (its bytes in both halves); bytes 32-63 take
// pixels 10-15 from the first group and 16-21 from the second, one in each half.
void ApplyMonoPair(uint8_t* px, __m128i first, __m128i second, __m128i half) {
  struct Masks {
    int8_t m[3][32];
  };
  static constexpr Masks kMasks = [] {
    Masks k{};
    for (int v = 0; v < 3; ++v) {
      for (int t = 0; t < 32; ++t) {
        const int pixel = (32 * v + t) / 3;           // 0..31
        k.m[v][t] = static_cast<int8_t>(pixel % 16);  // within its group's 16 bytes
      }
    }
    return k;
  }();
  const __m256i half2 = _mm256_broadcastsi128_si256(half);
  const __m256i a = _mm256_subs_epu8(_mm256_broadcastsi128_si256(first), half2);
  const __m256i b = _mm256_subs_epu8(_mm256_broadcastsi128_si256(second), half2);
  const __m256i both = _mm256_permute2x128_si256(a, b, 0x30);  // [first | second]
  const __m256i sources[3] = {a, both, b};
  for (int v = 0; v < 3; ++v) {
    const __m256i mask = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(kMasks.m[v]));
    __m256i* at = reinterpret_cast<__m256i*>(px + 32 * v);
    _mm256_storeu_si256(
        at, _mm256_adds_epu8(_mm256_loadu_si256(at), _mm256_shuffle_epi8(sources[v], mask)));
  }
}

#include "primitives/noise/noise_blocks.h"

}  // namespace

Status ColourNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  return ColourRows(p, step, roi, amount, lanes);
}
Status MonoNoiseBlocks(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  return MonoRows(p, step, roi, amount, lanes);
}

}  // namespace framekit::prim::avx2

// The 128-bit noise generator. NOLINT(build/header_guard)
//
// Included inside the anonymous namespace of the SSE2, SSSE3 and SSE4.1 files. Four lanes a vector,
// so one vector per generator step; all steps of a group come from the group's first state through
// the jump tables, which leaves one multiply on the generator's chain per group.

using noise::kJumps;

// The low 32 bits of each lane's product: pmulld from SSE4.1 on, before it two pmuludq on the
// even and odd lanes put back together.
__m128i MulLo32(__m128i a, __m128i b) {
#ifdef __SSE4_1__
  return _mm_mullo_epi32(a, b);
#else
  const __m128i even = _mm_mul_epu32(a, b);
  const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
  return _mm_unpacklo_epi32(_mm_shuffle_epi32(even, 0x08), _mm_shuffle_epi32(odd, 0x08));
#endif
}

__m128i Load(const uint32_t (&v)[4]) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(v));
}

class Generator {
 public:
  Generator(NoiseLanes start, float scale) : s_(Load(start.lane)), scale_(_mm_set1_ps(scale)) {}

  void Colour(__m128i* b, __m128i* g, __m128i* r) {
    *b = Batch(0);
    *g = Batch(4);
    *r = Batch(8);
    s_ = Step(11);
  }
  void Mono2(__m128i* first, __m128i* second) {
    *first = Batch(0);
    *second = Batch(4);
    s_ = Step(7);
  }
  void Mono1(__m128i* n) {
    *n = Batch(0);
    s_ = Step(3);
  }

 private:
  // The lanes `k + 1` steps on from the current state.
  __m128i Step(int k) const {
    return _mm_add_epi32(MulLo32(s_, Load(kJumps.mul[k])), Load(kJumps.add[k]));
  }
  __m128i Words(int k) const {
    const __m128i v = _mm_and_si128(_mm_srli_epi32(Step(k), 16), _mm_set1_epi32(0x7FFF));
    return _mm_cvtps_epi32(_mm_mul_ps(_mm_cvtepi32_ps(v), scale_));
  }
  // The batch of steps first + 1 .. first + 4, as d2, d1, d4, d3.
  __m128i Batch(int first) const {
    const __m128i d21 = _mm_packs_epi32(Words(first + 1), Words(first));
    const __m128i d43 = _mm_packs_epi32(Words(first + 3), Words(first + 2));
    return _mm_packus_epi16(d21, d43);
  }

  __m128i s_;
  __m128 scale_;
};

// Adding noise planes to pixels with byte shuffles (SSSE3 and up). NOLINT(build/header_guard)
//
// Included inside the anonymous namespace of a per-ISA file, before noise_blocks.h. The planes
// are interleaved into pixel order (cheaper than splitting the pixels into planes and back),
// reduced by `half` and added with saturation.

// Byte t of output vector v (pixel bytes 16v + t) comes from lane (16v + t) / 3 of plane
// (16v + t) % 3; -1 clears it.
struct InterleaveMasks {
  int8_t plane[3][3][16];  // [output vector][plane][byte]
  int8_t mono[3][16];      // [output vector][byte]: every plane is the same
};
constexpr InterleaveMasks MakeInterleaveMasks() {
  InterleaveMasks m{};
  for (int v = 0; v < 3; ++v) {
    for (int t = 0; t < 16; ++t) {
      const int at = 16 * v + t;
      for (int p = 0; p < 3; ++p) m.plane[v][p][t] = static_cast<int8_t>(at % 3 == p ? at / 3 : -1);
      m.mono[v][t] = static_cast<int8_t>(at / 3);
    }
  }
  return m;
}
constexpr InterleaveMasks kInterleave = MakeInterleaveMasks();

inline __m128i Mask(const int8_t (&bytes)[16]) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

inline void AddTo(uint8_t* px, __m128i n) {
  __m128i* at = reinterpret_cast<__m128i*>(px);
  _mm_storeu_si128(at, _mm_adds_epu8(_mm_loadu_si128(at), n));
}

inline void ApplyColour(uint8_t* px, __m128i b, __m128i g, __m128i r, __m128i half) {
  b = _mm_subs_epu8(b, half);
  g = _mm_subs_epu8(g, half);
  r = _mm_subs_epu8(r, half);
  for (int v = 0; v < 3; ++v) {
    const auto& m = kInterleave.plane[v];
    const __m128i n =
        _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(b, Mask(m[0])), _mm_shuffle_epi8(g, Mask(m[1]))),
                     _mm_shuffle_epi8(r, Mask(m[2])));
    AddTo(px + 16 * v, n);
  }
}

inline void ApplyMono(uint8_t* px, __m128i n, __m128i half) {
  n = _mm_subs_epu8(n, half);
  for (int v = 0; v < 3; ++v) AddTo(px + 16 * v, _mm_shuffle_epi8(n, Mask(kInterleave.mono[v])));
}

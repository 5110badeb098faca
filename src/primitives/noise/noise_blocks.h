// The group loops of the noise kernels for one vector level. NOLINT(build/header_guard)
//
// Included inside the anonymous namespace of each per-ISA file, so every copy stays inside its
// level. The including file defines `Generator` (its own way of computing batches from the lane
// state):
//   Generator(NoiseLanes start, float scale);
//   void Colour(__m128i* b, __m128i* g, __m128i* r);  // the three batches of one group
//   void Mono2(__m128i* first, __m128i* second);       // the batches of two groups
//   void Mono1(__m128i* n);                            // the batch of one group
// and how noise reaches the pixels (noise_interleave.h where there are byte shuffles):
//   ApplyColour(px, b, g, r, half), ApplyMono(px, n, half) for one group (48 bytes), and
//   ApplyMonoPair(px, first, second, half) for two.

Status ColourRows(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  Generator gen(lanes, noise::NoiseScale(amount));
  const __m128i half = _mm_set1_epi8(static_cast<char>(noise::NoiseHalf(amount)));
  for (int32_t row = 0; row < roi.height; ++row) {
    uint8_t* px = RowAt(p, step, row);
    for (int32_t g = 0; g < roi.width / 16; ++g, px += 48) {
      __m128i b, gr, r;
      gen.Colour(&b, &gr, &r);
      ApplyColour(px, b, gr, r, half);
    }
  }
  return ippStsNoErr;
}

Status MonoRows(uint8_t* p, int32_t step, Size roi, int32_t amount, NoiseLanes lanes) {
  if (const Status s = CheckOne(p, roi); s != ippStsNoErr) return s;
  Generator gen(lanes, noise::NoiseScale(amount));
  const __m128i half = _mm_set1_epi8(static_cast<char>(noise::NoiseHalf(amount)));
  for (int32_t row = 0; row < roi.height; ++row) {
    uint8_t* px = RowAt(p, step, row);
    const int32_t groups = roi.width / 16;
    int32_t g = 0;
    for (; g + 2 <= groups; g += 2, px += 96) {
      __m128i first, second;
      gen.Mono2(&first, &second);
      ApplyMonoPair(px, first, second, half);
    }
    if (g < groups) {
      __m128i n;
      gen.Mono1(&n);
      ApplyMono(px, n, half);
    }
  }
  return ippStsNoErr;
}

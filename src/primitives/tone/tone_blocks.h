// Pieces of the fast-path tone kernels shared by the SSE2, SSSE3 and AVX2 files.
// NOLINT(build/header_guard)
//
// Included inside the namespace of each per-ISA file (after <emmintrin.h> or above), so every
// copy is compiled for that level only and has internal linkage there.

namespace {

// A row's block bytes (48 per 16 pixels) through vector_op 16 at a time, the tail bytes (the
// last width % 16 pixels) through tail_op. Unaligned; nothing past 3 * width bytes is touched.
template <typename VectorOp, typename TailOp>
void Rows(uint8_t* p, int32_t step, Size roi, VectorOp vector_op, TailOp tail_op) {
  const int64_t block_bytes = int64_t{roi.width / 16} * 48;
  const int64_t row_bytes = int64_t{roi.width} * 3;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* row = RowAt(p, step, r);
    for (int64_t i = 0; i < block_bytes; i += 16) {
      __m128i* at = reinterpret_cast<__m128i*>(row + i);
      _mm_storeu_si128(at, vector_op(_mm_loadu_si128(at)));
    }
    for (int64_t i = block_bytes; i < row_bytes; ++i) row[i] = tail_op(row[i]);
  }
}

struct Quad {
  __m128i v[4];  // 16 bytes as four vectors of 32-bit lanes, in byte order
};

inline Quad Widen(__m128i x) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i lo = _mm_unpacklo_epi8(x, zero), hi = _mm_unpackhi_epi8(x, zero);
  return {{_mm_unpacklo_epi16(lo, zero), _mm_unpackhi_epi16(lo, zero), _mm_unpacklo_epi16(hi, zero),
           _mm_unpackhi_epi16(hi, zero)}};
}

// Signed saturation to 16 bits, then unsigned to 8: a clamp of each lane to 0..255.
inline __m128i Narrow(const Quad& q) {
  return _mm_packus_epi16(_mm_packs_epi32(q.v[0], q.v[1]), _mm_packs_epi32(q.v[2], q.v[3]));
}

// cvtps2dq: nearest even; INT32_MIN for NaN or overflow, as the model does.
inline __m128i Scaled(__m128i lanes, __m128 scale) {
  return _mm_cvtps_epi32(_mm_mul_ps(_mm_cvtepi32_ps(lanes), scale));
}

}  // namespace

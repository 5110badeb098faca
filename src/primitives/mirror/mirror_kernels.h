// Mirror loops shared by the vector levels. NOLINT(build/header_guard)
//
// Included once by each per-ISA mirror file, inside that file's ISA namespace, so every
// instantiation is compiled for that level only and has internal linkage there; no include
// guard for that reason. The file includes nothing itself: its includer provides <cstdint>,
// <cstring> and the mirror declarations, and defines the blocks it instantiates the loops with.
//
// A block is a run of whole pixels that one level loads, reverses and stores as a unit:
//   static constexpr int64_t kBytes;      a multiple of the pixel size
//   using T;                              the registers holding one block
//   static T Load(const uint8_t*);        unaligned
//   static void Store(uint8_t*, T);       unaligned
//   static T Reverse(T);                  pixel order reversed, each pixel's bytes kept in order
// Rows<B, Blocks...>::<op> tries its blocks largest first and ends in plain byte loops, so any
// row length works. No loop reads or writes outside [row, row + n): a tail shorter than a block is
// covered by one block that overlaps the bytes already done, and every overlapping block holds
// values loaded before anything was stored, so it only rewrites bytes with their final values.

namespace {

// The end of the chain: pixel by pixel. `n` is the row length in bytes, a multiple of B.
template <int B, class... Blocks>
struct Rows {
  static void Swap2(uint8_t* a, uint8_t* b) {
    for (int k = 0; k < B; ++k) {
      const uint8_t t = a[k];
      a[k] = b[k];
      b[k] = t;
    }
  }
  static void Reverse(uint8_t* p, int64_t n) {
    for (int64_t l = 0, r = n - B; l < r; l += B, r -= B) Swap2(p + l, p + r);
  }
  static void ReverseCopy(const uint8_t* s, uint8_t* d, int64_t n) {
    for (int64_t o = 0; o < n; o += B) {
      for (int k = 0; k < B; ++k) d[o + k] = s[n - B - o + k];
    }
  }
  static void SwapReversed(uint8_t* a, uint8_t* b, int64_t n) {
    for (int64_t o = 0; o < n; o += B) Swap2(a + o, b + n - B - o);
  }
  static void Swap(uint8_t* a, uint8_t* b, int64_t n) {
    for (int64_t o = 0; o < n; ++o) {
      const uint8_t t = a[o];
      a[o] = b[o];
      b[o] = t;
    }
  }
};

template <int B, class Blk, class... Rest>
struct Rows<B, Blk, Rest...> {
  using Next = Rows<B, Rest...>;
  static constexpr int64_t K = Blk::kBytes;
  static_assert(K % B == 0, "a block holds whole pixels");

  // In place: swaps blocks from both ends towards the middle. A middle of one to two blocks is
  // done as two overlapping blocks, both loaded before either is stored.
  static void Reverse(uint8_t* p, int64_t n) {
    int64_t l = 0, r = n;
    for (; r - l >= 2 * K; l += K, r -= K) {
      const typename Blk::T x = Blk::Load(p + l);
      const typename Blk::T y = Blk::Load(p + r - K);
      Blk::Store(p + l, Blk::Reverse(y));
      Blk::Store(p + r - K, Blk::Reverse(x));
    }
    if (r - l < K) return Next::Reverse(p + l, r - l);
    const typename Blk::T x = Blk::Load(p + l);
    const typename Blk::T y = Blk::Load(p + r - K);
    Blk::Store(p + l, Blk::Reverse(y));
    Blk::Store(p + r - K, Blk::Reverse(x));
  }

  // d = reversed s; the last partial block is a full block ending at the row end.
  static void ReverseCopy(const uint8_t* s, uint8_t* d, int64_t n) {
    if (n < K) return Next::ReverseCopy(s, d, n);
    int64_t o = 0;
    for (; o + K <= n; o += K) Blk::Store(d + o, Blk::Reverse(Blk::Load(s + n - K - o)));
    if (o < n) Blk::Store(d + n - K, Blk::Reverse(Blk::Load(s)));
  }

  // Two distinct rows: a = reversed b and b = reversed a. The tail pair (end of a, start of b)
  // is loaded first and stored last, over bytes the loop has already given the same values.
  static void SwapReversed(uint8_t* a, uint8_t* b, int64_t n) {
    if (n < K) return Next::SwapReversed(a, b, n);
    const typename Blk::T tail_a = Blk::Load(a + n - K);
    const typename Blk::T head_b = Blk::Load(b);
    int64_t o = 0;
    for (; o + K <= n; o += K) {
      const typename Blk::T x = Blk::Load(a + o);
      const typename Blk::T y = Blk::Load(b + n - K - o);
      Blk::Store(a + o, Blk::Reverse(y));
      Blk::Store(b + n - K - o, Blk::Reverse(x));
    }
    if (o == n) return;
    Blk::Store(a + n - K, Blk::Reverse(head_b));
    Blk::Store(b, Blk::Reverse(tail_a));
  }

  // Two distinct rows exchanged byte for byte; same tail scheme as SwapReversed.
  static void Swap(uint8_t* a, uint8_t* b, int64_t n) {
    if (n < K) return Next::Swap(a, b, n);
    const typename Blk::T tail_a = Blk::Load(a + n - K);
    const typename Blk::T tail_b = Blk::Load(b + n - K);
    int64_t o = 0;
    for (; o + K <= n; o += K) {
      const typename Blk::T x = Blk::Load(a + o);
      const typename Blk::T y = Blk::Load(b + o);
      Blk::Store(a + o, y);
      Blk::Store(b + o, x);
    }
    if (o == n) return;
    Blk::Store(a + n - K, tail_b);
    Blk::Store(b + n - K, tail_a);
  }
};

// Eight bytes through a general register: the last vector-free step before the byte loops.
template <int B>
struct U64Block {
  static constexpr int64_t kBytes = 8;
  using T = uint64_t;
  static T Load(const uint8_t* p) {
    T v;
    std::memcpy(&v, p, sizeof v);
    return v;
  }
  static void Store(uint8_t* p, T v) { std::memcpy(p, &v, sizeof v); }
  static T Reverse(T v) {
    static_assert(B == 1 || B == 4, "eight bytes hold whole pixels of one or four bytes");
    if constexpr (B == 1) return __builtin_bswap64(v);
    return (v << 32) | (v >> 32);
  }
};

// Two blocks moved as one: unrolls the main loops of the widest level.
template <class Blk>
struct Twice {
  static constexpr int64_t kBytes = 2 * Blk::kBytes;
  struct T {
    typename Blk::T lo, hi;
  };
  static T Load(const uint8_t* p) { return {Blk::Load(p), Blk::Load(p + Blk::kBytes)}; }
  static void Store(uint8_t* p, T v) {
    Blk::Store(p, v.lo);
    Blk::Store(p + Blk::kBytes, v.hi);
  }
  static T Reverse(T v) { return {Blk::Reverse(v.hi), Blk::Reverse(v.lo)}; }
};

// PixelRows reverses rows of B-byte pixels (a Rows chain or any type with the same static
// functions); ByteRows exchanges rows byte for byte.
template <int B, class ByteRows, class PixelRows>
Status MirrorInPlace(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  if (const Status s = CheckMirror(p, p, roi, axis); s != ippStsNoErr) return s;
  const int64_t n = static_cast<int64_t>(roi.width) * B;
  const int32_t h = roi.height;
  auto row = [p, step](int32_t r) { return RowAt(p, step, r); };
  if (axis == kAxisVertical) {
    for (int32_t r = 0; r < h; ++r) PixelRows::Reverse(row(r), n);
    return ippStsNoErr;
  }
  for (int32_t r = 0; r < h / 2; ++r) {
    if (axis == kAxisHorizontal) {
      ByteRows::Swap(row(r), row(h - 1 - r), n);
    } else {
      PixelRows::SwapReversed(row(r), row(h - 1 - r), n);
    }
  }
  if (axis == kAxisBoth && h % 2 == 1) PixelRows::Reverse(row(h / 2), n);
  return ippStsNoErr;
}

// Axis 0 moves whole rows, which is the C library's memcpy.
template <int B, class PixelRows>
Status MirrorCopy(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi,
                  int32_t axis) {
  if (const Status s = CheckMirror(src, dst, roi, axis); s != ippStsNoErr) return s;
  const int64_t n = static_cast<int64_t>(roi.width) * B;
  const int32_t h = roi.height;
  for (int32_t r = 0; r < h; ++r) {
    const int32_t sr = axis == kAxisVertical ? r : h - 1 - r;
    const uint8_t* s = RowAt(src, src_step, sr);
    uint8_t* d = RowAt(dst, dst_step, r);
    if (axis == kAxisHorizontal) {
      std::memcpy(d, s, static_cast<size_t>(n));
    } else {
      PixelRows::ReverseCopy(s, d, n);
    }
  }
  return ippStsNoErr;
}

}  // namespace

// Box blur and sharpen against models written here (window sums taken afresh for every pixel,
// the filter byte by byte), the worked examples, and the sharpen's reads under guard pages.
#include <cstring>
#include <vector>

#include "effects/effect_test_support.h"
#include "framekit/framekit.h"
#include "primitives/core/dispatch.h"
#include "primitives/core/strides.h"
#include "primitives/filter/filter.h"
#include "support/guarded_buffer.h"
#include "support/random_frame.h"
#include "support/scoped_class.h"

namespace framekit::test {
namespace {

using Bytes = std::vector<uint8_t>;

enum class Division { kTruncate, kRounded };

// One pass over a packed frame: along rows (stride 3, n = w) or columns (stride 3w, n = h).
// Returns the last row's or column's results, as the scratch holds them.
Bytes PassModel(Bytes& f, int32_t w, int32_t h, int32_t r, bool rows, int32_t rounded_width) {
  const Bytes in = f;
  const int64_t n = rows ? w : h, lines = rows ? h : w;
  Bytes last;
  for (int64_t line = 0; line < lines; ++line) {
    for (int64_t i = 0; i < n; ++i) {
      const int64_t lo = std::max<int64_t>(0, i - r), hi = std::min<int64_t>(n - 1, i + r);
      const int64_t x = rows ? i : line, y = rows ? line : i;
      const bool rounded = !rows && x < rounded_width;
      for (int c = 0; c < 3; ++c) {
        int64_t sum = 0;
        for (int64_t j = lo; j <= hi; ++j) sum += in[3 * (rows ? line * w + j : j * w + line) + c];
        const int64_t count = hi - lo + 1;
        const uint8_t v = rounded ? Saturate(VectorRound(static_cast<float>(sum) *
                                                         (1.0f / static_cast<float>(count))))
                                  : static_cast<uint8_t>(sum / count);
        f[3 * (y * w + x) + c] = v;
        if (line == lines - 1) last.push_back(v);
      }
    }
  }
  return last;
}

struct Call {
  int32_t kernel, flag_a, flag_b;  // kernel 0: EffectBlur
};

// What a blur call leaves in the frame and in a scratch of `size` bytes.
void BlurModel(Bytes& f, Bytes& scratch, int32_t size, int32_t w, int32_t h, const Call& c) {
  const bool fast = w % 4 == 0;
  const int32_t r = c.kernel == 0 ? (fast ? 6 : 2) : c.kernel / 2;
  const bool horizontal = c.kernel == 0 || (fast ? c.flag_b : c.flag_a) != 0;
  const bool vertical = c.kernel == 0 || (fast ? c.flag_a : c.flag_b) != 0;
  auto use_scratch = [&](const Bytes& last, int64_t need) {
    std::fill(scratch.begin(), scratch.begin() + size, 0);
    if (size >= need && r >= 0) std::copy(last.begin(), last.end(), scratch.begin());
    return size >= need && r >= 0;
  };
  if (horizontal) {
    Bytes g = f;
    const Bytes last = PassModel(g, w, h, r, true, 0);
    if (use_scratch(last, 3 * w)) f = g;
  }
  if (vertical && r >= 0) {
    Bytes g = f;
    const Bytes last = PassModel(g, w, h, r, false, fast ? w / 16 * 16 : 0);
    if (fast || use_scratch(last, 3 * h)) f = g;
  } else if (vertical && !fast) {
    use_scratch({}, 0);
  }
}

TEST(Blur, BothPathsFollowTheModel) {
  const ScopedClassIndex best(prim::DetectedClass());
  Rng rng("effects/blur");
  const Call calls[] = {{0, 0, 0},  {1, 1, 1},  {2, 1, 1},   {5, 1, 0},  {5, 0, 1},  {5, 1, 1},
                        {12, 1, 1}, {25, 1, 1}, {400, 1, 1}, {-1, 1, 1}, {-3, 1, 1}, {3, 0, 0}};
  const std::pair<int32_t, int32_t> sizes[] = {{4, 1}, {16, 3}, {20, 9}, {36, 14}, {48, 30},
                                               {1, 1}, {3, 7},  {9, 9},  {17, 4},  {31, 20}};
  for (const Call& c : calls) {
    for (const auto& [w, h] : sizes) {
      const int32_t need = 3 * std::max(w, h);
      for (const int32_t size : {need, need + 40, 3 * std::min(w, h) - 1}) {
        const Bytes in = RandomFrame(rng, 3 * w, h);
        Bytes f = in, want = in;
        Bytes scratch = RandomFrame(rng, need + 40, 1), want_scratch = scratch;
        BlurModel(want, want_scratch, size, w, h, c);
        if (c.kernel == 0) {
          EffectBlur(f.data(), w, h, scratch.data(), size);
        } else {
          EffectBlurEx(f.data(), w, h, c.kernel, c.flag_a, c.flag_b, scratch.data(), size);
        }
        const std::string what = std::to_string(c.kernel) + "/" + std::to_string(c.flag_a) +
                                 std::to_string(c.flag_b) + " " + std::to_string(w) + "x" +
                                 std::to_string(h) + " scratch " + std::to_string(size);
        ASSERT_EQ(f, want) << what;
        ASSERT_EQ(scratch, want_scratch) << what;
      }
    }
  }
}

TEST(Blur, WorkedNineByNineExamples) {
  // General path, window 5: one white pixel at (4, 4).
  auto dot = [](int x, int y) {
    Bytes f(3 * 81, 0);
    std::fill_n(&f[3 * (9 * y + x)], 3, 255);
    return f;
  };
  Bytes scratch(64);
  Bytes f = dot(4, 4);
  EffectBlurEx(f.data(), 9, 9, 5, 1, 0, scratch.data(), 64);  // horizontal pass only
  for (int x = 0; x < 9; ++x) EXPECT_EQ(f[3 * (36 + x)], (x >= 2 && x <= 6) ? 51 : 0) << x;
  f = dot(4, 4);
  EffectBlur(f.data(), 9, 9, scratch.data(), 64);
  for (int y = 0; y < 9; ++y) {
    for (int x = 0; x < 9; ++x) {
      const bool in_square = x >= 2 && x <= 6 && y >= 2 && y <= 6;
      EXPECT_EQ(f[3 * (9 * y + x) + 1], in_square ? 10 : 0) << x << "," << y;
    }
  }
  // Next to the border the window shrinks: 255 / 3, 255 / 4, then 255 / 5.
  f = dot(1, 1);
  EffectBlurEx(f.data(), 9, 9, 5, 1, 0, scratch.data(), 64);
  EXPECT_EQ(Bytes({f[27], f[30], f[33], f[36], f[39]}), Bytes({85, 63, 51, 51, 0}));
  // A uniform frame stays uniform; both flags 0 change nothing.
  for (const int32_t w : {8, 9}) {
    Bytes grey(3 * w * 6, 77);
    EffectBlur(grey.data(), w, 6, scratch.data(), 64);
    EXPECT_EQ(grey, Bytes(3 * w * 6, 77)) << w;
  }
}

// The filter byte by byte: v = 17c - window sum, divided by 8 half to even, clamped.
uint8_t SharpenByte(const uint8_t* p, int32_t step) {
  int32_t sum = 0;
  for (int dy = -1; dy <= 1; ++dy) {
    for (int dx = -3; dx <= 3; dx += 3) sum += p[dy * step + dx];
  }
  const int32_t v = 17 * p[0] - sum;
  if (v < 0) return 0;
  const int32_t q = v / 8, rest = v % 8;
  const int32_t rounded = rest > 4 || (rest == 4 && q % 2 == 1) ? q + 1 : q;
  return static_cast<uint8_t>(std::min(rounded, 255));
}

TEST(Sharpen, FilterChecksAndRounding) {
  Bytes src(3 * 3 * 3, 100), dst(9, 7);
  auto filter = [&](const uint8_t* s, int32_t ss, uint8_t* d, int32_t ds, prim::Size roi) {
    return prim::ippiFilterSharpen_8u_C3R(s, ss, d, ds, roi);
  };
  const uint8_t* centre = &src[12];
  EXPECT_EQ(filter(nullptr, 9, dst.data(), 9, {1, 1}), -8);
  EXPECT_EQ(filter(centre, 9, nullptr, 9, {1, 1}), -8);
  EXPECT_EQ(filter(centre, 9, dst.data(), 9, {0, 1}), -6);
  EXPECT_EQ(filter(centre, 9, dst.data(), 9, {1, -1}), -6);
  EXPECT_EQ(filter(centre, 0, dst.data(), 9, {1, 1}), -14);
  EXPECT_EQ(filter(centre, 9, dst.data(), -9, {1, 1}), -14);
  EXPECT_EQ(dst, Bytes(9, 7));
  // A flat 100 stays 100. One neighbour of 104 makes v = 1600 - 804 = 8 * 99.5: rounded to
  // the even 100; one of 112 makes 8 * 98.5: rounded to 98.
  EXPECT_EQ(filter(centre, 9, dst.data(), 9, {1, 1}), 0);
  EXPECT_EQ(Bytes(dst.begin(), dst.begin() + 3), Bytes(3, 100));
  for (const auto& [neighbour, want] : {std::pair{104, 100}, {112, 98}}) {
    src[0] = static_cast<uint8_t>(neighbour);
    filter(centre, 9, dst.data(), 9, {1, 1});
    EXPECT_EQ(dst[0], want) << neighbour;
  }
  std::fill(src.begin(), src.end(), 255);
  src[12] = 0;  // dark centre: v < 0 gives 0; bright centre saturates
  filter(centre, 9, dst.data(), 9, {1, 1});
  EXPECT_EQ(dst[0], 0);
  EXPECT_EQ(dst[1], 255);
}

TEST(Sharpen, EffectCopiesTheFilteredRowsAndKeepsTheLastThree) {
  Rng rng("effects/sharpen");
  for (const auto& [w, h] : {std::pair{1, 4}, {2, 5}, {5, 4}, {7, 9}, {16, 6}, {33, 12}}) {
    const int32_t step = RowByteStrideRGB24(w);
    const Bytes in = RandomFrame(rng, step, h);
    const Bytes scratch_in = RandomFrame(rng, step, h);
    Bytes f = in, scratch = scratch_in, want_scratch = scratch_in;
    // Filtered: rows 1 .. h - 3, pixels 1 .. w, reading whatever lies there (next rows
    // included); for width 1 the last byte past the frame counts as the frame's last byte.
    Bytes padded = in;
    padded.resize(in.size() + 8, in.back());
    for (int32_t y = 1; y <= h - 3; ++y) {
      for (int32_t i = 3; i < 3 * (w + 1); ++i) {
        want_scratch[y * step + i] = SharpenByte(&padded[y * step + i], step);
      }
    }
    Bytes want = in;
    std::copy(want_scratch.begin(), want_scratch.begin() + step * (h - 3), want.begin());
    EffectSharpen(f.data(), w, h, scratch.data());
    EXPECT_EQ(f, want) << w << "x" << h;
    EXPECT_EQ(scratch, want_scratch) << w << "x" << h;
  }
  Bytes f(48, 9), s(48, 1);
  EffectSharpen(f.data(), 4, 3, s.data());  // fewer than 4 rows: nothing
  EffectSharpen(f.data(), 0, 6, s.data());
  EXPECT_EQ(f, Bytes(48, 9));
}

// The frame ends on a no-access page: the effect must not read past it for any width.
TEST(Sharpen, NeverReadsPastTheFrame) {
  Rng rng("effects/sharpen-guard");
  for (int32_t w = 1; w <= 9; ++w) {
    for (int32_t h = 4; h <= 6; ++h) {
      const int32_t step = RowByteStrideRGB24(w);
      GuardedImage frame(ImageLayout{step * h, 1, step * h});
      GuardedImage scratch(ImageLayout{step * h, 1, step * h});
      frame.FillRandom(rng);
      scratch.FillRandom(rng);
      const FaultNote note("EffectSharpen " + std::to_string(w) + "x" + std::to_string(h));
      EffectSharpen(frame.pixels(), w, h, scratch.pixels());
    }
  }
}

}  // namespace
}  // namespace framekit::test

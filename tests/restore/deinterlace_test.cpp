// Deinterlacing: the drivers' hand-over (sample image, temp, copy back, source order, fixed
// flags), pictures without combing coming back unchanged, kept fields, colours kept apart, the
// filters' worked examples and the blend state's life.
#include "primitives/deinterlace/deinterlace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <vector>

#include "framekit/framekit.h"
#include "primitives/core/memory.h"
#include "support/random_frame.h"

namespace framekit {
namespace {

using Bytes = std::vector<uint8_t>;
namespace prim = framekit::prim;

Bytes Random(int32_t width, int32_t height, const char* stream) {
  test::Rng rng(stream);
  Bytes b(static_cast<size_t>(3 * width * height));
  for (uint8_t& v : b) v = rng.Byte();
  return b;
}

// Each odd row a copy of the even row above it: the two fields are the same picture.
Bytes LineDoubled(Bytes b, int32_t width) {
  const size_t row = static_cast<size_t>(3 * width);
  for (size_t y = 1; y * row < b.size(); y += 2) {
    std::copy_n(b.begin() + static_cast<std::ptrdiff_t>((y - 1) * row), row,
                b.begin() + static_cast<std::ptrdiff_t>(y * row));
  }
  return b;
}

Bytes Cavt(Bytes frame, int32_t w, int32_t h, uint16_t t, Bytes* temp_out = nullptr) {
  Bytes temp(frame.size(), 0xA5);
  EffectDeinterlaceCAVT(frame.data(), w, h, temp.data(), t);
  if (temp_out != nullptr) *temp_out = temp;
  return frame;
}
Bytes Triangle(Bytes frame, int32_t w, int32_t h, uint32_t cw, Bytes* temp_out = nullptr) {
  Bytes temp(frame.size(), 0xA5);
  EffectDeinterlaceTriangle(frame.data(), w, h, temp.data(), cw);
  if (temp_out != nullptr) *temp_out = temp;
  return frame;
}
Bytes Blend(const Bytes& f1, const Bytes& f2, const Bytes& f3, int32_t w, int32_t h,
            const FrameKitDeinterlaceBlendParams& p) {
  Bytes dst(f2.size(), 0xA5);
  EffectDeinterlaceBlend(f1.data(), f2.data(), f3.data(), dst.data(), w, h, 3 * w, 3 * w, &p);
  return dst;
}

constexpr FrameKitDeinterlaceBlendParams kTypical{{10, 30}, {0.5, 0.5}};

TEST(Deinterlace, DriversHandTheSampleImageToTheFiltersAndCopyBack) {
  const int32_t w = 37, h = 11;  // 111 samples a row: vector steps and scalar ends
  const Bytes frame = Random(w, h, "deinterlace/drivers");
  const prim::Size samples{3 * w, h};
  Bytes direct(frame.size()), temp;
  prim::ippiDeinterlaceFilterCAVT_8u_C1R(frame.data(), 3 * w, direct.data(), 3 * w, 20, samples);
  EXPECT_EQ(Cavt(frame, w, h, 20, &temp), direct);
  EXPECT_EQ(temp, direct);
  prim::ippiDeinterlaceFilterTriangle_8u_C1R(frame.data(), 3 * w, direct.data(), 3 * w, samples,
                                             100, prim::kLayoutAll);
  EXPECT_EQ(Triangle(frame, w, h, 100, &temp), direct);
  EXPECT_EQ(temp, direct);

  // The blend: frame3 first, top field first, the top field kept and copied.
  const Bytes f1 = Random(w, h, "deinterlace/f1"), f3 = Random(w, h, "deinterlace/f3");
  const FrameKitDeinterlaceBlendParams p{{12, 40}, {0.8, 0.3}};  // asymmetric in time
  prim::DeinterlaceBlendState* state = nullptr;
  ASSERT_EQ(prim::ippiDeinterlaceBlendInitAlloc_8u_C1(samples, p.threshold, p.constant, &state), 0);
  const uint8_t* const sources[3] = {f3.data(), frame.data(), f1.data()};
  prim::ippiDeinterlaceBlend_8u_C1(sources, 3 * w, direct.data(), 3 * w, samples, 1, 0, 1, state);
  prim::ippiDeinterlaceBlendFree_8u_C1(state);
  EXPECT_EQ(Blend(f1, frame, f3, w, h, p), direct);
  EXPECT_NE(Blend(f3, frame, f1, w, h, p), direct) << "the order of the frames counts";

  // Steps: a bottom-up destination of padded rows.
  const int32_t step = 3 * w + 5;
  Bytes padded(static_cast<size_t>(step * h), 0x5A);
  EffectDeinterlaceBlend(f1.data(), frame.data(), f3.data(), padded.data() + step * (h - 1), w, h,
                         3 * w, -step, &p);
  for (int32_t y = 0; y < h; ++y) {
    const auto row = padded.begin() + step * (h - 1 - y);
    EXPECT_TRUE(std::equal(row, row + 3 * w, direct.begin() + 3 * w * y)) << "row " << y;
    EXPECT_EQ(row[3 * w], 0x5A);
  }
}

TEST(Deinterlace, PicturesWithoutCombingComeBackUnchanged) {
  const struct { int32_t w, h; } sizes[] = {{1, 1}, {2, 2}, {5, 3}, {40, 8}, {33, 17}};
  for (const auto& s : sizes) {
    const Bytes doubled = LineDoubled(Random(s.w, s.h, "deinterlace/doubled"), s.w);
    for (const int t : {0, 4, 64, 1000}) {
      EXPECT_EQ(Cavt(doubled, s.w, s.h, static_cast<uint16_t>(t)), doubled);
    }
    for (const uint32_t cw : {0u, 86u, 128u, 170u, 256u}) {
      EXPECT_EQ(Triangle(doubled, s.w, s.h, cw), doubled);
    }
    const Bytes any = Random(s.w, s.h, "deinterlace/still");
    for (const auto& p : {kTypical, FrameKitDeinterlaceBlendParams{{0, 0}, {0.0, 1.0}}}) {
      EXPECT_EQ(Blend(any, any, any, s.w, s.h, p), any) << s.w << "x" << s.h;
    }
  }
  // A vertical ramp is no comb either.
  Bytes ramp(3 * 4 * 9);
  for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<uint8_t>(20 * (i / 12) + i % 3);
  EXPECT_EQ(Triangle(ramp, 4, 9, 0), ramp);
  EXPECT_EQ(Cavt(ramp, 4, 9, 0), ramp);
}

TEST(Deinterlace, KeptFieldsAndColoursApart) {
  const int32_t w = 70, h = 9;
  const Bytes frame = Random(w, h, "deinterlace/kept");
  const Bytes out = Cavt(frame, w, h, 8);
  for (int32_t y = 0; y < h; y += 2) {
    EXPECT_TRUE(std::equal(out.begin() + 3 * w * y, out.begin() + 3 * w * (y + 1),
                           frame.begin() + 3 * w * y))
        << "top row " << y;
  }
  // Changing green and red leaves blue's result as it was, for the directional filters too.
  Bytes other = frame;
  test::Rng rng("deinterlace/colours");
  for (size_t i = 0; i < other.size(); ++i) {
    if (i % 3 != 0) other[i] = rng.Byte();
  }
  const Bytes f1 = Random(w, h, "deinterlace/f1");
  const auto blue = [](const Bytes& b) {
    Bytes only;
    for (size_t i = 0; i < b.size(); i += 3) only.push_back(b[i]);
    return only;
  };
  EXPECT_EQ(blue(Cavt(other, w, h, 8)), blue(out));
  EXPECT_EQ(blue(Triangle(other, w, h, 90)), blue(Triangle(frame, w, h, 90)));
  EXPECT_EQ(blue(Blend(f1, other, frame, w, h, kTypical)),
            blue(Blend(f1, frame, frame, w, h, kTypical)));

  // The blend's flags: the bottom field kept (top_field 1), or the kept rows left unwritten.
  const prim::Size samples{3 * w, h};
  prim::DeinterlaceBlendState* state = nullptr;
  ASSERT_EQ(prim::ippiDeinterlaceBlendInitAlloc_8u_C1(samples, kTypical.threshold,
                                                      kTypical.constant, &state),
            0);
  const uint8_t* const sources[3] = {frame.data(), frame.data(), f1.data()};
  for (const int32_t top_field : {0, 1}) {
    for (const int32_t copy : {0, 1}) {
      Bytes dst(frame.size(), 0xA5);
      EXPECT_EQ(prim::ippiDeinterlaceBlend_8u_C1(sources, 3 * w, dst.data(), 3 * w, samples, 1,
                                                 top_field, copy, state),
                0);
      for (int32_t y = top_field; y < h; y += 2) {
        const auto row = dst.begin() + 3 * w * y;
        EXPECT_TRUE(copy ? std::equal(row, row + 3 * w, frame.begin() + 3 * w * y)
                         : std::all_of(row, row + 3 * w, [](uint8_t v) { return v == 0xA5; }))
            << "kept row " << y << " copy " << copy;
      }
    }
  }
  prim::ippiDeinterlaceBlendFree_8u_C1(state);
}

// One column of samples (width 1 pixel, all three colours alike) through each filter.
std::vector<int> Column(const std::vector<int>& rows, const std::function<Bytes(Bytes)>& filter) {
  Bytes frame;
  for (const int v : rows) frame.insert(frame.end(), 3, static_cast<uint8_t>(v));
  const Bytes out = filter(frame);
  std::vector<int> column;
  for (size_t i = 0; i < out.size(); i += 3) column.push_back(out[i]);
  return column;
}

TEST(Deinterlace, WorkedExamples) {
  const auto h = [](const std::vector<int>& r) { return static_cast<int32_t>(r.size()); };
  // Triangle: the top rows stay; a bottom row's teeth move towards the rows around it.
  const struct {
    std::vector<int> in;
    uint32_t cw;
    std::vector<int> out;
  } triangles[] = {
      {{0, 200, 0, 200, 0}, 128, {0, 100, 0, 100, 0}},   // [1 2 1] / 4 on a pure comb
      {{0, 200, 0, 200, 0}, 0, {0, 0, 0, 0, 0}},         // teeth removed
      {{10, 50, 30, 31, 90}, 64, {10, 35, 30, 31, 90}},  // a sample between stays
      {{100, 20, 90, 95}, 128, {100, 55, 90, 92}},       // below and above; the last row
      {{10, 13, 10, 7, 10}, 128, {10, 11, 10, 9, 10}},   // 1.5 rounds away from zero
  };
  for (const auto& t : triangles) {
    const auto run = [&](Bytes f) { return Triangle(f, 1, h(t.in), t.cw); };
    EXPECT_EQ(Column(t.in, run), t.out) << "centre weight " << t.cw;
  }
  // CAVT on two rows: no motion to find, so the rebuilt row is the other field itself, kept
  // within the threshold of the range of the kept rows around it.
  const struct {
    std::vector<int> in;
    uint16_t t;
    std::vector<int> out;
  } cavts[] = {{{100, 80}, 0, {100, 100}},
               {{100, 80}, 19, {100, 81}},
               {{100, 80}, 65535, {100, 80}},
               {{100, 130}, 20, {100, 120}},
               {{100, 110}, 20, {100, 110}}};
  for (const auto& c : cavts) {
    const auto run = [&](Bytes f) { return Cavt(f, 1, h(c.in), c.t); };
    EXPECT_EQ(Column(c.in, run), c.out) << "threshold " << c.t;
  }
  // A picture panned sideways between the fields: the bottom rows are the top rows moved s
  // pixels (flat where the move reaches the edges), so every rebuilt row is the top row again,
  // even with the other field trusted whole.
  for (const int s : {3, -2, 4}) {
    const int32_t w = 32, rows = 6;
    const auto top = [](int x, int c) {
      return static_cast<uint8_t>(x >= 8 && x < 24 ? (37 * x + 11 * c) % 200 + 30 : 50 + c);
    };
    Bytes panned(3 * w * rows), still(panned.size());
    for (int y = 0; y < rows; ++y) {
      for (int x = 0; x < w; ++x) {
        for (int c = 0; c < 3; ++c) {
          const int from = y % 2 == 0 ? x : std::clamp(x - s, 0, w - 1);
          panned[static_cast<size_t>(3 * (w * y + x) + c)] = top(from, c);
          still[static_cast<size_t>(3 * (w * y + x) + c)] = top(x, c);
        }
      }
    }
    EXPECT_EQ(Cavt(panned, w, rows, 65535), still) << "moved " << s;
    EXPECT_EQ(Cavt(panned, w, rows, 16), still) << "moved " << s;
  }
  // Blend: the current frame's top field still, the bottom fields 100 (frame1) and 110
  // (frame2), so m = 10; the top rows 60 and 90 give a mean of 75.
  const std::vector<int> current = {60, 110, 90, 110}, earlier = {60, 100, 90, 100};
  const struct {
    FrameKitDeinterlaceBlendParams p;
    int out;
  } blends[] = {
      {{{10, 30}, {0.5, 0.5}}, 105},   // still: the mean of the two bottom fields
      {{{10, 30}, {0.25, 0.5}}, 108},  // (100 + 3 * 110) / 4 = 107.5, halves up
      {{{2, 6}, {0.5, 0.5}}, 95},      // moving: 75 brought within 2 * 0.5 * 10 of 105
      {{{2, 6}, {0.5, 1.0}}, 85},      // ... within 20
      {{{2, 6}, {0.5, 0.0}}, 105},     // ... onto it
      {{{6, 14}, {0.5, 1.0}}, 95},     // halfway in the band: 105 + (85 - 105) / 2
  };
  for (const auto& b : blends) {
    const auto run = [&](Bytes f2) {
      Bytes f1, f3;
      for (const int v : earlier) f1.insert(f1.end(), 3, static_cast<uint8_t>(v));
      return Blend(f1, f2, f2, 1, 4, b.p);
    };
    EXPECT_EQ(Column(current, run)[1], b.out) << b.p.threshold[0] << ", " << b.p.threshold[1];
  }
  // Moving, with the temporal estimates' detail: 105 at row 1, 125 at row 3, so 3/16 of
  // (2 * 105 - 105 - 125) rounds to -4 on the mean 105 of the top rows 100 and 110.
  const auto detailed = [](Bytes f2) {
    Bytes f1;
    for (const int v : {100, 100, 110, 120, 80, 100}) f1.insert(f1.end(), 3, uint8_t(v));
    return Blend(f1, f2, f2, 1, 6, {{2, 6}, {0.5, 1.0}});
  };
  EXPECT_EQ(Column({100, 110, 110, 130, 80, 110}, detailed)[1], 101);
}

int g_allocations = 0;
bool g_fail = false;
void* Allocate(size_t n) {
  ++g_allocations;
  return g_fail ? nullptr : std::malloc(n);
}

// Without room for its vectors CAVT still rebuilds every bottom row, vertically: a bottom
// sample equal to a kept neighbour stays; others become the kept rows' mean plus the other
// field's detail (2 o - u - d + 4) >> 3 within +-threshold.
TEST(Deinterlace, CavtWithoutVectorStorageRebuildsVertically) {
  const struct {
    std::vector<int> in;
    uint16_t t;
    std::vector<int> out;
  } cavts[] = {{{100, 130, 110, 85, 120}, 20, {100, 111, 110, 109, 120}},  // details 6, -6
               {{100, 130, 110, 85, 120}, 3, {100, 108, 110, 112, 120}},
               {{100, 130, 110, 85, 120}, 0, {100, 105, 110, 115, 120}},
               {{100, 100, 110, 255}, 200, {100, 100, 110, 129}},  // the last row: detail 19
               {{100, 80}, 19, {100, 100}}};
  prim::SetAllocationHooks(&Allocate, &std::free);
  for (const auto& c : cavts) {
    const auto run = [&](Bytes f) { return Cavt(f, 1, static_cast<int32_t>(c.in.size()), c.t); };
    g_fail = true;
    g_allocations = 0;
    EXPECT_EQ(Column(c.in, run), c.out) << "threshold " << c.t;
    EXPECT_EQ(g_allocations, 1);
    g_fail = false;
    EXPECT_NE(Column(c.in, run), c.out) << "threshold " << c.t << " with its vectors";
  }
  g_allocations = 0;
  Cavt(Random(9, 1, "deinterlace/one-row"), 9, 1, 16);
  EXPECT_EQ(g_allocations, 0) << "a single row is copied";
  prim::SetAllocationHooks(nullptr, nullptr);
}

TEST(Deinterlace, ChecksAndTheBlendStateLife) {
  uint8_t a[12] = {}, b[12] = {};
  const int32_t th[2] = {1, 2};
  const double k[2] = {0.5, 0.5};
  prim::DeinterlaceBlendState* state = nullptr;
  const struct {
    prim::Status got, want;
  } statuses[] = {
      {prim::ippiDeinterlaceFilterCAVT_8u_C1R(nullptr, 4, b, 4, 1, {4, 3}), -8},
      {prim::ippiDeinterlaceFilterCAVT_8u_C1R(a, 4, b, 4, 1, {4, 0}), -6},
      {prim::ippiDeinterlaceFilterTriangle_8u_C1R(a, 4, nullptr, 4, {0, 3}, 1, 21), -8},
      {prim::ippiDeinterlaceFilterTriangle_8u_C1R(a, 4, b, 4, {-1, 3}, 1, 0), -6},
      {prim::ippiDeinterlaceFilterTriangle_8u_C1R(a, 4, b, 4, {4, 3}, 1, 0), -222},
      {prim::ippiDeinterlaceFilterTriangle_8u_C1R(a, 4, b, 4, {4, 3}, 1, 21 | 8), -222},
      {prim::ippiDeinterlaceBlendInitAlloc_8u_C1({4, 3}, nullptr, k, &state), -8},
      {prim::ippiDeinterlaceBlendInitAlloc_8u_C1({4, 0}, th, k, &state), -6},
  };
  for (size_t i = 0; i < std::size(statuses); ++i) {
    EXPECT_EQ(statuses[i].got, statuses[i].want) << "case " << i;
  }
  EXPECT_EQ(state, nullptr);
  ASSERT_EQ(prim::ippiDeinterlaceBlendInitAlloc_8u_C1({4, 3}, th, k, &state), 0);
  const uint8_t* const sources[3] = {a, a, a};
  const uint8_t* const missing[3] = {a, nullptr, a};
  EXPECT_EQ(prim::ippiDeinterlaceBlend_8u_C1(missing, 4, b, 4, {4, 3}, 1, 0, 1, state), -8);
  EXPECT_EQ(prim::ippiDeinterlaceBlend_8u_C1(sources, 4, b, 4, {4, 3}, 1, 0, 1, nullptr), -8);
  EXPECT_EQ(prim::ippiDeinterlaceBlend_8u_C1(sources, 4, b, 4, {4, 2}, 1, 0, 1, state), -6)
      << "another size than the state's";
  prim::ippiDeinterlaceBlendFree_8u_C1(state);

  // Each export call makes and frees one state; a failed one leaves dst as it was.
  prim::SetAllocationHooks(&Allocate, &std::free);
  const Bytes f = Random(6, 4, "deinterlace/state");
  g_allocations = 0;
  Blend(f, f, f, 6, 4, kTypical);
  EXPECT_EQ(g_allocations, 1);
  g_fail = true;
  EXPECT_EQ(Blend(f, f, f, 6, 4, kTypical), Bytes(f.size(), 0xA5));
  g_fail = false;
  prim::SetAllocationHooks(nullptr, nullptr);
  Bytes dst(f.size(), 0xA5);
  EffectDeinterlaceBlend(f.data(), f.data(), f.data(), dst.data(), 6, 4, 18, 18, nullptr);
  EXPECT_EQ(dst, Bytes(f.size(), 0xA5)) << "a null record writes nothing";
}

}  // namespace
}  // namespace framekit

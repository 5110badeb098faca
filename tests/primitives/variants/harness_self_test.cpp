// The harness catches what it exists to catch: deliberately broken bodies in stand-in tables must
// fail with messages that locate the fault, guard pages must stop stray accesses, and what it
// promises a primitive (a readable border, scratch and work memory, a second frame size, a
// tolerance, one buffer as source and destination) must hold for correct bodies.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "primitives/copy/copy.h"
#include "primitives/core/checks.h"
#include "primitives/mirror/mirror.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

using prim::CheckTwo;
using prim::Size;
using prim::Status;

int64_t At(int32_t step, int32_t r) { return int64_t{r} * step; }

Status RefCopy(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi) {
  return prim::ref::ippiCopy_8u_C3R(src, src_step, dst, dst_step, roi);
}

// One byte after row 0's pixels, when the destination has padding there.
Status CopyWritesPadding(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi) {
  const Status s = RefCopy(src, src_step, dst, dst_step, roi);
  if (s == 0 && roi.height > 1 && dst_step > roi.width * 3) dst[roi.width * 3] ^= 1;
  return s;
}

// A vector loop that forgets the last byte of rows longer than one register.
Status CopyDropsTail(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                     Size roi) {
  const Status s = CheckTwo(src, dst, roi);
  if (s != 0 || roi.width * 3 <= 16) return RefCopy(src, src_step, dst, dst_step, roi);
  const uint8_t keep = dst[roi.width * 3 - 1];
  RefCopy(src, src_step, dst, dst_step, roi);
  dst[roi.width * 3 - 1] = keep;
  return s;
}

// Checks the width but not the height.
Status CopyMissesHeightCheck(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                             Size roi) {
  if (roi.height <= 0 && src != nullptr && dst != nullptr && roi.width > 0) return 0;
  return RefCopy(src, src_step, dst, dst_step, roi);
}

// Touches the destination before checking the arguments.
Status CopyWritesFirst(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                       Size roi) {
  if (dst != nullptr) dst[0] ^= 0x5A;  // always a visible change, whatever the byte held
  return RefCopy(src, src_step, dst, dst_step, roi);
}

// Reads the destination's first pixel after writing it, which only matters in place.
Status CopyBreaksInPlace(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                         Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != 0) return s;
  dst[0] = static_cast<uint8_t>(src[1] + 1);
  const uint8_t first = src[0];
  RefCopy(src, src_step, dst, dst_step, roi);
  dst[0] = first;
  return 0;
}

volatile uint8_t g_sink;

// Reads one byte past the last row's pixels.
Status MirrorReadsPastEnd(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  const Status s = prim::ref::ippiMirror_8u_C1IR(p, step, roi, axis);
  if (s != 0) return s;
  g_sink = p[static_cast<int64_t>(roi.height - 1) * step + roi.width];
  return s;
}

// ---- A one-byte filter with the features later families need: dst (second size) from the
// 3 x 3 neighbourhood of src (first size, one pixel of border), the nearest source pixel for
// each destination pixel, scratch and work memory scribbled on. `bias` is added to every result.
template <int kBias, bool kWritesBorder = false>
Status Filter(const uint8_t* src, int32_t ss, Size sz, uint8_t* dst, int32_t ds, Size dz,
              uint8_t* scratch, uint8_t* work, int32_t work_bytes) {
  if (src == nullptr || dst == nullptr) return prim::ippStsNullPtrErr;
  if (sz.width <= 0 || sz.height <= 0 || dz.width <= 0 || dz.height <= 0) {
    return prim::ippStsSizeErr;
  }
  for (int32_t i = 0; i < work_bytes; ++i) work[i] = static_cast<uint8_t>(i * kBias);
  for (int32_t y = 0; y < dz.height; ++y) {
    const int32_t sy = static_cast<int32_t>(int64_t{y} * sz.height / dz.height);
    for (int32_t x = 0; x < dz.width; ++x) {
      const int32_t sx = static_cast<int32_t>(int64_t{x} * sz.width / dz.width);
      int32_t sum = 0;
      for (int32_t dy = -1; dy <= 1; ++dy) {
        for (int32_t dx = -1; dx <= 1; ++dx) sum += src[At(ss, sy + dy) + sx + dx];
      }
      dst[At(ds, y) + x] = static_cast<uint8_t>(sum / 9 + kBias);
    }
  }
  scratch[0] = static_cast<uint8_t>(kBias);
  if (kWritesBorder) dst[-1] = 0;
  return 0;
}
using FilterSig = decltype(Filter<0>);

struct FilterDriver {
  int tolerance;
  PrimitiveShape Shape() const {
    return {.images = {{"src", 1, Access::kRead, 1, 0, 1},
                       {"dst", 1, Access::kWrite, 1, 1, 1},
                       {"scratch", 1, Access::kScratch}},
            .sizes = 2,
            .tolerance = tolerance,
            .work_bytes = [](const CallArgs& a) { return a.roi.width > 0 ? a.roi.width : 0; }};
  }
  Status Call(FilterSig* fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, a.image[1], a.step[1], a.roi2, a.image[2], a.work,
              a.work_bytes);
  }
};

// Class 1 gets the body under test; the rest keep the reference.
template <typename Fn>
constexpr prim::Table<Fn> WithClass1(Fn reference, Fn other) {
  return {reference, other, reference, reference, reference, reference, reference};
}

struct CopyC3Driver {
  bool in_place = false;
  PrimitiveShape Shape() const {
    PrimitiveShape s{.images = {{"src", 3, Access::kRead}, {"dst", 3, Access::kWrite}}};
    if (in_place) s.in_place = {{0, 1}};
    return s;
  }
  Status Call(prim::CopyFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi);
  }
};

struct MirrorC1Driver {
  PrimitiveShape Shape() const {
    return {.images = {{"image", 1, Access::kReadWrite}}, .axes = {0, 1, 2}};
  }
  Status Call(prim::MirrorIRFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, a.axis);
  }
};

constexpr auto kPaddingTable = WithClass1<prim::CopyFn>(RefCopy, CopyWritesPadding);
constexpr auto kTailTable = WithClass1<prim::CopyFn>(RefCopy, CopyDropsTail);
constexpr auto kHeightTable = WithClass1<prim::CopyFn>(RefCopy, CopyMissesHeightCheck);
constexpr auto kEarlyWriteTable = WithClass1<prim::CopyFn>(RefCopy, CopyWritesFirst);
constexpr auto kInPlaceTable = WithClass1<prim::CopyFn>(RefCopy, CopyBreaksInPlace);
constexpr prim::Table<prim::CopyFn> kSharedTable = {RefCopy,       CopyDropsTail, CopyDropsTail,
                                                    CopyDropsTail, CopyDropsTail, CopyDropsTail,
                                                    CopyDropsTail};
constexpr auto kOverreadTable =
    WithClass1<prim::MirrorIRFn>(prim::ref::ippiMirror_8u_C1IR, MirrorReadsPastEnd);
constexpr auto kFilterExact = WithClass1<FilterSig*>(Filter<0>, Filter<0>);
constexpr auto kFilterOffByOne = WithClass1<FilterSig*>(Filter<0>, Filter<1>);
constexpr auto kFilterOffByTwo = WithClass1<FilterSig*>(Filter<0>, Filter<2>);
constexpr auto kFilterBorderWriter = WithClass1<FilterSig*>(Filter<0>, Filter<0, true>);

std::vector<std::string> Failures(const VariantSubject& subject, int max_failures = 1) {
  return CheckVariants(subject, {.max_class = 6, .max_failures = max_failures});
}

TEST(VariantHarness, CatchesBrokenBodiesAndLocatesTheFault) {
  const struct {
    VariantSubject subject;
    std::vector<std::string> needles;
  } cases[] = {
      {MakeVariantSubject("PaddingWriter", kPaddingTable, CopyC3Driver{}),
       {"PaddingWriter class 1 [sse2]", "dst first differs",
        "row 0, 1 bytes past its pixels (padding)", "seed "}},
      {MakeVariantSubject("TailDropper", kTailTable, CopyC3Driver{}),
       {" pixel ", " byte 2 (byte ", "case: "}},
      {MakeVariantSubject("HeightUnchecked", kHeightTable, CopyC3Driver{}),
       {"status 0, reference -6", "(height 0)"}},
      {MakeVariantSubject("EarlyWriter", kEarlyWriteTable, CopyC3Driver{}),
       {"(null src)", "dst first differs at", "row 0 pixel 0 byte 0"}},
      {MakeVariantSubject("InPlaceBreaker", kInPlaceTable, CopyC3Driver{true}),
       {"(in place)", "src first differs at row 0 pixel 0 byte 0"}},
      {MakeVariantSubject("BorderWriter", kFilterBorderWriter, FilterDriver{0}),
       {"dst first differs at row 1 pixel 0 byte 0"}},
      {MakeVariantSubject("OffByTwo", kFilterOffByTwo, FilterDriver{1}),
       {"dst first differs at row 1 pixel 1"}},
  };
  for (const auto& c : cases) {
    const std::vector<std::string> failures = Failures(c.subject);
    ASSERT_EQ(failures.size(), 1u) << "the harness missed the broken body of " << c.subject.name;
    for (const std::string& needle : c.needles) {
      EXPECT_NE(failures[0].find(needle), std::string::npos)
          << "expected \"" << needle << "\" in:\n"
          << failures[0];
    }
  }
}

// The filter reads one pixel around its region, takes two sizes, and leaves scratch and work
// memory with contents of its own; an error within the tolerance is no failure.
TEST(VariantHarness, GivesFiltersWhatTheyArePromised) {
  EXPECT_EQ(Failures(MakeVariantSubject("Exact", kFilterExact, FilterDriver{0})),
            std::vector<std::string>{});
  EXPECT_EQ(Failures(MakeVariantSubject("OffByOne", kFilterOffByOne, FilterDriver{1})),
            std::vector<std::string>{});
}

TEST(VariantHarness, RunsABodySharedByClassesOnce) {
  const std::vector<std::string> failures =
      Failures(MakeVariantSubject("Shared", kSharedTable, CopyC3Driver{}), 3);
  ASSERT_EQ(failures.size(), 3u);
  for (const std::string& f : failures) {
    EXPECT_NE(f.find("Shared class 1 [sse2]+2+3+4+5+6:"), std::string::npos) << f;
  }
}

TEST(VariantHarnessDeathTest, AReadPastTheLastRowFaultsAndNamesTheCase) {
  const VariantSubject s = MakeVariantSubject("Overreader", kOverreadTable, MirrorC1Driver{});
  EXPECT_DEATH(CheckVariants(s, {.max_class = 1}),
               "fault in: Overreader class 1 .*case 1x2 axis 0");
}

}  // namespace
}  // namespace framekit::test

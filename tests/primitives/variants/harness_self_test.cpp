// The harness catches what it exists to catch: deliberately broken bodies in stand-in tables must
// fail with messages that locate the fault, and guard pages must stop stray accesses.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "primitives/copy/copy.h"
#include "primitives/core/checks.h"
#include "primitives/mirror/mirror.h"
#include "primitives/variants/harness.h"
#include "support/guarded_buffer.h"
#include "support/random_frame.h"

namespace framekit::test {
namespace {

using prim::CheckTwo;
using prim::Size;
using prim::Status;

Status RefCopy(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step, Size roi) {
  return prim::ref::ippiCopy_8u_C3R(src, src_step, dst, dst_step, roi);
}

// A correct body of its own, written differently from the reference.
Status CopyCorrectly(const uint8_t* src, int32_t src_step, uint8_t* dst, int32_t dst_step,
                     Size roi) {
  if (const Status s = CheckTwo(src, dst, roi); s != 0) return s;
  for (int32_t r = roi.height - 1; r >= 0; --r) {
    for (int32_t i = roi.width * 3 - 1; i >= 0; --i) {
      dst[static_cast<int64_t>(r) * dst_step + i] = src[static_cast<int64_t>(r) * src_step + i];
    }
  }
  return 0;
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

volatile uint8_t g_sink;

// Reads one byte past the last row's pixels.
Status MirrorReadsPastEnd(uint8_t* p, int32_t step, Size roi, int32_t axis) {
  const Status s = prim::ref::ippiMirror_8u_C1IR(p, step, roi, axis);
  if (s != 0) return s;
  g_sink = p[static_cast<int64_t>(roi.height - 1) * step + roi.width];
  return s;
}

// Class 1 gets the broken body; the rest keep the reference.
template <typename Fn>
constexpr prim::Table<Fn> WithClass1(Fn reference, Fn broken) {
  return {reference, broken, reference, reference, reference, reference, reference};
}

struct CopyC3Driver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 3, Access::kRead}, {"dst", 3, Access::kWrite}}};
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

constexpr prim::Table<prim::CopyFn> kPaddingTable =
    WithClass1<prim::CopyFn>(RefCopy, CopyWritesPadding);
constexpr prim::Table<prim::CopyFn> kTailTable = WithClass1<prim::CopyFn>(RefCopy, CopyDropsTail);
constexpr prim::Table<prim::CopyFn> kHeightTable =
    WithClass1<prim::CopyFn>(RefCopy, CopyMissesHeightCheck);
constexpr prim::Table<prim::CopyFn> kEarlyWriteTable =
    WithClass1<prim::CopyFn>(RefCopy, CopyWritesFirst);
constexpr prim::Table<prim::CopyFn> kSharedTable = {RefCopy,       CopyDropsTail, CopyDropsTail,
                                                    CopyDropsTail, CopyDropsTail, CopyDropsTail,
                                                    CopyDropsTail};
constexpr prim::Table<prim::CopyFn> kSameTable = WithClass1<prim::CopyFn>(RefCopy, CopyCorrectly);
constexpr prim::Table<prim::MirrorIRFn> kOverreadTable =
    WithClass1<prim::MirrorIRFn>(prim::ref::ippiMirror_8u_C1IR, MirrorReadsPastEnd);

// The failure messages of one harness run, which is kept from failing the test itself.
std::vector<std::string> FailuresOf(const VariantSubject& subject, int max_failures) {
  testing::TestPartResultArray results;
  {
    testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
    CheckVariants(subject, {.max_class = 6, .max_failures = max_failures});
  }
  std::vector<std::string> messages;
  for (int i = 0; i < results.size(); ++i)
    messages.emplace_back(results.GetTestPartResult(i).message());
  return messages;
}

void ExpectCaught(const VariantSubject& subject, const std::vector<std::string>& needles) {
  const std::vector<std::string> failures = FailuresOf(subject, 1);
  ASSERT_EQ(failures.size(), 1u) << "the harness missed the broken body of " << subject.name;
  for (const std::string& needle : needles) {
    EXPECT_NE(failures[0].find(needle), std::string::npos) << "expected \"" << needle << "\" in:\n"
                                                           << failures[0];
  }
}

TEST(VariantHarness, CatchesAWriteIntoRowPadding) {
  const VariantSubject s =
      MakeVariantSubject("PaddingWriter", kPaddingTable, &RefCopy, CopyC3Driver{});
  ExpectCaught(s, {"PaddingWriter class 1 [sse2]", "dst first differs",
                   "row 0, 1 bytes past its pixels (padding)", "seed "});
}

TEST(VariantHarness, CatchesAMissedTailByte) {
  const VariantSubject s = MakeVariantSubject("TailDropper", kTailTable, &RefCopy, CopyC3Driver{});
  ExpectCaught(s, {" pixel ", " byte 2 (byte ", "case: "});
}

TEST(VariantHarness, CatchesAStatusThatDiffersFromTheReference) {
  const VariantSubject s =
      MakeVariantSubject("HeightUnchecked", kHeightTable, &RefCopy, CopyC3Driver{});
  ExpectCaught(s, {"status 0, reference -6", "(height 0)"});
}

TEST(VariantHarness, CatchesAWriteOnInvalidArguments) {
  const VariantSubject s =
      MakeVariantSubject("EarlyWriter", kEarlyWriteTable, &RefCopy, CopyC3Driver{});
  ExpectCaught(s, {"(null src)", "dst first differs at", "row 0 pixel 0 byte 0"});
}

TEST(VariantHarness, RunsABodySharedByClassesOnce) {
  const VariantSubject s = MakeVariantSubject("Shared", kSharedTable, &RefCopy, CopyC3Driver{});
  const std::vector<std::string> failures = FailuresOf(s, 3);
  ASSERT_EQ(failures.size(), 3u);
  for (const std::string& f : failures) {
    EXPECT_NE(f.find("Shared class 1 [sse2]+2+3+4+5+6:"), std::string::npos) << f;
  }
}

TEST(VariantHarnessDeathTest, AReadPastTheLastRowFaultsAndNamesTheCase) {
  const VariantSubject s = MakeVariantSubject("Overreader", kOverreadTable,
                                              &prim::ref::ippiMirror_8u_C1IR, MirrorC1Driver{});
  EXPECT_DEATH(CheckVariants(s, {.max_class = 1}),
               "fault in: Overreader class 1 .*case 1x2 axis 0");
}

}  // namespace
}  // namespace framekit::test

// Processor detection over captured CPUID values, the class rules in order, and Init.
#include "primitives/core/cpu.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "framekit/framekit.h"
#include "primitives/core/dispatch.h"

namespace framekit::prim {
namespace {

// Read before main: nothing may have called Init yet.
const int32_t kIndexAtLoad = ClassIndex();
const uint64_t kEnabledAtLoad = EnabledFeatures();

// CPUID bits as the processor manuals number them: leaf 1 ECX and EDX, leaf 7 EBX.
constexpr uint32_t kSse3 = 1u << 0, kSsse3 = 1u << 9, kFma = 1u << 12, kSse41 = 1u << 19,
                   kMovbe = 1u << 22, kOsxsave = 1u << 27, kAvx = 1u << 28;
constexpr uint32_t kBaseEdx = (1u << 23) | (1u << 25) | (1u << 26);  // MMX, SSE, SSE2
constexpr uint32_t kAvx2Ebx = (1u << 3) | (1u << 5) | (1u << 8);     // BMI1, AVX2, BMI2
constexpr uint64_t kBase = kFeatMmx | kFeatSse | kFeatSse2;

struct Processor {
  const char* what;
  uint32_t ecx1;
  uint32_t ebx7 = 0;
  uint64_t xcr0 = 0x7;
  uint32_t max_leaf = 0xD;
  const char* vendor = "GenuineIntel";
};

CpuSnapshot Capture(const Processor& p) {
  CpuSnapshot s;
  s.available = true;
  s.leaf0.eax = p.max_leaf;
  std::memcpy(&s.leaf0.ebx, p.vendor, 4);
  std::memcpy(&s.leaf0.edx, p.vendor + 4, 4);
  std::memcpy(&s.leaf0.ecx, p.vendor + 8, 4);
  s.leaf1 = {0x000906EA, 0, p.ecx1, kBaseEdx};
  s.leaf7.ebx = p.ebx7;
  s.ext0.eax = 0x80000008u;
  s.xcr0 = p.xcr0;
  return s;
}

TEST(CpuInit, WholeProcessors) {
  constexpr uint32_t kAvxCpu = kSse3 | kSsse3 | kSse41 | kMovbe | kOsxsave | kAvx;
  constexpr uint64_t kSse41Set = kBase | kFeatSse3 | kFeatSsse3 | kFeatMovbe | kFeatSse41;
  constexpr uint64_t kAvxSet = kSse41Set | kFeatAvx | kFeatAvxOs;
  const struct {
    Processor cpu;
    int cls;
    uint64_t enabled;
    Status status;
  } cases[] = {
      {{"SSE3 only", kSse3}, 1, kBase | kFeatSse3, 0},
      {{"SSSE3", kSse3 | kSsse3}, 2, kBase | kFeatSse3 | kFeatSsse3, 0},
      {{"SSSE3 and MOVBE", kSse3 | kSsse3 | kMovbe}, 3, kSse41Set & ~kFeatSse41, 0},
      {{"MOVBE without SSSE3 falls to the SSE3 rule", kSse3 | kMovbe}, 1, kBase | kFeatSse3, 0},
      {{"SSE4.1 alone", kSse41}, 4, kBase | kFeatSse41, 0},
      {{"AVX", kAvxCpu}, 5, kAvxSet & kClassMask[5], 0},
      {{"AVX, registers not saved by the system", kAvxCpu | kFma, kAvx2Ebx, 0x3},
       4,
       kSse41Set & kClassMask[4],
       0},
      {{"AVX2 group", kAvxCpu | kFma, kAvx2Ebx}, 6, (kAvxSet | kFeatAvx2Group) & kClassMask[6], 0},
      {{"AVX2 without BMI2 is no AVX2 group", kAvxCpu | kFma, (1u << 3) | (1u << 5)},
       5,
       kAvxSet & kClassMask[5],
       0},
      {{"leaf 7 beyond the highest leaf is not read", kAvxCpu | kFma, kAvx2Ebx, 0x7, 6},
       5,
       kAvxSet & kClassMask[5],
       0},
      {{"another vendor keeps its class", kAvxCpu | kFma, kAvx2Ebx, 0x7, 0xD, "AuthenticAMD"},
       6,
       (kAvxSet | kFeatAvx2Group) & kClassMask[6],
       ippStsNonIntelCpu},
      {{"nothing beyond SSE2", 0}, 0, kBase, 0},
  };
  for (const auto& c : cases) {
    const InitOutcome got = DecideInit(Capture(c.cpu));
    EXPECT_EQ(got.processor_class, c.cls) << c.cpu.what;
    EXPECT_EQ(got.enabled_features, c.enabled) << c.cpu.what;
    EXPECT_EQ(got.status, c.status) << c.cpu.what;
  }
  const InitOutcome none = DecideInit(CpuSnapshot{});  // no identification instruction
  EXPECT_EQ(none.processor_class, 0);
  EXPECT_EQ(none.enabled_features, 0u);
  EXPECT_EQ(none.status, ippStsNoOperation);
}

// The bits no class rule looks at, and the leaves read only when they exist.
TEST(CpuFeatures, ConditionalBits) {
  CpuSnapshot s =
      Capture({"", 1u << 25 | 1u << 1 | 1u << 30 | 1u << 29, 1u << 19 | 1u << 18 | 1u << 29});
  s.ext1.ecx = 1u << 8;
  EXPECT_EQ(BuildFeatureMask(s), kBase | kFeatAes | kFeatPclmul | kFeatRdrand | kFeatF16c |
                                     kFeatAdx | kFeatRdseed | kFeatSha | kFeatPrefetchw);
  s.ext0.eax = 0x80000000u;  // no extended leaf 1
  s.leaf0.eax = 6;           // no leaf 7
  EXPECT_EQ(BuildFeatureMask(s), kBase | kFeatAes | kFeatPclmul | kFeatRdrand | kFeatF16c);
  CpuSnapshot knc = Capture({"", 0});
  knc.leaf1.eax = 0xB10;
  knc.leaf20000001.edx = 1u << 1;
  EXPECT_EQ(BuildFeatureMask(knc), kBase | kFeatKnc | kFeatFamilyB1);
  knc.leaf1.eax = 0xB20;
  EXPECT_EQ(BuildFeatureMask(knc), kBase | kFeatKnc);
}

TEST(Dispatch, IndexStaysZeroUntilInit) {
  EXPECT_EQ(kIndexAtLoad, 0);
  EXPECT_EQ(kEnabledAtLoad, 0u);
}

TEST(Dispatch, InitStoresTheDetectedClass) {
  const int32_t before = ClassIndex();
  const int32_t status = Init();
  EXPECT_EQ(status, VendorStatus(ProcessorSnapshot()));
  EXPECT_EQ(ClassIndex(), DetectedClass());
  EXPECT_EQ(EnabledFeatures(), ProcessorFeatures() & kClassMask[DetectedClass()]);
  EXPECT_EQ(KXDInit(), status);
  EXPECT_EQ(ClassIndex(), DetectedClass()) << "a second Init stores the same class";
#if defined(__x86_64__) || defined(_M_X64)
  EXPECT_GE(DetectedClass(), 1) << "every x86-64 processor has SSE3 or better here";
#endif
  // Under an emulated processor (the test command runs the suite under qemu with CPU models of
  // known classes) Init must choose the class the model stands for.
  if (const char* expected = std::getenv("FRAMEKIT_EXPECT_CLASS")) {
    EXPECT_EQ(ClassIndex(), std::atoi(expected));
  }
  SetClassIndexForTesting(before);
}

Status BodyRef(int) { return 0; }
Status BodySse2(int) { return 1; }
Status BodySsse3(int) { return 2; }
Status BodyAvx2(int) { return 6; }
using ProbeFn = Status (*)(int);

TEST(Dispatch, BuilderGivesEachClassTheBestLevelItGuarantees) {
  constexpr Table<ProbeFn> sparse = BuildTable<ProbeFn>({.ref = BodyRef, .avx2 = BodyAvx2});
  constexpr Table<ProbeFn> dense =
      BuildTable<ProbeFn>({.ref = BodyRef, .sse2 = BodySse2, .ssse3 = BodySsse3});
  const Status want_sparse[kClassCount] = {0, 0, 0, 0, 0, 0, 6};
  const Status want_dense[kClassCount] = {0, 1, 2, 2, 2, 2, 2};
  for (size_t c = 0; c < kClassCount; ++c) {
    EXPECT_EQ(sparse[c](0), want_sparse[c]) << c;
    EXPECT_EQ(dense[c](0), want_dense[c]) << c;
  }
}

}  // namespace
}  // namespace framekit::prim

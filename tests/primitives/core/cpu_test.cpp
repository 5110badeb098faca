// Processor detection over captured CPUID values, class rules in order, and Init.
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

CpuSnapshot Vendor(const char* vendor, uint32_t max_leaf) {
  CpuSnapshot s;
  s.available = true;
  s.leaf0.eax = max_leaf;
  std::memcpy(&s.leaf0.ebx, vendor + 0, 4);
  std::memcpy(&s.leaf0.edx, vendor + 4, 4);
  std::memcpy(&s.leaf0.ecx, vendor + 8, 4);
  s.ext0.eax = 0x80000008u;
  return s;
}

// A processor with the given leaf-1 ECX/EDX, leaf-7 EBX and XCR0.
CpuSnapshot Cpu(uint32_t ecx1, uint32_t edx1 = (1u << 23) | (1u << 25) | (1u << 26),
                uint32_t ebx7 = 0, uint64_t xcr0 = 0x7, uint32_t max_leaf = 0xD) {
  CpuSnapshot s = Vendor("GenuineIntel", max_leaf);
  s.leaf1.eax = 0x000906EA;
  s.leaf1.ecx = ecx1;
  s.leaf1.edx = edx1;
  s.leaf7.ebx = ebx7;
  s.xcr0 = xcr0;
  return s;
}

constexpr uint32_t kSse3 = 1u << 0, kSsse3 = 1u << 9, kFma = 1u << 12, kSse41 = 1u << 19,
                   kSse42 = 1u << 20, kMovbe = 1u << 22, kOsxsave = 1u << 27, kAvx = 1u << 28;
constexpr uint32_t kBmi1 = 1u << 3, kAvx2 = 1u << 5, kBmi2 = 1u << 8;
constexpr uint32_t kAvx2Group7 = kBmi1 | kAvx2 | kBmi2;
constexpr uint32_t kAvxCpu = kSse3 | kSsse3 | kSse41 | kSse42 | kMovbe | kOsxsave | kAvx;

int ClassOf(const CpuSnapshot& s) { return DecideInit(s).processor_class; }

TEST(CpuFeatures, EachBitFromItsRegister) {
  struct Case {
    uint32_t ecx1, edx1, ebx7, ext1_ecx;
    uint64_t bits;
  };
  const Case cases[] = {
      {0, 1u << 23, 0, 0, kFeatMmx},
      {0, 1u << 25, 0, 0, kFeatSse},
      {0, 1u << 26, 0, 0, kFeatSse2},
      {kSse3, 0, 0, 0, kFeatSse3},
      {kSsse3, 0, 0, 0, kFeatSsse3},
      {kMovbe, 0, 0, 0, kFeatMovbe},
      {kSse41, 0, 0, 0, kFeatSse41},
      {kSse42, 0, 0, 0, kFeatSse42},
      {kAvx, 0, 0, 0, kFeatAvx},
      {kAvx | kOsxsave, 0, 0, 0, kFeatAvx | kFeatAvxOs},
      {1u << 25, 0, 0, 0, kFeatAes},
      {1u << 1, 0, 0, 0, kFeatPclmul},
      {1u << 30, 0, 0, 0, kFeatRdrand},
      {1u << 29, 0, 0, 0, kFeatF16c},
      {kFma, 0, kAvx2Group7, 0, kFeatAvx2Group},
      {0, 0, 1u << 19, 0, kFeatAdx},
      {0, 0, 1u << 18, 0, kFeatRdseed},
      {0, 0, 0, 1u << 8, kFeatPrefetchw},
      {0, 0, 1u << 29, 0, kFeatSha},
  };
  for (const Case& c : cases) {
    CpuSnapshot s = Cpu(c.ecx1, c.edx1, c.ebx7, 0x7);
    s.ext1.ecx = c.ext1_ecx;
    EXPECT_EQ(BuildFeatureMask(s), c.bits) << std::hex << c.ecx1 << " " << c.edx1 << " " << c.ebx7;
  }
}

TEST(CpuFeatures, GroupedAndConditionalBits) {
  // The AVX2 group needs all four of FMA, AVX2, BMI1 and BMI2.
  EXPECT_EQ(BuildFeatureMask(Cpu(0, 0, kAvx2Group7)), 0u);
  EXPECT_EQ(BuildFeatureMask(Cpu(kFma, 0, kAvx2 | kBmi1)), 0u);
  // Leaf 7 is ignored when the highest standard leaf is below 7.
  EXPECT_EQ(BuildFeatureMask(Cpu(kFma, 0, kAvx2Group7 | (1u << 19), 0x7, 6)), 0u);
  // OS support: OSXSAVE and AVX and XCR0 bits 1 and 2.
  EXPECT_EQ(BuildFeatureMask(Cpu(kAvx | kOsxsave, 0, 0, 0x3)), kFeatAvx);
  EXPECT_EQ(BuildFeatureMask(Cpu(kOsxsave, 0, 0, 0x7)), 0u);
  // The extended leaf is read only when it exists.
  CpuSnapshot no_ext = Cpu(0, 0);
  no_ext.ext0.eax = 0x80000000u;
  no_ext.ext1.ecx = 1u << 8;
  EXPECT_EQ(BuildFeatureMask(no_ext), 0u);
  // Family 0xB parts.
  CpuSnapshot knc = Cpu(0, 0);
  knc.leaf1.eax = 0xB10;
  knc.leaf20000001.edx = 1u << 1;
  EXPECT_EQ(BuildFeatureMask(knc), kFeatKnc | kFeatFamilyB1);
  knc.leaf1.eax = 0xB20;
  EXPECT_EQ(BuildFeatureMask(knc), kFeatKnc);
  knc.leaf20000001.edx = 0;
  EXPECT_EQ(BuildFeatureMask(knc), 0u);
  EXPECT_EQ(BuildFeatureMask(CpuSnapshot{}), 0u);
}

TEST(CpuClass, RulesInOrder) {
  EXPECT_EQ(ClassOf(Cpu(kAvxCpu | kFma, 0, kAvx2Group7)), 6);
  EXPECT_EQ(ClassOf(Cpu(kAvxCpu)), 5);
  EXPECT_EQ(ClassOf(Cpu(kSse3 | kSsse3 | kSse41)), 4);
  EXPECT_EQ(ClassOf(Cpu(kSse3 | kSsse3 | kMovbe)), 3);
  EXPECT_EQ(ClassOf(Cpu(kSse3 | kSsse3)), 2);
  EXPECT_EQ(ClassOf(Cpu(kSse3)), 1);
  EXPECT_EQ(ClassOf(Cpu(0)), 0);
}

TEST(CpuClass, OddProcessors) {
  // AVX without operating-system support never gets class 5 or 6.
  EXPECT_EQ(ClassOf(Cpu(kAvxCpu | kFma, 0, kAvx2Group7, 0x3)), 4);
  EXPECT_EQ(ClassOf(Cpu((kAvxCpu | kFma) & ~kOsxsave, 0, kAvx2Group7, 0x7)), 4);
  // MOVBE without SSSE3 falls through to the SSE3 rule.
  EXPECT_EQ(ClassOf(Cpu(kSse3 | kMovbe)), 1);
  EXPECT_EQ(ClassOf(Cpu(kMovbe)), 0);
  // Leaf 7 absent: the AVX2 group is never seen.
  EXPECT_EQ(ClassOf(Cpu(kAvxCpu | kFma, 0, kAvx2Group7, 0x7, 6)), 5);
  // SSE4.1 alone is enough for class 4, whatever SSSE3 says.
  EXPECT_EQ(ClassOf(Cpu(kSse41)), 4);
}

TEST(CpuInit, EnabledMaskAndVendorStatus) {
  const CpuSnapshot avx2 =
      Cpu(kAvxCpu | kFma | (1u << 25), 0x07800000u | (1u << 26), kAvx2Group7 | (1u << 19));
  const InitOutcome intel = DecideInit(avx2);
  EXPECT_EQ(intel.processor_class, 6);
  EXPECT_EQ(intel.enabled_features, BuildFeatureMask(avx2) & 0xFEFFFu);
  EXPECT_EQ(intel.status, 0);

  CpuSnapshot amd = avx2;
  std::memcpy(&amd.leaf0.ebx, "Auth", 4);
  std::memcpy(&amd.leaf0.edx, "enti", 4);
  std::memcpy(&amd.leaf0.ecx, "cAMD", 4);
  const InitOutcome other = DecideInit(amd);
  EXPECT_EQ(other.processor_class, 6) << "the class is in force for other vendors too";
  EXPECT_EQ(other.status, ippStsNonIntelCpu);

  const InitOutcome sse3 = DecideInit(Cpu(kSse3 | kSsse3 | kMovbe));
  EXPECT_EQ(sse3.enabled_features, (kFeatSse3 | kFeatSsse3 | kFeatMovbe | 0x7u) & 0x3Fu);

  const InitOutcome none = DecideInit(CpuSnapshot{});
  EXPECT_EQ(none.processor_class, 0);
  EXPECT_EQ(none.enabled_features, 0u);
  EXPECT_EQ(none.status, ippStsNoOperation);
}

TEST(CpuInit, ClassMasks) {
  const uint64_t expected[7] = {0x7, 0xF, 0x1F, 0x3F, 0x80CDF, 0x86FDF, 0xFEFFF};
  for (int c = 0; c < 7; ++c) EXPECT_EQ(kClassMask[c], expected[c]) << c;
}

TEST(Dispatch, IndexStaysZeroUntilInit) {
  EXPECT_EQ(kIndexAtLoad, 0);
  EXPECT_EQ(kEnabledAtLoad, 0u);
}

TEST(Dispatch, InitStoresTheDetectedClass) {
  const int32_t before = ClassIndex();
  const int32_t status = Init();
  const CpuSnapshot& cpu = ProcessorSnapshot();
  EXPECT_EQ(status, VendorStatus(cpu));
  EXPECT_EQ(ClassIndex(), DetectedClass());
  EXPECT_EQ(EnabledFeatures(), ProcessorFeatures() & kClassMask[DetectedClass()]);
  EXPECT_EQ(KXDInit(), status);
  EXPECT_EQ(ClassIndex(), DetectedClass()) << "a second Init stores the same class";
  EXPECT_EQ(ProcessorFeatures(), BuildFeatureMask(CaptureCpu())) << "the kept mask is stable";
#if defined(__x86_64__) || defined(_M_X64)
  EXPECT_GE(DetectedClass(), 1) << "every x86-64 processor has SSE3 or better here";
#else
  EXPECT_EQ(DetectedClass(), 0);
#endif
  SetClassIndexForTesting(before);
}

TEST(Dispatch, TablesFollowTheClassLevels) {
  // Tables come out of a compile-time builder: the first entry is always the reference and no
  // class gets a level above what it guarantees.
  int count = 0;
  const TableInfo* tables = RegisteredTables(&count);
  ASSERT_GT(count, 0);
  for (int i = 0; i < count; ++i) {
    EXPECT_NE(tables[i].entries[0], nullptr) << tables[i].name;
    for (int c = 0; c < 7; ++c) EXPECT_NE(tables[i].entries[c], nullptr) << tables[i].name;
    EXPECT_EQ(tables[i].entries[2], tables[i].entries[3]) << tables[i].name << ": classes 2 and 3";
  }
}

}  // namespace
}  // namespace framekit::prim

namespace framekit::prim {
namespace {

Status BodyRef(int) { return 0; }
Status BodySse2(int) { return 1; }
Status BodySsse3(int) { return 2; }
Status BodyAvx2(int) { return 6; }
using ProbeFn = Status (*)(int);

TEST(Dispatch, BuilderGivesEachClassTheBestLevelItGuarantees) {
  constexpr Table<ProbeFn> sparse = BuildTable<ProbeFn>({.ref = BodyRef, .avx2 = BodyAvx2});
  const Status want_sparse[7] = {0, 0, 0, 0, 0, 0, 6};
  constexpr Table<ProbeFn> dense =
      BuildTable<ProbeFn>({.ref = BodyRef, .sse2 = BodySse2, .ssse3 = BodySsse3});
  const Status want_dense[7] = {0, 1, 2, 2, 2, 2, 2};
  for (size_t c = 0; c < 7; ++c) {
    EXPECT_EQ(sparse[c](0), want_sparse[c]) << c;
    EXPECT_EQ(dense[c](0), want_dense[c]) << c;
  }
}

}  // namespace
}  // namespace framekit::prim

namespace framekit::prim {
namespace {

// Under an emulated processor (the test command runs the suite under qemu with CPU models of
// known classes) Init must choose the class the model stands for.
TEST(Dispatch, InitChoosesTheExpectedClassUnderEmulation) {
  const char* expected = std::getenv("FRAMEKIT_EXPECT_CLASS");
  if (expected == nullptr) return;
  const int32_t before = ClassIndex();
  Init();
  EXPECT_EQ(ClassIndex(), std::atoi(expected));
  SetClassIndexForTesting(before);
}

}  // namespace
}  // namespace framekit::prim

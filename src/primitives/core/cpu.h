// Processor identification and processor classes.
//
// Detection is split into capture (running CPUID/XGETBV) and pure functions over the captured
// values, so tests can feed any processor, real or invented, through the same rules.
#pragma once

#include <cstdint>

#include "primitives/core/types.h"

namespace framekit::prim {

struct CpuidRegs {
  uint32_t eax = 0, ebx = 0, ecx = 0, edx = 0;
};

// Everything the feature mask and Init look at, read once from the processor.
struct CpuSnapshot {
  bool available = false;  // false when there is no identification instruction
  CpuidRegs leaf0;         // highest standard leaf, vendor string in EBX, EDX, ECX
  CpuidRegs leaf1;
  CpuidRegs leaf7;         // valid only when leaf0.eax >= 7
  CpuidRegs ext0;          // 0x80000000: highest extended leaf
  CpuidRegs ext1;          // 0x80000001: valid only when ext0.eax >= 0x80000001
  CpuidRegs leaf20000001;  // read only for family 0xB parts
  uint64_t xcr0 = 0;       // read only when OSXSAVE is set
};

// Feature-mask bits.
inline constexpr uint64_t kFeatMmx = 1u << 0;
inline constexpr uint64_t kFeatSse = 1u << 1;
inline constexpr uint64_t kFeatSse2 = 1u << 2;
inline constexpr uint64_t kFeatSse3 = 1u << 3;
inline constexpr uint64_t kFeatSsse3 = 1u << 4;
inline constexpr uint64_t kFeatMovbe = 1u << 5;
inline constexpr uint64_t kFeatSse41 = 1u << 6;
inline constexpr uint64_t kFeatSse42 = 1u << 7;
inline constexpr uint64_t kFeatAvx = 1u << 8;
inline constexpr uint64_t kFeatAvxOs = 1u << 9;  // AVX state saved by the operating system
inline constexpr uint64_t kFeatAes = 1u << 10;
inline constexpr uint64_t kFeatPclmul = 1u << 11;
inline constexpr uint64_t kFeatKnc = 1u << 12;
inline constexpr uint64_t kFeatRdrand = 1u << 13;
inline constexpr uint64_t kFeatF16c = 1u << 14;
inline constexpr uint64_t kFeatAvx2Group = 1u << 15;  // FMA, AVX2, BMI1 and BMI2 together
inline constexpr uint64_t kFeatAdx = 1u << 16;
inline constexpr uint64_t kFeatRdseed = 1u << 17;
inline constexpr uint64_t kFeatPrefetchw = 1u << 18;
inline constexpr uint64_t kFeatSha = 1u << 19;
inline constexpr uint64_t kFeatFamilyB1 = 1u << 31;

// The mask ANDed into the enabled-feature mask for each class.
inline constexpr uint64_t kClassMask[kClassCount] = {0x7,     0xF,     0x1F,   0x3F,
                                                     0x80CDF, 0x86FDF, 0xFEFFF};

// Pure: the feature mask of a captured processor (0 when nothing could be captured).
uint64_t BuildFeatureMask(const CpuSnapshot& cpu);

// Pure: the class chosen for a feature mask, rule by rule in order.
int ChooseClass(uint64_t features, bool query_available);

// Pure: the vendor test of Init. 0 for "GenuineIntel", 20 for any other vendor, 36 when the
// processor could not be identified at all.
Status VendorStatus(const CpuSnapshot& cpu);

struct InitOutcome {
  int processor_class;
  uint64_t enabled_features;
  Status status;
};

// Pure: everything Init decides for a processor.
InitOutcome DecideInit(const CpuSnapshot& cpu);

// Reads the real processor (all zeros and available = false on other architectures).
CpuSnapshot CaptureCpu();

// The captured processor, read on the first call and kept.
const CpuSnapshot& ProcessorSnapshot();

// The processor's feature mask, computed on the first call and kept.
uint64_t ProcessorFeatures();

}  // namespace framekit::prim

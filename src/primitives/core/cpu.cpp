#include "primitives/core/cpu.h"

#include <cstring>

#if defined(__x86_64__) || defined(_M_X64)
#include <cpuid.h>
#define FRAMEKIT_HAVE_CPUID 1
#else
#define FRAMEKIT_HAVE_CPUID 0
#endif

namespace framekit::prim {
namespace {

constexpr bool Bit(uint32_t reg, int bit) { return ((reg >> bit) & 1u) != 0; }

#if FRAMEKIT_HAVE_CPUID
CpuidRegs Cpuid(uint32_t leaf) {
  CpuidRegs r;
  __cpuid_count(leaf, 0, r.eax, r.ebx, r.ecx, r.edx);
  return r;
}

uint64_t ReadXcr0() {
  uint32_t lo = 0, hi = 0;
  // xgetbv with ecx = 0; spelled out so this file needs no -mxsave.
  __asm__ volatile(".byte 0x0f, 0x01, 0xd0" : "=a"(lo), "=d"(hi) : "c"(0));
  return (static_cast<uint64_t>(hi) << 32) | lo;
}
#endif

}  // namespace

uint64_t BuildFeatureMask(const CpuSnapshot& cpu) {
  if (!cpu.available) return 0;
  const uint32_t ecx = cpu.leaf1.ecx, edx = cpu.leaf1.edx, eax = cpu.leaf1.eax;
  uint64_t m = 0;
  auto set = [&m](uint64_t feature, bool on) {
    if (on) m |= feature;
  };
  set(kFeatMmx, Bit(edx, 23));
  set(kFeatSse, Bit(edx, 25));
  set(kFeatSse2, Bit(edx, 26));
  set(kFeatSse3, Bit(ecx, 0));
  set(kFeatSsse3, Bit(ecx, 9));
  set(kFeatMovbe, Bit(ecx, 22));
  set(kFeatSse41, Bit(ecx, 19));
  set(kFeatSse42, Bit(ecx, 20));
  set(kFeatAvx, Bit(ecx, 28));
  set(kFeatAvxOs, Bit(ecx, 27) && Bit(ecx, 28) && (cpu.xcr0 & 0x6) == 0x6);
  set(kFeatAes, Bit(ecx, 25));
  set(kFeatPclmul, Bit(ecx, 1));
  set(kFeatKnc, (eax & 0xF00) == 0xB00 && Bit(cpu.leaf20000001.edx, 1));
  set(kFeatRdrand, Bit(ecx, 30));
  set(kFeatF16c, Bit(ecx, 29));
  if (cpu.leaf0.eax >= 7) {
    const uint32_t ebx7 = cpu.leaf7.ebx;
    set(kFeatAvx2Group, Bit(ecx, 12) && Bit(ebx7, 5) && Bit(ebx7, 3) && Bit(ebx7, 8));
    set(kFeatAdx, Bit(ebx7, 19));
    set(kFeatRdseed, Bit(ebx7, 18));
    set(kFeatSha, Bit(ebx7, 29));
  }
  if (cpu.ext0.eax >= 0x80000001u) set(kFeatPrefetchw, Bit(cpu.ext1.ecx, 8));
  set(kFeatFamilyB1, (eax & 0xFF0) == 0xB10);
  return m;
}

int ChooseClass(uint64_t f, bool query_available) {
  if (!query_available) return 0;
  const bool avx_usable = (f & kFeatAvx) && (f & kFeatAvxOs);
  if (avx_usable && (f & kFeatAvx2Group)) return 6;
  if (avx_usable) return 5;
  if (f & kFeatSse41) return 4;
  if ((f & kFeatMovbe) && (f & kFeatSsse3)) return 3;
  if (f & kFeatSsse3) return 2;  // MOVBE is clear here: the rule above took the other case
  if (f & kFeatSse3) return 1;
  return 0;
}

Status VendorStatus(const CpuSnapshot& cpu) {
  if (!cpu.available) return ippStsNoOperation;
  char vendor[12];
  std::memcpy(vendor + 0, &cpu.leaf0.ebx, 4);
  std::memcpy(vendor + 4, &cpu.leaf0.edx, 4);
  std::memcpy(vendor + 8, &cpu.leaf0.ecx, 4);
  return std::memcmp(vendor, "GenuineIntel", 12) == 0 ? ippStsNoErr : ippStsNonIntelCpu;
}

InitOutcome DecideInit(const CpuSnapshot& cpu) {
  const uint64_t features = BuildFeatureMask(cpu);
  const int cls = ChooseClass(features, cpu.available);
  return {cls, features & kClassMask[cls], VendorStatus(cpu)};
}

CpuSnapshot CaptureCpu() {
  CpuSnapshot s;
#if FRAMEKIT_HAVE_CPUID
  s.available = true;
  s.leaf0 = Cpuid(0);
  if (s.leaf0.eax >= 1) s.leaf1 = Cpuid(1);
  if (s.leaf0.eax >= 7) s.leaf7 = Cpuid(7);
  s.ext0 = Cpuid(0x80000000u);
  if (s.ext0.eax >= 0x80000001u) s.ext1 = Cpuid(0x80000001u);
  if ((s.leaf1.eax & 0xF00) == 0xB00) s.leaf20000001 = Cpuid(0x20000001u);
  if (Bit(s.leaf1.ecx, 27)) s.xcr0 = ReadXcr0();  // xgetbv faults unless OSXSAVE is set
#endif
  return s;
}

const CpuSnapshot& ProcessorSnapshot() {
  static const CpuSnapshot kSnapshot = CaptureCpu();
  return kSnapshot;
}

uint64_t ProcessorFeatures() {
  static const uint64_t kFeatures = BuildFeatureMask(ProcessorSnapshot());
  return kFeatures;
}

}  // namespace framekit::prim

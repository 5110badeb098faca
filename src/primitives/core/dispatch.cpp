#include "primitives/core/dispatch.h"

#include <vector>

#include "primitives/core/cpu.h"

namespace framekit::prim {

std::atomic<int32_t> g_class_index{0};
std::atomic<uint64_t> g_enabled_features{0};

int32_t InitDispatch() {
  const CpuSnapshot& cpu = ProcessorSnapshot();
  const uint64_t features = ProcessorFeatures();
  const int cls = ChooseClass(features, cpu.available);
  g_enabled_features.store(features & kClassMask[cls], std::memory_order_relaxed);
  g_class_index.store(cls, std::memory_order_relaxed);
  return VendorStatus(cpu);
}

int DetectedClass() { return ChooseClass(ProcessorFeatures(), ProcessorSnapshot().available); }

void SetClassIndexForTesting(int32_t cls) {
  g_class_index.store(cls, std::memory_order_relaxed);
  g_enabled_features.store(ProcessorFeatures() & kClassMask[cls], std::memory_order_relaxed);
}

namespace {
std::vector<TableInfo>& Registry() {
  static std::vector<TableInfo> tables;
  return tables;
}
}  // namespace

void TableRegistrar::Add(const TableInfo& info) { Registry().push_back(info); }

const TableInfo* RegisteredTables(int* count) {
  *count = static_cast<int>(Registry().size());
  return Registry().data();
}

}  // namespace framekit::prim

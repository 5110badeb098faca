// Primitive memory: step, size, overflow, alignment and block-address rules, through the hooks.
#include "primitives/core/memory.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "framekit/framekit.h"

namespace framekit::prim {
namespace {

struct HookLog {
  std::vector<size_t> sizes;
  std::vector<void*> blocks;
  std::vector<void*> released;
  bool fail = false;
};
HookLog* g_log = nullptr;

void* CountingAllocate(size_t size) {
  g_log->sizes.push_back(size);
  void* p = g_log->fail ? nullptr : std::malloc(size);
  if (p) g_log->blocks.push_back(p);
  return p;
}
void CountingRelease(void* p) {
  g_log->released.push_back(p);
  std::free(p);
}

class PrimitiveMemory : public ::testing::Test {
 protected:
  void SetUp() override {
    g_log = &log_;
    SetAllocationHooks(&CountingAllocate, &CountingRelease);
  }
  void TearDown() override {
    SetAllocationHooks(nullptr, nullptr);
    g_log = nullptr;
  }
  HookLog log_;
};

// The step is 3 * width rounded up to 64; the block holds three such rows and 72 bytes more,
// its address sits in the 8 bytes before the 64-aligned image, and that block is what is freed.
TEST_F(PrimitiveMemory, StepAlignmentAndBlock) {
  const struct {
    int32_t width, step;
  } cases[] = {{1, 64}, {21, 64}, {22, 128}, {640, 1920}, {1918, 5760}, {1920, 5760}, {43, 192}};
  for (const auto& c : cases) {
    log_ = {};
    int32_t step = -1;
    uint8_t* p = zqippiMalloc_8u_C3(c.width, 3, &step);
    ASSERT_NE(p, nullptr) << c.width;
    EXPECT_EQ(step, c.step) << c.width;
    ASSERT_EQ(log_.sizes.size(), 1u);
    EXPECT_EQ(log_.sizes[0], static_cast<size_t>(c.step) * 3 + 72) << c.width;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % 64, 0u);
    void* block = nullptr;
    std::memcpy(&block, p - 8, sizeof block);
    EXPECT_EQ(block, log_.blocks[0]);
    EXPECT_GE(p - static_cast<uint8_t*>(block), 8);
    EXPECT_LE(p + 3 * c.step, static_cast<uint8_t*>(block) + log_.sizes[0]);
    std::memset(p, 0xAB, static_cast<size_t>(3 * c.step));  // every row is usable
    zqippiFree(p);
    EXPECT_EQ(log_.released, std::vector<void*>{block}) << c.width;
  }
}

TEST_F(PrimitiveMemory, RejectedArguments) {
  int32_t step = 77;
  EXPECT_EQ(zqippiMalloc_8u_C3(0, 5, &step), nullptr);
  EXPECT_EQ(step, 0);
  step = 77;
  EXPECT_EQ(zqippiMalloc_8u_C3(5, -1, &step), nullptr);
  EXPECT_EQ(step, 0);
  EXPECT_EQ(zqippiMalloc_8u_C3(5, 5, nullptr), nullptr);
  EXPECT_TRUE(log_.sizes.empty()) << "nothing is allocated for rejected arguments";
  zqippiFree(nullptr);
  EXPECT_TRUE(log_.released.empty());
}

TEST_F(PrimitiveMemory, SizeIsA32BitProduct) {
  int32_t step = 0;
  // 3 * 22369621 rounds up to 0x4000000; times 64 wraps to exactly 0.
  EXPECT_EQ(zqippiMalloc_8u_C3(22369621, 64, &step), nullptr);
  EXPECT_EQ(step, 0x4000000);
  // 3 * 22369622 rounds up to 0x4000040; times 32 wraps negative.
  EXPECT_EQ(zqippiMalloc_8u_C3(22369622, 32, &step), nullptr);
  EXPECT_EQ(step, 0x4000040);
  // The step keeps only its low 32 bits: 3 * INT32_MAX rounds up to 0x180000000.
  EXPECT_EQ(zqippiMalloc_8u_C3(INT32_MAX, 1, &step), nullptr);
  EXPECT_EQ(step, INT32_MIN);
  EXPECT_TRUE(log_.sizes.empty());
  // Times 64 wraps to a small positive size, and that is what is allocated.
  uint8_t* p = zqippiMalloc_8u_C3(22369622, 64, &step);
  ASSERT_NE(p, nullptr);
  ASSERT_EQ(log_.sizes.size(), 1u);
  EXPECT_EQ(log_.sizes[0], 0x1000u + 72u);
  zqippiFree(p);
}

TEST_F(PrimitiveMemory, AllocationFailureGivesNull) {
  log_.fail = true;
  int32_t step = 0;
  EXPECT_EQ(zqippiMalloc_8u_C3(10, 10, &step), nullptr);
  EXPECT_EQ(step, 64);
  EXPECT_EQ(log_.sizes.size(), 1u);
}

TEST(PrimitiveCopyExport, CopiesRowsAndReportsLikeThePrimitive) {
  // 2 x 2 pixels between steps 7 and 9: only 6 bytes a row move.
  uint8_t src[14], dst[18];
  for (int i = 0; i < 14; ++i) src[i] = static_cast<uint8_t>(i + 1);
  std::memset(dst, 0xEE, sizeof dst);
  EXPECT_EQ(zqippiCopy_8u_C3R(src, 7, dst, 9, 2, 2), 0);
  const uint8_t expected[18] = {1, 2, 3,  4,  5,  6,  0xEE, 0xEE, 0xEE,
                                8, 9, 10, 11, 12, 13, 0xEE, 0xEE, 0xEE};
  EXPECT_EQ(std::memcmp(dst, expected, sizeof dst), 0);
  EXPECT_EQ(zqippiCopy_8u_C3R(nullptr, 7, dst, 9, 2, 2), -8);
  EXPECT_EQ(zqippiCopy_8u_C3R(src, 7, nullptr, 9, 2, 2), -8);
  EXPECT_EQ(zqippiCopy_8u_C3R(src, 7, dst, 9, 0, 2), -6);
  EXPECT_EQ(zqippiCopy_8u_C3R(src, 7, dst, 9, 2, -1), -6);
  EXPECT_EQ(std::memcmp(dst, expected, sizeof dst), 0);
}

}  // namespace
}  // namespace framekit::prim

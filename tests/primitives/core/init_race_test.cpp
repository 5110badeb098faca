// Init may run while frame functions run on other threads: the class index is an atomic, so a
// frame call sees either the old or the new class, and every class gives the same bytes.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "framekit/framekit.h"
#include "primitives/core/dispatch.h"

namespace framekit::prim {
namespace {

TEST(InitRace, FrameCallsDuringInitGiveTheSameBytes) {
  const int32_t before = ClassIndex();
  constexpr int kWidth = 67, kHeight = 9, kStride = 204;  // aligned bitmap stride of 67
  std::vector<uint8_t> original(kStride * kHeight);
  for (size_t i = 0; i < original.size(); ++i) original[i] = static_cast<uint8_t>(i * 37 + 11);
  std::vector<uint8_t> expected = original;
  SetClassIndexForTesting(0);
  ASSERT_EQ(FlipVerticalRGB24(expected.data(), kWidth, kHeight), 0);

  std::atomic<bool> done{false};
  std::thread initialiser([&] {
    for (int i = 0; i < 200; ++i) {
      Init();
      SetClassIndexForTesting(0);
    }
    done = true;
  });
  int mismatches = 0, calls = 0;
  std::vector<uint8_t> frame;
  while (!done || calls < 50) {
    frame = original;
    if (FlipVerticalRGB24(frame.data(), kWidth, kHeight) != 0 || frame != expected) ++mismatches;
    ++calls;
  }
  initialiser.join();
  EXPECT_EQ(mismatches, 0) << "of " << calls << " calls";
  SetClassIndexForTesting(before);
}

}  // namespace
}  // namespace framekit::prim

// The in-process suite's main: the variant subjects become tests before the run, and the seed
// is printed under every failed test that drew random numbers.
#include <gtest/gtest.h>

#include <cstdio>

#include "support/random_frame.h"

namespace framekit::test {
void RegisterVariantTests();
namespace {

class SeedPrinter : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo& info) override {
    if (info.result()->Failed() && SeedUsed()) {
      std::printf("[   SEED   ] %s\n", SeedNote().c_str());
      std::fflush(stdout);
    }
  }
};

}  // namespace
}  // namespace framekit::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new framekit::test::SeedPrinter);
  framekit::test::RegisterVariantTests();
  return RUN_ALL_TESTS();
}

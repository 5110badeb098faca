#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "framekit/framekit.h"
#include "imageio/bmp_test_support.h"

namespace framekit::imageio {
namespace {

using namespace bmp_test;  // NOLINT(build/namespaces)
namespace fs = std::filesystem;

// A fresh, empty directory for one test.
fs::path EmptyDirFor(const fs::path& base) {
  const fs::path dir = base.string() + ".d";
  fs::remove_all(dir);
  fs::create_directories(dir);
  return dir;
}

TEST(SaveImagePosix, NamesWithoutAFileWriteNothing) {
  const fs::path dir = EmptyDirFor(TestPathFor(""));
  const std::u16string prefix(dir.u16string() + u"/");
  const auto frame = MakeFrame(2, 2, 3, 8);
  const std::u16string names[] = {prefix + u"lone\xD83D.bmp",     // no UTF-8 spelling
                                  prefix + u"missing/frame.bmp",  // directory does not exist
                                  prefix,                         // a directory
                                  u""};
  for (const auto& name : names) SaveImageRGB24(frame.data(), 2, 2, name.c_str());
  EXPECT_TRUE(fs::is_empty(dir));
}

TEST(SaveImagePosix, FailedWriteLeavesNoFile) {
  const auto file = TestPathFor(".bmp");
  const auto frame = MakeFrame(100, 100, 4, 400);
  rlimit saved{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
  rlimit small = saved;
  small.rlim_cur = 10000;  // the file needs 40054 bytes; writes past the limit fail (EFBIG)
  const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  SaveImageRGB32(frame.data(), 100, 100, file.u16string().c_str());
  setrlimit(RLIMIT_FSIZE, &saved);
  std::signal(SIGXFSZ, old_handler);
  EXPECT_FALSE(fs::exists(file));
  SaveImageRGB32(frame.data(), 100, 100, file.u16string().c_str());  // the name itself is fine
  EXPECT_EQ(fs::file_size(file), 40054u);
}

}  // namespace
}  // namespace framekit::imageio

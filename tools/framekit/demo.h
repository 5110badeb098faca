// `framekit demo`: draws the test picture, runs every step of the gallery table on it, saves
// each result as a BMP through the library's savers and writes index.html beside them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <ostream>

namespace framekit::tool {

constexpr int32_t kDemoWidth = 640;
constexpr int32_t kDemoHeight = 360;

// Returns the process exit code: 0, or 1 when the directory or a file cannot be written.
// Progress goes to out, failures to err.
int RunDemo(const std::filesystem::path& dir, std::ostream& out, std::ostream& err);

}  // namespace framekit::tool

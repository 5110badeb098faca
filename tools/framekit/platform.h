// The little the program needs from the operating system: arguments and paths as UTF-8, and
// the image-saving service that the library expects its host to start.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace framekit::tool {

// Command-line arguments as UTF-8. On Windows they come from the wide command line, so file
// names outside the ANSI code page survive.
std::vector<std::string> Utf8Arguments(int argc, char** argv);

std::filesystem::path PathFromUtf8(std::string_view utf8);
std::string PathToUtf8(const std::filesystem::path& path);

// Keeps the platform's image encoder running for its lifetime: GDI+ on Windows, where the
// library's savers use it and leave starting it to the host; nothing elsewhere.
class ImageSaverSession {
 public:
  ImageSaverSession();
  ~ImageSaverSession();
  ImageSaverSession(const ImageSaverSession&) = delete;
  ImageSaverSession& operator=(const ImageSaverSession&) = delete;

  bool ok() const { return ok_; }

 private:
  unsigned long long token_ = 0;
  bool ok_ = true;
};

}  // namespace framekit::tool

// BMP saving without GDI+: the native writer straight into the named file.
#include <sys/stat.h>

#include <cstdio>
#include <string_view>

#include "imageio/bmp_save.h"
#include "imageio/bmp_writer.h"
#include "imageio/file_name.h"

namespace framekit::imageio {
namespace {

class FileSink final : public ByteSink {
 public:
  explicit FileSink(std::FILE* file) : file_(file) {}
  bool Write(const uint8_t* data, size_t size) override {
    return std::fwrite(data, 1, size, file_) == size;
  }

 private:
  std::FILE* file_;
};

bool IsRegularFile(std::FILE* file) {
  struct stat info {};
  return fstat(fileno(file), &info) == 0 && S_ISREG(info.st_mode);
}

}  // namespace

void SaveImage(const uint8_t* pixels, int32_t width, int32_t height, SaveFormat format,
               const char16_t* file_name) {
  if (pixels == nullptr || file_name == nullptr) return;
  const auto plan = PlanBmp(width, height, format);
  if (!plan) return;
  const auto path = Utf16ToUtf8(std::u16string_view(file_name));
  if (!path || path->empty()) return;

  // "e": close-on-exec, so a child the host starts meanwhile does not inherit the file.
  std::FILE* file = std::fopen(path->c_str(), "wbe");
  if (file == nullptr) return;
  FileSink sink(file);
  bool ok = WriteBmp(pixels, *plan, sink);
  // A half-written BMP would look valid to a reader that trusts its header, so a failed save
  // removes the file. Only a regular file, though: the name may be a device such as /dev/full.
  const bool regular = IsRegularFile(file);
  ok = (std::fclose(file) == 0) && ok;
  if (!ok && regular) std::remove(path->c_str());
}

}  // namespace framekit::imageio

#include "platform.h"

#if defined(_WIN32)
#include <windows.h>
// windows.h first: gdiplus.h relies on its types.
#include <gdiplus.h>
#include <shellapi.h>
#endif

namespace framekit::tool {

#if defined(_WIN32)

namespace {

std::string WideToUtf8(const wchar_t* wide) {
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  if (bytes <= 1) return {};
  std::string utf8(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide, -1, utf8.data(), bytes, nullptr, nullptr);
  utf8.pop_back();  // the terminator
  return utf8;
}

}  // namespace

std::vector<std::string> Utf8Arguments(int argc, char** argv) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) return std::vector<std::string>(argv, argv + argc);
  std::vector<std::string> args;
  for (int i = 0; i < count; ++i) args.push_back(WideToUtf8(wide[i]));
  LocalFree(wide);
  return args;
}

ImageSaverSession::ImageSaverSession() {
  Gdiplus::GdiplusStartupInput input;
  ULONG_PTR token = 0;
  ok_ = Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
  token_ = token;
}

ImageSaverSession::~ImageSaverSession() {
  if (ok_) Gdiplus::GdiplusShutdown(static_cast<ULONG_PTR>(token_));
}

#else

std::vector<std::string> Utf8Arguments(int argc, char** argv) {
  return std::vector<std::string>(argv, argv + argc);
}

ImageSaverSession::ImageSaverSession() = default;
ImageSaverSession::~ImageSaverSession() = default;

#endif

std::filesystem::path PathFromUtf8(std::string_view utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string PathToUtf8(const std::filesystem::path& path) {
  const std::u8string utf8 = path.u8string();
  return std::string(utf8.begin(), utf8.end());
}

}  // namespace framekit::tool

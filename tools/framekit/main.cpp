// framekit: the library's command-line program.
//   framekit demo [DIR]   gallery of every function on a test picture, written to DIR
//   framekit --help
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "demo.h"
#include "platform.h"

namespace {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

constexpr const char* kUsage =
    "usage: framekit demo [DIR]\n"
    "       framekit --help\n"
    "\n"
    "  demo [DIR]  draw a test picture, run every framekit function on it and write the\n"
    "              results as BMP files with a gallery page, DIR/index.html\n"
    "              (DIR defaults to ./framekit-demo and is created if missing)\n";

int Demo(const std::string& dir) {
  const framekit::tool::ImageSaverSession savers;
  if (!savers.ok()) {
    std::cerr << "framekit: cannot start the image encoder\n";
    return kExitFailure;
  }
  return framekit::tool::RunDemo(framekit::tool::PathFromUtf8(dir), std::cout, std::cerr);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::vector<std::string> args = framekit::tool::Utf8Arguments(argc, argv);
    if (args.size() == 2 && (args[1] == "--help" || args[1] == "-h")) {
      std::cout << kUsage;
      return 0;
    }
    if ((args.size() == 2 || args.size() == 3) && args[1] == "demo") {
      return Demo(args.size() == 3 ? args[2] : "framekit-demo");
    }
    std::cerr << kUsage;
    return kExitUsage;
  } catch (const std::exception& e) {
    std::cerr << "framekit: " << e.what() << "\n";
    return kExitFailure;
  }
}

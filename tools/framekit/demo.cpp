#include "demo.h"

#include <cstdio>
#include <string>
#include <system_error>

#include "demo_step.h"
#include "framekit/framekit.h"
#include "gallery.h"
#include "platform.h"
#include "test_picture.h"

namespace framekit::tool {
namespace {

namespace fs = std::filesystem;

const char* SaverFor(const Image& image) {
  return image.format == PixelFormat::kRGB32 ? "SaveImageRGB32" : "SaveImageRGB24";
}

// The savers report nothing, so success is judged by the file: an old one is removed first.
bool Save(const Image& image, const fs::path& file) {
  std::error_code ec;
  fs::remove(file, ec);
  const std::u16string name = file.u16string();
  if (image.format == PixelFormat::kRGB24) {
    SaveImageRGB24(image.data(), image.width, image.height, name.c_str());
  } else if (image.format == PixelFormat::kRGB32) {
    SaveImageRGB32(image.data(), image.width, image.height, name.c_str());
  } else {
    return false;
  }
  return fs::is_regular_file(file, ec) && fs::file_size(file, ec) > 0;
}

std::string NumberedName(size_t number, const std::string& function) {
  char digits[24];
  std::snprintf(digits, sizeof digits, "%02zu_", number);
  return digits + FileStem(function) + ".bmp";
}

// Saves a step's picture and fills its card. False when the file could not be written.
bool SaveCard(const StepResult& result, const fs::path& dir, const std::string& file_name,
              GalleryCard& card, std::ostream& err) {
  card.result = result.result;
  if (result.image.empty()) return true;
  if (!Save(result.image, dir / file_name)) {
    err << "framekit: cannot write " << PathToUtf8(dir / file_name) << "\n";
    return false;
  }
  card.image_file = file_name;
  const std::string shown = std::to_string(result.image.width) + "x" +
                            std::to_string(result.image.height) + ", saved with " +
                            SaverFor(result.image) + ".";
  card.note += (card.note.empty() ? "" : " ") + shown;
  return true;
}

GalleryPage PageHeader(int32_t init_status, const Image& original) {
  GalleryPage page;
  page.heading = "framekit demo";
  page.facts = {
      "Init() returned " + StatusText(init_status) + ".",
      "Test picture " + std::to_string(original.width) + "x" + std::to_string(original.height) +
          " RGB24, first row in memory at the top. Every step works on its own copy.",
  };
  page.original = {"", "Original", "", "",
                   "Colour bars W Y C G M R B K, grey and R G B ramps, 1-pixel lines."};
  return page;
}

}  // namespace

int RunDemo(const fs::path& dir, std::ostream& out, std::ostream& err) {
  std::error_code ec;
  fs::create_directories(dir, ec);
  if (ec || !fs::is_directory(dir, ec)) {
    err << "framekit: cannot create directory " << PathToUtf8(dir) << ": "
        << (ec ? ec.message() : "not a directory") << "\n";
    return 1;
  }
  const int32_t init_status = Init();
  out << "Init() returned " << StatusText(init_status) << "\n";

  const Image original = DrawTestPicture(kDemoWidth, kDemoHeight);
  GalleryPage page = PageHeader(init_status, original);
  if (!SaveCard({original, ""}, dir, "00_original.bmp", page.original, err)) return 1;

  const std::vector<DemoStep> steps = AllDemoSteps(original);
  for (size_t i = 0; i < steps.size(); ++i) {
    const DemoStep& step = steps[i];
    GalleryCard card{"", step.function, step.arguments, "", step.note};
    const std::string file_name = NumberedName(i + 1, step.function);
    if (!SaveCard(step.run(original), dir, file_name, card, err)) return 1;
    out << (card.image_file.empty() ? "(no picture)" : card.image_file) << "  " << step.function
        << " returned " << card.result << "\n";
    page.cards.push_back(std::move(card));
  }

  const fs::path index = dir / "index.html";
  if (!WriteGallery(index, page)) {
    err << "framekit: cannot write " << PathToUtf8(index) << "\n";
    return 1;
  }
  const fs::path shown = fs::absolute(index, ec);
  out << PathToUtf8(ec ? index : shown) << "\n";
  return 0;
}

}  // namespace framekit::tool

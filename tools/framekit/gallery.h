// The demo's index.html: one self-contained page showing the original picture and a card per
// result, each with the function called, its arguments and what it returned.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace framekit::tool {

struct GalleryCard {
  std::string image_file;  // relative to the page; empty when the step produced no picture
  std::string title;       // the function or functions called
  std::string arguments;   // the arguments as passed
  std::string result;      // what the calls returned
  std::string note;        // how the input was prepared and the result shown; may be empty
};

struct GalleryPage {
  std::string heading;
  std::vector<std::string> facts;  // short lines under the heading (Init's result, sizes)
  GalleryCard original;
  std::vector<GalleryCard> cards;
};

// Text made safe for HTML element content and quoted attribute values.
std::string HtmlEscape(std::string_view text);

// The page as HTML.
std::string RenderGallery(const GalleryPage& page);

// Writes RenderGallery(page) to file; false when the file cannot be written.
bool WriteGallery(const std::filesystem::path& file, const GalleryPage& page);

}  // namespace framekit::tool

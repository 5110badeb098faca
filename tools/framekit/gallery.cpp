#include "gallery.h"

#include <fstream>

namespace framekit::tool {
namespace {

// Pixelated scaling keeps the 1-pixel lines crisp when a browser zooms the page.
constexpr std::string_view kStyle = R"(
body { font-family: sans-serif; background: #20242a; color: #e8e8e8; margin: 24px; }
h1 { font-size: 22px; margin: 0 0 8px; }
p.fact { margin: 2px 0; color: #b8c0c8; }
main { display: flex; flex-wrap: wrap; gap: 16px; margin-top: 16px; }
figure { background: #2c3138; border-radius: 6px; padding: 12px; margin: 0; max-width: 660px; }
figure.original { outline: 2px solid #6a9fd8; }
figure img { display: block; max-width: 640px; image-rendering: pixelated;
             background: repeating-conic-gradient(#555 0 25%, #777 0 50%) 0 0 / 16px 16px; }
figcaption { margin-top: 8px; line-height: 1.5; }
.name { font-family: monospace; font-size: 15px; font-weight: bold; color: #ffd27a; }
.args, .result { font-family: monospace; font-size: 13px; overflow-wrap: anywhere; }
.note { font-size: 13px; color: #b8c0c8; }
.missing { padding: 40px; color: #e08080; }
)";

std::string RenderCard(const GalleryCard& card, bool original) {
  std::string html = original ? "<figure class=\"original\">\n" : "<figure>\n";
  if (card.image_file.empty()) {
    html += "  <div class=\"missing\">no picture</div>\n";
  } else {
    html += "  <img src=\"" + HtmlEscape(card.image_file) + "\" alt=\"" + HtmlEscape(card.title) +
            "\">\n";
  }
  html += "  <figcaption>\n    <div class=\"name\">" + HtmlEscape(card.title) + "</div>\n";
  if (!card.arguments.empty()) {
    html += "    <div class=\"args\">(" + HtmlEscape(card.arguments) + ")</div>\n";
  }
  if (!card.result.empty()) {
    html += "    <div class=\"result\">returned " + HtmlEscape(card.result) + "</div>\n";
  }
  if (!card.note.empty()) html += "    <div class=\"note\">" + HtmlEscape(card.note) + "</div>\n";
  html += "  </figcaption>\n</figure>\n";
  return html;
}

}  // namespace

std::string HtmlEscape(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string RenderGallery(const GalleryPage& page) {
  std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
  html += "<title>" + HtmlEscape(page.heading) + "</title>\n<style>";
  html += kStyle;
  html += "</style>\n</head>\n<body>\n<h1>" + HtmlEscape(page.heading) + "</h1>\n";
  for (const std::string& fact : page.facts) {
    html += "<p class=\"fact\">" + HtmlEscape(fact) + "</p>\n";
  }
  html += "<main>\n" + RenderCard(page.original, true);
  for (const GalleryCard& card : page.cards) html += RenderCard(card, false);
  html += "</main>\n</body>\n</html>\n";
  return html;
}

bool WriteGallery(const std::filesystem::path& file, const GalleryPage& page) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (!out) return false;
  const std::string html = RenderGallery(page);
  out.write(html.data(), static_cast<std::streamsize>(html.size()));
  out.close();
  return static_cast<bool>(out);
}

}  // namespace framekit::tool

// Gallery steps of the colour conversions. The YUV conversions run as round trips (RGB24 to YUV
// and back with the library's own pair), so the colour shifts of the two directions show; the
// RGB-to-RGB conversions are shown as they come out.
#include <cstring>
#include <utility>

#include "demo_step.h"

namespace framekit::tool {
namespace {

using ToYuv = int32_t (*)(uint8_t*, uint8_t*, int32_t, int32_t) noexcept;
using FromYuv = int32_t (*)(const uint8_t*, uint8_t*, int32_t, int32_t) noexcept;

// The source is a copy: the RGB-to-YUV direction leaves its source upside down.
StepResult RoundTrip(const Image& p, size_t yuv_bytes, ToYuv to, FromYuv from) {
  Image src = p;
  std::vector<uint8_t> yuv(yuv_bytes);
  Image back = MakeImage(PixelFormat::kRGB24, p.width, p.height);
  const int32_t there = to(src.data(), yuv.data(), p.width, p.height);
  const int32_t home = from(yuv.data(), back.data(), p.width, p.height);
  return {std::move(back), StatusText(there) + ", " + StatusText(home)};
}

}  // namespace

std::vector<DemoStep> ConvertSteps(const Image& original) {
  const std::string size = SizeText(original);
  const size_t pixels = static_cast<size_t>(original.width) * static_cast<size_t>(original.height);
  const std::string round_trip = "src, yuv, " + size + "; yuv, dst, " + size;
  return {
      {"RGB24ToYUY2 + YUY2ToRGB24", round_trip,
       "Through YUY2 and back (studio range both ways): close to the original.",
       [pixels](const Image& p) { return RoundTrip(p, 2 * pixels, ::RGB24ToYUY2, ::YUY2ToRGB24); }},
      {"RGB24ToYV12 + YV12ToRGB24", round_trip,
       "Through YV12 and back: the luma goes out at studio range and comes back read at full "
       "range, so the picture loses contrast; chroma is shared by 2 x 2 blocks.",
       [pixels](const Image& p) {
         return RoundTrip(p, pixels + 2 * (pixels / 4), ::RGB24ToYV12, ::YV12ToRGB24);
       }},
      {"RGB24ToRGB32", "src, dst, " + size,
       "Into a frame whose fourth bytes were 255 beforehand: they are kept.",
       [](const Image& p) {
         Image dst = MakeImage(PixelFormat::kRGB32, p.width, p.height);
         std::memset(dst.data(), 255, dst.bytes.size());
         const int32_t status = ::RGB24ToRGB32(p.data(), dst.data(), p.width, p.height);
         return StepResult{std::move(dst), StatusText(status)};
       }},
      {"RGB32ToRGB24", "src, dst, " + size, "From an RGB32 copy made by the demo.",
       [](const Image& p) {
         const Image src = RGB24ToRGB32(p);
         Image dst = MakeImage(PixelFormat::kRGB24, p.width, p.height);
         const int32_t status = ::RGB32ToRGB24(src.data(), dst.data(), p.width, p.height);
         return StepResult{std::move(dst), StatusText(status)};
       }},
      {"RGB24ToRGBA", "src, dst, " + size + ", 255",
       "Into a zeroed frame: the fourth byte is added to, so it ends at 255.",
       [](const Image& p) {
         Image dst = MakeImage(PixelFormat::kRGB32, p.width, p.height);
         const int32_t status = ::RGB24ToRGBA(p.data(), dst.data(), p.width, p.height, 255);
         return StepResult{std::move(dst), StatusText(status)};
       }},
      {"RGB24ToBGR24", "src, dst, " + size + ", " + std::to_string(original.stride),
       "Red and blue exchanged.",
       [](const Image& p) {
         Image dst = MakeImage(PixelFormat::kRGB24, p.width, p.height);
         const int32_t status = ::RGB24ToBGR24(p.data(), dst.data(), p.width, p.height, p.stride);
         return StepResult{std::move(dst), StatusText(status)};
       }},
  };
}

}  // namespace framekit::tool

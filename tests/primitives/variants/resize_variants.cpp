// Resize primitives: drivers for the variant harness. A case's two frame sizes are the source and
// the destination; the interpolation (flags included) is the mode; the case's random bits now
// and then move the regions and add a shift, and the work buffer is what ippiResizeGetBufSize
// asks for the whole source and the destination region.
#include "primitives/resize/resize.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

using prim::Rect;

struct Regions {
  Rect src, dst;
  double x_shift, y_shift;
};

Regions RegionsOf(const CallArgs& a) {
  Regions r{{0, 0, a.roi.width, a.roi.height}, {0, 0, a.roi2.width, a.roi2.height}, 0, 0};
  const uint64_t bits = a.scalar;
  if ((bits & 3) == 0 && a.roi.width > 2 && a.roi.height > 2) {
    r.src = {1, 1, a.roi.width, a.roi.height - 2};  // one column past the image: clipped
  }
  if (((bits >> 2) & 3) == 0 && a.roi2.width > 2 && a.roi2.height > 2) {
    r.dst = {1, 2, a.roi2.width - 2, a.roi2.height - 2};
  }
  if (((bits >> 4) & 3) == 0) {
    r.x_shift = static_cast<double>(static_cast<int>((bits >> 8) % 7) - 3) * 0.75;
    r.y_shift = static_cast<double>(static_cast<int>((bits >> 12) % 7) - 3) * 0.5;
  }
  return r;
}

double Factor(int32_t to, int32_t from) { return static_cast<double>(to) / from; }

struct ResizeDriver {
  int channels;
  PrimitiveShape Shape() const {
    const int32_t aa = prim::kResizeAntialias;
    return {
        .images = {{"src", channels, Access::kRead, 1, 0}, {"dst", channels, Access::kWrite, 1, 1}},
        .sizes = 2,
        .scalar = true,
        .bench_scalar = 0x55,  // whole regions, no shift
        .modes = {2, 1, 4, 5, 6, 7, 8, 16, 2 | aa, 16 | aa, 1 | aa, 4 | prim::kResizeSmoothEdge,
                  2 | prim::kResizeSubpixelEdge},
        .work_bytes = [channels = channels](const CallArgs& a) {
          const Regions r = RegionsOf(a);
          const Rect whole{0, 0, a.roi.width, a.roi.height};
          int32_t size = 0;
          return prim::ippiResizeGetBufSize(&whole, &r.dst, channels, a.axis, &size) == 0 ? size
                                                                                          : 64;
        }};
  }
  prim::Status Call(prim::ResizeFn fn, const CallArgs& a) const {
    const Regions r = RegionsOf(a);
    const double xf = r.src.width > 0 ? Factor(r.dst.width, r.src.width) : 1.0;
    const double yf = r.src.height > 0 ? Factor(r.dst.height, r.src.height) : 1.0;
    return fn(a.image[0], a.roi, a.step[0], &r.src, a.image[1], a.step[1], &r.dst, xf, yf,
              r.x_shift, r.y_shift, a.axis, a.work);
  }
};

// YUY2 nearest: whole regions, the factors of the two sizes; the mode is the interpolation
// (anything but nearest must fail).
struct Yuv422Driver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 2, Access::kRead, 1, 0}, {"dst", 2, Access::kWrite, 1, 1}},
            .sizes = 2,
            .modes = {prim::kResizeNearest, prim::kResizeLinear}};
  }
  prim::Status Call(prim::ResizeYuv422Fn fn, const CallArgs& a) const {
    const Rect whole{0, 0, a.roi.width, a.roi.height};
    return fn(a.image[0], a.roi, a.step[0], &whole, a.image[1], a.step[1], a.roi2,
              Factor(a.roi2.width, a.roi.width), Factor(a.roi2.height, a.roi.height), a.axis);
  }
};

FK_VARIANT_SUBJECT(ippiResizeSqrPixel_8u_C3R, ResizeDriver{3});
FK_VARIANT_SUBJECT(ippiResizeSqrPixel_8u_C4R, ResizeDriver{4});
FK_VARIANT_SUBJECT(ippiResizeYUV422_8u_C2R, Yuv422Driver{});

}  // namespace
}  // namespace framekit::test

// Rotate primitives: drivers for the variant harness. A case's two frame sizes are the source and
// the destination; the interpolation is the mode; the case's random bits pick an angle (whole
// and half turns, quarter turns both ways, tiny angles, and ordinary ones), turn it about the
// destination's centre and now and then move it off centre or shrink the regions.
#include "primitives/rotate/rotate.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

using prim::Rect;

constexpr double kAngles[] = {0,    90,   180,  270,   360, -90,   1e-9,   -3e-7, 0.01,
                              30,   45,   60,   137.5, 200, -33.3, 359.99, 720,   89.999,
                              1000, -450, 12.5, 300,   0.5, -0.01, 179.9,  5,     -170};

struct RotateDriver {
  int channels;
  PrimitiveShape Shape() const {
    return {
        .images = {{"src", channels, Access::kRead, 1, 0}, {"dst", channels, Access::kWrite, 1, 1}},
        .sizes = 2,
        .scalar = true,
        .bench_scalar = 9,  // 30 degrees about the centre, whole regions
        .modes = {2, 1, 4}};
  }
  prim::Status Call(prim::RotateFn fn, const CallArgs& a) const {
    const uint64_t bits = a.scalar;
    const double angle = kAngles[(bits & 0xFF) % (sizeof(kAngles) / sizeof(kAngles[0]))];
    Rect src{0, 0, a.roi.width, a.roi.height}, dst{0, 0, a.roi2.width, a.roi2.height};
    if (((bits >> 8) & 3) == 0 && a.roi.width > 2 && a.roi.height > 2) {
      src = {1, 1, a.roi.width - 2, a.roi.height};  // one row past the image: clipped
    }
    if (((bits >> 10) & 3) == 0 && a.roi2.width > 2 && a.roi2.height > 2) {
      dst = {2, 1, a.roi2.width - 2, a.roi2.height - 2};
    }
    double xs = 0, ys = 0;
    prim::ippiGetRotateShift(a.roi2.width * 0.5, a.roi2.height * 0.5, angle, &xs, &ys);
    if (((bits >> 12) & 3) == 0) {
      xs += static_cast<double>(static_cast<int>((bits >> 14) % 9) - 4) * 0.37;
      ys += static_cast<double>(static_cast<int>((bits >> 18) % 9) - 4) * 0.61;
    }
    return fn(a.image[0], a.roi, a.step[0], &src, a.image[1], a.step[1], &dst, angle, xs, ys,
              a.axis);
  }
};

FK_VARIANT_SUBJECT(ippiRotate_8u_C3R, RotateDriver{3});
FK_VARIANT_SUBJECT(ippiRotate_8u_C4R, RotateDriver{4});

}  // namespace
}  // namespace framekit::test

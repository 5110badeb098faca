// Mirror primitives: drivers for the variant harness.
#include "primitives/mirror/mirror.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

std::vector<int32_t> AllAxes() {
  return {prim::kAxisHorizontal, prim::kAxisVertical, prim::kAxisBoth};
}

struct MirrorInPlaceDriver {
  int bytes_per_pixel;
  PrimitiveShape Shape() const {
    return {.images = {{"image", bytes_per_pixel, Access::kReadWrite}}, .axes = AllAxes()};
  }
  prim::Status Call(prim::MirrorIRFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, a.axis);
  }
};

struct MirrorCopyDriver {
  int bytes_per_pixel;
  PrimitiveShape Shape() const {
    return {.images = {{"src", bytes_per_pixel, Access::kRead},
                       {"dst", bytes_per_pixel, Access::kWrite}},
            .axes = AllAxes()};
  }
  prim::Status Call(prim::MirrorRFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, a.axis);
  }
};

FK_VARIANT_SUBJECT(ippiMirror_8u_C1IR, MirrorInPlaceDriver{1});
FK_VARIANT_SUBJECT(ippiMirror_8u_C3IR, MirrorInPlaceDriver{3});
FK_VARIANT_SUBJECT(ippiMirror_8u_C4IR, MirrorInPlaceDriver{4});
FK_VARIANT_SUBJECT(ippiMirror_8u_C1R, MirrorCopyDriver{1});
FK_VARIANT_SUBJECT(ippiMirror_8u_C4R, MirrorCopyDriver{4});

}  // namespace
}  // namespace framekit::test

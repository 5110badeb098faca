// Copy primitives: drivers for the variant harness.
#include "primitives/copy/copy.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct CopyDriver {
  int bytes_per_pixel;
  PrimitiveShape Shape() const {
    return {.images = {{"src", bytes_per_pixel, Access::kRead},
                       {"dst", bytes_per_pixel, Access::kWrite}}};
  }
  prim::Status Call(prim::CopyFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi);
  }
};

FK_VARIANT_SUBJECT(ippiCopy_8u_C3R, CopyDriver{3});
FK_VARIANT_SUBJECT(ippiCopy_8u_C4R, CopyDriver{4});

}  // namespace
}  // namespace framekit::test

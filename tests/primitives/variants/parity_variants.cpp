// Alternate-pixel row copy: a source and a destination frame, the parity as the mode.
#include "primitives/parity/parity.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct CopyParityDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 3, Access::kRead}, {"dst", 3, Access::kReadWrite}}, .modes = {0, 1}};
  }
  prim::Status Call(prim::CopyParityFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, a.axis);
  }
};

FK_VARIANT_SUBJECT(CopyParity_8u_C3R, CopyParityDriver{});

}  // namespace
}  // namespace framekit::test

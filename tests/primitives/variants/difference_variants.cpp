// Frame difference: every channel choice as the mode. The sum joins the status (its low 31 bits)
// so that the harness compares it too; it starts from a non-zero value to show it is added.
#include "primitives/difference/difference.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct MotionDiffDriver {
  PrimitiveShape Shape() const {
    return {
        .images = {{"a", 3, Access::kRead}, {"b", 3, Access::kRead}, {"map", 1, Access::kWrite}},
        .modes = {prim::kDiffLuminance, 1, 2, 3, 4, 5, 6, 7}};
  }
  prim::Status Call(prim::MotionDiffFn fn, const CallArgs& a) const {
    uint64_t sum = 1000;
    const prim::Status s = fn(a.image[0], a.step[0], a.image[1], a.step[1], a.image[2], a.step[2],
                              a.roi, a.axis, &sum);
    return s < 0 ? s : static_cast<prim::Status>(sum & 0x7FFFFFFF);
  }
};

FK_VARIANT_SUBJECT(MotionDiff_8u_C3C1R, MotionDiffDriver{});

}  // namespace
}  // namespace framekit::test

// Set primitives: drivers for the variant harness.
#include "primitives/set/set.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct SetC3Driver {
  PrimitiveShape Shape() const {
    return {.images = {{"dst", 3, Access::kWrite}}, .value_bytes = 3};
  }
  prim::Status Call(prim::SetC3Fn fn, const CallArgs& a) const {
    return fn(a.value, a.image[0], a.step[0], a.roi);
  }
};

FK_VARIANT_SUBJECT(ippiSet_8u_C3R, SetC3Driver{});

}  // namespace
}  // namespace framekit::test

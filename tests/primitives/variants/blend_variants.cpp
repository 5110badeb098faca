// Overlay blends: the factor as the mode (0 and 256 the ends), the composite with its one type.
#include "primitives/blend/blend.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct BlendAlphaDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 4, Access::kRead}, {"dst", 3, Access::kReadWrite}},
            .modes = {256, 255, 128, 77, 1, 0}};
  }
  prim::Status Call(prim::BlendFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, a.axis);
  }
};

struct BlendConstDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 3, Access::kRead}, {"dst", 3, Access::kReadWrite}},
            .modes = {100, 255, 128, 1, 0, 256}};
  }
  prim::Status Call(prim::BlendFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, a.axis);
  }
};

struct AlphaShiftDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"frame", 4, Access::kReadWrite}}, .modes = {40, -10, 300, -300, 0, -1}};
  }
  prim::Status Call(prim::AlphaShiftFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.roi, a.axis);
  }
};

struct AlphaCompDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src1", 4, Access::kRead},
                       {"src2", 4, Access::kRead},
                       {"dst", 4, Access::kWrite}},
            .modes = {prim::kAlphaOver}};
  }
  prim::Status Call(prim::AlphaCompFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.image[2], a.step[2], a.roi, a.axis);
  }
};

FK_VARIANT_SUBJECT(BlendAlpha_8u_AC4C3R, BlendAlphaDriver{});
FK_VARIANT_SUBJECT(BlendConst_8u_C3R, BlendConstDriver{});
FK_VARIANT_SUBJECT(AlphaShift_8u_AC4IR, AlphaShiftDriver{});
FK_VARIANT_SUBJECT(ippiAlphaComp_8u_AC4R, AlphaCompDriver{});

}  // namespace
}  // namespace framekit::test

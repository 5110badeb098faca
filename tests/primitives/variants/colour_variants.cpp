// Colour-conversion and channel primitives: drivers for the variant harness.
#include "primitives/channel/channel.h"
#include "primitives/colour/colour.h"
#include "primitives/variants/harness.h"

namespace framekit::test {
namespace {

struct PackedConvertDriver {
  int src_bytes;
  int dst_bytes;
  PrimitiveShape Shape() const {
    return {.images = {{"src", src_bytes, Access::kRead}, {"dst", dst_bytes, Access::kWrite}}};
  }
  prim::Status Call(prim::PackedConvertFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi);
  }
};

// Image 0 is the packed BGR side, images 1-3 the planes.
PrimitiveShape PlanarShape(Access bgr, Access planes) {
  return {.images = {{"bgr", 3, bgr},
                     {"plane 1", 1, planes},
                     {"plane 2", 1, planes, 2},
                     {"plane 3", 1, planes, 2}}};
}

struct PlanarToPackedDriver {
  PrimitiveShape Shape() const { return PlanarShape(Access::kWrite, Access::kRead); }
  prim::Status Call(prim::PlanarToPackedFn fn, const CallArgs& a) const {
    const uint8_t* const planes[3] = {a.image[1], a.image[2], a.image[3]};
    const int32_t steps[3] = {a.step[1], a.step[2], a.step[3]};
    return fn(planes, steps, a.image[0], a.step[0], a.roi);
  }
};

struct PackedToPlanarDriver {
  PrimitiveShape Shape() const { return PlanarShape(Access::kRead, Access::kWrite); }
  prim::Status Call(prim::PackedToPlanarFn fn, const CallArgs& a) const {
    uint8_t* const planes[3] = {a.image[1], a.image[2], a.image[3]};
    const int32_t steps[3] = {a.step[1], a.step[2], a.step[3]};
    return fn(a.image[0], a.step[0], planes, steps, a.roi);
  }
};

// The BGR side is turned upside down in place, so it is read and written.
struct MirrorToPlanarDriver {
  PrimitiveShape Shape() const { return PlanarShape(Access::kReadWrite, Access::kWrite); }
  prim::Status Call(prim::MirrorToPlanarFn fn, const CallArgs& a) const {
    uint8_t* const planes[3] = {a.image[1], a.image[2], a.image[3]};
    const int32_t steps[3] = {a.step[1], a.step[2], a.step[3]};
    return fn(a.image[0], a.step[0], planes, steps, a.roi);
  }
};

// Scale factors: the saturating add, both rounding directions, and the ends of the range.
struct AddCDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"image", 4, Access::kReadWrite}},
            .value_bytes = 4,
            .modes = {0, 0, 1, 2, 5, 9, 10, -1, -3, -9}};
  }
  prim::Status Call(prim::AddCC4Fn fn, const CallArgs& a) const {
    return fn(a.value, a.image[0], a.step[0], a.roi, a.axis);
  }
};

struct CopyAddDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 3, Access::kRead}, {"dst", 4, Access::kReadWrite}},
            .value_bytes = 4};
  }
  prim::Status Call(prim::CopyAddFn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, a.value);
  }
};

// Modes pick a channel order: the exchange the conversions use, the others, and repeats. The
// swap may be given one buffer as source and destination.
constexpr int32_t kOrders[][3] = {{2, 1, 0}, {0, 1, 2}, {1, 2, 0}, {2, 0, 1},
                                  {0, 2, 1}, {1, 0, 2}, {0, 0, 0}, {2, 2, 1}};

struct SwapDriver {
  PrimitiveShape Shape() const {
    return {.images = {{"src", 3, Access::kRead}, {"dst", 3, Access::kWrite}},
            .modes = {0, 0, 1, 2, 3, 4, 5, 6, 7},
            .in_place = {{0, 1}}};
  }
  prim::Status Call(prim::SwapC3Fn fn, const CallArgs& a) const {
    return fn(a.image[0], a.step[0], a.image[1], a.step[1], a.roi, kOrders[a.axis]);
  }
};

FK_VARIANT_SUBJECT(ippiYCbCr422ToBGR_8u_C2C3R, PackedConvertDriver{2, 3});
FK_VARIANT_SUBJECT(ippiBGRToYCbCr422_8u_C3C2R, PackedConvertDriver{3, 2});
FK_VARIANT_SUBJECT(ippiYUV420ToBGR_8u_P3C3R, PlanarToPackedDriver{});
FK_VARIANT_SUBJECT(ippiBGRToYUV420_8u_C3P3R, PackedToPlanarDriver{});
FK_VARIANT_SUBJECT(MirrorBGRToYUV420, MirrorToPlanarDriver{});
FK_VARIANT_SUBJECT(ippiCopy_8u_AC4C3R, PackedConvertDriver{4, 3});
FK_VARIANT_SUBJECT(ippiCopy_8u_C3AC4R, PackedConvertDriver{3, 4});
FK_VARIANT_SUBJECT(ippiAddC_8u_C4IRSfs, AddCDriver{});
FK_VARIANT_SUBJECT(CopyC3AC4AddC, CopyAddDriver{});
FK_VARIANT_SUBJECT(ippiSwapChannels_8u_C3R, SwapDriver{});

}  // namespace
}  // namespace framekit::test

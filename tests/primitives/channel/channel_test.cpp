// The channel and colour primitives' own rules that the exports never reach: scale factors of
// the add, channel orders of the swap, and the 4:2:0 status for odd sizes, on the reference
// bodies (the variant harness holds every other class to them).
#include "primitives/channel/channel.h"

#include <gtest/gtest.h>

#include <vector>

#include "primitives/colour/colour.h"

namespace framekit::prim {
namespace {

using Bytes = std::vector<uint8_t>;

TEST(AddC, ScaleFactorsRoundHalfToEvenAndSaturate) {
  const uint8_t value[4] = {0, 1, 2, 3};
  // Pixel bytes {3, 4, 5, 250}: sums {3, 5, 7, 253}.
  struct Expect {
    int32_t scale;
    Bytes bytes;
  };
  const Expect cases[] = {{0, {3, 5, 7, 253}},       {1, {2, 2, 4, 126}}, {2, {1, 1, 2, 63}},
                          {9, {0, 0, 0, 0}},         {10, {0, 0, 0, 0}},  {-1, {6, 10, 14, 255}},
                          {-9, {255, 255, 255, 255}}};
  for (const Expect& e : cases) {
    Bytes px = {3, 4, 5, 250};
    EXPECT_EQ(ref::ippiAddC_8u_C4IRSfs(value, px.data(), 4, {1, 1}, e.scale), 0);
    EXPECT_EQ(px, e.bytes) << "scale " << e.scale;
  }
  Bytes px = {0, 0, 0, 0};
  ref::ippiAddC_8u_C4IRSfs(value, px.data(), 4, {1, 1}, -9);
  EXPECT_EQ(px, (Bytes{0, 255, 255, 255}));  // zero stays zero at any scale
}

TEST(SwapChannels, OrderChecksComeAfterPointersAndSize) {
  const Bytes src = {1, 2, 3};
  Bytes dst(3, 9);
  const int32_t bad[][3] = {{3, 1, 0}, {0, -1, 2}, {0, 1, 1 << 30}};
  for (const auto& order : bad) {
    EXPECT_EQ(ref::ippiSwapChannels_8u_C3R(src.data(), 3, dst.data(), 3, {1, 1}, order),
              ippStsChannelOrderErr);
  }
  EXPECT_EQ(ref::ippiSwapChannels_8u_C3R(src.data(), 3, dst.data(), 3, {1, 1}, nullptr), -8);
  EXPECT_EQ(ref::ippiSwapChannels_8u_C3R(src.data(), 3, dst.data(), 3, {0, 1}, bad[0]), -6);
  EXPECT_EQ(dst, Bytes(3, 9));
  const int32_t order[3] = {1, 1, 0};
  EXPECT_EQ(ref::ippiSwapChannels_8u_C3R(src.data(), 3, dst.data(), 3, {1, 1}, order), 0);
  EXPECT_EQ(dst, (Bytes{2, 2, 1}));
}

TEST(Yuv420, OddSizesWarnAfterConvertingTheEvenPart) {
  for (const Size roi : {Size{3, 2}, Size{2, 3}, Size{1, 1}, Size{2, 2}}) {
    Bytes y(6, 128), c(2, 128), bgr(27, 7);
    const uint8_t* in[3] = {y.data(), c.data(), c.data()};
    uint8_t* out[3] = {y.data(), c.data(), c.data() + 1};
    const int32_t steps[3] = {roi.width, 1, 1};
    const Status want = (roi.width & 1) || (roi.height & 1) ? ippStsDoubleSize : ippStsNoErr;
    EXPECT_EQ(ref::ippiYUV420ToBGR_8u_P3C3R(in, steps, bgr.data(), 9, roi), want);
    // One converted 2 x 2 block at most; the odd column and row keep their bytes.
    const bool block = roi.width >= 2 && roi.height >= 2;
    EXPECT_EQ(bgr[0], block ? 128 : 7);
    EXPECT_EQ(bgr[6], 7);
    EXPECT_EQ(ref::ippiBGRToYUV420_8u_C3P3R(bgr.data(), 9, out, steps, roi), want);
  }
  const uint8_t* missing[3] = {nullptr, nullptr, nullptr};
  const int32_t steps[3] = {2, 1, 1};
  Bytes bgr(12);
  EXPECT_EQ(ref::ippiYUV420ToBGR_8u_P3C3R(missing, steps, bgr.data(), 6, {2, 2}), -8);
  EXPECT_EQ(ref::ippiYCbCr422ToBGR_8u_C2C3R(bgr.data(), 2, bgr.data(), 3, {1, 1}), -6);
  EXPECT_EQ(ref::ippiBGRToYCbCr422_8u_C3C2R(bgr.data(), 3, bgr.data(), 2, {1, 1}), -6);
}

}  // namespace
}  // namespace framekit::prim

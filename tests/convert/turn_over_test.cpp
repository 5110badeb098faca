// RGB24ToYV12 and RGB24ToYUY2 turn the source over and convert it in one pass, from both ends of
// the frame. Under every class this machine runs, each export is compared with the plain
// composition of the reference primitives (the mirror, then the conversion) on random frames:
// every width to 40 and some wide ones, 1 to 12 rows and a few more, so one- and two-row frames,
// odd sizes, the middle pair of an odd number of row pairs and the vector steps' tails all
// occur. The destination starts as random bytes, and the source left behind (row padding
// included) is compared as well as the converted bytes and the status.
#include <gtest/gtest.h>

#include <vector>

#include "primitives/core/strides.h"
#include "framekit/framekit.h"
#include "primitives/colour/colour.h"
#include "primitives/core/dispatch.h"
#include "primitives/mirror/mirror.h"
#include "support/random_frame.h"
#include "support/scoped_class.h"

namespace framekit {
namespace {

using Bytes = std::vector<uint8_t>;

std::vector<int32_t> Widths() {
  std::vector<int32_t> w;
  for (int32_t i = 1; i <= 40; ++i) w.push_back(i);
  for (const int32_t i : {63, 64, 65, 66, 97, 130, 642}) w.push_back(i);
  return w;
}
constexpr int32_t kHeights[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 17, 30, 31};

// The reference pair on copies: what the export must leave in the source and the destination.
struct Expected {
  Bytes src, dst;
  int32_t status;
};

Expected Yv12ByComposition(Bytes src, Bytes dst, int32_t w, int32_t h) {
  const int32_t stride = RowByteStrideRGB24(w);
  prim::ref::ippiMirror_8u_C3IR(src.data(), stride, {w, h}, prim::kAxisHorizontal);
  uint8_t* const planes[3] = {dst.data(), dst.data() + w * h, dst.data() + w * h + (w * h) / 4};
  const int32_t steps[3] = {w, w / 2, w / 2};
  const int32_t status =
      prim::ref::ippiBGRToYUV420_8u_C3P3R(src.data(), stride, planes, steps, {w, h});
  return {std::move(src), std::move(dst), status};
}

Expected Yuy2ByComposition(Bytes src, Bytes dst, int32_t w, int32_t h) {
  const int32_t stride = RowByteStrideRGB24(w);
  prim::ref::ippiMirror_8u_C3IR(src.data(), stride, {w, h}, prim::kAxisHorizontal);
  const int32_t status =
      prim::ref::ippiBGRToYCbCr422_8u_C3C2R(src.data(), stride, dst.data(), 2 * w, {w, h});
  return {std::move(src), std::move(dst), status};
}

// Runs `call` on random frames of every size under every class, against `expect`. Destinations
// get 16 spare bytes, which must stay as they were.
template <typename Call, typename Expect>
void CompareOnRandomFrames(const char* stream, size_t (*dst_bytes)(int32_t, int32_t), Call call,
                           Expect expect) {
  test::Rng rng(stream);
  for (int cls = 0; cls <= prim::DetectedClass(); ++cls) {
    const test::ScopedClassIndex forced(cls);
    for (const int32_t w : Widths()) {
      for (const int32_t h : kHeights) {
        Bytes src = test::RandomFrame(rng, RowByteStrideRGB24(w), h);
        Bytes dst = test::RandomFrame(rng, 1, static_cast<int32_t>(dst_bytes(w, h)) + 16);
        const Expected want = expect(src, dst, w, h);
        const int32_t status = call(src.data(), dst.data(), w, h);
        ASSERT_EQ(status, want.status) << "class " << cls << ", " << w << "x" << h;
        ASSERT_EQ(dst, want.dst) << "class " << cls << ", " << w << "x" << h;
        ASSERT_EQ(src, want.src) << "class " << cls << ", " << w << "x" << h;
      }
    }
  }
}

size_t Yv12Bytes(int32_t w, int32_t h) { return static_cast<size_t>(w * h + 2 * ((w * h) / 4)); }
size_t Yuy2Bytes(int32_t w, int32_t h) { return static_cast<size_t>(2 * w * h); }

TEST(TurnOver, Rgb24ToYv12IsTheMirrorThenTheConversion) {
  CompareOnRandomFrames("turn-over/yv12", Yv12Bytes, RGB24ToYV12, Yv12ByComposition);
}

TEST(TurnOver, Rgb24ToYuy2IsTheMirrorThenTheConversion) {
  CompareOnRandomFrames("turn-over/yuy2", Yuy2Bytes, RGB24ToYUY2, Yuy2ByComposition);
}

// A conversion that fails on its arguments still has the source turned over (the mirror's own
// checks permitting) and writes nothing.
TEST(TurnOver, FailedConversionsStillTurnTheSourceOver) {
  for (int cls = 0; cls <= prim::DetectedClass(); ++cls) {
    const test::ScopedClassIndex forced(cls);
    const Bytes picture = {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0};  // 2x2, stride 8
    const Bytes turned = {7, 8, 9, 10, 11, 12, 0, 0, 1, 2, 3, 4, 5, 6, 0, 0};
    Bytes src = picture;
    EXPECT_EQ(RGB24ToYV12(src.data(), nullptr, 2, 2), -8) << "class " << cls;
    EXPECT_EQ(src, turned) << "class " << cls;
    EXPECT_EQ(RGB24ToYUY2(src.data(), nullptr, 2, 2), -8) << "class " << cls;
    EXPECT_EQ(src, picture) << "class " << cls;
    Bytes dst(8, 0xAB);
    EXPECT_EQ(RGB24ToYV12(src.data(), dst.data(), 2, 0), -6) << "class " << cls;
    EXPECT_EQ(RGB24ToYV12(nullptr, dst.data(), 2, 2), -8) << "class " << cls;
    EXPECT_EQ(src, picture) << "class " << cls;
    EXPECT_EQ(dst, Bytes(8, 0xAB)) << "class " << cls;
  }
}

}  // namespace
}  // namespace framekit

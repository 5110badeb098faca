// The same inputs give the same bytes on every platform and processor class:
// each export runs on a deterministic frame under every class this machine can
// run, and the FNV-1a hash of its output must equal the value recorded here.
// The Linux and the Windows builds run this same table.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "framekit/framekit.h"
#include "primitives/core/dispatch.h"

namespace framekit {
namespace {

// A fixed frame from a fixed 32-bit LCG, identical everywhere.
std::vector<uint8_t> Frame(size_t n, uint32_t seed) {
  std::vector<uint8_t> v(n);
  uint32_t s = seed;
  for (auto &b : v) {
    s = s * 1664525u + 1013904223u;
    b = static_cast<uint8_t>(s >> 24);
  }
  return v;
}

uint64_t Fnv1a(const std::vector<uint8_t> &bytes, int32_t status) {
  uint64_t h = 1469598103934665603ull;
  auto mix = [&h](uint8_t b) { h = (h ^ b) * 1099511628211ull; };
  for (uint8_t b : bytes) mix(b);
  for (int i = 0; i < 4; ++i) mix(static_cast<uint8_t>(static_cast<uint32_t>(status) >> (8 * i)));
  return h;
}

struct GoldenCase {
  const char *name;
  uint64_t hash;
  std::function<uint64_t()> run;
};

// 77 x 13 frames: odd width, so the three stride rules disagree.
constexpr int32_t kW = 77, kH = 13;

// Effects run at both widths: 77 (general paths) and 76 (fast paths: 988 pixels, so 61 blocks
// of 16 and a tail of 12).
template <typename... Args>
std::function<uint64_t()> Effect(void (*f)(uint8_t *, int32_t, int32_t, Args...), int32_t width,
                                 uint32_t seed, Args... args) {
  return [=] {
    auto frame = Frame(static_cast<size_t>(3 * width * kH), seed);
    f(frame.data(), width, kH, args...);
    return Fnv1a(frame, 0);
  };
}

std::function<uint64_t()> WithScratch(int32_t (*f)(uint8_t *, int32_t, int32_t, uint8_t *),
                                      int32_t width, uint32_t seed) {
  return [=] {
    const size_t stride = static_cast<size_t>((3 * width + 3) / 4 * 4);
    auto frame = Frame(stride * kH, seed);
    std::vector<uint8_t> scratch(static_cast<size_t>(3 * width * kH));
    const int32_t s = f(frame.data(), width, kH, scratch.data());
    return Fnv1a(frame, s);
  };
}

std::vector<GoldenCase> EffectCases() {
  constexpr int32_t kFast = 76;
  return {
      {"EffectRed", 0x130b57a5c786192eull, Effect(&EffectRed, kW, 20)},
      {"EffectGreen", 0xa158a4bd1aa999f8ull, Effect(&EffectGreen, kFast, 21)},
      {"EffectBlue", 0x4b44c65eb47c3eedull, Effect(&EffectBlue, kW, 22)},
      {"EffectFilterRed", 0xa425e3df1102d0feull, Effect<uint8_t, uint8_t>(&EffectFilterRed, kW, 23, 100, 200)},
      {"EffectFilterGreen", 0xdb253a99615f5cbcull, Effect<uint8_t, uint8_t>(&EffectFilterGreen, kFast, 24, 30, 90)},
      {"EffectFilterBlue", 0x084a71a0ecc0f72aull, Effect<uint8_t, uint8_t>(&EffectFilterBlue, kW, 25, 0, 255)},
      {"EffectGreyscale", 0xe32f6394ee0b5520ull, WithScratch(&EffectGreyscale, kW, 26)},
      {"EffectGreyscale/76", 0xfaa8d13b27012b05ull, WithScratch(&EffectGreyscale, kFast, 27)},
      {"EffectInvert", 0x0dc95b18df321e8cull, WithScratch(&EffectInvert, kW, 28)},
      {"EffectInvert/76", 0x4fbc5012c095b00dull, WithScratch(&EffectInvert, kFast, 29)},
      {"EffectLightness", 0x83d31220d6111aecull, Effect<int32_t>(&EffectLightness, kW, 30, 128)},
      {"EffectLightness/76", 0xfbd0608860a02ef9ull, Effect<int32_t>(&EffectLightness, kFast, 31, 128)},
      {"EffectDarkness", 0x9802ebe059c4538eull, Effect<int32_t>(&EffectDarkness, kW, 32, 77)},
      {"EffectDarkness/76", 0xf1225e220d285a97ull, Effect<int32_t>(&EffectDarkness, kFast, 33, 77)},
      {"EffectContrast", 0x18616b199d91a233ull, Effect<int32_t>(&EffectContrast, kW, 34, 100)},
      {"EffectContrast/76", 0xe076b24efd1de0e5ull, Effect<int32_t>(&EffectContrast, kFast, 35, 100)},
      {"EffectContrast/76/259", 0xe433f007eaf8dca3ull, Effect<int32_t>(&EffectContrast, kFast, 36, 259)},
      {"EffectContrast/76/-300", 0x1349cc0575f42b0full, Effect<int32_t>(&EffectContrast, kFast, 37, -300)},
      {"EffectSaturation", 0x66f9346b70770448ull, Effect<uint32_t>(&EffectSaturation, kW, 38, 400u)},
      {"EffectSaturation/76", 0x07f478710a1d8ddeull, Effect<uint32_t>(&EffectSaturation, kFast, 39, 400u)},
      {"EffectSaturation/76/max", 0xa61c889b34feb49aull, Effect<uint32_t>(&EffectSaturation, kFast, 40, 0xFFFFFFFFu)},
      {"EffectPosterize", 0x4b8472d6130a68f1ull, Effect<int32_t>(&EffectPosterize, kW, 41, 48)},
      {"EffectSolorize", 0x7b8b7e2c1388d5eaull, Effect<int32_t>(&EffectSolorize, kW, 42, 100)},
      {"PerfTest", 0x8375ff1be43be2b1ull,
       [] {
         auto frame = Frame(static_cast<size_t>(3 * kW * kH), 43);
         const int32_t s = PerfTest(frame.data(), kW, kH, 3);
         return Fnv1a(frame, s != 0 ? 1 : 0);
       }},
  };
}

std::vector<GoldenCase> Cases() {
  auto in_place = [](int32_t (*f)(uint8_t *, int32_t, int32_t), size_t size, uint32_t seed) {
    return [=] {
      auto frame = Frame(size, seed);
      const int32_t s = f(frame.data(), kW, kH);
      return Fnv1a(frame, s);
    };
  };
  auto two_buffer = [](int32_t (*f)(const uint8_t *, uint8_t *, int32_t, int32_t), size_t size,
                       uint32_t seed) {
    return [=] {
      const auto src = Frame(size, seed);
      auto dst = Frame(size, seed + 1);
      const int32_t s = f(src.data(), dst.data(), kW, kH);
      return Fnv1a(dst, s);
    };
  };
  // The source is part of the result: these conversions leave it upside down.
  auto to_yuv = [](int32_t (*f)(uint8_t *, uint8_t *, int32_t, int32_t), size_t size,
                   uint32_t seed) {
    return [=] {
      auto src = Frame(232 * kH, seed);
      auto dst = Frame(size, seed + 1);
      const int32_t s = f(src.data(), dst.data(), kW, kH);
      dst.insert(dst.end(), src.begin(), src.end());
      return Fnv1a(dst, s);
    };
  };
  const size_t rgb24 = 232 * kH, rgb32 = 4 * kW * kH, yuy2 = 156 * kH;
  const size_t yv12 = kW * kH + 2 * ((kW * kH) / 4);
  const FrameKitRect rect{5, 2, 70, 11};
  return {
      {"FlipHorizontalRGB24", 0x5be148dc805cb6aeull, in_place(&FlipHorizontalRGB24, rgb24, 1)},
      {"FlipVerticalRGB24", 0xb34d0eddaa28f09full, in_place(&FlipVerticalRGB24, rgb24, 2)},
      {"FlipHorizontalRGB32", 0x41bdb705eac37ad2ull, in_place(&FlipHorizontalRGB32, rgb32, 3)},
      {"FlipVerticalRGB32", 0x248bc976dee7f15cull, in_place(&FlipVerticalRGB32, rgb32, 4)},
      {"FlipHorizontalYUY2", 0x60179f0f179e8e6eull, in_place(&FlipHorizontalYUY2, yuy2, 5)},
      {"FlipHorizontalRGB32Ex", 0xfb7fe5bf0e40b386ull,
       two_buffer(&FlipHorizontalRGB32Ex, rgb32, 6)},
      {"FlipVerticalRGB32Ex", 0xc19e3dff45a44455ull, two_buffer(&FlipVerticalRGB32Ex, rgb32, 7)},
      {"FlipHorizontalYUY2Ex", 0xaaab8d40d7ff797full, two_buffer(&FlipHorizontalYUY2Ex, yuy2, 8)},
      {"Crop24", 0x170fa6b9a7782135ull,
       [=] {
         const auto src = Frame(rgb24, 9);
         auto dst = Frame(196 * 9, 10);
         return Fnv1a(dst, Crop24(src.data(), kW, kH, dst.data(), &rect));
       }},
      {"Crop32", 0x7ac31a0bec438648ull,
       [=] {
         const auto src = Frame(rgb32, 11);
         auto dst = Frame(260 * 9, 12);
         return Fnv1a(dst, Crop32(src.data(), kW, kH, dst.data(), &rect));
       }},
      {"ImageCutRGB24", 0x61e36b2272a672e9ull,
       [=] {
         const auto src = Frame(rgb24, 13);
         auto dst = Frame(rgb24, 14);
         ImageCutRGB24(src.data(), kW, kH, dst.data(), 6, 3);
         return Fnv1a(dst, 0);
       }},
      {"ImageCutRGB32", 0xe37de07cb21e6ccfull,
       [=] {
         const auto src = Frame(rgb32, 15);
         auto dst = Frame(rgb32, 16);
         ImageCutRGB32(src.data(), kW, kH, dst.data(), 7, 2);
         return Fnv1a(dst, 0);
       }},
      {"FillColor", 0x645dfd10f1eda4ccull,
       [=] {
         auto frame = Frame(rgb24, 17);
         return Fnv1a(frame, FillColor(frame.data(), kW, kH, &rect, 0x12A5C3E7u));
       }},
      {"YUY2ToRGB24", 0x8d8be6db5aaa539aull, two_buffer(&YUY2ToRGB24, rgb24, 18)},
      {"YV12ToRGB24", 0xa710b9c3ecf9accfull, two_buffer(&YV12ToRGB24, rgb24, 19)},
      {"RGB32ToRGB24", 0x25cd0397d4a8bb22ull, two_buffer(&RGB32ToRGB24, rgb32, 20)},
      {"RGB24ToRGB32", 0x61e01bbd54f6abfbull, two_buffer(&RGB24ToRGB32, rgb32, 21)},
      {"RGB24ToYUY2", 0x2a0f1ade45ce9050ull, to_yuv(&RGB24ToYUY2, yuy2, 22)},
      {"RGB24ToYV12", 0x19b9b1a4e72e9cf4ull, to_yuv(&RGB24ToYV12, yv12, 23)},
      {"RGB24ToRGBA", 0xb6c1c0fe5faa0f1aull,
       [=] {
         const auto src = Frame(rgb24, 24);
         auto dst = Frame(rgb32, 25);
         return Fnv1a(dst, RGB24ToRGBA(src.data(), dst.data(), kW, kH, 77));
       }},
      {"RGB24ToBGR24", 0x8614f8b36c50bdfaull,
       [=] {
         const auto src = Frame(rgb24, 26);
         auto dst = Frame(rgb24, 27);
         return Fnv1a(dst, RGB24ToBGR24(src.data(), dst.data(), kW, kH, 232));
       }},
  };
}

TEST(Golden, EveryExportGivesTheRecordedBytesOnEveryClass) {
  const int32_t before = prim::ClassIndex();
  bool all_recorded = true;
  std::vector<GoldenCase> cases = Cases();
  for (GoldenCase &c : EffectCases()) cases.push_back(std::move(c));
  for (const GoldenCase &c : cases) {
    for (int cls = 0; cls <= prim::DetectedClass(); ++cls) {
      prim::SetClassIndexForTesting(cls);
      const uint64_t got = c.run();
      if (c.hash == 0) {
        all_recorded = false;
        if (cls == 0)
          std::printf("{\"%s\", 0x%016llxull},\n", c.name, static_cast<unsigned long long>(got));
        continue;
      }
      EXPECT_EQ(got, c.hash) << c.name << " on class " << cls;
    }
  }
  prim::SetClassIndexForTesting(before);
  EXPECT_TRUE(all_recorded) << "record the printed hashes";
}

}  // namespace
}  // namespace framekit

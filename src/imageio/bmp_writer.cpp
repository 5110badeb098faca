#include "imageio/bmp_writer.h"

#include <limits>

#include "primitives/core/wrap.h"

namespace framekit::imageio {
namespace {

constexpr int64_t kMaxFileBytes = std::numeric_limits<uint32_t>::max();

// Little-endian field stores into the header.
void Put16(uint8_t* at, uint32_t value) {
  at[0] = static_cast<uint8_t>(value);
  at[1] = static_cast<uint8_t>(value >> 8);
}
void Put32(uint8_t* at, uint32_t value) {
  Put16(at, value);
  Put16(at + 2, value >> 16);
}

constexpr int64_t RoundUpTo4(int64_t n) { return (n + 3) / 4 * 4; }

// Sink that appends to a vector.
class VectorSink final : public ByteSink {
 public:
  explicit VectorSink(std::vector<uint8_t>& out) : out_(out) {}
  bool Write(const uint8_t* data, size_t size) override {
    out_.insert(out_.end(), data, data + size);
    return true;
  }

 private:
  std::vector<uint8_t>& out_;
};

}  // namespace

std::optional<BmpPlan> PlanBmp(int32_t width, int32_t height, SaveFormat format) {
  if (width < 1 || height < 1) return std::nullopt;
  BmpPlan plan{};
  plan.width = width;
  plan.height = height;
  plan.format = format;
  plan.pixel_bytes = int64_t{width} * static_cast<int32_t>(format);
  // The RGB24 frame uses the aligned row stride; an RGB32 row is already a multiple of 4. The
  // file rows use the same rounding, so for both formats the two strides coincide.
  plan.source_stride = RoundUpTo4(plan.pixel_bytes);
  plan.file_stride = plan.source_stride;
  plan.image_bytes = plan.file_stride * height;
  plan.file_bytes = plan.image_bytes + kBmpHeaderBytes;
  if (plan.file_stride > std::numeric_limits<int32_t>::max() || plan.file_bytes > kMaxFileBytes) {
    return std::nullopt;
  }
  return plan;
}

std::array<uint8_t, kBmpHeaderBytes> BmpHeader(const BmpPlan& plan) {
  std::array<uint8_t, kBmpHeaderBytes> h{};  // reserved, compression and palette counts: 0
  uint8_t* p = h.data();
  // BITMAPFILEHEADER
  p[0] = 'B';
  p[1] = 'M';
  Put32(p + 2, static_cast<uint32_t>(plan.file_bytes));
  Put32(p + 10, kBmpHeaderBytes);
  // BITMAPINFOHEADER; a positive height means bottom-up rows.
  Put32(p + 14, 40);
  Put32(p + 18, static_cast<uint32_t>(plan.width));
  Put32(p + 22, static_cast<uint32_t>(plan.height));
  Put16(p + 26, 1);
  Put16(p + 28, static_cast<uint32_t>(plan.format) * 8);
  Put32(p + 34, static_cast<uint32_t>(plan.image_bytes));
  Put32(p + 38, kBmpPixelsPerMetre);
  Put32(p + 42, kBmpPixelsPerMetre);
  return h;
}

bool WriteBmp(const uint8_t* pixels, const BmpPlan& plan, ByteSink& sink) {
  static constexpr uint8_t kZeros[4] = {};
  const auto header = BmpHeader(plan);
  if (!sink.Write(header.data(), header.size())) return false;
  const auto row_bytes = static_cast<size_t>(plan.pixel_bytes);
  const auto pad_bytes = static_cast<size_t>(plan.file_stride - plan.pixel_bytes);
  // The file's first row is the picture's bottom row: the frame's last row in memory.
  for (int32_t y = plan.height - 1; y >= 0; --y) {
    if (!sink.Write(Offset(pixels, plan.source_stride * y), row_bytes)) return false;
    if (pad_bytes != 0 && !sink.Write(kZeros, pad_bytes)) return false;
  }
  return true;
}

std::vector<uint8_t> EncodeBmp(const uint8_t* pixels, int32_t width, int32_t height,
                               SaveFormat format) {
  std::vector<uint8_t> out;
  const auto plan = PlanBmp(width, height, format);
  if (!plan) return out;
  out.reserve(static_cast<size_t>(plan->file_bytes));
  VectorSink sink(out);
  WriteBmp(pixels, *plan, sink);
  return out;
}

}  // namespace framekit::imageio

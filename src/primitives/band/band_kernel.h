// The band-threshold loop for one vector width. NOLINT(build/header_guard)
//
// Included inside the namespace of each file that instantiates it, so every copy stays inside
// its level. Compiler vector types: the including file's flags decide the instructions. A row
// is taken 3 * kLanes bytes (kLanes pixels) at a time through three masks that keep the
// channel's bytes, then pixel by pixel. The includer provides <cstdint>, <cstring> and band.h.

namespace {

constexpr int kRowVectors = 3;

using Bytes16 = uint8_t __attribute__((vector_size(16)));
using Signed16 = int8_t __attribute__((vector_size(16)));
using Bytes32 = uint8_t __attribute__((vector_size(32)));
using Signed32 = int8_t __attribute__((vector_size(32)));

template <typename Bytes, typename Signed>
Status BandRows(uint8_t* p, int32_t step, Size roi, int32_t channel, uint8_t low, uint8_t high) {
  constexpr int kLanes = static_cast<int>(sizeof(Bytes));
  Bytes mask[kRowVectors];
  uint8_t pattern[kRowVectors * kLanes];
  for (int i = 0; i < kRowVectors * kLanes; ++i) pattern[i] = (i % 3 == channel) ? 0xFF : 0x00;
  std::memcpy(mask, pattern, sizeof(pattern));
  // Unsigned bounds compared as signed bytes with the top bit flipped (one compare each).
  const auto lo = static_cast<int8_t>(low ^ 0x80), hi = static_cast<int8_t>(high ^ 0x80);
  const int64_t groups = roi.width / kLanes;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* row = RowAt(p, step, r);
    for (int64_t g = 0; g < groups; ++g) {
      uint8_t* at = row + g * kRowVectors * kLanes;
      for (int k = 0; k < kRowVectors; ++k) {
        Bytes v;
        std::memcpy(&v, at + k * kLanes, kLanes);
        const Signed x = reinterpret_cast<Signed>(v ^ 0x80);
        v = reinterpret_cast<Bytes>((x > lo) & (x < hi)) & mask[k];
        std::memcpy(at + k * kLanes, &v, kLanes);
      }
    }
    for (int64_t x = groups * kLanes; x < roi.width; ++x) {
      uint8_t* px = row + 3 * x;
      const uint8_t v = px[channel];
      px[0] = px[1] = px[2] = 0;
      px[channel] = (v > low && v < high) ? 255 : 0;
    }
  }
  return ippStsNoErr;
}

}  // namespace

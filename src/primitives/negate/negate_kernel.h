// The negate loop for one vector width. NOLINT(build/header_guard)
//
// Included inside the namespace of each file that instantiates it, so every copy stays inside
// its level; the including file's flags decide the instructions behind the compiler vector type.
// A row is taken one vector at a time, the rest byte by byte. The includer provides <cstdint>,
// <cstring>, checks.h and negate.h.

namespace {

using Bytes16 = uint8_t __attribute__((vector_size(16)));
using Bytes32 = uint8_t __attribute__((vector_size(32)));

template <typename Bytes>
Status NegateRows(uint8_t* frame, int32_t frame_step, uint8_t* copy, int32_t copy_step, Size roi) {
  if (const Status s = CheckTwo(frame, copy, roi); s != ippStsNoErr) return s;
  constexpr int64_t kLanes = sizeof(Bytes);
  const int64_t n = int64_t{roi.width} * 3;
  for (int32_t r = 0; r < roi.height; ++r) {
    uint8_t* f = RowAt(frame, frame_step, r);
    uint8_t* c = RowAt(copy, copy_step, r);
    int64_t i = 0;
    for (; i + kLanes <= n; i += kLanes) {
      Bytes v;
      std::memcpy(&v, f + i, kLanes);
      v = ~v;
      std::memcpy(f + i, &v, kLanes);
      std::memcpy(c + i, &v, kLanes);
    }
    for (; i < n; ++i) c[i] = f[i] = static_cast<uint8_t>(255 - f[i]);
  }
  return ippStsNoErr;
}

}  // namespace

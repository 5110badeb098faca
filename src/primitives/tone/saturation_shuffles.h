// pshufb controls that split 16 three-byte pixels (48 bytes in three registers) into their
// channels and put them back. NOLINT(build/header_guard)
//
// Included inside the namespace of each per-ISA file at SSSE3 or above, so every copy stays
// inside its level. The includer provides <cstdint>.

namespace {

struct Control16 {
  uint8_t b[16];
};

// Channel c of pixel j lives at byte 3j + c of the 48: split control for register i picks the
// bytes of channel c that lie in it (0x80 elsewhere).
constexpr Control16 SplitControl(int c, int i) {
  Control16 m{};
  for (int j = 0; j < 16; ++j) {
    const int src = 3 * j + c;
    m.b[j] = static_cast<uint8_t>(src / 16 == i ? src % 16 : 0x80);
  }
  return m;
}

// Output register o, byte j holds channel (16o + j) % 3 of pixel (16o + j) / 3: join control
// for channel c picks from that channel's register.
constexpr Control16 JoinControl(int o, int c) {
  Control16 m{};
  for (int j = 0; j < 16; ++j) {
    const int at = 16 * o + j;
    m.b[j] = static_cast<uint8_t>(at % 3 == c ? at / 3 : 0x80);
  }
  return m;
}

alignas(16) constexpr Control16 kSplit[3][3] = {
    {SplitControl(0, 0), SplitControl(0, 1), SplitControl(0, 2)},
    {SplitControl(1, 0), SplitControl(1, 1), SplitControl(1, 2)},
    {SplitControl(2, 0), SplitControl(2, 1), SplitControl(2, 2)}};
alignas(16) constexpr Control16 kJoin[3][3] = {
    {JoinControl(0, 0), JoinControl(0, 1), JoinControl(0, 2)},
    {JoinControl(1, 0), JoinControl(1, 1), JoinControl(1, 2)},
    {JoinControl(2, 0), JoinControl(2, 1), JoinControl(2, 2)}};

inline __m128i Control(const Control16& m) {
  return _mm_load_si128(reinterpret_cast<const __m128i*>(m.b));
}

// in[3]: 48 bytes of pixels; out[c]: channel c of the 16 pixels.
inline void SplitChannels(const __m128i in[3], __m128i out[3]) {
  for (int c = 0; c < 3; ++c) {
    out[c] = _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(in[0], Control(kSplit[c][0])),
                                       _mm_shuffle_epi8(in[1], Control(kSplit[c][1]))),
                          _mm_shuffle_epi8(in[2], Control(kSplit[c][2])));
  }
}

inline void JoinChannels(const __m128i ch[3], __m128i out[3]) {
  for (int o = 0; o < 3; ++o) {
    out[o] = _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(ch[0], Control(kJoin[o][0])),
                                       _mm_shuffle_epi8(ch[1], Control(kJoin[o][1]))),
                          _mm_shuffle_epi8(ch[2], Control(kJoin[o][2])));
  }
}

}  // namespace

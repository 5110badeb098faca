// Overlay drawing and keying on caller-owned frames (bytes blue, green, red; RGB32 adds a fourth
// byte that serves as alpha here). Positions are not clipped and no pointer is checked: the
// caller keeps the overlay inside the destination.
#pragma once

#include <cstdint>

namespace framekit::compose {

// Places an overlay of width x height pixels whose rows are `src_step` bytes apart at pixel
// (x, y) of a destination whose rows are `dst_step` bytes apart.
struct Placement {
  const uint8_t* src;
  int32_t width, height, src_step;
  uint8_t* dst;
  int32_t dst_step, x, y;
};

// Opaque RGB24 copy through the copy primitive; its status.
int32_t CopyRGB24(const Placement& p);

// Per-pixel alpha blend of RGB32 onto RGB24, the alpha scaled by t (0..255) or, with t = 256, as
// it is. `fast` (both widths multiples of 4) rounds the single-precision products to nearest
// even; otherwise each channel (R, G, B) becomes c + (((s - c) * a) >> 8) with an arithmetic
// shift, a = floor(A * t / 256).
void BlendRGB32OnRGB24(const Placement& p, int32_t t, bool fast);

// Constant-transparency blend RGB24 onto RGB24, the same two roundings with t for the alpha.
void BlendRGB24(const Placement& p, int32_t t, bool fast);

// RGB24 into RGB32: colour bytes copied, the fourth byte set to 255.
void CopyRGB24IntoRGB32(const Placement& p);

// The over composite of an RGB32 overlay on the destination's first pixels into the work frame
// at (x, y), then the work frame's work_step * work_height bytes (a 32-bit product; nothing when
// it is not above 0) copied over the destination.
void CompositeRGB32(const Placement& p, uint8_t* work, int32_t work_step, int32_t work_height);

// Fourth byte of every pixel of a width x height RGB32 frame minus delta: clamped to 0..255, or
// on the fast path the saturating loss of delta's low byte for the 16-pixel blocks of each row.
void ShiftAlpha(uint8_t* frame, int32_t width, int32_t height, int32_t delta);

// Colour key with the library's fixed key (blue 33, green 151, red 54); the primitive's status.
int32_t ColorKeyRGB24(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                      int32_t src2_step, uint8_t* dst, int32_t dst_step, int32_t width,
                      int32_t height);

// Chroma key weights: map[0] = low, map[1] = high, map[i] for i in 2..510 = 1 up to low, then
// (high - i) / (high - low), 0 from high on. Elements 511 and 512 are not written.
void LoadAlphaMap(double* map, int32_t low, int32_t high);

// Soft key over width * height packed pixels (row padding not skipped).
void ChromaKey(uint8_t* frame, int32_t width, int32_t height, const uint8_t* background,
               const double* map, int32_t key_channel);

}  // namespace framekit::compose

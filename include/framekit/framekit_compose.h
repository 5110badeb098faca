/*
 * framekit: motion detection, overlay drawing and keying of the flat C interface. Part of
 * framekit/framekit.h, which includes it where these families belong and whose types,
 * conventions and results apply; include that header instead.
 */
#ifndef FRAMEKIT_FRAMEKIT_COMPOSE_H_
#define FRAMEKIT_FRAMEKIT_COMPOSE_H_

#ifndef FRAMEKIT_FRAMEKIT_H_
#error "include framekit/framekit.h, which includes this header"
#endif

/* ---- Motion detection -------------------------------------------------------------------- */
/* RGB24 frames read as packed pixels (pixel i at byte 3 * i, no row padding); maps of one byte a
 * pixel. No state; nothing is checked except the divisions by zero named below, which return
 * without writing. */

/* Writes the difference of frames a and b into diff_map (pixel_count bytes) and returns its mean
 * (sum / pixel_count). With luminance_mode, or all three channel flags set: |(b + g + r) / 3 of a
 * - the same of b|, each mean truncated. With one or two flags: |the sum of the chosen channels'
 * differences| / 3, always divided by 3 (one channel reaches at most 85). With none: a map of
 * zeros and 0. A pixel_count below 1 returns 0 and writes nothing. */
FRAMEKIT_EXPORT uint64_t MotionDetectionCompareImages(const uint8_t* frame_a,
                                                      const uint8_t* frame_b, uint8_t* diff_map,
                                                      uint8_t luminance_mode, uint8_t use_red,
                                                      uint8_t use_green, uint8_t use_blue,
                                                      int32_t pixel_count) FRAMEKIT_NOEXCEPT;
/* Averages a width x height diff_map over columns x rows cells of (width / columns) x
 * (height / rows) pixels into matrix (columns * rows bytes, cell (c, r) at r * columns + c). A
 * cell's byte is the low byte of its sum / (its pixels + its columns): every column adds one to
 * the divisor, so a 16 x 16 cell of 255 gives 240 (thresholds are calibrated on this). Pixels right
 * of columns * cell width and below rows * cell height belong to no cell. Writes nothing when
 * columns or rows is below 1 or columns exceeds width (a cell with no columns). */
FRAMEKIT_EXPORT void MotionDetectionBuildMatrix(int32_t width, int32_t height, int32_t columns,
                                                int32_t rows, uint8_t* matrix,
                                                const uint8_t* diff_map) FRAMEKIT_NOEXCEPT;
/* Tints pixel i of frame where levels[i] > threshold (signed compare): colour_mode 0 keeps red
 * (blue and green set to 0), 1 keeps green, any other keeps blue. Returns pixel_count, or 0 when
 * it is below 1. */
FRAMEKIT_EXPORT int64_t MotionDetectionHighlight(uint8_t* frame, const uint8_t* levels,
                                                 int32_t pixel_count, int32_t colour_mode,
                                                 int32_t threshold) FRAMEKIT_NOEXCEPT;

/* ---- Overlay drawing --------------------------------------------------------------------- */
/* An overlay (src, src_width x src_height) placed in place onto a destination at pixel (x, y):
 * its row r lands on destination row y + r (rows in memory order). Nothing is clipped or
 * checked: the caller keeps the overlay inside the destination (negative positions are used as
 * given). Strides are the aligned row stride of each buffer's own width (a 4-byte row is exactly
 * 4 * width) unless the S variants pass them; dst_height is never used.
 *
 * Blends: with c a destination channel, s the overlay's and a the weight (the overlay's fourth
 * byte, the constant t, or floor(A * t / 256) for the scaled form), when src_width and dst_width
 * are both multiples of 4 (signed remainder) c becomes c + round((s - c) * a / 256), rounded to
 * nearest with ties to even (the single-precision result, computed exactly); otherwise
 * c + (((s - c) * a) >> 8), an arithmetic shift. The two may differ by one; which runs depends
 * only on the widths. Neither replaces a pixel fully: a = 255, s = 255, c = 0 gives 254. Results
 * are the same on every processor. */

/* Opaque RGB24 copy; the copy primitive's status (0, or -8/-6 for a null pointer or a size below
 * 1). */
FRAMEKIT_EXPORT int32_t Draw_RGB24OnRGB24(const uint8_t* src, int32_t src_width, int32_t src_height,
                                          uint8_t* dst, int32_t dst_width, int32_t dst_height,
                                          int32_t x, int32_t y) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT int32_t Draw_RGB24OnRGB24S(const uint8_t* src, int32_t src_width,
                                           int32_t src_height, int32_t src_stride, uint8_t* dst,
                                           int32_t dst_width, int32_t dst_height,
                                           int32_t dst_stride, int32_t x,
                                           int32_t y) FRAMEKIT_NOEXCEPT;
/* RGB32 onto RGB24 by the overlay's fourth byte (the destination has none). The S variant's
 * rounding still follows the widths, not the strides. */
FRAMEKIT_EXPORT void Draw_RGB32OnRGB24(const uint8_t* src, int32_t src_width, int32_t src_height,
                                       uint8_t* dst, int32_t dst_width, int32_t dst_height,
                                       int32_t x, int32_t y) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void Draw_RGB32OnRGB24S(const uint8_t* src, int32_t src_width, int32_t src_height,
                                        int32_t src_stride, uint8_t* dst, int32_t dst_width,
                                        int32_t dst_height, int32_t dst_stride, int32_t x,
                                        int32_t y) FRAMEKIT_NOEXCEPT;
/* RGB24 into RGB32: colour bytes copied, the fourth byte set to 255. */
FRAMEKIT_EXPORT void Draw_RGB24OnRGB32(const uint8_t* src, int32_t src_width, int32_t src_height,
                                       uint8_t* dst, int32_t dst_width, int32_t dst_height,
                                       int32_t x, int32_t y) FRAMEKIT_NOEXCEPT;
/* Constant transparency t (0 leaves the destination, 255 keeps 1/256 of it). */
FRAMEKIT_EXPORT void Draw_RGB24OnRGB24_Transp(const uint8_t* src, int32_t src_width,
                                              int32_t src_height, uint8_t* dst, int32_t dst_width,
                                              int32_t dst_height, int32_t x, int32_t y,
                                              uint8_t transparency) FRAMEKIT_NOEXCEPT;
/* RGB32 onto RGB24 by floor(A * t / 256) (at most 254). */
FRAMEKIT_EXPORT void Draw_RGB32OnRGB24_Transp(const uint8_t* src, int32_t src_width,
                                              int32_t src_height, uint8_t* dst, int32_t dst_width,
                                              int32_t dst_height, int32_t x, int32_t y,
                                              uint8_t transparency) FRAMEKIT_NOEXCEPT;
/* The over composite of the RGB32 overlay onto the destination's own top-left pixels (whatever x
 * and y are), each weighted by its fourth byte, written at (x, y) of work (work_width x
 * work_height RGB32); then work_width * 4 * work_height bytes of work are copied over dst. With
 * d(v) = (v + (v >> 8) + 1) >> 8: colour = d(A aA) + d(d(B aB) (255 - aA)) (left multiplied by
 * alpha), fourth byte = aA + d(aB (255 - aA)). */
FRAMEKIT_EXPORT void Draw_RGB32OnRGB32(const uint8_t* src, int32_t src_width, int32_t src_height,
                                       uint8_t* dst, int32_t dst_width, int32_t dst_height,
                                       int32_t x, int32_t y, uint8_t* work, int32_t work_width,
                                       int32_t work_height) FRAMEKIT_NOEXCEPT;
/* Subtracts delta from the fourth byte of every pixel of a width x height RGB32 frame (despite
 * the name), clamped to 0..255, so a negative delta raises it. When width is a multiple of 4 the
 * first 16 * (width / 16) pixels of each row instead lose delta's low byte with saturation at 0
 * (-10 subtracts 246, 300 subtracts 44); the rest of the row is clamped as above. Nothing
 * happens when width or height is below 1. */
FRAMEKIT_EXPORT void Draw_RGB24_TraspChange(uint8_t* frame, int32_t width, int32_t height,
                                            int32_t delta) FRAMEKIT_NOEXCEPT;

/* ---- Colour and chroma keying ------------------------------------------------------------ */

/* dst pixel = the src2 (background) pixel where the src1 pixel is exactly the key (blue 33,
 * green 151, red 54), else the src1 pixel, over width x height RGB24 pixels with the given steps.
 * dst may be src1 or src2. Returns 0; -8 a null pointer, -6 a side below 1, -14 a step below 1
 * (checked in that order, nothing written). */
FRAMEKIT_EXPORT int32_t ColorKeyRGB24(const uint8_t* src1, int32_t src1_step, const uint8_t* src2,
                                      int32_t src2_step, uint8_t* dst, int32_t dst_step,
                                      int32_t width, int32_t height) FRAMEKIT_NOEXCEPT;
/* Soft key in place over width * height packed RGB24 pixels (row padding is walked over, not
 * skipped). Key channel K: 1 green, 2 blue, else red. A pixel whose K is strictly above both other
 * channels O1, O2 takes f = alpha_map[2K + 2 - O1 - O2] (index 4..512) and each byte becomes
 * trunc(background * (1 - f) + frame * f) in double precision, stored as its low 8 bits; other
 * pixels stay. Returns at once for width or height 0 or a null background. The two unused
 * arguments are ignored. */
FRAMEKIT_EXPORT void ChromaKey(uint8_t* frame, int32_t width, int32_t height,
                               const uint8_t* background, const double* alpha_map, int32_t unused1,
                               int32_t unused2, int32_t key_channel) FRAMEKIT_NOEXCEPT;
/* Fills a 513-double map: [0] = low, [1] = high, [i] for i in 2..510 = 1.0 up to low, then
 * (high - i) / (high - low), 0.0 from high on. [511] and [512] are the caller's (normally 0.0:
 * full background; a pure key colour reads [512]). A null map is ignored. */
FRAMEKIT_EXPORT void ChromaKeyLoadAlphaMap(double* alpha_map, int32_t low,
                                           int32_t high) FRAMEKIT_NOEXCEPT;

#endif /* FRAMEKIT_FRAMEKIT_COMPOSE_H_ */

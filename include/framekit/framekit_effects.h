/*
 * framekit: the video effects of the flat C interface (channel and tone, noise and texture, blur
 * and sharpen, motion and transitions). Part of framekit/framekit.h, which includes it where the
 * effects belong and whose types, conventions and results apply; include that header instead.
 */
#ifndef FRAMEKIT_FRAMEKIT_EFFECTS_H_
#define FRAMEKIT_FRAMEKIT_EFFECTS_H_

#ifndef FRAMEKIT_FRAMEKIT_H_
#error "include framekit/framekit.h, which includes this header"
#endif

/* ---- Channel and tone effects ------------------------------------------------------------ */
/* RGB24 frames (bytes blue, green, red) changed in place. No pointer is checked: a null or short
 * frame is the caller's fault. Rows are packed (3 * width bytes, no padding) for every effect
 * here except EffectGreyscale and EffectInvert, which use the aligned row stride; for a width
 * that is not a multiple of 4 the two groups therefore expect different layouts.
 *
 * Width paths. EffectLightness, EffectDarkness, EffectContrast and EffectSaturation test
 * width % 4 == 0 (a signed remainder: a negative multiple of 4 passes, other negative widths do
 * not). When it holds, the frame is handled as n = width * height pixels (a 32-bit product that
 * may wrap; nothing happens when it is 0 or less): the first 16 * (n / 16) pixels in blocks of 16
 * in single precision rounded to nearest even, the last n % 16 with the truncating formula of the
 * effect. Otherwise a general path runs that truncates. The two paths can differ by one (more
 * for saturation); both are intended. Results are the same on every processor. */

/* Keeps one channel of width * height pixels (a wrapped 32-bit count; 0 or less does nothing)
 * and sets the two others to 0. Packed. */
FRAMEKIT_EXPORT void EffectRed(uint8_t* frame, int32_t width, int32_t height) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectGreen(uint8_t* frame, int32_t width, int32_t height) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectBlue(uint8_t* frame, int32_t width, int32_t height) FRAMEKIT_NOEXCEPT;

/* Band threshold on one channel: 255 where low < value < high (open band), else 0; the two
 * other channels become 0. low >= high - 1 turns the frame black. Packed rows; nothing happens
 * when width or height is below 1. */
FRAMEKIT_EXPORT void EffectFilterRed(uint8_t* frame, int32_t width, int32_t height, uint8_t low,
                                     uint8_t high) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectFilterGreen(uint8_t* frame, int32_t width, int32_t height, uint8_t low,
                                       uint8_t high) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectFilterBlue(uint8_t* frame, int32_t width, int32_t height, uint8_t low,
                                      uint8_t high) FRAMEKIT_NOEXCEPT;

/* Grey: (3736 * blue + 19235 * green + 9798 * red + 16384) >> 15 into all three bytes (white
 * stays 255). Stride: aligned row stride. scratch: at least width * height bytes, not shared with
 * another call; it receives the grey bytes (width bytes a row). Result: 0, -8 null frame or
 * scratch, -6 width or height <= 0 (frame unchanged). */
FRAMEKIT_EXPORT int32_t EffectGreyscale(uint8_t* frame, int32_t width, int32_t height,
                                        uint8_t* scratch) FRAMEKIT_NOEXCEPT;

/* Negative: every byte becomes 255 - value. Stride: aligned row stride. scratch: at least
 * 3 * width * height bytes, not overlapping the frame nor shared with another call; it is filled
 * with white and receives the negative (3 * width bytes a row). Result: 0, -8 null frame or
 * scratch (with a null frame the scratch is still filled with white), -6 width or height <= 0. */
FRAMEKIT_EXPORT int32_t EffectInvert(uint8_t* frame, int32_t width, int32_t height,
                                     uint8_t* scratch) FRAMEKIT_NOEXCEPT;

/* Toward white by amount L (L <= 0: no change; above 255 counts as 255). General path: each byte
 * v becomes v + ((255 - v) * L) / 255, truncated, over packed rows (nothing when height < 1).
 * Fast path (blocks): v + round_even((255 - v) * (L / 255)) in single precision, at most 255.
 * Amount 255 turns the frame white on both paths. */
FRAMEKIT_EXPORT void EffectLightness(uint8_t* frame, int32_t width, int32_t height,
                                     int32_t amount) FRAMEKIT_NOEXCEPT;

/* Toward black by amount L (L <= 0: no change; above 255 counts as 255). General path:
 * v - (v * L) / 255, truncated, over packed rows. Fast path (blocks): v - round_even(v * (L / 255))
 * in single precision, at least 0. */
FRAMEKIT_EXPORT void EffectDarkness(uint8_t* frame, int32_t width, int32_t height,
                                    int32_t amount) FRAMEKIT_NOEXCEPT;

/* Contrast K about 128 with the factor f = (K + 255) * 259 / ((259 - K) * 255); K = 0 does
 * nothing. Both paths walk n = width * height pixels (wrapped; n < 1 does nothing). General path:
 * clamp(trunc((v - 128) * f + 128), 0, 255) in double precision. Fast path: blocks
 * round_even((v - 128) * f) saturated to 16 bits, plus 128, clamped to 0..255; tail as the
 * general formula in single precision. K is not checked: -255 gives flat 128, K = 259 divides by
 * zero (the frame turns black), K > 259 inverts about 128. */
FRAMEKIT_EXPORT void EffectContrast(uint8_t* frame, int32_t width, int32_t height,
                                    int32_t contrast) FRAMEKIT_NOEXCEPT;

/* Saturation S about the pixel's mean; 255 does nothing, 0 gives grey, above 255 strengthens
 * colour. General path (packed rows): m = (B + G + R) / 3 truncated, each channel
 * m + ((c - m) * S) / 255 with a 32-bit signed product and truncating division, kept as its low
 * 8 bits (it may wrap, deliberately). Fast path (blocks): m = round_even((B + G + R) * 0.33333334),
 * each channel m + round_even((c - m) * (S / 255)) saturated to 0..255. */
FRAMEKIT_EXPORT void EffectSaturation(uint8_t* frame, int32_t width, int32_t height,
                                      uint32_t saturation) FRAMEKIT_NOEXCEPT;

/* Posterize by level P (0 does nothing): each byte v becomes (v / P) * (P % 256), signed 32-bit
 * division, low 8 bits kept. P = 64 maps 0..63 to 0, 64..127 to 64 and so on; P = 1 changes
 * nothing; P > 255 turns the frame black; a negative P acts as its magnitude. Packed rows.
 * Done in place without a temporary copy (no allocation). */
FRAMEKIT_EXPORT void EffectPosterize(uint8_t* frame, int32_t width, int32_t height,
                                     int32_t level) FRAMEKIT_NOEXCEPT;

/* Solarize: a pixel whose mean (B + G + R) / 3 exceeds threshold T (signed) has every byte
 * inverted. T = 0 does nothing (it is not "invert everything"); a negative T inverts every pixel.
 * Packed rows; nothing happens when width or height is below 1. */
FRAMEKIT_EXPORT void EffectSolorize(uint8_t* frame, int32_t width, int32_t height,
                                    int32_t threshold) FRAMEKIT_NOEXCEPT;

/* ---- Noise and texture effects ----------------------------------------------------------- */
/* RGB24 frames changed in place, packed rows (3 * width bytes). No pointer is checked.
 *
 * Random sources. Scalar draws come from the library's own copy of the C runtime generator (per
 * thread: state = state * 214013 + 2531011, draw = (state >> 16) & 0x7FFF, state 1 until seeded),
 * the same on every platform. The noise fast paths also use a four-lane generator shared by the
 * whole process (zero at load, never reseeded, lanes stepped by the multipliers 214013, 17405,
 * 214013, 69069 and increments 2531011, 10395331, 13737667, 1); concurrent calls may interleave
 * its steps, so noise is reproducible only from one thread.
 *
 * Noise, amount A, width paths as for the tone effects:
 *   fast path (width % 4 == 0): the frame is one run of n = width * height pixels; each group of
 *   16 takes batches of sixteen bytes from the four-lane generator (four steps; each lane value
 *   v gives round_even(float((v >> 16) & 0x7FFF) * (A / 32767.0f)) saturated to int16 then
 *   0..255; bytes in the order of steps 2, 1, 4, 3); a byte r adds max(0, r - half) with
 *   saturation, half = (A / 2) mod 256. The last n % 16 pixels take scalar draws
 *   clamp(rand % (A + 1) - half, 0, 255), added with saturation. Only brightens.
 *   general path: each draw is (rand % (A + 1) - A / 2) mod 256, added mod 256 (wraps);
 *   nothing when height < 1.
 * A = 0 changes nothing; A = -1 (a draw modulo 0) changes nothing either. */

/* Independent noise per channel: three batches per group (blue, green, red bytes of the 16
 * pixels), three tail draws per pixel (blue, green, red); general path three draws per pixel
 * (red, green, blue). The fast path first reseeds the calling thread's scalar source with 0, so
 * its tail repeats from call to call; the general path does not. */
FRAMEKIT_EXPORT void EffectColorNoise(uint8_t* frame, int32_t width, int32_t height,
                                      int32_t amount) FRAMEKIT_NOEXCEPT;
/* One noise value per pixel, added to all three bytes (one batch per group, one draw per tail
 * or general-path pixel). Never reseeds. */
FRAMEKIT_EXPORT void EffectMonoNoise(uint8_t* frame, int32_t width, int32_t height,
                                     int32_t amount) FRAMEKIT_NOEXCEPT;

/* Wavy displacement, scale S, period T: with sx = -(sin((x mod T) / S) * S) per column and
 * cy = cos((y mod T) / S) * S per row, pixel (x, y) is copied to (|x + sx + cy|, |y + cy + sx|)
 * (each rounded by truncation, plus 1 when the dropped fraction is above 0.5) when that lies in
 * the frame; later pixels overwrite earlier ones, and pixels nothing reaches become black. Sine
 * and cosine are the library's own (the same on every platform). Nothing happens for T = 0, a
 * width or height below 1, or when the temporary frame cannot be allocated. */
FRAMEKIT_EXPORT void EffectMarble(uint8_t* frame, int32_t width, int32_t height, double scale,
                                  int32_t period) FRAMEKIT_NOEXCEPT;

/* Random neighbours, amount A: columns outer, rows inner, each pixel draws r = rand % (A + 1),
 * dx = r - rand % (2r + 1), dy = r - rand % (2r + 1) and takes the current value of pixel
 * (x + dx, y + dy) when that lies in the frame (so it may take a value moved earlier in the same
 * call). Nothing happens for A = 0, A = -1 or a width below 1. */
FRAMEKIT_EXPORT void EffectSpray(uint8_t* frame, int32_t width, int32_t height,
                                 int32_t amount) FRAMEKIT_NOEXCEPT;

/* Blocks of B x B pixels from the rectangle's top-left corner on, each taking the colour of its
 * top-left pixel; blocks at the right and bottom are cut short. B <= 1 changes nothing, and so
 * does a failure to allocate one row of memory. */
FRAMEKIT_EXPORT void EffectMosaic(uint8_t* frame, int32_t width, int32_t height,
                                  int32_t block) FRAMEKIT_NOEXCEPT;
/* EffectMosaic inside rect (copied before use; null: nothing happens). A rectangle empty across
 * (left >= right) still covers its column left, and one empty downwards its row top. Pixels
 * outside the frame (width x height) are neither read nor written, and a block whose top-left
 * pixel lies outside the frame leaves its pixels as they are. */
FRAMEKIT_EXPORT void EffectMosaicROI(uint8_t* frame, int32_t width, int32_t height, int32_t block,
                                     const FrameKitRect* rect) FRAMEKIT_NOEXCEPT;

/* ---- Blur and sharpen -------------------------------------------------------------------- */
/* Box blur of a packed RGB24 frame in place: a horizontal pass, then a vertical pass, each the
 * mean of the window [i - r, i + r] clipped to the frame (2r + 1 pixels inside it). The
 * horizontal pass truncates; it builds each row in scratch (at least 3 * width bytes), which is
 * first cleared to scratch_size bytes and ends holding the last row. Vertical pass:
 *   fast path (width % 4 == 0): rounds float(sum) * float(1 / n) to nearest even, except in the
 *   last width % 16 columns, which truncate; uses its own zeroed buffer of
 *   max(width, height) * 48 bytes (skipped if it cannot be allocated).
 *   general path: truncates; clears scratch (at least 3 * height bytes) first and leaves the last
 *   column's results in it.
 * A pass is skipped when scratch is null or smaller than it needs, when the frame is null, when
 * width or height is below 1, and when the radius is negative (kernel size below -1). */

/* Fast path: radius 6 (a 13-pixel window) both ways. General path: radius 2 (5 pixels). So
 * widths that are multiples of 4 blur far more strongly. */
FRAMEKIT_EXPORT void EffectBlur(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch,
                                int32_t scratch_size) FRAMEKIT_NOEXCEPT;
/* Radius kernel / 2 (an even kernel gives a window of kernel + 1). Fast path: flag_b != 0 runs
 * the horizontal pass, then flag_a != 0 the vertical one. General path: flag_a != 0 horizontal,
 * then flag_b != 0 vertical. */
FRAMEKIT_EXPORT void EffectBlurEx(uint8_t* frame, int32_t width, int32_t height, int32_t kernel,
                                  int32_t flag_a, int32_t flag_b, uint8_t* scratch,
                                  int32_t scratch_size) FRAMEKIT_NOEXCEPT;

/* Sharpen, aligned row stride: every byte c of frame rows 1 .. height - 3, pixels 1 .. width
 * (the last one past the row's pixels), becomes clamp(round_half_even((17c - sum of the 3 x 3
 * same-channel window) / 8), 0, 255) in scratch (same layout as the frame); then the first
 * height - 3 rows of scratch are copied over the frame. So frame row 0 and the first pixel of
 * every copied row come from whatever scratch held, and the last three rows are unchanged. The
 * filter reads frame rows 0 .. height - 2, pixels 0 .. width + 1 (into the next row's bytes); for
 * width 1 the last byte of that lies past the frame and is read as the frame's last byte instead.
 * Nothing happens for a null pointer, a width below 1 or a height below 4. */
FRAMEKIT_EXPORT void EffectSharpen(uint8_t* frame, int32_t width, int32_t height,
                                   uint8_t* scratch) FRAMEKIT_NOEXCEPT;

/* ---- Motion and transition effects ------------------------------------------------------ */
/* RGB24 frames of packed rows (3 * width bytes), changed in place; nothing is returned.
 *
 * EffectZoom: zoom_x and zoom_y both exactly 1.0, or a null scratch, do nothing. Otherwise the
 * crop of trunc(width / zoom_x) x trunc(height / zoom_y) pixels whose corner is the spare width
 * (height) halved plus centre_x (centre_y), clamped to 0 .. spare and multiplied by the zoom
 * twice (the resize divides it by the scale once: the picture moves by offset * zoom pixels), is
 * resized (cubic) onto the whole scratch frame, which is cleared first (3 * width * height
 * bytes) and then copied over the frame. buffer and *buffer_size are a work-buffer cache as for
 * ResizeRGB24, except that buffer is passed by value: the caller's pointer is never updated,
 * the size may be; when *buffer_size is 0 on entry the buffer held at the end is released, so a
 * call without a cached buffer leaves nothing allocated. The resize works on aligned rows: for
 * widths whose 3 * width is not a multiple of 4 the frame's bytes are read as rows of the
 * aligned stride (zeros past the frame) and the first 3 * width * height bytes of the aligned
 * result are what the scratch frame, and then the frame, receive (a sheared picture); nothing
 * outside the frame and the scratch is read or written.
 * EffectPan: the same with the crop moving from the start rectangle to the end one as time goes
 * from start_time to end_time (any unit; progress not clamped; widths and heights clamped to the
 * frame's); the fifth argument is ignored. Equal times give a meaningless crop, not a crash.
 * EffectShakeDown: shift = height / divisor; even columns move shift rows toward row 0, odd
 * columns shift rows away, the vacated rows keeping their content. A divisor of 0, or a shift
 * of 0, height or below 0, changes nothing.
 * EffectMirrorDown: the top half of the rows reflected onto the bottom half.
 * EffectMirrorRight: the left half of each row reflected onto the right half.
 * EffectFadeInOut: amount = trunc(p * 255) (fade_in 0: darker as time goes on) or
 * trunc((1 - p) * 255), p = (current - start) / (end - start), applied by the general darkness
 * pass whatever the width (EffectDarkness for widths that are not multiples of 4). */
FRAMEKIT_EXPORT void EffectZoom(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch,
                                double zoom_x, double zoom_y, int32_t centre_x, int32_t centre_y,
                                uint8_t* buffer, int32_t* buffer_size) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectPan(uint8_t* frame, int32_t width, int32_t height, uint8_t* scratch,
                               void* unused, int32_t start_x, int32_t start_y,
                               int32_t start_width, int32_t start_height, int32_t end_x,
                               int32_t end_y, int32_t end_width, int32_t end_height,
                               int64_t start_time, int64_t end_time, int64_t current_time,
                               uint8_t* buffer, int32_t* buffer_size) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectShakeDown(uint8_t* frame, int32_t width, int32_t height,
                                     int32_t divisor) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectMirrorDown(uint8_t* frame, int32_t width,
                                      int32_t height) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectMirrorRight(uint8_t* frame, int32_t width,
                                       int32_t height) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void EffectFadeInOut(uint8_t* frame, int32_t width, int32_t height,
                                     int64_t start_time, int64_t end_time, int64_t current_time,
                                     int32_t fade_in) FRAMEKIT_NOEXCEPT;

#endif /* FRAMEKIT_FRAMEKIT_EFFECTS_H_ */

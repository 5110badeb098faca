/*
 * framekit: per-frame video processing, flat C interface.
 *
 * Frames belong to the caller: a pointer to packed pixels plus width and height in pixels as
 * 32-bit signed integers. Nothing keeps a frame pointer after a call returns, and no frame
 * function allocates.
 *
 * Pixel formats
 *   RGB24  3 bytes a pixel: blue, green, red.
 *   RGB32  4 bytes a pixel: blue, green, red, fourth byte (alpha or unused).
 *   YUY2   packed 4:2:2, groups of Y0, U, Y1, V for two pixels.
 *
 * Row strides (32-bit signed arithmetic, truncating division). Each function names its rule:
 *   aligned bitmap stride    ((width * bits + 31) / 32) * 4, bits 24, 32 or 16 (YUY2);
 *                            0 for width 0.
 *   aligned row stride       ((n - 1) / 4) * 4 + 4 for a row of n = 3 * width (RGB24) or
 *                            4 * width (RGB32) bytes; 4 for width 0.
 *   packed                   bytes per pixel * width.
 * The aligned rules agree for every width >= 1: the row bytes rounded up to a multiple of 4.
 *
 * Orientation: rows are indexed in memory order (row 0 is the first row in memory).
 *
 * Rectangles are FrameKitRect (laid out like the Windows RECT): right and bottom exclusive.
 * Colours are 0x00RRGGBB: bits 0-7 go to pixel byte 0 (blue), 8-15 to byte 1, 16-23 to byte 2;
 * bits 24-31 are ignored.
 *
 * Results: functions that return a status return the status of the last primitive they call:
 *   0 success, 20 Init on a processor of another vendor, 35 odd size of a 4:2:0 conversion,
 *   36 Init on a processor that cannot be identified, -6 size error (width or height <= 0, or a
 *   flip about an axis along which the frame has one row or column), -8 null pointer,
 *   -21 flip axis other than 0, 1 or 2.
 * Nothing checks a rectangle, a cut size or a stride against the frame: a region outside the
 * frame reads or writes outside the caller's buffer. Bytes of a row past its pixels (stride
 * padding) are never written.
 */
#ifndef FRAMEKIT_FRAMEKIT_H_
#define FRAMEKIT_FRAMEKIT_H_

#include <stdint.h>
#ifndef __cplusplus
#include <uchar.h> /* char16_t */
#endif

/* Windows: the names come from the DLL (the library itself and programs that link its objects
 * directly define FRAMEKIT_NO_DLLIMPORT). Elsewhere: default visibility, the version script
 * decides what is exported. */
#if defined(_WIN32)
#if defined(FRAMEKIT_NO_DLLIMPORT)
#define FRAMEKIT_EXPORT
#else
#define FRAMEKIT_EXPORT __declspec(dllimport)
#endif
#else
#define FRAMEKIT_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#define FRAMEKIT_NOEXCEPT noexcept
#else
#define FRAMEKIT_NOEXCEPT
#endif

/* A rectangle laid out like the Windows RECT. */
typedef struct FrameKitRect {
  int32_t left;
  int32_t top;
  int32_t right;  /* exclusive */
  int32_t bottom; /* exclusive */
} FrameKitRect;

/* A size in pixels, passed by value: width then height. */
typedef struct FrameKitSize {
  int32_t width;
  int32_t height;
} FrameKitSize;

/* A region by its corner and size, as the primitives take it. */
typedef struct FrameKitRegion {
  int32_t x;
  int32_t y;
  int32_t width;
  int32_t height;
} FrameKitRegion;

/* ---- Initialisation ---------------------------------------------------------------------- */

/* Identifies the processor and selects the processor class (0-6) whose primitive variants every
 * later call uses; until the first call every primitive runs its baseline (class 0) variant.
 * Returns 0 on a "GenuineIntel" processor and 20 on any other vendor (the chosen class is in
 * force either way), 36 if the processor cannot be identified (class 0). May be called again; it
 * stores the same class. Call it before frame functions run on other threads: the class is
 * stored without a lock. */
FRAMEKIT_EXPORT int32_t Init(void) FRAMEKIT_NOEXCEPT;

/* Calls Init and returns its result. */
FRAMEKIT_EXPORT int32_t KXDInit(void) FRAMEKIT_NOEXCEPT;

/* ---- Primitive memory and copy ----------------------------------------------------------- */

/* Allocates an RGB24 image of width x height. The row step, 3 * width rounded up to a multiple of
 * 64, is stored in *step; the result is 64-byte aligned. Returns null (and writes nothing) when
 * step is null; returns null with *step = 0 when width or height <= 0; returns null when
 * step * height, as a 32-bit signed product, is below 1, or when memory runs out.
 * Release with zqippiFree only. */
FRAMEKIT_EXPORT uint8_t* zqippiMalloc_8u_C3(int32_t width, int32_t height,
                                            int32_t* step) FRAMEKIT_NOEXCEPT;

/* Releases an image from zqippiMalloc_8u_C3; null does nothing. Any other pointer is undefined. */
FRAMEKIT_EXPORT void zqippiFree(void* p) FRAMEKIT_NOEXCEPT;

/* Copies width x height RGB24 pixels (3 * width bytes a row) from src to dst, each stepping by
 * its own step (signed byte distance between rows; not checked). Row padding is not touched.
 * Returns 0, -8 for a null src or dst, -6 for width or height <= 0. */
FRAMEKIT_EXPORT int32_t zqippiCopy_8u_C3R(const uint8_t* src, int32_t src_step, uint8_t* dst,
                                          int32_t dst_step, int32_t width,
                                          int32_t height) FRAMEKIT_NOEXCEPT;

/* ---- Colour conversion ------------------------------------------------------------------- */
/* From src into a separate dst that the caller sizes: aligned row stride * height for RGB24,
 * 4 * width * height for RGB32, 2 * width * height for YUY2, width * height +
 * 2 * ((width * height) / 4) for YV12. Nothing checks those sizes. RGB frames are bottom-up with
 * aligned row strides (RGB24: 3 * width rounded up to 4; RGB32: 4 * width); YUY2 (Y0, U, Y1, V
 * per pixel pair, 2 * width bytes a row) and YV12 (a Y plane of step width, then two planes of
 * step width / 2 at width * height and width * height + (width * height) / 4, the V-like plane
 * first) are top-down and packed. The YUV conversions turn the RGB24 side upside down to bridge
 * the two; the RGB-to-RGB conversions keep the row order. src and dst must not overlap unless
 * stated. Results: 0, -8 null pointer, -6 a size the primitive cannot use, 35 (YV12 primitives)
 * odd width or height, each export passing on only the status named below. */

/* YUY2 to RGB24, BT.601 studio range: with t = 76284 * (Y - 16) + 32768, u = U - 128,
 * v = V - 128: red = (t + 104595 v) >> 16, green = (t - 25690 u - 53281 v) >> 16,
 * blue = (t + 132186 u) >> 16, each clamped to 0..255. An odd width's last pixel takes Y and U
 * from the two bytes after the last pixel pair and V from that pair. The rows are then reversed
 * (the destination is bottom-up). Result: the status of the row reversal only: 0; -6 for a
 * single row (converted, not reversed) or width or height <= 0; -8 null dst. A width of 1 or a
 * null src converts nothing, and the destination's rows are reversed all the same. */
FRAMEKIT_EXPORT int32_t YUY2ToRGB24(const uint8_t* src, uint8_t* dst, int32_t width,
                                    int32_t height) FRAMEKIT_NOEXCEPT;

/* RGB24 to YUY2. First turns src upside down IN PLACE and leaves it so (a second call on the
 * same src converts the other orientation). Y = (16843 R + 33030 G + 6423 B + 1081344) >> 16;
 * per pixel pair with R, G, B the sums of the two pixels, U and V are the low bytes of
 * (-9699 R - 19071 G + 28770 B - 16760832) and (28770 R - 24117 G - 4653 B - 16760832) taken as
 * unsigned 32-bit values shifted right by 17. An odd width's last pixel writes its Y and, in the
 * row's last byte, the U of the pixel paired with itself (there is no room for its V; YUY2ToRGB24
 * reads the previous pair's V there). Result: the conversion's status: 0, -8, -6 for width < 2 or
 * height <= 0 (the source is still turned over when the reversal itself can run). */
FRAMEKIT_EXPORT int32_t RGB24ToYUY2(uint8_t* src, uint8_t* dst, int32_t width,
                                    int32_t height) FRAMEKIT_NOEXCEPT;

/* YV12 to RGB24, luma at full range (no offset or gain). Per 2 x 2 block, a = second-plane
 * sample - 128, b = third-plane sample - 128: byte 0 = (65536 Y + 74711 b + 32768) >> 16,
 * byte 1 = (65536 Y - 38076 b - 25821 a) >> 16 (truncated), byte 2 = (65536 Y + 133169 a +
 * 32768) >> 16, clamped. An odd last column or row is not converted (dst keeps its bytes there,
 * and then moves with the row reversal). The rows are then reversed. Result: the reversal's
 * status only (0 for an odd height, not 35; -6 for a single row; -8 null dst). */
FRAMEKIT_EXPORT int32_t YV12ToRGB24(const uint8_t* src, uint8_t* dst, int32_t width,
                                    int32_t height) FRAMEKIT_NOEXCEPT;

/* RGB24 to YV12. First turns src upside down IN PLACE and leaves it so. Luma per pixel:
 * (16843 byte0 + 33030 byte1 + 6423 byte2 + 1081344) >> 16 (the 0.257 weight on byte 0). Per
 * 2 x 2 block with s0, s1, s2 the sums of bytes 0, 1, 2 of its four pixels: the second plane gets
 * (-9699 s0 - 19071 s1 + 28770 s2 + 128 * 2^18 + 2^17) >> 18 (the red difference, red being
 * byte 2), the third plane (28770 s0 - 24117 s1 - 4653 s2 + 128 * 2^18 + 2^17) >> 18: 128 plus
 * the rounded mean of the four pixels. This plane order makes YV12ToRGB24 give back the hues.
 * An odd last column or row is not converted. Result: the conversion's status: 0, 35 for an odd
 * width or height (the even part is converted), -8, -6 width or height <= 0. */
FRAMEKIT_EXPORT int32_t RGB24ToYV12(uint8_t* src, uint8_t* dst, int32_t width,
                                    int32_t height) FRAMEKIT_NOEXCEPT;

/* RGB32 to RGB24: bytes 0-2 of each pixel, the fourth dropped; rows in the same order. Result:
 * 0, -8 null src or dst, -6 width or height <= 0. */
FRAMEKIT_EXPORT int32_t RGB32ToRGB24(const uint8_t* src, uint8_t* dst, int32_t width,
                                     int32_t height) FRAMEKIT_NOEXCEPT;

/* RGB24 to RGB32: bytes 0-2 of each destination pixel; byte 3 is NEVER written and keeps what
 * dst held. Result: 0, -8, -6. */
FRAMEKIT_EXPORT int32_t RGB24ToRGB32(const uint8_t* src, uint8_t* dst, int32_t width,
                                     int32_t height) FRAMEKIT_NOEXCEPT;

/* RGB24ToRGB32, then alpha is ADDED to byte 3 of every pixel (what dst held before), saturating
 * at 255; bytes 0-2 are unchanged by the addition. A dst cleared to 0 ends with byte 3 = alpha.
 * The addition runs even if the copy failed. Result: the addition's status: 0, -8 null dst, -6. */
FRAMEKIT_EXPORT int32_t RGB24ToRGBA(const uint8_t* src, uint8_t* dst, int32_t width,
                                    int32_t height, uint8_t alpha) FRAMEKIT_NOEXCEPT;

/* Exchanges bytes 0 and 2 of every 3-byte pixel. The only conversion that takes its stride from
 * the caller: step (signed, not checked) for both src and dst. src may equal dst (in place);
 * other overlaps are not allowed. Result: 0, -8, -6. */
FRAMEKIT_EXPORT int32_t RGB24ToBGR24(const uint8_t* src, uint8_t* dst, int32_t width,
                                     int32_t height, int32_t step) FRAMEKIT_NOEXCEPT;

/* ---- Flip -------------------------------------------------------------------------------- */
/* The names follow the axis, not the movement: FlipHorizontal* turns the picture upside down
 * (reverses the row order), FlipVertical* mirrors it left to right. All use the aligned bitmap
 * stride of their format. Result: 0, -8 null frame, -6 width or height <= 0, and -6 when the
 * frame has a single row (FlipHorizontal*) or a single column (FlipVertical*), which is left
 * unchanged. The Ex forms write into a separate dst of the same layout; src and dst must not
 * overlap. */

/* RGB24 in place, rows reversed. Stride: aligned bitmap stride (24 bits). */
FRAMEKIT_EXPORT int32_t FlipHorizontalRGB24(uint8_t* frame, int32_t width,
                                            int32_t height) FRAMEKIT_NOEXCEPT;
/* RGB24 in place, each row reversed pixel by pixel. Stride: aligned bitmap stride (24 bits). */
FRAMEKIT_EXPORT int32_t FlipVerticalRGB24(uint8_t* frame, int32_t width,
                                          int32_t height) FRAMEKIT_NOEXCEPT;
/* RGB32 in place, rows reversed. Stride: 4 * width. */
FRAMEKIT_EXPORT int32_t FlipHorizontalRGB32(uint8_t* frame, int32_t width,
                                            int32_t height) FRAMEKIT_NOEXCEPT;
/* RGB32 in place, each row reversed; all four bytes of a pixel move together. Stride: 4 * width. */
FRAMEKIT_EXPORT int32_t FlipVerticalRGB32(uint8_t* frame, int32_t width,
                                          int32_t height) FRAMEKIT_NOEXCEPT;
/* RGB32 from src into dst, rows reversed. Stride: 4 * width for both. */
FRAMEKIT_EXPORT int32_t FlipHorizontalRGB32Ex(const uint8_t* src, uint8_t* dst, int32_t width,
                                              int32_t height) FRAMEKIT_NOEXCEPT;
/* RGB32 from src into dst, each row reversed. Stride: 4 * width for both. */
FRAMEKIT_EXPORT int32_t FlipVerticalRGB32Ex(const uint8_t* src, uint8_t* dst, int32_t width,
                                            int32_t height) FRAMEKIT_NOEXCEPT;
/* YUY2 in place, rows reversed; a row is handled as 2 * width bytes. Stride: aligned bitmap
 * stride (16 bits), e.g. 8 bytes for width 3. There is no left-to-right YUY2 flip. */
FRAMEKIT_EXPORT int32_t FlipHorizontalYUY2(uint8_t* frame, int32_t width,
                                           int32_t height) FRAMEKIT_NOEXCEPT;
/* YUY2 from src into dst, rows reversed. Stride: aligned bitmap stride (16 bits) for both. */
FRAMEKIT_EXPORT int32_t FlipHorizontalYUY2Ex(const uint8_t* src, uint8_t* dst, int32_t width,
                                             int32_t height) FRAMEKIT_NOEXCEPT;

/* ---- Crop, cut, fill --------------------------------------------------------------------- */

/* Copies rect out of an RGB24 frame into dst, a frame of exactly the rectangle's size.
 * Strides: aligned row stride of width for src, of (right - left) for dst. The first source
 * pixel is src + top * stride + left * 3 (32-bit products); rows count in memory order, so in a
 * bottom-up frame top counts from the bottom. height is not used. rect is not checked against
 * the frame (it must be inside); rect itself must not be null.
 * Result: 0, -8 null src or dst, -6 when right <= left or bottom <= top (nothing written). */
FRAMEKIT_EXPORT int32_t Crop24(const uint8_t* src, int32_t width, int32_t height, uint8_t* dst,
                               const FrameKitRect* rect) FRAMEKIT_NOEXCEPT;
/* Crop24 for RGB32 frames (4 bytes a pixel, all four copied). Strides: 4 * width and
 * 4 * (right - left). */
FRAMEKIT_EXPORT int32_t Crop32(const uint8_t* src, int32_t width, int32_t height, uint8_t* dst,
                               const FrameKitRect* rect) FRAMEKIT_NOEXCEPT;

/* Copies an RGB24 frame without its last cut_width columns and its last cut_height rows (memory
 * order) into dst. Strides: aligned row stride of width for src, of (width - cut_width) for dst.
 * Copies nothing when height - cut_height < 1 or width - cut_width < 1. No pointer or size is
 * checked; no result. */
FRAMEKIT_EXPORT void ImageCutRGB24(const uint8_t* src, int32_t width, int32_t height, uint8_t* dst,
                                   int32_t cut_width, int32_t cut_height) FRAMEKIT_NOEXCEPT;
/* ImageCutRGB24 for RGB32 frames (all four bytes of a pixel copied). Strides: 4 * width and
 * 4 * (width - cut_width). */
FRAMEKIT_EXPORT void ImageCutRGB32(const uint8_t* src, int32_t width, int32_t height, uint8_t* dst,
                                   int32_t cut_width, int32_t cut_height) FRAMEKIT_NOEXCEPT;

/* Sets every pixel of rect in an RGB24 frame to colour (0x00RRGGBB: bytes 0xBB, 0xGG, 0xRR).
 * Stride: aligned row stride. height is not used; rect is not checked against the frame and must
 * not be null. Result: 0, -8 null frame, -6 when right <= left or bottom <= top. */
FRAMEKIT_EXPORT int32_t FillColor(uint8_t* frame, int32_t width, int32_t height,
                                  const FrameKitRect* rect, uint32_t colour) FRAMEKIT_NOEXCEPT;

/* The effects (channel and tone, noise and texture, blur and sharpen, motion): */
#include "framekit/framekit_effects.h"

/* ---- Resize ------------------------------------------------------------------------------ */
/* Whole frames scaled by the resize primitive (centred sample positions, edge samples repeated,
 * 14-bit fixed-point weights; the same bytes on every processor and platform).
 *
 * RGB24 frame scaled to dst_width x dst_height, both at the aligned row stride. mode: 1 nearest,
 * 2 linear, 3 cubic, 4 Lanczos (three lobes); anything else nearest. buffer and buffer_size are
 * the caller's work-buffer cache: a held buffer of exactly the size asked for is reused, any
 * other is released (zqippiFree) and a new one allocated and stored back; start with null, and
 * release the last buffer with zqippiFree. Result: the primitive's status (0; -8 null frame, null
 * buffer or size holder, or a failed allocation; -6 a size below 1; 29 or 1 nothing written). */
FRAMEKIT_EXPORT int32_t ResizeRGB24(const uint8_t* src, int32_t src_width, int32_t src_height,
                                    uint8_t* dst, int32_t dst_width, int32_t dst_height,
                                    int32_t mode, uint8_t** buffer,
                                    int32_t* buffer_size) FRAMEKIT_NOEXCEPT;

/* RGB32 letterbox: the crop rectangle of src (src_size, rows of 4 * width bytes) scaled, with the
 * aspect of the whole source, to the largest even-sided rectangle fitting dst_size, centred
 * (an odd side of dst_size gives a fit one pixel larger, placed one pixel early and clipped).
 * interpolation is the primitive's code (1, 2, 4-7, 8 reducing only, 16). The source is left
 * cleared to zero; the picture is placed in work (a frame of dst_size; its other pixels are the
 * bars and are not cleared, so pass a black frame or the source itself) and work is copied to
 * dst. buffer/buffer_size by value: a buffer of exactly the asked size is used, any other is
 * released and a fresh one used for this call. No result. */
FRAMEKIT_EXPORT void ResizeRGB32LB(uint8_t* src, FrameKitSize src_size, const FrameKitRect* crop,
                                   uint8_t* dst, uint8_t* work, FrameKitSize dst_size,
                                   int32_t interpolation, uint8_t* buffer,
                                   int32_t buffer_size) FRAMEKIT_NOEXCEPT;

/* YUY2 frame scaled by nearest neighbour, rows at the aligned bitmap stride (2 bytes a pixel);
 * each destination pixel pair takes its chroma from one source pair. Result: the primitive's
 * status. */
FRAMEKIT_EXPORT int32_t ResizeYUY2(const uint8_t* src, uint8_t* dst, int32_t src_width,
                                   int32_t src_height, int32_t dst_width,
                                   int32_t dst_height) FRAMEKIT_NOEXCEPT;

/* ---- Rotation ---------------------------------------------------------------------------- */
/* Frames turned in place by `angle` degrees (positive: counter-clockwise on screen) about their
 * centre, sampled linearly (each destination pixel's centre mapped back to the source; the same
 * bytes on every processor and platform). RotateIn: RGB24, rows at the aligned stride; RotateIn32:
 * RGB32. angle 0 and 360 exactly leave the frame untouched; any other angle (720 included) is
 * resampled. temp: a scratch frame of the same size, cleared and used as the destination.
 * Corners no source pixel reaches are black and what leaves the frame is cut off.
 * With stretch_quarter_turns non-zero, 90 and 270 exactly instead turn the picture a quarter
 * into temp (a frame `height` pixels wide and `width` high, at its own aligned stride: temp must
 * hold the larger of the two layouts) and stretch it back over the whole frame with the linear
 * resize; buffer (by value) and *buffer_size are the work-buffer cache of ResizeRGB24.
 * When *buffer_size is 0 on entry, the buffer held at the end (passed in or allocated) is
 * released before return: size 0 asks for a one-shot buffer. Nothing is checked or returned; a
 * null frame or temp, or a side below 1, turns nothing. */
FRAMEKIT_EXPORT void RotateIn(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp,
                              double angle, int32_t stretch_quarter_turns, uint8_t* buffer,
                              int32_t* buffer_size) FRAMEKIT_NOEXCEPT;
FRAMEKIT_EXPORT void RotateIn32(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp,
                                double angle, int32_t stretch_quarter_turns, uint8_t* buffer,
                                int32_t* buffer_size) FRAMEKIT_NOEXCEPT;

/* The RGB24 rotate primitive: src_roi of src (src_size, rows src_step bytes apart) turned by
 * `angle` degrees, a source point (x, y) landing at (x cos a + y sin a + x_shift,
 * -x sin a + y cos a + y_shift), into dst_roi of dst. A destination pixel is written when its
 * centre maps inside the source region (its outermost half pixel included, the edge pixel
 * repeated there); the others are untouched. interpolation: 1 nearest, 2 linear, 4 cubic.
 * Result: 0; -8 a null pointer; -6 a size below 1 or a negative corner; -22 another
 * interpolation; 29 the source region outside the image; 1 an angle or shift that is not
 * finite (nothing written). */
FRAMEKIT_EXPORT int32_t zqippiRotate_8u_C3R(const uint8_t* src, FrameKitSize src_size,
                                            int32_t src_step, const FrameKitRegion* src_roi,
                                            uint8_t* dst, int32_t dst_step,
                                            const FrameKitRegion* dst_roi, double angle,
                                            double x_shift, double y_shift,
                                            int32_t interpolation) FRAMEKIT_NOEXCEPT;

#include "framekit/framekit_compose.h"
#include "framekit/framekit_restore.h"

/* ---- Timing probe ------------------------------------------------------------------------ */

/* Runs the general lightness pass (the one EffectLightness takes for widths that are not
 * multiples of 4) 50 times on the frame with the given level, between readings of the platform's
 * counter (Windows: QueryPerformanceFrequency and QueryPerformanceCounter; elsewhere the
 * monotonic clock). The readings are dropped: time the call from outside. Returns the success of
 * the last reading, nonzero normally. The frame is left brightened 50 times. */
FRAMEKIT_EXPORT int32_t PerfTest(uint8_t* frame, int32_t width, int32_t height,
                                 int32_t level) FRAMEKIT_NOEXCEPT;

/* ---- Image saving ------------------------------------------------------------------------ */
/* File names are UTF-16 (char16_t, zero-terminated) on every platform; on Linux they are
 * converted to UTF-8 for the file system, and a name holding a lone surrogate (it has no UTF-8
 * spelling) writes nothing. The file is always a BMP, whatever its extension. The first row in
 * memory becomes the top row of the image (the file stores rows bottom-up, positive height).
 * Nothing is written for a null pointer, a width or height below 1, or (Linux) a file that
 * would exceed the format's 4 GiB. Failures are not reported: on Windows they stay in GDI+'s
 * last status (the host must have started GDI+); on Linux a failed write removes the file. */

/* Saves width x height RGB24 pixels, rows at the aligned row stride (padding not read), as a
 * 24-bit BMP: 54-byte header (BITMAPINFOHEADER, BI_RGB, 96 dpi), rows zero-padded to 4 bytes.
 * Linux writes the same bytes as GDI+. */
FRAMEKIT_EXPORT void SaveImageRGB24(const uint8_t* pixels, int32_t width, int32_t height,
                                    const char16_t* file_name) FRAMEKIT_NOEXCEPT;
/* Saves width x height RGB32 pixels (rows of 4 * width bytes, the fourth byte as alpha) as a
 * BMP. Windows: GDI+ encodes a 32bpp ARGB bitmap and picks the depth (Windows writes 32 bits;
 * Wine writes 24, dropping the fourth byte). Linux: 32 bits, BI_RGB, the fourth byte kept. */
FRAMEKIT_EXPORT void SaveImageRGB32(const uint8_t* pixels, int32_t width, int32_t height,
                                    const char16_t* file_name) FRAMEKIT_NOEXCEPT;

#ifdef __cplusplus
}  /* extern "C" */
#endif

#endif /* FRAMEKIT_FRAMEKIT_H_ */

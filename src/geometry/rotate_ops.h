// Whole-frame rotation in place over the rotate primitive: about the centre with black corners,
// or a quarter turn stretched back over the frame (through the region resize and the caller's
// work-buffer cache).
#pragma once

#include <cstdint>

namespace framekit::geometry {

// Turns an RGB24 (channels 3) or RGB32 (4) frame of width x height pixels, rows at the aligned
// bitmap stride, by `angle` degrees about its centre, linear sampling through temp (a frame of
// the same size; for the quarter-turn path a frame `height` pixels wide and `width` high).
// 0 and 360 exactly leave the frame as it is. With `stretch` non-zero, 90 and 270 exactly turn
// the picture a quarter into temp and stretch it back over the whole frame (linear region resize
// with the cache (buffer by value, *size_holder)). Except at 0 and 360, a buffer held when
// *size_holder was 0 on entry (the caller's or one allocated here) is released before return:
// size 0 asks for a one-shot buffer. A null frame or temp, or a side below 1, turns nothing.
void RotateFrame(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp, double angle,
                 int32_t stretch, uint8_t* buffer, int32_t* size_holder, int channels);

}  // namespace framekit::geometry

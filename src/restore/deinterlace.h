// Deinterlacing of RGB24 frames with packed rows (3 * width bytes): each frame is handed to the
// filters as a one-channel image three times as wide. Nothing is checked; statuses are dropped.
#pragma once

#include <cstdint>

namespace framekit::restore {

// The filtered picture is written to temp, then copied back into the frame.
void DeinterlaceCAVT(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp,
                     uint16_t threshold);
void DeinterlaceTriangle(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp,
                         uint32_t centre_weight);

// frame1..frame3 in time order; dst receives frame2 deinterlaced. The filter's state lives for
// this call only; when it cannot be made, dst is left unchanged.
void DeinterlaceBlend(const uint8_t* frame1, const uint8_t* frame2, const uint8_t* frame3,
                      uint8_t* dst, int32_t width, int32_t height, int32_t src_step,
                      int32_t dst_step, const int32_t thresholds[2], const double constants[2]);

}  // namespace framekit::restore

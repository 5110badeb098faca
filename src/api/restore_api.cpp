// Deinterlacing exports: argument forwarding only.
#include "framekit/framekit.h"
#include "restore/deinterlace.h"

namespace rs = framekit::restore;

extern "C" {

void EffectDeinterlaceCAVT(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp,
                           uint16_t threshold) noexcept {
  rs::DeinterlaceCAVT(frame, width, height, temp, threshold);
}
void EffectDeinterlaceTriangle(uint8_t* frame, int32_t width, int32_t height, uint8_t* temp,
                               uint32_t centreWeight) noexcept {
  rs::DeinterlaceTriangle(frame, width, height, temp, centreWeight);
}
void EffectDeinterlaceBlend(const uint8_t* frame1, const uint8_t* frame2, const uint8_t* frame3,
                            uint8_t* dst, int32_t width, int32_t height, int32_t srcStep,
                            int32_t dstStep,
                            const FrameKitDeinterlaceBlendParams* params) noexcept {
  // A null record reaches the state's checks as null parameters: dst stays as it is.
  rs::DeinterlaceBlend(frame1, frame2, frame3, dst, width, height, srcStep, dstStep,
                       params != nullptr ? params->threshold : nullptr,
                       params != nullptr ? params->constant : nullptr);
}

}  // extern "C"

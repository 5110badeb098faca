/*
 * framekit: deinterlacing of the flat C interface. Part of framekit/framekit.h, which includes it
 * where this family belongs and whose types, conventions and results apply; include that header
 * instead.
 */
#ifndef FRAMEKIT_FRAMEKIT_RESTORE_H_
#define FRAMEKIT_FRAMEKIT_RESTORE_H_

#ifndef FRAMEKIT_FRAMEKIT_H_
#error "include framekit/framekit.h, which includes this header"
#endif

/* ---- Deinterlacing ----------------------------------------------------------------------- */
/* RGB24 frames, top-down, PACKED rows: the row step is exactly 3 * width bytes here (no rounding
 * to 4), so pass frames whose rows really are packed. Each colour is filtered on its own, the
 * same way. The top field is the even rows 0, 2, 4, ..., the bottom field the odd rows. Nothing
 * is checked and nothing is reported; temp must hold 3 * width * height bytes. */

/* Content-adaptive, motion-compensated: keeps the top field and rebuilds the bottom rows. Each
 * colour is cut into blocks of 16 x 16 pixels; each block finds how far (to a quarter pixel and a
 * quarter row, within about 4 pixels and 3 rows) its bottom field moved against its top field,
 * the vectors of neighbouring blocks are smoothed by their median, and each bottom sample is
 * rebuilt from the four nearest top rows and the moved bottom field. The rebuilt sample is then
 * kept within threshold levels of the range of the top samples directly above and below it: 0
 * keeps it inside that range, 65535 trusts the moved field whole; 8 to 16 gives the best pictures
 * on moving material, 4 to 64 good ones. A block whose bottom rows copy the top rows above (or
 * below) keeps them, so a frame whose two fields are equal comes back unchanged. Should memory
 * for the block vectors run out, the bottom rows are rebuilt from the columns alone: the mean of
 * the top samples above and below plus the bottom field's own vertical detail, limited to
 * +-threshold. The result ends in the frame and in temp. */
FRAMEKIT_EXPORT void EffectDeinterlaceCAVT(uint8_t* frame, int32_t width, int32_t height,
                                           uint8_t* temp, uint16_t threshold) FRAMEKIT_NOEXCEPT;

/* Vertical triangle on the comb teeth of the bottom rows (the top field is kept): a bottom
 * sample x beyond the range of the kept samples a, b above and below by e (0 inside it) becomes
 * x - e * (256 - centreWeight) / 256 (halves rounded away from zero), which is the three-tap
 * filter [w, centreWeight, w] / 256 where a = b; samples between their neighbours stay, so
 * pictures without combing come back unchanged. A last bottom row takes the row above for both
 * neighbours. centreWeight is out of 256 (256 or more: no change); 0 to 170 gives good pictures,
 * 128 being [1 2 1] / 4, 0 (the median of the three) the best on moving pictures. The result
 * ends in the frame and in temp. */
FRAMEKIT_EXPORT void EffectDeinterlaceTriangle(uint8_t* frame, int32_t width, int32_t height,
                                               uint8_t* temp,
                                               uint32_t centreWeight) FRAMEKIT_NOEXCEPT;

/* The motion-adaptive blend's parameters (24 bytes). */
typedef struct FrameKitDeinterlaceBlendParams {
  int32_t threshold[2]; /* still below threshold[0], moving from threshold[1] (sample levels) */
  double constant[2];   /* the earlier field's share; the moving areas' reach (see below) */
} FrameKitDeinterlaceBlendParams;

/* Three consecutive frames in time order; dst receives frame2 deinterlaced: its top field kept
 * (copied), its bottom rows rebuilt. Each missing sample has a temporal estimate, the bottom
 * fields of frame1 and frame2 (the fields around the kept field's time) weighted constant[0] :
 * 1 - constant[0], and a motion measure m, the largest of their difference and of the top field's
 * mean change above and below from frame1 and towards frame3. Where m <= threshold[0] (still)
 * the sample is the estimate. Where m >= threshold[1] (moving) it is the mean of the kept samples
 * above and below plus 3/16 of the estimates' vertical detail, brought within 2 * constant[1] * m
 * of the estimate; between, a linear mix. Thresholds are clamped to 0..255 and ordered,
 * constants to 0..1. Thresholds of 5 to 60 with constants of 0.5 give good pictures, 5 to 10 and
 * 20 to 30 the best on moving pictures. srcStep is the step of all three sources, dstStep that
 * of dst (bytes; negative for bottom-up). The state the filter needs is made and released in
 * the call; if it cannot be made (or params is null), dst is left unchanged. */
FRAMEKIT_EXPORT void EffectDeinterlaceBlend(const uint8_t* frame1, const uint8_t* frame2,
                                            const uint8_t* frame3, uint8_t* dst, int32_t width,
                                            int32_t height, int32_t srcStep, int32_t dstStep,
                                            const FrameKitDeinterlaceBlendParams* params)
    FRAMEKIT_NOEXCEPT;

#endif /* FRAMEKIT_FRAMEKIT_RESTORE_H_ */

// The vertical pass's strips for one vector level. NOLINT(build/header_guard)
//
// Included inside the anonymous namespace of each per-ISA file with a column body, after its
//   template <int kGroups> RoundedStrip16(p, step, roi, radius, x0, const blur::RowDivision*)
//     (a strip of 16 * kGroups byte columns with 16-bit sums, results back in place), and
//   RoundedStrip(p, step, roi, radius, x0, work)
//     (48 byte columns with 32-bit sums, results built in work),
// and runs the rounded columns with them: 16-bit strips of 64 bytes while every window sum fits,
// then the rest of the whole rounded strips, 32-bit strips otherwise; the scalar strips of
// blur_kernels.h do everything past them.

Status StripColumns(uint8_t* p, int32_t step, Size roi, int32_t radius, int32_t rounded_width,
                    uint8_t* work) {
  if (const Status s = blur::CheckPass(p, work, roi, radius); s != ippStsNoErr) return s;
  const int64_t rounded_end = blur::RoundedEnd(roi, rounded_width);
  const int64_t h = roi.height, r = radius;
  const int64_t widest = 2 * r + 1 < h ? 2 * r + 1 : h;
  int64_t x = 0;
  auto* division = rounded_end >= 16 && 255 * widest <= 65535
                       ? static_cast<blur::RowDivision*>(std::malloc(sizeof(blur::RowDivision) * h))
                       : nullptr;
  if (division != nullptr) {
    for (int64_t y = 0; y < h; ++y) {
      const int64_t n = blur::WindowCount(y, r, h);
      blur::RowDivision& d = division[y];
      d.integer = blur::FindRoundedMagic16(n, &d.magic);
      d.reciprocal = blur::Reciprocal(n);
      d.count = static_cast<int16_t>(n);
    }
    // Strips of 64 bytes, then what is left of the whole rounded strips (16, 32 or 48 bytes).
    const int64_t rounded_bytes = 3 * (rounded_end / 16 * 16);
    int64_t b = 0;
    for (; b + 64 <= rounded_bytes; b += 64) RoundedStrip16<4>(p, step, roi, radius, b, division);
    switch ((rounded_bytes - b) / 16) {
      case 3:
        RoundedStrip16<3>(p, step, roi, radius, b, division);
        break;
      case 2:
        RoundedStrip16<2>(p, step, roi, radius, b, division);
        break;
      case 1:
        RoundedStrip16<1>(p, step, roi, radius, b, division);
        break;
      default:
        break;
    }
    x = rounded_bytes / 3;
    std::free(division);
  }
  for (; x + 16 <= rounded_end; x += 16) RoundedStrip(p, step, roi, radius, 3 * x, work);
  blur::ScalarStrips(p, step, roi, radius, x, rounded_end, work);
  return ippStsNoErr;
}

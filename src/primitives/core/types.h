// Status codes and the plain argument types every primitive shares.
#pragma once

#include <cstdint>

namespace framekit::prim {

using Status = int32_t;

// Processor classes 0 (baseline) to 6; every variant table has one entry per class.
inline constexpr int kClassCount = 7;

inline constexpr Status ippStsNoErr = 0;
inline constexpr Status ippStsNonIntelCpu = 20;  // Init: another vendor; the class is in force.
inline constexpr Status ippStsDoubleSize = 35;   // 4:2:0 conversion: odd size, even part done.
inline constexpr Status ippStsNoOperation = 36;  // Init: the processor cannot be identified.
inline constexpr Status ippStsSizeErr = -6;
inline constexpr Status ippStsNullPtrErr = -8;
inline constexpr Status ippStsStepErr = -14;
inline constexpr Status ippStsMirrorFlipErr = -21;
inline constexpr Status ippStsInterpolationErr = -22;
inline constexpr Status ippStsResizeFactorErr = -23;
inline constexpr Status ippStsChannelOrderErr = -60;  // channel swap: an order outside 0..2
// framekit's own codes, from primitives whose statuses no export passes on.
inline constexpr Status ippStsAlphaTypeErr = -220;         // alpha composite: a type outside 0..11
inline constexpr Status ippStsNotSupportedModeErr = -221;  // alpha composite: types 1..11
inline constexpr Status ippStsOutOfRangeErr = -222;        // a weight or mode outside its range
inline constexpr Status ippStsNoMemErr = -223;             // a state's allocation failed

// A region size in pixels, passed by value: width then height.
struct Size {
  int32_t width;
  int32_t height;
};

// A region {x, y, width, height} in pixels.
struct Rect {
  int32_t x;
  int32_t y;
  int32_t width;
  int32_t height;
};

// Mirror axes.
inline constexpr int32_t kAxisHorizontal = 0;  // rows reversed
inline constexpr int32_t kAxisVertical = 1;    // pixels reversed within each row
inline constexpr int32_t kAxisBoth = 2;        // half turn

}  // namespace framekit::prim

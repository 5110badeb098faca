// PerfTest without the Windows performance counter: the monotonic clock stands in for it.
#include <time.h>

#include "effects/effects.h"

namespace framekit::effects {
namespace {

// Like QueryPerformanceCounter: nonzero when the reading succeeded. The reading itself is not
// kept: callers time the call from outside.
int32_t ReadCounter() {
  timespec ts{};
  return clock_gettime(CLOCK_MONOTONIC, &ts) == 0 ? 1 : 0;
}

}  // namespace

// The first reading is taken and dropped; the result is the success of the last one.
int32_t PerfTest(uint8_t* frame, int32_t width, int32_t height, int32_t level) {
  ReadCounter();
  for (int i = 0; i < 50; ++i) LightnessRows(frame, width, height, level);
  return ReadCounter();
}

}  // namespace framekit::effects

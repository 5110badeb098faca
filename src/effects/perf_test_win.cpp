// PerfTest on Windows: the performance counter.
#include <windows.h>

#include "effects/effects.h"

namespace framekit::effects {

// Frequency and readings are taken and dropped (callers time the call from outside); the result
// is what the last QueryPerformanceCounter call returned: nonzero on success.
int32_t PerfTest(uint8_t* frame, int32_t width, int32_t height, int32_t level) {
  LARGE_INTEGER frequency{}, counter{};
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&counter);
  for (int i = 0; i < 50; ++i) LightnessRows(frame, width, height, level);
  return static_cast<int32_t>(QueryPerformanceCounter(&counter));
}

}  // namespace framekit::effects

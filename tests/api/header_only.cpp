// The public header compiles alone as C++.
#include "framekit/framekit.h"

int FramekitHeaderCppCheck() {
  const FrameKitRect r{0, 0, 1, 1};
  return r.right + static_cast<int>(sizeof(&FlipHorizontalRGB24));
}

/* The public header compiles alone as C. */
#include "framekit/framekit.h"

int framekit_header_c_check(void) {
  FrameKitRect r = {0, 0, 1, 1};
  return r.right + (int)sizeof(&FlipHorizontalRGB24);
}

#include "primitives/resize/resize.h"
#include "primitives/resize/resize_kernels.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiResizeSqrPixel_8u_C3R, ResizeSig, .ref = ref::ippiResizeSqrPixel_8u_C3R,
                   .ssse3 = FK_X86(ssse3::ippiResizeSqrPixel_8u_C3R),
                   .avx2 = FK_X86(avx2::ippiResizeSqrPixel_8u_C3R));
FK_PRIMITIVE_TABLE(ippiResizeSqrPixel_8u_C4R, ResizeSig, .ref = ref::ippiResizeSqrPixel_8u_C4R,
                   .ssse3 = FK_X86(ssse3::ippiResizeSqrPixel_8u_C4R),
                   .avx2 = FK_X86(avx2::ippiResizeSqrPixel_8u_C4R));
FK_PRIMITIVE_TABLE(ippiResizeYUV422_8u_C2R, ResizeYuv422Sig, .ref = ref::ippiResizeYUV422_8u_C2R);

Status ippiResizeGetBufSize(const Rect* src_rect, const Rect* dst_rect, int32_t channels,
                            int32_t interpolation, int32_t* size) {
  if (src_rect == nullptr || dst_rect == nullptr || size == nullptr) return ippStsNullPtrErr;
  if (src_rect->width <= 0 || src_rect->height <= 0 || dst_rect->width <= 0 ||
      dst_rect->height <= 0 || (channels != 3 && channels != 4)) {
    return ippStsSizeErr;
  }
  const int32_t code = resize::Code(interpolation);
  if (!resize::ValidCode(code) || resize::FlagCount(interpolation) > 1) {
    return ippStsInterpolationErr;
  }
  const int64_t bytes =
      resize::BufferLayout({src_rect->width, src_rect->height}, {dst_rect->width, dst_rect->height},
                           channels, interpolation)
          .Bytes();
  if (bytes > INT32_MAX) return ippStsSizeErr;
  *size = static_cast<int32_t>(bytes);
  return ippStsNoErr;
}

}  // namespace framekit::prim

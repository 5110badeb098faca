#include "primitives/rotate/rotate.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiRotate_8u_C3R, RotateSig, .ref = ref::ippiRotate_8u_C3R);
FK_PRIMITIVE_TABLE(ippiRotate_8u_C4R, RotateSig, .ref = ref::ippiRotate_8u_C4R);

}  // namespace framekit::prim

#include "primitives/copy/copy.h"

namespace framekit::prim {

FK_PRIMITIVE_TABLE(ippiCopy_8u_C3R, CopySig, .ref = ref::ippiCopy_8u_C3R);
FK_PRIMITIVE_TABLE(ippiCopy_8u_C4R, CopySig, .ref = ref::ippiCopy_8u_C4R);

}  // namespace framekit::prim

// A per-ISA object with the fault the ISA symbol check exists to catch: an inline function with
// external linkage, used here, so this object carries an AVX2 copy of it that the linker could
// keep for baseline code. Only the check's own test compiles it; it is never linked.
#include <cstdint>

namespace framekit::prim {
inline __attribute__((noinline)) int32_t PlantedHelper(int32_t v) { return v * 3 + 1; }
namespace avx2 {
int32_t PlantedBody(int32_t v) { return PlantedHelper(v); }
}  // namespace avx2
}  // namespace framekit::prim

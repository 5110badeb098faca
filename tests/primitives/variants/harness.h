// Variant harness: every processor class this machine can run is checked against the reference
// body (class 0) on identical inputs, and the same cases drive the primitive benchmarks.
//
// A primitive joins with one line in its family's *_variants.cpp, naming its dispatch entry and
// a driver (README.md beside this file says how to add a family):
//
//   FK_VARIANT_SUBJECT(ippiMirror_8u_C3IR, MirrorInPlaceDriver{3});
//
// A driver describes the primitive's arguments (PrimitiveShape) and maps one harness call onto
// its signature:
//
//   struct MirrorInPlaceDriver {
//     int bytes_per_pixel;
//     PrimitiveShape Shape() const;
//     prim::Status Call(prim::MirrorIRFn fn, const CallArgs& a) const;
//   };
//
// The harness varies sizes, steps, placement, borders and modes, tries every invalid argument
// and the in-place forms the primitive promises, runs each distinct body once (classes sharing a
// body are one run), and compares whole buffers, padding and borders included. This header and
// harness.cpp do not depend on GoogleTest: the test binary turns every subject into a test
// (harness_test.cpp) and the benchmark binary times every subject per class.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::test {

// How a primitive uses one of its image arguments. Scratch images are the primitive's to use:
// their pixels are random on entry and left out of every comparison.
enum class Access { kRead, kWrite, kReadWrite, kScratch };

struct ImageArg {
  const char* name;  // "src", "dst", ... for messages
  int bytes_per_pixel;
  Access access;
  int subsampling = 1;  // 2: a chroma plane of (width / 2) x (height / 2) pixels, at least 1 x 1
  int size = 0;         // which of the case's frame sizes this image has (see PrimitiveShape)
  // Pixels around the region that the primitive may read (columns left and right, rows above
  // and below): they hold random pixels, lie inside the guard pages and must never be written.
  int border = 0;
  // Pixel bytes are drawn from 0..levels-1: a small number makes equal pixels common (keys).
  int levels = 256;
  // The image whose step (kind and direction) this one shares, for primitives given one step for
  // several images of the same shape; -1: a step of its own.
  int step_of = -1;
};

inline constexpr int kMaxImages = 6;  // three source frames, a mask, a destination, a scratch
inline constexpr int kMaxSizes = 2;

// The arguments of one call in the harness's terms; a driver forwards them to the primitive.
struct CallArgs {
  uint8_t* image[kMaxImages] = {};  // the first pixel of each image's region, in shape order
  int32_t step[kMaxImages] = {};
  prim::Size size[kMaxImages] = {};  // each image's region, subsampling applied
  prim::Size roi{};                  // the case's first frame size (what most primitives take)
  prim::Size roi2{};                 // the second frame size, for shapes with two
  int32_t axis = 0;                  // the mirror axis, or the mode of a primitive with modes
  const uint8_t* value = nullptr;    // only for primitives with a value array
  uint64_t scalar = 0;      // random bits for primitives with a scalar argument (drivers map them)
  uint8_t* work = nullptr;  // the work buffer, for shapes that ask for one
  int32_t work_bytes = 0;
};

// What the harness must know about a primitive's arguments, whatever its signature.
struct PrimitiveShape {
  std::vector<ImageArg> images{};  // one to kMaxImages
  int sizes = 1;                   // independent frame sizes a case draws (2: resize, rotate)
  std::vector<int32_t> axes{};     // the valid mirror axes; the invalid ones are tried too
  int value_bytes = 0;             // length of the value array; 0 when there is none
  bool scalar = false;             // draws CallArgs::scalar afresh for every case
  uint64_t bench_scalar = 0;       // the scalar bits benchmarks pass: the common case
  // Values of an integer argument that is always valid (a scale factor, an index into the
  // driver's own list), varied like axes and passed in CallArgs::axis; only without axes.
  std::vector<int32_t> modes{};
  // (source, destination) pairs the primitive may be given as one buffer: some cases pass the
  // source's pointer and step for the destination too.
  std::vector<std::pair<int, int>> in_place{};
  // Largest difference from the reference allowed in a written pixel byte (filters whose design
  // allows it); padding, borders and statuses are always exact.
  int tolerance = 0;
  // Bytes of work buffer the primitive needs for a call (0: none), asked once the images exist.
  std::function<int32_t(const CallArgs&)> work_bytes{};
};

using EntryCall = std::function<prim::Status(const CallArgs&)>;

// One primitive under test, its signature erased.
struct VariantSubject {
  std::string name;
  PrimitiveShape shape;
  std::array<const void*, prim::kClassCount> entries{};  // the table's bodies, to find shared ones
  std::function<prim::Status(int cls, const CallArgs&)> call_class;  // through a table entry
};

template <typename Fn, typename Driver>
VariantSubject MakeVariantSubject(const char* name, const prim::Table<Fn>& table, Driver driver) {
  VariantSubject s;
  s.name = name;
  s.shape = driver.Shape();
  for (size_t c = 0; c < prim::kClassCount; ++c) {
    s.entries[c] = reinterpret_cast<const void*>(table[c]);
  }
  s.call_class = [&table, driver](int cls, const CallArgs& a) {
    return driver.Call(table[static_cast<size_t>(cls)], a);
  };
  return s;
}

// The registered subjects, in registration order; the references stay valid.
const VariantSubject& AddVariantSubject(VariantSubject subject);
std::vector<const VariantSubject*> VariantSubjects();

// Every distinct body of classes 1..max_class against the reference over the whole case set.
// Returns one message per failing case (at most max_failures); each names the primitive, the
// body, the case and the seed.
struct CheckOptions {
  int max_class = 0;
  int max_failures = 5;
};
std::vector<std::string> CheckVariants(const VariantSubject& subject, const CheckOptions& options);

// "class 2 [ssse3]+3+4+5": a class, its level and the later classes that share its body.
std::string BodyLabel(const VariantSubject& subject, int cls);
// The classes 0..max_class whose bodies differ from every lower class's.
std::vector<int> DistinctClasses(const VariantSubject& subject, int max_class);

// One call's buffers, laid out as a host would (rows rounded to 4 bytes, page-aligned frames),
// for timing: a frame of `frame` pixels (both sizes), the first axis or mode, fixed random
// contents. Refresh() puts the inputs back after in-place work.
class BenchCall {
 public:
  BenchCall(const VariantSubject& subject, prim::Size frame, int32_t axis);
  ~BenchCall();
  const CallArgs& args() const;
  void Refresh();

 private:
  struct Buffers;
  std::unique_ptr<Buffers> buffers_;
};

// The axes (or modes) a benchmark of the subject runs: every mirror axis, else the first mode.
std::vector<int32_t> BenchAxes(const PrimitiveShape& shape);

}  // namespace framekit::test

// Registers a primitive's driver under its dispatch entry's name.
#define FK_VARIANT_SUBJECT(prim_name, ...)                                      \
  static const ::framekit::test::VariantSubject& fk_variant_##prim_name =       \
      ::framekit::test::AddVariantSubject(::framekit::test::MakeVariantSubject( \
          #prim_name, ::framekit::prim::prim_name##Table, __VA_ARGS__))

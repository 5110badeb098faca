// Variant harness: every processor class this machine can run is checked against the reference
// body (class 0) on identical inputs.
//
// A primitive joins with one line naming its table, its dispatch entry (also the name its table
// registers under) and a driver:
//
//   FK_VARIANT_TEST(ippiMirror_8u_C3IR, MirrorInPlaceDriver{3});
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
// The harness then varies sizes, steps, placement and axes, tries every invalid argument, runs
// each distinct body once (classes sharing a body are one test), and compares whole buffers,
// padding included. The macro defines two tests: Variants.<name> (every class against the
// reference) and VariantDispatch.<name> (the dispatch entry under each class against that class's
// table entry).
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "primitives/core/dispatch.h"
#include "primitives/core/types.h"

namespace framekit::test {

// How a primitive uses one of its image arguments.
enum class Access { kRead, kWrite, kReadWrite };

struct ImageArg {
  const char* name;  // "src", "dst", ... for messages
  int bytes_per_pixel;
  Access access;
  int subsampling = 1;  // 2: a chroma plane of (width / 2) x (height / 2) pixels, at least 1 x 1
};

inline constexpr int kMaxImages = 4;  // a packed image and three planes

// The arguments of one call in the harness's terms; a driver forwards them to the primitive.
struct CallArgs {
  uint8_t* image[kMaxImages] = {};  // row 0 of each image argument, in the shape's order
  int32_t step[kMaxImages] = {};
  prim::Size roi{};
  int32_t axis = 0;                // the mirror axis, or the mode of a primitive with modes
  const uint8_t* value = nullptr;  // only for primitives with a value array
  uint64_t scalar = 0;  // random bits for primitives with a scalar argument (drivers map them)
};

// What the harness must know about a primitive's arguments, whatever its signature.
struct PrimitiveShape {
  std::vector<ImageArg> images{};  // one to four, of one size in pixels (or subsampled from it)
  std::vector<int32_t> axes{};     // the valid mirror axes; empty when there is no axis
  int value_bytes = 0;             // length of the value array; 0 when there is none
  bool scalar = false;             // draws CallArgs::scalar afresh for every case
  // Values of an integer argument that is always valid (a scale factor, an index into the
  // driver's own list), varied like axes and passed in CallArgs::axis; only without axes.
  std::vector<int32_t> modes{};
};

using EntryCall = std::function<prim::Status(const CallArgs&)>;

// One primitive under test, its signature erased.
struct VariantSubject {
  std::string name;
  PrimitiveShape shape;
  std::array<const void*, 7> entries{};  // the table's bodies, to find shared ones
  std::function<prim::Status(int cls, const CallArgs&)> call_class;  // through a table entry
  EntryCall call_dispatch;                                           // through the dispatch entry
};

template <typename Fn, typename Driver>
VariantSubject MakeVariantSubject(const char* name, const prim::Table<Fn>& table, Fn dispatch,
                                  Driver driver) {
  VariantSubject s;
  s.name = name;
  s.shape = driver.Shape();
  for (size_t c = 0; c < 7; ++c) s.entries[c] = reinterpret_cast<const void*>(table[c]);
  s.call_class = [&table, driver](int cls, const CallArgs& a) {
    return driver.Call(table[static_cast<size_t>(cls)], a);
  };
  s.call_dispatch = [dispatch, driver](const CallArgs& a) { return driver.Call(dispatch, a); };
  return s;
}

// Adds a subject to the list the completeness test checks; the reference stays valid.
const VariantSubject& AddVariantSubject(VariantSubject subject);
std::vector<const VariantSubject*> VariantSubjects();

template <typename Fn, typename Driver>
const VariantSubject& RegisterVariantTest(const char* name, const prim::Table<Fn>& table,
                                          Fn dispatch, Driver driver) {
  return AddVariantSubject(MakeVariantSubject(name, table, dispatch, driver));
}

struct CheckOptions {
  int max_class = 0;     // classes 1..max_class are compared with class 0
  int max_failures = 5;  // failing cases reported before the run stops
};

// Every distinct body of classes 1..max_class (default: what this machine runs) against the
// reference, over the whole case set. Reports through gtest.
void CheckVariants(const VariantSubject& subject, const CheckOptions& options);
void CheckVariants(const VariantSubject& subject);

// For every class this machine runs: the dispatch entry, with the class forced, against that
// class's table entry. Restores the class index and feature mask afterwards.
void CheckDispatch(const VariantSubject& subject);

}  // namespace framekit::test

#define FK_VARIANT_TEST(prim_name, ...)                                                   \
  static const ::framekit::test::VariantSubject& fk_variant_subject_##prim_name =                \
      ::framekit::test::RegisterVariantTest(#prim_name, ::framekit::prim::prim_name##Table,      \
                                            &::framekit::prim::prim_name, __VA_ARGS__);            \
  TEST(Variants, prim_name) { ::framekit::test::CheckVariants(fk_variant_subject_##prim_name); } \
  TEST(VariantDispatch, prim_name) {                                                             \
    ::framekit::test::CheckDispatch(fk_variant_subject_##prim_name);                             \
  }                                                                                              \
  static_assert(true, "")

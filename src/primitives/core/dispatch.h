// Variant tables and the processor-class index.
//
// Every primitive has one function type and a table of kClassCount entries, one per processor
// class. The table is built at compile time from the variants that exist: each class gets the
// best level it guarantees. The dispatch entry is one relaxed load of the index and one indexed
// jump, generated for every primitive from its signature (Entry below).
//
// A family header declares each primitive once:
//   FK_PRIMITIVE(ippiMirror_8u_C3IR, MirrorIRSig);
// and its dispatch file builds the table from the bodies that exist:
//   FK_PRIMITIVE_TABLE(ippiMirror_8u_C3IR, MirrorIRSig, .ref = ref::ippiMirror_8u_C3IR,
//                      .ssse3 = FK_X86(ssse3::ippiMirror_8u_C3IR), ...);
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "primitives/core/types.h"

namespace framekit::prim {

// Instruction-set levels that variants are written for.
enum Level : int { kLevelRef, kLevelSse2, kLevelSsse3, kLevelSse41, kLevelAvx, kLevelAvx2 };

// The highest level each processor class guarantees. Class 3 (SSSE3 with MOVBE) gets the SSSE3
// bodies of class 2.
inline constexpr Level kClassLevel[kClassCount] = {
    kLevelRef, kLevelSse2, kLevelSsse3, kLevelSsse3, kLevelSse41, kLevelAvx, kLevelAvx2};

template <typename Fn>
using Table = std::array<Fn, kClassCount>;

// One level's variant, or none. Presence is a flag rather than a null test: comparing a
// function's address with null is not a constant expression in every build (sanitized PIC code).
template <typename Fn>
struct Slot {
  constexpr Slot() = default;
  constexpr Slot(std::nullptr_t) {}               // NOLINT: a level with no body of its own
  constexpr Slot(Fn f) : fn(f), present(true) {}  // NOLINT: lets a table name bodies directly
  Fn fn = nullptr;
  bool present = false;
};

// The variants of one primitive by level; absent levels stay empty.
template <typename Fn>
struct Variants {
  Slot<Fn> ref = {};
  Slot<Fn> sse2 = {};
  Slot<Fn> ssse3 = {};
  Slot<Fn> sse41 = {};
  Slot<Fn> avx = {};
  Slot<Fn> avx2 = {};
};

namespace detail {
// Called only when a table lacks its reference: not constexpr, so the build fails.
inline void TableNeedsAReference() {}
}  // namespace detail

template <typename Fn>
consteval Table<Fn> BuildTable(Variants<Fn> v) {
  if (!v.ref.present) detail::TableNeedsAReference();
  const Slot<Fn> by_level[] = {v.ref, v.sse2, v.ssse3, v.sse41, v.avx, v.avx2};
  Table<Fn> t{};
  for (int c = 0; c < kClassCount; ++c) {
    Fn best = v.ref.fn;
    for (int l = 0; l <= kClassLevel[c]; ++l) {
      if (by_level[l].present) best = by_level[l].fn;
    }
    t[static_cast<size_t>(c)] = best;
  }
  return t;
}

// Variant names from other levels exist only in x86 builds.
#if defined(__x86_64__) || defined(_M_X64)
#define FK_X86(name) name
#else
#define FK_X86(name) nullptr
#endif

// Processor-class index: 0 at load, written by Init only (and by tests through the setter).
extern std::atomic<int32_t> g_class_index;
extern std::atomic<uint64_t> g_enabled_features;

inline int32_t ClassIndex() { return g_class_index.load(std::memory_order_relaxed); }
inline uint64_t EnabledFeatures() { return g_enabled_features.load(std::memory_order_relaxed); }

// The dispatch entry of the primitive whose table is kTable. Call is defined out of line and
// instantiated only by FK_PRIMITIVE_TABLE in the primitive's dispatch file; every other object
// sees an extern template, so no per-ISA object can hold a copy compiled with its flags.
template <typename Sig, const Table<Sig*>& kTable>
struct Entry;
template <typename R, typename... A, const Table<R (*)(A...)>& kTable>
struct Entry<R(A...), kTable> {
  static R Call(A... args);
};
template <typename R, typename... A, const Table<R (*)(A...)>& kTable>
R Entry<R(A...), kTable>::Call(A... args) {
  return kTable[static_cast<size_t>(ClassIndex())](args...);
}

// Detects the processor and stores class and enabled-feature mask; returns the Init status.
int32_t InitDispatch();

// The highest class the running processor can execute (what Init would choose).
int DetectedClass();

// Test hook: forces a class. The caller must only pick classes the machine can run.
void SetClassIndexForTesting(int32_t cls);

// Every table registers itself so a test can find tables that no variant test covers.
struct TableInfo {
  const char* name;
  const void* entries[kClassCount];
};

class TableRegistrar {
 public:
  template <typename Fn>
  TableRegistrar(const char* name, const Table<Fn>& table) {
    TableInfo info{name, {}};
    for (size_t i = 0; i < kClassCount; ++i) {
      info.entries[i] = reinterpret_cast<const void*>(table[i]);
    }
    Add(info);
  }

 private:
  static void Add(const TableInfo& info);
};

// All registered tables, in registration order.
const TableInfo* RegisteredTables(int* count);

}  // namespace framekit::prim

// Declares a primitive of signature Sig: its table `name##Table` and its dispatch entry `name`, a
// reference to the generated entry (callers write name(args...), and &name is a plain pointer).
#define FK_PRIMITIVE(name, Sig)                                     \
  extern const ::framekit::prim::Table<Sig*> name##Table;           \
  extern template struct ::framekit::prim::Entry<Sig, name##Table>; \
  inline constexpr Sig& name = ::framekit::prim::Entry<Sig, name##Table>::Call

// In the primitive's dispatch file: builds its table from the variants, instantiates its entry
// and registers the table under the primitive's name.
#define FK_PRIMITIVE_TABLE(name, Sig, ...)                                               \
  constinit const ::framekit::prim::Table<Sig*> name##Table =                            \
      ::framekit::prim::BuildTable<Sig*>(::framekit::prim::Variants<Sig*>{__VA_ARGS__}); \
  template struct ::framekit::prim::Entry<Sig, name##Table>;                             \
  static const ::framekit::prim::TableRegistrar name##_registrar(#name, name##Table)

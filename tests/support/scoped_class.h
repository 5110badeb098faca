// Forces a processor class for the length of a scope and puts the previous index and feature
// mask back afterwards (tests must not leave Init's state behind them: the index is 0 until
// Init). Only classes the machine can run may be forced.
#pragma once

#include <cstdint>

#include "primitives/core/dispatch.h"

namespace framekit::test {

class ScopedClassIndex {
 public:
  explicit ScopedClassIndex(int cls)
      : index_(prim::g_class_index.load()), features_(prim::g_enabled_features.load()) {
    prim::SetClassIndexForTesting(cls);
  }
  ~ScopedClassIndex() {
    prim::g_class_index.store(index_);
    prim::g_enabled_features.store(features_);
  }
  ScopedClassIndex(const ScopedClassIndex&) = delete;
  ScopedClassIndex& operator=(const ScopedClassIndex&) = delete;

 private:
  int32_t index_;
  uint64_t features_;
};

}  // namespace framekit::test

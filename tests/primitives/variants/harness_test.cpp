// Every registered subject as a test, Variants.<primitive> (every class this machine runs against
// the reference), and the checks that tie subjects, tables and dispatch entries together.
#include "primitives/variants/harness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "primitives/core/dispatch.h"
#include "support/scoped_class.h"

namespace framekit::test {

// Called by the test binary's main before the tests run: one test per subject.
void RegisterVariantTests() {
  for (const VariantSubject* s : VariantSubjects()) {
    testing::RegisterTest("Variants", s->name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [s]() -> testing::Test* {
                            struct Run : testing::Test {
                              const VariantSubject* subject;
                              explicit Run(const VariantSubject* x) : subject(x) {}
                              void TestBody() override {
                                for (const std::string& failure :
                                     CheckVariants(*subject, {prim::DetectedClass(), 5})) {
                                  ADD_FAILURE() << failure;
                                }
                              }
                            };
                            return new Run(s);
                          });
  }
}

namespace {

std::string Join(const std::vector<std::string>& items) {
  std::string s;
  for (const std::string& item : items) s += "\n  " + item;
  return s;
}

// A table added without a subject would ship untested vector code.
TEST(Variants, EveryTableHasASubject) {
  int count = 0;
  const prim::TableInfo* tables = prim::RegisteredTables(&count);
  ASSERT_GT(count, 0) << "no primitive table registered itself";
  std::vector<std::string> uncovered, stale;
  for (int t = 0; t < count; ++t) {
    const std::vector<const VariantSubject*> all = VariantSubjects();
    const auto covers = [&](const VariantSubject* s) {
      return s->name == tables[t].name &&
             std::equal(s->entries.begin(), s->entries.end(), tables[t].entries);
    };
    if (std::none_of(all.begin(), all.end(), covers)) uncovered.emplace_back(tables[t].name);
  }
  for (const VariantSubject* s : VariantSubjects()) {
    bool found = false;
    for (int t = 0; t < count; ++t) found = found || s->name == tables[t].name;
    if (!found) stale.push_back(s->name);
  }
  EXPECT_TRUE(uncovered.empty()) << "tables without a subject:" << Join(uncovered);
  EXPECT_TRUE(stale.empty()) << "subjects of no registered table:" << Join(stale);
}

// The generated dispatch entry calls the table entry of the class in force, arguments unchanged.
prim::Status Probe(int cls, int32_t arg) { return cls * 1000 + arg; }
template <int kCls>
prim::Status ProbeAt(int32_t arg) {
  return Probe(kCls, arg);
}
using ProbeSig = prim::Status(int32_t);
constinit const prim::Table<ProbeSig*> kProbeTable = {
    ProbeAt<0>, ProbeAt<1>, ProbeAt<2>, ProbeAt<3>, ProbeAt<4>, ProbeAt<5>, ProbeAt<6>};
TEST(Dispatch, EntryJumpsThroughTheClassInForce) {
  for (int cls = 0; cls <= prim::DetectedClass(); ++cls) {
    const ScopedClassIndex forced(cls);
    EXPECT_EQ((prim::Entry<ProbeSig, kProbeTable>::Call(-7)), cls * 1000 - 7);
  }
}

}  // namespace
}  // namespace framekit::test

// The variant harness's runner, and the check that no primitive table goes without a variant test.
// (The build takes its test sources from *_test.cpp files, so the runner lives in one.)
#include "primitives/variants/harness.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <iterator>
#include <limits>
#include <optional>

#include "primitives/core/dispatch.h"
#include "support/guarded_buffer.h"
#include "support/random_frame.h"
#include "support/scoped_class.h"

namespace framekit::test {
namespace {

using prim::Size;
using prim::Status;

std::deque<VariantSubject>& Subjects() {
  static std::deque<VariantSubject> subjects;  // a deque: references stay valid as it grows
  return subjects;
}

constexpr const char* kLevelNames[] = {"ref", "sse2", "ssse3", "sse41", "avx", "avx2"};

// Row steps for a row of pixels: packed, one to three bytes of padding, rounded up to 4 and 64.
enum class StepKind { kPacked, kPlus1, kPlus2, kPlus3, kRound4, kRound64 };
constexpr StepKind kStepKinds[] = {StepKind::kPacked, StepKind::kPlus1,  StepKind::kPlus2,
                                   StepKind::kPlus3,  StepKind::kRound4, StepKind::kRound64};
constexpr int kStepKindCount = static_cast<int>(std::size(kStepKinds));

int32_t StepFor(StepKind kind, int32_t row_bytes) {
  switch (kind) {
    case StepKind::kPacked:
      return row_bytes;
    case StepKind::kPlus1:
      return row_bytes + 1;
    case StepKind::kPlus2:
      return row_bytes + 2;
    case StepKind::kPlus3:
      return row_bytes + 3;
    case StepKind::kRound4:
      return (row_bytes + 3) / 4 * 4;
    case StepKind::kRound64:
      return (row_bytes + 63) / 64 * 64;
  }
  return row_bytes;
}

// Where one image of a case lies in memory.
struct Placement {
  StepKind step = StepKind::kPacked;
  bool bottom_up = false;  // negative step
  int32_t lead = 0;
  Flush flush = Flush::kEnd;
};

struct Case {
  Size roi{};  // what the primitive is told, which for invalid cases is not the buffers' size
  int32_t axis = 0;
  std::vector<ImageLayout> layouts;  // one per image argument
  int null_arg = -1;  // argument passed as null: an image index, or images.size() for the value
  bool must_fail = false;
  std::string label;
};

Case MakeCase(const PrimitiveShape& shape, Size frame, int32_t axis,
              const std::vector<Placement>& placements) {
  Case c;
  c.roi = frame;
  c.axis = axis;
  for (size_t i = 0; i < shape.images.size(); ++i) {
    const Placement& p = placements[i];
    const int32_t sub = shape.images[i].subsampling;
    const int32_t width = std::max(1, frame.width / sub);
    const int32_t height = std::max(1, frame.height / sub);
    const int32_t row_bytes = width * shape.images[i].bytes_per_pixel;
    const int32_t step = StepFor(p.step, row_bytes);
    c.layouts.push_back({row_bytes, height, p.bottom_up ? -step : step, p.lead, p.flush});
  }
  return c;
}

std::vector<Placement> Packed(size_t images) { return std::vector<Placement>(images); }

const std::vector<int32_t> kWidths = {1,  2,  3,  4,  5,  7,  8,  15, 16,  17, 31,
                                      32, 33, 47, 48, 49, 63, 64, 65, 127, 129};
const std::vector<int32_t> kHeights = {1, 2, 3, 7};

std::vector<int32_t> AxesOf(const PrimitiveShape& shape) {
  if (!shape.axes.empty()) return shape.axes;
  return shape.modes.empty() ? std::vector<int32_t>{0} : shape.modes;
}

// Sizes in full, steps in full, placement by sample: about a thousand small calls a body.
std::vector<Case> ValidCases(const PrimitiveShape& shape, Rng& rng) {
  std::vector<int32_t> widths = kWidths, heights = kHeights;
  widths.push_back(rng.Uniform(130, 700));
  heights.push_back(rng.Uniform(8, 40));
  const std::vector<int32_t> axes = AxesOf(shape);
  const size_t n = shape.images.size();
  std::vector<Case> cases;
  // Every width with every height and axis, rows packed.
  for (const int32_t w : widths) {
    for (const int32_t h : heights) {
      for (const int32_t a : axes) cases.push_back(MakeCase(shape, {w, h}, a, Packed(n)));
    }
  }
  // Every step choice, each image's independently, with every width; with more than two images
  // a sample of the combinations.
  int combos = 1;
  for (size_t i = 0; i < n; ++i) combos *= kStepKindCount;
  const int kMaxCombos = kStepKindCount * kStepKindCount;
  const bool sampled = combos > kMaxCombos;
  for (int combo = 0; combo < std::min(combos, kMaxCombos); ++combo) {
    std::vector<Placement> placements(n);
    const int pick = sampled ? rng.Uniform(0, combos - 1) : combo;
    for (size_t i = 0, k = static_cast<size_t>(pick); i < n; ++i, k /= kStepKindCount) {
      placements[i].step = kStepKinds[k % kStepKindCount];
    }
    for (const int32_t w : widths) {
      cases.push_back(MakeCase(shape, {w, rng.Pick(heights)}, rng.Pick(axes), placements));
    }
  }
  // A sample of placements: first-pixel alignment, bottom-up rows, the guard page on either side.
  for (int k = 0; k < 160; ++k) {
    std::vector<Placement> placements(n);
    for (Placement& p : placements) {
      p.step = kStepKinds[rng.Uniform(0, kStepKindCount - 1)];
      p.bottom_up = rng.OneIn(4);
      p.lead = rng.OneIn(4) ? 0 : rng.Uniform(1, 63);
      p.flush = rng.OneIn(2) ? Flush::kStart : Flush::kEnd;
    }
    cases.push_back(
        MakeCase(shape, {rng.Pick(widths), rng.Pick(heights)}, rng.Pick(axes), placements));
  }
  return cases;
}

// Every invalid argument alone, and pairs that show the order of the checks. The buffers are
// those of a valid frame; only what the primitive is told is wrong.
std::vector<Case> InvalidCases(const PrimitiveShape& shape) {
  const size_t n = shape.images.size();
  const int32_t axis0 = AxesOf(shape).front();
  std::vector<Case> cases;
  auto add = [&](std::string label, Size roi, int32_t axis, int null_arg, bool must_fail,
                 Size frame) {
    Case c = MakeCase(shape, frame, axis, Packed(n));
    c.roi = roi;
    c.null_arg = null_arg;
    c.must_fail = must_fail;
    c.label = std::move(label);
    cases.push_back(std::move(c));
  };
  const Size base{5, 3};
  for (size_t i = 0; i < n; ++i) {
    add(std::string("null ") + shape.images[i].name, base, axis0, static_cast<int>(i), true, base);
  }
  if (shape.value_bytes > 0) add("null value", base, axis0, static_cast<int>(n), true, base);
  for (const int32_t v : {0, -1, std::numeric_limits<int32_t>::min()}) {
    add("width " + std::to_string(v), {v, 3}, axis0, -1, true, base);
    add("height " + std::to_string(v), {5, v}, axis0, -1, true, base);
  }
  add("null " + std::string(shape.images[0].name) + " and width 0", {0, 3}, axis0, 0, true, base);
  if (shape.axes.empty()) return cases;
  for (const int32_t a :
       {-1, 3, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
    add("axis " + std::to_string(a), base, a, -1, true, base);
  }
  add("width 0 and axis 3", {0, 3}, 3, -1, true, base);
  add("axis 3 on one row", {5, 1}, 3, -1, true, {5, 1});
  // Whether these fail is the primitive's own rule; if they do, nothing may be written.
  for (const int32_t a : shape.axes) {
    add("one row, axis " + std::to_string(a), {5, 1}, a, -1, false, {5, 1});
    add("one column, axis " + std::to_string(a), {1, 3}, a, -1, false, {1, 3});
  }
  return cases;
}

std::string DescribeCase(const PrimitiveShape& shape, const Case& c) {
  std::string s = std::to_string(c.roi.width) + "x" + std::to_string(c.roi.height);
  if (!shape.axes.empty()) s += " axis " + std::to_string(c.axis);
  if (!shape.modes.empty()) s += " mode " + std::to_string(c.axis);
  if (!c.label.empty()) s += " (" + c.label + ")";
  for (size_t i = 0; i < c.layouts.size(); ++i) {
    s += "; " + std::string(shape.images[i].name) + ": " + Describe(c.layouts[i]);
  }
  return s;
}

struct Contender {
  std::string label;
  EntryCall call;
};

// Runs cases on fresh guarded buffers: first the reference, then each contender on the same
// input, comparing statuses and every byte of every image.
class CaseRunner {
 public:
  CaseRunner(const VariantSubject& subject, Rng& rng, int max_failures)
      : subject_(subject), rng_(rng), max_failures_(max_failures) {}

  // False once the failure budget is spent.
  bool Run(const Case& c, const Contender& reference, const std::vector<Contender>& contenders);

 private:
  // The buffers of one case and the call arguments pointing into them.
  struct Buffers {
    std::vector<GuardedImage> images;
    std::vector<std::vector<uint8_t>> initial;  // before any call
    std::optional<GuardedImage> value;
    CallArgs args;
  };
  Buffers Prepare(const Case& c);
  // The reference's own duties: fail on invalid arguments, write nothing on failure, never
  // write padding, never change a source.
  std::vector<std::string> CheckReference(const Case& c, Status status, const Buffers& b) const;
  std::string Difference(size_t image, const GuardedImage& actual,
                         std::span<const uint8_t> expected) const;
  void Fail(const Contender& who, const std::string& where, const std::vector<std::string>& what);

  const VariantSubject& subject_;
  Rng& rng_;
  int max_failures_;
  int failures_ = 0;
};

std::string Hex(uint8_t v) {
  static const char kDigits[] = "0123456789abcdef";
  return std::string("0x") + kDigits[v >> 4] + kDigits[v & 15];
}

CaseRunner::Buffers CaseRunner::Prepare(const Case& c) {
  const PrimitiveShape& shape = subject_.shape;
  const size_t n = shape.images.size();
  Buffers b;
  for (size_t i = 0; i < n; ++i) {
    b.images.emplace_back(c.layouts[i]);
    b.images[i].FillRandom(rng_);
    b.initial.push_back(b.images[i].Snapshot());
    if (shape.images[i].access == Access::kRead) b.images[i].SetReadOnly(true);
    b.args.image[i] = c.null_arg == static_cast<int>(i) ? nullptr : b.images[i].pixels();
    b.args.step[i] = b.images[i].step();
  }
  if (shape.value_bytes > 0) {
    b.value.emplace(ImageLayout{shape.value_bytes, 1, shape.value_bytes});
    b.value->FillRandom(rng_);
    b.value->SetReadOnly(true);
    if (c.null_arg != static_cast<int>(n)) b.args.value = b.value->pixels();
  }
  b.args.roi = c.roi;
  b.args.axis = c.axis;
  if (shape.scalar) b.args.scalar = rng_.Next();
  return b;
}

std::string CaseRunner::Difference(size_t image, const GuardedImage& actual,
                                   std::span<const uint8_t> expected) const {
  const std::optional<size_t> at = FirstDifference(expected, actual.bytes());
  if (!at) return "";
  const ImageArg& arg = subject_.shape.images[image];
  return std::string(arg.name) + " first differs at " + actual.Locate(*at, arg.bytes_per_pixel) +
         ": expected " + Hex(expected[*at]) + ", actual " + Hex(actual.bytes()[*at]);
}

std::vector<std::string> CaseRunner::CheckReference(const Case& c, Status status,
                                                    const Buffers& b) const {
  std::vector<std::string> problems;
  if (c.must_fail && status >= 0) {
    problems.push_back("returns " + std::to_string(status) + " for an invalid argument");
  }
  for (size_t i = 0; i < b.images.size(); ++i) {
    const ImageArg& arg = subject_.shape.images[i];
    if (status < 0 || arg.access == Access::kRead) {
      if (std::string diff = Difference(i, b.images[i], b.initial[i]); !diff.empty()) {
        problems.push_back("changed " + std::string(arg.name) + " (status " +
                           std::to_string(status) + "): " + diff);
      }
    } else if (const std::optional<size_t> at = b.images[i].FirstDamagedPadding()) {
      problems.push_back(std::string("wrote padding of ") + arg.name + " at " +
                         b.images[i].Locate(*at, arg.bytes_per_pixel));
    }
  }
  return problems;
}

void CaseRunner::Fail(const Contender& who, const std::string& where,
                      const std::vector<std::string>& what) {
  ++failures_;
  std::string message = subject_.name + " " + who.label + ":";
  for (const std::string& line : what) message += "\n  " + line;
  message += "\n  case: " + where + "\n  " + SeedNote();
  if (failures_ == max_failures_) message += "\n  (stopping here: later cases not run)";
  ADD_FAILURE() << message;
}

bool CaseRunner::Run(const Case& c, const Contender& reference,
                     const std::vector<Contender>& contenders) {
  Buffers b = Prepare(c);
  const std::string where = DescribeCase(subject_.shape, c);
  auto call = [&](const Contender& who) {
    const FaultNote note(subject_.name + " " + who.label + ", case " + where);
    return who.call(b.args);
  };
  auto restore = [&] {
    for (size_t i = 0; i < b.images.size(); ++i) {
      if (subject_.shape.images[i].access != Access::kRead) b.images[i].Restore(b.initial[i]);
    }
  };

  const Status expected = call(reference);
  std::vector<std::vector<uint8_t>> expected_bytes;
  for (const GuardedImage& image : b.images) expected_bytes.push_back(image.Snapshot());
  if (const auto problems = CheckReference(c, expected, b); !problems.empty()) {
    Fail(reference, where, problems);
  }
  restore();

  for (const Contender& who : contenders) {
    if (failures_ >= max_failures_) break;
    const Status got = call(who);
    std::vector<std::string> problems;
    if (got != expected) {
      problems.push_back("status " + std::to_string(got) + ", reference " +
                         std::to_string(expected));
    }
    for (size_t i = 0; i < b.images.size(); ++i) {
      if (std::string diff = Difference(i, b.images[i], expected_bytes[i]); !diff.empty()) {
        problems.push_back(std::move(diff));
      }
    }
    if (!problems.empty()) Fail(who, where, problems);
    restore();
  }
  return failures_ < max_failures_;
}

Contender ClassEntry(const VariantSubject& s, int cls, std::string label) {
  return {std::move(label), [&s, cls](const CallArgs& a) { return s.call_class(cls, a); }};
}

std::string ClassLabel(int cls) {
  return "class " + std::to_string(cls) + " [" + kLevelNames[prim::kClassLevel[cls]] + "]";
}

// "class 2 [ssse3]+3+4+5": a class, its level, and the later classes that share its body.
std::string BodyLabel(const VariantSubject& s, int cls) {
  std::string label = ClassLabel(cls);
  for (int later = cls + 1; later < 7; ++later) {
    if (s.entries[static_cast<size_t>(later)] == s.entries[static_cast<size_t>(cls)]) {
      label.append("+").append(std::to_string(later));
    }
  }
  return label;
}

// The bodies of classes 1..max_class that differ from the reference and from each other.
std::vector<Contender> DistinctBodies(const VariantSubject& s, int max_class) {
  std::vector<Contender> bodies;
  for (int c = 1; c <= max_class; ++c) {
    bool seen = false;
    for (int e = 0; e < c; ++e) {
      seen = seen || s.entries[static_cast<size_t>(e)] == s.entries[static_cast<size_t>(c)];
    }
    if (!seen) bodies.push_back(ClassEntry(s, c, BodyLabel(s, c)));
  }
  return bodies;
}

}  // namespace

const VariantSubject& AddVariantSubject(VariantSubject subject) {
  Subjects().push_back(std::move(subject));
  return Subjects().back();
}

std::vector<const VariantSubject*> VariantSubjects() {
  std::vector<const VariantSubject*> all;
  for (const VariantSubject& s : Subjects()) all.push_back(&s);
  return all;
}

void CheckVariants(const VariantSubject& subject, const CheckOptions& options) {
  Rng rng("variants/" + subject.name);
  CaseRunner runner(subject, rng, options.max_failures);
  const Contender reference = ClassEntry(subject, 0, BodyLabel(subject, 0));
  const std::vector<Contender> bodies = DistinctBodies(subject, options.max_class);
  std::vector<Case> cases = ValidCases(subject.shape, rng);
  for (Case& c : InvalidCases(subject.shape)) cases.push_back(std::move(c));
  // What was compared, for the log: a class missing here was not run on this machine.
  std::string compared = reference.label;
  for (const Contender& body : bodies) compared += ", " + body.label;
  std::printf("[ compared ] %s: %s; %zu cases\n", subject.name.c_str(), compared.c_str(),
              cases.size());
  for (const Case& c : cases) {
    if (!runner.Run(c, reference, bodies)) return;
  }
}

void CheckVariants(const VariantSubject& subject) {
  CheckVariants(subject, {prim::DetectedClass(), 5});
}

void CheckDispatch(const VariantSubject& subject) {
  const int32_t index_before = prim::ClassIndex();
  const uint64_t features_before = prim::EnabledFeatures();
  Rng rng("dispatch/" + subject.name);
  const size_t n = subject.shape.images.size();
  std::vector<Case> cases;
  for (const int32_t w : {1, 16, 17, 64, rng.Uniform(130, 700)}) {
    for (const int32_t h : {1, 3, 7}) {
      for (const int32_t a : AxesOf(subject.shape)) {
        cases.push_back(MakeCase(subject.shape, {w, h}, a, Packed(n)));
      }
    }
  }
  for (Case& c : InvalidCases(subject.shape)) cases.push_back(std::move(c));
  for (int cls = 0; cls <= prim::DetectedClass(); ++cls) {
    const ScopedClassIndex forced(cls);
    CaseRunner runner(subject, rng, 5);
    const Contender entry = ClassEntry(subject, cls, ClassLabel(cls) + " table entry");
    const std::vector<Contender> dispatch = {
        {"dispatch entry at " + ClassLabel(cls), subject.call_dispatch}};
    for (const Case& c : cases) {
      if (!runner.Run(c, entry, dispatch)) break;
    }
  }
  EXPECT_EQ(prim::ClassIndex(), index_before) << "class index not restored";
  EXPECT_EQ(prim::EnabledFeatures(), features_before) << "feature mask not restored";
}

namespace {

std::string Join(const std::vector<std::string>& items) {
  std::string s;
  for (const std::string& item : items) s += "\n  " + item;
  return s;
}

// A table added without FK_VARIANT_TEST would ship untested vector code.
TEST(Variants, EveryTableHasAVariantTest) {
  int count = 0;
  const prim::TableInfo* tables = prim::RegisteredTables(&count);
  ASSERT_GT(count, 0) << "no primitive table registered itself";
  std::vector<std::string> uncovered, mismatched, stale;
  for (int t = 0; t < count; ++t) {
    const prim::TableInfo& table = tables[t];
    const VariantSubject* subject = nullptr;
    for (const VariantSubject* s : VariantSubjects()) {
      if (s->name == table.name) subject = s;
    }
    if (subject == nullptr) {
      uncovered.emplace_back(table.name);
    } else if (!std::equal(subject->entries.begin(), subject->entries.end(), table.entries)) {
      mismatched.push_back(subject->name + " (the test names another table)");
    }
  }
  for (const VariantSubject* s : VariantSubjects()) {
    bool found = false;
    for (int t = 0; t < count; ++t) found = found || s->name == tables[t].name;
    if (!found) stale.push_back(s->name);
  }
  EXPECT_TRUE(uncovered.empty()) << "tables without FK_VARIANT_TEST:" << Join(uncovered);
  EXPECT_TRUE(mismatched.empty()) << "variant tests of the wrong table:" << Join(mismatched);
  EXPECT_TRUE(stale.empty()) << "variant tests of no registered table:" << Join(stale);
}

}  // namespace
}  // namespace framekit::test

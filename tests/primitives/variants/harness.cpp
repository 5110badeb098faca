// The variant harness's cases, buffers and comparison (harness.h).
#include "primitives/variants/harness.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <iterator>
#include <limits>
#include <optional>

#include "support/guarded_buffer.h"
#include "support/random_frame.h"

namespace framekit::test {
namespace {

using prim::Size;
using prim::Status;

std::deque<VariantSubject>& Subjects() {
  static std::deque<VariantSubject> subjects;  // a deque: references stay valid as it grows
  return subjects;
}

constexpr const char* kLevelNames[] = {"ref", "sse2", "ssse3", "sse41", "avx", "avx2"};

// Row steps for a row of pixels, by kind: 0 packed, 1-3 that many bytes of padding, 4 and 5
// rounded up to 4 and to 64 bytes.
constexpr int kStepKindCount = 6, kRound4 = 4;

int32_t StepFor(int kind, int32_t row_bytes) {
  if (kind < kRound4) return row_bytes + kind;
  const int32_t to = kind == kRound4 ? 4 : 64;
  return (row_bytes + to - 1) / to * to;
}

// Where one image of a case lies in memory.
struct Placement {
  int step = 0;            // the step's kind
  bool bottom_up = false;  // negative step
  int32_t lead = 0;
  Flush flush = Flush::kEnd;
};

struct Case {
  Size told[kMaxSizes] = {};  // what the primitive is told: not the buffers' size when invalid
  int32_t axis = 0;
  std::vector<ImageLayout> layouts;  // one per image argument
  int null_arg = -1;  // argument passed as null: an image index, or images.size() for the value
  int alias = -1;     // index into shape.in_place: that destination is given its source's buffer
  bool must_fail = false;
  std::string label;
};

// An image's region for a frame size: subsampled planes are at least 1 x 1; an invalid size is
// passed on as it is.
Size RegionOf(const ImageArg& arg, Size frame) {
  if (frame.width <= 0 || frame.height <= 0 || arg.subsampling == 1) return frame;
  return {std::max(1, frame.width / arg.subsampling), std::max(1, frame.height / arg.subsampling)};
}

Case MakeCase(const PrimitiveShape& shape, const Size (&sizes)[kMaxSizes], int32_t axis,
              const std::vector<Placement>& placements) {
  Case c;
  std::copy(std::begin(sizes), std::end(sizes), c.told);
  c.axis = axis;
  for (size_t i = 0; i < shape.images.size(); ++i) {
    const ImageArg& arg = shape.images[i];
    Placement p = placements[i];
    if (arg.step_of >= 0) {
      p.step = placements[static_cast<size_t>(arg.step_of)].step;
      p.bottom_up = placements[static_cast<size_t>(arg.step_of)].bottom_up;
    }
    const Size region = RegionOf(arg, sizes[arg.size]);
    const int32_t row_bytes = (region.width + 2 * arg.border) * arg.bytes_per_pixel;
    const int32_t step = StepFor(p.step, row_bytes);
    c.layouts.push_back(
        {row_bytes, region.height + 2 * arg.border, p.bottom_up ? -step : step, p.lead, p.flush});
  }
  return c;
}

std::vector<Placement> Packed(size_t images) { return std::vector<Placement>(images); }

const std::vector<int32_t> kWidths = {1,  2,  3,  4,  5,  7,  8,  15, 16,  17, 31,
                                      32, 33, 47, 48, 49, 63, 64, 65, 127, 129};
const std::vector<int32_t> kHeights = {1, 2, 3, 7, 17};  // 17: a band of 16 rows and one more

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
  // The second size (for shapes with two) is drawn afresh for every case.
  auto add = [&](int32_t w, int32_t h, int32_t axis, const std::vector<Placement>& placements) {
    const Size told[kMaxSizes] = {{w, h}, {rng.Pick(widths), rng.Pick(heights)}};
    cases.push_back(MakeCase(shape, told, axis, placements));
  };
  // Every width with every height and axis, rows packed.
  for (const int32_t w : widths) {
    for (const int32_t h : heights) {
      for (const int32_t a : axes) add(w, h, a, Packed(n));
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
      placements[i].step = static_cast<int>(k % kStepKindCount);
    }
    for (const int32_t w : widths) add(w, rng.Pick(heights), rng.Pick(axes), placements);
  }
  // A sample of placements: first-pixel alignment, bottom-up rows, the guard page on either side.
  auto random_placements = [&] {
    std::vector<Placement> placements(n);
    for (Placement& p : placements) {
      p.step = rng.Uniform(0, kStepKindCount - 1);
      p.bottom_up = rng.OneIn(4);
      p.lead = rng.OneIn(4) ? 0 : rng.Uniform(1, 63);
      p.flush = rng.OneIn(2) ? Flush::kStart : Flush::kEnd;
    }
    return placements;
  };
  for (int k = 0; k < 160; ++k)
    add(rng.Pick(widths), rng.Pick(heights), rng.Pick(axes), random_placements());
  // Destinations given their source's buffer, for every width.
  for (size_t pair = 0; pair < shape.in_place.size(); ++pair) {
    for (const int32_t w : widths) {
      add(w, rng.Pick(heights), rng.Pick(axes), rng.OneIn(2) ? Packed(n) : random_placements());
      cases.back().alias = static_cast<int>(pair);
      cases.back().label = "in place";
    }
  }
  return cases;
}

// Every invalid argument alone, and pairs that show the order of the checks. The buffers are
// those of a valid frame; only what the primitive is told is wrong.
std::vector<Case> InvalidCases(const PrimitiveShape& shape) {
  const size_t n = shape.images.size();
  const int32_t axis0 = AxesOf(shape).front();
  const Size base{5, 3};
  std::vector<Case> cases;
  auto add = [&](std::string label, Size told, int group, int32_t axis, int null_arg,
                 bool must_fail, Size frame) {
    const Size frames[kMaxSizes] = {frame, frame};
    Case c = MakeCase(shape, frames, axis, Packed(n));
    c.told[group] = told;
    c.null_arg = null_arg;
    c.must_fail = must_fail;
    c.label = std::move(label);
    cases.push_back(std::move(c));
  };
  for (size_t i = 0; i < n; ++i) {
    if (shape.images[i].access == Access::kScratch) continue;
    add(std::string("null ") + shape.images[i].name, base, 0, axis0, static_cast<int>(i), true,
        base);
  }
  if (shape.value_bytes > 0) add("null value", base, 0, axis0, static_cast<int>(n), true, base);
  for (int g = 0; g < shape.sizes; ++g) {
    const std::string which = g == 0 ? "" : " (size 2)";
    for (const int32_t v : {0, -1, std::numeric_limits<int32_t>::min()}) {
      add("width " + std::to_string(v) + which, {v, 3}, g, axis0, -1, true, base);
      add("height " + std::to_string(v) + which, {5, v}, g, axis0, -1, true, base);
    }
  }
  add("null " + std::string(shape.images[0].name) + " and width 0", {0, 3}, 0, axis0, 0, true,
      base);
  if (shape.axes.empty()) return cases;
  for (const int32_t a :
       {-1, 3, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
    add("axis " + std::to_string(a), base, 0, a, -1, true, base);
  }
  add("width 0 and axis 3", {0, 3}, 0, 3, -1, true, base);
  add("axis 3 on one row", {5, 1}, 0, 3, -1, true, {5, 1});
  // Whether these fail is the primitive's own rule; if they do, nothing may be written.
  for (const int32_t a : shape.axes) {
    add("one row, axis " + std::to_string(a), {5, 1}, 0, a, -1, false, {5, 1});
    add("one column, axis " + std::to_string(a), {1, 3}, 0, a, -1, false, {1, 3});
  }
  return cases;
}

std::string DescribeCase(const PrimitiveShape& shape, const Case& c) {
  std::string s = std::to_string(c.told[0].width) + "x" + std::to_string(c.told[0].height);
  if (shape.sizes > 1) {
    s += " to " + std::to_string(c.told[1].width) + "x" + std::to_string(c.told[1].height);
  }
  if (!shape.axes.empty()) s += " axis " + std::to_string(c.axis);
  if (!shape.modes.empty()) s += " mode " + std::to_string(c.axis);
  if (!c.label.empty()) s += " (" + c.label + ")";
  for (size_t i = 0; i < c.layouts.size(); ++i) {
    s += "; " + std::string(shape.images[i].name) + ": " + Describe(c.layouts[i]);
  }
  return s;
}

std::string Hex(uint8_t v) {
  static const char kDigits[] = "0123456789abcdef";
  return std::string("0x") + kDigits[v >> 4] + kDigits[v & 15];
}

// The buffers of one call and the arguments pointing into them. An image given its source's
// buffer has none of its own.
struct CallBuffers {
  std::vector<std::optional<GuardedImage>> images;
  std::vector<std::vector<uint8_t>> initial;  // before any call
  std::optional<GuardedImage> value;
  std::optional<GuardedImage> work;
  CallArgs args;
  int alias_source = -1;  // the source whose buffer a destination shares, if any

  CallBuffers(const PrimitiveShape& shape, const Case& c, Rng& rng)
      : images(shape.images.size()), initial(shape.images.size()) {
    const size_t n = shape.images.size();
    int aliased = -1;
    if (c.alias >= 0) {
      alias_source = shape.in_place[static_cast<size_t>(c.alias)].first;
      aliased = shape.in_place[static_cast<size_t>(c.alias)].second;
    }
    for (size_t i = 0; i < n; ++i) {
      const ImageArg& arg = shape.images[i];
      args.size[i] = RegionOf(arg, c.told[arg.size]);
      if (static_cast<int>(i) == aliased) continue;
      GuardedImage& image = images[i].emplace(c.layouts[i]);
      image.FillRandom(rng);
      if (arg.levels < 256) {
        for (uint8_t& v : image.bytes()) v = static_cast<uint8_t>(v % arg.levels);
      }
      initial[i] = image.Snapshot();
      if (IsSource(shape, i)) image.SetReadOnly(true);
      const int32_t b = arg.border;
      args.image[i] = c.null_arg == static_cast<int>(i)
                          ? nullptr
                          : image.pixels() + int64_t{b} * image.step() + b * arg.bytes_per_pixel;
      args.step[i] = image.step();
    }
    if (aliased >= 0) {
      args.image[aliased] = args.image[alias_source];
      args.step[aliased] = args.step[alias_source];
    }
    if (shape.value_bytes > 0) {
      value.emplace(ImageLayout{shape.value_bytes, 1, shape.value_bytes});
      value->FillRandom(rng);
      value->SetReadOnly(true);
      if (c.null_arg != static_cast<int>(n)) args.value = value->pixels();
    }
    args.roi = c.told[0];
    args.roi2 = c.told[1];
    args.axis = c.axis;
    if (shape.scalar) args.scalar = rng.Next();
    if (shape.work_bytes) {
      if (const int32_t bytes = shape.work_bytes(args); bytes > 0) {
        work.emplace(ImageLayout{bytes, 1, bytes});
        work->FillRandom(rng);
        args.work = work->pixels();
        args.work_bytes = bytes;
      }
    }
  }

  // Puts every writable image back as it was before the first call.
  void Restore(const PrimitiveShape& shape) {
    for (size_t i = 0; i < images.size(); ++i) {
      if (images[i] && !IsSource(shape, i)) images[i]->Restore(initial[i]);
    }
  }

  // Read only, and not given as a destination too.
  bool IsSource(const PrimitiveShape& shape, size_t i) const {
    return shape.images[i].access == Access::kRead && static_cast<int>(i) != alias_source;
  }
};

// Whether byte `index` of an image is one of its region's pixel bytes (not border or padding).
bool InRegion(const GuardedImage& image, const ImageArg& arg, size_t index) {
  int32_t row = 0, byte = 0;
  if (!image.PixelAt(index, &row, &byte)) return false;
  const int32_t b = arg.border, bpp = arg.bytes_per_pixel;
  return row >= b && row < image.layout().height - b && byte >= b * bpp &&
         byte < image.layout().row_bytes - b * bpp;
}

// A tolerance that lets any region pixel byte differ: what is compared is everything else.
constexpr int kAnyPixel = 255;

// The first byte of `actual` that differs from `expected` by more than the tolerance (region
// pixel bytes) or at all (every other byte), described; "" when there is none.
std::string Difference(const GuardedImage& actual, std::span<const uint8_t> expected,
                       const ImageArg& arg, int tolerance) {
  const std::span<const uint8_t> got = actual.bytes();
  if (std::equal(got.begin(), got.end(), expected.begin(), expected.end())) return "";
  for (size_t at = 0; at < got.size(); ++at) {
    if (got[at] == expected[at]) continue;
    const int diff = std::abs(int{got[at]} - int{expected[at]});
    if (diff <= tolerance && InRegion(actual, arg, at)) continue;
    return std::string(arg.name) + " first differs at " + actual.Locate(at, arg.bytes_per_pixel) +
           ": expected " + Hex(expected[at]) + ", actual " + Hex(got[at]);
  }
  return "";
}

struct Contender {
  std::string label;
  int cls;
};

// Runs cases on fresh guarded buffers: first the reference, then each contender on the same
// input, comparing statuses and every byte of every image.
struct CaseRunner {
  const VariantSubject& subject;
  const PrimitiveShape& shape;
  Rng& rng;
  int max_failures;
  std::vector<std::string> failures{};

  // False once the failure budget is spent.
  bool Run(const Case& c, const std::vector<Contender>& contenders);
  // The reference's own duties: fail on invalid arguments, write nothing on failure, never
  // write padding or borders, never change a source.
  std::vector<std::string> CheckReference(const Case& c, Status status, const CallBuffers& b) const;
  void Fail(const std::string& who, const std::string& where, const std::vector<std::string>& what);
};

std::vector<std::string> CaseRunner::CheckReference(const Case& c, Status status,
                                                    const CallBuffers& b) const {
  std::vector<std::string> problems;
  if (c.must_fail && status >= 0) {
    problems.push_back("returns " + std::to_string(status) + " for an invalid argument");
  }
  for (size_t i = 0; i < b.images.size(); ++i) {
    if (!b.images[i]) continue;
    const GuardedImage& image = *b.images[i];
    const ImageArg& arg = shape.images[i];
    if (status < 0 || b.IsSource(shape, i)) {
      if (std::string diff = Difference(image, b.initial[i], arg, 0); !diff.empty()) {
        problems.push_back("changed " + std::string(arg.name) + " (status " +
                           std::to_string(status) + "): " + diff);
      }
    } else if (std::string diff = Difference(image, b.initial[i], arg, kAnyPixel); !diff.empty()) {
      problems.push_back("wrote outside the region: " + diff);  // padding or border
    }
  }
  return problems;
}

void CaseRunner::Fail(const std::string& who, const std::string& where,
                      const std::vector<std::string>& what) {
  std::string message = subject.name + " " + who + ":";
  for (const std::string& line : what) message += "\n  " + line;
  message += "\n  case: " + where + "\n  " + SeedNote();
  if (static_cast<int>(failures.size()) + 1 == max_failures) {
    message += "\n  (stopping here: later cases not run)";
  }
  failures.push_back(std::move(message));
}

bool CaseRunner::Run(const Case& c, const std::vector<Contender>& contenders) {
  CallBuffers b(shape, c, rng);
  const std::string where = DescribeCase(shape, c);
  auto call = [&](const Contender& who) {
    const FaultNote note(subject.name + " " + who.label + ", case " + where);
    return subject.call_class(who.cls, b.args);
  };

  const Contender reference{BodyLabel(subject, 0), 0};
  const Status expected = call(reference);
  std::vector<std::vector<uint8_t>> expected_bytes(b.images.size());
  for (size_t i = 0; i < b.images.size(); ++i) {
    if (b.images[i]) expected_bytes[i] = b.images[i]->Snapshot();
  }
  if (const auto problems = CheckReference(c, expected, b); !problems.empty()) {
    Fail(reference.label, where, problems);
  }
  b.Restore(shape);

  for (const Contender& who : contenders) {
    if (static_cast<int>(failures.size()) >= max_failures) break;
    const Status got = call(who);
    std::vector<std::string> problems;
    if (got != expected) {
      problems.push_back("status " + std::to_string(got) + ", reference " +
                         std::to_string(expected));
    }
    for (size_t i = 0; i < b.images.size(); ++i) {
      if (!b.images[i]) continue;
      const ImageArg& arg = shape.images[i];
      // Scratch pixels are the body's own; their padding is compared like any other.
      const int tolerance = arg.access == Access::kScratch ? kAnyPixel : shape.tolerance;
      if (std::string diff = Difference(*b.images[i], expected_bytes[i], arg, tolerance);
          !diff.empty()) {
        problems.push_back(std::move(diff));
      }
    }
    if (!problems.empty()) Fail(who.label, where, problems);
    b.Restore(shape);
  }
  return static_cast<int>(failures.size()) < max_failures;
}

std::string ClassLabel(int cls) {
  return "class " + std::to_string(cls) + " [" + kLevelNames[prim::kClassLevel[cls]] + "]";
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

std::string BodyLabel(const VariantSubject& s, int cls) {
  std::string label = ClassLabel(cls);
  for (int later = cls + 1; later < prim::kClassCount; ++later) {
    if (s.entries[static_cast<size_t>(later)] == s.entries[static_cast<size_t>(cls)]) {
      label.append("+").append(std::to_string(later));
    }
  }
  return label;
}

std::vector<int> DistinctClasses(const VariantSubject& s, int max_class) {
  std::vector<int> classes;
  for (int c = 0; c <= max_class; ++c) {
    bool seen = false;
    for (int e = 0; e < c; ++e) {
      seen = seen || s.entries[static_cast<size_t>(e)] == s.entries[static_cast<size_t>(c)];
    }
    if (!seen) classes.push_back(c);
  }
  return classes;
}

std::vector<std::string> CheckVariants(const VariantSubject& subject, const CheckOptions& options) {
  Rng rng("variants/" + subject.name);
  CaseRunner runner{subject, subject.shape, rng, options.max_failures};
  std::vector<Contender> bodies;
  for (const int cls : DistinctClasses(subject, options.max_class)) {
    if (cls > 0) bodies.push_back({BodyLabel(subject, cls), cls});
  }
  std::vector<Case> cases = ValidCases(subject.shape, rng);
  for (Case& c : InvalidCases(subject.shape)) cases.push_back(std::move(c));
  // What was compared, for the log: a class missing here was not run on this machine.
  std::string compared = BodyLabel(subject, 0);
  for (const Contender& body : bodies) compared += ", " + body.label;
  std::printf("[ compared ] %s: %s; %zu cases\n", subject.name.c_str(), compared.c_str(),
              cases.size());
  for (const Case& c : cases) {
    if (!runner.Run(c, bodies)) break;
  }
  return std::move(runner.failures);
}

// ---- Benchmark calls

struct BenchCall::Buffers {
  const PrimitiveShape& shape;
  Rng rng;
  CallBuffers call;
  Buffers(const VariantSubject& subject, const Case& c)
      : shape(subject.shape), rng(0x5eed, "bench/" + subject.name), call(shape, c, rng) {}
};

BenchCall::BenchCall(const VariantSubject& subject, Size frame, int32_t axis) {
  const PrimitiveShape& shape = subject.shape;
  std::vector<Placement> placements(shape.images.size());
  for (Placement& p : placements) {
    p.step = kRound4;
    p.flush = Flush::kStart;  // the first pixel on a page boundary
  }
  const Size sizes[kMaxSizes] = {frame, frame};
  buffers_ = std::make_unique<Buffers>(subject, MakeCase(shape, sizes, axis, placements));
  buffers_->call.args.scalar = shape.bench_scalar;
}

BenchCall::~BenchCall() = default;

const CallArgs& BenchCall::args() const { return buffers_->call.args; }

void BenchCall::Refresh() { buffers_->call.Restore(buffers_->shape); }

std::vector<int32_t> BenchAxes(const PrimitiveShape& shape) {
  return shape.axes.empty() ? std::vector<int32_t>{AxesOf(shape).front()} : shape.axes;
}

}  // namespace framekit::test

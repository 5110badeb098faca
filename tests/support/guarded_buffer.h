// Image buffers for tests that must see every byte a kernel touches.
//
// The accessible bytes of a GuardedImage lie between two no-access pages, and the image sits
// flush against one of them: with Flush::kEnd the last pixel byte of the last row in memory is
// the last accessible byte, so reading or writing one byte past it faults on the spot; with
// Flush::kStart and no lead the same holds for the byte before the first row, and the lead then
// sets the first pixel's alignment exactly (the region starts on a page boundary).
//
// Every byte that is not a pixel (the lead before the first row, the padding between the end of
// a row's pixels and the next row, the slack up to the page boundaries) holds a sentinel that
// depends on its position, so a stray write shows up as a changed byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "support/random_frame.h"

namespace framekit::test {

enum class Flush { kEnd, kStart };

struct ImageLayout {
  int32_t row_bytes = 0;  // pixel bytes in a row
  int32_t height = 0;
  // Signed distance from one row to the next. Negative: bottom-up, row 0 is the highest row in
  // memory. Its magnitude must be at least row_bytes unless there is a single row.
  int32_t step = 0;
  int32_t lead = 0;  // sentinel bytes before the lowest row in memory
  Flush flush = Flush::kEnd;
};

// "17 B x 3 rows, step 20, lead 5, flush start"
std::string Describe(const ImageLayout& layout);

class GuardedImage {
 public:
  explicit GuardedImage(const ImageLayout& layout);
  ~GuardedImage();
  GuardedImage(const GuardedImage&) = delete;
  GuardedImage& operator=(const GuardedImage&) = delete;

  const ImageLayout& layout() const { return layout_; }
  // The first pixel of row 0: the pointer a primitive gets, with step().
  uint8_t* pixels() { return region_ + row0_; }
  const uint8_t* pixels() const { return region_ + row0_; }
  int32_t step() const { return layout_.step; }

  // Every accessible byte, padding included, lowest address first.
  std::span<uint8_t> bytes() { return {region_, region_size_}; }
  std::span<const uint8_t> bytes() const { return {region_, region_size_}; }
  std::vector<uint8_t> Snapshot() const { return {bytes().begin(), bytes().end()}; }
  // Puts back bytes taken by Snapshot() of an image with the same layout.
  void Restore(std::span<const uint8_t> snapshot);

  // Sentinel everywhere, then random pixels.
  void FillRandom(Rng& rng);

  // Read-only makes every write fault, for images a primitive only reads.
  void SetReadOnly(bool read_only);

  // The row (as the primitive counts them, bottom-up layouts included) and the byte within the
  // row of a pixel byte; false for any other byte.
  bool PixelAt(size_t index, int32_t* row, int32_t* byte) const;
  // Where a byte of bytes() lies in image terms: "row 2 pixel 5 byte 1 (byte 4000 of the
  // region)", "row 2, 3 bytes past its pixels (padding) (...)", "4 bytes before the lowest row".
  std::string Locate(size_t index, int bytes_per_pixel = 1) const;

 private:
  ImageLayout layout_;
  uint8_t* mapping_ = nullptr;  // guard page, region, guard page
  size_t mapping_size_ = 0;
  uint8_t* region_ = nullptr;  // the accessible pages
  size_t region_size_ = 0;
  size_t first_ = 0;  // offset of the lowest row's first pixel in the region
  size_t row0_ = 0;   // offset of row 0's first pixel
};

// While one is alive on a thread, a memory fault or illegal instruction on that thread first
// prints `note` to stderr, so a crash on a guard page names the case that caused it. The fault
// is then handled as if the note were not there (default action, sanitizer report, debugger).
class FaultNote {
 public:
  explicit FaultNote(std::string note);
  ~FaultNote();
  FaultNote(const FaultNote&) = delete;
  FaultNote& operator=(const FaultNote&) = delete;

 private:
  std::string note_;
  const std::string* previous_;
};

}  // namespace framekit::test

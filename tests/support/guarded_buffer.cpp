#include "support/guarded_buffer.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <utility>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace framekit::test {
namespace {

[[noreturn]] void Die(const char* what) {
  std::fprintf(stderr, "guarded buffer: %s\n", what);
  std::abort();
}

size_t PageSize() {
#ifdef _WIN32
  static const size_t page = [] {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return static_cast<size_t>(info.dwPageSize);
  }();
#else
  static const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
#endif
  return page;
}

uint8_t* MapNoAccess(size_t size) {
#ifdef _WIN32
  void* p = VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS);
  if (p == nullptr) Die("VirtualAlloc failed");
#else
  void* p = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (p == MAP_FAILED) Die("mmap failed");
#endif
  return static_cast<uint8_t*>(p);
}

void Unmap(uint8_t* p, size_t size) {
#ifdef _WIN32
  (void)size;
  VirtualFree(p, 0, MEM_RELEASE);
#else
  munmap(p, size);
#endif
}

void Protect(uint8_t* p, size_t size, bool writable) {
#ifdef _WIN32
  DWORD old = 0;
  if (!VirtualProtect(p, size, writable ? PAGE_READWRITE : PAGE_READONLY, &old)) {
    Die("VirtualProtect failed");
  }
#else
  if (mprotect(p, size, writable ? PROT_READ | PROT_WRITE : PROT_READ) != 0) {
    Die("mprotect failed");
  }
#endif
}

size_t Magnitude(int32_t v) { return static_cast<size_t>(v < 0 ? -int64_t{v} : int64_t{v}); }

// The sentinel byte at a position of the accessible region.
uint8_t SentinelAt(size_t index) {
  return static_cast<uint8_t>(0xA5u ^ (index * 0x3Bu) ^ (index >> 8));
}

}  // namespace

std::string Describe(const ImageLayout& l) {
  std::string s = std::to_string(l.row_bytes) + " B x " + std::to_string(l.height) +
                  " rows, step " + std::to_string(l.step);
  if (l.lead != 0) s += ", lead " + std::to_string(l.lead);
  s += l.flush == Flush::kEnd ? ", flush end" : ", flush start";
  return s;
}

GuardedImage::GuardedImage(const ImageLayout& layout) : layout_(layout) {
  if (layout.row_bytes <= 0 || layout.height <= 0 || layout.lead < 0) Die("bad layout");
  const size_t stride = Magnitude(layout.step);
  if (layout.height > 1 && stride < static_cast<size_t>(layout.row_bytes)) Die("rows overlap");
  const size_t rows_span =
      (static_cast<size_t>(layout.height) - 1) * stride + static_cast<size_t>(layout.row_bytes);
  const size_t span = static_cast<size_t>(layout.lead) + rows_span;
  const size_t page = PageSize();
  region_size_ = (span + page - 1) / page * page;
  mapping_size_ = region_size_ + 2 * page;
  mapping_ = MapNoAccess(mapping_size_);
  region_ = mapping_ + page;
  Protect(region_, region_size_, true);
  const size_t start = layout.flush == Flush::kEnd ? region_size_ - span : 0;
  first_ = start + static_cast<size_t>(layout.lead);
  row0_ = layout.step < 0 ? first_ + (static_cast<size_t>(layout.height) - 1) * stride : first_;
  for (size_t i = 0; i < region_size_; ++i) region_[i] = SentinelAt(i);
}

GuardedImage::~GuardedImage() { Unmap(mapping_, mapping_size_); }

void GuardedImage::Restore(std::span<const uint8_t> snapshot) {
  if (snapshot.size() != region_size_) Die("snapshot of another layout");
  std::memcpy(region_, snapshot.data(), region_size_);
}

void GuardedImage::FillRandom(Rng& rng) {
  for (size_t i = 0; i < region_size_; ++i) region_[i] = SentinelAt(i);
  const size_t stride = Magnitude(layout_.step);
  for (int32_t r = 0; r < layout_.height; ++r) {
    rng.Fill({region_ + first_ + static_cast<size_t>(r) * stride,
              static_cast<size_t>(layout_.row_bytes)});
  }
}

void GuardedImage::SetReadOnly(bool read_only) { Protect(region_, region_size_, !read_only); }

bool GuardedImage::PixelAt(size_t index, int32_t* row, int32_t* byte) const {
  if (index < first_) return false;
  const size_t rel = index - first_;
  const size_t stride = layout_.height == 1 ? rel + 1 : Magnitude(layout_.step);
  const auto mem_row = static_cast<int32_t>(rel / stride);
  if (mem_row >= layout_.height || rel % stride >= static_cast<size_t>(layout_.row_bytes)) {
    return false;
  }
  *row = layout_.step < 0 ? layout_.height - 1 - mem_row : mem_row;
  *byte = static_cast<int32_t>(rel % stride);
  return true;
}

std::string GuardedImage::Locate(size_t index, int bytes_per_pixel) const {
  const std::string region = " (byte " + std::to_string(index) + " of the region)";
  if (index < first_) {
    return std::to_string(first_ - index) + " bytes before the lowest row, in the lead" + region;
  }
  const size_t rel = index - first_;
  const size_t stride = layout_.height == 1 ? rel + 1 : Magnitude(layout_.step);
  const size_t mem_row = rel / stride, col = rel % stride;
  const auto h = static_cast<size_t>(layout_.height);
  const size_t row_bytes = static_cast<size_t>(layout_.row_bytes);
  if (mem_row >= h || (mem_row == h - 1 && col >= row_bytes)) {
    return std::to_string(rel - (h - 1) * stride - row_bytes + 1) +
           " bytes after the highest row, in the slack" + region;
  }
  std::string place = "row " + std::to_string(layout_.step < 0 ? h - 1 - mem_row : mem_row);
  if (col >= row_bytes) {
    return place + ", " + std::to_string(col - row_bytes + 1) + " bytes past its pixels (padding)" +
           region;
  }
  const auto bpp = static_cast<size_t>(bytes_per_pixel);
  return place + " pixel " + std::to_string(col / bpp) + " byte " + std::to_string(col % bpp) +
         region;
}

// Fault notes. The handler only reads a thread-local pointer and writes to stderr; afterwards
// the previous handler takes over (POSIX: it is put back and the faulting instruction re-runs;
// Windows: the search continues), so sanitizers and debuggers still see the fault.
namespace {

thread_local const std::string* t_fault_note = nullptr;

void WriteNote() {
  const std::string* note = t_fault_note;
  if (note == nullptr) return;
  t_fault_note = nullptr;
  static const char kHead[] = "\n*** fault in: ";
#ifdef _WIN32
  HANDLE err = GetStdHandle(STD_ERROR_HANDLE);
  DWORD done = 0;
  WriteFile(err, kHead, sizeof(kHead) - 1, &done, nullptr);
  WriteFile(err, note->data(), static_cast<DWORD>(note->size()), &done, nullptr);
  WriteFile(err, "\n", 1, &done, nullptr);
#else
  ssize_t ignored = write(2, kHead, sizeof(kHead) - 1);
  ignored = write(2, note->data(), note->size());
  ignored = write(2, "\n", 1);
  (void)ignored;
#endif
}

#ifdef _WIN32
LONG CALLBACK FaultHandler(EXCEPTION_POINTERS* info) {
  const DWORD code = info->ExceptionRecord->ExceptionCode;
  if (code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_ILLEGAL_INSTRUCTION ||
      code == EXCEPTION_INT_DIVIDE_BY_ZERO) {
    WriteNote();
  }
  return EXCEPTION_CONTINUE_SEARCH;
}

void InstallFaultHandler() {
  static const bool installed = AddVectoredExceptionHandler(1, FaultHandler) != nullptr;
  (void)installed;
}
#else
constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE};
struct sigaction g_previous[std::size(kSignals)];

void FaultHandler(int sig) {
  WriteNote();
  for (size_t i = 0; i < std::size(kSignals); ++i) {
    if (kSignals[i] == sig) sigaction(sig, &g_previous[i], nullptr);
  }
}

void InstallFaultHandler() {
  static const bool installed = [] {
    struct sigaction action;
    std::memset(&action, 0, sizeof(action));
    action.sa_handler = FaultHandler;
    sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < std::size(kSignals); ++i) {
      sigaction(kSignals[i], &action, &g_previous[i]);
    }
    return true;
  }();
  (void)installed;
}
#endif

}  // namespace

FaultNote::FaultNote(std::string note) : note_(std::move(note)), previous_(t_fault_note) {
  InstallFaultHandler();
  t_fault_note = &note_;
}

FaultNote::~FaultNote() { t_fault_note = previous_; }

}  // namespace framekit::test

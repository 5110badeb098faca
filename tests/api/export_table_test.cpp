// Loads the built library the way a host does and checks that its export table is exactly the
// names of src/api/exports.list, undecorated, and that the exports work through the table.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "framekit/framekit.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#include <elf.h>

#include <fstream>
#include <iterator>
#endif

namespace {

const std::set<std::string>& ListedNames() {
  static const std::set<std::string> names = {
#include "export_names.inc"
  };
  return names;
}

#if defined(_WIN32)

using Module = HMODULE;

Module Load() { return LoadLibraryA(FRAMEKIT_LIBRARY_FILE); }
void* Symbol(Module m, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(m, name));
}

template <typename T>
const T* At(Module m, DWORD rva) {
  return reinterpret_cast<const T*>(reinterpret_cast<const uint8_t*>(m) + rva);
}

const IMAGE_NT_HEADERS64* NtHeaders(Module m) {
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(m);
  return At<IMAGE_NT_HEADERS64>(m, static_cast<DWORD>(dos->e_lfanew));
}

// Names of the PE export directory of the loaded module.
std::vector<std::string> ExportedNames(Module m) {
  const auto& dir = NtHeaders(m)->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const auto* exports = At<IMAGE_EXPORT_DIRECTORY>(m, dir.VirtualAddress);
  EXPECT_EQ(exports->NumberOfFunctions, exports->NumberOfNames) << "ordinal-only exports";
  const auto* names = At<DWORD>(m, exports->AddressOfNames);
  std::vector<std::string> out;
  for (DWORD i = 0; i < exports->NumberOfNames; ++i) out.emplace_back(At<char>(m, names[i]));
  return out;
}

// DLLs the module imports, lower-cased.
std::vector<std::string> ImportedDlls(Module m) {
  const auto& dir = NtHeaders(m)->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  std::vector<std::string> out;
  for (const auto* d = At<IMAGE_IMPORT_DESCRIPTOR>(m, dir.VirtualAddress); d->Name != 0; ++d) {
    std::string name = At<char>(m, d->Name);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); });
    out.push_back(name);
  }
  return out;
}

TEST(ExportTable, ImportsOnlySystemDlls) {
  Module m = Load();
  ASSERT_NE(m, nullptr);
  const std::set<std::string> system = {"kernel32.dll", "msvcrt.dll", "gdiplus.dll",
                                        "user32.dll",   "gdi32.dll",  "ole32.dll",
                                        "oleaut32.dll", "ws2_32.dll", "propsys.dll"};
  for (const std::string& dll : ImportedDlls(m)) {
    EXPECT_TRUE(system.count(dll) != 0 || dll.rfind("api-ms-win-", 0) == 0)
        << "framekit.dll depends on " << dll;
  }
}

#else

using Module = void*;

Module Load() { return dlopen("./" FRAMEKIT_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL); }
void* Symbol(Module m, const char* name) { return dlsym(m, name); }

// Defined global symbols of the file's dynamic symbol table.
std::vector<std::string> ExportedNames(Module) {
  std::ifstream in(FRAMEKIT_LIBRARY_FILE, std::ios::binary);
  const std::vector<char> file((std::istreambuf_iterator<char>(in)),
                               std::istreambuf_iterator<char>());
  EXPECT_GT(file.size(), sizeof(Elf64_Ehdr));
  Elf64_Ehdr eh;
  std::memcpy(&eh, file.data(), sizeof eh);
  std::vector<Elf64_Shdr> sections(eh.e_shnum);
  std::memcpy(sections.data(), file.data() + eh.e_shoff, eh.e_shnum * sizeof(Elf64_Shdr));
  std::vector<std::string> out;
  for (const Elf64_Shdr& sh : sections) {
    if (sh.sh_type != SHT_DYNSYM) continue;
    const char* strings = file.data() + sections[sh.sh_link].sh_offset;
    for (size_t off = sh.sh_entsize; off < sh.sh_size; off += sh.sh_entsize) {
      Elf64_Sym sym;
      std::memcpy(&sym, file.data() + sh.sh_offset + off, sizeof sym);
      const int bind = ELF64_ST_BIND(sym.st_info);
      if (sym.st_shndx == SHN_UNDEF || (bind != STB_GLOBAL && bind != STB_WEAK)) continue;
      if (ELF64_ST_VISIBILITY(sym.st_other) != STV_DEFAULT) continue;
      out.emplace_back(strings + sym.st_name);
      EXPECT_EQ(ELF64_ST_TYPE(sym.st_info), STT_FUNC) << "data symbol exported: " << out.back();
    }
  }
  return out;
}

#endif

TEST(ExportTable, ExactlyTheListedNames) {
  Module m = Load();
  ASSERT_NE(m, nullptr) << "cannot load " << FRAMEKIT_LIBRARY_FILE;
  const std::vector<std::string> exported = ExportedNames(m);
  const std::set<std::string> got(exported.begin(), exported.end());
  EXPECT_EQ(got.size(), exported.size()) << "a name is exported twice";
  for (const std::string& name : ListedNames()) {
    EXPECT_EQ(got.count(name), 1u) << "missing export " << name;
    EXPECT_NE(Symbol(m, name.c_str()), nullptr) << "cannot resolve " << name;
  }
  for (const std::string& name : got) {
    EXPECT_EQ(ListedNames().count(name), 1u) << "unlisted export " << name;
  }
}

// Calls through the loaded table reach the real code.
TEST(ExportTable, CallsThroughTheLoadedLibrary) {
  Module m = Load();
  ASSERT_NE(m, nullptr);
  auto flip = reinterpret_cast<decltype(&FlipHorizontalRGB24)>(Symbol(m, "FlipHorizontalRGB24"));
  auto init = reinterpret_cast<decltype(&Init)>(Symbol(m, "Init"));
  auto alloc = reinterpret_cast<decltype(&zqippiMalloc_8u_C3)>(Symbol(m, "zqippiMalloc_8u_C3"));
  auto release = reinterpret_cast<decltype(&zqippiFree)>(Symbol(m, "zqippiFree"));
  ASSERT_TRUE(flip && init && alloc && release);

  const int32_t status = init();
  EXPECT_TRUE(status == 0 || status == 20) << status;
  // Two rows of one pixel, stride 4: the rows change places, the padding stays.
  uint8_t frame[8] = {1, 2, 3, 0xEE, 4, 5, 6, 0xDD};
  EXPECT_EQ(flip(frame, 1, 2), 0);
  const uint8_t expected[8] = {4, 5, 6, 0xEE, 1, 2, 3, 0xDD};
  EXPECT_EQ(std::memcmp(frame, expected, 8), 0);
  EXPECT_EQ(flip(frame, 1, 1), -6);

  int32_t step = 0;
  uint8_t* image = alloc(1, 1, &step);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(step, 64);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(image) % 64, 0u);
  release(image);
}

}  // namespace

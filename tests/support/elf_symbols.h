// The symbols that an ELF file defines.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace krv::test {

struct ElfSymbol {
  std::string name;
  uint64_t size;  // bytes
};

enum class ElfTable { kExported, kAll };

// Every symbol that the 64-bit ELF file at `path` defines, sections and files left out. Throws when
// the file has no such table.
std::vector<ElfSymbol> DefinedSymbols(const std::string& path, ElfTable table);

}  // namespace krv::test

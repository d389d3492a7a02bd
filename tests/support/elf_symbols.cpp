#include "support/elf_symbols.h"

#include <elf.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace krv::test {
namespace {

template <class Record>
Record ReadAt(const std::string& file, uint64_t offset) {
  Record record;
  if (offset + sizeof(record) > file.size()) throw std::runtime_error("truncated ELF file");
  std::memcpy(&record, file.data() + offset, sizeof(record));
  return record;
}

std::string ReadFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsNamedDefinition(const Elf64_Sym& symbol) {
  const auto type = ELF64_ST_TYPE(symbol.st_info);
  return symbol.st_shndx != SHN_UNDEF && type != STT_SECTION && type != STT_FILE;
}

std::vector<ElfSymbol> ReadTable(const std::string& file, const Elf64_Shdr& symbols,
                                 const Elf64_Shdr& names) {
  std::vector<ElfSymbol> result;
  for (uint64_t at = 0; at < symbols.sh_size; at += sizeof(Elf64_Sym)) {
    const auto symbol = ReadAt<Elf64_Sym>(file, symbols.sh_offset + at);
    if (!IsNamedDefinition(symbol)) continue;
    result.push_back({file.c_str() + names.sh_offset + symbol.st_name, symbol.st_size});
  }
  return result;
}

}  // namespace

std::vector<ElfSymbol> DefinedSymbols(const std::string& path, ElfTable table) {
  const std::string file = ReadFile(path);
  const auto header = ReadAt<Elf64_Ehdr>(file, 0);
  const auto section = [&](uint32_t index) {
    return ReadAt<Elf64_Shdr>(file, header.e_shoff + uint64_t{index} * sizeof(Elf64_Shdr));
  };
  const uint32_t wanted = table == ElfTable::kExported ? SHT_DYNSYM : SHT_SYMTAB;
  for (uint32_t index = 0; index < header.e_shnum; ++index) {
    const Elf64_Shdr candidate = section(index);
    if (candidate.sh_type == wanted) return ReadTable(file, candidate, section(candidate.sh_link));
  }
  throw std::runtime_error("no such symbol table in " + path);
}

}  // namespace krv::test

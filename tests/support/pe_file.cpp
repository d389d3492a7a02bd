#include "support/pe_file.h"

#include <windows.h>

#include <cctype>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace krv::test {
namespace {

class Reader {
 public:
  explicit Reader(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    file_.assign(std::istreambuf_iterator<char>(stream), {});
    header_at_ = static_cast<uint32_t>(At<IMAGE_DOS_HEADER>(0).e_lfanew);
    header_ = At<IMAGE_NT_HEADERS64>(header_at_);
    if (header_.Signature != IMAGE_NT_SIGNATURE) throw std::runtime_error("no PE file: " + path);
  }

  const IMAGE_FILE_HEADER& header() const { return header_.FileHeader; }

  std::vector<IMAGE_SECTION_HEADER> Sections() const {
    std::vector<IMAGE_SECTION_HEADER> sections;
    const size_t first =
        header_at_ + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) + header().SizeOfOptionalHeader;
    for (size_t i = 0; i < header().NumberOfSections; ++i) {
      sections.push_back(At<IMAGE_SECTION_HEADER>(first + i * sizeof(IMAGE_SECTION_HEADER)));
    }
    return sections;
  }

  // Where a table of the loaded library begins.
  uint32_t Table(size_t kind) const {
    return header_.OptionalHeader.DataDirectory[kind].VirtualAddress;
  }

  // A record of the loaded library, by its address relative to the library's.
  template <class Record>
  Record Loaded(uint32_t address) const {
    return At<Record>(Offset(address));
  }

  std::string LoadedText(uint32_t address) const { return file_.c_str() + Offset(address); }

 private:
  template <class Record>
  Record At(size_t offset) const {
    Record record;
    if (offset + sizeof(record) > file_.size()) throw std::runtime_error("truncated PE file");
    std::memcpy(&record, file_.data() + offset, sizeof(record));
    return record;
  }

  size_t Offset(uint32_t address) const {
    for (const IMAGE_SECTION_HEADER& section : Sections()) {
      const uint32_t inside = address - section.VirtualAddress;
      if (inside < section.SizeOfRawData) return section.PointerToRawData + inside;
    }
    throw std::runtime_error("an address outside the PE file");
  }

  std::string file_;
  size_t header_at_ = 0;
  IMAGE_NT_HEADERS64 header_ = {};
};

std::vector<std::string> ExportedNames(const Reader& file) {
  std::vector<std::string> names;
  const auto table = file.Loaded<IMAGE_EXPORT_DIRECTORY>(file.Table(IMAGE_DIRECTORY_ENTRY_EXPORT));
  for (uint32_t i = 0; i < table.NumberOfNames; ++i) {
    const uint32_t entry = table.AddressOfNames + i * uint32_t{sizeof(uint32_t)};
    names.push_back(file.LoadedText(file.Loaded<uint32_t>(entry)));
  }
  return names;
}

std::vector<std::string> NeededLibraries(const Reader& file) {
  std::vector<std::string> names;
  uint32_t at = file.Table(IMAGE_DIRECTORY_ENTRY_IMPORT);
  for (;; at += uint32_t{sizeof(IMAGE_IMPORT_DESCRIPTOR)}) {
    const auto entry = file.Loaded<IMAGE_IMPORT_DESCRIPTOR>(at);
    if (entry.Name == 0) return names;
    std::string name = file.LoadedText(entry.Name);
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    names.push_back(name);
  }
}

}  // namespace

PeFile ReadPeFile(const std::string& path) {
  const Reader file(path);
  PeFile result;
  result.exports = ExportedNames(file);
  result.libraries = NeededLibraries(file);
  result.symbols = file.header().NumberOfSymbols;
  for (const IMAGE_SECTION_HEADER& section : file.Sections()) {
    const auto* name = reinterpret_cast<const char*>(section.Name);
    result.sections.emplace_back(name, strnlen(name, IMAGE_SIZEOF_SHORT_NAME));
  }
  return result;
}

}  // namespace krv::test

// What a Windows library's file says about itself.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace krv::test {

struct PeFile {
  std::vector<std::string> exports;    // names of functions
  std::vector<std::string> libraries;  // file names of the libraries that it needs, lower case
  std::vector<std::string> sections;
  uint32_t symbols = 0;  // entries of the symbol table
};

// Reads a 64-bit file. Throws when it is none.
PeFile ReadPeFile(const std::string& path);

}  // namespace krv::test

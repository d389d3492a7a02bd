#include "support/scratch_folder.h"

#include <fstream>
#include <random>
#include <stdexcept>

namespace krv::test {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  std::random_device random;
  do {
    path_ = fs::temp_directory_path() / ("krv-test-" + std::to_string(random()));
  } while (!fs::create_directory(path_));
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

fs::path ScratchFolder::Write(const fs::path& file, std::string_view content) const {
  const fs::path full = path_ / file;
  fs::create_directories(full.parent_path());
  std::ofstream stream(full, std::ios::binary);
  stream << content;
  if (!stream.flush()) throw std::runtime_error("cannot write " + full.string());
  return full;
}

}  // namespace krv::test

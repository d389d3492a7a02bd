#include "support/scratch_folder.h"

#include <random>

#include "support/file_system.h"

namespace krv::test {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  std::random_device random;
  do {
    path_ = fs::temp_directory_path() / ("krv-test-" + std::to_string(random()));
  } while (!fs::create_directory(path_));
}

ScratchFolder::~ScratchFolder() { RemoveFolder(path_); }

std::string ScratchFolder::text() const { return Utf8Text(path_); }

fs::path ScratchFolder::Write(const fs::path& file, std::string_view content) const {
  const fs::path full = path_ / file;
  CreateFolders(full.parent_path());
  WriteFile(full, content);
  return full;
}

}  // namespace krv::test

#include "support/file_system.h"

#include <fstream>
#include <stdexcept>

namespace krv::test {

namespace fs = std::filesystem;

void CreateFolders(const fs::path& folder) { fs::create_directories(folder); }

void WriteFile(const fs::path& file, std::string_view content) {
  std::ofstream stream(file, std::ios::binary);
  stream << content;
  if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

void RemoveFolder(const fs::path& folder) {
  std::error_code ignored;
  fs::remove_all(folder, ignored);
}

// Makes folders in it, one in the other, until the way to the last is longer than the system opens:
// nobody can list that one by its path.
std::shared_ptr<void> MakeUnlistable(const fs::path& folder) {
  constexpr int kFolders = 25;
  const std::string name(200, 'x');
  const fs::path before = fs::current_path();
  fs::current_path(folder);
  for (int i = 0; i < kFolders; ++i) {
    fs::create_directory(name);
    fs::current_path(name);
  }
  fs::current_path(before);
  return nullptr;
}

}  // namespace krv::test

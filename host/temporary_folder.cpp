#include "temporary_folder.h"

#include <random>
#include <utility>

#include "folder_tree.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::host {

std::unique_ptr<TemporaryFolder> TemporaryFolder::Create(std::string* error) {
  std::error_code code;
  const std::filesystem::path parent = std::filesystem::temp_directory_path(code);
  std::random_device random;
  constexpr int kTries = 16;
  for (int i = 0; !code && i < kTries; ++i) {
    std::filesystem::path path = parent / ("krv-" + std::to_string(random()));
    // False without a code: somebody else has a folder of that name.
    if (platform::CreateFolder(path, code)) {
      return std::unique_ptr<TemporaryFolder>(new TemporaryFolder(std::move(path)));
    }
  }
  *error = "cannot create a folder in " + Utf8(parent) + ": " + code.message();
  return nullptr;
}

TemporaryFolder::~TemporaryFolder() { RemoveTree(path_); }

}  // namespace krv::host

#include "folder_tree.h"

#include "platform/file_system.h"

namespace krv::host {

namespace fs = std::filesystem;

void CopyTree(const fs::path& from, const fs::path& to) {
  const auto entries = platform::ListFolder(from);
  if (!entries) {
    throw fs::filesystem_error("cannot read folder", from,
                               std::make_error_code(std::errc::io_error));
  }
  for (const platform::FolderEntry& entry : *entries) {
    const fs::path copy = to / entry.path.filename();
    std::error_code error;
    if (platform::IsFolder(entry.path)) {
      if (platform::CreateFolder(copy, error)) CopyTree(entry.path, copy);
    } else {
      platform::Copy(entry.path, copy, error);
    }
    if (error) throw fs::filesystem_error("cannot copy", entry.path, copy, error);
  }
}

void RemoveTree(const fs::path& folder) {
  const auto entries = platform::ListFolder(folder);
  std::error_code ignored;
  if (entries) {
    for (const platform::FolderEntry& entry : *entries) {
      if (entry.is_folder) {
        RemoveTree(entry.path);
      } else {
        platform::Remove(entry.path, ignored);
      }
    }
  }
  platform::Remove(folder, ignored);
}

}  // namespace krv::host

#include "platform/file_system.h"

namespace krv::host::platform {

namespace fs = std::filesystem;

fs::path OpenablePath(const fs::path& path) { return path; }

bool IsFile(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

bool IsFolder(const fs::path& path) {
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

bool IsSameFile(const fs::path& one, const fs::path& other) {
  std::error_code ignored;
  return fs::equivalent(one, other, ignored);
}

std::optional<std::vector<FolderEntry>> ListFolder(const fs::path& folder) {
  std::error_code error;
  std::vector<FolderEntry> entries;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    entries.push_back({entry->path(), fs::is_directory(entry->symlink_status(ignored))});
  }
  if (error) return std::nullopt;
  return entries;
}

bool CreateFolder(const fs::path& folder, std::error_code& error) {
  return fs::create_directory(folder, error);
}

void Copy(const fs::path& from, const fs::path& to, std::error_code& error) {
  fs::copy_file(from, to, error);
}

void Rename(const fs::path& from, const fs::path& to, std::error_code& error) {
  fs::rename(from, to, error);
}

void Remove(const fs::path& path, std::error_code& error) { fs::remove(path, error); }

}  // namespace krv::host::platform

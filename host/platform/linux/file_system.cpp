#include "platform/file_system.h"

#include <unistd.h>

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

fs::path BehindLinks(const fs::path& path) {
  constexpr int kMost = 40;  // links that the system follows, one after the other
  fs::path file = path;
  std::error_code error;
  for (int i = 0; i < kMost && fs::is_symlink(fs::symlink_status(file, error)); ++i) {
    file = file.parent_path() / fs::read_symlink(file, error);
  }
  return file;
}

bool IsWriteProtected(const fs::path& path) {
  constexpr fs::perms kWrite =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) return false;
  // The superuser may write into everything, and is to heed the mark as well.
  return (status.permissions() & kWrite) == fs::perms::none || access(path.c_str(), W_OK) != 0;
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

void CopyPermissions(const fs::path& from, const fs::path& to, std::error_code& error) {
  const fs::perms wanted = fs::status(from, error).permissions();
  if (error) return;
  // Disks without permissions show the same for every file, and may refuse to set any.
  if (fs::status(to, error).permissions() == wanted || error) return;
  fs::permissions(to, wanted, error);
}

void Rename(const fs::path& from, const fs::path& to, std::error_code& error) {
  fs::rename(from, to, error);
}

void Remove(const fs::path& path, std::error_code& error) { fs::remove(path, error); }

}  // namespace krv::host::platform

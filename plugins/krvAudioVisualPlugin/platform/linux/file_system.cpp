#include "platform/file_system.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace krv::platform {
namespace {

namespace fs = std::filesystem;

fs::path NativePath(std::string_view utf8_path) {
  std::string path(utf8_path);
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

}  // namespace

std::optional<std::string> ReadFile(std::string_view utf8_path, size_t most_bytes) {
  const fs::path path = NativePath(utf8_path);
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  const std::uintmax_t size = fs::file_size(path, error);
  if (error) return std::nullopt;
  if (size > most_bytes) ThrowTooLarge(most_bytes);
  std::ifstream file(path, std::ios::binary);
  std::string contents(static_cast<size_t>(size), '\0');
  if (!file.read(contents.data(), static_cast<std::streamsize>(size))) return std::nullopt;
  return contents;
}

bool IsBelow(std::string_view utf8_path, std::string_view utf8_folder) {
  std::error_code error;
  const fs::path path = fs::canonical(NativePath(utf8_path), error);
  if (error) return false;
  const fs::path folder = fs::canonical(NativePath(utf8_folder), error);
  if (error) return false;
  return path != folder &&
         std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
             folder.end();
}

std::optional<std::vector<FolderEntry>> ListFolder(std::string_view utf8_path) {
  std::error_code error;
  fs::directory_iterator entry(NativePath(utf8_path), error);
  if (error) return std::nullopt;
  std::vector<FolderEntry> entries;
  while (entry != fs::directory_iterator()) {
    std::error_code unknown;
    const bool is_folder = !entry->is_symlink(unknown) && entry->is_directory(unknown);
    entries.push_back({entry->path().filename().string(), is_folder});
    entry.increment(error);
    if (error) return std::nullopt;
  }
  return entries;
}

}  // namespace krv::platform

#include "platform/file_system.h"

#include <windows.h>

#include <algorithm>
#include <memory>

#include "platform/windows/wide_path.h"

namespace krv::platform {
namespace {

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using FileHandle = std::unique_ptr<void, HandleCloser>;

struct FindCloser {
  void operator()(HANDLE handle) const { FindClose(handle); }
};
using FindHandle = std::unique_ptr<void, FindCloser>;

// Null for everything but a regular file.
FileHandle OpenFile(std::string_view utf8_path) {
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = CreateFileW(ExtendedPath(utf8_path).c_str(), GENERIC_READ, share, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (file == INVALID_HANDLE_VALUE) return nullptr;
  FileHandle opened(file);
  return GetFileType(file) == FILE_TYPE_DISK ? std::move(opened) : nullptr;
}

// The path without links, as the system writes it; empty when there is no such file or folder. A
// drive that cannot tell, as some memory disks, has no links either.
std::wstring FinalPath(std::string_view utf8_path) {
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE opened = CreateFileW(ExtendedPath(utf8_path).c_str(), 0, share, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return {};
  const FileHandle file(opened);
  std::wstring path(GetFinalPathNameByHandleW(file.get(), nullptr, 0, 0), L'\0');
  path.resize(
      GetFinalPathNameByHandleW(file.get(), path.data(), static_cast<DWORD>(path.size()), 0));
  return path.empty() ? ExtendedPath(utf8_path) : path;
}

bool ReadWhole(HANDLE file, std::string& contents) {
  constexpr size_t kMostAtOnce = size_t{1} << 30;
  for (size_t done = 0; done < contents.size();) {
    const auto wanted = static_cast<DWORD>(std::min(contents.size() - done, kMostAtOnce));
    DWORD count = 0;
    if (!::ReadFile(file, contents.data() + done, wanted, &count, nullptr) || count == 0) {
      return false;
    }
    done += count;
  }
  return true;
}

bool IsFolder(const WIN32_FIND_DATAW& found) {
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return false;
  // Of the other reparse points, such as folders kept in a cloud, the contents are real.
  const bool link = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                    (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
                     found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
  return !link;
}

}  // namespace

std::optional<std::string> ReadFile(std::string_view utf8_path, size_t most_bytes) {
  const FileHandle file = OpenFile(utf8_path);
  LARGE_INTEGER size;
  if (file == nullptr || !GetFileSizeEx(file.get(), &size)) return std::nullopt;
  const auto bytes = static_cast<uint64_t>(size.QuadPart);
  if (bytes > most_bytes) ThrowTooLarge(most_bytes);
  std::string contents(static_cast<size_t>(bytes), '\0');
  if (!ReadWhole(file.get(), contents)) return std::nullopt;
  return contents;
}

bool IsBelow(std::string_view utf8_path, std::string_view utf8_folder) {
  const std::wstring path = FinalPath(utf8_path);
  const std::wstring folder = FinalPath(utf8_folder);
  return !path.empty() && !folder.empty() && path.starts_with(folder + L'\\');
}

std::optional<std::vector<FolderEntry>> ListFolder(std::string_view utf8_path) {
  // Joined first: the folder's path may end with a separator, and a second one would not be skipped
  // behind the prefix.
  const std::wstring pattern = ExtendedPath(std::string(utf8_path) + "\\*");
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return std::nullopt;
  const FindHandle closer(search);
  std::vector<FolderEntry> entries;
  do {
    const std::wstring_view name = found.cFileName;
    if (name != L"." && name != L"..") entries.push_back({Utf8(name), IsFolder(found)});
  } while (FindNextFileW(search, &found));
  if (GetLastError() != ERROR_NO_MORE_FILES) return std::nullopt;
  return entries;
}

}  // namespace krv::platform

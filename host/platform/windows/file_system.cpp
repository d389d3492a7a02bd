// Windows' functions reach paths beyond 260 characters by the prefix "\\?\", behind which a path
// must be absolute and in its plainest form.
#include "platform/file_system.h"

#include <windows.h>

#include <memory>
#include <string>

namespace krv::host::platform {
namespace {

namespace fs = std::filesystem;

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using FileHandle = std::unique_ptr<void, HandleCloser>;

struct SearchCloser {
  void operator()(HANDLE handle) const { FindClose(handle); }
};
using SearchHandle = std::unique_ptr<void, SearchCloser>;

// The last error as the standard library's own: its texts are the same on every platform.
std::error_code LastError() {
  const std::error_code system(static_cast<int>(GetLastError()), std::system_category());
  const std::error_condition known = system.default_error_condition();
  if (known.category() != std::generic_category()) return system;
  return {known.value(), std::generic_category()};
}

// Absolute, with backslashes and without "." and "..". Empty on failure.
std::wstring FullPath(const fs::path& path) {
  const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);  // with the final zero
  std::wstring full(size, L'\0');
  const DWORD length = GetFullPathNameW(path.c_str(), size, full.data(), nullptr);
  full.resize(length < size ? length : 0);
  return full;
}

DWORD Attributes(const fs::path& path) { return GetFileAttributesW(OpenablePath(path).c_str()); }

// Opens a file or folder for questions about it alone.
FileHandle Open(const fs::path& path) {
  const HANDLE file = CreateFileW(OpenablePath(path).c_str(), 0,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  return FileHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

bool IsFolderItself(const WIN32_FIND_DATAW& found) {
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return false;
  // Of the other reparse points, such as folders kept in a cloud, the contents are real.
  const bool link = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                    (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
                     found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
  return !link;
}

}  // namespace

fs::path OpenablePath(const fs::path& path) {
  constexpr size_t kShort = MAX_PATH - 12;  // the limit of folders; a file's is higher
  // What names a device or has the prefix already, "\\.\" or "\\?\", stays as it is.
  const std::wstring full = FullPath(path);
  if (full.size() < kShort || full.starts_with(LR"(\\.\)") || full.starts_with(LR"(\\?\)")) {
    return path;
  }
  if (full.starts_with(LR"(\\)")) return LR"(\\?\UNC)" + full.substr(1);
  return LR"(\\?\)" + full;
}

bool IsFile(const fs::path& path) {
  const FileHandle file = Open(path);
  BY_HANDLE_FILE_INFORMATION facts;
  return file != nullptr && GetFileType(file.get()) == FILE_TYPE_DISK &&
         GetFileInformationByHandle(file.get(), &facts) &&
         (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool IsFolder(const fs::path& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsSameFile(const fs::path& one, const fs::path& other) {
  const FileHandle first = Open(one);
  const FileHandle second = Open(other);
  BY_HANDLE_FILE_INFORMATION a;
  BY_HANDLE_FILE_INFORMATION b;
  return first != nullptr && second != nullptr && GetFileInformationByHandle(first.get(), &a) &&
         GetFileInformationByHandle(second.get(), &b) &&
         a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
         a.nFileIndexLow == b.nFileIndexLow;
}

fs::path BehindLinks(const fs::path& path) {
  const DWORD attributes = Attributes(path);
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
    return path;
  }
  const FileHandle file = Open(path);
  if (file == nullptr) return path;  // a link that leads nowhere
  std::wstring full(GetFinalPathNameByHandleW(file.get(), nullptr, 0, 0), L'\0');
  full.resize(
      GetFinalPathNameByHandleW(file.get(), full.data(), static_cast<DWORD>(full.size()), 0));
  return full.empty() ? path : fs::path(full);
}

bool IsWriteProtected(const fs::path& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

std::optional<std::vector<FolderEntry>> ListFolder(const fs::path& folder) {
  // The joined path decides about the prefix: it is the longer one.
  const fs::path pattern = OpenablePath(folder / L"*");
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return std::nullopt;
  const SearchHandle closer(search);
  std::vector<FolderEntry> entries;
  do {
    const std::wstring_view name = found.cFileName;
    if (name != L"." && name != L"..") entries.push_back({folder / name, IsFolderItself(found)});
  } while (FindNextFileW(search, &found));
  if (GetLastError() != ERROR_NO_MORE_FILES) return std::nullopt;
  return entries;
}

bool CreateFolder(const fs::path& folder, std::error_code& error) {
  error.clear();
  if (CreateDirectoryW(OpenablePath(folder).c_str(), nullptr)) return true;
  error = LastError();
  if (IsFolder(folder)) error.clear();
  return false;
}

void Copy(const fs::path& from, const fs::path& to, std::error_code& error) {
  error.clear();
  if (!CopyFileW(OpenablePath(from).c_str(), OpenablePath(to).c_str(), /*bFailIfExists=*/TRUE)) {
    error = LastError();
  }
}

void CopyPermissions(const fs::path& from, const fs::path& to, std::error_code& error) {
  error.clear();
  constexpr DWORD kKept = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  const DWORD wanted = Attributes(from);
  const DWORD now = Attributes(to);
  if (wanted == INVALID_FILE_ATTRIBUTES || now == INVALID_FILE_ATTRIBUTES ||
      !SetFileAttributesW(OpenablePath(to).c_str(), (now & ~kKept) | (wanted & kKept))) {
    error = LastError();
  }
}

void Rename(const fs::path& from, const fs::path& to, std::error_code& error) {
  error.clear();
  if (!MoveFileExW(OpenablePath(from).c_str(), OpenablePath(to).c_str(),
                   MOVEFILE_REPLACE_EXISTING)) {
    error = LastError();
  }
}

void Remove(const fs::path& path, std::error_code& error) {
  error.clear();
  const fs::path openable = OpenablePath(path);
  const DWORD attributes = Attributes(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) return;
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    SetFileAttributesW(openable.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
  }
  const bool folder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if (!(folder ? RemoveDirectoryW(openable.c_str()) : DeleteFileW(openable.c_str()))) {
    error = LastError();
  }
}

}  // namespace krv::host::platform

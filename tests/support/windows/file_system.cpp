#include "support/file_system.h"

#include <windows.h>

#include <system_error>

namespace krv::test {
namespace {

namespace fs = std::filesystem;

// The form that lifts the limit of 260 characters; Windows takes it as it is.
std::wstring Extended(const fs::path& path) {
  fs::path normal = path.lexically_normal().make_preferred();
  if (!normal.has_filename()) normal = normal.parent_path();
  return L"\\\\?\\" + normal.wstring();
}

[[noreturn]] void ThrowLastError(const fs::path& path) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), Utf8Text(path));
}

// Whether it is gone.
bool TryToRemove(const fs::path& folder) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((Extended(folder) + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return true;
  do {
    const std::wstring_view name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      TryToRemove(folder / name);
    } else {
      DeleteFileW(Extended(folder / name).c_str());
    }
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return RemoveDirectoryW(Extended(folder).c_str()) != 0;
}

}  // namespace

void CreateFolders(const fs::path& folder) {
  if (GetFileAttributesW(Extended(folder).c_str()) != INVALID_FILE_ATTRIBUTES) return;
  if (folder == folder.parent_path()) ThrowLastError(folder);  // a drive that there is not
  CreateFolders(folder.parent_path());
  if (!CreateDirectoryW(Extended(folder).c_str(), nullptr)) ThrowLastError(folder);
}

void WriteFile(const fs::path& file, std::string_view content) {
  const HANDLE handle = CreateFileW(Extended(file).c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) ThrowLastError(file);
  DWORD written = 0;
  ::WriteFile(handle, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
  CloseHandle(handle);
  if (written != content.size()) ThrowLastError(file);
}

// Others hold files open for a moment longer: the console of a program that has ended, a scanner.
void RemoveFolder(const fs::path& folder) {
  constexpr int kTries = 100;
  constexpr DWORD kPause = 10;  // milliseconds
  for (int i = 0; i < kTries && !TryToRemove(folder); ++i) Sleep(kPause);
}

// Keeps it open without letting others read it.
std::shared_ptr<void> MakeUnlistable(const fs::path& folder) {
  const HANDLE handle = CreateFileW(Extended(folder).c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) ThrowLastError(folder);
  return {handle, CloseHandle};
}

}  // namespace krv::test

#include "platform/windows/wide_path.h"

#include <windows.h>

namespace krv::platform {
namespace {

std::wstring FullPath(const std::wstring& path) {
  std::wstring full;
  DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  full.resize(size);
  size = GetFullPathNameW(path.c_str(), size, full.data(), nullptr);
  full.resize(size < full.size() ? size : 0);
  return full.empty() ? path : full;
}

}  // namespace

std::wstring Wide(std::string_view utf8) {
  if (utf8.empty()) return {};
  const int bytes = static_cast<int>(utf8.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), size);
  return wide;
}

std::string Utf8(std::wstring_view wide) {
  if (wide.empty()) return {};
  const int length = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

std::wstring ExtendedPath(std::string_view utf8_path) {
  // Slashes become backslashes here: behind the prefix, Windows no longer does it.
  const std::wstring path = FullPath(Wide(utf8_path));
  if (path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\")) return path;
  if (path.starts_with(L"\\\\")) return L"\\\\?\\UNC" + path.substr(1);
  return L"\\\\?\\" + path;
}

}  // namespace krv::platform

#include "platform/open_file.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <system_error>

namespace krv::tool {

bool OpenFile(const std::filesystem::path& file, std::string* error) {
  const auto answer = reinterpret_cast<INT_PTR>(
      ShellExecuteW(nullptr, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
  if (answer > 32) return true;  // anything else is an error's number
  *error = std::system_category().message(static_cast<int>(GetLastError()));
  return false;
}

}  // namespace krv::tool

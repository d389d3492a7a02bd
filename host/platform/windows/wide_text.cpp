#include "platform/windows/wide_text.h"

#include <windows.h>

namespace krv::host::platform {

std::string ToUtf8(std::wstring_view text) {
  const auto length = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

}  // namespace krv::host::platform

#include "platform/windows/system_message.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace krv::host::platform {

std::string SystemMessage(unsigned long code) {
  // The width mask turns line ends inside the text into spaces.
  const DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                      FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  wchar_t* text = nullptr;
  const DWORD length =
      FormatMessageW(flags, nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::string message = ToUtf8({text, length});
  LocalFree(text);
  message.erase(message.find_last_not_of(" \r\n") + 1);
  return message.empty() ? "error " + std::to_string(code) : message;
}

}  // namespace krv::host::platform

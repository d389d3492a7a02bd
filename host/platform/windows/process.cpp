#include "platform/process.h"

#include <windows.h>

// windows.h comes first: this header lacks what it needs.
#include <shellapi.h>

#include <memory>

#include "platform/windows/wide_text.h"

namespace krv::host::platform {

std::filesystem::path ExecutableFolder() {
  std::wstring file;
  DWORD length = 0;
  do {  // the name's length is not told, only that the space was too small
    file.resize(file.size() + MAX_PATH);
    length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
  } while (length == file.size());
  file.resize(length);
  return std::filesystem::path(file).parent_path();
}

std::vector<std::string> ProgramArguments(int, char**) {
  struct Freer {
    void operator()(wchar_t** arguments) const { LocalFree(arguments); }
  };
  int count = 0;
  const std::unique_ptr<wchar_t*, Freer> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> utf8;
  if (arguments == nullptr) return utf8;
  for (int i = 1; i < count; ++i) utf8.push_back(ToUtf8(arguments.get()[i]));
  return utf8;
}

}  // namespace krv::host::platform

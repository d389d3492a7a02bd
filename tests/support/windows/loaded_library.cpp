#include "support/loaded_library.h"

#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace krv::test {

void* LoadForEver(const std::string& path) {
  const std::filesystem::path wide = std::u8string(path.begin(), path.end());
  const HMODULE library = LoadLibraryW(wide.c_str());
  if (library == nullptr) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), path);
  }
  return library;
}

RawFunction FindFunction(void* library, const std::string& name) {
  const FARPROC function = GetProcAddress(static_cast<HMODULE>(library), name.c_str());
  if (function == nullptr) throw std::runtime_error("not exported: " + name);
  return reinterpret_cast<RawFunction>(function);
}

}  // namespace krv::test

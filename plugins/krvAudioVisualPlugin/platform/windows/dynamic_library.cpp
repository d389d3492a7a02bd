#include "platform/dynamic_library.h"

#include <windows.h>

#include <utility>

#include "platform/windows/wide_path.h"

namespace krv::platform {
namespace {

HMODULE Module(void* handle) { return static_cast<HMODULE>(handle); }

// A plain file name is left as it is, for Windows to search for.
std::wstring LibraryPath(const std::string& utf8_path) {
  const bool has_folder = utf8_path.find_first_of("/\\") != std::string::npos;
  return has_folder && utf8_path.size() >= MAX_PATH ? ExtendedPath(utf8_path) : Wide(utf8_path);
}

}  // namespace

DynamicLibrary::DynamicLibrary(DynamicLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

DynamicLibrary& DynamicLibrary::operator=(DynamicLibrary&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

DynamicLibrary::~DynamicLibrary() {
  if (handle_ != nullptr) FreeLibrary(Module(handle_));
}

DynamicLibrary DynamicLibrary::Open(const std::string& utf8_path) {
  return DynamicLibrary(LoadLibraryW(LibraryPath(utf8_path).c_str()));
}

DynamicLibrary DynamicLibrary::OpenIfLoaded(const std::string& file_name) {
  HMODULE module = nullptr;
  GetModuleHandleExW(0, Wide(file_name).c_str(), &module);
  return DynamicLibrary(module);
}

void* DynamicLibrary::Symbol(const char* name) const {
  if (handle_ == nullptr) return nullptr;
  return reinterpret_cast<void*>(GetProcAddress(Module(handle_), name));
}

}  // namespace krv::platform

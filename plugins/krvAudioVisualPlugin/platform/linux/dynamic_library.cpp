#include "platform/dynamic_library.h"

#include <dlfcn.h>

#include <utility>

namespace krv::platform {

DynamicLibrary::DynamicLibrary(DynamicLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

DynamicLibrary& DynamicLibrary::operator=(DynamicLibrary&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

DynamicLibrary::~DynamicLibrary() {
  if (handle_ != nullptr) dlclose(handle_);
}

DynamicLibrary DynamicLibrary::Open(const std::string& utf8_path) {
  return DynamicLibrary(dlopen(utf8_path.c_str(), RTLD_NOW | RTLD_LOCAL));
}

DynamicLibrary DynamicLibrary::OpenIfLoaded(const std::string& file_name) {
  return DynamicLibrary(dlopen(file_name.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NOLOAD));
}

void* DynamicLibrary::Symbol(const char* name) const {
  return handle_ == nullptr ? nullptr : dlsym(handle_, name);
}

}  // namespace krv::platform

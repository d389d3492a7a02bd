#include "platform/shared_library.h"

#include <dlfcn.h>

namespace krv::host::platform {

void* LoadSharedLibrary(const std::filesystem::path& path, std::string* error) {
  // A name without a folder would be searched for in the system's library folders.
  const std::filesystem::path full = std::filesystem::absolute(path);
  void* library = dlopen(full.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const char* reason = dlerror();
    *error = reason == nullptr ? "no reason given" : reason;
  }
  return library;
}

void* FindSymbol(void* library, const char* name) { return dlsym(library, name); }

}  // namespace krv::host::platform

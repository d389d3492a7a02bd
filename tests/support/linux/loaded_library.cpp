#include "support/loaded_library.h"

#include <dlfcn.h>

#include <stdexcept>

namespace krv::test {

void* LoadForEver(const std::string& path) {
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  return library;
}

RawFunction FindFunction(void* library, const std::string& name) {
  void* symbol = dlsym(library, name.c_str());
  if (symbol == nullptr) throw std::runtime_error("not exported: " + name);
  return reinterpret_cast<RawFunction>(symbol);
}

}  // namespace krv::test

#include "boundary/built_library.h"

#include <dlfcn.h>

#include <stdexcept>

namespace krv::test {
namespace {

template <class Function>
void Find(void* library, const char* name, Function*& function) {
  void* symbol = dlsym(library, name);
  if (symbol == nullptr) throw std::runtime_error(std::string("not exported: ") + name);
  function = reinterpret_cast<Function*>(symbol);
}

BuiltLibrary Load() {
  void* library = dlopen(BuiltLibrary::Path().c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  BuiltLibrary functions{};
  Find(library, "StartupKRV", functions.startup);
  Find(library, "ShutdownKRV", functions.shutdown);
  Find(library, "RegisterKRVEffect", functions.register_effect);
  Find(library, "RegisterKRVEffectFromConfPath", functions.register_from_path);
  Find(library, "CreateKRVEffect", functions.create);
  Find(library, "ReleaseKRVEffect", functions.release);
  return functions;
}

}  // namespace

const BuiltLibrary& BuiltLibrary::Get() {
  static const BuiltLibrary library = Load();
  return library;
}

std::string BuiltLibrary::Path() { return KRV_PLUGIN_FILE; }

}  // namespace krv::test

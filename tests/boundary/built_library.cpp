#include "boundary/built_library.h"

#include "support/loaded_library.h"

namespace krv::test {
namespace {

template <class Function>
void Find(void* library, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(FindFunction(library, name));
}

BuiltLibrary Load() {
  void* library = LoadForEver(BuiltLibrary::Path());
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

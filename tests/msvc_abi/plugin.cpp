#include "plugin.h"

#include "report.h"
#include "win32.h"

namespace abi {
namespace {

template <class Function>
bool Find(Handle library, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(GetProcAddress(library, name));
  return Expect(function != nullptr, name);
}

}  // namespace

bool Plugin::Load(const char* path) {
  const Handle library = LoadLibraryA(path);
  if (library == nullptr) {
    Print("%s: error %u\n", path, GetLastError());
    return Expect(false, "the plug-in can be loaded");
  }
  return Find(library, "StartupKRV", startup) && Find(library, "ShutdownKRV", shutdown) &&
         Find(library, "RegisterKRVEffect", register_effect) &&
         Find(library, "RegisterKRVEffectFromConfPath", register_from_path) &&
         Find(library, "CreateKRVEffect", create) && Find(library, "ReleaseKRVEffect", release);
}

}  // namespace abi

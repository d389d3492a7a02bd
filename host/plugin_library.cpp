#include "plugin_library.h"

#include "platform/file_system.h"
#include "platform/shared_library.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

template <class Function>
bool LookUp(void* library, const char* name, Function** function) {
  *function = reinterpret_cast<Function*>(platform::FindSymbol(library, name));
  return *function != nullptr;
}

}  // namespace

std::unique_ptr<PluginLibrary> PluginLibrary::Load(const std::filesystem::path& path,
                                                   std::string* error) {
  const std::string where = "plug-in " + Utf8(path);
  if (!platform::IsFile(path)) {
    *error = where + ": there is no such file";
    return nullptr;
  }
  std::string reason;
  void* library = platform::LoadSharedLibrary(path, &reason);
  if (library == nullptr) {
    *error = where + ": cannot be loaded: " + reason;
    return nullptr;
  }
  auto plugin = std::make_unique<PluginLibrary>();
  const auto need = [&](const char* name, auto** function) {
    if (LookUp(library, name, function)) return true;
    *error = where + ": is not a plug-in of this kind: it has no function " + name;
    return false;
  };
  const bool complete =
      need("StartupKRV", &plugin->startup) && need("ShutdownKRV", &plugin->shutdown) &&
      need("RegisterKRVEffect", &plugin->register_effect) &&
      need("RegisterKRVEffectFromConfPath", &plugin->register_effect_from_conf_path) &&
      need("CreateKRVEffect", &plugin->create_effect) &&
      need("ReleaseKRVEffect", &plugin->release_effect);
  return complete ? std::move(plugin) : nullptr;
}

}  // namespace krv::host

// The plug-in's file, loaded, with its six functions.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "krv/plugin.h"

namespace krv::host {

// A loaded plug-in. It is never unloaded: its registry lives until the process ends.
struct PluginLibrary {
  // Loads the file and looks its functions up. Null on failure; *error names the file and what it
  // lacks.
  static std::unique_ptr<PluginLibrary> Load(const std::filesystem::path& path, std::string* error);

  StartupFunction* startup = nullptr;
  ShutdownFunction* shutdown = nullptr;
  RegisterEffectFunction* register_effect = nullptr;
  RegisterEffectFromConfPathFunction* register_effect_from_conf_path = nullptr;
  CreateEffectFunction* create_effect = nullptr;
  ReleaseEffectFunction* release_effect = nullptr;
};

}  // namespace krv::host

#include "effects/plugin_under_test.h"
#include "krv/plugin.h"

namespace krv::test {

const host::PluginLibrary& PluginUnderTest() {
  static const host::PluginLibrary library = {
      .startup = StartupKRV,
      .shutdown = ShutdownKRV,
      .register_effect = RegisterKRVEffect,
      .register_effect_from_conf_path = RegisterKRVEffectFromConfPath,
      .create_effect = CreateKRVEffect,
      .release_effect = ReleaseKRVEffect,
  };
  return library;
}

}  // namespace krv::test

#include <stdexcept>
#include <string>

#include "effects/plugin_under_test.h"

namespace krv::test {

const host::PluginLibrary& PluginUnderTest() {
  static const auto library = [] {
    std::string error;
    auto loaded = host::PluginLibrary::Load(KRV_PLUGIN_FILE, &error);
    if (loaded == nullptr) throw std::runtime_error(error);
    return loaded;
  }();
  return *library;
}

}  // namespace krv::test

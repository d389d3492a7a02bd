#include "registered_effects.h"

#include <algorithm>
#include <string>

#include "command.h"

namespace krv::tool {

using host::EffectListing;

std::vector<EffectListing> RegisterEffects(host::PluginHost* plugin,
                                           const std::vector<std::filesystem::path>& folders,
                                           bool* complete) {
  for (const std::filesystem::path& folder : folders) {
    std::string error;
    if (plugin->RegisterPackages(folder, &error)) continue;
    Complain(error);
    *complete = false;
  }
  std::vector<EffectListing> effects = plugin->ListEffects();
  std::sort(effects.begin(), effects.end(), [](const EffectListing& a, const EffectListing& b) {
    return a.unique_name < b.unique_name;
  });
  return effects;
}

}  // namespace krv::tool

#include "boundary/plugin_registry.h"

#include <utility>

namespace krv {

PluginRegistry& PluginRegistry::Instance() {
  static PluginRegistry& registry = *new PluginRegistry;
  return registry;
}

std::shared_ptr<const EffectDescription> PluginRegistry::FindEffect(
    std::string_view unique_name) const {
  const auto found = effects_by_name.find(unique_name);
  return found == effects_by_name.end() ? nullptr : found->second;
}

std::shared_ptr<const EffectDescription> PluginRegistry::EffectAt(uint32_t index) const {
  return index < effect_list.size() ? effect_list[index] : nullptr;
}

std::shared_ptr<const EffectDescription> PluginRegistry::AddEffect(
    std::shared_ptr<const EffectDescription> description) {
  const auto [entry, added] = effects_by_name.try_emplace(description->UniqueName(), description);
  if (added) effect_list.push_back(std::move(description));
  return entry->second;
}

}  // namespace krv

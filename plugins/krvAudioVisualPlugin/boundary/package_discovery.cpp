#include "boundary/package_discovery.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "boundary/plugin_registry.h"
#include "platform/file_system.h"

namespace krv {
namespace {

// Adds the paths of every "description.json" under a folder, depth first. False when one of the
// folders cannot be listed; what comes behind it is not looked for.
bool FindDescriptions(const std::string& folder, std::vector<std::string>& found) {
  const auto entries = platform::ListFolder(folder);
  if (!entries) return false;
  for (const platform::FolderEntry& entry : *entries) {
    const bool separated = folder.ends_with('/') || folder.ends_with('\\');
    const std::string path = folder + (separated ? "" : "/") + entry.name;
    if (entry.is_folder && !FindDescriptions(path, found)) return false;
    if (!entry.is_folder && entry.name == "description.json") found.push_back(path);
  }
  return true;
}

}  // namespace

std::shared_ptr<const EffectDescription> RegisterPackagesUnder(std::string_view path) {
  std::vector<std::string> found;
  FindDescriptions(std::string(path), found);
  std::shared_ptr<const EffectDescription> last;
  for (const std::string& description_path : found) {
    if (auto description = RegisterPackage(description_path)) last = std::move(description);
  }
  return last;
}

std::shared_ptr<const EffectDescription> RegisterPackage(std::string_view description_path) {
  auto description = std::make_shared<EffectDescription>();
  try {
    description->LoadDescription(description_path);
  } catch (const std::exception& error) {
    throw std::runtime_error(std::string(description_path) + ": " + error.what());
  }
  if (description->json().empty()) return nullptr;
  return PluginRegistry::Instance().AddEffect(std::move(description));
}

}  // namespace krv

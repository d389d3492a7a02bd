#include "boundary/package_discovery.h"

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "boundary/plugin_registry.h"
#include "platform/file_path.h"

namespace krv {
namespace {

namespace fs = std::filesystem;

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

bool IsDescription(const fs::directory_entry& entry) {
  std::error_code error;
  return entry.path().filename() == "description.json" && !entry.is_directory(error);
}

std::vector<std::string> FindDescriptions(const fs::path& folder) {
  std::vector<std::string> found;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, error);
  while (!error && entry != fs::recursive_directory_iterator()) {
    if (IsDescription(*entry)) found.push_back(Utf8(entry->path()));
    entry.increment(error);
  }
  return found;
}

}  // namespace

std::shared_ptr<const EffectDescription> RegisterPackagesUnder(std::string_view path) {
  const fs::path folder = platform::NativePath(path);
  std::error_code error;
  if (!fs::exists(folder, error)) return nullptr;
  std::shared_ptr<const EffectDescription> last;
  for (const std::string& description_path : FindDescriptions(folder)) {
    if (auto description = RegisterPackage(description_path)) last = std::move(description);
  }
  return last;
}

std::shared_ptr<const EffectDescription> RegisterPackage(std::string_view description_path) {
  auto description = std::make_shared<EffectDescription>();
  description->LoadDescription(description_path);
  if (description->json().empty()) return nullptr;
  return PluginRegistry::Instance().AddEffect(std::move(description));
}

}  // namespace krv

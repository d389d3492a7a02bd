#include "package_files.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "platform/file_system.h"

namespace krv::host {
namespace {

bool HasText(const nlohmann::json& description, const char* key, std::string_view wanted) {
  const auto found = description.find(key);
  return found != description.end() && found->is_string() &&
         found->get_ref<const std::string&>() == wanted;
}

bool Describes(const std::filesystem::path& folder, std::string_view unique_name) {
  std::ifstream file(platform::OpenablePath(folder / kDescriptionFileName), std::ios::binary);
  const auto description = nlohmann::json::parse(file, nullptr, /*allow_exceptions=*/false);
  return description.is_object() && HasText(description, "effect_type", "audio_visualization") &&
         HasText(description, "unique_name", unique_name);
}

void CollectPackageFolders(const std::filesystem::path& folder,
                           std::vector<std::filesystem::path>* found) {
  const auto entries = platform::ListFolder(folder);
  if (!entries) return;
  for (const platform::FolderEntry& entry : *entries) {
    if (entry.is_folder) {
      CollectPackageFolders(entry.path, found);
    } else if (entry.path.filename() == kDescriptionFileName && !platform::IsFolder(entry.path)) {
      found->push_back(entry.path.parent_path());
    }
  }
}

}  // namespace

std::vector<std::filesystem::path> FindPackageFolders(const std::filesystem::path& root) {
  std::vector<std::filesystem::path> folders;
  CollectPackageFolders(root, &folders);
  std::sort(folders.begin(), folders.end());
  return folders;
}

std::optional<std::filesystem::path> FindPackageFolder(
    const std::vector<std::filesystem::path>& roots, std::string_view unique_name) {
  for (const std::filesystem::path& root : roots) {
    for (std::filesystem::path& folder : FindPackageFolders(root)) {
      if (Describes(folder, unique_name)) return std::move(folder);
    }
  }
  return std::nullopt;
}

}  // namespace krv::host
